// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ATarnLib/timecode/video_frequency.h"

namespace Corvane {

/// Fields of each unit of timecode.
struct TimecodeRate
{
    unsigned int second;
    unsigned int minute;
    unsigned int ten_minutes;
    unsigned int hour;
    unsigned int day;
    unsigned int frame;
};

struct TimecodeRateRow
{
    VideoFrequency frequency;
    DropframeFlag flag; // invalid: any
    TimecodeRate rate;
};

constexpr DropframeFlag any_flag = DropframeFlag::invalid;

constexpr TimecodeRateRow timecode_rates[] = {
    {VideoFrequency::v60, any_flag, {60, 3600, 36000, 216000, 5184000, 2}},
    {VideoFrequency::v59_94, DropframeFlag::df, {60, 3596, 35964, 215784, 5178816, 2}},
    {VideoFrequency::v59_94, DropframeFlag::ndf, {60, 3600, 36000, 216000, 5184000, 2}},
    {VideoFrequency::v50, any_flag, {50, 3000, 30000, 180000, 4320000, 2}},
    {VideoFrequency::v48, any_flag, {48, 2880, 28800, 172800, 4147200, 2}},
    {VideoFrequency::v47_95, any_flag, {48, 2880, 28800, 172800, 4147200, 2}},
    {VideoFrequency::v30, any_flag, {30, 1800, 18000, 108000, 2592000, 1}},
    {VideoFrequency::v29_97, DropframeFlag::df, {30, 1798, 17982, 107892, 2589408, 1}},
    {VideoFrequency::v29_97, DropframeFlag::ndf, {30, 1800, 18000, 108000, 2592000, 1}},
    {VideoFrequency::v25, any_flag, {25, 1500, 15000, 90000, 2160000, 1}},
    {VideoFrequency::v24, any_flag, {24, 1440, 14400, 86400, 2073600, 1}},
    {VideoFrequency::v23_98, any_flag, {24, 1440, 14400, 86400, 2073600, 1}},
};

/// \name Tables by frequency and flag, with a place for the invalid ones too
/// @{
constexpr int timecode_flag_count = static_cast<int>(DropframeFlag::ndf) + 1;
constexpr int timecode_rate_count
    = (static_cast<int>(VideoFrequency::v23_98) + 1) * timecode_flag_count;

constexpr int timecode_rate_index(VideoFrequency frequency, DropframeFlag flag)
{
    return static_cast<int>(frequency) * timecode_flag_count + static_cast<int>(flag);
}
constexpr VideoFrequency timecode_rate_frequency(int index)
{
    return static_cast<VideoFrequency>(index / timecode_flag_count);
}
constexpr DropframeFlag timecode_rate_flag(int index)
{
    return static_cast<DropframeFlag>(index % timecode_flag_count);
}
/// @}

/// What an invalid frequency or flag answers.
constexpr TimecodeRate no_timecode_rate{60, 3596, 35964, 215784, 0, 2};

constexpr TimecodeRate find_timecode_rate(VideoFrequency frequency, DropframeFlag flag)
{
    for (TimecodeRateRow const &row : timecode_rates) {
        if (row.frequency == frequency && (row.flag == flag || row.flag == any_flag))
            return row.rate;
    }
    return no_timecode_rate;
}

} // namespace Corvane
