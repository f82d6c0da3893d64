// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/acompare.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/astring.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/tarn_export.h"

#include <string>

/// The older timecode, kept for applications: a count of fields with a rate of its own. Nothing
/// else here uses it; `Corvane::ATimecode` is the one for all that is new.
///
/// What a user will meet:
/// - A frame is two fields at every rate.
/// - 48 Hz has 48 fields a second but the day of 50 Hz, and its components are worked out by 50. 24
///   Hz has the day of 25 Hz, but its components know the right one.
/// - Dropframe at 29.97 Hz has the offset of 59.94 Hz, so that the minutes 1 to 9 of each ten begin
///   at frame 2 and some fields read as second 60.
/// - Two values of different rates are never equal, and an undefined one is less than all others.
///
/// Thread: a value without a lock. Reading fills the components, so even for reading one object
/// belongs to one thread at a time.
class TARN_EXPORT Timecode
{
public:
    enum class Rate : int
    {
        v60,
        v59_94,
        v50,
        v48,
        v30,
        v29_97,
        v25,
        v24
    };

    /// Undefined, at 59.94 Hz.
    Timecode() = default;
    /// Dropframe wherever the rate has it. A rate that does not exist is an assertion and gives the
    /// undefined timecode.
    Timecode(Rate rate, unsigned int nfields);
    /// \a dropframe counts only at 59.94 and 29.97 Hz.
    Timecode(Rate rate, bool dropframe, unsigned int nfields);
    /// \name From components, as by `to_fields`
    /// Dropframe and rate as above.
    /// @{
    Timecode(Rate rate, unsigned int hours, unsigned int minutes, unsigned int seconds,
        unsigned int frames, bool f2);
    Timecode(Rate rate, bool dropframe, unsigned int hours, unsigned int minutes,
        unsigned int seconds, unsigned int frames, bool f2);
    /// @}

    /// \name How many fields a unit has
    /// \a dropframe counts only at 59.94 and 29.97 Hz. A rate that does not exist is an assertion
    /// and gives the figure of 59.94 Hz with dropframe.
    /// @{
    static unsigned int fields_per_second(Rate rate, bool dropframe);
    static unsigned int fields_per_minute(Rate rate, bool dropframe);
    static unsigned int fields_per_10minutes(Rate rate, bool dropframe);
    static unsigned int fields_per_hour(Rate rate, bool dropframe);
    static unsigned int fields_per_day(Rate rate, bool dropframe);
    /// @}
    /// The count of a timecode within a day.
    static unsigned int to_fields(Rate rate, bool dropframe, bool f2, unsigned int hours,
        unsigned int minutes, unsigned int seconds, unsigned int frames);

    bool is_defined() const { return defined; }
    Rate get_rate() const { return rate; }
    bool get_dropframe() const { return dropframe; }
    unsigned int get_nfields() const { return nfields; }
    /// \name Components; 0 and the first field while undefined
    /// @{
    unsigned int get_days() const { return parts().days; }
    unsigned int get_hours() const { return parts().hours; }
    unsigned int get_minutes() const { return parts().minutes; }
    unsigned int get_seconds() const { return parts().seconds; }
    unsigned int get_frames() const { return parts().frames; }
    bool get_f2() const { return parts().f2; }
    /// @}

    /// Without effect while undefined.
    void set_nfields(unsigned int count);
    void set_undefined() { *this = Timecode(); }
    /// Takes the days off, by `fields_per_day`.
    void wrap24();
    /// The components are worked out anew when one is read next.
    void cache_invalidate() { cache_valid = false; }

    /// \name Arithmetic
    /// Undefined with an undefined side. The rate is that of the left side, and counts are never
    /// converted. What passes 32 bits wraps.
    /// @{
    Timecode &operator+=(Timecode const &x);
    Timecode &operator+=(unsigned int x);
    Timecode &operator++() { return *this += 1u; }
    Timecode operator++(int);
    friend Timecode operator+(Timecode a, Timecode const &b) { return a += b; }
    friend Timecode operator+(Timecode a, unsigned int b) { return a += b; }
    /// Without \a wrap a count below 0 wraps at 32 bits. With it the count first comes into the
    /// day, and what would fall below 0 goes on from the end of the day.
    void subtract(unsigned int n, bool wrap);
    void subtract(Timecode const &x, bool wrap);
    /// @}

    /// By whether they are defined, then by rate, then by count.
    static int compare(Timecode const &a, Timecode const &b);
    friend bool operator==(Timecode const &a, Timecode const &b) { return compare(a, b) == 0; }
    friend bool operator<(Timecode const &a, Timecode const &b) { return compare(a, b) < 0; }
    friend bool operator<=(Timecode const &a, Timecode const &b) { return compare(a, b) <= 0; }
    friend bool operator>(Timecode const &a, Timecode const &b) { return compare(a, b) > 0; }
    friend bool operator>=(Timecode const &a, Timecode const &b) { return compare(a, b) >= 0; }

    /// Frames, seconds, minutes, hours and days, from the right: \a parts of them, and all that are
    /// not 0, as `Corvane::ATimecode::toString` prints them. Empty if \a parts is 0 and so are all
    /// components. Undefined is an assertion and gives the empty text.
    AString to_astring(unsigned int parts) const;
    std::string to_string(unsigned int parts) const { return to_astring(parts).to_string(); }

private:
    struct Parts
    {
        unsigned int days = 0;
        unsigned int hours = 0;
        unsigned int minutes = 0;
        unsigned int seconds = 0;
        unsigned int frames = 0;
        bool f2 = false;
    };

    Parts const &parts() const
    {
        if (!cache_valid)
            cache_validate();
        return cache;
    }
    void cache_validate() const;
    void cache_validate_dropframe() const;
    /// The tail of all rates whose seconds are \a n whole ones.
    void cache_validate_inthz(unsigned int n) const;
    void cache_fields(unsigned int fields_of_second) const;

    bool defined = false;
    bool dropframe = false;
    mutable bool cache_valid = false;
    Rate rate = Rate::v59_94;
    unsigned int nfields = 0;
    mutable Parts cache; // of the count, while cache_valid
};
