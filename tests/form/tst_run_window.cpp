#include "form/build/run_window.h"
#include "tests/form/form_probe.h"

#include <QSignalSpy>

using namespace mod_form_qt;

/// How windows of forms are run, shown and placed.
class tst_run_window : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void firstRunModeCounts_data();
    void firstRunModeCounts();
    void dialogGivesItsResult_data();
    void dialogGivesItsResult();
    void shownDialogGivesOne_data();
    void shownDialogGivesOne();
    void shownDialogKeepsAMapOfTheEngine();
    void mainWindowGivesItsExitCode_data();
    void mainWindowGivesItsExitCode();
    void exitCodeIsUndecidedWhileAMainWindowRuns();
    void mainWindowIsModalToTheApplication();
    void mainWindowRunsTheApplicationLoop();
    void mainWindowInsideARunningLoopUsesItsOwn();
    void windowIsDeletedOnClosing_data();
    void windowIsDeletedOnClosing();
    void sharedWindowOutlivesItsRun_data();
    void sharedWindowOutlivesItsRun();
    void lastOwnerDeletesASharedWindow();
    void staysOnTop_data();
    void staysOnTop();
    void visibleDialogStaysVisibleOnTop();
    void isPlacedInTheMiddle_data();
    void isPlacedInTheMiddle();
    void isMaximized();
    void maximizedAloneHasNoEffect();
    void isRaised();
    void goneWindowIsNotPlaced();
    void existingWindowIsPlacedToo();

private:
    QMap<QString, QVariant> m_map;
    FormProbe m_probe;
    std::unique_ptr<QObject> m_context;
};

void tst_run_window::initTestCase()
{
    QGuiApplication::setQuitOnLastWindowClosed(false);
}

void tst_run_window::init()
{
    m_map.clear();
    m_probe = FormProbe();
    m_context = std::make_unique<QObject>();
    endStuckModals(m_context.get());
}

void tst_run_window::cleanup()
{
    QGuiApplication::setQuitOnLastWindowClosed(false);
    m_context.reset();
    QCOMPARE(visibleWindows(), QStringList());
}

void tst_run_window::firstRunModeCounts_data()
{
    QTest::addColumn<INFO::MainFlags>("flags");
    QTest::addColumn<INFO::MainFlags>("expected");
    const INFO::MainFlags other = MF_CREATE_WINDOW | MF_MODAL;
    QTest::newRow("none") << other << other;
    QTest::newRow("all") << (other | MF_EXEC | MF_OPEN | MF_SHOW) << (other | MF_EXEC);
    QTest::newRow("open and show") << (other | MF_OPEN | MF_SHOW) << (other | MF_OPEN);
    QTest::newRow("show") << (other | MF_SHOW) << (other | MF_SHOW);
}

void tst_run_window::firstRunModeCounts()
{
    QFETCH(INFO::MainFlags, flags);
    QTEST(withOneRunMode(flags), "expected");
}

void tst_run_window::dialogGivesItsResult_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<int>("code");
    QTest::newRow("accepted") << "ok" << 1;
    QTest::newRow("rejected") << "cancel" << 0;
    QTest::newRow("closed") << "close" << 0;
    QTest::newRow("ended by the program") << "" << 7;
}

void tst_run_window::dialogGivesItsResult()
{
    QFETCH(QString, button);
    onceModal(m_context.get(), [&](QWidget* window) {
        if (button.isEmpty())
            qobject_cast<QDialog*>(window)->done(7);
        else
            clickButton(m_map, button.toUtf8().constData());
    });
    const auto result = INFO::createAndExecDialog(nullptr, "Form", closableRows(), {}, {}, &m_map);
    QTEST(result.code, "code");
}

void tst_run_window::shownDialogGivesOne_data()
{
    QTest::addColumn<INFO::MainFlags>("flags");
    QTest::addColumn<Qt::WindowModality>("modality");
    using Flags = INFO::MainFlags;
    QTest::newRow("open") << Flags(MF_OPEN) << Qt::WindowModal;
    QTest::newRow("open modally") << Flags(MF_OPEN | MF_MODAL) << Qt::ApplicationModal;
    QTest::newRow("show") << Flags(MF_SHOW) << Qt::NonModal;
    QTest::newRow("show modally") << Flags(MF_SHOW | MF_MODAL) << Qt::ApplicationModal;
}

void tst_run_window::shownDialogGivesOne()
{
    QFETCH(INFO::MainFlags, flags);
    QWidget parent;
    parent.show();
    const auto result =
        INFO::createAndExecDialog(&parent, "Form", closableRows(), flags, {}, &m_map);
    QCOMPARE(result.code, 1);
    QVERIFY(result.mainWidget);
    QVERIFY(result.mainWidget->isVisible());
    QTEST(result.mainWidget->windowModality(), "modality");
    QVERIFY(QTest::qWaitForWindowExposed(result.mainWidget));
    QCOMPARE(QApplication::activeModalWidget(),
             flags.testAnyFlags(MF_OPEN | MF_MODAL) ? result.mainWidget.data() : nullptr);
    clickButton(m_map, "ok");
    QTRY_VERIFY(!result.mainWidget);
}

void tst_run_window::shownDialogKeepsAMapOfTheEngine()
{
    QPointer<QWidget> window;
    QWeakPointer<QMap<QString, QVariant>> map;
    {
        const auto result = INFO::createAndExecDialog(nullptr, "Form", closableRows(), MF_SHOW);
        window = result.mainWidget;
        map = result.map;
    }
    QVERIFY(map);
    QTest::keyClicks(INFO::lineEditByKey(map.toStrongRef().data(), "name"), "y");
    QCOMPARE(map.toStrongRef()->value("name").toString(), QString("xy"));
    window->close();
    QTRY_VERIFY(!window);
    QTRY_VERIFY(!map);
}

void tst_run_window::mainWindowGivesItsExitCode_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<int>("code");
    QTest::newRow("accepted") << "ok" << 1;
    QTest::newRow("rejected") << "cancel" << 0;
    QTest::newRow("closed") << "close" << 0;
    QTest::newRow("closed by its own button") << "" << 0;
}

void tst_run_window::mainWindowGivesItsExitCode()
{
    QFETCH(QString, button);
    onceModal(m_context.get(), [&](QWidget* window) {
        if (button.isEmpty())
            window->windowHandle()->close();
        else
            clickButton(m_map, button.toUtf8().constData());
    });
    const auto result =
        INFO::createAndExecMainWindow(nullptr, true, "Form", closableRows(), {}, {}, &m_map);
    QTEST(result.code, "code");
    QTEST(helper::MainWnd::exitCode, "code");
}

void tst_run_window::exitCodeIsUndecidedWhileAMainWindowRuns()
{
    helper::MainWnd::exitCode = 1;
    onceModal(m_context.get(), [&](QWidget* window) {
        QCOMPARE(helper::MainWnd::exitCode, -1);
        window->close();
    });
    INFO::createAndExecMainWindow(nullptr, true, "Form", closableRows(), {}, {}, &m_map);
    QCOMPARE(helper::MainWnd::exitCode, 0);
}

void tst_run_window::mainWindowIsModalToTheApplication()
{
    onceModal(m_context.get(), [&](QWidget* window) {
        QVERIFY(qobject_cast<helper::MainWnd*>(window));
        QCOMPARE(window->windowModality(), Qt::ApplicationModal);
        window->close();
    });
    INFO::createAndExecMainWindow(nullptr, true, "Form", closableRows(), {}, {}, &m_map);
}

void tst_run_window::mainWindowRunsTheApplicationLoop()
{
    // Only the application's loop is ended by the last window.
    QGuiApplication::setQuitOnLastWindowClosed(true);
    QSignalSpy quits(QCoreApplication::instance(), &QCoreApplication::aboutToQuit);
    onceModal(m_context.get(), [&](QWidget*) { clickButton(m_map, "ok"); });
    const auto result =
        INFO::createAndExecMainWindow(nullptr, false, "Form", closableRows(), {}, {}, &m_map);
    QCOMPARE(result.code, 1);
    QCOMPARE(quits.count(), 1);
    QVERIFY(!result.mainWidget);
}

void tst_run_window::mainWindowInsideARunningLoopUsesItsOwn()
{
    QSignalSpy quits(QCoreApplication::instance(), &QCoreApplication::aboutToQuit);
    QEventLoop outer;
    int code = -2;
    QTimer::singleShot(0, &outer, [&] {
        onceModal(m_context.get(), [&](QWidget*) { clickButton(m_map, "ok"); });
        code = INFO::createAndExecMainWindow(nullptr, false, "Form", closableRows(), {}, {}, &m_map)
                   .code;
        outer.quit();
    });
    outer.exec();
    QCOMPARE(code, 1);
    QCOMPARE(quits.count(), 0);
}

void tst_run_window::windowIsDeletedOnClosing_data()
{
    QTest::addColumn<bool>("mainWindow");
    QTest::newRow("dialog") << false;
    QTest::newRow("main window") << true;
}

void tst_run_window::windowIsDeletedOnClosing()
{
    QFETCH(bool, mainWindow);
    onceModal(m_context.get(), [&](QWidget* window) {
        QVERIFY(window->testAttribute(Qt::WA_DeleteOnClose) || !mainWindow);
        window->close();
    });
    const auto result = mainWindow
        ? INFO::createAndExecMainWindow(nullptr, true, "Form", closableRows(), {}, {}, &m_map)
        : INFO::createAndExecDialog(nullptr, "Form", closableRows(), {}, {}, &m_map);
    QVERIFY(!result.mainWidget);
    QVERIFY(!result.window);
}

void tst_run_window::sharedWindowOutlivesItsRun_data()
{
    windowIsDeletedOnClosing_data();
}

void tst_run_window::sharedWindowOutlivesItsRun()
{
    QFETCH(bool, mainWindow);
    onceModal(m_context.get(), [&](QWidget* window) {
        QVERIFY(!window->testAttribute(Qt::WA_DeleteOnClose));
        window->close();
    });
    const auto result = mainWindow
        ? INFO::createAndExecMainWindow(nullptr, true, "Form", closableRows(),
                                        MF_SHARED_DELETE_LATER, {}, &m_map)
        : INFO::createAndExecDialog(nullptr, "Form", closableRows(), MF_SHARED_DELETE_LATER, {},
                                    &m_map);
    QCoreApplication::processEvents();
    QVERIFY(result.window);
    QCOMPARE(result.window.data(), result.mainWidget.data());
    QVERIFY(!result.window->isVisible());
    QVERIFY(result.window->findChild<QLineEdit*>());
}

void tst_run_window::lastOwnerDeletesASharedWindow()
{
    auto result = INFO::createAndExecDialog(nullptr, "Form", closableRows(),
                                            MF_SHARED_DELETE_LATER | MF_SHOW, {}, &m_map);
    const QPointer<QWidget> window = result.mainWidget;
    QSharedPointer<QWidget> copy = result.window;
    window->close();
    result = {};
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(window);
    copy.reset();
    QVERIFY(window); // not at once
    QTRY_VERIFY(!window);
}

void tst_run_window::staysOnTop_data()
{
    QTest::addColumn<INFO::MainFlags>("flags");
    QTest::addColumn<bool>("onTop");
    QTest::newRow("asked for") << INFO::MainFlags(MF_SHOW | MF_STAY_ON_TOP) << true;
    QTest::newRow("not asked for") << INFO::MainFlags(MF_SHOW) << false;
}

void tst_run_window::staysOnTop()
{
    QFETCH(INFO::MainFlags, flags);
    const auto result =
        INFO::createAndExecDialog(nullptr, "Form", closableRows(), flags, {}, &m_map);
    QTEST(result.mainWidget->windowFlags().testFlag(Qt::WindowStaysOnTopHint), "onTop");
    delete result.mainWidget;
}

void tst_run_window::visibleDialogStaysVisibleOnTop()
{
    QDialog dialog;
    dialog.show();
    INFO::applyLayout(&dialog, false, "Form", closableRows(), MF_STAY_ON_TOP, {}, &m_map);
    QVERIFY(dialog.windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    QVERIFY(dialog.isVisible());
}

void tst_run_window::isPlacedInTheMiddle_data()
{
    QTest::addColumn<INFO::MainFlags>("mode");
    QTest::newRow("show") << INFO::MainFlags(MF_SHOW);
    QTest::newRow("open") << INFO::MainFlags(MF_OPEN);
}

void tst_run_window::isPlacedInTheMiddle()
{
    QFETCH(INFO::MainFlags, mode);
    const auto result = INFO::createAndExecDialog(nullptr, "Form", closableRows(),
                                                  mode | MF_PLACE_CENTER, {}, &m_map);
    QWidget* window = result.mainWidget;
    window->move(1, 1); // the placement follows from the event loop
    const auto offCenter = [&] {
        return (window->frameGeometry().center() - window->screen()->availableGeometry().center())
            .manhattanLength();
    };
    QVERIFY(offCenter() > 2);
    QTRY_VERIFY(offCenter() <= 2);
    delete window;
}

void tst_run_window::isMaximized()
{
    const auto result =
        INFO::createAndExecDialog(nullptr, "Form", closableRows(),
                                  MF_SHOW | MF_PLACE_CENTER | MF_PLACE_MAXIMIZED, {}, &m_map);
    QVERIFY(!result.mainWidget->isMaximized());
    QTRY_VERIFY(result.mainWidget->isMaximized());
    delete result.mainWidget;
}

void tst_run_window::maximizedAloneHasNoEffect()
{
    const auto result = INFO::createAndExecDialog(
        nullptr, "Form", closableRows(), MF_SHOW | MF_PLACE_MAXIMIZED | MF_PLACE_RAISE, {}, &m_map);
    result.mainWidget->hide();
    QTRY_VERIFY(result.mainWidget->isVisible()); // the placement has run
    QVERIFY(!result.mainWidget->isMaximized());
    delete result.mainWidget;
}

void tst_run_window::isRaised()
{
    const auto result = INFO::createAndExecDialog(nullptr, "Form", closableRows(),
                                                  MF_SHOW | MF_PLACE_RAISE, {}, &m_map);
    QWidget other;
    other.show();
    other.activateWindow();
    QTRY_VERIFY(result.mainWidget->isActiveWindow());
    delete result.mainWidget;
}

void tst_run_window::goneWindowIsNotPlaced()
{
    const auto result = INFO::createAndExecDialog(
        nullptr, "Form", closableRows(), MF_SHOW | MF_PLACE_CENTER | MF_PLACE_RAISE, {}, &m_map);
    delete result.mainWidget;
    QCoreApplication::processEvents();
    QVERIFY(!result.mainWidget);
}

void tst_run_window::existingWindowIsPlacedToo()
{
    QMainWindow window;
    const auto result =
        INFO::getLayout(&window, true, "", closableRows(), MF_PLACE_CENTER, {}, &m_map);
    auto* central = new QWidget;
    central->setLayout(result.layout);
    window.setCentralWidget(central);
    window.show();
    window.move(1, 1);
    const auto offCenter = [&] {
        return (window.frameGeometry().center() - window.screen()->availableGeometry().center())
            .manhattanLength();
    };
    QVERIFY(offCenter() > 2);
    QTRY_VERIFY(offCenter() <= 2);
    QVERIFY(!window.testAttribute(Qt::WA_DeleteOnClose));
}

QTEST_MAIN(tst_run_window)
#include "tst_run_window.moc"
