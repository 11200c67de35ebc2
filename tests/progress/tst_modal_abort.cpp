#include "tests/progress/progress_fixture.h"

using namespace mod_progress_qt;

namespace {

CustomProgressBar::options abortable(int flags = 0)
{
    return ProgressDialog::GetStdProgressInfo(true, "Working", flags);
}

int waitForAbort(WorkerBase* worker)
{
    while (!ProgressDialog::isStopped(worker))
        QThread::yieldCurrentThread();
    return ProgressDialog::finalizeWorker(worker, QString("aborted"), true);
}

/// A worker whose end can be waited for.
struct LateWork
{
    std::binary_semaphore mayEnd {0};
    std::binary_semaphore hasEnded {0};
    std::atomic<int> returned = -1;
    std::atomic<bool> sawAbort = false;

    std::function<int(WorkerBase*)> work()
    {
        return [this](WorkerBase* worker) {
            worker->setProgress("still here", 1, 2);
            mayEnd.acquire();
            // The controller has gone by now, and so may the dialog.
            worker->setProgress("still here", 2, 2);
            sawAbort = ProgressDialog::isStopped(worker);
            const int ok = ProgressDialog::finalizeWorker(worker, QString("too late"), true);
            returned = ok;
            hasEnded.release();
            return ok;
        };
    }
};

} // namespace

class tst_modal_abort : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();

    void buttonAborts();
    void buttonAbortsWhenPressedNotWhenReleased();
    void escapeAborts_data();
    void escapeAborts();
    void pressingTwiceInitiatesOneAbort();
    void buttonAndEscapeInitiateOneAbort();
    void abortedWorkStillTransfersItsData();
    void withoutBit16NothingAborts();
    void abortingAllReachesModalWork();
    void abortingAllLeavesWorkWithoutBit16();
    void abortAfterTheEndChangesTheResultOnly();
    void withoutATimeLimitTheDialogWaits();
    void hardAbortEndsTheWaitAndNotTheWork();
    void flagStaysReadableAfterAHardAbort();
    void workMayOutliveItsDialog();
    void workThatEndsInTimeIsNotAbortedHard();
    void timeLimitOfAnEarlierRunIsOver();
    void hardAbortWithoutAnAbortNeverComes();
    void workThatWasGivenUpChangesOnlyTheData();
    void aDialogCanRunAgainByItself();
};

void tst_modal_abort::cleanup()
{
    settle();
    ProgressDialog::hardInterruptTimeMs = -1;
    QVERIFY(ProgressDialog::instances.isEmpty());
    QVERIFY(QApplication::topLevelWidgets().isEmpty());
}

void tst_modal_abort::buttonAborts()
{
    onceModal(
        [](ProgressDialog& dialog) { QTest::mouseClick(abortButtonOf(dialog), Qt::LeftButton); });
    const auto result = ProgressDialog::createModal(nullptr, abortable(), {}, waitForAbort);
    QVERIFY(!result.first);
    QVERIFY(!result.second->isVisible());
    QCOMPARE(result.second->result(), int(QDialog::Accepted)); // as at any end
}

void tst_modal_abort::buttonAbortsWhenPressedNotWhenReleased()
{
    onceModal([](ProgressDialog& dialog) { pressOn(abortButtonOf(dialog)); });
    QVERIFY(!ProgressDialog::createModal(nullptr, abortable(), {}, waitForAbort).first);
}

void tst_modal_abort::escapeAborts_data()
{
    QTest::addColumn<bool>("focusOnButton");
    QTest::newRow("dialog") << false;
    QTest::newRow("button") << true;
}

void tst_modal_abort::escapeAborts()
{
    QFETCH(bool, focusOnButton);
    int requests = 0;
    onceModal([&](ProgressDialog& dialog) {
        connect(&dialog, &ProgressDialog::abortRequested, &dialog, [&requests] { ++requests; });
        QWidget* receiver = focusOnButton ? static_cast<QWidget*>(abortButtonOf(dialog)) : &dialog;
        QTest::keyClick(receiver, Qt::Key_Escape);
    });
    QVERIFY(!ProgressDialog::createModal(nullptr, abortable(), {}, waitForAbort).first);
    QCOMPARE(requests, 1);
}

void tst_modal_abort::pressingTwiceInitiatesOneAbort()
{
    const auto [controller, worker, thread] = Controller::Create<WorkerBase>({}, waitForAbort);
    const QSignalSpy initiated(controller, &Controller::abortInitiated);
    QPushButton button;
    connect(&button, &QPushButton::pressed, controller, &Controller::abort);
    QVERIFY(!controller->isAborted());
    QTest::mouseClick(&button, Qt::LeftButton);
    QTest::mouseClick(&button, Qt::LeftButton);
    QCOMPARE(initiated.size(), 1);
    QVERIFY(controller->isAborted());
    QVERIFY(ProgressDialog::isStopped(worker));
    delete worker;
    delete thread;
    delete controller;
}

void tst_modal_abort::buttonAndEscapeInitiateOneAbort()
{
    int initiated = 0;
    LateWork late;
    onceModal([&](ProgressDialog& dialog) {
        connect(dialog.controller(), &Controller::abortInitiated, this,
                [&initiated] { ++initiated; });
        pressOn(abortButtonOf(dialog));
        QTest::keyClick(&dialog, Qt::Key_Escape);
        pressOn(abortButtonOf(dialog));
        late.mayEnd.release();
    });
    QVERIFY(!ProgressDialog::createModal(nullptr, abortable(), {}, late.work()).first);
    QCOMPARE(initiated, 1);
    late.hasEnded.acquire();
}

void tst_modal_abort::abortedWorkStillTransfersItsData()
{
    onceModal([](ProgressDialog& dialog) { pressOn(abortButtonOf(dialog)); });
    const auto result = ProgressDialog::createModal(nullptr, abortable(), {}, waitForAbort);
    QCOMPARE(std::any_cast<QString>(result.second->transferredData()), "aborted");
}

void tst_modal_abort::withoutBit16NothingAborts()
{
    std::atomic<bool> mayEnd = false;
    onceModal([&](ProgressDialog& dialog) {
        QTest::keyClick(&dialog, Qt::Key_Escape);
        QTest::keyClick(&dialog, Qt::Key_Return);
        mayEnd = true;
    });
    const auto opts = ProgressDialog::GetStdProgressInfo(false);
    const auto result = ProgressDialog::createModal(nullptr, opts, {}, [&](WorkerBase* worker) {
        while (!mayEnd)
            QThread::yieldCurrentThread();
        return ProgressDialog::finalizeWorker(worker, {}, true);
    });
    QVERIFY(result.first);
}

void tst_modal_abort::abortingAllReachesModalWork()
{
    bool open = false;
    onceModal(
        [&](ProgressDialog&) { open = ProgressDialog::hasOpenDialogs(nullptr, false, true); });
    QVERIFY(!ProgressDialog::createModal(nullptr, abortable(), {}, waitForAbort).first);
    QVERIFY(open);
}

void tst_modal_abort::abortingAllLeavesWorkWithoutBit16()
{
    std::atomic<bool> mayEnd = false;
    onceModal([&](ProgressDialog&) {
        ProgressDialog::hasOpenDialogs(nullptr, false, true);
        mayEnd = true;
    });
    const auto opts = ProgressDialog::GetStdProgressInfo(false);
    const auto result = ProgressDialog::createModal(nullptr, opts, {}, [&](WorkerBase* worker) {
        while (!mayEnd)
            QThread::yieldCurrentThread();
        return ProgressDialog::finalizeWorker(worker, {}, true);
    });
    QVERIFY(result.first);
}

void tst_modal_abort::abortAfterTheEndChangesTheResultOnly()
{
    std::atomic<bool> mayEnd = false;
    std::atomic<int> returned = -1;
    onceModal([&](ProgressDialog& dialog) {
        mayEnd = true;
        // The end is on its way, but does not arrive before this function has returned.
        while (returned < 0)
            QThread::yieldCurrentThread();
        pressOn(abortButtonOf(dialog));
    });
    const auto result =
        ProgressDialog::createModal(nullptr, abortable(), {}, [&](WorkerBase* worker) {
            while (!mayEnd)
                QThread::yieldCurrentThread();
            const int ok = ProgressDialog::finalizeWorker(worker, QString("complete"), true);
            returned = ok;
            return ok;
        });
    QCOMPARE(returned, 1);
    QVERIFY(!result.first);
    QCOMPARE(std::any_cast<QString>(result.second->transferredData()), "complete");
}

void tst_modal_abort::withoutATimeLimitTheDialogWaits()
{
    for (const int limit : {-1, 0}) {
        ProgressDialog::hardInterruptTimeMs = limit;
        const Messages messages;
        Messages::clear();
        LateWork late;
        int beats = 0;
        onceModal([&](ProgressDialog& dialog) {
            pressOn(abortButtonOf(dialog));
            auto* timer = new QTimer(&dialog);
            connect(timer, &QTimer::timeout, &dialog, [&] {
                if (++beats == 30)
                    late.mayEnd.release();
            });
            timer->start(1);
        });
        const auto result = ProgressDialog::createModal(nullptr, abortable(), {}, late.work());
        QVERIFY(!result.first);
        QVERIFY(beats >= 30);
        QCOMPARE(std::any_cast<QString>(result.second->transferredData()), "too late");
        QCOMPARE(Messages::all(), QStringList());
        late.hasEnded.acquire();
    }
}

void tst_modal_abort::hardAbortEndsTheWaitAndNotTheWork()
{
    ProgressDialog::hardInterruptTimeMs = 1;
    const Messages messages;
    Messages::clear();
    LateWork late;
    onceModal([](ProgressDialog& dialog) { pressOn(abortButtonOf(dialog)); });
    const auto result = ProgressDialog::createModal(nullptr, abortable(), {}, late.work());
    QVERIFY(!result.first);
    QCOMPARE(result.second->result(), int(QDialog::Rejected));
    QVERIFY(!result.second->transferredData().has_value());
    QCOMPARE(Messages::all(), QStringList("Hard abort due to timeout"));
    QCOMPARE(late.returned, -1);
    late.mayEnd.release();
    late.hasEnded.acquire();
    QCOMPARE(late.returned, 0);
}

void tst_modal_abort::flagStaysReadableAfterAHardAbort()
{
    ProgressDialog::hardInterruptTimeMs = 1;
    LateWork late;
    onceModal([](ProgressDialog& dialog) { pressOn(abortButtonOf(dialog)); });
    auto result = ProgressDialog::createModal(nullptr, abortable(), {}, late.work());
    settle(); // the controller goes
    late.mayEnd.release();
    late.hasEnded.acquire();
    QVERIFY(late.sawAbort);
    settle();
    // What still comes is no longer refused by anybody.
    QTRY_VERIFY_WITH_TIMEOUT(result.second->transferredData().has_value(), kPatience);
    QCOMPARE(std::any_cast<QString>(result.second->transferredData()), "too late");
}

void tst_modal_abort::workMayOutliveItsDialog()
{
    ProgressDialog::hardInterruptTimeMs = 1;
    LateWork late;
    QPointer<ProgressDialog> dialog;
    onceModal([&](ProgressDialog& running) {
        dialog = &running;
        pressOn(abortButtonOf(running));
    });
    ProgressDialog::createModal(nullptr, abortable(), {}, late.work()).second.clear();
    settle();
    QVERIFY(dialog.isNull());
    late.mayEnd.release();
    late.hasEnded.acquire();
    QVERIFY(late.sawAbort);
    QCOMPARE(late.returned, 0);
}

void tst_modal_abort::workThatEndsInTimeIsNotAbortedHard()
{
    ProgressDialog::hardInterruptTimeMs = kPatience;
    const Messages messages;
    Messages::clear();
    onceModal([](ProgressDialog& dialog) { pressOn(abortButtonOf(dialog)); });
    const auto result = ProgressDialog::createModal(nullptr, abortable(), {}, waitForAbort);
    QVERIFY(!result.first);
    QCOMPARE(result.second->result(), int(QDialog::Accepted));
    QCOMPARE(Messages::all(), QStringList());
}

void tst_modal_abort::timeLimitOfAnEarlierRunIsOver()
{
    ProgressDialog::hardInterruptTimeMs = kPatience;
    QPointer<QTimer> limit;
    bool runs = false;
    onceModal([&](ProgressDialog& dialog) {
        limit = dialog.controller()->findChild<QTimer*>();
        pressOn(abortButtonOf(dialog));
        runs = limit && limit->isActive() && limit->interval() == kPatience;
    });
    const auto first = ProgressDialog::createModal(nullptr, abortable(), {}, waitForAbort);
    QVERIFY(runs);
    settle();
    QVERIFY(limit.isNull());
}

void tst_modal_abort::hardAbortWithoutAnAbortNeverComes()
{
    ProgressDialog::hardInterruptTimeMs = 1;
    std::atomic<int> beats = 0;
    onceModal([&](ProgressDialog& dialog) {
        auto* timer = new QTimer(&dialog);
        connect(timer, &QTimer::timeout, &dialog, [&beats] { ++beats; });
        timer->start(2);
    });
    const auto result =
        ProgressDialog::createModal(nullptr, abortable(), {}, [&](WorkerBase* worker) {
            while (beats < 10)
                QThread::yieldCurrentThread();
            return ProgressDialog::finalizeWorker(worker, {}, true);
        });
    QVERIFY(result.first);
}

void tst_modal_abort::workThatWasGivenUpChangesOnlyTheData()
{
    ProgressDialog::hardInterruptTimeMs = 1;
    std::binary_semaphore mayEnd {0};
    int accepted = 0;
    onceModal([&](ProgressDialog& dialog) {
        connect(&dialog, &QDialog::accepted, this, [&accepted] { ++accepted; });
        pressOn(abortButtonOf(dialog));
    });
    const auto opts = abortable(CustomProgressBar::kFirstLabel | CustomProgressBar::kSquares);
    const auto result = ProgressDialog::createModal(nullptr, opts, {}, [&](WorkerBase* worker) {
        mayEnd.acquire();
        worker->setProgress("too late", 2, 2);
        return ProgressDialog::finalizeWorker(worker, true, true);
    });
    QVERIFY(!result.first);
    ProgressDialog& dialog = *result.second;
    mayEnd.release();
    QTRY_VERIFY_WITH_TIMEOUT(dialog.transferredData().has_value(), kPatience);
    settle();
    QVERIFY(!labelsOf(dialog).contains("too late"));
    QCOMPARE(filledSquares(dialog), 0);
    QCOMPARE(dialog.result(), int(QDialog::Rejected));
    QCOMPARE(accepted, 0);
}

void tst_modal_abort::aDialogCanRunAgainByItself()
{
    const auto result =
        ProgressDialog::createModal(nullptr, abortable(), {}, [](WorkerBase* worker) {
            return ProgressDialog::finalizeWorker(worker, {}, true);
        });
    QTimer::singleShot(0, result.second.data(), &QDialog::accept);
    QCOMPARE(result.second->exec(), int(QDialog::Accepted));
}

QTEST_MAIN(tst_modal_abort)
#include "tst_modal_abort.moc"
