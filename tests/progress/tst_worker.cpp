#include "tests/progress/progress_fixture.h"

#include <thread>

using namespace mod_progress_qt;

namespace {

/// What Controller::Create made, and its end.
struct Made
{
    explicit Made(std::function<int(WorkerBase*)> work, const std::any& data = {})
    {
        std::tie(controller, worker, thread) =
            Controller::Create<WorkerBase>(data, std::move(work));
        guard = worker;
        threadGuard = thread;
    }

    ~Made() { delete controller; }

    bool bothAreGone() const
    {
        settle();
        return guard.isNull() && threadGuard.isNull();
    }

    Controller* controller = nullptr;
    WorkerBase* worker = nullptr;
    QThread* thread = nullptr;
    QPointer<WorkerBase> guard;
    QPointer<QThread> threadGuard;
};

} // namespace

class tst_worker : public QObject
{
    Q_OBJECT

private slots:
    void nothingRunsBeforeTheThreadIsStarted();
    void workerLivesOnItsThread();
    void workerAndThreadDeleteThemselves();
    void withoutAFunctionTheThreadRunsOn();
    void withoutFinalizingTheThreadRunsOn();
    void returnedNumberIsIgnored();
    void finalizingNullDoesNothing();
    void finalizingStoresTransfersAndFinishesInThatOrder();
    void finalizingReturnsOkUnlessAborted_data();
    void finalizingReturnsOkUnlessAborted();
    void nullWorkerIsStopped();
    void abortIsSeenByTheWorker();
    void abortFromManyThreadsIsOne();
    void flagOutlivesTheController();
    void destructorsTellOfThemselvesForDebugging();
    void signalsCanBeConnectedByText();
};

void tst_worker::nothingRunsBeforeTheThreadIsStarted()
{
    std::atomic<bool> ran = false;
    Made made([&ran](WorkerBase* worker) {
        ran = true;
        return ProgressDialog::finalizeWorker(worker, {}, true);
    });
    QCOMPARE(made.thread->parent(), nullptr);
    QVERIFY(!made.thread->isRunning());
    QCOMPARE(made.controller->workThread(), made.thread);
    QCOMPARE(made.controller->thread(), QThread::currentThread());
    QVERIFY(!made.controller->isAborted());
    settle();
    QVERIFY(!ran);
    made.thread->start();
    QTRY_VERIFY_WITH_TIMEOUT(made.bothAreGone(), kPatience);
    QVERIFY(ran);
    QCOMPARE(made.controller->workThread(), nullptr);
}

void tst_worker::workerLivesOnItsThread()
{
    Made made([](WorkerBase* worker) { return ProgressDialog::finalizeWorker(worker, {}, true); },
              QString("data"));
    QCOMPARE(made.worker->thread(), made.thread);
    QCOMPARE(std::any_cast<QString>(made.worker->data()), "data");
    QVERIFY(!made.worker->result().has_value());
    made.thread->start();
    QTRY_VERIFY_WITH_TIMEOUT(made.bothAreGone(), kPatience);
}

void tst_worker::workerAndThreadDeleteThemselves()
{
    Made made([](WorkerBase* worker) { return ProgressDialog::finalizeWorker(worker, {}, true); });
    std::atomic<int> finished = 0;
    connect(
        made.thread, &QThread::finished, made.thread, [&finished] { ++finished; },
        Qt::DirectConnection);
    made.thread->start();
    QTRY_VERIFY_WITH_TIMEOUT(made.bothAreGone(), kPatience);
    QCOMPARE(finished, 1);
}

void tst_worker::withoutAFunctionTheThreadRunsOn()
{
    Made made({});
    std::atomic<bool> finished = false;
    connect(made.worker, &WorkerBase::finished, made.worker, [&finished] { finished = true; });
    std::atomic<bool> reached = false;
    // Is handled after doWork has returned.
    QMetaObject::invokeMethod(
        made.worker, [&reached] { reached = true; }, Qt::QueuedConnection);
    made.thread->start();
    QTRY_VERIFY_WITH_TIMEOUT(reached, kPatience);
    QVERIFY(made.thread->isRunning());
    QVERIFY(!finished);
    made.thread->quit();
    QTRY_VERIFY_WITH_TIMEOUT(made.bothAreGone(), kPatience);
}

void tst_worker::withoutFinalizingTheThreadRunsOn()
{
    std::atomic<bool> ran = false;
    Made made([&ran](WorkerBase*) {
        ran = true;
        return 1;
    });
    std::atomic<bool> reached = false;
    QMetaObject::invokeMethod(
        made.worker, [&reached] { reached = true; }, Qt::QueuedConnection);
    made.thread->start();
    QTRY_VERIFY_WITH_TIMEOUT(reached, kPatience);
    QVERIFY(ran);
    QVERIFY(made.thread->isRunning());
    made.thread->quit();
    QTRY_VERIFY_WITH_TIMEOUT(made.bothAreGone(), kPatience);
}

void tst_worker::returnedNumberIsIgnored()
{
    for (const int number : {-1, 0, 42}) {
        Made made([number](WorkerBase* worker) {
            ProgressDialog::finalizeWorker(worker, {}, true);
            return number;
        });
        made.thread->start();
        QTRY_VERIFY_WITH_TIMEOUT(made.bothAreGone(), kPatience);
    }
}

void tst_worker::finalizingNullDoesNothing()
{
    QCOMPARE(ProgressDialog::finalizeWorker(nullptr, 7, true), 0);
}

void tst_worker::finalizingStoresTransfersAndFinishesInThatOrder()
{
    WorkerBase worker({}, {}, {});
    QStringList order;
    connect(&worker, &WorkerBase::transferData, this, [&](const std::any& data) {
        order << QString("transferred %1, stored %2")
                     .arg(std::any_cast<int>(data))
                     .arg(std::any_cast<int>(worker.result()));
    });
    connect(&worker, &WorkerBase::finished, this, [&order] { order << "finished"; });
    QCOMPARE(ProgressDialog::finalizeWorker(&worker, 7, true), 1);
    QCOMPARE(order, (QStringList {"transferred 7, stored 7", "finished"}));
}

void tst_worker::finalizingReturnsOkUnlessAborted_data()
{
    QTest::addColumn<bool>("ok");
    QTest::addColumn<bool>("aborted");
    QTest::addColumn<int>("result");
    QTest::newRow("ok") << true << false << 1;
    QTest::newRow("not ok") << false << false << 0;
    QTest::newRow("ok, aborted") << true << true << 0;
    QTest::newRow("not ok, aborted") << false << true << 0;
}

void tst_worker::finalizingReturnsOkUnlessAborted()
{
    QFETCH(bool, ok);
    QFETCH(bool, aborted);
    WorkerBase worker({}, std::make_shared<std::atomic<bool>>(aborted), {});
    QTEST(ProgressDialog::finalizeWorker(&worker, {}, ok), "result");
}

void tst_worker::nullWorkerIsStopped()
{
    QVERIFY(ProgressDialog::isStopped(nullptr));
}

void tst_worker::abortIsSeenByTheWorker()
{
    std::atomic<bool> running = false;
    Made made([&running](WorkerBase* worker) {
        running = true;
        while (!ProgressDialog::isStopped(worker))
            QThread::yieldCurrentThread();
        return ProgressDialog::finalizeWorker(worker, {}, true);
    });
    QVERIFY(!ProgressDialog::isStopped(made.worker));
    made.thread->start();
    QTRY_VERIFY_WITH_TIMEOUT(running, kPatience);
    made.controller->abort();
    QTRY_VERIFY_WITH_TIMEOUT(made.bothAreGone(), kPatience);
}

void tst_worker::abortFromManyThreadsIsOne()
{
    for (int run = 0; run < 20; ++run) {
        Made made({});
        std::atomic<int> initiated = 0;
        connect(
            made.controller, &Controller::abortInitiated, made.controller,
            [&initiated] { ++initiated; }, Qt::DirectConnection);
        std::vector<std::thread> threads;
        for (int thread = 0; thread < 4; ++thread)
            threads.emplace_back([&made] { made.controller->abort(); });
        for (std::thread& thread : threads)
            thread.join();
        QCOMPARE(initiated, 1);
        delete made.worker;
        delete made.thread;
    }
}

void tst_worker::flagOutlivesTheController()
{
    std::binary_semaphore mayEnd {0};
    std::atomic<bool> stopped = false;
    Made made([&](WorkerBase* worker) {
        mayEnd.acquire();
        stopped = ProgressDialog::isStopped(worker);
        return ProgressDialog::finalizeWorker(worker, {}, true);
    });
    made.thread->start();
    made.controller->abort();
    delete std::exchange(made.controller, nullptr);
    mayEnd.release();
    QTRY_VERIFY_WITH_TIMEOUT(made.bothAreGone(), kPatience);
    QVERIFY(stopped);
}

void tst_worker::destructorsTellOfThemselvesForDebugging()
{
    const Messages messages;
    for (const bool debug : {false, true}) {
        Messages::clear();
        ProgressDialog::showDebug = debug;
        {
            const WorkerBase worker({}, {}, {});
            const Controller controller;
        }
        QCOMPARE(Messages::all(),
                 debug ? QStringList({"virtual mod_progress_qt::Controller::~Controller()",
                                      "virtual mod_progress_qt::WorkerBase::~WorkerBase()"})
                       : QStringList());
    }
    ProgressDialog::showDebug = false;
}

void tst_worker::signalsCanBeConnectedByText()
{
    WorkerBase worker({}, {}, {});
    ProgressDialog dialog;
    QVERIFY(connect(&worker, SIGNAL(transferData(std::any)), &dialog,
                    SLOT(transferDataSlot(std::any)), Qt::QueuedConnection));
    QVERIFY(connect(&worker, SIGNAL(updateProgress(mod_progress_qt::ProgressValues)), &dialog,
                    SLOT(updateProgressSlot(mod_progress_qt::ProgressValues)),
                    Qt::QueuedConnection));
    emit worker.updateProgress({"a", {}, {}, 1, 2});
    emit worker.transferData(5);
    settle();
    QCOMPARE(std::any_cast<int>(dialog.transferredData()), 5);
}

QTEST_MAIN(tst_worker)
#include "tst_worker.moc"
