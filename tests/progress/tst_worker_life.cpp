// Work that outlives what started it, up to the program itself. The program runs itself for that,
// with the name of what is to happen as its argument.

#include "tests/progress/progress_fixture.h"

#include <QProcess>

using namespace mod_progress_qt;

namespace {

CustomProgressBar::options abortable()
{
    return ProgressDialog::GetStdProgressInfo(true, "Working", CustomProgressBar::kFirstLabel);
}

int obey(WorkerBase* worker)
{
    while (!ProgressDialog::isStopped(worker))
        worker->setProgress("working", 1, 2);
    return ProgressDialog::finalizeWorker(worker, {}, true);
}

/// Never looks at the flag. Refers to nothing that could go.
int ignore(WorkerBase* worker)
{
    for (;;) {
        worker->setProgress("working", 1, 2);
        QThread::usleep(100);
    }
}

/// Ends some time after everything else has.
int endLate(WorkerBase* worker)
{
    for (int step = 0; step < 50 || !ProgressDialog::isStopped(worker); ++step) {
        worker->setProgress("working", step, 50);
        QThread::usleep(200);
    }
    return ProgressDialog::finalizeWorker(worker, QString("late"), true);
}

void quitOnceModal()
{
    onceModal([](ProgressDialog&) { QCoreApplication::exit(); });
}

void abortHardOnceModal()
{
    ProgressDialog::hardInterruptTimeMs = 1;
    onceModal([](ProgressDialog& dialog) { pressOn(abortButtonOf(dialog)); });
}

/// What a process of its own does; its status is 0 if it came to its end.
int runChild(const QByteArray& name)
{
    QMainWindow window;
    window.show();
    if (name == "quit, obedient") {
        quitOnceModal();
        ProgressDialog::createModal(&window, abortable(), {}, obey);
    } else if (name == "quit, deaf") {
        quitOnceModal();
        ProgressDialog::createModal(&window, abortable(), {}, ignore);
    } else if (name == "quit, late") {
        quitOnceModal();
        ProgressDialog::createModal(&window, abortable(), {}, endLate);
    } else if (name == "hard abort, deaf") {
        abortHardOnceModal();
        ProgressDialog::createModal(&window, abortable(), {}, ignore);
    } else if (name == "hard abort, late") {
        abortHardOnceModal();
        ProgressDialog::createModal(&window, abortable(), {}, endLate);
    } else {
        return 3;
    }
    return 0;
}

} // namespace

class tst_worker_life : public QObject
{
    Q_OBJECT

private slots:
    void workOutlivesDialogControllerAndMainWindow();
    void workEndsWhileTheGuiThreadIsBusy();
    // Last, since the thread sanitizer does not look at what comes after a process was started.
    void programEndsWithWorkStillRunning_data();
    void programEndsWithWorkStillRunning();
};

void tst_worker_life::programEndsWithWorkStillRunning_data()
{
    QTest::addColumn<QString>("what");
    for (const char* what :
         {"quit, obedient", "quit, deaf", "quit, late", "hard abort, deaf", "hard abort, late"})
        QTest::newRow(what) << what;
}

void tst_worker_life::programEndsWithWorkStillRunning()
{
    QFETCH(QString, what);
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(QCoreApplication::applicationFilePath(), {"--child", what});
    const bool ended = process.waitForFinished(kPatience);
    if (!ended)
        process.kill();
    process.waitForFinished(kPatience);
    const QByteArray said = process.readAll();
    QVERIFY2(ended, said.constData());
    QVERIFY2(process.exitStatus() == QProcess::NormalExit, said.constData());
    QVERIFY2(process.exitCode() == 0, said.constData());
}

void tst_worker_life::workOutlivesDialogControllerAndMainWindow()
{
    ProgressDialog::hardInterruptTimeMs = 1;
    auto window = std::make_unique<QMainWindow>();
    window->show();
    std::binary_semaphore mayEnd {0};
    std::binary_semaphore hasEnded {0};
    bool sawAbort = false;
    QPointer<ProgressDialog> dialog;
    onceModal([&dialog](ProgressDialog& running) {
        dialog = &running;
        pressOn(abortButtonOf(running));
    });
    const auto work = [&](WorkerBase* worker) {
        worker->setProgress("before", 1, 2);
        mayEnd.acquire();
        worker->setProgress("after", 2, 2);
        sawAbort = ProgressDialog::isStopped(worker);
        const int ok = ProgressDialog::finalizeWorker(worker, QString("late"), true);
        hasEnded.release();
        return ok;
    };
    ProgressDialog::createModal(window.get(), abortable(), {}, work).second.clear();
    window.reset();
    settle();
    QVERIFY(dialog.isNull());
    QVERIFY(ProgressDialog::all().isEmpty());
    mayEnd.release();
    hasEnded.acquire();
    QVERIFY(sawAbort);
    settle();
    ProgressDialog::hardInterruptTimeMs = -1;
}

void tst_worker_life::workEndsWhileTheGuiThreadIsBusy()
{
    const auto [controller, worker, thread] = Controller::Create<WorkerBase>({}, endLate);
    thread->start();
    controller->abort();
    // No event is handled here.
    QVERIFY(thread->wait(kPatience));
    delete controller;
    settle();
}

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    if (argc == 3 && QByteArray(argv[1]) == "--child")
        return runChild(argv[2]);
    tst_worker_life test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_worker_life.moc"
