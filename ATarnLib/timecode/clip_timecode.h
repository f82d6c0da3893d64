// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ATarnLib/timecode/atimecode.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/tarn_export.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/records.h"

namespace Corvane {

/// \name Timecodes of a clip, all at a speed of 1 unless the wire tells another
/// @{

/// The first field, by what the clip's timecode comes from; undefined for an unknown source.
TARN_EXPORT ATimecode start_timecode(VCTP3::ClipInfo const &clip);
/// The first field as striped.
TARN_EXPORT ATimecode stripe_start_timecode(VCTP3::ClipInfo const &clip);
/// 0 in the rate of the stripe; undefined where that is.
TARN_EXPORT ATimecode zerobased_start_timecode(VCTP3::ClipInfo const &clip);
/// That of the recording's first field where the clip has it, else zero-based.
TARN_EXPORT ATimecode frame0_timecode(VCTP3::ClipInfo const &clip);
/// The first field beyond the clip: `start_timecode` and the length.
TARN_EXPORT ATimecode duration_timecode(VCTP3::ClipInfo const &clip);
/// @}

} // namespace Corvane
