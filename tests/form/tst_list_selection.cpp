#include "form/values/list_widgets.h"
#include "tests/form/hand_made_form.h"

#include <QTest>

using namespace mod_form_qt;

namespace {

/// A list row with its items in the map and its widget filled.
template <typename W>
W* addList(HandMadeForm& form, int type, const QString& key, const T_LISTDATA& list,
           const std::bitset<256>& attr = {})
{
    W* widget = form.add<W>(type, key, attr);
    fillListWidget(widget, list, attr);
    form.map.insert(key, QVariant::fromValue(list));
    return widget;
}

} // namespace

class tst_list_selection : public QObject
{
    Q_OBJECT

private slots:
    void valuesOfAllItems();
    void marksTheListInTheMap();
    void marksTheListARowIsBoundTo_data();
    void marksTheListARowIsBoundTo();
    void withoutAListNothingIsMarked();
    void withoutMultiTheFirstMatchIsMarked();
    void listDataCountsByItsMarks();
    void tellsWhichValuesWereFound();
    void longSelectionsFindWhatShortOnesDo_data();
    void longSelectionsFindWhatShortOnesDo();
    void thousandsOfItemsAreMarked_data();
    void thousandsOfItemsAreMarked();
    void loadedSelectionMarksTheList_data();
    void loadedSelectionMarksTheList();
    void loadedSelectionIsWrittenThroughAPointer();
    void loadedSelectionNeedsAList();
    void showsASelectionAndLeavesTheMapAlone();
    void showingIsSilentUnlessAskedOtherwise();
    void showingNeedsAListWidget();
    void newItemsReplaceTheOldOnes();
    void newItemsReachTheBoundVariable();
    void newItemsKeepTheSelectionTheyStillHold();
    void newItemsRaiseWhatIsAskedFor_data();
    void newItemsRaiseWhatIsAskedFor();
    void handlersSeeTheNewItemsWhole();
    void newItemsNeedAListRow();
    void newItemsForARowThatHasOnlyData();
};

void tst_list_selection::valuesOfAllItems()
{
    T_LISTDATA list = letters("ABC", "B");
    const QVariantList all {"a", "b", "c"};
    QCOMPARE(INFO::getUserDataListValues(list), all);
    QCOMPARE(INFO::getUserDataListValues(QVariant::fromValue(list)), all);
    QCOMPARE(INFO::getUserDataListValues(QVariant::fromValue(&list)), all);
    QVERIFY(INFO::getUserDataListValues(QVariant("a")).isEmpty());
    QVERIFY(INFO::getUserDataListValues(QVariant::fromValue(T_LISTDATA_PTR(nullptr))).isEmpty());
}

void tst_list_selection::marksTheListInTheMap()
{
    QMap<QString, QVariant> map {{"a", QVariant::fromValue(letters("ABC", "A"))}};
    QVERIFY(INFO::setListSelData(&map, "a", QVariantList({"b", "c"}), true));
    QCOMPARE(marks(map["a"]), "BC");
    QVERIFY(INFO::setListSelData(&map, "a", QVariantList(), true));
    QCOMPARE(marks(map["a"]), "");
}

void tst_list_selection::marksTheListARowIsBoundTo_data()
{
    QTest::addColumn<bool>("isVariant");
    QTest::addColumn<bool>("replaced");
    QTest::newRow("list") << false << false;
    QTest::newRow("variable") << true << false;
    QTest::newRow("list, entry replaced") << false << true;
    QTest::newRow("variable, entry replaced") << true << true;
}

void tst_list_selection::marksTheListARowIsBoundTo()
{
    QFETCH(bool, isVariant);
    QFETCH(bool, replaced);
    T_LISTDATA list = letters("ABC", "A");
    QVariant variable = QVariant::fromValue(list);
    HandMadeForm form;
    form.add<QComboBox>(E_COMBOBOX, "a");
    if (isVariant)
        form.bind("a", &variable);
    else
        form.bind("a", &list);
    if (replaced)
        form.map.insert("a", "plain");
    QVERIFY(INFO::setListSelData(&form.map, "a", "b", false));
    QCOMPARE(isVariant ? marks(variable) : marks(list), "B");
    if (replaced)
        QCOMPARE(marks(form.map["a"]), "B");
    else
        QVERIFY(INFO::isVariantPtr(form.map["a"]) || INFO::isListDataPtr(form.map["a"]));
}

void tst_list_selection::withoutAListNothingIsMarked()
{
    QMap<QString, QVariant> map {{"a", "text"}};
    QVERIFY(!INFO::setListSelData(&map, "a", "b", true));
    QVERIFY(!INFO::setListSelData(&map, "b", "b", true));
    QVERIFY(!INFO::setListSelData(nullptr, "a", "b", true));
    QCOMPARE(map, (QMap<QString, QVariant> {{"a", "text"}}));
}

void tst_list_selection::withoutMultiTheFirstMatchIsMarked()
{
    QMap<QString, QVariant> map {{"a", QVariant::fromValue(letters("ABCB", "A"))}};
    QVERIFY(INFO::setListSelData(&map, "a", QVariantList({"x", "b", "a"}), false));
    const auto list = map["a"].value<T_LISTDATA>();
    QVERIFY(std::get<1>(list[1]));
    QVERIFY(!std::get<1>(list[3]));
    QVERIFY(!std::get<1>(list[0]));
    QVERIFY(INFO::setListSelData(&map, "a", "x", false));
    QCOMPARE(marks(map["a"]), "");
}

void tst_list_selection::listDataCountsByItsMarks()
{
    QMap<QString, QVariant> map {{"a", QVariant::fromValue(letters("ABC"))}};
    QVERIFY(INFO::setListSelData(&map, "a", QVariant::fromValue(letters("CB", "C")), true));
    QCOMPARE(marks(map["a"]), "C");
}

void tst_list_selection::tellsWhichValuesWereFound()
{
    QMap<QString, QVariant> map {{"a", QVariant::fromValue(letters("ABC"))}};
    QVariantList matched {"old"};
    QVERIFY(INFO::userSelDataToListData(&map, "a", QVariantList({"c", "x", "a"}), true, matched));
    QCOMPARE(matched, QVariantList({"c", "a"}));
    QCOMPARE(marks(map["a"]), "AC");
    QVERIFY(INFO::userSelDataToListData(&map, "a", QVariantList({"x", "b", "a"}), false, matched));
    QCOMPARE(matched, QVariantList({"b"}));
    QCOMPARE(marks(map["a"]), "B");
    QVERIFY(!INFO::userSelDataToListData(&map, "b", "a", false, matched));
    QVERIFY(matched.isEmpty());
}

void tst_list_selection::longSelectionsFindWhatShortOnesDo_data()
{
    QTest::addColumn<QVariantList>("values");
    QTest::addColumn<QVariantList>("selection");
    QTest::addColumn<QVariantList>("found");
    const QVariantList numbers {1, 2, 3, 2};
    QTest::newRow("texts") << QVariantList {"a", "b", "c"} << QVariantList {"c", "a", "d"}
                           << QVariantList {"c", "a"};
    QTest::newRow("equal texts") << QVariantList {"a", "b", "a"} << QVariantList {"a"}
                                 << QVariantList {"a"};
    QTest::newRow("no text and an empty one")
        << QVariantList {QString(), "b"} << QVariantList {QString("")} << QVariantList {QString()};
    QTest::newRow("numbers") << numbers << QVariantList {3, 2} << QVariantList {3, 2};
    QTest::newRow("numbers of another type")
        << numbers << QVariantList {3.0, 2U, qint64(1)} << QVariantList {3.0, 2U, qint64(1)};
    QTest::newRow("decimals") << QVariantList {1.5, 2.0} << QVariantList {2.0, 1.5}
                              << QVariantList {2.0, 1.5};
    QTest::newRow("mixed") << QVariantList {"a", 1, true, QDate(2024, 2, 29)}
                           << QVariantList {QDate(2024, 2, 29), "a"}
                           << QVariantList {QDate(2024, 2, 29), "a"};
    QTest::newRow("none") << QVariantList {} << QVariantList {"a"} << QVariantList {};
}

void tst_list_selection::longSelectionsFindWhatShortOnesDo()
{
    QFETCH(QVariantList, values);
    QFETCH(QVariantList, selection);
    QFETCH(QVariantList, found);
    T_LISTDATA list;
    for (const QVariant& value : values)
        list.push_back(ListItem("item", false, value, {}));
    QVariantList longer;
    for (int missing = 0; missing < 20; ++missing)
        longer.append(QStringLiteral("missing %1").arg(missing));
    longer += selection;
    for (const bool multi : {true, false}) {
        QVariantList matched;
        const std::vector<bool> marks = selectionMarks(list, longer, multi, &matched);
        QCOMPARE(marks, selectionMarks(list, selection, multi));
        QCOMPARE(matched, multi ? found : found.mid(0, 1));
        QCOMPARE(std::count(marks.begin(), marks.end(), true) > 0, !found.isEmpty());
    }
}

void tst_list_selection::thousandsOfItemsAreMarked_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<bool>("checkable");
    QTest::newRow("list") << E_LISTBOX << false;
    QTest::newRow("list of check boxes") << E_LISTBOX << true;
    QTest::newRow("check combo box") << E_CHECKCOMBOBOX << false;
}

void tst_list_selection::thousandsOfItemsAreMarked()
{
    QFETCH(int, type);
    QFETCH(bool, checkable);
    const std::bitset<256> attr = checkable ? A_CHECKBOX : A_MULTISEL;
    T_LISTDATA list;
    QVariantList odd;
    QVariantList even;
    for (int value = 0; value < 3000; ++value) {
        list.push_back(ListItem(QString::number(value), false, value, {}));
        (value % 2 ? odd : even).append(value);
    }
    HandMadeForm form;
    QWidget* widget = type == E_LISTBOX
        ? static_cast<QWidget*>(addList<QListWidget>(form, type, "a", list, attr))
        : addList<helper::CheckComboBox>(form, type, "a", list, attr);
    const QVariantList ends {0, 1, 2, 2998, 2999};
    for (const QVariantList& selection : {odd, even, ends, QVariantList()}) {
        QCOMPARE(INFO::setData(&form.map, "a", selection, false), 1);
        QCOMPARE(selectedValues(widget, attr), selection);
        QCOMPARE(INFO::getSelectedListValues(form.map["a"]), selection);
    }
}

void tst_list_selection::loadedSelectionMarksTheList_data()
{
    QTest::addColumn<QVariant>("loaded");
    QTest::addColumn<bool>("multi");
    QTest::addColumn<QString>("expected");
    QTest::addColumn<bool>("result");
    const QVariant two = QVariantList {"c", "b"};
    QTest::newRow("all stored values") << two << true << "BC" << true;
    QTest::newRow("only the first") << two << false << "C" << true;
    QTest::newRow("single value") << QVariant("b") << false << "B" << true;
    QTest::newRow("nothing, several") << QVariant(QVariantList()) << true << "" << true;
    QTest::newRow("nothing, one") << QVariant(QVariantList()) << false << "A" << false;
    QTest::newRow("invalid, one") << QVariant() << false << "A" << false;
    QTest::newRow("no such item, one") << QVariant("x") << false << "A" << false;
    QTest::newRow("no such item, several") << QVariant("x") << true << "" << true;
}

void tst_list_selection::loadedSelectionMarksTheList()
{
    QFETCH(QVariant, loaded);
    QFETCH(bool, multi);
    QFETCH(bool, result);
    QVariant list = QVariant::fromValue(letters("ABC", "A"));
    QCOMPARE(INFO::loadedSelDataToListData(loaded, list, multi), result);
    QTEST(marks(list), "expected");
}

void tst_list_selection::loadedSelectionIsWrittenThroughAPointer()
{
    T_LISTDATA list = letters("ABC", "A");
    QVariant variable = QVariant::fromValue(list);
    QVariant listPointer = QVariant::fromValue(&list);
    QVariant variablePointer = QVariant::fromValue(&variable);
    QVERIFY(INFO::loadedSelDataToListData("b", listPointer, false));
    QVERIFY(INFO::loadedSelDataToListData("c", variablePointer, false));
    QCOMPARE(marks(list), "B");
    QCOMPARE(marks(variable), "C");
    QVERIFY(INFO::isListDataPtr(listPointer));
    QVERIFY(INFO::isVariantPtr(variablePointer));
}

void tst_list_selection::loadedSelectionNeedsAList()
{
    QVariant text = "a";
    QVERIFY(!INFO::loadedSelDataToListData("a", text, true));
    QCOMPARE(text, QVariant("a"));
    QVariant none = QVariant::fromValue(T_LISTDATA_PTR(nullptr));
    QVERIFY(!INFO::loadedSelDataToListData("a", none, true));
}

void tst_list_selection::showsASelectionAndLeavesTheMapAlone()
{
    HandMadeForm form;
    auto* combo = addList<QComboBox>(form, E_COMBOBOX, "combo", letters("ABC", "A"));
    auto* list = addList<QListWidget>(form, E_LISTBOX, "list", letters("ABC"), A_MULTISEL);
    QVERIFY(INFO::selectListCtrlBySelData(&form.map, "combo", "c"));
    QVERIFY(INFO::selectListCtrlBySelData(&form.map, "list", QVariantList({"a", "c"})));
    QCOMPARE(combo->currentText(), "C");
    QCOMPARE(joined(selectedValues(list, A_MULTISEL)), "ac");
    QCOMPARE(marks(form.map["combo"]), "A");
    QCOMPARE(marks(form.map["list"]), "");
    QVERIFY(INFO::selectListCtrlBySelData(&form.map, "combo", "no such value"));
    QCOMPARE(combo->currentIndex(), -1);
    QVERIFY(INFO::selectListCtrlBySelData(&form.map, "combo",
                                          QVariant::fromValue(letters("ABC", "B"))));
    QCOMPARE(combo->currentText(), "B");
}

void tst_list_selection::showingIsSilentUnlessAskedOtherwise()
{
    HandMadeForm form;
    auto* combo = addList<QComboBox>(form, E_COMBOBOX, "a", letters("ABC", "A"));
    QSignalSpy heard(combo, &QComboBox::currentIndexChanged);
    INFO::selectListCtrlBySelData(&form.map, "a", "b");
    QCOMPARE(heard.count(), 0);
    QVERIFY(!combo->signalsBlocked());
    INFO::selectListCtrlBySelData(&form.map, "a", "c", false);
    QCOMPARE(heard.count(), 1);
}

void tst_list_selection::showingNeedsAListWidget()
{
    HandMadeForm form;
    form.add<QLineEdit>(E_LINEEDIT, "a");
    QVERIFY(!INFO::selectListCtrlBySelData(&form.map, "a", "b"));
    QVERIFY(!INFO::selectListCtrlBySelData(&form.map, "missing", "b"));
    QVERIFY(!INFO::selectListCtrlBySelData(nullptr, "a", "b"));
}

void tst_list_selection::newItemsReplaceTheOldOnes()
{
    HandMadeForm form;
    auto* combo = addList<QComboBox>(form, E_COMBOBOX, "a", letters("ABC", "A"));
    QSignalSpy heard(combo, &QComboBox::currentIndexChanged);
    T_LISTDATA items = letters("XYZ", "Y");
    QVERIFY(INFO::updateListData(QVariant::fromValue(items), &form.map, "a", INFO::NO_INIT_EVENT));
    QCOMPARE(combo->count(), 3);
    QCOMPARE(combo->currentText(), "Y");
    QCOMPARE(marks(form.map["a"]), "Y");
    items = letters("Q");
    QVERIFY(INFO::updateListData(QVariant::fromValue(&items), &form.map, "a", INFO::NO_INIT_EVENT));
    QCOMPARE(combo->count(), 1);
    QCOMPARE(combo->currentIndex(), -1);
    QVERIFY(INFO::isListData(form.map["a"]));
    QCOMPARE(heard.count(), 0);
}

void tst_list_selection::newItemsReachTheBoundVariable()
{
    T_LISTDATA list = letters("ABC", "A");
    HandMadeForm form;
    auto* widget = addList<QListWidget>(form, E_LISTBOX, "a", list);
    form.bind("a", &list);
    QVERIFY(INFO::updateListData(QVariant::fromValue(letters("XY", "X")), &form.map, "a",
                                 INFO::NO_INIT_EVENT));
    QCOMPARE(marks(list), "X");
    QVERIFY(INFO::isListDataPtr(form.map["a"]));
    QCOMPARE(widget->count(), 2);
}

void tst_list_selection::newItemsKeepTheSelectionTheyStillHold()
{
    HandMadeForm form;
    auto* checks = addList<helper::CheckComboBox>(form, E_CHECKCOMBOBOX, "a", letters("ABC", "AC"));
    const auto update = [&form](const T_LISTDATA& items) {
        return INFO::updateListData(QVariant::fromValue(items), &form.map, "a", INFO::NO_INIT_EVENT,
                                    true);
    };
    QVERIFY(update(letters("CDE", "D")));
    QCOMPARE(marks(form.map["a"]), "C");
    QCOMPARE(checks->checkedData(), QVariantList({"c"}));
    QVERIFY(update(letters("XY", "Y")));
    QCOMPARE(marks(form.map["a"]), "Y");
}

void tst_list_selection::newItemsRaiseWhatIsAskedFor_data()
{
    QTest::addColumn<int>("event");
    QTest::addColumn<QString>("marked");
    QTest::addColumn<int>("raised");
    QTest::newRow("nothing") << int(INFO::NO_INIT_EVENT) << "B" << 0;
    QTest::newRow("the change") << int(INFO::INIT_EVENT) << "B" << 1;
    QTest::newRow("the change without a selection") << int(INFO::INIT_EVENT) << "" << 1;
    QTest::newRow("if valid") << int(INFO::INIT_EVENT_VALID) << "B" << 1;
    QTest::newRow("if valid, without a selection") << int(INFO::INIT_EVENT_VALID) << "" << 0;
}

void tst_list_selection::newItemsRaiseWhatIsAskedFor()
{
    QFETCH(int, event);
    QFETCH(QString, marked);
    QFETCH(int, raised);
    HandMadeForm form;
    auto* combo = addList<QComboBox>(form, E_COMBOBOX, "a", letters("ABC", "A"));
    auto* list = addList<QListWidget>(form, E_LISTBOX, "b", letters("ABC", "A"), A_CHECKBOX);
    QSignalSpy changed(combo, &QComboBox::currentIndexChanged);
    QSignalSpy checked(list, &QListWidget::itemChanged);
    for (const char* key : {"a", "b"})
        QVERIFY(INFO::updateListData(QVariant::fromValue(letters("ABX", marked)), &form.map, key,
                                     INFO::EleInitEvent(event)));
    QCOMPARE(changed.count(), raised);
    QCOMPARE(checked.count(), raised);
}

void tst_list_selection::handlersSeeTheNewItemsWhole()
{
    HandMadeForm form;
    auto* combo = addList<QComboBox>(form, E_COMBOBOX, "a", letters("ABC", "A"));
    QStringList seen;
    connect(combo, &QComboBox::currentIndexChanged, combo,
            [combo, &seen] { seen << QString::number(combo->count()) + combo->currentText(); });
    QVERIFY(INFO::updateListData(QVariant::fromValue(letters("XY", "Y")), &form.map, "a",
                                 INFO::NO_INIT_EVENT, false, false));
    QCOMPARE(seen, QStringList("2Y"));
    seen.clear();
    QVERIFY(INFO::updateListData(QVariant::fromValue(letters("XYZ", "Y")), &form.map, "a",
                                 INFO::NO_INIT_EVENT, false, false));
    QVERIFY(seen.isEmpty()); // the same is selected as before
}

void tst_list_selection::newItemsNeedAListRow()
{
    HandMadeForm form;
    form.add<QLineEdit>(E_LINEEDIT, "a");
    form.map.insert("a", "text");
    const QVariant items = QVariant::fromValue(letters("A"));
    QVERIFY(!INFO::updateListData(items, &form.map, "a", INFO::NO_INIT_EVENT));
    QVERIFY(!INFO::updateListData(items, &form.map, "missing", INFO::NO_INIT_EVENT));
    QVERIFY(!INFO::updateListData(items, nullptr, "a", INFO::NO_INIT_EVENT));
    addList<QComboBox>(form, E_COMBOBOX, "list", letters("AB", "B"));
    QVERIFY(!INFO::updateListData("text", &form.map, "list", INFO::NO_INIT_EVENT));
    QCOMPARE(form.map["a"], QVariant("text"));
    QCOMPARE(marks(form.map["list"]), "B");
}

void tst_list_selection::newItemsForARowThatHasOnlyData()
{
    QMap<QString, QVariant> map {{"a", QVariant::fromValue(letters("AB", "B"))}};
    QVERIFY(INFO::updateListData(QVariant::fromValue(letters("BC")), &map, "a", INFO::INIT_EVENT,
                                 true));
    QCOMPARE(marks(map["a"]), "B");
    QCOMPARE(map["a"].value<T_LISTDATA>().size(), size_t(2));
}

QTEST_MAIN(tst_list_selection)
#include "tst_list_selection.moc"
