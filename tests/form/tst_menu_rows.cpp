#include "tests/form/form_fixture.h"

using namespace mod_form_qt;

class tst_menu_rows : public QObject
{
    Q_OBJECT

private slots:
    void aMenuGoesIntoTheMenuBar();
    void aDialogHasItsMenuBarOnTop();
    void aMenuGoesOntoAButton();
    void anActionGoesIntoTheMenuBefore();
    void nullMenusAndActionsMakeNothing();
    void actionsOfAMenuReportUnderTheirIds();
    void aMenuInTwoRowsReportsOnce();
    void anActionOfARowReportsOnceInItsMenuToo();
    void actionsAreGroupedByNumber();
    void ofSeveralCheckedActionsOfAGroupTheFirstCounts();
    void aNewStatusBarHasALabel();
    void aStatusBarOfTheCallersOwn();
};

namespace {

/// A main window with a form.
struct WindowForm
{
    QMap<QString, QVariant> map;
    QMainWindow window;
    std::vector<SeenEvent> seen;

    void build(const QList<INFO>& rows)
    {
        INFO::applyLayout(
            &window, true, QString(), rows, {}, {}, &map, nullptr,
            [this](const CallbackContext& event) {
                seen.push_back({event.type, event.row.key, event.row.eleType, event.value, true});
                return 1;
            });
        window.show();
    }
};

QAction* add(QMenu* menu, const char* text, const char* id = nullptr, int group = -1,
             bool checkable = true)
{
    QAction* action = menu->addAction(text);
    action->setCheckable(checkable);
    if (id)
        action->setProperty("menuid", id);
    action->setProperty("menugroupno", group);
    return action;
}

} // namespace

void tst_menu_rows::aMenuGoesIntoTheMenuBar()
{
    WindowForm form;
    auto* file = new QMenu("Datei", &form.window);
    auto* view = new QMenu("Ansicht", &form.window);
    form.build({INFO(E_MENUBAR, {}, {}, {}, "bar"), INFO(E_MENU, {}, {}, file),
                INFO(E_MENU, {}, {}, view)});
    auto* bar = qobject_cast<QMenuBar*>(INFO::widgetByKey(&form.map, "bar"));
    QVERIFY(bar);
    QCOMPARE(form.window.menuBar(), bar);
    QCOMPARE(bar->actions(), (QList<QAction*> {file->menuAction(), view->menuAction()}));
    QCOMPARE(INFO::menus(&form.map).size(), 3);
}

void tst_menu_rows::aDialogHasItsMenuBarOnTop()
{
    QDialog dialog;
    QMap<QString, QVariant> map;
    auto* own = new QMenuBar(&dialog);
    INFO::applyLayout(&dialog, true, QString(), {INFO(E_MENUBAR, {}, {}, own, "bar")}, {}, {},
                      &map);
    QCOMPARE(dialog.layout()->menuBar(), own);
}

void tst_menu_rows::aMenuGoesOntoAButton()
{
    WindowForm form;
    auto* menu = new QMenu("Menü", &form.window);
    auto* other = new QMenu("Menü", &form.window);
    auto* tool = new QToolButton;
    form.build({INFO(E_BUTTON, {}, "Knopf", {}, "b"), INFO(E_MENU, {}, {}, menu),
                INFO(E_WIDGET, {}, {}, tool), INFO(E_MENU, {}, {}, other)});
    QCOMPARE(INFO::pushButtonByKey(&form.map, "b")->menu(), menu);
    QCOMPARE(tool->menu(), other);
}

void tst_menu_rows::anActionGoesIntoTheMenuBefore()
{
    WindowForm form;
    auto* menu = new QMenu("Menü", &form.window);
    auto* action = new QAction("Los", &form.window);
    form.build({INFO(E_MENUBAR), INFO(E_MENU, {}, {}, menu), INFO(E_ACTION, {}, {}, action, "go")});
    QCOMPARE(menu->actions(), (QList<QAction*> {action}));
    form.seen.clear();
    action->trigger();
    QCOMPARE(form.seen.size(), 1U);
    QCOMPARE(form.seen.front().type, kAfterAction);
    QCOMPARE(form.seen.front().key, "go");
}

void tst_menu_rows::nullMenusAndActionsMakeNothing()
{
    QMenu* menu = nullptr;
    QAction* action = nullptr;
    QMenuBar* bar = nullptr;
    QStatusBar* status = nullptr;
    WindowForm form;
    form.build({INFO(E_MENUBAR, {}, {}, bar, "bar"), INFO(E_MENU, {}, {}, menu),
                INFO(E_ACTION, {}, {}, action, "go"), INFO(E_STATUSBAR, {}, {}, status, "status")});
    QVERIFY(WIDGET_INFO::widgets(&form.map, "bar").empty());
    QVERIFY(WIDGET_INFO::widgets(&form.map, "status").empty());
    QVERIFY(INFO::menus(&form.map).isEmpty());
}

void tst_menu_rows::actionsOfAMenuReportUnderTheirIds()
{
    WindowForm form;
    auto* menu = new QMenu("Menü", &form.window);
    auto* sub = menu->addMenu("Mehr");
    QAction* action = add(sub, "Raster", "grid");
    form.build({INFO(E_MENUBAR), INFO(E_MENU, {}, {}, menu)});
    form.seen.clear();
    action->trigger();
    QCOMPARE(form.map.value("grid"), true);
    QCOMPARE(form.seen.size(), 1U);
    QCOMPARE(form.seen.front().key, "grid");
    QCOMPARE(form.seen.front().eleType, E_MENU);
}

void tst_menu_rows::aMenuInTwoRowsReportsOnce()
{
    WindowForm form;
    auto* menu = new QMenu("Menü", &form.window);
    QAction* action = add(menu->addMenu("Mehr"), "Raster", "grid");
    form.build({INFO(E_MENUBAR), INFO(E_MENU, {}, {}, menu), INFO(E_BUTTON, {}, "Knopf", {}, "b"),
                INFO(E_MENU, {}, {}, menu)});
    QCOMPARE(INFO::pushButtonByKey(&form.map, "b")->menu(), menu);
    form.seen.clear();
    action->trigger();
    QCOMPARE(form.seen.size(), 1U);
    QCOMPARE(form.map.value("grid"), true);
    action->trigger();
    QCOMPARE(form.seen.size(), 2U);
    QCOMPARE(form.map.value("grid"), false);
}

void tst_menu_rows::anActionOfARowReportsOnceInItsMenuToo()
{
    WindowForm form;
    auto* menu = new QMenu("Menü", &form.window);
    auto* action = new QAction("Los", &form.window);
    form.build({INFO(E_MENUBAR), INFO(E_MENU, {}, {}, menu), INFO(E_ACTION, {}, {}, action, "go"),
                INFO(E_BUTTON, {}, "Knopf", {}, "b"), INFO(E_MENU, {}, {}, menu)});
    form.seen.clear();
    action->trigger();
    QCOMPARE(form.seen.size(), 1U);
    QCOMPARE(form.seen.front().key, "go");
}

void tst_menu_rows::actionsAreGroupedByNumber()
{
    WindowForm form;
    auto* one = new QMenu("Eins", &form.window);
    auto* two = new QMenu("Zwei", &form.window);
    QAction* a = add(one, "a", "a", 1);
    QAction* b = add(two, "b", "b", 1);
    QAction* c = add(two, "c", "c", 2);
    QAction* none = add(two, "d", "d", -1);
    QAction* plain = add(two, "e", "e", 1, false);
    QAction* grouped = add(two, "f", "f", 1);
    QActionGroup own(nullptr);
    own.addAction(grouped);
    form.build({INFO(E_MENUBAR), INFO(E_MENU, {}, {}, one), INFO(E_MENU, {}, {}, two)});
    QVERIFY(a->actionGroup());
    QCOMPARE(b->actionGroup(), a->actionGroup());
    QVERIFY(c->actionGroup() && c->actionGroup() != a->actionGroup());
    QVERIFY(!none->actionGroup());
    QVERIFY(!plain->actionGroup());
    QCOMPARE(grouped->actionGroup(), &own);
}

void tst_menu_rows::ofSeveralCheckedActionsOfAGroupTheFirstCounts()
{
    WindowForm form;
    auto* one = new QMenu("Eins", &form.window);
    auto* two = new QMenu("Zwei", &form.window);
    QAction* none = add(one, "keins", "none", 1);
    QAction* first = add(one, "a", "a", 1);
    QAction* second = add(two, "b", "b", 1);
    QAction* third = add(two, "c", "c", 1);
    QAction* other = add(two, "d", "d", 2);
    for (QAction* action : {first, second, third, other})
        action->setChecked(true);
    form.build({INFO(E_MENUBAR), INFO(E_MENU, {}, {}, one), INFO(E_MENU, {}, {}, two)});
    QVERIFY(first->isChecked());
    for (const QAction* action : {none, second, third})
        QVERIFY2(!action->isChecked(), qPrintable(action->text()));
    QVERIFY(other->isChecked());
    second->trigger();
    QVERIFY(second->isChecked());
    QVERIFY(!first->isChecked());
}

void tst_menu_rows::aNewStatusBarHasALabel()
{
    WindowForm form;
    form.build({INFO(E_STATUSBAR, {}, {}, {}, "status")});
    auto* bar = qobject_cast<QStatusBar*>(INFO::widgetByKey(&form.map, "status"));
    QCOMPARE(form.window.statusBar(), bar);
    QVERIFY(bar->findChild<QLabel*>());
    QVERIFY(!bar->isSizeGripEnabled());
    QCOMPARE(INFO::statusBars(&form.map), (QList<QPointer<QStatusBar>> {bar}));
}

void tst_menu_rows::aStatusBarOfTheCallersOwn()
{
    WindowForm form;
    auto* bar = new QStatusBar;
    form.build({INFO(E_STATUSBAR, {}, {}, bar, "status")});
    QCOMPARE(form.window.statusBar(), bar);
    QVERIFY(!bar->findChild<QLabel*>());
}

QTEST_MAIN(tst_menu_rows)
#include "tst_menu_rows.moc"
