// SPDX-License-Identifier: Apache-2.0
#include "sim/vesk/vesk_field_clock.h"

namespace {

enum class Rate
{
    none,
    hz50,
    hz59_94,
    hz60
};

Rate rate_of(VCTP3::VideoStandard standard)
{
    using Standard = VCTP3::VideoStandard;
    switch (standard) {
    case Standard::v4K_50p:
    case Standard::v1080_50p:
    case Standard::v1080_50i:
    case Standard::v720_50p:
    case Standard::v625_50i:
        return Rate::hz50;
    case Standard::v4K_59_94p:
    case Standard::v1080_59_94p:
    case Standard::v1080_59_94i:
    case Standard::v720_59_94p:
    case Standard::v525_59_94i:
        return Rate::hz59_94;
    case Standard::v4K_60p:
    case Standard::v1080_60p:
    case Standard::v1080_60i:
    case Standard::v720_60p:
        return Rate::hz60;
    default:
        return Rate::none;
    }
}

} // namespace

VeskFieldClock::VeskFieldClock(VCTP3::VideoStandard standard)
    : video(has_rate(standard) ? standard : VCTP3::VideoStandard::v1080_59_94i)
{
    if (rate_of(video) == Rate::hz50) {
        nominal = 50;
        rate_numerator = 50;
    } else if (rate_of(video) == Rate::hz59_94) {
        rate_numerator = 60000;
        rate_denominator = 1001000;
        flag = VCTP3::DropFrameFlag::df;
    }
}

bool VeskFieldClock::has_rate(VCTP3::VideoStandard standard)
{
    return rate_of(standard) != Rate::none;
}

unsigned int VeskFieldClock::fields_per_day() const
{
    // Drop frame leaves out two frames of each minute but every tenth.
    unsigned int const dropped = flag == VCTP3::DropFrameFlag::df ? 4 * 9 * 6 * 24 : 0;
    return nominal * 24 * 60 * 60 - dropped;
}

quint64 VeskFieldClock::begin_of(quint64 number) const
{
    return (number * rate_denominator + rate_numerator - 1) / rate_numerator;
}

VCTP3::Timecode VeskFieldClock::timecode(quint64 number) const
{
    VCTP3::Timecode timecode;
    timecode.valid = true;
    timecode.set_std(video);
    timecode.set_position(static_cast<int>(number % fields_per_day()));
    timecode.set_dfflag(flag);
    return timecode;
}

VCTP3::Timecode VeskFieldClock::time_of_day() const
{
    return timecode(fields_per_day() / 24 * 10 + count);
}
