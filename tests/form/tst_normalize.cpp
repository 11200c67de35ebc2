#include "form/mod_form_qt.h"

#include <QTest>

using namespace mod_form_qt;

namespace {

const std::bitset<256> moves = A_EXCLUDE_LABEL_FROM_HLAYOUT;
const std::bitset<256> endsLines = A_STRETCH_COLUMN_END;

/// The rows in a line each way: types by a short name, others by their key or title.
QString outline(const QList<INFO>& rows)
{
    QStringList names;
    for (const INFO& row : rows) {
        const QString title = INFO::Option::ofParam(row.param).title();
        switch (row.eleType) {
        case E_LAYOUT_V:
            names << "V(";
            break;
        case E_LAYOUT_H:
            names << "H(";
            break;
        case E_LAYOUT_GRID:
            names << "G(";
            break;
        case E_LAYOUT_FORM:
            names << "F(";
            break;
        case E_LAYOUT_END:
            names << ")";
            break;
        case E_GRID_NEXT_ROW:
            names << "/";
            break;
        case E_STRETCH:
            names << "stretch" + row.data.toString();
            break;
        case E_LABEL:
            names << "label:" + title;
            break;
        default:
            names << (row.key.isEmpty() ? title : row.key);
        }
    }
    return names.join(' ');
}

INFO edit(const QString& key, const std::bitset<256>& attr = A_NONE,
          const QVariant& param = QVariant())
{
    return INFO(E_LINEEDIT, attr, param, {}, key);
}

QList<INFO> normalized(QList<INFO> rows)
{
    INFO::NormalizeLayout(rows);
    return rows;
}

const INFO end(E_LAYOUT_END);
const INFO nextLine(E_GRID_NEXT_ROW);
const INFO box(E_LAYOUT_H);

} // namespace

class tst_normalize : public QObject
{
    Q_OBJECT

private slots:
    void ordinaryRowsStayAsTheyAre();
    void aLabelMovesInFrontOfItsHorizontalBox();
    void theMovedLabelHasOnlyWhatConcernsLabels();
    void theRowLosesItsTitleAndItsLabelFlags();
    void aTitleInAnOptionMapMovesWithTheMap();
    void onlyTheFirstRowOfABoxGivesALabel();
    void anEmptyTitleGivesNoLabel();
    void rowsBehindTheBoxGiveNoLabel();
    void rowsInInnerLayoutsCount();
    void everyBoxAroundTheRowGetsItsLabel();
    void aRowOutsideOfABoxLosesItsTitle();
    void anOpenerCanLoseItsTitle();
    void aBoxThatIsNeverEndedIsSearchedToTheEnd();
    void unbalancedEndsAreTolerated();
    void deeplyNestedBoxesAreRewritten();
    void gridLinesEndWithAStretch();
    void anExplicitStretchInALineIsEnough();
    void theInsertedStretchIsPlain();
    void onlyGridsThatAskForItGetAStretch();
    void aStretchInAnInnerLayoutDoesNotCount();
    void innerGridsAreEndedByThemselves();
    void aLineBreakOutsideOfAGridIsCopied();
    void labelsMoveInsideAGridLine();
    void rowsAreInsertedAtTheirPlaceholder();
    void onlyTheFirstPlaceholderOfAKeyIsReplaced();
    void aMissingPlaceholderInsertsNothing();
    void anotherRowOfTheKeyIsNoPlaceholder();
    void aPlaceholderMayHaveANumberOrNoKey();
    void aFormMayBeInsertedIntoItself();
    void theStandardStripHoldsOkHelpAndCancel();
    void theStripWithALinkHasItsTexts();
};

void tst_normalize::ordinaryRowsStayAsTheyAre()
{
    const QList<INFO> rows {
        INFO(E_LAYOUT_V), edit("a", A_MANDATORY, "A"), box, edit("b"), end, end};
    const QList<INFO> result = normalized(rows);
    QCOMPARE(outline(result), "V( a H( b ) )");
    QCOMPARE(result[1].attr, A_MANDATORY);
    QCOMPARE(result[1].param, QVariant("A"));
    QCOMPARE(normalized({}).size(), 0);
}

void tst_normalize::aLabelMovesInFrontOfItsHorizontalBox()
{
    QCOMPARE(outline(normalized({edit("a"), box, edit("b"), edit("c", moves, "Name"), end})),
             "a label:Name H( b c )");
}

void tst_normalize::theMovedLabelHasOnlyWhatConcernsLabels()
{
    INFO row(E_NUMBER,
             moves | A_MANDATORY | A_HIDE | A_LABEL_WORDWRAP | A_LABEL_ALIGN_RIGHT | A_ALIGN_LEFT,
             "Name;Text", 5, "c", ContextCallback([](const CallbackContext&) { return 1; }),
             std::any(3), "own");
    const INFO label = normalized({box, row, end}).constFirst();
    QCOMPARE(label.eleType, E_LABEL);
    QCOMPARE(label.attr, A_HIDE | A_LABEL_WORDWRAP | A_LABEL_ALIGN_RIGHT);
    QCOMPARE(label.param, QVariant("Name;Text"));
    QVERIFY(!label.data.isValid());
    QCOMPARE(label.key, "");
    QCOMPARE(label.callback.index(), 2U);
    QCOMPARE(std::any_cast<int>(label.anyData), 3);
    QCOMPARE(label.userData, QVariant("own"));
}

void tst_normalize::theRowLosesItsTitleAndItsLabelFlags()
{
    const INFO row(E_NUMBER,
                   moves | A_MANDATORY | A_HIDE | A_LABEL_WORDWRAP | A_NO_TITLE_SPLIT
                       | A_FLIP_LABEL_BOLD | A_LABEL_ALIGN_RIGHT | A_ALIGN_LEFT,
                   "Name", 5, "c");
    const INFO result = normalized({box, row, end})[2];
    QCOMPARE(result.eleType, E_NUMBER);
    QCOMPARE(result.attr, moves | A_MANDATORY | A_HIDE | A_ALIGN_LEFT | A_NO_LABEL);
    QCOMPARE(result.param, QVariant(""));
    QCOMPARE(result.param.typeId(), int(QMetaType::QString));
    QCOMPARE(result.data, QVariant(5));
    QCOMPARE(result.key, "c");
}

void tst_normalize::aTitleInAnOptionMapMovesWithTheMap()
{
    const QVariantMap options {{"title", "Name"}, {"min", 1}};
    const QList<INFO> result = normalized({box, edit("c", moves, options), end});
    QCOMPARE(outline(result), "label:Name H( c )");
    QCOMPARE(result[0].param, QVariant(options));
    QCOMPARE(result[2].param, QVariant(QVariantMap {{"min", 1}}));
}

void tst_normalize::onlyTheFirstRowOfABoxGivesALabel()
{
    const QList<INFO> result = normalized({box, edit("a", moves, "A"), edit("b", moves, "B"), end});
    QCOMPARE(outline(result), "label:A H( a b )");
    QCOMPARE(result[3].param, QVariant(""));
    QVERIFY(isBitSet(result[3].attr, A_NO_LABEL));
}

void tst_normalize::anEmptyTitleGivesNoLabel()
{
    const QList<INFO> result = normalized({box, edit("a", moves, ""), edit("b", moves, "B"), end});
    QCOMPARE(outline(result), "H( a b )");
    QVERIFY(isBitSet(result[1].attr, A_NO_LABEL));
}

void tst_normalize::rowsBehindTheBoxGiveNoLabel()
{
    QCOMPARE(outline(normalized({box, INFO(E_LAYOUT_V), end, end, edit("a", moves, "A")})),
             "H( V( ) ) a");
}

void tst_normalize::rowsInInnerLayoutsCount()
{
    QCOMPARE(outline(normalized({box, INFO(E_LAYOUT_V), edit("a"), end, INFO(E_LAYOUT_FORM),
                                 edit("b", moves, "B"), end, end})),
             "label:B H( V( a ) F( b ) )");
}

void tst_normalize::everyBoxAroundTheRowGetsItsLabel()
{
    QCOMPARE(
        outline(normalized({box, edit("a", moves, "A"), box, edit("b", moves, "B"), end, end})),
        "label:A H( a label:B H( b ) )");
    QCOMPARE(outline(normalized({box, edit("a"), box, edit("b", moves, "B"), end, end})),
             "label:B H( a label:B H( b ) )");
}

void tst_normalize::aRowOutsideOfABoxLosesItsTitle()
{
    const QList<INFO> result =
        normalized({INFO(E_LAYOUT_V), edit("a", moves | A_LABEL_WORDWRAP, "A"), end});
    QCOMPARE(outline(result), "V( a )");
    QCOMPARE(result[1].attr, moves | A_NO_LABEL);
    QCOMPARE(result[1].param, QVariant(""));
}

void tst_normalize::anOpenerCanLoseItsTitle()
{
    const QList<INFO> result =
        normalized({box, INFO(E_LAYOUT_H, moves, "Gruppe"), edit("a"), end, end});
    QCOMPARE(outline(result), "label:Gruppe H( H( a ) )");
    QCOMPARE(result[2].param, QVariant(""));
}

void tst_normalize::aBoxThatIsNeverEndedIsSearchedToTheEnd()
{
    QCOMPARE(outline(normalized({box, edit("a"), edit("b", moves, "B")})), "label:B H( a b");
}

void tst_normalize::unbalancedEndsAreTolerated()
{
    QCOMPARE(outline(normalized({end, nextLine, end, box, edit("a", moves, "A"), end, end})),
             ") / ) label:A H( a ) )");
    QCOMPARE(outline(normalized({end, INFO(E_LAYOUT_GRID, endsLines), edit("a"), end, end})),
             ") G( a stretch1 ) )");
}

void tst_normalize::deeplyNestedBoxesAreRewritten()
{
    constexpr int depth = 20000;
    QList<INFO> rows(depth, box);
    for (int index = 0; index < depth; ++index)
        rows << edit("a") << end;
    rows << edit("b", moves, "B");
    INFO::NormalizeLayout(rows);
    QCOMPARE(rows.size(), 3 * depth + 1);
    QCOMPARE(rows.constFirst().eleType, E_LAYOUT_H);
}

void tst_normalize::gridLinesEndWithAStretch()
{
    QCOMPARE(outline(normalized(
                 {INFO(E_LAYOUT_GRID, endsLines), edit("a"), nextLine, edit("b"), edit("c"), end})),
             "G( a stretch1 / b c stretch1 )");
}

void tst_normalize::anExplicitStretchInALineIsEnough()
{
    QCOMPARE(
        outline(normalized({INFO(E_LAYOUT_GRID, endsLines), edit("a"),
                            INFO(E_STRETCH, A_NONE, "", 3), edit("b"), nextLine, edit("c"), end})),
        "G( a stretch3 b / c stretch1 )");
}

void tst_normalize::theInsertedStretchIsPlain()
{
    const INFO stretch =
        normalized({INFO(E_LAYOUT_GRID, endsLines | A_GROUP, "Titel", {}, "grid"), end})[1];
    QCOMPARE(stretch.eleType, E_STRETCH);
    QVERIFY(stretch.attr.none());
    QCOMPARE(stretch.data, QVariant(1));
    QCOMPARE(stretch.data.typeId(), int(QMetaType::Int));
    QCOMPARE(stretch.param.toString(), "");
    QCOMPARE(stretch.key, "");
}

void tst_normalize::onlyGridsThatAskForItGetAStretch()
{
    QCOMPARE(outline(normalized({INFO(E_LAYOUT_GRID), edit("a"), nextLine, end,
                                 INFO(E_LAYOUT_H, endsLines), edit("b"), end,
                                 INFO(E_LINEEDIT, endsLines, "", {}, "c")})),
             "G( a / ) H( b ) c");
}

void tst_normalize::aStretchInAnInnerLayoutDoesNotCount()
{
    QCOMPARE(outline(normalized(
                 {INFO(E_LAYOUT_GRID, endsLines), box, INFO(E_STRETCH, A_NONE, "", 2), end, end})),
             "G( H( stretch2 ) stretch1 )");
}

void tst_normalize::innerGridsAreEndedByThemselves()
{
    QCOMPARE(outline(normalized({INFO(E_LAYOUT_GRID, endsLines), INFO(E_LAYOUT_GRID, endsLines),
                                 edit("a"), end, edit("b"), end})),
             "G( G( a stretch1 ) b stretch1 )");
    QCOMPARE(outline(normalized({INFO(E_LAYOUT_GRID, endsLines), INFO(E_LAYOUT_GRID), edit("a"),
                                 end, edit("b"), end})),
             "G( G( a ) b stretch1 )");
}

void tst_normalize::aLineBreakOutsideOfAGridIsCopied()
{
    QCOMPARE(outline(normalized(
                 {INFO(E_LAYOUT_GRID, endsLines), INFO(E_LAYOUT_V), nextLine, end, end, nextLine})),
             "G( V( / ) stretch1 ) /");
}

void tst_normalize::labelsMoveInsideAGridLine()
{
    QCOMPARE(outline(normalized({INFO(E_LAYOUT_GRID, endsLines), box, edit("a", moves, "A"), end,
                                 nextLine, edit("b"), end})),
             "G( label:A H( a ) stretch1 / b stretch1 )");
}

void tst_normalize::rowsAreInsertedAtTheirPlaceholder()
{
    QList<INFO> target {edit("a"), INFO(E_INSERT_POINT, A_NONE, "", {}, "here"), edit("b")};
    QVERIFY(INFO::insertLayout(target, {edit("x"), edit("y")}, "here") != 0);
    QCOMPARE(outline(target), "a x y b");

    QList<INFO> single {INFO(E_INSERT_POINT, A_NONE, "", {}, "here")};
    QVERIFY(INFO::insertLayout(single, {}, "here") != 0);
    QVERIFY(single.isEmpty());
}

void tst_normalize::onlyTheFirstPlaceholderOfAKeyIsReplaced()
{
    const INFO place(E_INSERT_POINT, A_NONE, "", {}, "here");
    const INFO other(E_INSERT_POINT, A_NONE, "", {}, "there");
    QList<INFO> target {other, place, place};
    QVERIFY(INFO::insertLayout(target, {edit("x")}, "here") != 0);
    QCOMPARE(outline(target), "there x here");
    QVERIFY(INFO::insertLayout(target, {edit("y")}, "here") != 0);
    QCOMPARE(outline(target), "there x y");
    QCOMPARE(INFO::insertLayout(target, {edit("z")}, "here"), 0);
}

void tst_normalize::aMissingPlaceholderInsertsNothing()
{
    QList<INFO> target {edit("a"), INFO(E_INSERT_POINT, A_NONE, "", {}, "there")};
    QCOMPARE(INFO::insertLayout(target, {edit("x")}, "here"), 0);
    QCOMPARE(outline(target), "a there");
    QList<INFO> empty;
    QCOMPARE(INFO::insertLayout(empty, {edit("x")}, ""), 0);
    QVERIFY(empty.isEmpty());
}

void tst_normalize::anotherRowOfTheKeyIsNoPlaceholder()
{
    QList<INFO> target {edit("here"), INFO(E_INSERT_POINT, A_NONE, "", {}, "here"), edit("b")};
    QVERIFY(INFO::insertLayout(target, {edit("x")}, "here") != 0);
    QCOMPARE(outline(target), "here x b");
}

void tst_normalize::aPlaceholderMayHaveANumberOrNoKey()
{
    QList<INFO> target {INFO(E_INSERT_POINT), INFO(E_INSERT_POINT, A_NONE, "", {}, 5)};
    QVERIFY(INFO::insertLayout(target, {edit("x")}, 5) != 0);
    QVERIFY(INFO::insertLayout(target, {edit("y")}, "") != 0);
    QCOMPARE(outline(target), "y x");
}

void tst_normalize::aFormMayBeInsertedIntoItself()
{
    QList<INFO> target {edit("a"), INFO(E_INSERT_POINT, A_NONE, "", {}, "here")};
    QVERIFY(INFO::insertLayout(target, target, "here") != 0);
    QCOMPARE(outline(target), "a a here");
}

void tst_normalize::theStandardStripHoldsOkHelpAndCancel()
{
    QList<int> types;
    const QList<INFO> rows = INFO::layoutOkHelpCancel();
    for (const INFO& row : rows) {
        types << row.eleType;
        QCOMPARE(row.param.toString(), "");
        QCOMPARE(row.key, "");
    }
    QCOMPARE(types,
             QList<int>({E_LAYOUT_H, E_OK_BUTTON, E_HELP_BUTTON, E_CANCEL_BUTTON, E_LAYOUT_END}));
}

void tst_normalize::theStripWithALinkHasItsTexts()
{
    QList<int> types;
    QStringList texts;
    const QList<INFO> rows = INFO::createOKHelpLinkCancel("Ja", "Wie?", "Mehr", "Nein");
    for (const INFO& row : rows) {
        types << row.eleType;
        texts << row.param.toString();
    }
    QCOMPARE(types,
             QList<int>({E_LAYOUT_H, E_OK_BUTTON, E_HELP_BUTTON, E_OPENURL_BUTTON, E_CANCEL_BUTTON,
                         E_LAYOUT_END}));
    QCOMPARE(texts, QStringList({"", "Ja", "Wie?", "Mehr", "Nein", ""}));
}

QTEST_APPLESS_MAIN(tst_normalize)
#include "tst_normalize.moc"
