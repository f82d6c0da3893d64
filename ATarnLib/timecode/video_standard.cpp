// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/timecode/video_standard.h"

#include "ATarnLib/timecode/enum_walk_p.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/aassert.h"

namespace Corvane {

namespace {

struct StandardRow
{
    VideoStandard standard;
    VideoFrequency frequency;
    VideoResolution resolution;
    VCTP3::VideoStandard wire;
};

using F = VideoFrequency;
using R = VideoResolution;
using S = VideoStandard;
using Wire = VCTP3::VideoStandard;

constexpr StandardRow standards[] = {
    {S::v4K_60, F::v60, R::v4K, Wire::v4K_60p},
    {S::v4K_59_94, F::v59_94, R::v4K, Wire::v4K_59_94p},
    {S::v4K_50, F::v50, R::v4K, Wire::v4K_50p},
    {S::v4K_30, F::v30, R::v4K, Wire::v4K_30p},
    {S::v4K_29_97, F::v29_97, R::v4K, Wire::v4K_29_97p},
    {S::v4K_25, F::v25, R::v4K, Wire::v4K_30p},
    {S::v4K_24, F::v24, R::v4K, Wire::v4K_24p},
    {S::v4K_23_98, F::v23_98, R::v4K, Wire::v4K_23_98p},
    {S::v1080p_60, F::v60, R::v1080p, Wire::v1080_60p},
    {S::v1080p_59_94, F::v59_94, R::v1080p, Wire::v1080_59_94p},
    {S::v1080p_50, F::v50, R::v1080p, Wire::v1080_50p},
    {S::v1080p_30, F::v30, R::v1080p, Wire::v1080_30p},
    {S::v1080p_29_97, F::v29_97, R::v1080p, Wire::v1080_29_97p},
    {S::v1080p_25, F::v25, R::v1080p, Wire::v1080_25p},
    {S::v1080p_24, F::v24, R::v1080p, Wire::v1080_24p},
    {S::v1080p_23_98, F::v23_98, R::v1080p, Wire::v1080_23_98p},
    {S::v1080psf_47_95, F::v47_95, R::v1080psf, Wire::v1080_23_98psf},
    {S::v1080i_59_94, F::v59_94, R::v1080i, Wire::v1080_59_94i},
    {S::v1080i_50, F::v50, R::v1080i, Wire::v1080_50i},
    {S::v1080i_48, F::v48, R::v1080i, Wire::v1080_48i},
    {S::v1080i_47_95, F::v47_95, R::v1080i, Wire::v1080_47_95i},
    {S::v720p_60, F::v60, R::v720p, Wire::v720_60p},
    {S::v720p_59_94, F::v59_94, R::v720p, Wire::v720_59_94p},
    {S::v720p_50, F::v50, R::v720p, Wire::v720_50p},
    {S::v625i_50, F::v50, R::v625i, Wire::v625_50i},
    {S::v525i_59_94, F::v59_94, R::v525i, Wire::v525_59_94i},
};

/// Null for an invalid standard.
StandardRow const *find_row(VideoStandard standard)
{
    for (StandardRow const &row : standards) {
        if (row.standard == standard)
            return &row;
    }
    return nullptr;
}

} // namespace

bool getfirst(VideoStandard *value)
{
    *value = VideoStandard::v4K_60;
    return true;
}

bool getnext(VideoStandard *value)
{
    return walk_to_next(value);
}

AString toString(VideoStandard standard)
{
    AString const resolution = toString(toVideoResolution(standard));
    AString const frequency = toString(toVideoFrequency(standard));
    if (resolution.empty() || frequency.empty())
        return {};
    return resolution + AString(AString::blank) + frequency;
}

VideoStandard toVideoStandard(AString const &text)
{
    return find_by_text<VideoStandard>(text);
}

VideoStandard toVideoStandard(VideoResolution resolution, VideoFrequency frequency)
{
    for (StandardRow const &row : standards) {
        if (row.resolution == resolution && row.frequency == frequency)
            return row.standard;
    }
    return VideoStandard::invalid;
}

VideoStandard toVideoStandard(VCTP3::VideoStandard standard)
{
    int const value = static_cast<int>(standard);
    int const gap = static_cast<int>(Wire::v1080_60i);
    if (!VCTP3::valid_VideoStandard(value) || value == gap)
        return VideoStandard::invalid;
    return static_cast<VideoStandard>(value < gap ? value + 1 : value);
}

VCTP3::VideoStandard to_vctp3(VideoStandard standard)
{
    StandardRow const *row = find_row(standard);
    return A_ASSERT_TEXT(row, "isValid(standard)") ? row->wire : Wire::v1080_59_94i;
}

VideoFrequency toVideoFrequency(VideoStandard standard)
{
    StandardRow const *row = find_row(standard);
    return row ? row->frequency : VideoFrequency::invalid;
}

VideoResolution toVideoResolution(VideoStandard standard)
{
    StandardRow const *row = find_row(standard);
    return row ? row->resolution : VideoResolution::invalid;
}

} // namespace Corvane
