// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/base/timecode.h"

#include "kestrel/mod/vctp3/tarnlibapi/base/aassert.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/timecode_text_p.h"

namespace {

struct RateRow
{
    Timecode::Rate rate;
    bool dropframe;
    unsigned int second;
    unsigned int minute;
    unsigned int ten_minutes;
    unsigned int hour;
    unsigned int day;
    unsigned int shown_second; // what a second has in a breakdown
};

using Rate = Timecode::Rate;

// The days of 48 and 24 Hz are those of 50 and 25: this table is what applications know.
constexpr RateRow rates[] = {
    {Rate::v60, false, 60, 3600, 36000, 216000, 5184000, 60},
    {Rate::v59_94, false, 60, 3600, 36000, 216000, 5184000, 60},
    {Rate::v59_94, true, 60, 3596, 35964, 215784, 5178816, 60},
    {Rate::v50, false, 50, 3000, 30000, 180000, 4320000, 50},
    {Rate::v48, false, 48, 2880, 28800, 172800, 4320000, 50},
    {Rate::v30, false, 30, 1800, 18000, 108000, 2592000, 30},
    {Rate::v29_97, false, 30, 1800, 18000, 108000, 2592000, 30},
    {Rate::v29_97, true, 30, 1798, 17982, 107892, 2589408, 30},
    {Rate::v25, false, 25, 1500, 15000, 90000, 2160000, 25},
    {Rate::v24, false, 24, 1440, 14400, 86400, 2160000, 24},
};

bool exists(Rate rate)
{
    return rate >= Rate::v60 && rate <= Rate::v24;
}

bool has_dropframe(Rate rate)
{
    return rate == Rate::v59_94 || rate == Rate::v29_97;
}

RateRow const &row_of(Rate rate, bool dropframe)
{
    if (!A_ASSERT(exists(rate)))
        return row_of(Rate::v59_94, true);
    RateRow const *row = rates;
    while (row->rate != rate || row->dropframe != (dropframe && has_dropframe(rate)))
        ++row;
    return *row;
}

} // namespace

Timecode::Timecode(Rate new_rate, unsigned int count)
    : Timecode(new_rate, true, count)
{
}

Timecode::Timecode(Rate new_rate, bool new_dropframe, unsigned int count)
{
    if (!A_ASSERT(exists(new_rate)))
        return;
    defined = true;
    rate = new_rate;
    dropframe = new_dropframe && has_dropframe(new_rate);
    nfields = count;
}

Timecode::Timecode(Rate new_rate, unsigned int hours, unsigned int minutes, unsigned int seconds,
    unsigned int frames, bool f2)
    : Timecode(new_rate, true, hours, minutes, seconds, frames, f2)
{
}

Timecode::Timecode(Rate new_rate, bool new_dropframe, unsigned int hours, unsigned int minutes,
    unsigned int seconds, unsigned int frames, bool f2)
    : Timecode(new_rate, new_dropframe, 0u)
{
    if (defined)
        nfields = to_fields(rate, dropframe, f2, hours, minutes, seconds, frames);
}

unsigned int Timecode::fields_per_second(Rate rate, bool dropframe)
{
    return row_of(rate, dropframe).second;
}

unsigned int Timecode::fields_per_minute(Rate rate, bool dropframe)
{
    return row_of(rate, dropframe).minute;
}

unsigned int Timecode::fields_per_10minutes(Rate rate, bool dropframe)
{
    return row_of(rate, dropframe).ten_minutes;
}

unsigned int Timecode::fields_per_hour(Rate rate, bool dropframe)
{
    return row_of(rate, dropframe).hour;
}

unsigned int Timecode::fields_per_day(Rate rate, bool dropframe)
{
    return row_of(rate, dropframe).day;
}

unsigned int Timecode::to_fields(Rate rate, bool dropframe, bool f2, unsigned int hours,
    unsigned int minutes, unsigned int seconds, unsigned int frames)
{
    RateRow const &fields = row_of(rate, dropframe);
    return fields.minute * (minutes % 10) + fields.ten_minutes * (minutes / 10)
        + fields.hour * hours + fields.second * seconds + 2 * frames + (f2 ? 1 : 0);
}

void Timecode::cache_validate() const
{
    cache = Parts();
    cache_valid = true;
    if (!defined)
        return;
    if (dropframe) {
        cache_validate_dropframe();
        return;
    }
    unsigned int const second = row_of(rate, dropframe).shown_second;
    cache_fields(nfields % second);
    cache_validate_inthz(nfields / second);
}

void Timecode::cache_validate_dropframe() const
{
    RateRow const &fields = row_of(rate, dropframe);
    unsigned int const hours = nfields / fields.hour;
    unsigned int const in_hour = nfields % fields.hour;
    unsigned int rest = in_hour % fields.ten_minutes;
    cache.days = hours / 24;
    cache.hours = hours % 24;
    cache.minutes = in_hour / fields.ten_minutes * 10;
    unsigned int const first_minute = 60 * fields.second;
    if (rest >= first_minute) {
        // 4 at 29.97 Hz too, where a minute leaves out 2.
        unsigned int const more = (rest - first_minute) / fields.minute;
        cache.minutes += 1 + more;
        rest = rest - first_minute + 4 - fields.minute * more;
    }
    cache.seconds = rest / fields.second;
    cache_fields(rest % fields.second);
}

void Timecode::cache_validate_inthz(unsigned int n) const
{
    cache.seconds = n % 60;
    cache.minutes = n / 60 % 60;
    cache.hours = n / 3600 % 24;
    cache.days = n / 86400;
}

void Timecode::cache_fields(unsigned int fields_of_second) const
{
    cache.frames = fields_of_second / 2;
    cache.f2 = fields_of_second % 2 != 0;
}

void Timecode::set_nfields(unsigned int count)
{
    if (!defined || count == nfields)
        return;
    nfields = count;
    cache_invalidate();
}

void Timecode::wrap24()
{
    if (defined)
        set_nfields(nfields % fields_per_day(rate, dropframe));
}

Timecode &Timecode::operator+=(Timecode const &x)
{
    if (!x.defined)
        set_undefined();
    return *this += x.nfields;
}

Timecode &Timecode::operator+=(unsigned int x)
{
    set_nfields(nfields + x);
    return *this;
}

Timecode Timecode::operator++(int)
{
    Timecode const before = *this;
    ++*this;
    return before;
}

void Timecode::subtract(unsigned int n, bool wrap)
{
    if (!defined)
        return;
    unsigned int count = nfields;
    if (wrap) {
        unsigned int const day = fields_per_day(rate, dropframe);
        count %= day;
        if (n > count)
            n %= day;
        if (n > count)
            count += day;
    }
    set_nfields(count - n);
}

void Timecode::subtract(Timecode const &x, bool wrap)
{
    if (!x.defined)
        set_undefined();
    subtract(x.nfields, wrap);
}

int Timecode::compare(Timecode const &a, Timecode const &b)
{
    if (int const by_defined = ACompare(a.defined, b.defined))
        return by_defined;
    if (int const by_rate = ACompare(a.rate, b.rate))
        return by_rate;
    return ACompare(a.nfields, b.nfields);
}

AString Timecode::to_astring(unsigned int shown) const
{
    if (!A_ASSERT(defined))
        return {};
    Parts const &now = parts();
    TimecodeText const text{now.days, now.hours, now.minutes, now.seconds, now.frames};
    if (shown == 0 && text.all_zero())
        return {};
    return text.print(shown, TimecodeText::separator(dropframe, now.f2));
}
