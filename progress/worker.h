#pragma once

#include "progress/custom_progress_bar.h"
#include "progress/export.h"

#include <QObject>

#include <any>
#include <atomic>
#include <functional>
#include <memory>

namespace mod_progress_qt {

/// Work on a thread of its own. Made by `Controller::Create`; it and its thread delete themselves
/// once the thread has ended.
class MOD_PROGRESS_QT_EXPORT WorkerBase : public QObject
{
    Q_OBJECT

public:
    /// What the thread runs; its result has no effect.
    using Work = std::function<int(WorkerBase*)>;
    /// True once the work shall end. Owned by whoever may still ask: after a hard abort the work
    /// outlives the controller.
    using AbortFlag = std::shared_ptr<std::atomic<bool>>;

    /// To be called by `Controller::Create`.
    /// \param work       may be empty if doWork() is overridden
    /// \param abortFlag  shared with the controller; null means that nobody aborts
    /// \param data       for the work to read
    WorkerBase(Work work, AbortFlag abortFlag, std::any data);
    /// Lets go of what the work function has captured.
    ~WorkerBase() override;
    Q_DISABLE_COPY_MOVE(WorkerBase)

    /// What the caller gave the work to read.
    const std::any& data() const { return m_data; }

    /// What `ProgressDialog::finalizeWorker` was given.
    const std::any& result() const { return m_result; }

    /// From any thread.
    bool isAborted() const { return m_abortFlag && m_abortFlag->load(); }

    /// Reports progress, as often as it likes. To be called by the work function.
    void setProgress(const QVariant& text, qint64 current, qint64 total);

    /// Runs the work function. Without one nothing happens, and the thread runs on for ever.
    Q_SLOT virtual void doWork();

signals:
    /// The work has ended; its thread then ends as well.
    void finished();
    /// Data for `ProgressDialog::transferredData`.
    void transferData(const std::any& data);
    /// Progress to be shown; all positions invalid ask for an automatic step.
    void updateProgress(const mod_progress_qt::ProgressValues& values);

private:
    friend class ProgressDialog;

    Work m_work;
    AbortFlag m_abortFlag;
    std::any m_data;
    std::any m_result;
};

} // namespace mod_progress_qt
