// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "sim/vesk/vesk_field_clock.h"

#include <QTimer>
#include <functional>

/// Lets the fields of a clock, or equal parts of them, pass in real time. They are counted from
/// the time that has gone by, so that a late timer event makes up for what it missed and the rate
/// stays exact.
/// Thread: the one that it was started on.
class VeskFieldTimer
{
public:
    /// \a part lets a field pass, or one of so many \a parts of it; \a clock tells the rate and
    /// must outlive this object.
    VeskFieldTimer(VeskFieldClock const *clock, std::function<void()> part, unsigned int parts = 1);

    void start();
    void stop() { timer.stop(); }

    /// At most this many fields pass in one go, so that sockets are served while much is missed.
    static constexpr quint64 most_at_once = 30;

private:
    void catch_up();
    void arm();

    VeskFieldClock const *rate;
    std::function<void()> pass_part;
    unsigned int parts_of_field;
    QTimer timer;
    long long start_ms = 0;
    quint64 passed = 0;
};
