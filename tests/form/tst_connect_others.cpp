#include "event_bench.h"

using namespace mod_form_qt;

namespace {

using Bench = EventBench;

QPushButton* menuButton(const T_LISTDATA& list, const std::bitset<256>& attr)
{
    auto* button = new QPushButton("Auswahl");
    button->setMenu(new helper::QCheckMenu(button));
    fillListWidget(button, list, attr);
    return button;
}

void chooseInMenu(QPushButton* button, int index)
{
    QMenu* menu = button->menu();
    menu->popup(QPoint(10, 10));
    QAction* action = menu->actions().at(index);
    QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action).center());
    menu->close();
}

} // namespace

class tst_connect_others : public QObject
{
    Q_OBJECT

private slots:
    // menu buttons
    void menuButtonRaisesActions();
    void menuButtonUnchecksTheOthers();
    void menuButtonKeepsTheOthersWithSeveral();
    void refusedMenuChoiceIsTakenBack();
    void menuButtonWithoutAMenuIsLeftAlone();
    // groups
    void groupHidesItsContentsAndStoresItsState();
    void refusedGroupShowsItsContentsAgain();
    void groupLeavesHiddenWhatWasHiddenByItself();
    void programmedGroupChangeIsNotHeard();
    // tabs
    void pageNumberIsTheValueOfTheTabs();
    void refusedPageStays();
    void pagesAreToldOfActivity();
    void triggeredPageTellsNoPages();
    // actions
    void actionStoresItsCheckState();
    void actionWithoutARowKeyUsesItsId();
    void actionIsAskedOnlyWithTheAttribute();
    void refusedActionIsUnchecked();
    void refusedActionOfAGroupGivesBackTheOther();
    void plainActionStoresNothing();
    void actionsDataIsTheValue();
    // timers
    void timerOfTheFormCallsTheFormOnce();
    void timerOfARowCallsBoth();
};

// ------------------------------------------------------------------ menu buttons

void tst_connect_others::menuButtonRaisesActions()
{
    Bench bench;
    QPushButton* button = menuButton(letters(3), A_MULTISEL);
    QCOMPARE(
        bench.wire(INFO(E_MENU_BUTTON, A_MULTISEL | A_USE_BEFORE_EVENT, {}, letters(3), "options"),
                   {{button, E_BUTTON}}),
        QStringList({"triggered"}));
    bench.show();
    chooseInMenu(button, 1);
    QCOMPARE(bench.events, Bench::askedAndTold("kBeforeAction", "kAfterAction"));
    QCOMPARE(bench.lastValue, QVariant(QVariantList {"b"}));
    QCOMPARE(bench.value("options"), QVariant(QVariantList {"b"}));
}

void tst_connect_others::menuButtonUnchecksTheOthers()
{
    Bench bench;
    QPushButton* button = menuButton(letters(3, "a"), A_NONE);
    bench.wire(INFO(E_MENU_BUTTON, A_NONE, {}, letters(3, "a"), "options"), {{button, E_BUTTON}});
    bench.show();
    chooseInMenu(button, 2);
    QCOMPARE(selectedValues(button, A_NONE), QVariantList {"c"});
    QCOMPARE(bench.value("options"), QVariant(QVariantList {"c"}));
    QCOMPARE(bench.lastValue.toString(), "c");
    QCOMPARE(bench.events, Bench::told("kAfterAction"));
}

void tst_connect_others::menuButtonKeepsTheOthersWithSeveral()
{
    Bench bench;
    QPushButton* button = menuButton(letters(3, "a"), A_MULTISEL);
    bench.wire(INFO(E_MENU_BUTTON, A_MULTISEL, {}, letters(3, "a"), "options"),
               {{button, E_BUTTON}});
    bench.show();
    chooseInMenu(button, 2);
    QCOMPARE(bench.value("options"), QVariant(QVariantList {"a", "c"}));
    chooseInMenu(button, 0);
    QCOMPARE(bench.value("options"), QVariant(QVariantList {"c"}));
}

void tst_connect_others::refusedMenuChoiceIsTakenBack()
{
    Bench bench;
    QPushButton* button = menuButton(letters(3, "a"), A_NONE);
    bench.wire(INFO(E_MENU_BUTTON, A_USE_BEFORE_EVENT, {}, letters(3, "a"), "options"),
               {{button, E_BUTTON}});
    bench.show();
    bench.mainDecides = refusing(kBeforeAction);
    chooseInMenu(button, 2);
    QCOMPARE(selectedValues(button, A_NONE), QVariantList {"a"});
    QCOMPARE(bench.value("options"), QVariant(QVariantList {"a"}));
    QCOMPARE(bench.events, QStringList({"row kBeforeAction", "main kBeforeAction"}));
}

void tst_connect_others::menuButtonWithoutAMenuIsLeftAlone()
{
    Bench bench;
    QCOMPARE(bench.wire(INFO(E_MENU_BUTTON), {{new QPushButton, E_BUTTON}}), QStringList());
}

// ------------------------------------------------------------------ groups

namespace {

/// A checkable group with a field, one in a layout of its own, and one that is hidden by itself.
struct Group
{
    QGroupBox* box = new QGroupBox("Gruppe");
    QLineEdit* field = new QLineEdit;
    QLineEdit* inner = new QLineEdit;
    QLineEdit* hidden = new QLineEdit;
    QStringList names;

    explicit Group(Bench& bench, const std::bitset<256>& attr = A_NONE)
    {
        auto* layout = new QVBoxLayout(box);
        layout->addWidget(field);
        auto* row = new QHBoxLayout;
        row->addWidget(inner);
        row->addStretch();
        layout->addLayout(row);
        layout->addWidget(hidden);
        hidden->hide();
        box->setCheckable(true);
        const RowHandle handle =
            bench.place(INFO(E_LAYOUT_V, A_CAN_HIDE_ITEMS | attr, {}, QVariant(true), "group"),
                        {{box, E_LAYOUT_V}});
        connectGroup(handle, box, layout, names);
        bench.show();
    }

    void click() const
    {
        QStyleOptionGroupBox option;
        option.initFrom(box);
        option.subControls = QStyle::SC_GroupBoxCheckBox;
        option.text = box->title();
        const QRect check = box->style()->subControlRect(QStyle::CC_GroupBox, &option,
                                                         QStyle::SC_GroupBoxCheckBox, box);
        QTest::mouseClick(box, Qt::LeftButton, {}, check.center());
    }
};

} // namespace

void tst_connect_others::groupHidesItsContentsAndStoresItsState()
{
    Bench bench;
    const Group group(bench, A_USE_BEFORE_EVENT);
    QCOMPARE(group.names, QStringList({"clicked"}));
    group.click();
    QVERIFY(!group.field->isVisible());
    QVERIFY(!group.inner->isVisible());
    QCOMPARE(bench.map.value("group"), QVariant(false));
    QCOMPARE(bench.events, Bench::askedAndTold());
    group.click();
    QVERIFY(group.field->isVisible());
    QVERIFY(group.inner->isVisible());
    QCOMPARE(bench.map.value("group"), QVariant(true));
}

void tst_connect_others::refusedGroupShowsItsContentsAgain()
{
    Bench bench;
    const Group group(bench, A_USE_BEFORE_EVENT);
    bench.rowDecides = refusing(kBeforeDataChanged);
    group.click();
    QVERIFY(group.box->isChecked());
    QVERIFY(group.field->isVisible());
    QVERIFY(group.inner->isVisible());
    QVERIFY(!group.hidden->isVisible());
    QCOMPARE(bench.map.value("group"), QVariant(true));
}

void tst_connect_others::groupLeavesHiddenWhatWasHiddenByItself()
{
    Bench bench;
    const Group group(bench);
    group.click();
    group.click();
    QVERIFY(!group.hidden->isVisible());
    group.hidden->show();
    group.click();
    QVERIFY(!group.hidden->isVisible());
    group.click();
    QVERIFY(group.hidden->isVisible());
}

void tst_connect_others::programmedGroupChangeIsNotHeard()
{
    Bench bench;
    const Group group(bench);
    group.box->setChecked(false);
    QVERIFY(bench.events.isEmpty());
    QCOMPARE(bench.map.value("group"), QVariant(true));
}

// ------------------------------------------------------------------ tabs

namespace {

/// Three pages, each with a row that notes its events as "page n ...".
struct Tabs
{
    QTabWidget* tabs = new QTabWidget;
    QStringList names;
    QStringList pageEvents;

    explicit Tabs(Bench& bench, const std::bitset<256>& attr = A_NONE)
    {
        std::vector<RowHandle> pages;
        for (int page = 0; page < 3; ++page) {
            tabs->addTab(new QWidget, QString::number(page));
            INFO row(E_TAB, A_NONE, {}, {}, "page" + QString::number(page));
            row.callback = ContextCallback([this](const CallbackContext& context) {
                pageEvents.append(context.row.key + ' ' + callbackTypeNames.value(context.type));
                return 1;
            });
            pages.push_back(std::make_shared<const RowContext>(RowContext {bench.form, row}));
        }
        const RowHandle handle =
            bench.place(INFO(E_TABWIDGET, attr, {}, QVariant(0), "tabs"), {{tabs, E_TABWIDGET}});
        connectTabs(handle, tabs, pages, names);
        bench.show();
    }

    void click(int page) const
    {
        QTest::mouseClick(tabs->tabBar(), Qt::LeftButton, {},
                          tabs->tabBar()->tabRect(page).center());
    }
};

} // namespace

void tst_connect_others::pageNumberIsTheValueOfTheTabs()
{
    Bench bench;
    const Tabs tabs(bench, A_USE_BEFORE_EVENT);
    QCOMPARE(tabs.names, QStringList({"currentChanged"}));
    tabs.click(2);
    QCOMPARE(bench.map.value("tabs"), QVariant(2));
    QCOMPARE(bench.events.mid(0, 4), Bench::askedAndTold());
    QCOMPARE(bench.events.mid(4), QStringList({"main kKillActive", "main kSetActive"}));
}

void tst_connect_others::refusedPageStays()
{
    Bench bench;
    const Tabs tabs(bench, A_USE_BEFORE_EVENT);
    bench.mainDecides = refusing(kBeforeDataChanged);
    tabs.click(1);
    QCOMPARE(tabs.tabs->currentIndex(), 0);
    QCOMPARE(bench.map.value("tabs"), QVariant(0));
    QCOMPARE(bench.events, QStringList({"row kBeforeDataChanged", "main kBeforeDataChanged"}));
    QVERIFY(tabs.pageEvents.isEmpty());
}

void tst_connect_others::pagesAreToldOfActivity()
{
    Bench bench;
    const Tabs tabs(bench);
    tabs.click(1);
    tabs.click(2);
    QCOMPARE(tabs.pageEvents,
             QStringList({"page0 kKillActive", "page1 kSetActive", "page1 kKillActive",
                          "page2 kSetActive"}));
    QCOMPARE(bench.lastWidget.data(), tabs.tabs->widget(2));
}

void tst_connect_others::triggeredPageTellsNoPages()
{
    Bench bench;
    const Tabs tabs(bench);
    INFO::triggerEmit(tabs.tabs, false, false);
    QCOMPARE(bench.events, Bench::told());
    QVERIFY(tabs.pageEvents.isEmpty());
}

// ------------------------------------------------------------------ actions

namespace {

QAction* wiredAction(Bench& bench, const std::bitset<256>& attr, const char* key,
                     QStringList* names = nullptr)
{
    auto* action = new QAction(bench.window.get());
    action->setCheckable(true);
    QStringList own;
    connectAction(bench.place(INFO(E_ACTION, attr, {}, static_cast<QObject*>(action), key), {}),
                  action, names ? *names : own);
    return action;
}

} // namespace

void tst_connect_others::actionStoresItsCheckState()
{
    Bench bench;
    QStringList names;
    QAction* action = wiredAction(bench, A_NONE, "toggle", &names);
    QCOMPARE(names, QStringList({"triggered"}));
    action->trigger();
    QCOMPARE(bench.map.value("toggle"), QVariant(true));
    QCOMPARE(bench.events, Bench::told("kAfterAction"));
    QCOMPARE(bench.lastValue, QVariant(true));
    action->trigger();
    QCOMPARE(bench.map.value("toggle"), QVariant(false));
}

void tst_connect_others::actionWithoutARowKeyUsesItsId()
{
    Bench bench;
    QAction* action = wiredAction(bench, A_NONE, "");
    action->setProperty("menuid", "from the menu");
    action->trigger();
    QCOMPARE(bench.map.value("from the menu"), QVariant(true));
    QCOMPARE(bench.lastKey, "from the menu");
    QVERIFY(!bench.map.contains(""));
}

void tst_connect_others::actionIsAskedOnlyWithTheAttribute()
{
    Bench bench;
    wiredAction(bench, A_USE_BEFORE_EVENT, "toggle")->trigger();
    QCOMPARE(bench.events, Bench::askedAndTold("kBeforeAction", "kAfterAction"));
}

void tst_connect_others::refusedActionIsUnchecked()
{
    Bench bench;
    QAction* action = wiredAction(bench, A_USE_BEFORE_EVENT, "toggle");
    bench.map.insert("toggle", "as it was");
    bench.mainDecides = refusing(kBeforeAction);
    action->trigger();
    QVERIFY(!action->isChecked());
    QCOMPARE(bench.map.value("toggle").toString(), "as it was");
    QCOMPARE(bench.events, QStringList({"row kBeforeAction", "main kBeforeAction"}));
}

void tst_connect_others::refusedActionOfAGroupGivesBackTheOther()
{
    Bench bench;
    QAction* first = wiredAction(bench, A_USE_BEFORE_EVENT, "first");
    QAction* second = wiredAction(bench, A_USE_BEFORE_EVENT, "second");
    QActionGroup group(nullptr);
    group.addAction(first);
    group.addAction(second);
    bench.mainDecides = refusing(kBeforeAction);
    first->trigger();
    QVERIFY(!first->isChecked() && !second->isChecked()); // none was checked before
    bench.mainDecides = {};
    first->trigger();
    bench.mainDecides = refusing(kBeforeAction);
    second->trigger();
    QVERIFY(first->isChecked() && !second->isChecked());
    QCOMPARE(group.checkedAction(), first);
}

void tst_connect_others::plainActionStoresNothing()
{
    Bench bench;
    QAction* action = wiredAction(bench, A_NONE, "do");
    action->setCheckable(false);
    bench.map.insert("do", "as it was");
    action->trigger();
    QCOMPARE(bench.map.value("do").toString(), "as it was");
    QCOMPARE(bench.events, Bench::told("kAfterAction"));
}

void tst_connect_others::actionsDataIsTheValue()
{
    Bench bench;
    QAction* action = wiredAction(bench, A_NONE, "do");
    action->setData("payload");
    action->trigger();
    QCOMPARE(bench.lastValue.toString(), "payload");
    QCOMPARE(bench.map.value("do"), QVariant(true));
}

// ------------------------------------------------------------------ timers

void tst_connect_others::timerOfTheFormCallsTheFormOnce()
{
    Bench bench;
    INFO row = bench.form->mainRow;
    row.key = "clock";
    QTimer timer;
    timer.setInterval(0);
    connectTimer(std::make_shared<const RowContext>(RowContext {bench.form, row}), &timer);
    timer.start();
    QTRY_VERIFY(!bench.events.isEmpty());
    timer.stop();
    QCOMPARE(bench.events.count("main kTimer"), bench.events.size());
    QCOMPARE(bench.lastKey, "clock");
    bench.events.clear();
    QVERIFY(QMetaObject::invokeMethod(&timer, "timeout"));
    QCOMPARE(bench.events, QStringList({"main kTimer"}));
    disarmForm(bench.window.get());
    QVERIFY(QMetaObject::invokeMethod(&timer, "timeout"));
    QCOMPARE(bench.events.size(), 1);
}

void tst_connect_others::timerOfARowCallsBoth()
{
    Bench bench;
    const RowHandle row = bench.place(INFO(E_LABEL, A_NONE, {}, {}, "clock"), {});
    QTimer timer;
    connectTimer(row, &timer);
    QVERIFY(QMetaObject::invokeMethod(&timer, "timeout"));
    QCOMPARE(bench.events, Bench::told("kTimer"));
    QCOMPARE(bench.lastKey, "clock");
}

QTEST_MAIN(tst_connect_others)
#include "tst_connect_others.moc"
