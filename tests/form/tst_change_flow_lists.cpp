#include "form/events/change_flow.h"

#include "event_bench.h"

using namespace mod_form_qt;

class tst_change_flow_lists : public QObject
{
    Q_OBJECT

private slots:
    // selections
    void selectionIsTakenFromTheBoxAndNotFromTheSignal();
    void selectionCallsBackEvenWithoutAChange();
    void refusedSelectionIsRestored();
    void refusedSelectionAmongEqualValuesIsRestored();
    void writtenResultReplacesTheSelection();
    void severalSelectedGiveAList();
    void boundListGetsItsMarks();
    void rowWithoutKeyRemembersItsSelection();
    // dates
    void uncheckedDateStoresTheAbsentOne();
    void checkedDateBringsBackTheLastOne();
    void lastDateFollowsEveryGoodDate();
    void refusedUncheckingKeepsTheDate();
    void refusedCheckingKeepsItAbsent();
    void triggeredChangeOfAnAbsentDateKeepsItAbsent();
    void datesOfOneFormWithoutKeysStayApart();
};

namespace {

using Bench = EventBench;

QComboBox* wiredCombo(Bench& bench, const std::bitset<256>& attr, const T_LISTDATA& list,
                      const char* key = "choice")
{
    auto* box = new QComboBox;
    fillListWidget(box, list, attr);
    bench.wire(INFO(E_COMBOBOX, attr, {}, list, key), {{box, E_COMBOBOX}});
    return box;
}

/// A date row with its check box.
struct DateRow
{
    QCheckBox* box = new QCheckBox;
    QDateEdit* edit = new QDateEdit;

    DateRow(Bench& bench, const QDate& date, const std::bitset<256>& attr = A_NONE,
            const char* key = "date")
    {
        const bool absent = !date.isValid() || date >= INFO::dateInvalid;
        box->setChecked(!absent);
        edit->setEnabled(!absent);
        edit->setDisplayFormat("yyyy-MM-dd");
        edit->setDate(absent ? QDate(2020, 2, 20) : date);
        edit->setProperty("_lastDate", edit->date());
        bench.wire(INFO(E_DATE, A_INVALID_CHECKBOX | A_IMMEDIATE_DATA_UPDATE | attr, {},
                        QVariant(date), key),
                   {{new QLabel("Datum"), E_LABEL}, {box, E_CHECKBOX}, {edit, E_DATE}});
    }
};

} // namespace

// ------------------------------------------------------------------ selections

void tst_change_flow_lists::selectionIsTakenFromTheBoxAndNotFromTheSignal()
{
    Bench bench;
    QComboBox* box = wiredCombo(bench, A_NONE, letters(3, "c"));
    emit box->currentIndexChanged(0);
    QCOMPARE(bench.value("choice"), QVariant(QVariantList {"c"}));
    QCOMPARE(bench.lastValue.toString(), "c");
    QCOMPARE(box->currentIndex(), 2);
}

void tst_change_flow_lists::selectionCallsBackEvenWithoutAChange()
{
    Bench bench;
    QComboBox* box = wiredCombo(bench, A_NONE, letters(3, "b"));
    emit box->currentIndexChanged(1);
    emit box->currentIndexChanged(1);
    QCOMPARE(bench.events, Bench::told() + Bench::told());
}

void tst_change_flow_lists::refusedSelectionIsRestored()
{
    Bench bench;
    QComboBox* box = wiredCombo(bench, A_USE_BEFORE_EVENT, letters(3, "b"));
    bench.mainDecides = refusing(kBeforeDataChanged);
    const QSignalSpy changed(box, &QComboBox::currentIndexChanged);
    QTest::keyClick(box, Qt::Key_Down);
    QCOMPARE(changed.size(), 1);
    QCOMPARE(box->currentIndex(), 1);
    QCOMPARE(bench.value("choice"), QVariant(QVariantList {"b"}));
    QCOMPARE(bench.lastValue.toString(), "c");
    QCOMPARE(bench.lastPrevious.toString(), "b");
    QCOMPARE(bench.events, QStringList({"row kBeforeDataChanged", "main kBeforeDataChanged"}));
}

void tst_change_flow_lists::refusedSelectionAmongEqualValuesIsRestored()
{
    Bench bench;
    T_LISTDATA list = letters(3, "b");
    for (ListItem& item : list)
        std::get<2>(item) = QVariant(); // three items, none with a value
    std::get<2>(list[2]) = 3;
    QComboBox* box = wiredCombo(bench, A_USE_BEFORE_EVENT, list);
    bench.mainDecides = refusing(kBeforeDataChanged);
    QTest::keyClick(box, Qt::Key_Down);
    QCOMPARE(box->currentIndex(), 1);
    bench.mainDecides = {};
    QTest::keyClick(box, Qt::Key_Down);
    QCOMPARE(box->currentIndex(), 2);
    QCOMPARE(bench.value("choice"), QVariant(QVariantList {3}));
}

void tst_change_flow_lists::writtenResultReplacesTheSelection()
{
    Bench bench;
    QComboBox* box = wiredCombo(bench, A_USE_BEFORE_EVENT, letters(4, "a"));
    bench.rowDecides = [](const CallbackContext& context) {
        if (context.type == kBeforeDataChanged)
            *context.result = "d";
        return 1;
    };
    const QSignalSpy changed(box, &QComboBox::currentIndexChanged);
    QTest::keyClick(box, Qt::Key_Down);
    QCOMPARE(box->currentIndex(), 3);
    QCOMPARE(changed.size(), 1);
    QCOMPARE(bench.value("choice"), QVariant(QVariantList {"d"}));
    QCOMPARE(bench.lastValue.toString(), "d");
}

void tst_change_flow_lists::severalSelectedGiveAList()
{
    Bench bench;
    auto* list = new QListWidget;
    const T_LISTDATA items = letters(3, "a");
    fillListWidget(list, items, A_MULTISEL);
    bench.wire(INFO(E_LISTBOX, A_MULTISEL | A_USE_BEFORE_EVENT, {}, items, "list"),
               {{list, E_LISTBOX}});
    bench.show();
    QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::ControlModifier,
                      list->visualItemRect(list->item(2)).center());
    QCOMPARE(bench.lastValue, QVariant(QVariantList {"a", "c"}));
    QCOMPARE(bench.lastPrevious, QVariant(QVariantList {"a"}));
    QCOMPARE(bench.value("list"), QVariant(QVariantList {"a", "c"}));
    bench.rowDecides = refusing(kBeforeDataChanged);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::ControlModifier,
                      list->visualItemRect(list->item(1)).center());
    QCOMPARE(selectedValues(list, A_MULTISEL), QVariantList({"a", "c"}));
}

void tst_change_flow_lists::boundListGetsItsMarks()
{
    Bench bench;
    T_LISTDATA variable = letters(3, "a");
    auto* box = new QComboBox;
    fillListWidget(box, variable, A_NONE);
    bench.wire(INFO(E_COMBOBOX, A_NONE, {}, &variable, "choice"), {{box, E_COMBOBOX}});
    QTest::keyClick(box, Qt::Key_Down);
    QCOMPARE(INFO::getSelectedListValues(variable), QVariantList {"b"});
    QVERIFY(INFO::isListDataPtr(bench.map.value("choice")));
}

void tst_change_flow_lists::rowWithoutKeyRemembersItsSelection()
{
    Bench bench;
    QComboBox* box = wiredCombo(bench, A_USE_BEFORE_EVENT, letters(3, "a"), "");
    QTest::keyClick(box, Qt::Key_Down);
    bench.rowDecides = refusing(kBeforeDataChanged);
    QTest::keyClick(box, Qt::Key_Down);
    QCOMPARE(bench.lastPrevious.toString(), "b");
    QCOMPARE(box->currentIndex(), 1);
}

// ------------------------------------------------------------------ dates

void tst_change_flow_lists::uncheckedDateStoresTheAbsentOne()
{
    Bench bench;
    const DateRow row(bench, QDate(2024, 5, 6), A_USE_BEFORE_EVENT);
    QTest::keyClick(row.box, Qt::Key_Space);
    QVERIFY(!row.edit->isEnabled());
    QCOMPARE(bench.map.value("date").toDate(), INFO::dateInvalid);
    QCOMPARE(bench.events, Bench::askedAndTold());
    QCOMPARE(bench.lastPrevious.toDate(), QDate(2024, 5, 6));
    QCOMPARE(bench.lastWidget.data(), row.box);
}

void tst_change_flow_lists::checkedDateBringsBackTheLastOne()
{
    Bench bench;
    const DateRow row(bench, QDate(2024, 5, 6));
    QTest::keyClick(row.box, Qt::Key_Space);
    QTest::keyClick(row.box, Qt::Key_Space);
    QVERIFY(row.edit->isEnabled());
    QCOMPARE(row.edit->date(), QDate(2024, 5, 6));
    QCOMPARE(bench.map.value("date").toDate(), QDate(2024, 5, 6));
    QCOMPARE(bench.events, Bench::told() + Bench::told());
}

void tst_change_flow_lists::lastDateFollowsEveryGoodDate()
{
    Bench bench;
    const DateRow row(bench, QDate(2024, 5, 6));
    row.edit->setCurrentSection(QDateTimeEdit::DaySection);
    QTest::keyClick(row.edit, Qt::Key_Up);
    QCOMPARE(bench.map.value("date").toDate(), QDate(2024, 5, 7));
    QTest::keyClick(row.box, Qt::Key_Space);
    QCOMPARE(row.edit->property("_lastDate").toDate(), QDate(2024, 5, 7));
    QTest::keyClick(row.box, Qt::Key_Space);
    QCOMPARE(bench.map.value("date").toDate(), QDate(2024, 5, 7));
}

void tst_change_flow_lists::refusedUncheckingKeepsTheDate()
{
    Bench bench;
    const DateRow row(bench, QDate(2024, 5, 6), A_USE_BEFORE_EVENT);
    bench.rowDecides = refusing(kBeforeDataChanged);
    QTest::keyClick(row.box, Qt::Key_Space);
    QVERIFY(row.box->isChecked());
    QVERIFY(row.edit->isEnabled());
    QCOMPARE(row.edit->date(), QDate(2024, 5, 6));
    QCOMPARE(bench.map.value("date").toDate(), QDate(2024, 5, 6));
    QCOMPARE(bench.events, QStringList({"row kBeforeDataChanged"}));
}

void tst_change_flow_lists::refusedCheckingKeepsItAbsent()
{
    Bench bench;
    const DateRow row(bench, INFO::dateInvalid, A_USE_BEFORE_EVENT);
    bench.rowDecides = refusing(kBeforeDataChanged);
    QTest::keyClick(row.box, Qt::Key_Space);
    QVERIFY(!row.box->isChecked());
    QVERIFY(!row.edit->isEnabled());
    QCOMPARE(bench.map.value("date").toDate(), INFO::dateInvalid);
}

void tst_change_flow_lists::triggeredChangeOfAnAbsentDateKeepsItAbsent()
{
    Bench bench;
    const DateRow row(bench, INFO::dateInvalid);
    INFO::triggerEmit(row.edit, false, true);
    QCOMPARE(bench.events, Bench::told());
    QCOMPARE(bench.lastValue.toDate(), INFO::dateInvalid);
    QCOMPARE(bench.map.value("date").toDate(), INFO::dateInvalid);
}

void tst_change_flow_lists::datesOfOneFormWithoutKeysStayApart()
{
    Bench bench;
    const DateRow first(bench, QDate(2024, 5, 6), A_NONE, "");
    const DateRow second(bench, QDate(2024, 7, 8), A_NONE, "");
    QTest::keyClick(second.box, Qt::Key_Space);
    QVERIFY(first.edit->isEnabled());
    QVERIFY(!second.edit->isEnabled());
    QCOMPARE(bench.lastPrevious.toDate(), QDate(2024, 7, 8));
    QTest::keyClick(second.box, Qt::Key_Space);
    QCOMPARE(second.edit->date(), QDate(2024, 7, 8));
    QCOMPARE(bench.lastPrevious.toDate(), INFO::dateInvalid);
}

QTEST_MAIN(tst_change_flow_lists)
#include "tst_change_flow_lists.moc"
