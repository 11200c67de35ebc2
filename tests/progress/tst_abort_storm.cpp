#include "tests/progress/progress_fixture.h"

#include <QRandomGenerator>

using namespace mod_progress_qt;

namespace {

constexpr int kRuns = 500;
constexpr int kEndless = 1'000'000'000;

/// What happens in one run.
struct Plan
{
    int steps = 0; ///< of the work
    int abortAfter = 0; ///< beats of the event loop
    int how = 0; ///< how it is aborted
    int flags = 0;
};

Plan randomPlan(QRandomGenerator& random)
{
    const QList<int> flags {16 | 8, 16 | 1024, 16, 16 | 512};
    return {random.bounded(2000), random.bounded(40), random.bounded(3),
            flags.at(random.bounded(int(flags.size())))};
}

void abortBy(int how)
{
    ProgressDialog* const dialog = theDialog();
    if (dialog == nullptr)
        return;
    if (how == 0) {
        ProgressDialog::hasOpenDialogs(nullptr, false, true);
    } else if (how == 1) {
        QTest::keyClick(dialog, Qt::Key_Escape);
    } else if (QPushButton* button = abortButtonOf(*dialog)) {
        QTest::mousePress(button, Qt::LeftButton);
    }
}

} // namespace

class tst_abort_storm : public QObject
{
    Q_OBJECT

private slots:
    void runsThatAreAbortedAtAnyMomentLeaveNothingBehind_data();
    void runsThatAreAbortedAtAnyMomentLeaveNothingBehind();
};

void tst_abort_storm::runsThatAreAbortedAtAnyMomentLeaveNothingBehind_data()
{
    QTest::addColumn<bool>("inStatusBar");
    QTest::newRow("in a dialog") << false;
    QTest::newRow("in the status bar") << true;
}

void tst_abort_storm::runsThatAreAbortedAtAnyMomentLeaveNothingBehind()
{
    QFETCH(bool, inStatusBar);
    StatusWindow window;
    StatusUpdate::active = inStatusBar;
    const quint32 seed = QRandomGenerator::global()->generate();
    QRandomGenerator random(seed);
    const QByteArray text = "seed " + QByteArray::number(seed);
    const char* const hint = text.constData();
    int aborted = 0;
    std::atomic<int> ended = 0;
    for (int run = 0; run < kRuns / 2; ++run) {
        Plan plan = randomPlan(random);
        // Each fourth ends by its abort alone, however fast the machine is with the others.
        if (run % 4 == 0)
            plan.steps = kEndless;
        auto opts = ProgressDialog::GetStdProgressInfo(true);
        opts.flags = plan.flags;
        int beats = 0;
        QTimer timer;
        connect(&timer, &QTimer::timeout, this, [&] {
            if (beats == plan.abortAfter)
                abortBy(plan.how);
            else if (beats > plan.abortAfter && plan.steps == kEndless)
                abortBy(0); // not every kind of dialog has what the plan wants to press
            ++beats;
        });
        timer.start(0);
        const auto result =
            ProgressDialog::createModal(&window, opts, run, [&](WorkerBase* worker) {
                int step = 0;
                while (step < plan.steps && !ProgressDialog::isStopped(worker))
                    worker->setProgress("step", ++step, plan.steps);
                const int ok = ProgressDialog::finalizeWorker(worker, std::any(step), true);
                ++ended;
                return ok;
            });
        const int steps = std::any_cast<int>(result.second->transferredData());
        QVERIFY2(!result.first || steps == plan.steps, hint);
        aborted += result.first ? 0 : 1;
        QVERIFY2(window.isEnabled(), hint);
    }
    QTRY_COMPARE_WITH_TIMEOUT(ended, kRuns / 2, kPatience);
    settle();
    QVERIFY2(ProgressDialog::all().isEmpty(), hint);
    QVERIFY2(window.findChildren<QShortcut*>().isEmpty(), hint);
    QVERIFY2(aborted >= kRuns / 2 / 4, hint);
}

QTEST_MAIN(tst_abort_storm)
#include "tst_abort_storm.moc"
