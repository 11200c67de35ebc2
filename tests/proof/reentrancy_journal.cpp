#include "tests/proof/reentrancy_journal.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <cstring>
#include <sys/time.h>
#include <unistd.h>

#if defined(__SANITIZE_ADDRESS__)
#define LEDORA_DEATH_CALLBACK
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define LEDORA_DEATH_CALLBACK
#endif
#endif

#ifdef LEDORA_DEATH_CALLBACK
#include <sanitizer/common_interface_defs.h>
#endif

namespace proof {

namespace {

// Of the processor's time, for one road.
#ifdef LEDORA_DEATH_CALLBACK
const unsigned roadSeconds = 240;
#else
const unsigned roadSeconds = 120;
#endif

// Fixed memory: it is read when nothing else can be relied on any more.
std::array<char, 1 << 16> written;
std::size_t used = 0;

void append(const QByteArray& bytes)
{
    const std::size_t size = std::min(std::size_t(bytes.size()), written.size() - used);
    std::memcpy(written.data() + used, bytes.constData(), size);
    used += size;
}

void writeOut()
{
    [[maybe_unused]] const ssize_t done = write(STDERR_FILENO, written.data(), used);
}

extern "C" void onDeath(int signal)
{
    writeOut();
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

/// Of the processor's time: a loop without end takes it, a busy machine does not.
void limit(unsigned seconds)
{
    itimerval timer {};
    timer.it_value.tv_sec = time_t(seconds);
    setitimer(ITIMER_PROF, &timer, nullptr);
}

void catchDeath()
{
    static bool caught = false;
    if (caught)
        return;
    caught = true;
#ifdef LEDORA_DEATH_CALLBACK
    __sanitizer_set_death_callback(writeOut);
    std::signal(SIGPROF, onDeath);
#else
    for (const int signal : {SIGSEGV, SIGBUS, SIGFPE, SIGABRT, SIGPROF})
        std::signal(signal, onDeath);
#endif
}

} // namespace

void Journal::begin(quint32 seed)
{
    catchDeath();
    used = 0;
    append("LEDORA_SEED=" + QByteArray::number(seed) + '\n');
    limit(roadSeconds);
}

void Journal::add(const QString& line)
{
    append("  " + line.toUtf8() + '\n');
}

QByteArray Journal::text()
{
    return {written.data(), qsizetype(used)};
}

void Journal::end()
{
    limit(0);
    used = 0;
}

} // namespace proof
