// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/protocol/enums.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/records.h"

#include <QtGlobal>

/// Counts the fields of the house and tells the house's time of day. It does not run by itself:
/// a test lets fields pass as it likes, `VeskFieldTimer` lets them pass in real time.
/// Thread: the server's.
class VeskFieldClock
{
public:
    /// \a standard: one of those that `has_rate`; another one counts as 1080_59_94i.
    explicit VeskFieldClock(VCTP3::VideoStandard standard);

    /// True for the standards of 50, 59.94 or 60 fields a second.
    static bool has_rate(VCTP3::VideoStandard standard);

    VCTP3::VideoStandard standard() const { return video; }
    /// The whole rate that timecodes count by: 50 or 60.
    unsigned int fields_per_second() const { return nominal; }
    /// Drop frame at 59.94, none otherwise.
    VCTP3::DropFrameFlag drop_frame() const { return flag; }
    /// The fields of a day by the count of `drop_frame`.
    unsigned int fields_per_day() const;

    /// Fields since the start.
    quint64 now() const { return count; }
    void advance() { ++count; }
    /// How many fields begin within \a ms milliseconds, the first at 0.
    quint64 fields_within(quint64 ms) const { return ms * rate_numerator / rate_denominator; }
    /// The time, in milliseconds rounded up, at which field \a number begins.
    quint64 begin_of(quint64 number) const;

    /// Timecode of field \a number of a day, taken round midnight.
    VCTP3::Timecode timecode(quint64 number) const;
    /// The house's time of day, which also comes in with the pictures; ten in the morning at the
    /// start.
    VCTP3::Timecode time_of_day() const;

private:
    VCTP3::VideoStandard video;
    VCTP3::DropFrameFlag flag = VCTP3::DropFrameFlag::ndf;
    unsigned int nominal = 60;
    quint64 rate_numerator = 60; // fields in rate_denominator milliseconds
    quint64 rate_denominator = 1000;
    quint64 count = 0;
};
