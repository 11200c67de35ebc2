#include "tests/progress/progress_fixture.h"

using namespace mod_progress_qt;

namespace {

CustomProgressBar::options withFlags(int flags)
{
    auto opts = ProgressDialog::GetStdProgressInfo(false, "Working");
    opts.flags = flags;
    return opts;
}

int endAtOnce(WorkerBase* worker)
{
    return ProgressDialog::finalizeWorker(worker, worker->data(), true);
}

/// Can be found again.
class WatchedWorker : public WorkerBase
{
public:
    WatchedWorker(Work work, AbortFlag abortFlag, std::any data)
        : WorkerBase(std::move(work), std::move(abortFlag), std::move(data))
    {
        last = this;
    }

    static inline QPointer<WatchedWorker> last;
};

} // namespace

class tst_modal_end : public QObject
{
    Q_OBJECT

private slots:
    // First, since it counts: the workers of earlier tests would go at their own time.
    void whoeverHeldItWasDestroyedWithoutATrace();

    void cleanup();

    void emptyFunctionWaitsUntilTheDialogEnds();
    void closeButtonDoesNotEndIt();
    void mainWindowMayGoMeanwhile();
    void quittingEndsTheWaitAndTheWork();
    void somebodyElseMayDeleteTheDialog_data();
    void somebodyElseMayDeleteTheDialog();
    void quitIsRefusedWhileADialogIsShown();
};

void tst_modal_end::cleanup()
{
    settle();
    QVERIFY(ProgressDialog::instances.isEmpty());
    QVERIFY(QApplication::topLevelWidgets().isEmpty());
    QTRY_VERIFY_WITH_TIMEOUT(qApp->findChildren<QTimer*>().isEmpty(), kPatience);
}

void tst_modal_end::emptyFunctionWaitsUntilTheDialogEnds()
{
    int handled = 0;
    onceModal([&](ProgressDialog& dialog) {
        // Nothing comes to an end by itself, however much the loop does.
        auto* beats = new QTimer(&dialog);
        connect(beats, &QTimer::timeout, &dialog, [&handled, &dialog] {
            if (++handled == 20)
                dialog.reject();
        });
        beats->start(1);
    });
    const auto result = ProgressDialog::createModal<WatchedWorker>(nullptr, withFlags(8), {}, {});
    QCOMPARE(handled, 20);
    QVERIFY(result.first); // nobody has aborted it
    // The thread runs on; ended here, so that it does not do so into the next test.
    QVERIFY(WatchedWorker::last->thread()->isRunning());
    WatchedWorker::last->thread()->quit();
    QTRY_VERIFY_WITH_TIMEOUT((settle(), WatchedWorker::last.isNull()), kPatience);
}

void tst_modal_end::closeButtonDoesNotEndIt()
{
    std::atomic<bool> mayEnd = false;
    bool stayed = false;
    onceModal([&](ProgressDialog& dialog) {
        dialog.close();
        stayed = dialog.isVisible();
        mayEnd = true;
    });
    const auto result =
        ProgressDialog::createModal(nullptr, withFlags(16), {}, [&](WorkerBase* worker) {
            while (!mayEnd)
                QThread::yieldCurrentThread();
            return endAtOnce(worker);
        });
    QVERIFY(result.first);
    QVERIFY(stayed);
}

void tst_modal_end::mainWindowMayGoMeanwhile()
{
    auto window = std::make_unique<QMainWindow>();
    window->show();
    std::atomic<bool> ended = false;
    onceModal([&](ProgressDialog&) { window.reset(); });
    const auto result =
        ProgressDialog::createModal(window.get(), withFlags(16), {}, [&](WorkerBase* worker) {
            while (!ProgressDialog::isStopped(worker))
                worker->setProgress("a", 1, 2);
            ended = true;
            return endAtOnce(worker);
        });
    // Nobody could abort it any more.
    QVERIFY(!result.first);
    QVERIFY(result.second);
    QTRY_VERIFY_WITH_TIMEOUT(ended, kPatience);
}

void tst_modal_end::quittingEndsTheWaitAndTheWork()
{
    bool completed = true;
    std::binary_semaphore hasEnded {0};
    onceModal([](ProgressDialog&) { QCoreApplication::exit(); });
    inMainLoop([&] {
        completed =
            ProgressDialog::createModal(nullptr, withFlags(16), {}, [&](WorkerBase* worker) {
                while (!ProgressDialog::isStopped(worker))
                    QThread::yieldCurrentThread();
                const int ok = endAtOnce(worker);
                hasEnded.release();
                return ok;
            }).first;
    });
    QVERIFY(!completed);
    hasEnded.acquire();
}

void tst_modal_end::whoeverHeldItWasDestroyedWithoutATrace()
{
    const Messages messages;
    Messages::clear();
    ProgressDialog::showDebug = true;
    ProgressDialog::createModal(nullptr, withFlags(8), {}, endAtOnce);
    const auto gone = [](const char* who) {
        settle();
        return Messages::all().count(QLatin1String(who)) == 1;
    };
    QTRY_VERIFY_WITH_TIMEOUT(gone("virtual mod_progress_qt::Controller::~Controller()"), kPatience);
    QTRY_VERIFY_WITH_TIMEOUT(gone("virtual mod_progress_qt::WorkerBase::~WorkerBase()"), kPatience);
    QTRY_VERIFY_WITH_TIMEOUT(gone("virtual mod_progress_qt::ProgressDialog::~ProgressDialog()"),
                             kPatience);
    ProgressDialog::showDebug = false;
}

void tst_modal_end::somebodyElseMayDeleteTheDialog_data()
{
    QTest::addColumn<bool>("inStatusBar");
    QTest::addColumn<int>("flags");
    QTest::newRow("dialog") << false << 16;
    QTest::newRow("invisible dialog") << true << 16;
    QTest::newRow("no dialog") << true << (16 | 512);
}

void tst_modal_end::somebodyElseMayDeleteTheDialog()
{
    QFETCH(bool, inStatusBar);
    QFETCH(int, flags);
    StatusWindow window;
    StatusUpdate::active = inStatusBar;
    std::binary_semaphore hasEnded {0};
    whenever([] { return theDialog() && theDialog()->controller(); }, [] { delete theDialog(); });
    const auto result =
        ProgressDialog::createModal(&window, withFlags(flags), {}, [&](WorkerBase* worker) {
            while (!ProgressDialog::isStopped(worker))
                worker->setProgress("a", 1, 2);
            const int ok = endAtOnce(worker);
            hasEnded.release();
            return ok;
        });
    QVERIFY(!result.first);
    QVERIFY(result.second.isNull());
    hasEnded.acquire();
    settle();
    QVERIFY(window.findChildren<QShortcut*>().isEmpty());
}

void tst_modal_end::quitIsRefusedWhileADialogIsShown()
{
    bool stayed = false;
    bool completed = true;
    onceModal([&](ProgressDialog& dialog) {
        QCoreApplication::quit();
        QTimer::singleShot(0, &dialog, [&] {
            stayed = dialog.isVisible() && !dialog.controller()->isAborted();
            ProgressDialog::hasOpenDialogs(nullptr, false, true);
        });
    });
    inMainLoop([&] {
        completed = ProgressDialog::createModal(nullptr, withFlags(16), {}, [](WorkerBase* worker) {
                        while (!ProgressDialog::isStopped(worker))
                            QThread::yieldCurrentThread();
                        return endAtOnce(worker);
                    }).first;
    });
    QVERIFY(stayed);
    QVERIFY(!completed);
}

QTEST_MAIN(tst_modal_end)
#include "tst_modal_end.moc"
