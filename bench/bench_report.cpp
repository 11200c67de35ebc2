#include "bench/bench_report.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <ctime>

namespace bench {

double milliseconds(const std::function<void()>& work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start)
        .count();
}

double cpuMilliseconds(const std::function<void()>& work)
{
    const auto now = [] {
        timespec time {};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
        return 1e3 * static_cast<double>(time.tv_sec) + 1e-6 * static_cast<double>(time.tv_nsec);
    };
    const double start = now();
    work();
    return now() - start;
}

double median(QList<double> values)
{
    std::sort(values.begin(), values.end());
    return values.at(values.size() / 2);
}

void report(const char* what, double value, const char* unit)
{
    std::printf("%-62s %10.2f %s\n", what, value, unit);
    std::fflush(stdout);
}

void Limits::report(const char* what, double value, const char* unit, double limit, double aim)
{
    const bool missed = !(value <= limit);
    m_missed = m_missed || missed;
    std::printf("%-62s %10.2f %-9s limit %6.2f  aim %6.2f%s\n", what, value, unit, limit, aim,
                missed ? "  MISSED" : "");
    std::fflush(stdout);
}

} // namespace bench
