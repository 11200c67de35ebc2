#include "form/mod_form_qt.h"

#include <QtTest>
#include <QtWidgets>

using namespace mod_form_qt;

namespace {

/// A form of one path row and two edits, made in another order than that of their keys.
struct Form
{
    QLabel label;
    QLineEdit path;
    QPushButton button;
    QLineEdit second;
    QCheckBox check;
    QMap<QString, QVariant> map;

    Form()
    {
        add("z", {{&label, E_LABEL}, {&path, E_LINEEDIT}, {&button, E_BUTTON}}, E_BROWSE_FOLDER);
        add("a", {{&second, E_LINEEDIT}}, E_LINEEDIT);
        add("", {{&check, E_CHECKBOX}}, E_CHECKBOX);
        map["a"] = "value";
    }

    void add(const QString& key, std::initializer_list<std::pair<QWidget*, int>> widgets,
             int rowType)
    {
        WIDGET_INFO row;
        int pos = 0;
        for (const auto& [widget, type] : widgets)
            row.add(widget, type, rowType, pos++, key, A_NONE, {}, nullptr);
        map["::mod_form_qt_widget_data:" + key] = QVariant::fromValue(row);
    }
};

} // namespace

class tst_widget_info : public QObject
{
    Q_OBJECT

private slots:
    void addTellsTheWidgetWhereItBelongs();
    void aNullWidgetIsIgnored();
    void widgetsStandInTheOrderInWhichTheyWereAdded();
    void aBadIndexGivesANullPointer();
    void aWidgetThatHasGoneGivesANullPointer();
    void recordsCompareByTheirWidgets();
    void onlyInitEmitsArePending_data();
    void onlyInitEmitsArePending();
    void aNullPointerHasNoTypeAndNoFlags();
    void aWidgetOfNoFormHasNoTypeAndNoFlags();
    void setTypeRewritesTheType();
    void readsTheRecordOfAKey();
    void anUnknownKeyAndANullMapGiveNothing();
    void aForeignValueUnderARecordsKeyGivesNothing();
    void allAreInTheOrderOfTheirMaking();
    void allOfOneTypeAreInTheOrderOfTheirMaking();
    void allLeavesOutWidgetsThatHaveGone();
    void aWidgetInTwoRecordsStandsOnce();
    void cleanForgetsTheRecordsOnly();
    void findsByBaseType();
    void findsByExtendedType();
    void findsByPosition();
    void findsOnlyTheAskedClass();
    void theFirstPositionIsNotSearchedFurther();
    void tellsTheRowsLabel();
    void keysMayBeNumbers();
};

void tst_widget_info::addTellsTheWidgetWhereItBelongs()
{
    QLineEdit edit;
    WIDGET_INFO row;
    row.add(&edit, E_LINEEDIT, E_BROWSE_FOLDER, 1, "folder", A_MANDATORY | A_HIDE,
            QVariantMap {{"title", "Ordner"}}, nullptr);

    QCOMPARE(edit.property("mod_form_qt_type"), QVariant(20000));
    QCOMPARE(edit.property("mod_form_qt_type_ext"), QVariant(50007));
    QCOMPARE(edit.property("mod_form_qt_pos"), QVariant(1));
    QCOMPARE(edit.property("mod_form_qt_paramName"), QVariant("folder"));
    QCOMPARE(edit.property("mod_form_qt_flags"), QVariant(toBitArray(A_MANDATORY | A_HIDE)));
    QCOMPARE(edit.property("mod_form_qt_options"), QVariant(QVariantMap {{"title", "Ordner"}}));
    QVERIFY(!edit.property("mod_form_qt_blockevent").isValid());

    QCOMPARE(WIDGET_INFO::type(&edit), E_LINEEDIT);
    QCOMPARE(WIDGET_INFO::typeExt(&edit), E_BROWSE_FOLDER);
    QCOMPARE(WIDGET_INFO::pos(&edit), 1);
    QCOMPARE(WIDGET_INFO::paramName(&edit), "folder");
    QCOMPARE(WIDGET_INFO::flags(&edit), A_MANDATORY | A_HIDE);
    QCOMPARE(WIDGET_INFO::options(&edit).toMap(), QVariantMap({{"title", "Ordner"}}));
    QVERIFY(WIDGET_INFO::isBitSet(&edit, A_HIDE));
    QVERIFY(WIDGET_INFO::isBitSet(&edit, A_HIDE | A_SORTED));
    QVERIFY(!WIDGET_INFO::isBitSet(&edit, A_SORTED));
}

void tst_widget_info::aNullWidgetIsIgnored()
{
    WIDGET_INFO row;
    WIDGET_INFO::PendingEmits pending;
    row.add(nullptr, E_LINEEDIT, E_LINEEDIT, 0, "a", A_INIT_EMIT, {}, &pending);
    QVERIFY(row.empty());
    QVERIFY(pending.empty());
}

void tst_widget_info::widgetsStandInTheOrderInWhichTheyWereAdded()
{
    QLabel label;
    QLineEdit edit;
    WIDGET_INFO row;
    QVERIFY(row.empty());
    row.add(&label, E_LABEL, E_LINEEDIT, 0, "a", A_NONE, {}, nullptr);
    row.add(&edit, E_LINEEDIT, E_LINEEDIT, 1, "a", A_NONE, {}, nullptr);
    QVERIFY(!row.empty());
    QCOMPARE(row.size(), 2);
    QCOMPARE(row.widgetAt(0).data(), &label);
    QCOMPARE(row.widgetAt(1).data(), &edit);
    QCOMPARE(row.widgets(), QList<QPointer<QWidget>>({&label, &edit}));
}

void tst_widget_info::aBadIndexGivesANullPointer()
{
    QLineEdit edit;
    WIDGET_INFO row;
    row.add(&edit, E_LINEEDIT, E_LINEEDIT, 0, "a", A_NONE, {}, nullptr);
    QVERIFY(row.checkIndex(0));
    QVERIFY(!row.checkIndex(-1));
    QVERIFY(!row.checkIndex(1));
    QVERIFY(row.widgetAt(-1).isNull());
    QVERIFY(row.widgetAt(1).isNull());
}

void tst_widget_info::aWidgetThatHasGoneGivesANullPointer()
{
    WIDGET_INFO row;
    auto edit = std::make_unique<QLineEdit>();
    row.add(edit.get(), E_LINEEDIT, E_LINEEDIT, 0, "a", A_NONE, {}, nullptr);
    edit.reset();
    QVERIFY(row.widgetAt(0).isNull());
    QCOMPARE(row.size(), 1);
}

void tst_widget_info::recordsCompareByTheirWidgets()
{
    QLineEdit edit;
    WIDGET_INFO one;
    one.add(&edit, E_LINEEDIT, E_LINEEDIT, 0, "a", A_NONE, {}, nullptr);
    const WIDGET_INFO other = one;
    QVERIFY(QVariant::fromValue(one) == QVariant::fromValue(other));
    QVERIFY(QVariant::fromValue(one) != QVariant::fromValue(WIDGET_INFO()));
}

void tst_widget_info::onlyInitEmitsArePending_data()
{
    QTest::addColumn<QBitArray>("attributes");
    QTest::addColumn<QString>("expected");

    const auto row = [](const char* name, const std::bitset<256>& attr, const QString& expected) {
        QTest::newRow(name) << toBitArray(attr) << expected;
    };
    row("none", A_NONE, "");
    row("immediate alone", A_IMMEDIATE_DATA_UPDATE, "");
    row("any value", A_INIT_EMIT, "later,any");
    row("valid value", A_INIT_EMIT_VALID, "later,valid");
    row("both", A_INIT_EMIT | A_INIT_EMIT_VALID, "later,valid");
    row("at once", A_INIT_EMIT | A_IMMEDIATE_DATA_UPDATE, "at once,any");
    row("valid at once", A_INIT_EMIT_VALID | A_IMMEDIATE_DATA_UPDATE, "at once,valid");
}

void tst_widget_info::onlyInitEmitsArePending()
{
    QFETCH(QBitArray, attributes);
    QLineEdit edit;
    WIDGET_INFO row;
    WIDGET_INFO::PendingEmits pending;
    row.add(&edit, E_LINEEDIT, E_LINEEDIT, 0, "a", fromBitArray(attributes), {}, &pending);
    QString found;
    for (const auto& [widget, immediate, onlyValid] : pending) {
        QCOMPARE(widget.data(), &edit);
        found += QString(immediate ? "at once" : "later") + (onlyValid ? ",valid" : ",any");
    }
    QTEST(found, "expected");

    row.add(&edit, E_LINEEDIT, E_LINEEDIT, 0, "a", fromBitArray(attributes), {}, nullptr);
    QCOMPARE(row.size(), 2);
}

void tst_widget_info::aNullPointerHasNoTypeAndNoFlags()
{
    const QPointer<QWidget> none;
    QCOMPARE(WIDGET_INFO::type(none), 0);
    QCOMPARE(WIDGET_INFO::typeExt(none), 0);
    QCOMPARE(WIDGET_INFO::pos(none), 0);
    QCOMPARE(WIDGET_INFO::paramName(none), "");
    QVERIFY(WIDGET_INFO::flags(none).none());
    QVERIFY(!WIDGET_INFO::options(none).isValid());
    QVERIFY(!WIDGET_INFO::isBitSet(none, ~A_NONE));
    WIDGET_INFO::setType(none, E_LABEL);
}

void tst_widget_info::aWidgetOfNoFormHasNoTypeAndNoFlags()
{
    QLineEdit edit;
    QCOMPARE(WIDGET_INFO::type(&edit), 0);
    QCOMPARE(WIDGET_INFO::typeExt(&edit), 0);
    QCOMPARE(WIDGET_INFO::pos(&edit), 0);
    QCOMPARE(WIDGET_INFO::paramName(&edit), "");
    QVERIFY(WIDGET_INFO::flags(&edit).none());
    QVERIFY(!WIDGET_INFO::options(&edit).isValid());
}

void tst_widget_info::setTypeRewritesTheType()
{
    Form form;
    WIDGET_INFO::setType(&form.path, E_MENUBAR);
    QCOMPARE(WIDGET_INFO::type(&form.path), E_MENUBAR);
    QCOMPARE(WIDGET_INFO::typeExt(&form.path), E_BROWSE_FOLDER);
}

void tst_widget_info::readsTheRecordOfAKey()
{
    Form form;
    QCOMPARE(WIDGET_INFO::widgets(&form.map, "z").size(), 3);
    QCOMPARE(WIDGET_INFO::widgetAt(&form.map, "z", 2).data(), &form.button);
    QVERIFY(WIDGET_INFO::widgetAt(&form.map, "z", 3).isNull());
    QCOMPARE(WIDGET_INFO::widgets(&form.map, "").size(), 1);
}

void tst_widget_info::anUnknownKeyAndANullMapGiveNothing()
{
    Form form;
    const QMap<QString, QVariant> before = form.map;
    QPointer<QWidget> other = &form.label;
    QVERIFY(WIDGET_INFO::widgets(&form.map, "missing").empty());
    QVERIFY(WIDGET_INFO::widgetAt(&form.map, "missing", 0).isNull());
    QVERIFY(
        !WIDGET_INFO::widget<QLineEdit>(&form.map, "missing", E_LINEEDIT, FIND_POS_ANY, &other));
    QVERIFY(other.isNull());
    QCOMPARE(form.map, before);

    QVERIFY(WIDGET_INFO::widgets(nullptr, "a").empty());
    QVERIFY(WIDGET_INFO::widgetAt(nullptr, "a", 0).isNull());
    QVERIFY(WIDGET_INFO::all(nullptr, 0).isEmpty());
    QVERIFY(!WIDGET_INFO::widget<QLineEdit>(nullptr, "a", E_LINEEDIT));
}

void tst_widget_info::aForeignValueUnderARecordsKeyGivesNothing()
{
    QMap<QString, QVariant> map {{"::mod_form_qt_widget_data:a", "text"}};
    QVERIFY(WIDGET_INFO::widgets(&map, "a").empty());
    QVERIFY(WIDGET_INFO::all(&map, 0).isEmpty());
}

void tst_widget_info::allAreInTheOrderOfTheirMaking()
{
    Form form;
    QCOMPARE(WIDGET_INFO::all(&form.map, 0),
             QList<QPointer<QWidget>>(
                 {&form.label, &form.path, &form.button, &form.second, &form.check}));
}

void tst_widget_info::allOfOneTypeAreInTheOrderOfTheirMaking()
{
    Form form;
    QCOMPARE(WIDGET_INFO::all(&form.map, E_LINEEDIT),
             QList<QPointer<QWidget>>({&form.path, &form.second}));
    QVERIFY(WIDGET_INFO::all(&form.map, E_BROWSE_FOLDER).isEmpty());
}

void tst_widget_info::allLeavesOutWidgetsThatHaveGone()
{
    Form form;
    auto edit = std::make_unique<QLineEdit>();
    form.add("b", {{edit.get(), E_LINEEDIT}}, E_LINEEDIT);
    QCOMPARE(WIDGET_INFO::all(&form.map, E_LINEEDIT).size(), 3);
    edit.reset();
    QCOMPARE(WIDGET_INFO::all(&form.map, E_LINEEDIT).size(), 2);
    QCOMPARE(WIDGET_INFO::all(&form.map, 0).size(), 5);
}

void tst_widget_info::aWidgetInTwoRecordsStandsOnce()
{
    Form form;
    form.map["::mod_form_qt_widget_data:copy"] =
        QVariant::fromValue(WIDGET_INFO::widgets(&form.map, "a"));
    QCOMPARE(WIDGET_INFO::all(&form.map, E_LINEEDIT),
             QList<QPointer<QWidget>>({&form.path, &form.second}));
}

void tst_widget_info::cleanForgetsTheRecordsOnly()
{
    Form form;
    form.map["::mod_form_qt_object_data:menus"] = 1;
    WIDGET_INFO::clean(&form.map);
    QCOMPARE(form.map.keys(), QStringList({"::mod_form_qt_object_data:menus", "a"}));
    QVERIFY(WIDGET_INFO::all(&form.map, 0).isEmpty());
}

void tst_widget_info::findsByBaseType()
{
    Form form;
    QCOMPARE(WIDGET_INFO::widget<QLineEdit>(&form.map, "z", E_LINEEDIT), &form.path);
    QCOMPARE(WIDGET_INFO::widget<QPushButton>(&form.map, "z", E_BUTTON), &form.button);
    QCOMPARE(WIDGET_INFO::widget<QWidget>(&form.map, "z", E_LABEL), &form.label);
    QVERIFY(!WIDGET_INFO::widget<QWidget>(&form.map, "z", E_CHECKBOX));
}

void tst_widget_info::findsByExtendedType()
{
    Form form;
    QCOMPARE(WIDGET_INFO::widget<QLineEdit>(&form.map, "z", E_BROWSE_FOLDER), &form.path);
    QCOMPARE(WIDGET_INFO::widget<QPushButton>(&form.map, "z", E_BROWSE_FOLDER), &form.button);
    QCOMPARE(WIDGET_INFO::widget<QWidget>(&form.map, "z", E_BROWSE_FOLDER), &form.label);
    QVERIFY(!WIDGET_INFO::widget<QLineEdit>(&form.map, "z", E_BROWSE_FILE_OPEN));
}

void tst_widget_info::findsByPosition()
{
    Form form;
    QCOMPARE(WIDGET_INFO::widget<QWidget>(&form.map, "z", 0), &form.label);
    QCOMPARE(WIDGET_INFO::widget<QLineEdit>(&form.map, "z", 1), &form.path);
    QCOMPARE(WIDGET_INFO::widget<QPushButton>(&form.map, "z", 2), &form.button);
    QVERIFY(!WIDGET_INFO::widget<QWidget>(&form.map, "z", 3));
    QVERIFY(!WIDGET_INFO::widget<QWidget>(&form.map, "z", -1));
    QVERIFY(!WIDGET_INFO::widget<QWidget>(&form.map, "z", E_LAYOUT_V));
}

void tst_widget_info::findsOnlyTheAskedClass()
{
    Form form;
    QVERIFY(!WIDGET_INFO::widget<QPushButton>(&form.map, "z", 1));
    QVERIFY(!WIDGET_INFO::widget<QPushButton>(&form.map, "z", E_LINEEDIT));
}

void tst_widget_info::theFirstPositionIsNotSearchedFurther()
{
    Form form;
    QVERIFY(!WIDGET_INFO::widget<QLineEdit>(&form.map, "z", E_LINEEDIT, FIND_POS_FIRST));
    QCOMPARE(WIDGET_INFO::widget<QLabel>(&form.map, "z", E_LABEL, FIND_POS_FIRST), &form.label);
    QCOMPARE(WIDGET_INFO::widget<QLineEdit>(&form.map, "a", E_LINEEDIT, FIND_POS_FIRST),
             &form.second);
    QCOMPARE(int(FIND_POS_FIRST), 0);
    QCOMPARE(int(FIND_POS_ANY), 3);
}

void tst_widget_info::tellsTheRowsLabel()
{
    Form form;
    QPointer<QWidget> other;
    WIDGET_INFO::widget<QLineEdit>(&form.map, "z", E_LINEEDIT, FIND_POS_ANY, &other);
    QCOMPARE(other.data(), &form.label);
    WIDGET_INFO::widget<QLineEdit>(&form.map, "a", E_LINEEDIT, FIND_POS_ANY, &other);
    QVERIFY(other.isNull());
}

void tst_widget_info::keysMayBeNumbers()
{
    Form form;
    QLineEdit edit;
    form.add("5", {{&edit, E_LINEEDIT}}, E_LINEEDIT);
    QCOMPARE(WIDGET_INFO::widget<QLineEdit>(&form.map, 5, E_LINEEDIT), &edit);
}

QTEST_MAIN(tst_widget_info)
#include "tst_widget_info.moc"
