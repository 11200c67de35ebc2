#include "progress/status_update.h"

#include "progress/custom_progress_bar.h"
#include "progress/hand_over.h"

#include <QCoreApplication>
#include <QThread>

namespace mod_progress_qt {

namespace {

void show(const QString& text, int percent)
{
    if (QLabel* const label = StatusUpdate::label)
        label->setText(text);
    if (QProgressBar* const bar = StatusUpdate::progress) {
        bar->setVisible(percent >= 0);
        if (percent >= 0)
            bar->setValue(percent);
    }
}

} // namespace

bool StatusUpdate::isInForce(int flags)
{
    return active && (flags & CustomProgressBar::kNoStatusBar) == 0 && (label || progress);
}

void StatusUpdate::showMessage(const QString& text, int percent)
{
    QCoreApplication* const application = QCoreApplication::instance();
    if (application == nullptr)
        return;
    // Another thread must not read what belongs to the GUI thread, which then looks itself.
    const bool here = QThread::currentThread() == application->thread();
    if (here && !isInForce(0))
        return;
    QMetaObject::invokeMethod(
        application,
        [text, percent, here, handOver = HandOver()] {
            handOver.taken();
            if (here || isInForce(0))
                show(text, percent);
        },
        Qt::QueuedConnection);
}

} // namespace mod_progress_qt
