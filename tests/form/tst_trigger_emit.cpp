#include "form/values/list_widgets.h"
#include "tests/form/hand_made_form.h"

#include <QTest>

using namespace mod_form_qt;

class tst_trigger_emit : public QObject
{
    Q_OBJECT

private slots:
    void texts();
    void lineEditThatUpdatesOnFinishReportsItsEnd();
    void checkAndRadioButtons();
    void comboBoxes();
    void listsReportTheirCurrentItem();
    void listsWithoutChecksReportTheirSelection();
    void spinBoxes_data();
    void spinBoxes();
    void dateEdits_data();
    void dateEdits();
    void absentDatesAreNotRaisedWhereOnlyValidOnesCount();
    void tabWidgetsReportTheirPage();
    void groupsReportTheirState();
    void valueButtonsAreClicked_data();
    void valueButtonsAreClicked();
    void menuButtonsReportTheirItem();
    void theCurrentValueIsPassedOn();
    void theMarkIsSetWhileItRuns();
    void aNestedCallLeavesTheMarkToTheOuterOne();
    void theWidgetMayGoWhileItRuns();
    void nullAndOtherObjectsRaiseNothing();
};

void tst_trigger_emit::texts()
{
    QLineEdit line;
    QTextEdit text;
    QPlainTextEdit plain;
    Raised heard;
    heard.listen(&line, &QLineEdit::textChanged)
        .listen(&text, &QTextEdit::textChanged)
        .listen(&plain, &QPlainTextEdit::textChanged);
    Raised finished;
    finished.listen(&line, &QLineEdit::editingFinished);
    for (QWidget* widget : QWidgetList {&line, &text, &plain})
        INFO::triggerEmit(widget, false, false);
    QCOMPARE(heard.count, 3);
    QVERIFY(heard.active);
    QCOMPARE(finished.count, 0);
}

void tst_trigger_emit::lineEditThatUpdatesOnFinishReportsItsEnd()
{
    HandMadeForm form;
    auto* edit = form.add<QLineEdit>(E_LINEEDIT, "a", A_LINEEDIT_UPDATE_ON_FINISH);
    Raised finished;
    finished.listen(edit, &QLineEdit::editingFinished);
    INFO::triggerEmit(edit, false, false);
    QCOMPARE(finished.count, 1);
}

void tst_trigger_emit::checkAndRadioButtons()
{
    QCheckBox check;
    QRadioButton radio;
    Raised heard;
    heard.listen(&check, &QCheckBox::stateChanged).listen(&radio, &QRadioButton::toggled);
    INFO::triggerEmit(&check, false, false);
    INFO::triggerEmit(&radio, true, false);
    QCOMPARE(heard.count, 2);
}

void tst_trigger_emit::comboBoxes()
{
    QComboBox combo;
    combo.addItems({"A", "B"});
    helper::CheckComboBox checks;
    Raised heard;
    heard.listen(&combo, &QComboBox::currentIndexChanged);
    INFO::triggerEmit(&combo, false, false);
    INFO::triggerEmit(&combo, true, false);
    QCOMPARE(heard.count, 2);
    {
        const QSignalBlocker quiet(&combo);
        combo.setCurrentIndex(-1);
    }
    INFO::triggerEmit(&combo, true, false);
    QCOMPARE(heard.count, 2);
    INFO::triggerEmit(&combo, false, false);
    QCOMPARE(heard.count, 3);
    heard.listen(&checks, &helper::CheckComboBox::checkedChanged);
    INFO::triggerEmit(&checks, false, false);
    QCOMPARE(heard.count, 4);
}

void tst_trigger_emit::listsReportTheirCurrentItem()
{
    HandMadeForm form;
    auto* list = form.add<QListWidget>(E_LISTBOX, "a", A_CHECKBOX);
    list->addItems({"A", "B"});
    QList<QListWidgetItem*> items;
    connect(list, &QListWidget::itemChanged, list,
            [&items](QListWidgetItem* item) { items << item; });
    INFO::triggerEmit(list, false, false);
    QVERIFY(items.isEmpty());
    list->setCurrentRow(1);
    INFO::triggerEmit(list, false, false);
    QCOMPARE(items, QList<QListWidgetItem*>({list->item(1)}));
}

void tst_trigger_emit::listsWithoutChecksReportTheirSelection()
{
    HandMadeForm form;
    auto* list = form.add<QListWidget>(E_LISTBOX, "a");
    auto* checks = form.add<QListWidget>(E_LISTBOX, "b", A_CHECKBOX);
    Raised heard;
    heard.listen(list, &QListWidget::itemSelectionChanged);
    heard.listen(checks, &QListWidget::itemSelectionChanged);
    INFO::triggerEmit(list, false, false);
    INFO::triggerEmit(checks, false, false);
    QCOMPARE(heard.count, 1);
}

void tst_trigger_emit::spinBoxes_data()
{
    QTest::addColumn<bool>("immediate");
    QTest::newRow("at once") << true;
    QTest::newRow("when finished") << false;
}

void tst_trigger_emit::spinBoxes()
{
    QFETCH(bool, immediate);
    QSpinBox whole;
    QDoubleSpinBox decimal;
    Raised changed;
    changed.listen(&whole, &QSpinBox::valueChanged).listen(&decimal, &QDoubleSpinBox::valueChanged);
    Raised finished;
    finished.listen(&whole, &QSpinBox::editingFinished)
        .listen(&decimal, &QDoubleSpinBox::editingFinished);
    INFO::triggerEmit(&whole, true, immediate);
    INFO::triggerEmit(&decimal, true, immediate);
    QCOMPARE(changed.count, immediate ? 2 : 0);
    QCOMPARE(finished.count, immediate ? 0 : 2);
}

void tst_trigger_emit::dateEdits_data()
{
    spinBoxes_data();
}

void tst_trigger_emit::dateEdits()
{
    QFETCH(bool, immediate);
    QDateEdit date;
    QDateTimeEdit moment;
    Raised changed;
    changed.listen(&date, &QDateEdit::dateChanged).listen(&moment, &QDateTimeEdit::dateTimeChanged);
    Raised finished;
    finished.listen(&date, &QDateEdit::editingFinished)
        .listen(&moment, &QDateTimeEdit::editingFinished);
    INFO::triggerEmit(&date, true, immediate);
    INFO::triggerEmit(&moment, true, immediate);
    QCOMPARE(changed.count, immediate ? 2 : 0);
    QCOMPARE(finished.count, immediate ? 0 : 2);
}

void tst_trigger_emit::absentDatesAreNotRaisedWhereOnlyValidOnesCount()
{
    HandMadeForm form;
    auto* boxed = form.add<QDateEdit>(E_DATE, "boxed", A_INVALID_CHECKBOX);
    auto* bare = form.add<QDateEdit>(E_DATE, "bare");
    bare->setDate(INFO::dateInvalid);
    boxed->setEnabled(false);
    Raised heard;
    heard.listen(boxed, &QDateEdit::dateChanged).listen(bare, &QDateEdit::dateChanged);
    heard.listen(boxed, &QDateEdit::editingFinished).listen(bare, &QDateEdit::editingFinished);
    for (const bool immediate : {false, true}) {
        INFO::triggerEmit(boxed, true, immediate);
        INFO::triggerEmit(bare, true, immediate);
    }
    QCOMPARE(heard.count, 0);
    INFO::triggerEmit(boxed, false, true);
    INFO::triggerEmit(bare, false, true);
    QCOMPARE(heard.count, 2);
    boxed->setEnabled(true);
    form.window.setEnabled(false); // which disables, but isn't the row's box
    INFO::triggerEmit(boxed, true, true);
    QCOMPARE(heard.count, 3);
}

void tst_trigger_emit::tabWidgetsReportTheirPage()
{
    QTabWidget tabs;
    Raised heard;
    heard.listen(&tabs, &QTabWidget::currentChanged);
    INFO::triggerEmit(&tabs, false, false);
    QCOMPARE(heard.count, 0);
    tabs.addTab(new QWidget, "one");
    heard.count = 0;
    INFO::triggerEmit(&tabs, false, false);
    QCOMPARE(heard.count, 1);
}

void tst_trigger_emit::groupsReportTheirState()
{
    QGroupBox group;
    QList<bool> states;
    connect(&group, &QGroupBox::clicked, &group, [&states](bool on) { states << on; });
    INFO::triggerEmit(&group, false, false);
    QVERIFY(states.isEmpty());
    group.setCheckable(true);
    INFO::triggerEmit(&group, false, false);
    QCOMPARE(states, QList<bool>({true}));
}

void tst_trigger_emit::valueButtonsAreClicked_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("clicks");
    QTest::newRow("colour") << E_COLOR_BUTTON << 1;
    QTest::newRow("font") << E_FONT_BUTTON << 1;
    QTest::newRow("address") << E_OPENURL_BUTTON << 1;
    QTest::newRow("folder") << E_BROWSE_FOLDER_BUTTON << 1;
    QTest::newRow("file to open") << E_BROWSE_FILE_OPEN_BUTTON << 1;
    QTest::newRow("file to save") << E_BROWSE_FILE_SAVE_BUTTON << 1;
    QTest::newRow("ok") << E_OK_BUTTON << 0;
    QTest::newRow("cancel") << E_CANCEL_BUTTON << 0;
    QTest::newRow("plain") << E_BUTTON << 0;
}

void tst_trigger_emit::valueButtonsAreClicked()
{
    QFETCH(int, type);
    HandMadeForm form;
    auto* button = form.put(new QPushButton, E_BUTTON, type, "a");
    Raised heard;
    heard.listen(button, &QPushButton::clicked);
    INFO::triggerEmit(button, false, false);
    QTEST(heard.count, "clicks");
    QCOMPARE(heard.active, heard.count > 0);
}

void tst_trigger_emit::menuButtonsReportTheirItem()
{
    HandMadeForm form;
    auto* button = new QPushButton;
    button->setMenu(new helper::QCheckMenu(button));
    form.put(button, E_BUTTON, E_MENU_BUTTON, "a");
    QStringList texts;
    connect(button->menu(), &QMenu::triggered, button,
            [&texts](QAction* action) { texts << action->text(); });
    INFO::triggerEmit(button, false, false);
    QVERIFY(texts.isEmpty());
    fillListWidget(button, letters("ABC", "B"), {});
    INFO::triggerEmit(button, false, false);
    fillListWidget(button, letters("ABC"), {});
    INFO::triggerEmit(button, false, false);
    QCOMPARE(texts, QStringList({"B", "A"}));
}

void tst_trigger_emit::theCurrentValueIsPassedOn()
{
    QLineEdit line("text");
    QSpinBox box;
    box.setValue(7);
    QSignalSpy texts(&line, &QLineEdit::textChanged);
    QSignalSpy numbers(&box, &QSpinBox::valueChanged);
    INFO::triggerEmit(&line, false, false);
    INFO::triggerEmit(&box, false, true);
    QCOMPARE(texts.value(0).value(0), QVariant("text"));
    QCOMPARE(numbers.value(0).value(0), QVariant(7));
}

void tst_trigger_emit::theMarkIsSetWhileItRuns()
{
    QLineEdit line;
    Raised heard;
    heard.listen(&line, &QLineEdit::textChanged);
    QVERIFY(!emitHelper::active);
    INFO::triggerEmit(&line, false, false);
    QVERIFY(heard.active);
    QVERIFY(!emitHelper::active);
}

void tst_trigger_emit::aNestedCallLeavesTheMarkToTheOuterOne()
{
    QLineEdit outer;
    QLineEdit inner;
    bool after = false;
    connect(&outer, &QLineEdit::textChanged, &outer, [&] {
        INFO::triggerEmit(&inner, false, false);
        after = emitHelper::active;
    });
    INFO::triggerEmit(&outer, false, false);
    QVERIFY(after);
    QVERIFY(!emitHelper::active);
}

void tst_trigger_emit::theWidgetMayGoWhileItRuns()
{
    auto* list = new QListWidget;
    list->addItem("A");
    list->setCurrentRow(0);
    connect(list, &QListWidget::itemChanged, this, [list] { delete list; });
    const QPointer<QListWidget> guard = list;
    INFO::triggerEmit(list, false, false);
    QVERIFY(!guard);
    QVERIFY(!emitHelper::active);
}

void tst_trigger_emit::nullAndOtherObjectsRaiseNothing()
{
    QLabel label;
    QObject object;
    INFO::triggerEmit(nullptr, false, false);
    INFO::triggerEmit(&label, false, false);
    INFO::triggerEmit(&object, false, false);
    QVERIFY(!emitHelper::active);
}

QTEST_MAIN(tst_trigger_emit)
#include "tst_trigger_emit.moc"
