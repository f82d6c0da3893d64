// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/astring.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/tarn_export.h"

#include <string>

/// A point in time or a duration, in ticks of the high-resolution counter. A point at tick 0 is the
/// bad time: the value of what was never set, and of sums that have no meaning. Every operation
/// with a bad time gives a bad time. Results that pass the 64 bits stop at their end.
/// Thread: a value without a lock.
class TARN_EXPORT HRTime
{
public:
    /// The bad time.
    HRTime();
    /// A point in time if \a actual, else a duration.
    HRTime(bool actual, long long ticks);
    HRTime(HRTime const &other) = default;
    HRTime &operator=(HRTime const &other) = default;

    static HRTime now();
    /// Durations, cut off to whole ticks.
    static HRTime useconds(long long n);
    static HRTime mseconds(long long n);
    static HRTime seconds(long long n);
    static HRTime minutes(long long n);
    static HRTime hours(long long n);
    static HRTime days(long long n);
    /// The one object that stands for the bad time, for references that need one.
    static HRTime const &badtime();

    /// True for the bad time too.
    bool is_actual_time() const { return actual; }
    bool is_duration() const { return !actual; }
    bool is_badtime() const;

    /// Two points have a difference and no sum; a duration minus a point is bad.
    HRTime operator+(HRTime const &other) const;
    HRTime operator-(HRTime const &other) const;
    HRTime &operator+=(HRTime const &other) { return *this = *this + other; }
    HRTime &operator-=(HRTime const &other) { return *this = *this - other; }
    /// A scaled duration; of a point, the bad time.
    HRTime operator*(long long factor) const;
    /// The same, cut off towards 0. A \a divisor of 0 is an assertion and gives the bad time.
    HRTime operator/(long long divisor) const;
    HRTime &operator*=(long long factor) { return *this = *this * factor; }
    HRTime &operator/=(long long divisor) { return *this = *this / divisor; }
    /// How often the duration \a other fits into this one, cut off towards 0. Gives 0 unless both
    /// are durations; a duration of 0 to divide by is an assertion and gives 0.
    long long operator/(HRTime const &other) const;

    /// The bad time is before everything. A point and a duration do not compare: that is an
    /// assertion, and the duration counts as the lesser.
    bool operator<(HRTime const &other) const;
    bool operator>(HRTime const &other) const { return other < *this; }
    bool operator<=(HRTime const &other) const { return !(other < *this); }
    bool operator>=(HRTime const &other) const { return !(*this < other); }
    /// All bad times are equal. A point and a duration never are; to ask is an assertion.
    bool operator==(HRTime const &other) const;

    /// Days, hours, minutes, seconds and milliseconds, such as "1.500", "1:30.000" or
    /// "1+01:00:00.000"; "<bad time>"; "<hr time not initialized>" when there is no counter.
    AString to_astring() const;
    std::string to_string() const;

private:
    bool comparable(HRTime const &other) const;

    bool actual;
    long long ticks;
};
