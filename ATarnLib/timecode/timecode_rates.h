// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ATarnLib/timecode/video_frequency.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/tarn_export.h"

namespace Corvane {

/// \name How many fields a unit of timecode has
/// A minute of dropframe lacks the fields of the two frame numbers that it leaves out: 4, or 2
/// where a field is a frame. The first minute of each ten leaves nothing out, so ten minutes are
/// ten of these and 4 (2) fields. Without a flag, by the default one of the frequency. For an
/// invalid frequency, and for an invalid flag where the frequency has dropframe, the figures are
/// those of 59.94 Hz with dropframe, but 0 for a day.
/// @{
TARN_EXPORT unsigned int timecode_fields_per_second(VideoFrequency frequency);
TARN_EXPORT unsigned int timecode_fields_per_second(VideoFrequency frequency, DropframeFlag flag);
TARN_EXPORT unsigned int timecode_fields_per_minute(VideoFrequency frequency);
TARN_EXPORT unsigned int timecode_fields_per_minute(VideoFrequency frequency, DropframeFlag flag);
TARN_EXPORT unsigned int timecode_fields_per_10minutes(VideoFrequency frequency);
TARN_EXPORT unsigned int timecode_fields_per_10minutes(
    VideoFrequency frequency, DropframeFlag flag);
TARN_EXPORT unsigned int timecode_fields_per_hour(VideoFrequency frequency);
TARN_EXPORT unsigned int timecode_fields_per_hour(VideoFrequency frequency, DropframeFlag flag);
TARN_EXPORT unsigned int timecode_fields_per_day(VideoFrequency frequency);
TARN_EXPORT unsigned int timecode_fields_per_day(VideoFrequency frequency, DropframeFlag flag);
/// @}
/// 1 from 30 Hz down, where a field is a frame; else 2.
TARN_EXPORT unsigned int timecode_fields_per_frame(VideoFrequency frequency);

/// The field count of a timecode. \a f2, the second field of the frame, counts as one field at
/// every frequency. 0 for an invalid frequency, and for an invalid flag where the frequency has
/// dropframe. What passes 32 bits wraps.
TARN_EXPORT unsigned int timecode_numfields(VideoFrequency frequency, unsigned int days,
    unsigned int hours, unsigned int minutes, unsigned int seconds, unsigned int frames, bool f2);
TARN_EXPORT unsigned int timecode_numfields(VideoFrequency frequency, DropframeFlag flag,
    unsigned int days, unsigned int hours, unsigned int minutes, unsigned int seconds,
    unsigned int frames, bool f2);

} // namespace Corvane
