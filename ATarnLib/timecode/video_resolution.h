// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/astring.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/tarn_export.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/enums.h"

namespace Corvane {

/// Size and scan of a picture.
enum class VideoResolution : int
{
    invalid,
    v4K,
    v1080p,
    v1080i,
    v1080psf,
    v720p,
    v625i,
    v525i
};

constexpr bool isValid(VideoResolution value)
{
    return value >= VideoResolution::v4K && value <= VideoResolution::v525i;
}

/// \name Walking the valid values in numeric order
/// False, and *value untouched, at the last value and at an invalid one.
/// @{
TARN_EXPORT bool getfirst(VideoResolution *value);
TARN_EXPORT bool getnext(VideoResolution *value);
/// @}

/// "1080i"; empty for an invalid value.
TARN_EXPORT AString toString(VideoResolution resolution);
/// Exact, case-sensitive.
TARN_EXPORT VideoResolution toVideoResolution(AString const &text);
TARN_EXPORT VideoResolution toVideoResolution(VCTP3::VideoResolution resolution);

/// \name Pixels; 0 for an invalid value
/// @{
TARN_EXPORT unsigned int width(VideoResolution resolution);
TARN_EXPORT unsigned int frame_height(VideoResolution resolution);
/// That of the frame where a field is a frame.
TARN_EXPORT unsigned int field_height(VideoResolution resolution);
TARN_EXPORT unsigned int pixels_per_frame(VideoResolution resolution);
TARN_EXPORT unsigned int pixels_per_field(VideoResolution resolution);
/// @}

/// The opposite of `isProgressive`, so true for an invalid value.
TARN_EXPORT bool isInterlaced(VideoResolution resolution);
/// "1080psf" is not: its frames travel as two fields.
TARN_EXPORT bool isProgressive(VideoResolution resolution);
/// \name Neither is true for an invalid value
/// @{
TARN_EXPORT bool isHighDefinition(VideoResolution resolution);
TARN_EXPORT bool isStandardDefinition(VideoResolution resolution);
/// @}
/// Whether the first field has the topmost line: everywhere but in 625i.
TARN_EXPORT bool top_field_is_f1(VideoResolution resolution);

} // namespace Corvane
