#include "tools/progress_gallery/routes.h"

#include "progress/mod_progress_qt.h"

#include <QCoreApplication>

namespace progress_gallery {

using namespace mod_progress_qt;

namespace {

constexpr int steps = 100;
constexpr unsigned long stepMs = 20;

QString tr(const char* text)
{
    return QCoreApplication::translate("progress_gallery", text);
}

QString stepText(int step)
{
    return QStringLiteral("Step %1 of %2").arg(step).arg(steps);
}

ProgressValues valuesOf(int step)
{
    return {stepText(step), QStringLiteral("invoice_%1.pdf").arg(step, 3, 10, QLatin1Char('0')),
            QStringLiteral("%1 still to come").arg(steps - step), step, steps};
}

int work(WorkerBase* worker)
{
    int step = 0;
    while (step < steps && !ProgressDialog::isStopped(worker)) {
        QThread::msleep(stepMs);
        emit worker->updateProgress(valuesOf(++step));
    }
    return ProgressDialog::finalizeWorker(worker, step, true);
}

QString outcome(bool completed, int step)
{
    return (completed ? tr("fertig nach %1 Schritten") : tr("abgebrochen nach %1 Schritten"))
        .arg(step);
}

QString runModal(QWidget* parent, const CustomProgressBar::options& opts)
{
    const auto result = ProgressDialog::createModal(parent, opts, {}, work);
    const int* const step =
        result.second ? std::any_cast<int>(&result.second->transferredData()) : nullptr;
    // Nothing has come yet if the window was closed while the work was running.
    return step ? outcome(result.first, *step) : tr("aufgegeben");
}

QString runLoop(QWidget* parent, const CustomProgressBar::options& opts)
{
    const ProgressDialog::Pointer dialog = ProgressDialog::createNonModal(parent, opts);
    int step = 0;
    while (step < steps && !ProgressDialog::isStopped(dialog)) {
        QThread::msleep(stepMs);
        ProgressDialog::setValue(dialog, valuesOf(++step));
    }
    return outcome(!ProgressDialog::isStopped(dialog), step);
}

} // namespace

QList<Route> routes()
{
    using Ending = Route::Ending;
    return {
        {tr("Eigener Thread, Dialog"), true, false, false, Ending::None},
        {tr("Eigener Thread, Dialog, Abbruch mit Knopf"), true, false, false, Ending::Button},
        {tr("Eigener Thread, Dialog, Abbruch mit Escape"), true, false, false, Ending::Escape},
        {tr("Eigener Thread, Statusleiste"), true, true, false, Ending::Escape},
        {tr("Eigener Thread, Statusleiste, Fenster frei"), true, true, true, Ending::Escape},
        {tr("Schleife, Dialog"), false, false, false, Ending::None},
        {tr("Schleife, Dialog, Abbruch mit Knopf"), false, false, false, Ending::Button},
        {tr("Schleife, Dialog, Abbruch mit Escape"), false, false, false, Ending::Escape},
        {tr("Schleife, Dialog, Fenster frei"), false, false, true, Ending::Escape},
        {tr("Schleife, Statusleiste"), false, true, false, Ending::Escape},
        {tr("Schleife, Statusleiste, Fenster frei"), false, true, true, Ending::None},
    };
}

QString run(const Route& route, QWidget* parent, int flags)
{
    auto opts = ProgressDialog::GetStdProgressInfo(true, route.title);
    opts.text = stepText(0);
    opts.flags = flags;
    if (!route.statusBar)
        opts.flags |= CustomProgressBar::kNoStatusBar;
    if (route.windowStaysEnabled)
        opts.flags |= CustomProgressBar::kNoDialog;
    return route.modal ? runModal(parent, opts) : runLoop(parent, opts);
}

} // namespace progress_gallery
