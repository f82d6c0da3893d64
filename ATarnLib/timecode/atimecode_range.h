// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ATarnLib/timecode/atimecode.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/tarn_export.h"

namespace Corvane {

/// A start and how many fields come from there. It is its own start: what is inherited is about
/// that, comparison too.
/// Thread: as `ATimecode`.
class TARN_EXPORT ATimecodeRange : public ATimecode
{
public:
    ATimecodeRange() = default;
    ATimecodeRange(ATimecode const &start, unsigned int fields)
        : ATimecode(start)
        , duration(fields)
    {
    }
    /// From \a first up to, and without, \a next; of no fields if \a next is not later or one is
    /// undefined.
    static ATimecodeRange in_out(ATimecode const &first, ATimecode const &next);
    /// Of no fields if \a duration_timecode is undefined.
    static ATimecodeRange start_duration(
        ATimecode const &start, ATimecode const &duration_timecode);

    void set_start(ATimecode const &start) { ATimecode::operator=(start); }
    void set_duration(unsigned int fields) { duration = fields; }
    /// Raises the duration to \a fields if it is lower.
    void set_min_duration(unsigned int fields)
    {
        if (duration < fields)
            duration = fields;
    }

    ATimecode get_start() const { return *this; }
    /// In fields.
    unsigned int get_duration() const { return duration; }
    /// The last field inside; undefined in a range of no fields.
    ATimecode get_last() const;
    /// The first field beyond.
    ATimecode get_next() const { return get_start() + duration; }
    /// \name The same within the day
    /// @{
    ATimecode get_start24() const { return get24(); }
    ATimecode get_last24() const { return get_last().get24(); }
    ATimecode get_next24() const { return get_next().get24(); }
    /// @}

    /// Whether it is defined and has a field.
    bool nonzero_range() const { return is_defined() && duration > 0; }
    bool contains(ATimecode const &t) const;
    /// By the time of day, in a range that may cross midnight. A range of a day or more contains
    /// all that is defined.
    bool contains24(ATimecode const &t) const;
    /// \a t, or the end of the range that it is beyond; undefined unless `nonzero_range`.
    ATimecode clip_to_range(ATimecode const &t) const;
    /// \a t if `contains24`, else the end that is nearer around the clock, the start if both are as
    /// near: `get_start24` or `get_last`. Of a time beyond the day the distance from the last
    /// counts with its days, and an undefined one gives the start. Undefined unless
    /// `nonzero_range`.
    ATimecode clip_to_range24(ATimecode const &t) const;

private:
    unsigned int duration = 0;
};

} // namespace Corvane
