#include "tests/form/hand_made_form.h"

#include <QTest>

using namespace mod_form_qt;

namespace {

INFO row(int type, const DataVariant& data, const char* key, const std::bitset<256>& attr = {})
{
    return INFO(type, attr, "Title", data, key);
}

/// Binds a row that takes its value from the map.
INFO bound(INFO row, QMap<QString, QVariant>& map)
{
    bindRow(row, &map, true, {});
    return row;
}

} // namespace

class tst_row_value : public QObject
{
    Q_OBJECT

private slots:
    void plainRowLivesInTheMap();
    void rowWithoutKeyUsesTheOneGiven();
    void rowWithoutKeyAndVariableLivesNowhere();
    void nullMapIsTolerated();
    void boundRowLivesInItsVariable();
    void changeGoesToTheVariableAndToAPlainEntryThatReplacedIt();
    void missingEntryOfABoundRowGetsThePointerAgain();
    void anotherPointerInTheMapIsWrittenThroughToo();
    void nullPointerBindsNothing();
    void listComesFromTheVariableTheMapOrTheRow();
    void listIsWrittenWhereItLives();

    void bindingPutsTheDataIntoTheMap();
    void mapValueIsTakenWhereTheRowOrTheFormSaysSo_data();
    void mapValueIsTakenWhereTheRowOrTheFormSaysSo();
    void missingMapValueLeavesTheRowsOwn();
    void pointerRowWithoutKeyGetsAGeneratedOne();
    void plainRowWithoutKeyIsLeftAlone();
    void bindingToleratesANullMap();
    void plainMapValueGoesIntoTheVariable();
    void pointerInTheMapIsNotFollowedByABoundRow();
    void rowWithoutAPointerAdoptsTheOneInTheMap();
    void boundRowIgnoresTheMapUnlessToldOtherwise();
    void storedSelectionMarksTheItems_data();
    void storedSelectionMarksTheItems();
    void storedSelectionMarksABoundList();
    void storedSelectionMarksTheListInAVariable();
    void listDataInTheMapReplacesTheItems();
    void selectionInAVariableOfTheMapGetsTheItems();
};

void tst_row_value::plainRowLivesInTheMap()
{
    QMap<QString, QVariant> map {{"a", 1}};
    const INFO info = row(E_LINEEDIT, QVariant("row's own"), "a");
    RowValue value(info, &map);
    QVERIFY(value.exists());
    QCOMPARE(value.key(), "a");
    QCOMPARE(value.read(), QVariant(1));
    value.write(2);
    QCOMPARE(map["a"], QVariant(2));
}

void tst_row_value::rowWithoutKeyUsesTheOneGiven()
{
    QMap<QString, QVariant> map {{"other", 1}};
    const INFO keyless = row(E_LINEEDIT, {}, "");
    QCOMPARE(RowValue(keyless, &map, "other").read(), QVariant(1));
    const INFO keyed = row(E_LINEEDIT, {}, "own");
    QCOMPARE(RowValue(keyed, &map, "other").key(), "own");
}

void tst_row_value::rowWithoutKeyAndVariableLivesNowhere()
{
    QMap<QString, QVariant> map {{"", 1}};
    const INFO info = row(E_LINEEDIT, QVariant(5), "");
    RowValue value(info, &map);
    QVERIFY(!value.exists());
    QVERIFY(!value.read().isValid());
    value.write(2);
    QCOMPARE(map, (QMap<QString, QVariant> {{"", 1}}));
}

void tst_row_value::nullMapIsTolerated()
{
    QVariant variable = 1;
    const INFO plain = row(E_LINEEDIT, {}, "a");
    const INFO pointer = row(E_LINEEDIT, &variable, "a");
    RowValue(plain, nullptr).write(1);
    QVERIFY(!RowValue(plain, nullptr).exists());
    QVERIFY(!RowValue(plain, nullptr).read().isValid());
    RowValue(pointer, nullptr).write(2);
    QCOMPARE(RowValue(pointer, nullptr).read(), QVariant(2));
}

void tst_row_value::boundRowLivesInItsVariable()
{
    QVariant variable = 1;
    QMap<QString, QVariant> map;
    const INFO info = row(E_LINEEDIT, &variable, "a");
    map.insert("a", info.data);
    RowValue value(info, &map);
    QCOMPARE(value.read(), QVariant(1));
    value.write(2);
    QCOMPARE(variable, QVariant(2));
    QVERIFY(INFO::isVariantPtr(map["a"]));
}

void tst_row_value::changeGoesToTheVariableAndToAPlainEntryThatReplacedIt()
{
    QVariant variable = 1;
    QMap<QString, QVariant> map {{"a", "replaced"}};
    const INFO info = row(E_LINEEDIT, &variable, "a");
    RowValue value(info, &map);
    QCOMPARE(value.read(), QVariant(1));
    value.write(2);
    QCOMPARE(variable, QVariant(2));
    QCOMPARE(map["a"], QVariant(2));
}

void tst_row_value::missingEntryOfABoundRowGetsThePointerAgain()
{
    QVariant variable = 1;
    QMap<QString, QVariant> map;
    const INFO info = row(E_LINEEDIT, &variable, "a");
    RowValue(info, &map).write(2);
    QCOMPARE(variable, QVariant(2));
    QCOMPARE(map["a"], info.data);
}

void tst_row_value::anotherPointerInTheMapIsWrittenThroughToo()
{
    QVariant variable = 1;
    QVariant other = 1;
    QMap<QString, QVariant> map {{"a", QVariant::fromValue(&other)}};
    const INFO info = row(E_LINEEDIT, &variable, "a");
    RowValue(info, &map).write(2);
    QCOMPARE(variable, QVariant(2));
    QCOMPARE(other, QVariant(2));
    QVERIFY(INFO::isVariantPtr(map["a"]));
}

void tst_row_value::nullPointerBindsNothing()
{
    QMap<QString, QVariant> map;
    const INFO info = row(E_LINEEDIT, static_cast<QVariant*>(nullptr), "a");
    RowValue value(info, &map);
    value.write(3);
    QCOMPARE(map["a"], QVariant(3));
    QCOMPARE(value.read(), QVariant(3));
}

void tst_row_value::listComesFromTheVariableTheMapOrTheRow()
{
    T_LISTDATA list = letters("AB", "A");
    QVariant variable = QVariant::fromValue(letters("AB", "B"));
    QMap<QString, QVariant> map {{"a", QVariant::fromValue(letters("CD", "C"))}, {"b", "d"}};
    QCOMPARE(marks(RowValue(row(E_LISTBOX, &list, "a"), &map).readList()), "A");
    QCOMPARE(marks(RowValue(row(E_LISTBOX, &variable, "a"), &map).readList()), "B");
    QCOMPARE(marks(RowValue(row(E_LISTBOX, letters("EF", "E"), "a"), &map).readList()), "C");
    QCOMPARE(marks(RowValue(row(E_LISTBOX, letters("EF", "E"), "b"), &map).readList()), "E");
    QVERIFY(RowValue(row(E_LISTBOX, {}, "b"), &map).readList().empty());
}

void tst_row_value::listIsWrittenWhereItLives()
{
    T_LISTDATA list = letters("AB");
    QVariant variable = QVariant::fromValue(letters("AB"));
    QMap<QString, QVariant> map {{"list", QVariant::fromValue(&list)}, {"variable", "replaced"}};
    const INFO listRow = row(E_LISTBOX, &list, "list");
    const INFO variableRow = row(E_LISTBOX, &variable, "variable");
    const INFO plainRow = row(E_LISTBOX, letters("AB"), "plain");
    for (const INFO* info : {&listRow, &variableRow, &plainRow})
        RowValue(*info, &map).writeList(letters("AB", "B"));
    QCOMPARE(marks(list), "B");
    QVERIFY(INFO::isListDataPtr(map["list"]));
    QCOMPARE(marks(variable), "B");
    QCOMPARE(marks(map["variable"]), "B");
    QCOMPARE(marks(map["plain"]), "B");
}

void tst_row_value::bindingPutsTheDataIntoTheMap()
{
    QMap<QString, QVariant> map {{"a", "old"}};
    INFO info = row(E_LINEEDIT, QVariant("own"), "a");
    bindRow(info, &map, false, {});
    QCOMPARE(map["a"], QVariant("own"));
    QCOMPARE(info.data, QVariant("own"));
}

void tst_row_value::mapValueIsTakenWhereTheRowOrTheFormSaysSo_data()
{
    QTest::addColumn<bool>("use");
    QTest::addColumn<bool>("dontUse");
    QTest::addColumn<bool>("form");
    QTest::addColumn<bool>("loaded");
    QTest::addColumn<QString>("expected");
    QTest::newRow("nobody says so") << false << false << false << false << "own";
    QTest::newRow("the row") << true << false << false << false << "map's";
    QTest::newRow("the form") << false << false << true << false << "map's";
    QTest::newRow("just loaded") << false << false << false << true << "map's";
    QTest::newRow("the row forbids it") << true << true << true << true << "own";
}

void tst_row_value::mapValueIsTakenWhereTheRowOrTheFormSaysSo()
{
    QFETCH(bool, use);
    QFETCH(bool, dontUse);
    QFETCH(bool, form);
    QFETCH(bool, loaded);
    QMap<QString, QVariant> map {{"a", "map's"}};
    const std::bitset<256> attr =
        (use ? A_USE_MAP_VALUE : A_NONE) | (dontUse ? A_DONT_USE_MAP_VALUE : A_NONE);
    INFO info = row(E_LINEEDIT, QVariant("own"), "a", attr);
    bindRow(info, &map, form, loaded ? QSet<QString> {"a"} : QSet<QString> {"b"});
    QTEST(info.data.toString(), "expected");
    QCOMPARE(map["a"], info.data);
}

void tst_row_value::missingMapValueLeavesTheRowsOwn()
{
    QMap<QString, QVariant> map;
    QCOMPARE(bound(row(E_LINEEDIT, QVariant("own"), "a"), map).data, QVariant("own"));
    QCOMPARE(map["a"], QVariant("own"));
}

void tst_row_value::pointerRowWithoutKeyGetsAGeneratedOne()
{
    QVariant variable;
    T_LISTDATA list;
    QMap<QString, QVariant> map;
    const INFO one = bound(row(E_LINEEDIT, &variable, ""), map);
    const INFO other = bound(row(E_LISTBOX, &list, ""), map);
    QVERIFY(one.key.startsWith(INFO::automatikVarName));
    bool isNumber = false;
    one.key.mid(INFO::automatikVarName.size()).toInt(&isNumber);
    QVERIFY(isNumber);
    QVERIFY(INFO::isTempKeyName(other.key));
    QVERIFY(one.key != other.key);
    QCOMPARE(map[one.key], QVariant::fromValue(&variable));
    QCOMPARE(map[other.key], QVariant::fromValue(&list));
}

void tst_row_value::plainRowWithoutKeyIsLeftAlone()
{
    QMap<QString, QVariant> map {{"", "x"}};
    const INFO info = bound(row(E_LINEEDIT, QVariant("own"), ""), map);
    QVERIFY(info.key.isEmpty());
    QCOMPARE(info.data, QVariant("own"));
    QCOMPARE(map, (QMap<QString, QVariant> {{"", "x"}}));
}

void tst_row_value::bindingToleratesANullMap()
{
    QVariant variable = 1;
    INFO pointer = row(E_LINEEDIT, &variable, "");
    INFO plain = row(E_LINEEDIT, QVariant("own"), "a");
    bindRow(pointer, nullptr, true, {"a"});
    bindRow(plain, nullptr, true, {"a"});
    QVERIFY(INFO::isTempKeyName(pointer.key));
    QCOMPARE(plain.data, QVariant("own"));
}

void tst_row_value::plainMapValueGoesIntoTheVariable()
{
    QVariant variable = "own";
    QMap<QString, QVariant> map {{"a", "map's"}};
    const INFO info = bound(row(E_LINEEDIT, &variable, "a"), map);
    QCOMPARE(variable, QVariant("map's"));
    QCOMPARE(info.data, QVariant::fromValue(&variable));
    QCOMPARE(map["a"], info.data);
}

void tst_row_value::pointerInTheMapIsNotFollowedByABoundRow()
{
    QVariant variable = "own";
    QVariant earlier = "earlier";
    QMap<QString, QVariant> map {{"a", QVariant::fromValue(&earlier)}};
    const INFO info = bound(row(E_LINEEDIT, &variable, "a"), map);
    QCOMPARE(variable, QVariant("own"));
    QCOMPARE(earlier, QVariant("earlier"));
    QCOMPARE(map["a"], QVariant::fromValue(&variable));
}

void tst_row_value::rowWithoutAPointerAdoptsTheOneInTheMap()
{
    QVariant variable = "variable's";
    QMap<QString, QVariant> map {{"a", QVariant::fromValue(&variable)}};
    const INFO info = bound(row(E_LINEEDIT, QVariant("own"), "a"), map);
    QCOMPARE(info.data, QVariant::fromValue(&variable));
    QCOMPARE(map["a"], info.data);
    QCOMPARE(variable, QVariant("variable's"));
}

void tst_row_value::boundRowIgnoresTheMapUnlessToldOtherwise()
{
    QVariant variable = "own";
    QMap<QString, QVariant> map {{"a", "map's"}};
    INFO info = row(E_LINEEDIT, &variable, "a");
    bindRow(info, &map, false, {});
    QCOMPARE(variable, QVariant("own"));
    QCOMPARE(map["a"], QVariant::fromValue(&variable));
}

void tst_row_value::storedSelectionMarksTheItems_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<bool>("several");
    QTest::addColumn<QVariant>("stored");
    QTest::addColumn<QString>("expected");
    const QVariant none = QVariantList();
    const QVariant list = QVariantList {"c", "b"};
    QTest::newRow("combo, value") << E_COMBOBOX << false << QVariant("b") << "B";
    QTest::newRow("combo, list") << E_COMBOBOX << false << list << "C";
    QTest::newRow("combo, first that there is")
        << E_COMBOBOX << false << QVariant(QVariantList {"x", "b"}) << "B";
    QTest::newRow("combo, empty") << E_COMBOBOX << false << none << "A";
    QTest::newRow("combo, invalid") << E_COMBOBOX << false << QVariant() << "A";
    QTest::newRow("combo, no such item") << E_COMBOBOX << false << QVariant("x") << "A";
    QTest::newRow("check combo") << E_CHECKCOMBOBOX << false << list << "BC";
    QTest::newRow("check combo, value") << E_CHECKCOMBOBOX << false << QVariant("b") << "B";
    QTest::newRow("check combo, empty") << E_CHECKCOMBOBOX << false << none << "";
    QTest::newRow("check combo, texts")
        << E_CHECKCOMBOBOX << false << QVariant(QStringList {"b", "c"}) << "BC";
    QTest::newRow("check combo, invalid") << E_CHECKCOMBOBOX << false << QVariant() << "";
    QTest::newRow("list") << E_LISTBOX << false << list << "C";
    QTest::newRow("list, empty") << E_LISTBOX << false << none << "";
    QTest::newRow("list, several") << E_LISTBOX << true << list << "BC";
    QTest::newRow("list, several, empty") << E_LISTBOX << true << none << "";
    QTest::newRow("menu") << E_MENU_BUTTON << false << list << "C";
    QTest::newRow("menu, empty") << E_MENU_BUTTON << false << none << "";
    QTest::newRow("menu, several") << E_MENU_BUTTON << true << list << "BC";
}

void tst_row_value::storedSelectionMarksTheItems()
{
    QFETCH(int, type);
    QFETCH(bool, several);
    QFETCH(QVariant, stored);
    QMap<QString, QVariant> map {{"a", stored}};
    const INFO info =
        bound(row(type, letters("ABC", "A"), "a", several ? A_MULTISEL : A_NONE), map);
    QVERIFY(INFO::isListData(info.data));
    QTEST(marks(info.data), "expected");
    QCOMPARE(map["a"], info.data);
}

void tst_row_value::storedSelectionMarksABoundList()
{
    T_LISTDATA list = letters("ABC", "A");
    QMap<QString, QVariant> map {{"a", QVariantList {"b"}}};
    const INFO info = bound(row(E_COMBOBOX, &list, "a"), map);
    QCOMPARE(marks(list), "B");
    QCOMPARE(map["a"], QVariant::fromValue(&list));

    map["a"] = QVariantList();
    bound(row(E_LISTBOX, &list, "a"), map);
    QCOMPARE(marks(list), "");
}

void tst_row_value::storedSelectionMarksTheListInAVariable()
{
    QVariant variable = QVariant::fromValue(letters("ABC", "A"));
    QMap<QString, QVariant> map {{"a", "c"}};
    bound(row(E_COMBOBOX, &variable, "a"), map);
    QCOMPARE(marks(variable), "C");
    QCOMPARE(map["a"], QVariant::fromValue(&variable));
}

void tst_row_value::listDataInTheMapReplacesTheItems()
{
    T_LISTDATA list = letters("ABC", "A");
    QMap<QString, QVariant> map {{"a", QVariant::fromValue(letters("XY", "Y"))}};
    QCOMPARE(marks(bound(row(E_COMBOBOX, letters("ABC", "A"), "a"), map).data), "Y");
    map["a"] = QVariant::fromValue(letters("XY", "X"));
    bound(row(E_COMBOBOX, &list, "a"), map);
    QCOMPARE(marks(list), "X");
}

void tst_row_value::selectionInAVariableOfTheMapGetsTheItems()
{
    QVariant variable = "b";
    QMap<QString, QVariant> map {{"a", QVariant::fromValue(&variable)}};
    const INFO info = bound(row(E_COMBOBOX, letters("ABC", "A"), "a"), map);
    QCOMPARE(info.data, QVariant::fromValue(&variable));
    QCOMPARE(marks(variable), "B");
}

QTEST_MAIN(tst_row_value)
#include "tst_row_value.moc"
