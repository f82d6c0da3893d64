// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/base/aflywheel.h"

#include <algorithm>
#include <cstdlib>

namespace {

constexpr int one_step = 65536;
/// How far apart two values of one run may be, extrapolated to the same moment.
constexpr long long run_tolerance = 20;

int limit_to_int(long long value)
{
    return static_cast<int>(std::clamp<long long>(value, INT_MIN, INT_MAX));
}

} // namespace

AFlyWheel::AFlyWheel(unsigned int sequence_ticks, unsigned int flywheel_ticks)
    : sequence_time(sequence_ticks)
    , flywheel_time(flywheel_ticks)
{
}

void AFlyWheel::set_value(int value)
{
    Measurement arrived;
    arrived.value = value;
    arrived.taken.start();

    if (run.is_valid()) {
        if (is_sequential(count_speed, last, arrived))
            last = arrived;
        else
            run.invalidate();
    }
    if (!run.is_valid()) {
        run.start();
        last = arrived;
    }
    if (elapsed(run) < sequence_time || held())
        return;
    flywheel = arrived;
    flywheel_speed = count_speed;
    hold.invalidate();
}

int AFlyWheel::get_value() const
{
    return std::min(std::max(get_raw_value(), min_value), max_value);
}

int AFlyWheel::get_raw_value() const
{
    if (flywheel_runs())
        return flywheel.value_now(flywheel_speed);
    return run.is_valid() ? last.value : 0;
}

void AFlyWheel::clear()
{
    run.invalidate();
    last.taken.invalidate();
    flywheel.taken.invalidate();
    hold.invalidate();
}

void AFlyWheel::flywheel_longer()
{
    if (!flywheel_runs())
        return;
    run.invalidate();
    hold.start();
}

void AFlyWheel::set_count_up()
{
    count_speed = one_step;
}

void AFlyWheel::set_count_down()
{
    count_speed = -one_step;
}

void AFlyWheel::set_count_speed(int speed)
{
    count_speed = speed;
}

void AFlyWheel::set_min_value(int value)
{
    min_value = value;
}

void AFlyWheel::set_max_value(int value)
{
    max_value = value;
}

int AFlyWheel::get_min_value() const
{
    return min_value;
}

int AFlyWheel::get_max_value() const
{
    return max_value;
}

int AFlyWheel::Measurement::value_now(int speed) const
{
    return limit_to_int(1ll * value + calc_distance(elapsed(taken), speed));
}

long long AFlyWheel::elapsed(AElapsedTimer const &timer)
{
    return timer.elapsed_ms() * 60 / 1000;
}

int AFlyWheel::calc_distance(long long ticks, int speed)
{
    long long product = 0;
    if (__builtin_mul_overflow(ticks, speed, &product)
        || __builtin_add_overflow(product, one_step / 2, &product))
        return speed < 0 ? INT_MIN : INT_MAX;
    return limit_to_int(product / one_step);
}

bool AFlyWheel::is_sequential(int speed, Measurement const &a, Measurement const &b)
{
    return a.is_valid() && b.is_valid()
        && std::llabs(1ll * a.value_now(speed) - b.value_now(speed)) < run_tolerance;
}

bool AFlyWheel::held() const
{
    return hold.is_valid() && elapsed(hold) <= flywheel_time;
}

bool AFlyWheel::flywheel_runs() const
{
    return flywheel.is_valid() && (elapsed(flywheel.taken) <= flywheel_time || held());
}
