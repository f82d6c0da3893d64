// SPDX-License-Identifier: Apache-2.0
#include "sim/vesk/vesk_motion.h"

#include <algorithm>

namespace {

long long fixed(long long field)
{
    return field * 65536;
}

/// The remainder that is never negative.
long long modulo(long long value, long long divisor)
{
    long long const rest = value % divisor;
    return rest < 0 ? rest + divisor : rest;
}

} // namespace

void VeskMotion::go_to(long long field, VeskRange const &range)
{
    long long const last = range.empty() ? range.in : range.end - 1LL;
    position = fixed(std::clamp<long long>(field, range.in, last));
}

bool VeskMotion::step(VeskRange const &range)
{
    position += speed;
    bool const past = speed < 0 ? position < fixed(range.in) : position >= fixed(range.end);
    if (past)
        go_to(speed < 0 ? range.in : range.end - 1LL, range);
    return past;
}

void VeskMotion::step_round(VeskRange const &range)
{
    position += speed;
    long long const in = fixed(range.in);
    if (speed < 0 ? position < in : position >= fixed(range.end))
        position = in + modulo(position - in, fixed(range.end) - in);
}

void VeskMotion::step_to_and_fro(VeskRange const &range)
{
    position += speed;
    long long const in = fixed(range.in);
    long long const way = fixed(range.end - 1LL) - in;
    long long const gone = position - in;
    if (speed < 0 ? gone >= 0 : gone <= way)
        return;
    if (way == 0) {
        position = in;
        return;
    }
    // There and back is one period; in its second half the picture runs the other way.
    long long const phase = modulo(gone, 2 * way);
    bool const back = phase > way;
    position = in + (back ? 2 * way - phase : phase);
    if (back)
        speed = -speed;
}
