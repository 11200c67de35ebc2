#pragma once

#include <QtGlobal>

#include <iterator>

namespace demo_shop {

/// Random numbers that depend on (seed, stream, index) and the count of draws alone, so that any
/// item of a series can be made without making those before it. The library's distributions are
/// not used: their results differ from one library to the next.
class CounterRandom
{
public:
    CounterRandom(quint32 seed, quint32 stream, qint64 index)
        : m_key(mix(mix((quint64(seed) << 32) | stream) ^ quint64(index)))
    {
    }

    quint64 next() { return mix(m_key + 0x9E3779B97F4A7C15ULL * ++m_draw); }

    /// A number from 0 to `limit` - 1. The bias of the remainder does not matter here.
    int below(int limit) { return int((next() >> 16) % quint64(limit)); }

    /// A number from `low` to `high`, both included.
    int between(int low, int high) { return low + below(high - low + 1); }

    /// True in `chance` of 100 cases.
    bool percent(int chance) { return below(100) < chance; }

    /// An element of a container with operator[].
    template <typename Container>
    const auto& oneOf(const Container& items)
    {
        return items[std::size_t(below(int(std::size(items))))];
    }

private:
    // splitmix64's finaliser.
    static quint64 mix(quint64 x)
    {
        x += 0x9E3779B97F4A7C15ULL;
        x = (x ^ (x >> 30)) * 0xBF58476D1CE4E5B9ULL;
        x = (x ^ (x >> 27)) * 0x94D049BB133111EBULL;
        return x ^ (x >> 31);
    }

    quint64 m_key;
    quint64 m_draw = 0;
};

} // namespace demo_shop
