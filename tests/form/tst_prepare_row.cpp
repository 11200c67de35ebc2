#include "form/build/prepare_row.h"
#include "form/mod_form_qt.h"

#include <QtTest>
#include <QtWidgets>

using namespace mod_form_qt;

using Option = INFO::Option;

namespace {

PreparedRow prepared(const std::bitset<256>& attr, const QVariant& param = QVariant(),
                     int eleType = E_LINEEDIT)
{
    return prepareRow(INFO(eleType, attr, param), {});
}

QVariant optionOf(const PreparedRow& row, const QString& key)
{
    return row.option.value(key);
}

} // namespace

class tst_prepare_row : public QObject
{
    Q_OBJECT

private slots:
    void aRowWithoutAnythingHasOneEmptyText();
    void theTitleIsTheRowsText();
    void aMapGivesTheOptionsAndTheTitle();
    void attributesBecomeRules_data();
    void attributesBecomeRules();
    void attributesBeatTheOptionMap();
    void widgetAlignmentIsStoredByRowType_data();
    void widgetAlignmentIsStoredByRowType();
    void labelAlignmentIsStoredForLabels_data();
    void labelAlignmentIsStoredForLabels();
    void theFirstAlignmentWins();
    void anOpenersAlignmentIsStoredByIndex();
    void theLocaleIsTheRowsOrTheForms();
    void sizePoliciesAreStoredByRowType_data();
    void sizePoliciesAreStoredByRowType();
    void theLastSizePolicyWins();
    void shrinkingSetsNoMinimumWidthOverAGivenOne();
    void gridNumbers_data();
    void gridNumbers();
    void heightsAreLines();
    void stretchesAreReadAsFactors();
    void thePayloadIsInherited();
    void theRowComesThroughUnchanged();
    void rowsDoNotShareTheirOptions();
};

void tst_prepare_row::aRowWithoutAnythingHasOneEmptyText()
{
    for (const QVariant& param : {QVariant(), QVariant(""), QVariant(QVariantMap())}) {
        const PreparedRow row = prepared(A_NONE, param);
        QCOMPARE(row.texts, QStringList(""));
        QCOMPARE(row.label, "");
        QCOMPARE(row.plainTitle, "");
        QVERIFY(row.option.isEmpty());
        QCOMPARE(row.gridColumn, -1);
        QCOMPARE(row.gridSpan, 0);
        QCOMPARE(row.heightLines, -1);
        QCOMPARE(row.stretchBehind, -1);
    }
}

void tst_prepare_row::theTitleIsTheRowsText()
{
    const PreparedRow row = prepared(A_NONE, "Name");
    QCOMPARE(row.texts, QStringList("Name"));
    QCOMPARE(row.label, "Name");
    QCOMPARE(row.plainTitle, "Name");
    QCOMPARE(row.option.map(), QVariantMap({{"title", "Name"}, {"plaintitle", "Name"}}));
}

void tst_prepare_row::aMapGivesTheOptionsAndTheTitle()
{
    const PreparedRow row = prepared(A_NONE, QVariantMap {{"title", "Konto:"}, {"min", 1}});
    QCOMPARE(row.label, "Konto:");
    QCOMPARE(row.option.map(),
             QVariantMap({{"title", "Konto:"}, {"plaintitle", "Konto:"}, {"min", 1}}));
    QCOMPARE(prepared(A_NONE, QVariantMap {{"min", 1}}).texts, QStringList(""));
}

void tst_prepare_row::attributesBecomeRules_data()
{
    QTest::addColumn<QBitArray>("attributes");
    QTest::addColumn<QVariantMap>("expected");

    QTest::newRow("mandatory") << toBitArray(A_MANDATORY) << QVariantMap {{"required", true}};
    QTest::newRow("file must exist")
        << toBitArray(A_FILE_MUST_EXIST) << QVariantMap {{"file_must_exist", true}};
    QTest::newRow("corrected bounds")
        << toBitArray(A_AUTO_CORRECT_MINMAX) << QVariantMap {{"autocorrect_minmax", true}};
    QTest::newRow("others") << toBitArray(A_HIDE | A_READONLY) << QVariantMap();
}

void tst_prepare_row::attributesBecomeRules()
{
    QFETCH(QBitArray, attributes);
    QTEST(prepared(fromBitArray(attributes)).option.map(), "expected");
}

void tst_prepare_row::attributesBeatTheOptionMap()
{
    const PreparedRow row =
        prepared(A_MANDATORY | A_ALIGN_RIGHT | A_H_MAXIMUM,
                 QVariantMap {{"required", false}, {"typealign20000", 1}, {"sizepolicyh20000", 7}});
    QCOMPARE(row.option.map(),
             QVariantMap({{"required", true}, {"typealign20000", 2}, {"sizepolicyh20000", 4}}));
}

void tst_prepare_row::widgetAlignmentIsStoredByRowType_data()
{
    QTest::addColumn<QBitArray>("attribute");
    QTest::addColumn<int>("expected");

    QTest::newRow("left") << toBitArray(A_ALIGN_LEFT) << 1;
    QTest::newRow("right") << toBitArray(A_ALIGN_RIGHT) << 2;
    QTest::newRow("hcenter") << toBitArray(A_ALIGN_HCENTER) << 4;
    QTest::newRow("justify") << toBitArray(A_ALIGN_JUSTIFY) << 8;
    QTest::newRow("top") << toBitArray(A_ALIGN_TOP) << 0x20;
    QTest::newRow("bottom") << toBitArray(A_ALIGN_BOTTOM) << 0x40;
    QTest::newRow("vcenter") << toBitArray(A_ALIGN_VCENTER) << 0x80;
    QTest::newRow("baseline") << toBitArray(A_ALIGN_BASELINE) << 0x100;
    QTest::newRow("center") << toBitArray(A_ALIGN_CENTER) << 0x84;
    QTest::newRow("top left") << toBitArray(A_ALIGN_TOP_LEFT) << 0x21;
}

void tst_prepare_row::widgetAlignmentIsStoredByRowType()
{
    QFETCH(QBitArray, attribute);
    QFETCH(int, expected);
    const PreparedRow row = prepared(fromBitArray(attribute), QVariant(), E_NUMBER);
    QCOMPARE(row.option.map(), QVariantMap({{"typealign50006", expected}}));
}

void tst_prepare_row::labelAlignmentIsStoredForLabels_data()
{
    widgetAlignmentIsStoredByRowType_data();
}

void tst_prepare_row::labelAlignmentIsStoredForLabels()
{
    QFETCH(QBitArray, attribute);
    QFETCH(int, expected);
    const PreparedRow row = prepared(fromBitArray(attribute) << 10, QVariant(), E_NUMBER);
    QCOMPARE(row.option.map(), QVariantMap({{"typealign20003", expected}}));
}

void tst_prepare_row::theFirstAlignmentWins()
{
    const PreparedRow row = prepared(A_ALIGN_TOP_LEFT | A_ALIGN_TOP | A_ALIGN_HCENTER
                                     | A_LABEL_ALIGN_CENTER | A_LABEL_ALIGN_RIGHT);
    QCOMPARE(optionOf(row, "typealign20000"), QVariant(4));
    QCOMPARE(optionOf(row, "typealign20003"), QVariant(2));
}

void tst_prepare_row::anOpenersAlignmentIsStoredByIndex()
{
    for (const int opener : {E_LAYOUT_V, E_LAYOUT_H, E_LAYOUT_GRID, E_LAYOUT_FORM, E_LAYOUT_FLOW}) {
        const PreparedRow row = prepared(A_ALIGN_TOP | A_LABEL_ALIGN_RIGHT, QVariant(), opener);
        QCOMPARE(
            row.option.map(),
            QVariantMap({{Option::buildKey("indexalign", opener), 0x20}, {"typealign20003", 2}}));
    }
}

void tst_prepare_row::theLocaleIsTheRowsOrTheForms()
{
    FormDefaults defaults;
    QVERIFY(!prepareRow(INFO(E_NUMBER), defaults).option.containsKey("locale"));

    defaults.locale = QLocale("de_DE");
    QCOMPARE(optionOf(prepareRow(INFO(E_NUMBER), defaults), "locale"), QVariant(QLocale("de_DE")));
    const INFO own(E_NUMBER, A_NONE, QVariantMap {{"locale", QLocale("fr_FR")}});
    QCOMPARE(optionOf(prepareRow(own, defaults), "locale"), QVariant(QLocale("fr_FR")));
}

void tst_prepare_row::sizePoliciesAreStoredByRowType_data()
{
    QTest::addColumn<QBitArray>("attribute");
    QTest::addColumn<QString>("key");
    QTest::addColumn<int>("expected");

    QTest::newRow("h expand") << toBitArray(A_H_EXPAND) << "sizepolicyh50006" << 7;
    QTest::newRow("v expand") << toBitArray(A_V_EXPAND) << "sizepolicyv50006" << 7;
    QTest::newRow("h minimum expand") << toBitArray(A_H_MINIMUM_EXPAND) << "sizepolicyh50006" << 3;
    QTest::newRow("v minimum expand") << toBitArray(A_V_MINIMUM_EXPAND) << "sizepolicyv50006" << 3;
    QTest::newRow("h preferred") << toBitArray(A_H_PREFERRED) << "sizepolicyh50006" << 5;
    QTest::newRow("v preferred") << toBitArray(A_V_PREFERRED) << "sizepolicyv50006" << 5;
    QTest::newRow("h maximum") << toBitArray(A_H_MAXIMUM) << "sizepolicyh50006" << 4;
    QTest::newRow("v maximum") << toBitArray(A_V_MAXIMUM) << "sizepolicyv50006" << 4;
}

void tst_prepare_row::sizePoliciesAreStoredByRowType()
{
    QFETCH(QBitArray, attribute);
    QFETCH(QString, key);
    QFETCH(int, expected);
    const PreparedRow row = prepared(fromBitArray(attribute), QVariant(), E_NUMBER);
    QCOMPARE(row.option.map(), QVariantMap({{key, expected}}));
}

void tst_prepare_row::theLastSizePolicyWins()
{
    const PreparedRow row =
        prepared(A_H_MAXIMUM | A_H_EXPAND | A_H_PREFERRED | A_V_EXPAND | A_V_MINIMUM_EXPAND);
    QCOMPARE(optionOf(row, "sizepolicyh20000"), QVariant(4));
    QCOMPARE(optionOf(row, "sizepolicyv20000"), QVariant(3));
}

void tst_prepare_row::shrinkingSetsNoMinimumWidthOverAGivenOne()
{
    QCOMPARE(optionOf(prepared(A_H_ALLOW_SHRINK), "minwidth20000"), QVariant(0));
    QCOMPARE(
        optionOf(prepared(A_H_ALLOW_SHRINK, QVariantMap {{"minwidth20000", 80}}), "minwidth20000"),
        QVariant(80));
    QCOMPARE(optionOf(prepared(A_H_ALLOW_SHRINK, QVariantMap {{"minwidth", 80}}), "minwidth20000"),
             QVariant(0));
    QCOMPARE(optionOf(prepared(A_H_ALLOW_SHRINK, "Name{{minwidth20000}{90}}"), "minwidth20000"),
             QVariant("90"));
}

void tst_prepare_row::gridNumbers_data()
{
    QTest::addColumn<QBitArray>("attributes");
    QTest::addColumn<int>("column");
    QTest::addColumn<int>("span");

    const auto row = [](const char* name, const std::bitset<256>& attr, int column, int span) {
        QTest::newRow(name) << toBitArray(attr) << column << span;
    };
    row("none", A_NONE, -1, 0);
    row("the second column", A_GRID_COL1, 1, 0);
    row("the last column there is", A_GRID_COL10, 10, 0);
    row("the highest of several", A_GRID_COL2 | A_GRID_COL5, 5, 0);
    row("span of one", A_GRID_COLSPAN1, -1, 1);
    row("span of ten", A_GRID_COLSPAN10, -1, 10);
    row("span to the end", A_GRID_COLSPAN_ALL, -1, -1);
    row("span to the end beats a number", A_GRID_COLSPAN_ALL | A_GRID_COLSPAN3, -1, -1);
    row("both", A_GRID_COL3 | A_GRID_COLSPAN2, 3, 2);
}

void tst_prepare_row::gridNumbers()
{
    QFETCH(QBitArray, attributes);
    const PreparedRow row = prepared(fromBitArray(attributes));
    QTEST(row.gridColumn, "column");
    QTEST(row.gridSpan, "span");
}

void tst_prepare_row::heightsAreLines()
{
    QCOMPARE(prepared(A_HEIGHT_1).heightLines, 1);
    QCOMPARE(prepared(A_HEIGHT_10).heightLines, 10);
    QCOMPARE(prepared(A_HEIGHT_3 | A_HEIGHT_7).heightLines, 7);
}

void tst_prepare_row::stretchesAreReadAsFactors()
{
    QCOMPARE(prepared(A_STRETCH_0).stretchBehind, 0);
    QCOMPARE(prepared(A_STRETCH_9).stretchBehind, 9);
    QVERIFY(prepared(A_STRETCH_9).option.isEmpty());

    const PreparedRow row = prepared(A_STRETCH_FACTOR_0, QVariant(), E_NUMBER);
    QCOMPARE(row.option.map(), QVariantMap({{"stretch50006", 0}}));
    QCOMPARE(row.stretchBehind, -1);
    QCOMPARE(optionOf(prepared(A_STRETCH_FACTOR_4), "stretch20000"), QVariant(4));
}

void tst_prepare_row::thePayloadIsInherited()
{
    FormDefaults defaults;
    QVERIFY(!prepareRow(INFO(E_LINEEDIT), defaults).row.anyData.has_value());
    defaults.anyData = 1;
    QCOMPARE(std::any_cast<int>(prepareRow(INFO(E_LINEEDIT), defaults).row.anyData), 1);
    const INFO own(E_LINEEDIT, A_NONE, "", {}, "a", {}, std::any(2));
    QCOMPARE(std::any_cast<int>(prepareRow(own, defaults).row.anyData), 2);
}

void tst_prepare_row::theRowComesThroughUnchanged()
{
    const INFO row(E_NUMBER, A_MANDATORY | A_GRID_COL2, "Betrag{{min}{1}};Text", 5, "amount",
                   ContextCallback([](const CallbackContext&) { return 1; }), {}, "own");
    const PreparedRow ready = prepareRow(row, {});
    QCOMPARE(ready.row.eleType, row.eleType);
    QCOMPARE(ready.row.attr, row.attr);
    QCOMPARE(ready.row.param, row.param);
    QCOMPARE(ready.row.data, row.data);
    QCOMPARE(ready.row.key, row.key);
    QCOMPARE(ready.row.callback.index(), 2U);
    QCOMPARE(ready.row.userData, row.userData);
    QVERIFY(ready.has(A_MANDATORY));
    QVERIFY(!ready.has(A_HIDE));
}

void tst_prepare_row::rowsDoNotShareTheirOptions()
{
    const QVariant param = QVariantMap {{"title", "Name"}};
    const PreparedRow first = prepared(A_MANDATORY, param);
    const PreparedRow second = prepared(A_NONE, param);
    QVERIFY(!second.option.containsKey("required"));
    QCOMPARE(param.toMap().keys(), QStringList("title"));
}

QTEST_MAIN(tst_prepare_row)
#include "tst_prepare_row.moc"
