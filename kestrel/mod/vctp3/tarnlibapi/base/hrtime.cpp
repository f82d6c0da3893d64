// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/base/hrtime.h"

#include "kestrel/mod/vctp3/tarnlibapi/base/aassert.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/clock.h"

#include <climits>
#include <cstdio>

namespace {

/// Ticks in a second, read with the first time that is made and kept.
long long counter_frequency()
{
    static long long const frequency = ACounter::frequency();
    return frequency;
}

long long limit_for(bool negative)
{
    return negative ? LLONG_MIN : LLONG_MAX;
}

long long limited_sum(long long a, long long b)
{
    long long sum = 0;
    return __builtin_add_overflow(a, b, &sum) ? limit_for(b < 0) : sum;
}

long long limited_difference(long long a, long long b)
{
    long long difference = 0;
    return __builtin_sub_overflow(a, b, &difference) ? limit_for(b > 0) : difference;
}

long long limited_product(long long a, long long b)
{
    long long product = 0;
    return __builtin_mul_overflow(a, b, &product) ? limit_for((a < 0) != (b < 0)) : product;
}

long long limited_quotient(long long a, long long b)
{
    return b == -1 ? limited_product(a, -1) : a / b;
}

/// One part of a printed time: two digits behind an earlier part, and nothing for a leading 0.
void print_part(std::string *text, bool *begun, unsigned long long value, char const *mark)
{
    if (value == 0 && !*begun)
        return;
    char digits[32];
    std::snprintf(digits, sizeof digits, *begun ? "%02llu%s" : "%llu%s", value, mark);
    *text += digits;
    *begun = true;
}

} // namespace

HRTime::HRTime()
    : HRTime(true, 0)
{
}

HRTime::HRTime(bool is_actual, long long tick_count)
    : actual(is_actual)
    , ticks(tick_count)
{
    counter_frequency();
}

HRTime HRTime::now()
{
    return HRTime(true, ACounter::ticks());
}

HRTime HRTime::useconds(long long n)
{
    // The remainder alone is multiplied before it is divided, so that large values fit.
    return seconds(n / 1000000) + seconds(n % 1000000) / 1000000;
}

HRTime HRTime::mseconds(long long n)
{
    return useconds(limited_product(n, 1000));
}

HRTime HRTime::seconds(long long n)
{
    return HRTime(false, limited_product(counter_frequency(), n));
}

HRTime HRTime::minutes(long long n)
{
    return seconds(limited_product(n, 60));
}

HRTime HRTime::hours(long long n)
{
    return seconds(limited_product(n, 60 * 60));
}

HRTime HRTime::days(long long n)
{
    return seconds(limited_product(n, 24 * 60 * 60));
}

HRTime const &HRTime::badtime()
{
    static HRTime const bad;
    return bad;
}

bool HRTime::is_badtime() const
{
    return actual && ticks == 0;
}

HRTime HRTime::operator+(HRTime const &other) const
{
    if (is_badtime() || other.is_badtime() || (actual && other.actual))
        return badtime();
    return HRTime(actual || other.actual, limited_sum(ticks, other.ticks));
}

HRTime HRTime::operator-(HRTime const &other) const
{
    if (is_badtime() || other.is_badtime() || (!actual && other.actual))
        return badtime();
    return HRTime(actual && !other.actual, limited_difference(ticks, other.ticks));
}

HRTime HRTime::operator*(long long factor) const
{
    return actual ? badtime() : HRTime(false, limited_product(ticks, factor));
}

HRTime HRTime::operator/(long long divisor) const
{
    if (actual || !A_ASSERT(divisor != 0))
        return badtime();
    return HRTime(false, limited_quotient(ticks, divisor));
}

long long HRTime::operator/(HRTime const &other) const
{
    if (actual || other.actual || !A_ASSERT(other.ticks != 0))
        return 0;
    return limited_quotient(ticks, other.ticks);
}

bool HRTime::operator<(HRTime const &other) const
{
    if (is_badtime() || other.is_badtime())
        return is_badtime() && !other.is_badtime();
    if (!comparable(other))
        return is_duration();
    return ticks < other.ticks;
}

bool HRTime::operator==(HRTime const &other) const
{
    if (is_badtime() || other.is_badtime())
        return is_badtime() && other.is_badtime();
    return comparable(other) && ticks == other.ticks;
}

bool HRTime::comparable(HRTime const &other) const
{
    return actual ? A_ASSERT(other.is_actual_time()) : A_ASSERT(other.is_duration());
}

AString HRTime::to_astring() const
{
    return AString::from_latin1(to_string().c_str());
}

std::string HRTime::to_string() const
{
    if (is_badtime())
        return "<bad time>";
    if (counter_frequency() == 0)
        return "<hr time not initialized>";

    auto const frequency = static_cast<unsigned long long>(counter_frequency());
    auto const whole = static_cast<unsigned long long>(ticks);
    unsigned long long const magnitude = ticks < 0 ? 0 - whole : whole;
    unsigned long long const total_seconds = magnitude / frequency;
    unsigned long long const milliseconds = magnitude % frequency * 1000 / frequency;

    std::string text(ticks < 0 ? "-" : "");
    bool begun = false;
    print_part(&text, &begun, total_seconds / 86400, "+");
    print_part(&text, &begun, total_seconds / 3600 % 24, ":");
    print_part(&text, &begun, total_seconds / 60 % 60, ":");
    print_part(&text, &begun, total_seconds % 60, "");
    if (!begun)
        text += "0";
    char fraction[32];
    std::snprintf(fraction, sizeof fraction, ".%03llu", milliseconds);
    return text + fraction;
}
