// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ATarnLib/timecode/video_frequency.h"
#include "ATarnLib/timecode/video_resolution.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/records.h"

namespace Corvane {

/// A resolution at a frequency, as far as servers know it. A server runs in one standard at a time,
/// and every clip has one.
enum class VideoStandard : int
{
    invalid,
    v4K_60,
    v4K_59_94,
    v4K_50,
    v4K_30,
    v4K_29_97,
    v4K_25,
    v4K_24,
    v4K_23_98,
    v1080p_60,
    v1080p_59_94,
    v1080p_50,
    v1080p_30,
    v1080p_29_97,
    v1080p_25,
    v1080p_24,
    v1080p_23_98,
    v1080psf_47_95,
    v1080i_59_94,
    v1080i_50,
    v1080i_48,
    v1080i_47_95,
    v720p_60,
    v720p_59_94,
    v720p_50,
    v625i_50,
    v525i_59_94,
};

constexpr bool isValid(VideoStandard value)
{
    return value >= VideoStandard::v4K_60 && value <= VideoStandard::v525i_59_94;
}

/// \name Walking the valid values in numeric order
/// False, and *value untouched, at the last value and at an invalid one.
/// @{
TARN_EXPORT bool getfirst(VideoStandard *value);
TARN_EXPORT bool getnext(VideoStandard *value);
/// @}

/// "1080i 59.94Hz"; empty for an invalid value.
TARN_EXPORT AString toString(VideoStandard standard);
/// Exact, case-sensitive: takes only what `toString` gives.
TARN_EXPORT VideoStandard toVideoStandard(AString const &text);
/// Invalid where no standard has this pair.
TARN_EXPORT VideoStandard toVideoStandard(VideoResolution resolution, VideoFrequency frequency);
/// Invalid for the wire's 1080_60i, which has no standard here.
TARN_EXPORT VideoStandard toVideoStandard(VCTP3::VideoStandard standard);
inline VideoStandard toVideoStandard(VCTP3::ClipInfo const &clip)
{
    return toVideoStandard(clip.video_standard);
}
/// An invalid value is an assertion and gives 1080_59_94i. 4K at 25 Hz goes out as 4K_30p, as 4K at
/// 30 Hz does, and 4K_25p never goes out, although it is read: servers are used to it.
TARN_EXPORT VCTP3::VideoStandard to_vctp3(VideoStandard standard);

TARN_EXPORT VideoFrequency toVideoFrequency(VideoStandard standard);
TARN_EXPORT VideoResolution toVideoResolution(VideoStandard standard);
inline VideoFrequency toVideoFrequency(VCTP3::VideoStandard standard)
{
    return toVideoFrequency(toVideoStandard(standard));
}

/// \name What holds for the frequency of a standard
/// @{
inline VideoRoughFrequency toVideoRoughFrequency(VideoStandard standard)
{
    return toVideoRoughFrequency(toVideoFrequency(standard));
}
inline unsigned int RoughFieldsPerSecond(VideoStandard standard)
{
    return RoughFieldsPerSecond(toVideoFrequency(standard));
}
inline bool hasDropframe(VideoStandard standard)
{
    return hasDropframe(toVideoFrequency(standard));
}
inline DropframeFlag defaultDropframeFlag(VideoStandard standard)
{
    return defaultDropframeFlag(toVideoFrequency(standard));
}
inline DropframeFlag dropframeByVideoStandard(VideoStandard standard, DropframeFlag flag)
{
    return dropframeByVideoFrequency(toVideoFrequency(standard), flag);
}
/// @}

/// \name What holds for the resolution of a standard
/// @{
inline unsigned int width(VideoStandard standard)
{
    return width(toVideoResolution(standard));
}
inline unsigned int frame_height(VideoStandard standard)
{
    return frame_height(toVideoResolution(standard));
}
inline unsigned int field_height(VideoStandard standard)
{
    return field_height(toVideoResolution(standard));
}
inline unsigned int pixels_per_frame(VideoStandard standard)
{
    return pixels_per_frame(toVideoResolution(standard));
}
inline unsigned int pixels_per_field(VideoStandard standard)
{
    return pixels_per_field(toVideoResolution(standard));
}
inline bool isInterlaced(VideoStandard standard)
{
    return isInterlaced(toVideoResolution(standard));
}
inline bool isProgressive(VideoStandard standard)
{
    return isProgressive(toVideoResolution(standard));
}
inline bool isHighDefinition(VideoStandard standard)
{
    return isHighDefinition(toVideoResolution(standard));
}
inline bool isStandardDefinition(VideoStandard standard)
{
    return isStandardDefinition(toVideoResolution(standard));
}
inline bool top_field_is_f1(VideoStandard standard)
{
    return top_field_is_f1(toVideoResolution(standard));
}
/// @}

} // namespace Corvane
