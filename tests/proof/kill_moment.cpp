#include "tests/proof/kill_moment.h"

#include <QFile>

#include <array>
#include <csignal>
#include <cstring>
#include <poll.h>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace proof {

namespace {

using Clock = std::chrono::steady_clock;

constexpr int pollMs = 20;

int watch(const QString& folder)
{
    const int descriptor = inotify_init1(IN_CLOEXEC | IN_NONBLOCK);
    inotify_add_watch(descriptor, QFile::encodeName(folder).constData(),
                      IN_CREATE | IN_MODIFY | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO
                          | IN_CLOSE_WRITE | IN_ATTRIB);
    return descriptor;
}

/// Changes that have come up since the last call.
int takeEvents(int descriptor)
{
    alignas(inotify_event) std::array<char, 16384> buffer {};
    int count = 0;
    for (;;) {
        const ssize_t size = ::read(descriptor, buffer.data(), buffer.size());
        if (size <= 0)
            return count;
        for (ssize_t at = 0; at < size;) {
            inotify_event event {};
            std::memcpy(&event, buffer.data() + at, sizeof event);
            at += ssize_t(sizeof event + event.len);
            ++count;
        }
    }
}

// A sleep is far too coarse for a moment between two system calls.
void spin(std::chrono::microseconds delay, const std::atomic<bool>& ends)
{
    const auto until = Clock::now() + delay;
    while (Clock::now() < until && !ends)
        std::this_thread::yield();
}

} // namespace

const char* KillMoment::name(Kind kind)
{
    constexpr std::array<const char*, kinds> names {"before_answer", "behind_answer", "file_event",
                                                    "export_size",   "question",      "closing"};
    return names.at(kind);
}

ProcessHandle::ProcessHandle(qint64 pid)
    : m_descriptor(int(syscall(SYS_pidfd_open, pid_t(pid), 0)))
{
}

ProcessHandle::~ProcessHandle()
{
    if (m_descriptor >= 0)
        ::close(m_descriptor);
}

void ProcessHandle::kill() const
{
    if (m_descriptor >= 0)
        syscall(SYS_pidfd_send_signal, m_descriptor, SIGKILL, nullptr, 0);
}

Hunter::Hunter(qint64 pid)
    : m_process(pid)
{
}

Hunter::~Hunter()
{
    m_ends = true;
    if (m_thread.joinable())
        m_thread.join();
}

void Hunter::killAfter(std::chrono::microseconds delay)
{
    if (m_thread.joinable())
        return;
    m_thread = std::thread([this, delay] {
        spin(delay, m_ends);
        m_process.kill();
    });
}

void Hunter::killAtFileEvent(const QString& folder, int count, std::chrono::microseconds delay)
{
    if (m_thread.joinable())
        return;
    const int descriptor = watch(folder);
    m_thread = std::thread([this, descriptor, count, delay] {
        int seen = 0;
        while (!m_ends && seen < count) {
            pollfd waited {descriptor, POLLIN, 0};
            if (::poll(&waited, 1, pollMs) > 0)
                seen += takeEvents(descriptor);
        }
        if (!m_ends) {
            spin(delay, m_ends);
            m_process.kill();
        }
        ::close(descriptor);
    });
}

void Hunter::killAtSize(const QString& file, qint64 bytes, std::chrono::microseconds delay)
{
    if (m_thread.joinable())
        return;
    m_thread = std::thread([this, path = QFile::encodeName(file), bytes, delay] {
        struct stat now
        {
        };
        while (!m_ends && (::stat(path.constData(), &now) != 0 || now.st_size < bytes))
            std::this_thread::yield();
        if (m_ends)
            return;
        spin(delay, m_ends);
        m_process.kill();
    });
}

FileEventCount::FileEventCount(const QString& folder)
    : m_descriptor(watch(folder))
{
}

FileEventCount::~FileEventCount()
{
    ::close(m_descriptor);
}

int FileEventCount::take()
{
    m_count += takeEvents(m_descriptor);
    return m_count;
}

} // namespace proof
