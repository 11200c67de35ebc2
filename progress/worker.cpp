#include "progress/worker.h"

#include "progress/progress_dialog.h"

#include <QDebug>

namespace mod_progress_qt {

WorkerBase::WorkerBase(Work work, AbortFlag abortFlag, std::any data)
    : m_work(std::move(work))
    , m_abortFlag(std::move(abortFlag))
    , m_data(std::move(data))
{
}

WorkerBase::~WorkerBase()
{
    if (ProgressDialog::showDebug)
        qDebug("virtual mod_progress_qt::WorkerBase::~WorkerBase()");
}

void WorkerBase::setProgress(const QVariant& text, qint64 current, qint64 total)
{
    emit updateProgress({text, QVariant(), QVariant(), current, total});
}

void WorkerBase::doWork()
{
    if (m_work)
        m_work(this);
}

} // namespace mod_progress_qt
