#include "tests/progress/status_bar_fixture.h"

using namespace mod_progress_qt;

class tst_status_bar_modal : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void modalWithoutBit512IsInvisible();
    void modalWithBit512LeavesTheWindowEnabled();
    void modalIsAbortedByEscape_data();
    void modalIsAbortedByEscape();
    void modalWithoutAbortIgnoresEscape_data();
    void modalWithoutAbortIgnoresEscape();
    void modalShowsItsProgress();
    void keyOnTheInvisibleDialogAborts();
    void escapeInitiatesOneAbort_data();
    void escapeInitiatesOneAbort();
    void escapeAbortsBeforeAShortcutOfTheWindow_data();
    void escapeAbortsBeforeAShortcutOfTheWindow();
    void otherShortcutsStayWithTheWindow();
    void everyStepOfAFloodCounts();

private:
    std::unique_ptr<StatusWindow> m_window;
};

void tst_status_bar_modal::init()
{
    openWindow(m_window);
}

void tst_status_bar_modal::cleanup()
{
    closeWindow(m_window);
}

void tst_status_bar_modal::modalWithoutBit512IsInvisible()
{
    bool seen = false;
    onceModal([&](ProgressDialog& dialog) {
        seen = dialog.isModal() && dialog.testAttribute(Qt::WA_DontShowOnScreen)
            && dialog.size() == QSize(0, 0);
        ProgressDialog::hasOpenDialogs(nullptr, false, true);
    });
    const auto result =
        ProgressDialog::createModal(m_window.get(), withFlags(kAbort), {}, waitForAbort);
    QVERIFY(!result.first);
    QVERIFY(seen);
    QVERIFY(m_window->isEnabled());
}

void tst_status_bar_modal::modalWithBit512LeavesTheWindowEnabled()
{
    bool seen = false;
    whenever([] { return theDialog() != nullptr; },
             [&] {
                 seen = m_window->isEnabled() && !theDialog()->isVisible()
                     && QApplication::activeModalWidget() == nullptr;
                 ProgressDialog::hasOpenDialogs(nullptr, false, true);
             });
    const auto result = ProgressDialog::createModal(m_window.get(), withFlags(kAbort | kNoDialog),
                                                    {}, waitForAbort);
    QVERIFY(!result.first);
    QVERIFY(seen);
}

void tst_status_bar_modal::modalIsAbortedByEscape_data()
{
    bothWays();
}

void tst_status_bar_modal::modalIsAbortedByEscape()
{
    QFETCH(int, flags);
    const Messages messages;
    Messages::clear();
    ProgressDialog::showDebug = true;
    const auto shortcutIsThere = [this] { return m_window->findChild<QShortcut*>() != nullptr; };
    whenever(shortcutIsThere,
             [this] { QTest::keyClick(m_window->windowHandle(), Qt::Key_Escape); });
    const auto result =
        ProgressDialog::createModal(m_window.get(), withFlags(flags), {}, waitForAbort);
    QVERIFY(!result.first);
    QCOMPARE(std::any_cast<QString>(result.second->transferredData()), "aborted");
    QCOMPARE(Messages::all().count("ABORT (SHORTCUT)"), 1);
    settle();
    QVERIFY(m_window->findChildren<QShortcut*>().isEmpty());
}

void tst_status_bar_modal::modalWithoutAbortIgnoresEscape_data()
{
    QTest::addColumn<int>("flags");
    QTest::newRow("invisible dialog") << 0;
    QTest::newRow("no dialog") << kNoDialog;
}

void tst_status_bar_modal::modalWithoutAbortIgnoresEscape()
{
    QFETCH(int, flags);
    std::atomic<bool> pressed = false;
    whenever([] { return theDialog() != nullptr; },
             [&] {
                 QTest::keyClick(m_window->windowHandle(), Qt::Key_Escape);
                 QTest::keyClick(theDialog(), Qt::Key_Escape);
                 pressed = true;
             });
    const auto result = ProgressDialog::createModal(
        m_window.get(), withFlags(flags), {}, [&pressed](WorkerBase* worker) {
            while (!pressed)
                QThread::yieldCurrentThread();
            return ProgressDialog::finalizeWorker(worker, 7, true);
        });
    QVERIFY(result.first);
    QCOMPARE(std::any_cast<int>(result.second->transferredData()), 7);
}

void tst_status_bar_modal::modalShowsItsProgress()
{
    const auto shown = [this] {
        return m_window->label->text() == QLatin1String("half") && m_window->bar->value() == 50
            && m_window->bar->isVisible();
    };
    whenever(shown, [] { ProgressDialog::hasOpenDialogs(nullptr, false, true); });
    const auto result =
        ProgressDialog::createModal(m_window.get(), withFlags(kAbort), {}, [](WorkerBase* worker) {
            worker->setProgress("half", 5, 10);
            return waitForAbort(worker);
        });
    QVERIFY(!result.first);
}

void tst_status_bar_modal::keyOnTheInvisibleDialogAborts()
{
    onceModal([](ProgressDialog& dialog) {
        ProgressDialog::clearShortCut(dialog.findChild<QShortcut*>());
        QTest::keyClick(&dialog, Qt::Key_Escape);
    });
    const auto result =
        ProgressDialog::createModal(m_window.get(), withFlags(kAbort), {}, waitForAbort);
    QVERIFY(!result.first);
}

void tst_status_bar_modal::escapeInitiatesOneAbort_data()
{
    bothWays();
}

void tst_status_bar_modal::escapeInitiatesOneAbort()
{
    QFETCH(int, flags);
    int initiated = 0;
    std::atomic<bool> mayEnd = false;
    whenever([this] { return m_window->findChild<QShortcut*>() != nullptr; },
             [&] {
                 connect(theDialog()->controller(), &Controller::abortInitiated, this,
                         [&initiated] { ++initiated; });
                 QTest::keyClick(m_window->windowHandle(), Qt::Key_Escape);
                 QTest::keyClick(m_window->windowHandle(), Qt::Key_Escape);
                 ProgressDialog::hasOpenDialogs(nullptr, false, true);
                 mayEnd = true;
             });
    const auto result =
        ProgressDialog::createModal(m_window.get(), withFlags(flags), {}, [&](WorkerBase* worker) {
            while (!mayEnd)
                QThread::yieldCurrentThread();
            return waitForAbort(worker);
        });
    QVERIFY(!result.first);
    QCOMPARE(initiated, 1);
    QCOMPARE(result.second->controller(), nullptr);
}

void tst_status_bar_modal::escapeAbortsBeforeAShortcutOfTheWindow_data()
{
    bothWays();
}

void tst_status_bar_modal::escapeAbortsBeforeAShortcutOfTheWindow()
{
    QFETCH(int, flags);
    QShortcut own(QKeySequence(Qt::Key_Escape), m_window.get());
    own.setContext(Qt::ApplicationShortcut);
    int activated = 0;
    connect(&own, &QShortcut::activated, this, [&activated] { ++activated; });
    connect(&own, &QShortcut::activatedAmbiguously, this, [&activated] { ++activated; });
    bool aborted = false;
    whenever([this] { return m_window->findChildren<QShortcut*>().size() == 2; },
             [&] {
                 QTest::keyClick(m_window->windowHandle(), Qt::Key_Escape);
                 aborted = theDialog()->controller()->isAborted();
                 ProgressDialog::hasOpenDialogs(nullptr, false, true);
             });
    QVERIFY(!ProgressDialog::createModal(m_window.get(), withFlags(flags), {}, waitForAbort).first);
    QVERIFY(aborted);
    QCOMPARE(activated, 0);
    // The window has it back at once.
    QTest::keyClick(m_window->windowHandle(), Qt::Key_Escape);
    QCOMPARE(activated, 1);
}

void tst_status_bar_modal::otherShortcutsStayWithTheWindow()
{
    QShortcut first(QKeySequence(Qt::Key_F5), m_window.get());
    QShortcut second(QKeySequence(Qt::Key_F5), m_window.get());
    int activated = 0;
    connect(&first, &QShortcut::activatedAmbiguously, this, [&activated] { ++activated; });
    connect(&second, &QShortcut::activatedAmbiguously, this, [&activated] { ++activated; });
    bool aborted = true;
    whenever([this] { return m_window->findChildren<QShortcut*>().size() == 3; },
             [&] {
                 QTest::keyClick(m_window->windowHandle(), Qt::Key_F5);
                 aborted = theDialog()->controller()->isAborted();
                 ProgressDialog::hasOpenDialogs(nullptr, false, true);
             });
    QVERIFY(!ProgressDialog::createModal(m_window.get(), withFlags(kAbort | kNoDialog), {},
                                         waitForAbort)
                 .first);
    QVERIFY(!aborted);
    QCOMPARE(activated, 1);
}

void tst_status_bar_modal::everyStepOfAFloodCounts()
{
    int shown = -2;
    const auto allHaveCome = [] {
        return theDialog() && theDialog()->transferredData().has_value();
    };
    whenever(allHaveCome, [&] {
        QCoreApplication::processEvents(); // which shows what has been posted
        shown = m_window->bar->isVisible() ? m_window->bar->value() : -1;
        ProgressDialog::hasOpenDialogs(nullptr, false, true);
    });
    const auto result =
        ProgressDialog::createModal(m_window.get(), withFlags(kAbort), {}, [](WorkerBase* worker) {
            for (int step = 0; step < 250; ++step)
                emit worker->updateProgress({});
            emit worker->transferData(true); // comes with the last step, or after it
            return waitForAbort(worker);
        });
    QVERIFY(!result.first);
    QCOMPARE(shown, 50); // twice past 100
}

QTEST_MAIN(tst_status_bar_modal)
#include "tst_status_bar_modal.moc"
