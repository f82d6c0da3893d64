// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ATarnLib/timecode/timecode_rates.h"
#include "ATarnLib/timecode/video_standard.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/acompare.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/astring.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/tarn_export.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/records.h"

#include <QString>
#include <span>

namespace Corvane {

/// A count of fields, from midnight or from the start of a clip, and the rate that gives it
/// meaning. Hours, minutes, seconds and frames are worked out from the count when one of them is
/// read, once between changes. Arithmetic touches the count alone, allocates nothing and never
/// converts between rates. A default value is undefined, and so is each that is made from an
/// invalid frequency or flag.
///
/// What a user will meet:
/// - How a count breaks down follows the flag alone. Where a constructor is given dropframe at a
///   frequency that does not have it, the flag stays, minutes are counted as if fields were left
///   out, and the text has the separators of non-dropframe.
/// - The wire's timecode is such a constructor: its dropframe part is kept as passed.
/// - At 29.97 Hz with dropframe the minutes 0 to 8 of each ten end two fields late, as the offset
///   is that of 59.94 Hz: fields 1800 and 1801 read as second 60 of minute 0, and 1802 reads as
///   minute 1, second 0, frame 4. The tenth ends in time.
/// - `fromString` takes a frame as two fields at every frequency, so from 30 Hz down it does not
///   read what `toString` wrote.
/// - Comparison looks at the count alone; an undefined timecode is greater than all others.
///
/// Thread: a value without a lock. Reading fills the breakdown, so even for reading one object
/// belongs to one thread at a time.
class TARN_EXPORT ATimecode
{
public:
    ATimecode() = default;
    /// \name From a count
    /// \a nfields_scaled counts fields of the source, of which there are \a ssm_speed to a field of
    /// timecode. A speed of 0 is an assertion and gives the undefined timecode.
    /// @{
    ATimecode(VideoFrequency frequency, unsigned int nfields_scaled, unsigned int ssm_speed);
    ATimecode(VideoFrequency frequency, DropframeFlag flag, unsigned int nfields_scaled,
        unsigned int ssm_speed);
    /// @}
    /// \name From components
    /// \a f2 has no effect where a field is a frame. In dropframe the frames 0 and 1 of a minute
    /// that leaves them out are the last fields of the minute before.
    /// @{
    ATimecode(VideoFrequency frequency, unsigned int hours, unsigned int minutes,
        unsigned int seconds, unsigned int frames, bool f2);
    ATimecode(VideoFrequency frequency, DropframeFlag flag, unsigned int hours,
        unsigned int minutes, unsigned int seconds, unsigned int frames, bool f2);
    /// @}
    /// \name From text, as by `fromString`
    /// @{
    ATimecode(VideoFrequency frequency, AString const &text);
    ATimecode(VideoFrequency frequency, DropframeFlag flag, AString const &text);
    /// @}
    /// \name From a timecode of a clip
    /// The count is taken unchanged, the flag only at a frequency that has dropframe. Undefined
    /// without a position.
    /// @{
    ATimecode(VideoFrequency frequency, VCTP3::SmallTimecode const &wire, unsigned int ssm_speed);
    ATimecode(VCTP3::VideoRate rate, VCTP3::SmallTimecode const &wire, unsigned int ssm_speed);
    ATimecode(
        VCTP3::VideoStandard standard, VCTP3::SmallTimecode const &wire, unsigned int ssm_speed);
    /// @}
    /// Undefined unless \a wire is valid and has a standard and a position. The position counts
    /// fields of the source; a speed of 0 on the wire gives the undefined timecode, and so does a
    /// \a default_ssm_speed of 0 that is needed, after an assertion.
    ATimecode(VCTP3::Timecode const &wire, unsigned int default_ssm_speed);

    /// \name Setting all
    /// The count is taken unchanged, whatever the speed.
    /// @{
    void set(VideoFrequency frequency, unsigned int nfields, unsigned int ssm_speed);
    void set(
        VideoFrequency frequency, DropframeFlag flag, unsigned int nfields, unsigned int ssm_speed);
    void set_undefined() { *this = ATimecode(); }
    /// @}
    void set_nfields(unsigned int nfields)
    {
        count = nfields;
        cache_valid = !defined;
    }
    void set_ssm_speed(unsigned int ssm_speed) { speed = ssm_speed; }
    /// \name Changing the flag
    /// Without effect at a frequency that has no dropframe, and for an invalid flag.
    /// @{
    void set_df() { set_df(DropframeFlag::df); }
    void set_ndf() { set_df(DropframeFlag::ndf); }
    void set_df(DropframeFlag flag);
    /// @}
    /// \name Going to a field of the same frame
    /// Where a field is a frame, `force_f2` goes one further each time, and components that were
    /// read before stay as they are.
    /// @{
    void force_f1();
    void force_f2();
    /// To the second field if \a f2.
    void force_field(bool f2) { f2 ? force_f2() : force_f1(); }
    /// @}

    bool is_defined() const { return defined; }
    bool is_undefined() const { return !defined; }
    bool is_df() const { return dfflag == DropframeFlag::df; }
    bool is_ndf() const { return dfflag == DropframeFlag::ndf; }
    VideoFrequency get_std() const { return field_rate; }
    DropframeFlag get_df() const { return dfflag; }
    unsigned int get_nfields() const { return count; }
    /// How many fields of super slow motion there are to a field; 1 for normal material.
    unsigned int get_ssm_speed() const { return speed; }
    /// \name Components; 0 while undefined
    /// @{
    unsigned int get_days() const { return parts().days; }
    unsigned int get_hours() const { return parts().hours; }
    unsigned int get_minutes() const { return parts().minutes; }
    unsigned int get_seconds() const { return parts().seconds; }
    unsigned int get_frames() const { return parts().frames; }
    /// @}
    /// Whether this is the second field of its frame; needs no breakdown.
    bool get_f2() const
    {
        // What lasts longer than a frame has an even number of fields.
        return (count & 1) != 0 && defined && field_rate < VideoFrequency::v30;
    }
    /// \name As by the functions of the same name; those of no frequency while undefined
    /// @{
    unsigned int get_fields_per_second() const;
    unsigned int get_fields_per_minute() const;
    unsigned int get_fields_per_10minutes() const;
    unsigned int get_fields_per_hour() const;
    unsigned int get_fields_per_day() const;
    /// @}

    /// \name Arithmetic
    /// Undefined with an undefined side. Frequency, flag and speed are those of the left side.
    /// Subtracting stops at 0; adding wraps at 32 bits.
    /// @{
    ATimecode &operator+=(ATimecode const &x) { return add(x, false); }
    ATimecode &operator+=(unsigned int x) { return add(x, false); }
    ATimecode &operator-=(ATimecode const &x) { return subtract(x, false); }
    ATimecode &operator-=(unsigned int x) { return subtract(x, false); }
    ATimecode &operator++() { return add(1u, false); }
    ATimecode operator++(int);
    friend ATimecode operator+(ATimecode a, ATimecode const &b) { return a += b; }
    friend ATimecode operator+(ATimecode a, unsigned int b) { return a += b; }
    friend ATimecode operator-(ATimecode a, ATimecode const &b) { return a -= b; }
    friend ATimecode operator-(ATimecode a, unsigned int b) { return a -= b; }
    /// @}
    /// \name Arithmetic around the clock
    /// With \a wrap a sum comes back into the day, and what would fall below 0 goes on from the end
    /// of the day.
    /// @{
    ATimecode &add(ATimecode const &x, bool wrap);
    ATimecode &add(unsigned int x, bool wrap);
    ATimecode &subtract(ATimecode const &x, bool wrap);
    ATimecode &subtract(unsigned int x, bool wrap);
    ATimecode &add24(ATimecode const &x) { return add(x, true); }
    ATimecode &add24(unsigned int x) { return add(x, true); }
    ATimecode &sub24(ATimecode const &x) { return subtract(x, true); }
    ATimecode &sub24(unsigned int x) { return subtract(x, true); }
    static ATimecode add24(ATimecode a, ATimecode const &b) { return a.add24(b); }
    static ATimecode add24(ATimecode a, unsigned int b) { return a.add24(b); }
    static ATimecode sub24(ATimecode a, ATimecode const &b) { return a.sub24(b); }
    static ATimecode sub24(ATimecode a, unsigned int b) { return a.sub24(b); }
    /// Takes the days off.
    ATimecode &wrap24();
    ATimecode get24() const;
    /// One day, at a speed of 1.
    ATimecode t24() const;
    /// @}

    /// -1, 0 or 1 by the count. Undefined is greater than all others and equal to undefined.
    int cmp(ATimecode const &other) const
    {
        if (!defined || !other.defined)
            return ACompare(!defined, !other.defined);
        return ACompare(count, other.count);
    }
    static int cmp(ATimecode const &a, ATimecode const &b) { return a.cmp(b); }
    /// The same the shorter way along the clock, so that 23:59 is before 00:01. Half a day apart,
    /// this one counts as the later.
    int cmp24(ATimecode const &other) const;
    static int cmp24(ATimecode const &a, ATimecode const &b) { return a.cmp24(b); }
    friend bool operator==(ATimecode const &a, ATimecode const &b) { return a.cmp(b) == 0; }
    friend bool operator<(ATimecode const &a, ATimecode const &b) { return a.cmp(b) < 0; }
    friend bool operator<=(ATimecode const &a, ATimecode const &b) { return a.cmp(b) <= 0; }
    friend bool operator>(ATimecode const &a, ATimecode const &b) { return a.cmp(b) > 0; }
    friend bool operator>=(ATimecode const &a, ATimecode const &b) { return a.cmp(b) >= 0; }
    /// Whether it lies from \a start on and before \a start + \a duration; all must be defined.
    bool is_inrange(ATimecode const &start, ATimecode const &duration) const;
    /// The same with a range that may cross midnight. False for a timecode beyond the first day.
    /// Both arguments lose their days, so that a duration of a day is one of 0.
    bool is_inrange24(ATimecode start, ATimecode duration) const;

    /// Frames, seconds, minutes, hours and days, from the right: \a parts of them, but at least one
    /// and all that are not 0. Days are followed by "+". The other separators tell flag and field:
    /// "," and ";" for the first and second field in dropframe, "." and ":" in non-dropframe.
    /// "(invalid)" while undefined. The usual call is `toString(4)`: "01:02:03:04".
    AString toString(unsigned int parts) const;
    /// The speed is not written. Without \a resolution at this frequency the standard goes out as
    /// 1080_59_94i, after an assertion. Empty while undefined.
    VCTP3::Timecode to_vctp3(VideoResolution resolution) const;
    /// In the resolution of \a standard; empty where it has none.
    VCTP3::Timecode to_vctp3(VCTP3::VideoStandard standard) const;

    /// \name From bytes of tape machines
    /// Dropframe counts only at a frequency that has it. Bytes are numbers as they stand, not
    /// decimal digits in pairs.
    /// @{
    /// Hours, minutes, seconds, frames; flags in the highest bits.
    static ATimecode from_sony(
        VideoFrequency frequency, std::span<unsigned char const, 4> const &bytes);
    /// A decimal digit in the low half of each byte, units before tens, from hours to frames; each
    /// pair makes a byte of the form above. Undefined if all bits are set.
    static ATimecode from_tc64(
        VideoFrequency frequency, std::span<unsigned char const, 8> const &bytes);
    /// @}

private:
    struct Parts
    {
        unsigned int days = 0;
        unsigned char hours = 0;
        unsigned char minutes = 0;
        unsigned char seconds = 0;
        unsigned char frames = 0;
    };
    using BreakDown = void (*)(unsigned int count, Parts *parts);
    struct BreakDowns;

    Parts const &parts() const
    {
        if (!cache_valid) {
            cache_valid = true;
            break_down(count, &cache);
        }
        return cache;
    }
    void take_flag(DropframeFlag flag);
    void make(
        VideoFrequency frequency, DropframeFlag flag, unsigned int nfields, unsigned int ssm_speed);

    bool defined = false;
    mutable bool cache_valid = true; // always while undefined
    VideoFrequency field_rate = VideoFrequency::invalid;
    DropframeFlag dfflag = DropframeFlag::invalid;
    unsigned int count = 0;
    unsigned int speed = 1;
    mutable Parts cache; // of the count, while cache_valid
    BreakDown break_down = nullptr; // by frequency and flag; null while undefined
};

inline AString toString(ATimecode const &timecode, unsigned int parts)
{
    return timecode.toString(parts);
}

/// \name Reading a timecode
/// Pieces between ",", ".", ":" and ";", taken from the end: frames, seconds, minutes, hours.
/// Pieces that lack are 0, more are ignored, and so is all in a piece that is no digit: "1+01" is
/// 101. A number of more than 32 bits is 0. It is the second field if all separators are ":" or all
/// are ";". An invalid \a flag is told by the separators, as `ATimecode::toString` writes them, and
/// else is the default of the frequency; without a flag it is the default. Frame numbers that
/// dropframe leaves out are raised to 2. A frame is two fields, also where a field is a frame.
/// Undefined only for an invalid frequency.
/// @{
TARN_EXPORT ATimecode fromString(AString const &text, VideoFrequency frequency);
TARN_EXPORT ATimecode fromString(AString const &text, VideoFrequency frequency, DropframeFlag flag);
TARN_EXPORT ATimecode fromString(QString const &text, VideoFrequency frequency, DropframeFlag flag);
TARN_EXPORT ATimecode fromString(AString const &text, VideoStandard standard);
TARN_EXPORT ATimecode fromString(AString const &text, VideoStandard standard, DropframeFlag flag);
/// @}

} // namespace Corvane
