#include "progress/controller.h"

#include "progress/progress_dialog.h"

#include <QDebug>

namespace mod_progress_qt {

Controller::Controller() = default;

Controller::~Controller()
{
    if (ProgressDialog::showDebug)
        qDebug("virtual mod_progress_qt::Controller::~Controller()");
}

void Controller::abort()
{
    if (!m_abortFlag->exchange(true))
        emit abortInitiated();
}

QThread* Controller::threadFor(WorkerBase* worker)
{
    auto* thread = new QThread;
    m_thread = thread;
    worker->moveToThread(thread);
    connect(thread, &QThread::started, worker, &WorkerBase::doWork);
    connect(thread, &QThread::finished, worker, &QObject::deleteLater);
    connect(thread, &QThread::finished, thread, &QObject::deleteLater);
    // Direct, so that the thread ends even where the GUI thread never gets to its events again.
    connect(worker, &WorkerBase::finished, thread, &QThread::quit, Qt::DirectConnection);
    return thread;
}

} // namespace mod_progress_qt
