#pragma once

#include <QString>
#include <QtGlobal>

#include <cstdio>
#include <string>

namespace proof {

/// Whether the whole table, every moment, all steps are wanted; else a sample that suits every
/// build.
[[nodiscard]] inline bool isFull()
{
    return qEnvironmentVariable("LEDORA_PROOF") == QLatin1String("full");
}

/// full or sample, as the environment asks.
template <typename T>
[[nodiscard]] T sized(T full, T sample)
{
    return isFull() ? full : sample;
}

/// One line of figures on standard output, for whoever collects them.
inline void report(const std::string& line)
{
    std::printf("PROOF %s\n", line.c_str());
    std::fflush(stdout);
}

} // namespace proof
