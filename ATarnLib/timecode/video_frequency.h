// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/astring.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/tarn_export.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/enums.h"

// Enumerations of this namespace have the value 0 for "none"; every function takes any number and
// treats one outside the enumeration as it treats 0, unless it says otherwise.
namespace Corvane {

/// How many fields a second there are; frames, where a field is a frame.
enum class VideoFrequency : int
{
    invalid,
    v60,
    v59_94,
    v50,
    v48,
    v47_95,
    v30,
    v29_97,
    v25,
    v24,
    v23_98,
};

/// A frequency and its near neighbour together: 59.94 Hz counts as 60.
enum class VideoRoughFrequency : int
{
    invalid,
    v60,
    v50,
    v48,
    v30,
    v25,
    v24
};

/// How frames are numbered: with dropframe, two numbers are left out each minute but the tenth.
enum class DropframeFlag : int
{
    invalid,
    df,
    ndf
};

constexpr bool isValid(VideoFrequency value)
{
    return value >= VideoFrequency::v60 && value <= VideoFrequency::v23_98;
}
constexpr bool isValid(VideoRoughFrequency value)
{
    return value >= VideoRoughFrequency::v60 && value <= VideoRoughFrequency::v24;
}
constexpr bool isValid(DropframeFlag value)
{
    return value == DropframeFlag::df || value == DropframeFlag::ndf;
}

/// \name Walking the valid values in numeric order
/// False, and *value untouched, at the last value and at an invalid one.
/// @{
TARN_EXPORT bool getfirst(VideoFrequency *value);
TARN_EXPORT bool getnext(VideoFrequency *value);
TARN_EXPORT bool getfirst(VideoRoughFrequency *value);
TARN_EXPORT bool getnext(VideoRoughFrequency *value);
TARN_EXPORT bool getfirst(DropframeFlag *value);
TARN_EXPORT bool getnext(DropframeFlag *value);
/// @}

/// "59.94Hz"; empty for an invalid value.
TARN_EXPORT AString toString(VideoFrequency frequency);
/// Exact, case-sensitive.
TARN_EXPORT VideoFrequency toVideoFrequency(AString const &text);
TARN_EXPORT VideoFrequency toVideoFrequency(VCTP3::VideoRate rate);
/// An invalid value is an assertion and gives the rate of 59.94 Hz.
TARN_EXPORT VCTP3::VideoRate to_vctp3(VideoFrequency frequency);

TARN_EXPORT VideoRoughFrequency toVideoRoughFrequency(VideoFrequency frequency);
/// 60, 50, 48, 30, 25 or 24; 60 for an invalid value, and 0 is an assertion too.
TARN_EXPORT unsigned int RoughFieldsPerSecond(VideoRoughFrequency frequency);
inline unsigned int RoughFieldsPerSecond(VideoFrequency frequency)
{
    return RoughFieldsPerSecond(toVideoRoughFrequency(frequency));
}

/// Whether timecode of this frequency may leave out frame numbers: only at 59.94 and 29.97 Hz.
TARN_EXPORT bool hasDropframe(VideoFrequency frequency);
/// Dropframe where the frequency has it.
TARN_EXPORT DropframeFlag defaultDropframeFlag(VideoFrequency frequency);
/// \a flag, but non-dropframe in place of dropframe where the frequency does not have it.
TARN_EXPORT DropframeFlag dropframeByVideoFrequency(VideoFrequency frequency, DropframeFlag flag);

/// "df" or "ndf"; empty for an invalid value.
TARN_EXPORT AString toString(DropframeFlag flag);
/// Exact, case-sensitive.
TARN_EXPORT DropframeFlag toDropframeFlag(AString const &text);
TARN_EXPORT DropframeFlag toDropframeFlag(VCTP3::DropFrameFlag flag);
/// An invalid value is an assertion and gives dropframe.
TARN_EXPORT VCTP3::DropFrameFlag to_vctp3(DropframeFlag flag);

} // namespace Corvane
