// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/timecode/atimecode_range.h"

namespace Corvane {

ATimecodeRange ATimecodeRange::in_out(ATimecode const &first, ATimecode const &next)
{
    return start_duration(first, next - first);
}

ATimecodeRange ATimecodeRange::start_duration(
    ATimecode const &start, ATimecode const &duration_timecode)
{
    return {start, duration_timecode.is_defined() ? duration_timecode.get_nfields() : 0};
}

ATimecode ATimecodeRange::get_last() const
{
    return duration == 0 ? ATimecode() : get_start() + (duration - 1);
}

bool ATimecodeRange::contains(ATimecode const &t) const
{
    return t.is_defined() && nonzero_range() && get_start() <= t && t <= get_last();
}

bool ATimecodeRange::contains24(ATimecode const &t) const
{
    if (!t.is_defined() || !nonzero_range())
        return false;
    if (duration >= get_fields_per_day())
        return true;
    ATimecode const start = get_start24();
    ATimecode const last = get_last24();
    ATimecode const time = t.get24();
    return start <= last ? start <= time && time <= last : start <= time || time <= last;
}

ATimecode ATimecodeRange::clip_to_range(ATimecode const &t) const
{
    if (!nonzero_range())
        return {};
    if (t < get_start())
        return get_start();
    ATimecode const last = get_last();
    return t <= last ? t : last;
}

ATimecode ATimecodeRange::clip_to_range24(ATimecode const &t) const
{
    if (!nonzero_range())
        return {};
    if (contains24(t))
        return t;
    ATimecode const start = get_start24();
    ATimecode const last = get_last();
    return sub24(start, t) <= sub24(t, last) ? start : last;
}

} // namespace Corvane
