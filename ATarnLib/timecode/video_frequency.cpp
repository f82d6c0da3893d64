// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/timecode/video_frequency.h"

#include "ATarnLib/timecode/enum_walk_p.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/aassert.h"

namespace Corvane {

namespace {

struct FrequencyRow
{
    char const *text;
    VideoRoughFrequency rough;
    bool has_dropframe;
};

constexpr FrequencyRow frequencies[] = {
    {"", VideoRoughFrequency::invalid, false},
    {"60Hz", VideoRoughFrequency::v60, false},
    {"59.94Hz", VideoRoughFrequency::v60, true},
    {"50Hz", VideoRoughFrequency::v50, false},
    {"48Hz", VideoRoughFrequency::v48, false},
    {"47.95Hz", VideoRoughFrequency::v48, false},
    {"30Hz", VideoRoughFrequency::v30, false},
    {"29.97Hz", VideoRoughFrequency::v30, true},
    {"25Hz", VideoRoughFrequency::v25, false},
    {"24Hz", VideoRoughFrequency::v24, false},
    {"23.98Hz", VideoRoughFrequency::v24, false},
};

constexpr unsigned int rough_fields[] = {60, 60, 50, 48, 30, 25, 24};

constexpr char const *flag_texts[] = {"", "df", "ndf"};

} // namespace

bool getfirst(VideoFrequency *value)
{
    *value = VideoFrequency::v60;
    return true;
}

bool getnext(VideoFrequency *value)
{
    return walk_to_next(value);
}

bool getfirst(VideoRoughFrequency *value)
{
    *value = VideoRoughFrequency::v60;
    return true;
}

bool getnext(VideoRoughFrequency *value)
{
    return walk_to_next(value);
}

bool getfirst(DropframeFlag *value)
{
    *value = DropframeFlag::df;
    return true;
}

bool getnext(DropframeFlag *value)
{
    return walk_to_next(value);
}

AString toString(VideoFrequency frequency)
{
    return AString::l1(row_of(frequencies, frequency).text);
}

VideoFrequency toVideoFrequency(AString const &text)
{
    return find_by_text<VideoFrequency>(text);
}

VideoFrequency toVideoFrequency(VCTP3::VideoRate rate)
{
    return from_wire<VideoFrequency>(rate, VCTP3::valid_VideoRate);
}

VCTP3::VideoRate to_vctp3(VideoFrequency frequency)
{
    if (!A_ASSERT(isValid(frequency)))
        return VCTP3::VideoRate::v59_94;
    return static_cast<VCTP3::VideoRate>(static_cast<int>(frequency) - 1);
}

VideoRoughFrequency toVideoRoughFrequency(VideoFrequency frequency)
{
    return row_of(frequencies, frequency).rough;
}

unsigned int RoughFieldsPerSecond(VideoRoughFrequency frequency)
{
    A_ASSERT(frequency != VideoRoughFrequency::invalid);
    return row_of(rough_fields, frequency);
}

bool hasDropframe(VideoFrequency frequency)
{
    return row_of(frequencies, frequency).has_dropframe;
}

DropframeFlag defaultDropframeFlag(VideoFrequency frequency)
{
    return hasDropframe(frequency) ? DropframeFlag::df : DropframeFlag::ndf;
}

DropframeFlag dropframeByVideoFrequency(VideoFrequency frequency, DropframeFlag flag)
{
    if (flag == DropframeFlag::df)
        return defaultDropframeFlag(frequency);
    return isValid(flag) ? flag : DropframeFlag::invalid;
}

AString toString(DropframeFlag flag)
{
    return AString::l1(row_of(flag_texts, flag));
}

DropframeFlag toDropframeFlag(AString const &text)
{
    return find_by_text<DropframeFlag>(text);
}

DropframeFlag toDropframeFlag(VCTP3::DropFrameFlag flag)
{
    return from_wire<DropframeFlag>(flag, VCTP3::valid_DropFrameFlag);
}

VCTP3::DropFrameFlag to_vctp3(DropframeFlag flag)
{
    if (!A_ASSERT(isValid(flag)))
        return VCTP3::DropFrameFlag::df;
    return static_cast<VCTP3::DropFrameFlag>(static_cast<int>(flag) - 1);
}

} // namespace Corvane
