// What the progress framework costs, as multiples of bare queued signals.

#include "progress/mod_progress_qt.h"

#include "bench/bench_report.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTest>
#include <QTimer>

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <malloc.h>

using namespace bench;
using namespace mod_progress_qt;

namespace {

int iRounds = 5;

void expect(bool holds, const char* what)
{
    if (holds)
        return;
    std::fprintf(stderr, "bench_progress: %s\n", what);
    std::exit(2);
}

/// Bytes of the heap that are in use.
double heapInUse()
{
    const struct mallinfo2 heap = mallinfo2();
    return static_cast<double>(heap.uordblks + heap.hblkhd);
}

double longest(const QList<double>& times)
{
    return *std::max_element(times.cbegin(), times.cend());
}

CustomProgressBar::options describe()
{
    return ProgressDialog::GetStdProgressInfoWithButtons(true, QStringLiteral("Bench"),
                                                         CustomProgressBar::kFirstLabel);
}

/// Watches the window while work runs.
class Watch : public QObject
{
public:
    Watch()
    {
        m_beats.setTimerType(Qt::PreciseTimer);
        connect(&m_beats, &QTimer::timeout, this, &Watch::beat);
        qApp->installEventFilter(this);
        m_beats.start(10);
    }

    bool eventFilter(QObject* object, QEvent* event) override
    {
        if (event->type() == QEvent::Paint && object->isWidgetType())
            m_painted = true;
        return false;
    }

    double longestWait = 0; ///< milliseconds between two beats
    int repaints = 0; ///< beats since whose predecessor anything was painted
    double earlyHeap = 0; ///< bytes after a while
    double mostHeap = 0; ///< bytes

private:
    void beat()
    {
        const double now = static_cast<double>(m_clock.nsecsElapsed()) / 1e6;
        if (m_last > 0)
            longestWait = qMax(longestWait, now - m_last);
        m_last = now;
        repaints += std::exchange(m_painted, false) ? 1 : 0;
        const double heap = heapInUse();
        if (++m_count == 20)
            earlyHeap = heap;
        mostHeap = qMax(mostHeap, heap);
    }

    static QElapsedTimer started()
    {
        QElapsedTimer clock;
        clock.start();
        return clock;
    }

    QTimer m_beats;
    QElapsedTimer m_clock = started();
    double m_last = 0;
    int m_count = 0;
    bool m_painted = false;
};

/// Milliseconds from the first report to the end of the call.
double timeOfReports(int reports)
{
    QElapsedTimer clock;
    const auto work = [&clock, reports](WorkerBase* worker) {
        const QVariant text = QStringLiteral("invoice_001.pdf");
        clock.start();
        for (int number = 0; number < reports && !ProgressDialog::isStopped(worker); ++number)
            worker->setProgress(text, number, reports);
        return ProgressDialog::finalizeWorker(worker, reports, true);
    };
    const auto run = ProgressDialog::createModal(nullptr, describe(), {}, work);
    const double time = static_cast<double>(clock.nsecsElapsed()) / 1e6;
    expect(run.first && std::any_cast<int>(run.second->transferredData()) == reports,
           "the work did not come to its end");
    return time;
}

/// Milliseconds for as many signals with the same tuple, queued one by one.
double timeOfQueuedSignals(int signalCount)
{
    QThread thread;
    auto* sender = new WorkerBase({}, {}, {});
    sender->moveToThread(&thread);
    QElapsedTimer clock;
    QObject::connect(&thread, &QThread::started, sender, [sender, &clock, signalCount] {
        const QVariant text = QStringLiteral("invoice_001.pdf");
        clock.start();
        for (int number = 0; number < signalCount; ++number)
            sender->setProgress(text, number, signalCount);
    });
    QObject::connect(&thread, &QThread::finished, sender, &QObject::deleteLater);
    QEventLoop loop;
    int received = 0;
    QObject::connect(
        sender, &WorkerBase::updateProgress, &loop,
        [&received, &loop, signalCount](const ProgressValues& /*values*/) {
            if (++received == signalCount)
                loop.quit();
        },
        Qt::QueuedConnection);
    thread.start();
    loop.exec();
    const double time = static_cast<double>(clock.nsecsElapsed()) / 1e6;
    thread.quit();
    thread.wait();
    expect(received == signalCount, "a signal got lost");
    return time;
}

void benchReports(Limits& limits)
{
    constexpr int iReports = 1000000;
    QList<double> reports;
    QList<double> queued;
    QList<double> ratios;
    for (int round = 0; round < iRounds; ++round) {
        queued.append(timeOfQueuedSignals(iReports));
        reports.append(timeOfReports(iReports));
        ratios.append(reports.constLast() / queued.constLast());
    }
    report("1,000,000 queued signals", median(queued), "ms");
    report("1,000,000 reports in a modal run", median(reports), "ms");
    limits.report("1,000,000 reports against queued signals", median(ratios), "times", 2.0, 1.2);
}

void benchFlood(Limits& limits)
{
    constexpr int iReports = 10000000;
    QList<double> waits;
    QList<double> repaints;
    QList<double> growths;
    for (int round = 0; round < iRounds; ++round) {
        Watch watch;
        const double time = timeOfReports(iReports);
        waits.append(watch.longestWait);
        // The first two belong to the opening.
        repaints.append((watch.repaints - 2) / (time / 125));
        growths.append((watch.mostHeap - watch.earlyHeap) / 1000);
        expect(watch.earlyHeap > 0, "the flood was too short to be watched");
    }
    // One run is enough to annoy: it is the worst that counts, the median tells what is usual.
    report("longest wait of a 10 ms timer in 10,000,000 reports, median", median(waits), "ms");
    limits.report("the longest of these", longest(waits), "ms", 30.0, 15.0);
    limits.report("repaints in each 125 ms", median(repaints), "", 1.0, 1.0);
    limits.report("growth of the heap meanwhile", median(growths), "kB", 64.0, 0.0);
}

void benchValueInsideTheDelay(Limits& limits)
{
    auto opts = describe();
    opts.repaintDelayMs = 3600000;
    const auto dialog = ProgressDialog::createNonModal(nullptr, opts);
    ProgressDialog::setProgress(dialog, QStringLiteral("first"), 0, 100);
    constexpr int iCalls = 1000000;
    const QVariant text = QStringLiteral("invoice_001.pdf");
    QList<double> times;
    for (int round = 0; round < iRounds; ++round) {
        int shown = 0;
        const double time = cpuMilliseconds([&] {
            for (int call = 0; call < iCalls; ++call)
                shown += ProgressDialog::setProgress(dialog, text, call, iCalls) ? 1 : 0;
        });
        expect(shown == 0, "a value inside the delay was shown");
        times.append(1000 * time / iCalls);
    }
    limits.report("a value inside the repaint delay", median(times), "us", 1.0, 0.3);
}

void benchAbort(Limits& limits)
{
    QList<double> times;
    for (int round = 0; round < 20 * iRounds; ++round) {
        QElapsedTimer clock;
        QTimer waiting;
        QObject::connect(&waiting, &QTimer::timeout, &waiting, [&] {
            const QWidget* const dialog = QApplication::activeModalWidget();
            if (dialog == nullptr)
                return;
            waiting.stop();
            const auto buttons = dialog->findChildren<QPushButton*>();
            for (QPushButton* candidate : buttons) {
                if (candidate->isDefault()) {
                    clock.start();
                    QTest::mousePress(candidate, Qt::LeftButton);
                }
            }
        });
        waiting.start(5);
        std::atomic<qint64> seen = 0;
        const auto work = [&clock, &seen](WorkerBase* worker) {
            for (int number = 0; !ProgressDialog::isStopped(worker); ++number)
                worker->setProgress(QVariant(), number, 0);
            seen = clock.nsecsElapsed();
            return ProgressDialog::finalizeWorker(worker, {}, true);
        };
        const auto run = ProgressDialog::createModal(nullptr, describe(), {}, work);
        expect(!run.first, "an abort got lost");
        times.append(static_cast<double>(seen) / 1e6);
    }
    report("from the press on abort to the work, median", median(times), "ms");
    limits.report("the longest of these", longest(times), "ms", 10.0, 1.0);
}

struct Part
{
    const char* name;
    void (*run)(Limits& limits);
};

constexpr std::array parts {
    Part {"reports", benchReports},
    Part {"flood", benchFlood},
    Part {"delay", benchValueInsideTheDelay},
    Part {"abort", benchAbort},
};

} // namespace

/// Arguments, for a profiler: the name of the part to be run alone, the number of rounds.
int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    if (argc > 2)
        iRounds = qMax(1, QByteArray(argv[2]).toInt());
    Limits limits;
    bool known = false;
    for (const Part& part : parts) {
        if (argc > 1 && qstrcmp(part.name, argv[1]) != 0)
            continue;
        known = true;
        part.run(limits);
    }
    if (!known) {
        std::fprintf(stderr, "bench_progress: there is no part %s\n", argv[1]);
        return 2;
    }
    return limits.exitStatus();
}
