// SPDX-License-Identifier: Apache-2.0
#include "sim/vesk/vesk_field_timer.h"

#include "kestrel/mod/vctp3/tarnlibapi/base/clock.h"

#include <algorithm>
#include <utility>

VeskFieldTimer::VeskFieldTimer(
    VeskFieldClock const *clock, std::function<void()> part, unsigned int parts)
    : rate(clock)
    , pass_part(std::move(part))
    , parts_of_field(parts)
{
    timer.setTimerType(Qt::PreciseTimer);
    timer.setSingleShot(true);
    QObject::connect(&timer, &QTimer::timeout, &timer, [this] { catch_up(); });
}

void VeskFieldTimer::start()
{
    start_ms = AClock::monotonic_ms();
    passed = 0;
    arm();
}

void VeskFieldTimer::catch_up()
{
    auto const elapsed = static_cast<quint64>(AClock::monotonic_ms() - start_ms);
    quint64 const due = std::min(
        rate->fields_within(elapsed * parts_of_field), passed + most_at_once * parts_of_field);
    for (; passed < due; ++passed)
        pass_part();
    arm();
}

void VeskFieldTimer::arm()
{
    auto const elapsed = static_cast<quint64>(AClock::monotonic_ms() - start_ms);
    quint64 const next
        = (rate->begin_of(passed + 1) + parts_of_field - 1) / parts_of_field; // rounded up
    timer.start(next > elapsed ? static_cast<int>(next - elapsed) : 0);
}
