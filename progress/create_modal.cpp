#include "progress/create_modal.h"

#include "progress/mailbox.h"

#include <QDebug>
#include <QEventLoop>
#include <QTimer>

#include <utility>

namespace mod_progress_qt {

ProgressDialog::Pointer ProgressDialog::prepareModal(QWidget* parent, const options& opts,
                                                     const WidgetAndLayout* before,
                                                     const WidgetAndLayout* after)
{
    Pointer dialog = make(parent, opts);
    if (!dialog->usesStatusBar())
        dialog->m_abortButton = createLayout(dialog, opts, before, after);
    return dialog;
}

bool ProgressDialog::runModal(Pointer& dialog, Controller* controller, WorkerBase* worker,
                              QThread* thread)
{
    dialog->m_controller = controller;
    dialog->connectWorker(worker);
    dialog->connectAbort(controller);
    thread->start(QThread::InheritPriority);
    const QPointer<ProgressDialog> guard(dialog.data());
    dialog->waitForEnd(controller);
    if (guard)
        guard->m_controller.clear();
    else
        dialog.clear();
    // The application quits, or the window or the dialog is gone: nobody waits for the work any
    // more, and nobody can abort it later.
    if (!guard || !std::exchange(guard->m_done, true))
        controller->abort();
    const bool completed = !controller->isAborted();
    controller->deleteLater();
    return completed;
}

void ProgressDialog::connectWorker(WorkerBase* worker)
{
    // Through the mailbox, in the worker's thread, since a queued call each would let a busy worker
    // fill the memory and keep the GUI thread from everything else.
    const std::shared_ptr<Mailbox> mailbox = m_mailbox;
    connect(
        worker, &WorkerBase::updateProgress, worker,
        [mailbox](const ProgressValues& values) { mailbox->put(values); }, Qt::DirectConnection);
    connect(
        worker, &WorkerBase::transferData, worker,
        [mailbox](const std::any& result) { mailbox->put(result); }, Qt::DirectConnection);
    // Unless the wait is over already: what was given up does not end well later.
    connect(
        worker, &WorkerBase::finished, this,
        [this] {
            if (!m_done)
                accept();
        },
        Qt::QueuedConnection);
}

void ProgressDialog::connectAbort(Controller* controller)
{
    if (hardInterruptTimeMs > 0) {
        // Goes with the controller: there is nothing to interrupt once the wait is over.
        auto* limit = new QTimer(controller);
        limit->setSingleShot(true);
        limit->setInterval(hardInterruptTimeMs);
        connect(controller, &Controller::abortInitiated, limit, qOverload<>(&QTimer::start));
        connect(limit, &QTimer::timeout, this, [this] {
            if (m_done)
                return;
            qWarning("Hard abort due to timeout");
            reject();
        });
    }
    // In the status bar, too, where there is no button: an Escape that comes to the invisible
    // dialog as a key ends the shortcut, and without this would leave no way to abort.
    if (hasFlag(CustomProgressBar::kCanAbort))
        connect(this, &ProgressDialog::abortRequested, controller, &Controller::abort);
    if (m_abortButton)
        connect(m_abortButton, &QPushButton::pressed, controller, &Controller::abort);
}

void ProgressDialog::waitForEnd(Controller* controller)
{
    // Somebody may delete the dialog meanwhile.
    const QPointer<ProgressDialog> guard(this);
    if (!usesStatusBar()) {
        exec();
    } else if (hasFlag(CustomProgressBar::kNoDialog)) {
        waitWithoutDialog(controller);
    } else {
        createHiddenLikeDialog(this);
        // It may be a child of a window that is disabled, and its shortcut would be, too.
        setEnabled(true);
        makeAbortShortcut(this, controller);
        exec();
    }
    if (guard)
        clearOwnShortcut();
}

void ProgressDialog::waitWithoutDialog(Controller* controller)
{
    setVisible(false);
    const QPointer<ProgressDialog> guard(this);
    QEventLoop loop;
    connect(this, &QDialog::accepted, &loop, &QEventLoop::quit);
    connect(this, &QDialog::rejected, &loop, &QEventLoop::quit);
    // A dialog that is shown ends its loop with its parent. This one has only its windows.
    connect(this, &QObject::destroyed, &loop, &QEventLoop::quit);
    for (QWidget* const window : {parentWidget(), m_mainWindow.data()}) {
        if (window)
            connect(window, &QObject::destroyed, &loop, &QEventLoop::quit);
    }
    makeAbortShortcut(m_mainWindow, controller);
    loop.exec();
    if (guard)
        clearStatusBar();
}

void ProgressDialog::makeAbortShortcut(QWidget* parent, Controller* controller)
{
    if (!hasFlag(CustomProgressBar::kCanAbort))
        return;
    makeShortcut(parent, [guard = QPointer<Controller>(controller)] {
        if (guard)
            guard->abort();
    });
}

// -------------------------------------------------------------------- for the work function

bool ProgressDialog::isStopped(const WorkerBase* worker)
{
    return worker == nullptr || worker->isAborted();
}

int ProgressDialog::finalizeWorker(WorkerBase* worker, const std::any& result, bool ok)
{
    if (worker == nullptr)
        return 0;
    worker->m_result = result;
    emit worker->transferData(result);
    emit worker->finished();
    return ok && !worker->isAborted() ? 1 : 0;
}

} // namespace mod_progress_qt
