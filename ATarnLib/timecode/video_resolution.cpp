// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/timecode/video_resolution.h"

#include "ATarnLib/timecode/enum_walk_p.h"

namespace Corvane {

namespace {

enum class Scan
{
    interlaced,
    progressive
};
enum class Definition
{
    none,
    standard,
    high
};

struct ResolutionRow
{
    char const *text;
    unsigned int width;
    unsigned int frame_height;
    unsigned int field_height;
    Scan scan;
    Definition definition;
};

constexpr ResolutionRow resolutions[] = {
    {"", 0, 0, 0, Scan::interlaced, Definition::none},
    {"4K", 3840, 2160, 2160, Scan::progressive, Definition::high},
    {"1080p", 1920, 1080, 1080, Scan::progressive, Definition::high},
    {"1080i", 1920, 1080, 540, Scan::interlaced, Definition::high},
    {"1080psf", 1920, 1080, 540, Scan::interlaced, Definition::high},
    {"720p", 1280, 720, 720, Scan::progressive, Definition::high},
    {"625i", 720, 576, 288, Scan::interlaced, Definition::standard},
    {"525i", 720, 486, 243, Scan::interlaced, Definition::standard},
};

} // namespace

bool getfirst(VideoResolution *value)
{
    *value = VideoResolution::v4K;
    return true;
}

bool getnext(VideoResolution *value)
{
    return walk_to_next(value);
}

AString toString(VideoResolution resolution)
{
    return AString::l1(row_of(resolutions, resolution).text);
}

VideoResolution toVideoResolution(AString const &text)
{
    return find_by_text<VideoResolution>(text);
}

VideoResolution toVideoResolution(VCTP3::VideoResolution resolution)
{
    return from_wire<VideoResolution>(resolution, VCTP3::valid_VideoResolution);
}

unsigned int width(VideoResolution resolution)
{
    return row_of(resolutions, resolution).width;
}

unsigned int frame_height(VideoResolution resolution)
{
    return row_of(resolutions, resolution).frame_height;
}

unsigned int field_height(VideoResolution resolution)
{
    return row_of(resolutions, resolution).field_height;
}

unsigned int pixels_per_frame(VideoResolution resolution)
{
    return width(resolution) * frame_height(resolution);
}

unsigned int pixels_per_field(VideoResolution resolution)
{
    return width(resolution) * field_height(resolution);
}

bool isInterlaced(VideoResolution resolution)
{
    return !isProgressive(resolution);
}

bool isProgressive(VideoResolution resolution)
{
    return row_of(resolutions, resolution).scan == Scan::progressive;
}

bool isHighDefinition(VideoResolution resolution)
{
    return row_of(resolutions, resolution).definition == Definition::high;
}

bool isStandardDefinition(VideoResolution resolution)
{
    return row_of(resolutions, resolution).definition == Definition::standard;
}

bool top_field_is_f1(VideoResolution resolution)
{
    return resolution != VideoResolution::v625i;
}

} // namespace Corvane
