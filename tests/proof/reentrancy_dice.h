#pragma once

#include <QtGlobal>

#include <random>

namespace proof {

/// Chance that is the same on every machine for the same seed.
class Dice
{
public:
    explicit Dice(quint32 seed)
        : m_engine(seed)
    {
    }

    /// 0 to \a count - 1; the generator's own range is that of 32 bits in any library.
    int below(int count) { return int(m_engine() % quint32(count)); }

    bool chance(int percent) { return below(100) < percent; }

private:
    std::mt19937 m_engine;
};

} // namespace proof
