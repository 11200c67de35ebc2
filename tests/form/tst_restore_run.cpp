#include "tests/form/form_probe.h"

using namespace mod_form_qt;

namespace {

T_LISTDATA twoItems()
{
    return {{"Eins", true, 1, {}}, {"Zwei", false, 2, {}}};
}

} // namespace

/// What is left of a form's changes once it has run.
class tst_restore_run : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void cancelledRunPutsEverythingBack_data();
    void cancelledRunPutsEverythingBack();
    void acceptedRunKeepsEverything_data();
    void acceptedRunKeepsEverything();
    void withoutSnapshotChangesStay();
    void onlyShownFormKeepsItsChanges();
    void plainMapValueReachesTheVariable();
    void plainMapValueIsDroppedByCancel();
    void selectionInTheMapReachesTheList();
    void checkedActionReachesTheMap();
    void checkedActionReachesAVariable();

private:
    enum Runner { Dialog, MainWindow, OwnDialog };

    int run(Runner runner, INFO::MainFlags flags, const char* button);

    QMap<QString, QVariant> m_map;
    QVariant m_text;
    T_LISTDATA m_list;
    std::function<void()> m_before; // runs before the form is ended
    std::unique_ptr<QObject> m_context;
};

void tst_restore_run::initTestCase()
{
    QGuiApplication::setQuitOnLastWindowClosed(false);
}

void tst_restore_run::init()
{
    m_map = {{"name", "vorher"}, {"other", 1}};
    m_text = "Text";
    m_list = twoItems();
    m_before = {};
    m_context = std::make_unique<QObject>();
    endStuckModals(m_context.get());
}

void tst_restore_run::cleanup()
{
    m_context.reset();
    QCOMPARE(visibleWindows(), QStringList());
}

/// Changes every field as a user does and ends the form with a button.
int tst_restore_run::run(Runner runner, INFO::MainFlags flags, const char* button)
{
    QList<INFO> rows = closableRows();
    rows.append(INFO(E_LINEEDIT, A_NONE, "Text", &m_text, "text"));
    rows.append(INFO(E_LINEEDIT, A_NONE, "Ohne Schlüssel", &m_text));
    rows.append(INFO(E_COMBOBOX, A_NONE, "Liste", &m_list, "list"));
    onceModal(m_context.get(), [&](QWidget*) {
        QTest::keyClicks(INFO::lineEditByKey(&m_map, "name"), "!");
        QTest::keyClicks(INFO::lineEditByKey(&m_map, "text"), "!");
        QTest::keyClick(INFO::comboBoxByKey(&m_map, "list"), Qt::Key_Down);
        if (m_before)
            m_before();
        clickButton(m_map, button);
    });
    switch (runner) {
    case Dialog:
        return INFO::createAndExecDialog(nullptr, "Form", rows, flags, {}, &m_map).code;
    case MainWindow:
        return INFO::createAndExecMainWindow(nullptr, true, "Form", rows, flags, {}, &m_map).code;
    case OwnDialog:
        return DialogBase().applyLayoutAndStart(true, "Form", rows, flags, {}, &m_map);
    }
    return -2;
}

void tst_restore_run::cancelledRunPutsEverythingBack_data()
{
    QTest::addColumn<int>("runner");
    QTest::addColumn<QString>("button");
    for (const char* button : {"cancel", "close"}) {
        QTest::addRow("dialog, %s", button) << int(Dialog) << button;
        QTest::addRow("main window, %s", button) << int(MainWindow) << button;
        QTest::addRow("own dialog, %s", button) << int(OwnDialog) << button;
    }
}

void tst_restore_run::cancelledRunPutsEverythingBack()
{
    QFETCH(int, runner);
    QFETCH(QString, button);
    m_before = [&] {
        QCOMPARE(m_text, QVariant("Text!"));
        QCOMPARE(INFO::getSelectedListValue(m_list), QVariant(2));
    };
    QCOMPARE(run(Runner(runner), {}, button.toUtf8().constData()), 0);
    QCOMPARE(m_map, (QVariantMap {{"name", "vorher"}, {"other", 1}}));
    QCOMPARE(m_text, QVariant("Text"));
    QCOMPARE(m_list, twoItems());
}

void tst_restore_run::acceptedRunKeepsEverything_data()
{
    QTest::addColumn<int>("runner");
    QTest::newRow("dialog") << int(Dialog);
    QTest::newRow("main window") << int(MainWindow);
    QTest::newRow("own dialog") << int(OwnDialog);
}

void tst_restore_run::acceptedRunKeepsEverything()
{
    QFETCH(int, runner);
    QCOMPARE(run(Runner(runner), {}, "ok"), 1);
    QCOMPARE(m_map.value("name"), QVariant("x!"));
    QCOMPARE(m_map.value("other"), QVariant(1));
    QCOMPARE(INFO::getBaseValue(&m_map, "text"), QVariant("Text!"));
    QCOMPARE(m_text, QVariant("Text!"));
    QCOMPARE(INFO::getSelectedListValue(m_list), QVariant(2));
}

void tst_restore_run::withoutSnapshotChangesStay()
{
    for (const Runner runner : {Dialog, MainWindow, OwnDialog}) {
        init();
        QCOMPARE(run(runner, MF_NO_SNAPSHOT, "cancel"), 0);
        QCOMPARE(m_map.value("name"), QVariant("x!"));
        QCOMPARE(m_text, QVariant("Text!"));
    }
}

void tst_restore_run::onlyShownFormKeepsItsChanges()
{
    QPointer<QWidget> window =
        INFO::createAndExecDialog(nullptr, "Form", closableRows(), MF_SHOW, {}, &m_map).mainWidget;
    QTest::keyClicks(INFO::lineEditByKey(&m_map, "name"), "!");
    clickButton(m_map, "cancel");
    QTRY_VERIFY(!window);
    QCOMPARE(m_map.value("name"), QVariant("x!"));
}

void tst_restore_run::plainMapValueReachesTheVariable()
{
    m_before = [&] { m_map["text"] = "aus der Karte"; };
    run(Dialog, {}, "ok");
    QCOMPARE(m_text, QVariant("aus der Karte"));
}

void tst_restore_run::plainMapValueIsDroppedByCancel()
{
    m_before = [&] { m_map["text"] = "aus der Karte"; };
    run(Dialog, {}, "cancel");
    QCOMPARE(m_text, QVariant("Text"));
    QVERIFY(!m_map.contains("text"));
}

void tst_restore_run::selectionInTheMapReachesTheList()
{
    m_before = [&] { m_map["list"] = 1; };
    run(Dialog, {}, "ok");
    QCOMPARE(INFO::getSelectedListValue(m_list), QVariant(1));
    m_before = [&] { m_map["list"] = QVariant::fromValue(T_LISTDATA {{"Drei", true, 3, {}}}); };
    run(Dialog, {}, "ok");
    QCOMPARE(INFO::getSelectedListValue(m_list), QVariant(3));
}

void tst_restore_run::checkedActionReachesTheMap()
{
    QMenu menu("Ansicht");
    QAction* action = menu.addAction("Leiste");
    action->setCheckable(true);
    action->setProperty("menuid", "bar");
    QList<INFO> rows = closableRows();
    rows.prepend(INFO(E_MENU, A_NONE, "", static_cast<QObject*>(&menu)));
    rows.prepend(INFO(E_MENUBAR));
    onceModal(m_context.get(), [&](QWidget*) {
        // Unnoticed by the form, which listens to a click only.
        action->setChecked(true);
        clickButton(m_map, "ok");
    });
    INFO::createAndExecMainWindow(nullptr, true, "Form", rows, {}, {}, &m_map);
    QCOMPARE(m_map.value("bar"), QVariant(true));
}

void tst_restore_run::checkedActionReachesAVariable()
{
    QVariant shown = false;
    QMenu menu("Ansicht");
    QAction* action = menu.addAction("Leiste");
    action->setCheckable(true);
    action->setProperty("menuid", "bar");
    m_map["bar"] = QVariant::fromValue(&shown);
    QList<INFO> rows = closableRows();
    rows.prepend(INFO(E_MENU, A_NONE, "", static_cast<QObject*>(&menu)));
    rows.prepend(INFO(E_MENUBAR));
    onceModal(m_context.get(), [&](QWidget*) {
        action->setChecked(true);
        clickButton(m_map, "ok");
    });
    INFO::createAndExecMainWindow(nullptr, true, "Form", rows, {}, {}, &m_map);
    QCOMPARE(shown, QVariant(true));
    QVERIFY(INFO::isVariantPtr(m_map.value("bar")));
}

QTEST_MAIN(tst_restore_run)
#include "tst_restore_run.moc"
