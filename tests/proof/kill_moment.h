#pragma once

#include <QByteArray>
#include <QRandomGenerator>
#include <QString>

#include <atomic>
#include <chrono>
#include <thread>

namespace proof {

/// A point of a run, told by what the program has done by then.
struct KillMoment
{
    enum Kind {
        BeforeAnswer, ///< a request has come and is not answered
        BehindAnswer, ///< a request has come some microseconds ago
        FileEvent, ///< something in the program's folder has changed
        /// A page has reached the export. Not in the middle of that: a write that is under way when
        /// its process is killed is broken off by the system, some microseconds a page, and nothing
        /// that a program does can prevent it.
        ExportSize,
        Question, ///< the end question was answered with Yes some microseconds ago
        Closing, ///< the window was asked to close some microseconds ago
        kinds
    };

    Kind kind = BeforeAnswer;
    int count = 0; ///< number of the request or of the change in the folder
    qint64 bytes = 0; ///< size of the export
    std::chrono::microseconds delay {0};

    static const char* name(Kind kind);
};

/// A process, known by more than a number that may be given anew.
class ProcessHandle
{
public:
    explicit ProcessHandle(qint64 pid);
    ~ProcessHandle();
    Q_DISABLE_COPY_MOVE(ProcessHandle)

    /// Ends the process at once, if it still runs.
    void kill() const;

private:
    int m_descriptor;
};

/// Watches for a moment in a thread of its own, and kills the process then. Ends with this object.
class Hunter
{
public:
    explicit Hunter(qint64 pid);
    ~Hunter();
    Q_DISABLE_COPY_MOVE(Hunter)

    /// Kills at once.
    void kill() const { m_process.kill(); }

    /// Kills after \a delay, to the microsecond.
    void killAfter(std::chrono::microseconds delay);
    /// Kills \a delay after the \a count-th change in \a folder.
    void killAtFileEvent(const QString& folder, int count, std::chrono::microseconds delay);
    /// Kills \a delay after \a file has \a bytes.
    void killAtSize(const QString& file, qint64 bytes, std::chrono::microseconds delay);

private:
    ProcessHandle m_process;
    std::atomic<bool> m_ends {false};
    std::thread m_thread;
};

/// How many changes in \a folder the program makes in a run, as Hunter counts them.
class FileEventCount
{
public:
    explicit FileEventCount(const QString& folder);
    ~FileEventCount();
    Q_DISABLE_COPY_MOVE(FileEventCount)
    /// Changes seen up to now.
    int take();

private:
    int m_descriptor;
    int m_count = 0;
};

} // namespace proof
