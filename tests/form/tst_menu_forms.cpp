#include "tests/form/form_fixture.h"

using namespace mod_form_qt;

namespace {

/// A main window with a form that has menus.
struct MenuForm
{
    TestForm form;
    QMainWindow* window = new QMainWindow;

    MenuForm() { form.window.reset(window); }

    void build(const QList<INFO>& rows, INFO::MainFlags flags = {})
    {
        form.build(rows, flags);
        window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window));
        form.seen.clear();
    }

    QMenuBar* bar() const { return qobject_cast<QMenuBar*>(INFO::widgetByKey(&form.map, "bar")); }

    /// The keys of the actions that were told of.
    QStringList acted() const
    {
        QStringList keys;
        for (const SeenEvent& event : form.seen) {
            if (event.fromMain && event.type == kAfterAction)
                keys << event.key;
        }
        return keys;
    }

    QAction* find(const char* id) const
    {
        std::vector<PlacedMenuEntry> entries;
        INFO::collectMenuData(&form.map, &entries);
        return findMenuDataByID<QAction>(entries, id);
    }

    bool value(const char* key) const { return form.map.value(key).toBool(); }
};

INFO menuBar()
{
    return {E_MENUBAR, {}, {}, {}, "bar"};
}

INFO menuRow(QMenu* menu, const std::bitset<256>& attr = {})
{
    return {E_MENU, attr, {}, menu};
}

/// "Datei" with an item, a submenu and two switches that exclude each other.
QMenu* fileMenu(QWidget* owner)
{
    TREE_MENU menu("&Datei");
    menu >> "{{id}{new}}{{keysequence}{Ctrl+N}}&Neu"
            << "&Mehr"
        >> "{{id}{deep}}&Tief" << TREE_MENU::endl >> "[s]" >> "{{id}{left}}&Links[x;1;1]"
        >> "{{id}{right}}&Rechts[x;0;1]" >> "{{id}{grid}}&Gitter[x]";
    menu.menu()->setParent(owner, menu.menu()->windowFlags());
    return menu;
}

void clickEntry(QMenu* menu, QAction* action)
{
    QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action).center());
}

/// Opens a menu of a bar with the mouse.
void open(QMenuBar* bar, QMenu* menu)
{
    QTest::mouseClick(bar, Qt::LeftButton, {}, bar->actionGeometry(menu->menuAction()).center());
    QTRY_VERIFY(menu->isVisible());
}

} // namespace

/// Menus in forms as they are used.
class tst_menu_forms : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
    void anItemIsChosenWithTheMouse();
    void anItemIsChosenWithTheKeyboard();
    void anItemOfASubmenuIsChosenWithTheKeyboard();
    void escapeClosesTheMenuAndNotTheForm();
    void shortcutsWorkWithoutAMenuOnScreen_data();
    void shortcutsWorkWithoutAMenuOnScreen();
    void aMenuOfAButtonIsUsedWithTheMouse();
    void aDisabledItemIsNotChosen();
    void aCheckedItemIsAValueOfTheForm();
    void itemsOfOneNumberExcludeEachOther();
    void aRefusedChoiceIsTakenBack();
    void switchesOfAnActionRowExcludeEachOther();
    void checkStatesComeFromTheMap_data();
    void checkStatesComeFromTheMap();
    void checkStatesComeBackFromAnAcceptedForm();
    void aCancelledFormLeavesTheMapAsItWas();
    void aMenuServesTwoForms();
};

void tst_menu_forms::cleanup()
{
    QVERIFY(!QApplication::activePopupWidget());
}

void tst_menu_forms::anItemIsChosenWithTheMouse()
{
    MenuForm form;
    QMenu* menu = fileMenu(form.window);
    form.build({menuBar(), menuRow(menu)});
    open(form.bar(), menu);
    clickEntry(menu, form.find("new"));
    QCOMPARE(form.acted(), QStringList("new"));
    QVERIFY(!menu->isVisible());
}

void tst_menu_forms::anItemIsChosenWithTheKeyboard()
{
    MenuForm form;
    QMenu* menu = fileMenu(form.window);
    form.build({menuBar(), menuRow(menu), INFO(E_LINEEDIT, {}, "Name", "", "name")});
    QTest::keyClick(form.form.widget("name", E_LINEEDIT), Qt::Key_D, Qt::AltModifier);
    QTRY_VERIFY(menu->isVisible());
    QTest::keyClick(menu, Qt::Key_Up); // from the first item to the last
    QTest::keyClick(menu, Qt::Key_Return);
    QCOMPARE(form.acted(), QStringList("grid"));
    QVERIFY(form.value("grid"));
    QVERIFY(!menu->isVisible());
}

void tst_menu_forms::anItemOfASubmenuIsChosenWithTheKeyboard()
{
    MenuForm form;
    QMenu* menu = fileMenu(form.window);
    form.build({menuBar(), menuRow(menu)});
    open(form.bar(), menu);
    QTest::keyClick(menu, Qt::Key_M);
    auto* more = menu->actions().at(1)->menu<QMenu*>();
    QTRY_VERIFY(more->isVisible());
    QTest::keyClick(more, Qt::Key_T);
    QCOMPARE(form.acted(), QStringList("deep"));
    QTRY_VERIFY(!menu->isVisible());
}

void tst_menu_forms::escapeClosesTheMenuAndNotTheForm()
{
    MenuForm form;
    QMenu* menu = fileMenu(form.window);
    form.build({menuBar(), menuRow(menu)});
    open(form.bar(), menu);
    QTest::keyClick(menu, Qt::Key_Escape);
    QTRY_VERIFY(!menu->isVisible());
    QCOMPARE(form.form.count(kReject), 0);
    QVERIFY(form.window->isVisible());
}

void tst_menu_forms::shortcutsWorkWithoutAMenuOnScreen_data()
{
    QTest::addColumn<int>("host");
    QTest::newRow("menu bar") << int(E_MENUBAR);
    QTest::newRow("tool button") << int(E_WIDGET);
    QTest::newRow("push button") << int(E_BUTTON);
}

void tst_menu_forms::shortcutsWorkWithoutAMenuOnScreen()
{
    QFETCH(int, host);
    MenuForm form;
    INFO row(host, {}, {}, {}, "host");
    if (host == E_WIDGET)
        row.data = QVariant::fromValue<QWidget*>(new QToolButton(form.window));
    form.build({row, menuRow(fileMenu(form.window)), INFO(E_LINEEDIT, {}, "Name", "", "name")});
    QTest::keyClick(form.form.widget("name", E_LINEEDIT), Qt::Key_N, Qt::ControlModifier);
    QCOMPARE(form.acted(), QStringList("new"));
}

void tst_menu_forms::aMenuOfAButtonIsUsedWithTheMouse()
{
    MenuForm form;
    QMenu* menu = fileMenu(form.window);
    form.build({INFO(E_BUTTON, {}, "Menü", {}, "button"), menuRow(menu)});
    // The button runs its menu in a loop of its own.
    QTimer chooser;
    connect(&chooser, &QTimer::timeout, &chooser, [&] {
        if (!menu->isVisible())
            return;
        chooser.stop();
        clickEntry(menu, form.find("grid"));
    });
    chooser.start(1);
    QTest::mouseClick(form.form.widget("button", E_BUTTON), Qt::LeftButton);
    QTRY_COMPARE(form.acted(), QStringList("grid"));
    QVERIFY(form.value("grid"));
    QVERIFY(!menu->isVisible());
}

void tst_menu_forms::aDisabledItemIsNotChosen()
{
    MenuForm form;
    QMenu* menu = fileMenu(form.window);
    form.build({menuBar(), menuRow(menu)});
    QAction* action = form.find("new");
    action->setEnabled(false);
    open(form.bar(), menu);
    clickEntry(menu, action);
    QTest::keyClick(menu, Qt::Key_N);
    QTest::keyClick(menu, Qt::Key_Escape);
    QTRY_VERIFY(!menu->isVisible());
    QCOMPARE(form.acted(), QStringList());
}

void tst_menu_forms::aCheckedItemIsAValueOfTheForm()
{
    MenuForm form;
    QMenu* menu = fileMenu(form.window);
    form.build({menuBar(), menuRow(menu)});
    for (const bool checked : {true, false}) {
        open(form.bar(), menu);
        clickEntry(menu, form.find("grid"));
        QCOMPARE(form.form.map.value("grid"), QVariant(checked));
        QCOMPARE(form.form.seen.back().value, QVariant(checked));
    }
    QCOMPARE(form.acted(), (QStringList {"grid", "grid"}));
}

void tst_menu_forms::itemsOfOneNumberExcludeEachOther()
{
    MenuForm form;
    QMenu* menu = fileMenu(form.window);
    form.build({menuBar(), menuRow(menu)});
    QVERIFY(form.find("left")->isChecked());
    QStringList during;
    form.form.decide = [&](const CallbackContext& event) {
        if (event.type == kAfterAction)
            during << QString("%1 %2").arg(form.value("left")).arg(form.value("right"));
        return 1;
    };
    for (const char* id : {"right", "left", "right"}) {
        open(form.bar(), menu);
        clickEntry(menu, form.find(id));
    }
    QVERIFY(!form.find("left")->isChecked());
    QVERIFY(form.find("right")->isChecked());
    // The values are in step whenever a callback looks.
    QCOMPARE(during, (QStringList {"0 1", "1 0", "0 1"}));
    QVERIFY(!form.find("grid")->actionGroup());
}

void tst_menu_forms::aRefusedChoiceIsTakenBack()
{
    MenuForm form;
    QMenu* menu = fileMenu(form.window);
    form.build({menuBar(), menuRow(menu, A_USE_BEFORE_EVENT)});
    open(form.bar(), menu);
    clickEntry(menu, form.find("right"));
    QVERIFY(form.value("right"));
    form.form.decide = [](const CallbackContext& event) {
        return event.type == kBeforeAction ? 0 : 1;
    };
    open(form.bar(), menu);
    clickEntry(menu, form.find("left"));
    QVERIFY(!form.find("left")->isChecked());
    QVERIFY(form.find("right")->isChecked());
    QVERIFY(form.value("right"));
    QVERIFY(!form.value("left"));
    open(form.bar(), menu);
    clickEntry(menu, form.find("grid"));
    QVERIFY(!form.find("grid")->isChecked());
    QVERIFY(!form.form.map.contains("grid"));
}

void tst_menu_forms::switchesOfAnActionRowExcludeEachOther()
{
    MenuForm form;
    auto* menu = new QMenu("Menü", form.window);
    const std::unique_ptr<QAction> one(createAction("eins", {}, 0, 2));
    const std::unique_ptr<QAction> two(createAction("zwei", {}, 0, 2));
    form.build({menuBar(), menuRow(menu), INFO(E_ACTION, {}, {}, one.get(), "one"),
                INFO(E_ACTION, {}, {}, two.get(), "two")});
    for (QAction* action : {one.get(), two.get()}) {
        open(form.bar(), menu);
        clickEntry(menu, action);
    }
    QVERIFY(!form.value("one"));
    QVERIFY(form.value("two"));
    QCOMPARE(form.acted(), (QStringList {"one", "two"}));
}

void tst_menu_forms::checkStatesComeFromTheMap_data()
{
    QTest::addColumn<int>("flags");
    QTest::addColumn<bool>("attribute");
    QTest::addColumn<bool>("never");
    QTest::addColumn<bool>("taken");
    QTest::newRow("not asked for") << 0 << false << false << false;
    QTest::newRow("by the row") << 0 << true << false << true;
    QTest::newRow("by the form") << int(MF_USE_MAP_VALUES) << false << false << true;
    QTest::newRow("not for this row") << int(MF_USE_MAP_VALUES) << false << true << false;
}

void tst_menu_forms::checkStatesComeFromTheMap()
{
    QFETCH(int, flags);
    QFETCH(bool, attribute);
    QFETCH(bool, never);
    QFETCH(bool, taken);
    std::bitset<256> attr;
    if (attribute)
        attr |= A_USE_MAP_VALUE;
    if (never)
        attr |= A_DONT_USE_MAP_VALUE;
    MenuForm form;
    form.form.map = {{"left", false}, {"right", true}, {"grid", true}, {"new", true}};
    form.build({menuBar(), menuRow(fileMenu(form.window), attr)}, INFO::MainFlags::fromInt(flags));
    QCOMPARE(form.find("grid")->isChecked(), taken);
    QCOMPARE(form.find("right")->isChecked(), taken);
    QCOMPARE(form.find("left")->isChecked(), !taken);
    QVERIFY(!form.find("new")->isChecked());
    QCOMPARE(form.acted(), QStringList());
}

namespace {

/// Runs a dialog with a menu, in which "right" is chosen, until one of its buttons is pressed.
QMap<QString, QVariant> runDialog(const QString& buttonName)
{
    QMap<QString, QVariant> map = {{"other", 1}};
    QWidget owner;
    QMenu* menu = fileMenu(&owner);
    QTimer user;
    QObject::connect(&user, &QTimer::timeout, &user, [&] {
        QWidget* dialog = QApplication::activeModalWidget();
        if (dialog == nullptr)
            return;
        user.stop();
        std::vector<MenuEntry> entries;
        showTree(menu, 0, &entries);
        findMenuDataByID<QAction>(entries, "right")->trigger();
        QTest::mouseClick(dialog->findChild<QPushButton*>(buttonName), Qt::LeftButton);
    });
    user.start(1);
    QList<INFO> rows = {menuBar(), menuRow(menu)};
    rows += INFO::layoutOkHelpCancel();
    INFO::createAndExecDialog(nullptr, "Titel", rows, {}, {}, &map);
    return map;
}

} // namespace

void tst_menu_forms::checkStatesComeBackFromAnAcceptedForm()
{
    const QMap<QString, QVariant> map = runDialog(INFO::objectOKButtonName);
    QCOMPARE(map.value("right"), QVariant(true));
    // Also those that nobody has touched.
    QCOMPARE(map.value("left"), QVariant(false));
    QCOMPARE(map.value("grid"), QVariant(false));
    QVERIFY(!map.contains("new"));
    QVERIFY(!map.contains("deep"));
}

void tst_menu_forms::aCancelledFormLeavesTheMapAsItWas()
{
    const QMap<QString, QVariant> map = runDialog(INFO::objectCancelButtonName);
    for (const char* key : {"right", "left", "grid"})
        QVERIFY2(!map.contains(key), key);
    QCOMPARE(map.value("other"), 1);
}

void tst_menu_forms::aMenuServesTwoForms()
{
    QWidget owner;
    QMenu* menu = fileMenu(&owner);
    for (int round = 0; round < 2; ++round) {
        MenuForm form;
        form.build({menuBar(), menuRow(menu)});
        form.find("new")->trigger();
        QCOMPARE(form.acted(), QStringList("new"));
    }
    QVERIFY(menu->actions().size() == 6);
}

QTEST_MAIN(tst_menu_forms)
#include "tst_menu_forms.moc"
