// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/base/clock.h"

#include <atomic>
#include <chrono>
#include <mutex>
#include <random>

namespace {

/// One replaceable source: the platform's until a test sets another.
template <typename Source, typename Platform> class Seam
{
public:
    static Source &current()
    {
        static Platform platform;
        Source *source = replacement.load(std::memory_order_acquire);
        return source ? *source : platform;
    }
    static Source *replace(Source *source) { return replacement.exchange(source); }

private:
    static inline std::atomic<Source *> replacement{nullptr};
};

template <typename Unit, typename Moment> long long since_epoch(Moment moment)
{
    return std::chrono::duration_cast<Unit>(moment.time_since_epoch()).count();
}

class PlatformClock : public AClock::Source
{
public:
    long long monotonic_ms() override
    {
        return since_epoch<std::chrono::milliseconds>(std::chrono::steady_clock::now());
    }
    long long wall_ms() override
    {
        return since_epoch<std::chrono::milliseconds>(std::chrono::system_clock::now());
    }
};

class PlatformRandom : public ARandom::Source
{
public:
    unsigned int value() override
    {
        std::lock_guard lock(mutex);
        return static_cast<unsigned int>(generator());
    }

private:
    std::mutex mutex;
    std::mt19937 generator{std::random_device{}()}; // guarded by mutex
};

class PlatformCounter : public ACounter::Source
{
public:
    long long ticks() override
    {
        return since_epoch<std::chrono::nanoseconds>(std::chrono::steady_clock::now());
    }
    long long frequency() override { return std::nano::den; }
};

using ClockSeam = Seam<AClock::Source, PlatformClock>;
using RandomSeam = Seam<ARandom::Source, PlatformRandom>;
using CounterSeam = Seam<ACounter::Source, PlatformCounter>;

} // namespace

AClock::Source::~Source() = default;
ARandom::Source::~Source() = default;
ACounter::Source::~Source() = default;

AClock::Source *AClock::set_source(Source *source)
{
    return ClockSeam::replace(source);
}

long long AClock::monotonic_ms()
{
    return ClockSeam::current().monotonic_ms();
}

long long AClock::wall_ms()
{
    return ClockSeam::current().wall_ms();
}

ARandom::Source *ARandom::set_source(Source *source)
{
    return RandomSeam::replace(source);
}

unsigned int ARandom::value()
{
    return RandomSeam::current().value();
}

unsigned int ARandom::below(unsigned int limit)
{
    // The upper half of the product is even enough and, unlike a remainder, uses all bits.
    return static_cast<unsigned int>((1ull * value() * limit) >> 32);
}

ACounter::Source *ACounter::set_source(Source *source)
{
    return CounterSeam::replace(source);
}

long long ACounter::ticks()
{
    return CounterSeam::current().ticks();
}

long long ACounter::frequency()
{
    return CounterSeam::current().frequency();
}
