// SPDX-License-Identifier: Apache-2.0
#pragma once

/// Fields of a clip from \a in to in front of \a end.
struct VeskRange
{
    unsigned int in = 0;
    unsigned int end = 0;

    bool empty() const { return in >= end; }
};

/// Where a layer is in its clip and how fast it goes. Both in 16.16 fixed point: a speed of 65536
/// is one field a field.
struct VeskMotion
{
    static constexpr int normal_speed = 65536;

    long long position = 0;
    int speed = 0; // never the lowest int, so that it can turn round

    unsigned int field() const { return static_cast<unsigned int>(position >> 16); }
    /// Out of range goes to the nearest field of \a range, its start if it is empty.
    void go_to(long long field, VeskRange const &range);

    /// Goes on for one field. True when that led past an end of \a range: then it stands on the
    /// last field on that side.
    bool step(VeskRange const &range);
    /// Goes on for one field and comes in again on the other side of \a range, which is not
    /// empty. What lies in front of the range, seen in the direction of the speed, is played into
    /// it; what lies behind it, too, comes in on the other side.
    void step_round(VeskRange const &range);
    /// Goes on for one field and turns round at the first and the last field of \a range, which
    /// is not empty. Outside of it as with `step_round`.
    void step_to_and_fro(VeskRange const &range);
};
