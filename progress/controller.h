#pragma once

#include "progress/export.h"
#include "progress/worker.h"

#include <QObject>
#include <QPointer>
#include <QThread>

#include <tuple>
#include <type_traits>

namespace mod_progress_qt {

/// The GUI thread's end of a running work: it alone can ask for the end. Lives on the GUI thread.
class MOD_PROGRESS_QT_EXPORT Controller : public QObject
{
    Q_OBJECT

public:
    /// A controller without a work; `Create` makes one with it.
    Controller();
    /// The work runs on, and nobody can abort it any more.
    ~Controller() override;
    Q_DISABLE_COPY_MOVE(Controller)

    /// Makes a controller, a worker and its thread. Nothing runs until the thread is started; after
    /// it has ended, worker and thread delete themselves. The controller belongs to the caller.
    /// \tparam Worker  derived from WorkerBase, with its constructor
    /// \param data     for the work to read
    /// \param work     called on the thread; see `ProgressDialog::createModal`
    template <typename Worker = WorkerBase>
    static std::tuple<Controller*, Worker*, QThread*>
    Create(const std::any& data, std::function<int(std::type_identity_t<Worker>*)> work);

    /// The work's thread; null once it has ended.
    QThread* workThread() const { return m_thread; }

    /// From any thread.
    bool isAborted() const { return m_abortFlag->load(); }

    /// Asks the work to end. Only the first call has an effect. From any thread.
    Q_SLOT void abort();

signals:
    /// The end has been asked for. Emitted once, by the thread that asks.
    void abortInitiated();

private:
    QThread* threadFor(WorkerBase* worker);

    QPointer<QThread> m_thread;
    WorkerBase::AbortFlag m_abortFlag = std::make_shared<std::atomic<bool>>(false);
};

template <typename Worker>
std::tuple<Controller*, Worker*, QThread*>
Controller::Create(const std::any& data, std::function<int(std::type_identity_t<Worker>*)> work)
{
    static_assert(std::is_base_of_v<WorkerBase, Worker>);
    WorkerBase::Work function;
    if constexpr (std::is_same_v<WorkerBase, Worker>) {
        function = std::move(work);
    } else if (work) {
        function = [work = std::move(work)](WorkerBase* worker) {
            return work(static_cast<Worker*>(worker));
        };
    }
    auto* controller = new Controller;
    auto* worker = new Worker(std::move(function), controller->m_abortFlag, data);
    QThread* const thread = controller->threadFor(worker);
    return {controller, worker, thread};
}

} // namespace mod_progress_qt
