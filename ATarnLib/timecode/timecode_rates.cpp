// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/timecode/timecode_rates.h"

#include "ATarnLib/timecode/timecode_rates_p.h"

namespace Corvane {

namespace {

/// The rates by number, so that a timecode made for each field need not search.
struct RateIndex
{
    TimecodeRate rates[timecode_rate_count];

    constexpr RateIndex()
        : rates()
    {
        for (int at = 0; at < timecode_rate_count; ++at)
            rates[at] = find_timecode_rate(timecode_rate_frequency(at), timecode_rate_flag(at));
    }
};

constexpr RateIndex rate_index;

TimecodeRate const &rate(VideoFrequency frequency, DropframeFlag flag)
{
    return rate_index
        .rates[timecode_rate_index(isValid(frequency) ? frequency : VideoFrequency::invalid,
            isValid(flag) ? flag : DropframeFlag::invalid)];
}

TimecodeRate const &rate(VideoFrequency frequency)
{
    return rate(frequency, defaultDropframeFlag(frequency));
}

} // namespace

unsigned int timecode_fields_per_second(VideoFrequency frequency)
{
    return rate(frequency).second;
}

unsigned int timecode_fields_per_second(VideoFrequency frequency, DropframeFlag flag)
{
    return rate(frequency, flag).second;
}

unsigned int timecode_fields_per_minute(VideoFrequency frequency)
{
    return rate(frequency).minute;
}

unsigned int timecode_fields_per_minute(VideoFrequency frequency, DropframeFlag flag)
{
    return rate(frequency, flag).minute;
}

unsigned int timecode_fields_per_10minutes(VideoFrequency frequency)
{
    return rate(frequency).ten_minutes;
}

unsigned int timecode_fields_per_10minutes(VideoFrequency frequency, DropframeFlag flag)
{
    return rate(frequency, flag).ten_minutes;
}

unsigned int timecode_fields_per_hour(VideoFrequency frequency)
{
    return rate(frequency).hour;
}

unsigned int timecode_fields_per_hour(VideoFrequency frequency, DropframeFlag flag)
{
    return rate(frequency, flag).hour;
}

unsigned int timecode_fields_per_day(VideoFrequency frequency)
{
    return rate(frequency).day;
}

unsigned int timecode_fields_per_day(VideoFrequency frequency, DropframeFlag flag)
{
    return rate(frequency, flag).day;
}

unsigned int timecode_fields_per_frame(VideoFrequency frequency)
{
    return rate(frequency).frame;
}

unsigned int timecode_numfields(VideoFrequency frequency, unsigned int days, unsigned int hours,
    unsigned int minutes, unsigned int seconds, unsigned int frames, bool f2)
{
    return timecode_numfields(
        frequency, defaultDropframeFlag(frequency), days, hours, minutes, seconds, frames, f2);
}

unsigned int timecode_numfields(VideoFrequency frequency, DropframeFlag flag, unsigned int days,
    unsigned int hours, unsigned int minutes, unsigned int seconds, unsigned int frames, bool f2)
{
    TimecodeRate const &fields = rate(frequency, flag);
    if (fields.day == 0)
        return 0;
    return fields.day * days + fields.hour * hours + fields.ten_minutes * (minutes / 10)
        + fields.minute * (minutes % 10) + fields.second * seconds + fields.frame * frames
        + (f2 ? 1 : 0);
}

} // namespace Corvane
