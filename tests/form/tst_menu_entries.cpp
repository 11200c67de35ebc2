#include "form/mod_form_qt.h"

#include <QtTest>
#include <QtWidgets>

using namespace mod_form_qt;

namespace {

std::vector<MenuEntry> entriesOf(QMenu* menu)
{
    std::vector<MenuEntry> entries;
    showTree(menu, 0, &entries);
    return entries;
}

/// A menu with two entries of each kind, of which the second can be found by "x" or by 5.
struct SampleMenu
{
    QMenu menu {"Datei"};
    QAction* action;
    QWidgetAction* widget;

    SampleMenu()
    {
        addAction(&menu, nullptr, "a", "a")->setData(4);
        addMenuWidget(&menu, nullptr, new QLabel("w"), "w");
        addSeparator(&menu, nullptr, {}, "s");
        QMenu* more = addMenu(&menu, nullptr, "Mehr", "x");
        action = addAction(more, nullptr, "b", "x");
        action->setData(5);
        widget = addMenuWidget(more, nullptr, new QLabel("x"), "x");
        widget->setData(5);
        addAction(more, nullptr, "c", "x")->setData(5);
    }
};

} // namespace

/// Entries of menus from typed arguments, and how they are found again.
class tst_menu_entries : public QObject
{
    Q_OBJECT

private slots:
    // actions
    void anActionHasWhatItIsGiven();
    void anActionAloneBelongsToTheCaller();
    void checkStateSaysWhatCanBeChecked_data();
    void checkStateSaysWhatCanBeChecked();
    void shortcutContextIsAppliedInItsRange_data();
    void shortcutContextIsAppliedInItsRange();
    void withoutAShortcutThereIsNone();
    void entriesGoBeforeAnother();
    void numbersAreIdentifiers();
    // separators
    void aSeparatorIsOne();
    void aSeparatorAloneBelongsToTheCaller();
    // menus
    void aMenuGoesIntoItsParent();
    void aMenuGoesBeforeAnEntry();
    void aMenuAloneBelongsToTheCaller();
    void aMenuIsHiddenByItsEntry();
    void aMenuKeepsItsSeparators();
    // widgets
    void aWidgetIsAnEntry();
    void aWidgetAloneBelongsToItsEntry();
    void noWidgetIsNoEntry();
    // looking up
    void entriesAreFoundByTheirId();
    void entriesAreFoundByTheirData();
    void valuesOfAnotherTypeAreComparedAsVariants();
    void entriesAreFoundInAForm();
    void goneEntriesAreNotFound();
};

void tst_menu_entries::anActionHasWhatItIsGiven()
{
    QMenu menu;
    const Roles roles = {{Qt::StatusTipRole, "Tipp"}};
    const QAction* action = addAction(&menu, nullptr, "Raster", "grid", 1, 3, roles, false, false,
                                      QKeySequence("Ctrl+G"), Qt::ApplicationShortcut);
    QCOMPARE(menu.actions(), (QList<QAction*> {const_cast<QAction*>(action)}));
    QCOMPARE(action->parent(), &menu);
    QCOMPARE(action->text(), "Raster");
    QCOMPARE(action->property("menuid").typeId(), int(QMetaType::QString));
    QCOMPARE(action->property("menuid"), "grid");
    QCOMPARE(action->property("menugroupno"), 3);
    QVERIFY(action->isCheckable());
    QVERIFY(action->isChecked());
    QCOMPARE(action->statusTip(), "Tipp");
    QVERIFY(!action->isVisible());
    QVERIFY(!action->isEnabled());
    QCOMPARE(action->shortcut(), QKeySequence("Ctrl+G"));
    QCOMPARE(action->shortcutContext(), Qt::ApplicationShortcut);
}

void tst_menu_entries::anActionAloneBelongsToTheCaller()
{
    const std::unique_ptr<QAction> action(createAction("Raster", "grid", 0, 2, {}, true, false,
                                                       QKeySequence("F5"), Qt::WidgetShortcut));
    QVERIFY(!action->parent());
    QVERIFY(action->associatedObjects().isEmpty());
    QCOMPARE(action->property("menuid"), "grid");
    QCOMPARE(action->property("menugroupno"), 2);
    QVERIFY(action->isCheckable() && !action->isChecked());
    QVERIFY(action->isVisible() && !action->isEnabled());
    QCOMPARE(action->shortcut(), QKeySequence("F5"));
    QCOMPARE(action->shortcutContext(), Qt::WidgetShortcut);
}

void tst_menu_entries::checkStateSaysWhatCanBeChecked_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<bool>("checkable");
    QTest::addColumn<bool>("checked");
    QTest::newRow("-2") << -2 << false << false;
    QTest::newRow("-1") << -1 << false << false;
    QTest::newRow("0") << 0 << true << false;
    QTest::newRow("1") << 1 << true << true;
    QTest::newRow("2") << 2 << true << false;
}

void tst_menu_entries::checkStateSaysWhatCanBeChecked()
{
    QFETCH(int, state);
    const std::unique_ptr<QAction> action(createAction("a", "a", state));
    QTEST(action->isCheckable(), "checkable");
    QTEST(action->isChecked(), "checked");
}

void tst_menu_entries::shortcutContextIsAppliedInItsRange_data()
{
    QTest::addColumn<int>("context");
    QTest::addColumn<int>("expected");
    const int unchanged = int(QAction().shortcutContext());
    for (int context = 0; context < 4; ++context)
        QTest::addRow("%d", context) << context << context;
    QTest::newRow("4") << 4 << unchanged;
    QTest::newRow("-1") << -1 << unchanged;
    QTest::newRow("-2") << -2 << unchanged;
}

void tst_menu_entries::shortcutContextIsAppliedInItsRange()
{
    QFETCH(int, context);
    const std::unique_ptr<QAction> action(
        createAction("a", "a", -1, -1, {}, true, true, QKeySequence("F5"), context));
    QTEST(int(action->shortcutContext()), "expected");
}

void tst_menu_entries::withoutAShortcutThereIsNone()
{
    const std::unique_ptr<QAction> action(createAction("a"));
    QVERIFY(action->shortcuts().isEmpty());
    QCOMPARE(action->property("menuid"), QString());
    QCOMPARE(action->property("menugroupno"), -1);
}

void tst_menu_entries::entriesGoBeforeAnother()
{
    QMenu menu;
    QAction* last = addAction(&menu, nullptr, "z");
    QAction* action = addAction(&menu, last, "a");
    QAction* separator = addSeparator(&menu, last);
    QMenu* more = addMenu(&menu, last, "m");
    QWidgetAction* widget = addMenuWidget(&menu, last, new QLabel);
    QCOMPARE(menu.actions(),
             (QList<QAction*> {action, separator, more->menuAction(), widget, last}));
}

void tst_menu_entries::numbersAreIdentifiers()
{
    QMenu menu;
    QAction* action = addAction(&menu, nullptr, "a", 12);
    QCOMPARE(action->property("menuid"), QString("12"));
    QCOMPARE(findMenuDataByID<QAction>(entriesOf(&menu), 12), action);
}

void tst_menu_entries::aSeparatorIsOne()
{
    QMenu menu;
    const QAction* separator =
        addSeparator(&menu, nullptr, "Teil", "s", {{Qt::ToolTipRole, "Tipp"}}, true, false);
    QVERIFY(separator->isSeparator());
    QCOMPARE(separator->text(), "Teil");
    QCOMPARE(separator->property("menuid"), "s");
    QCOMPARE(separator->property("menugroupno"), -1);
    QVERIFY(separator->isCheckable());
    QVERIFY(!separator->isChecked());
    QVERIFY(!separator->isEnabled());
    QVERIFY(separator->shortcut().isEmpty());
    QCOMPARE(separator->toolTip(), "Tipp");
    QVERIFY(!addSeparator(&menu, nullptr, {}, {}, {}, false)->isVisible());
}

void tst_menu_entries::aSeparatorAloneBelongsToTheCaller()
{
    const std::unique_ptr<QAction> separator(createSeparator("Teil", "s"));
    QVERIFY(separator->isSeparator());
    QVERIFY(!separator->parent());
    QCOMPARE(separator->property("menuid"), "s");
}

void tst_menu_entries::aMenuGoesIntoItsParent()
{
    QMenu menu;
    QMenu* more = addMenu(&menu, nullptr, "Mehr", "more", {{Qt::StatusTipRole, "Tipp"}});
    QCOMPARE(menu.actions(), (QList<QAction*> {more->menuAction()}));
    QCOMPARE(more->parent(), &menu);
    QCOMPARE(more->title(), "Mehr");
    QCOMPARE(more->property("menuid"), "more");
    QCOMPARE(more->statusTip(), "Tipp");
}

void tst_menu_entries::aMenuGoesBeforeAnEntry()
{
    QMenu menu;
    QAction* last = addAction(&menu, nullptr, "z");
    QMenu* more = addMenu(&menu, last, "Mehr");
    QCOMPARE(menu.actions(), (QList<QAction*> {more->menuAction(), last}));
    QCOMPARE(more->parent(), &menu);
    QVERIFY(!more->isVisible());
}

void tst_menu_entries::aMenuAloneBelongsToTheCaller()
{
    const std::unique_ptr<QMenu> menu(createMenu("Mehr", "more", {}, true, false));
    QVERIFY(!menu->parent());
    QCOMPARE(menu->title(), "Mehr");
    QCOMPARE(menu->property("menuid"), "more");
    QVERIFY(menu->menuAction()->isVisible());
    QVERIFY(!menu->menuAction()->isEnabled());
    QVERIFY(!menu->isVisible());
}

void tst_menu_entries::aMenuIsHiddenByItsEntry()
{
    QMenu menu;
    const QMenu* more = addMenu(&menu, nullptr, "Mehr", {}, {}, false);
    QVERIFY(!more->menuAction()->isVisible());
    const QMenu* shown = addMenu(&menu, nullptr, "Mehr", {}, {}, true);
    QVERIFY(shown->menuAction()->isVisible());
    QVERIFY(!shown->isVisible());
}

void tst_menu_entries::aMenuKeepsItsSeparators()
{
    QMenu menu;
    QVERIFY(!addMenu(&menu, nullptr, "a")->separatorsCollapsible());
    QAction* before = addAction(&menu, nullptr, "z");
    QVERIFY(!addMenu(&menu, before, "b")->separatorsCollapsible());
    const std::unique_ptr<QMenu> alone(createMenu("c"));
    QVERIFY(!alone->separatorsCollapsible());
}

void tst_menu_entries::aWidgetIsAnEntry()
{
    QMenu menu;
    auto* label = new QLabel("Feld");
    const QWidgetAction* action = addMenuWidget(&menu, nullptr, label, "w");
    QCOMPARE(action->defaultWidget(), label);
    QCOMPARE(action->property("menuid"), "w");
    QCOMPARE(action->parent(), &menu);
    QCOMPARE(menu.actions().size(), 1);
}

void tst_menu_entries::aWidgetAloneBelongsToItsEntry()
{
    const QPointer<QLabel> label = new QLabel("Feld");
    {
        const std::unique_ptr<QWidgetAction> action(createMenuWidget(label, "w"));
        QVERIFY(!action->parent());
        QCOMPARE(action->property("menuid"), "w");
    }
    QVERIFY(label.isNull());
}

void tst_menu_entries::noWidgetIsNoEntry()
{
    QMenu menu;
    QVERIFY(!addMenuWidget(&menu, nullptr, nullptr, "w"));
    QVERIFY(!createMenuWidget(nullptr, "w"));
    QVERIFY(menu.isEmpty());
}

void tst_menu_entries::entriesAreFoundByTheirId()
{
    SampleMenu sample;
    const std::vector<MenuEntry> entries = entriesOf(&sample.menu);
    QCOMPARE(findMenuDataByID<QAction>(entries, "x"), sample.action);
    QCOMPARE(findMenuDataByID<QWidgetAction>(entries, "x"), sample.widget);
    QVERIFY(findMenuDataByID<QAction>(entries, "s")->isSeparator());
    QVERIFY(!findMenuDataByID<QWidgetAction>(entries, "a"));
    QVERIFY(!findMenuDataByID<QAction>(entries, "X"));
}

void tst_menu_entries::entriesAreFoundByTheirData()
{
    SampleMenu sample;
    const std::vector<MenuEntry> entries = entriesOf(&sample.menu);
    QCOMPARE(findMenuDataByUserData<QAction>(entries, 5), sample.action);
    QCOMPARE(findMenuDataByUserData<QWidgetAction>(entries, 5), sample.widget);
    QVERIFY(!findMenuDataByUserData<QAction>(entries, 6));
    QVERIFY(!findMenuDataByUserData<QWidgetAction>(entries, 4));
}

void tst_menu_entries::valuesOfAnotherTypeAreComparedAsVariants()
{
    SampleMenu sample;
    const std::vector<MenuEntry> entries = entriesOf(&sample.menu);
    QCOMPARE(findMenuDataByUserData<QAction>(entries, "5"), sample.action);
    QVERIFY(!findMenuDataByUserData<QAction>(entries, "fünf"));
}

void tst_menu_entries::entriesAreFoundInAForm()
{
    QMap<QString, QVariant> map;
    SampleMenu sample;
    QMenu first("Leer");
    INFO::storeMenu(&first, &map);
    INFO::storeMenu(&sample.menu, &map);
    std::vector<PlacedMenuEntry> entries;
    INFO::collectMenuData(&map, &entries);
    QCOMPARE(findMenuDataByID<QAction>(entries, "x"), sample.action);
    QCOMPARE(findMenuDataByUserData<QWidgetAction>(entries, 5), sample.widget);
    QCOMPARE(findMenuDataByID<QMenu>(entries, "x")->title(), "Mehr");
}

void tst_menu_entries::goneEntriesAreNotFound()
{
    SampleMenu sample;
    const std::vector<MenuEntry> entries = entriesOf(&sample.menu);
    delete sample.action;
    QCOMPARE(findMenuDataByID<QAction>(entries, "x")->text(), "c");
    QVERIFY(!findMenuDataByID<QAction>(std::vector<MenuEntry> {nullptr}, "x"));
}

QTEST_MAIN(tst_menu_entries)
#include "tst_menu_entries.moc"
