// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/timecode/clip_timecode.h"

namespace Corvane {

ATimecode start_timecode(VCTP3::ClipInfo const &clip)
{
    switch (clip.timecode_source) {
    case VCTP3::TimecodeSource::zerobased:
        return zerobased_start_timecode(clip);
    case VCTP3::TimecodeSource::striped:
        return stripe_start_timecode(clip);
    case VCTP3::TimecodeSource::rectc:
    case VCTP3::TimecodeSource::rec0_stripe:
        return frame0_timecode(clip);
    }
    return {};
}

ATimecode stripe_start_timecode(VCTP3::ClipInfo const &clip)
{
    return ATimecode(clip.stripe_timecode, 1);
}

ATimecode zerobased_start_timecode(VCTP3::ClipInfo const &clip)
{
    ATimecode start = stripe_start_timecode(clip);
    start.set_nfields(0);
    return start;
}

ATimecode frame0_timecode(VCTP3::ClipInfo const &clip)
{
    return clip.has_frame0tc ? ATimecode(clip.video_standard, clip.frame0tc, 1)
                             : zerobased_start_timecode(clip);
}

ATimecode duration_timecode(VCTP3::ClipInfo const &clip)
{
    return start_timecode(clip) + clip.clip_length;
}

} // namespace Corvane
