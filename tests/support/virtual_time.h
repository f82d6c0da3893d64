// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/clock.h"

#include <atomic>

/// The library's clock and counter while it lives: time stands still but for `advance_ms`.
/// One at a time in a process.
class VirtualTime : private AClock::Source, private ACounter::Source
{
public:
    /// \a frequency: ticks of the counter in a second.
    explicit VirtualTime(long long frequency = 1000000000)
        : ticks_per_second(frequency)
        , previous_clock(AClock::set_source(this))
        , previous_counter(ACounter::set_source(this))
    {
    }
    ~VirtualTime() override
    {
        ACounter::set_source(previous_counter);
        AClock::set_source(previous_clock);
    }
    VirtualTime(VirtualTime const &) = delete;
    VirtualTime &operator=(VirtualTime const &) = delete;

    void advance_ms(long long milliseconds) { passed_ms += milliseconds; }
    /// Ticks that the counter shows beside those of the time that has passed.
    void set_extra_ticks(long long ticks_to_add) { extra_ticks = ticks_to_add; }
    /// Milliseconds since 1970-01-01 00:00 UTC at the start.
    void set_wall_start_ms(long long milliseconds) { wall_start_ms = milliseconds; }

private:
    long long monotonic_ms() override { return passed_ms; }
    long long wall_ms() override { return wall_start_ms + passed_ms; }
    long long ticks() override { return extra_ticks + passed_ms * ticks_per_second / 1000; }
    long long frequency() override { return ticks_per_second; }

    std::atomic<long long> passed_ms{0};
    std::atomic<long long> extra_ticks{0};
    std::atomic<long long> wall_start_ms{0};
    long long const ticks_per_second;
    AClock::Source *const previous_clock;
    ACounter::Source *const previous_counter;
};

/// The library's random numbers while it lives: 0, 1, 2 and so on, or what is set.
class FixedRandom : private ARandom::Source
{
public:
    FixedRandom()
        : previous(ARandom::set_source(this))
    {
    }
    ~FixedRandom() override { ARandom::set_source(previous); }
    FixedRandom(FixedRandom const &) = delete;
    FixedRandom &operator=(FixedRandom const &) = delete;

    void set_next(unsigned int value_to_come) { next = value_to_come; }

private:
    unsigned int value() override { return next++; }

    std::atomic<unsigned int> next{0};
    ARandom::Source *const previous;
};
