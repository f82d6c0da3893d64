// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/astring.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/tarn_export.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/records.h"

namespace Corvane {

/// What a track of a clip holds.
enum class TrackType : int
{
    invalid,
    video,
    key,
    audio,
    timecode
};

/// Which types of tracks there are: the sum of their bits, so any number up to 15.
enum class TrackSet : int
{
    none = 0,
    video = 1,
    key = 2,
    audio = 4,
    timecode = 8,
    invalid = 16
};

constexpr bool isValid(TrackType value)
{
    return value >= TrackType::video && value <= TrackType::timecode;
}
constexpr bool isValid(TrackSet value)
{
    return value >= TrackSet::none && value < TrackSet::invalid;
}

/// \name Walking the valid values in numeric order
/// False, and *value untouched, at the last value and at an invalid one.
/// @{
TARN_EXPORT bool getfirst(TrackType *value);
TARN_EXPORT bool getnext(TrackType *value);
TARN_EXPORT bool getfirst(TrackSet *value);
TARN_EXPORT bool getnext(TrackSet *value);
/// @}

/// "video", "key", "audio" or "timecode"; empty for an invalid value.
TARN_EXPORT AString toString(TrackType type);
/// Exact, case-sensitive.
TARN_EXPORT TrackType toTrackType(AString const &text);
TARN_EXPORT TrackType toTrackType(VCTP3::TrackType type);

/// Four characters, from "----" to "VKAT"; empty for an invalid value.
TARN_EXPORT AString toString(TrackSet set);
/// Exact, case-sensitive.
TARN_EXPORT TrackSet toTrackSet(AString const &text);
/// All tracks together; invalid if one is of an unknown type.
TARN_EXPORT TrackSet toTrackSet(VCTP3::TrackInfoVector const &tracks);
TARN_EXPORT TrackSet toTrackSet(VCTP3::ClipInfo const &clip);

/// \name Adding to a set; invalid if one of the two is
/// @{
TARN_EXPORT TrackSet combine(TrackSet set, TrackType type);
TARN_EXPORT TrackSet combine(TrackSet set, TrackSet other);
TARN_EXPORT TrackSet combine(TrackSet set, VCTP3::TrackInfo const &track);
/// @}

} // namespace Corvane
