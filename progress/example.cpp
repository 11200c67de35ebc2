#include "progress/create_modal.h"

#include <QStringList>
#include <QThread>

namespace mod_progress_qt {

namespace {

constexpr int steps = 20;
constexpr unsigned long stepMs = 25;
constexpr unsigned long fileMs = 100;

ProgressDialog::options describe(const QString& title, const QString& text, bool useStatusBar)
{
    int flags = CustomProgressBar::kFirstLabel;
    if (!useStatusBar)
        flags |= CustomProgressBar::kNoStatusBar;
    auto opts = ProgressDialog::GetStdProgressInfoWithButtons(true, title, flags);
    opts.text = text;
    return opts;
}

/// Adds up the numbers from 1 to the one it was given.
class AddingWorker : public WorkerBase
{
public:
    using WorkerBase::WorkerBase;

    void doWork() override
    {
        const int last = std::any_cast<int>(data());
        int sum = 0;
        for (int number = 1; number <= last && !ProgressDialog::isStopped(this); ++number) {
            QThread::msleep(stepMs);
            sum += number;
            setProgress(ProgressDialog::tr("Adding %1").arg(number), number, last);
        }
        ProgressDialog::finalizeWorker(this, sum, true);
    }
};

void runLambda(QWidget* parent, bool useStatusBar)
{
    const auto work = [](WorkerBase* worker) {
        int step = 0;
        while (step < steps && !ProgressDialog::isStopped(worker)) {
            QThread::msleep(stepMs);
            ++step;
            worker->setProgress(ProgressDialog::tr("Step %1 of %2").arg(step).arg(steps), step,
                                steps);
        }
        return ProgressDialog::finalizeWorker(worker, step, true);
    };
    const auto opts = describe(ProgressDialog::tr("A function on a thread"),
                               ProgressDialog::tr("Working..."), useStatusBar);
    ProgressDialog::createModal(parent, opts, {}, work);
}

void runWorker(QWidget* parent, bool useStatusBar)
{
    const auto opts = describe(ProgressDialog::tr("A worker of its own class"),
                               ProgressDialog::tr("Adding..."), useStatusBar);
    ProgressDialog::createModal<AddingWorker>(parent, opts, steps, {});
}

void runLoop(QWidget* parent, bool useStatusBar)
{
    const QStringList files {"invoice_001.pdf", "invoice_002.pdf", "invoice_003.pdf"};
    const auto opts = describe(ProgressDialog::tr("A loop on the GUI thread"),
                               ProgressDialog::tr("Reading..."), useStatusBar);
    const ProgressDialog::Pointer dialog = ProgressDialog::createNonModal(parent, opts);
    for (qsizetype index = 0; index < files.size() && !ProgressDialog::isStopped(dialog); ++index) {
        // The second file comes after 100 ms, within the repaint delay of 125: only the first and
        // the third are ever seen.
        ProgressDialog::setProgress(dialog, files.at(index), index + 1, files.size());
        QThread::msleep(fileMs);
    }
}

} // namespace

void ProgressDialog::Example(QWidget* parent, bool useStatusBar, bool /*unused*/,
                             long long /*unused*/)
{
    runLambda(parent, useStatusBar);
    runWorker(parent, useStatusBar);
    runLoop(parent, useStatusBar);
}

} // namespace mod_progress_qt
