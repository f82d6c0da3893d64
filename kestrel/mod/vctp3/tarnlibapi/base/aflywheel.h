// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/aelapsed_timer.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/tarn_export.h"

#include <climits>

/// Turns values that arrive irregularly, such as a count-down read off the air, into a value that
/// runs smoothly on its own. Times are in ticks of 1/60 second, speeds in value steps for each tick
/// as 16.16 fixed point (65536 is one step up).
/// Thread: a value without a lock.
class TARN_EXPORT AFlyWheel
{
public:
    /// Believes a run after 10 ticks and runs on for 60 ticks without a believed value.
    AFlyWheel() = default;
    /// Believes a run that has lasted \a sequence_time ticks, and runs on for \a flywheel_time
    /// ticks without a believed value.
    AFlyWheel(unsigned int sequence_time, unsigned int flywheel_time);

    /// A value arrives now.
    void set_value(int value);
    /// The smooth value now, within `get_min_value` and `get_max_value`.
    int get_value() const;
    /// The smooth value now; 0 when there is none.
    int get_raw_value() const;
    /// Forgets all values. Speed, times and limits stay.
    void clear();
    /// The values are about to fail for a while: starts the flywheel time over, if it has not run
    /// out. The next believed run ends it.
    void flywheel_longer();

    /// The speed that values are expected to run at: one step up or down for each tick, or any.
    void set_count_up();
    void set_count_down();
    void set_count_speed(int speed);

    void set_min_value(int value);
    void set_max_value(int value);
    int get_min_value() const;
    int get_max_value() const;

private:
    struct Measurement
    {
        int value = 0;
        AElapsedTimer taken;

        bool is_valid() const { return taken.is_valid(); }
        int value_now(int speed) const;
    };

    static long long elapsed(AElapsedTimer const &timer);
    static int calc_distance(long long ticks, int speed);
    static bool is_sequential(int speed, Measurement const &a, Measurement const &b);
    bool held() const;
    bool flywheel_runs() const;

    unsigned int sequence_time = 10;
    AElapsedTimer run; // since the first value of a run
    Measurement last; // the newest value of the run
    int count_speed = -65536;
    unsigned int flywheel_time = 60;
    Measurement flywheel; // what the smooth value is extrapolated from
    AElapsedTimer hold; // since flywheel_longer
    int flywheel_speed = -65536; // belongs to flywheel
    int min_value = INT_MIN;
    int max_value = INT_MAX;
};
