// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/timecode/atimecode.h"

#include "ATarnLib/timecode/timecode_rates_p.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/aassert.h"

#include <utility>

namespace Corvane {

/// A breakdown for each frequency and flag, each with its rate as constants, since dividing by a
/// number that is not known beforehand takes several times as long.
struct ATimecode::BreakDowns
{
    template <int at>
    static void run([[maybe_unused]] unsigned int n, [[maybe_unused]] Parts *parts)
    {
        constexpr DropframeFlag flag = timecode_rate_flag(at);
        constexpr TimecodeRate rate = find_timecode_rate(timecode_rate_frequency(at), flag);
        // Without a rate there is nothing to make it of.
        if constexpr (rate.day != 0) {
            // The first minute of ten is longer by what the others leave out.
            constexpr unsigned int left_out = flag == DropframeFlag::df ? 4 : 0;
            // Ten minutes are 1/144 of a day at every rate, so that hours and days need not wait
            // for what is left of them.
            static_assert(6 * rate.ten_minutes == rate.hour && 24 * rate.hour == rate.day);
            unsigned int const tens = n / rate.ten_minutes;
            unsigned int const hours = tens / 6;
            unsigned int const days = hours / 24;
            unsigned int const in_ten = n - rate.ten_minutes * tens;
            unsigned int const minute = in_ten < left_out ? 0 : (in_ten - left_out) / rate.minute;
            unsigned int const in_minute = in_ten - rate.minute * minute;
            unsigned int const seconds = in_minute / rate.second;
            unsigned int const fields = in_minute - rate.second * seconds;
            unsigned int const frames = fields / rate.frame;
            parts->days = days;
            parts->hours = static_cast<unsigned char>(hours - 24 * days);
            parts->minutes = static_cast<unsigned char>(10 * (tens - 6 * hours) + minute);
            parts->seconds = static_cast<unsigned char>(seconds);
            parts->frames = static_cast<unsigned char>(frames);
        }
    }

    template <int... at> static constexpr auto table(std::integer_sequence<int, at...>)
    {
        struct Table
        {
            BreakDown by_index[timecode_rate_count];
        };
        return Table{{&run<at>...}};
    }
};

void ATimecode::take_flag(DropframeFlag flag)
{
    static constexpr auto table
        = BreakDowns::table(std::make_integer_sequence<int, timecode_rate_count>());
    dfflag = flag;
    break_down = table.by_index[timecode_rate_index(field_rate, flag)];
    cache_valid = false;
}

void ATimecode::make(
    VideoFrequency frequency, DropframeFlag flag, unsigned int nfields, unsigned int ssm_speed)
{
    if (!isValid(frequency) || !isValid(flag))
        return;
    defined = true;
    field_rate = frequency;
    take_flag(flag);
    count = nfields;
    speed = ssm_speed;
}

ATimecode::ATimecode(VideoFrequency frequency, unsigned int nfields_scaled, unsigned int ssm_speed)
    : ATimecode(frequency, defaultDropframeFlag(frequency), nfields_scaled, ssm_speed)
{
}

ATimecode::ATimecode(VideoFrequency frequency, DropframeFlag flag, unsigned int nfields_scaled,
    unsigned int ssm_speed)
{
    if (ssm_speed == 1)
        make(frequency, flag, nfields_scaled, 1);
    else if (A_ASSERT(ssm_speed != 0))
        make(frequency, flag, nfields_scaled / ssm_speed, ssm_speed);
}

ATimecode::ATimecode(VideoFrequency frequency, unsigned int hours, unsigned int minutes,
    unsigned int seconds, unsigned int frames, bool f2)
    : ATimecode(frequency, defaultDropframeFlag(frequency), hours, minutes, seconds, frames, f2)
{
}

ATimecode::ATimecode(VideoFrequency frequency, DropframeFlag flag, unsigned int hours,
    unsigned int minutes, unsigned int seconds, unsigned int frames, bool f2)
{
    bool const second_field = f2 && timecode_fields_per_frame(frequency) != 1;
    make(frequency, flag,
        timecode_numfields(frequency, flag, 0, hours, minutes, seconds, frames, second_field), 1);
}

void ATimecode::set(VideoFrequency frequency, unsigned int nfields, unsigned int ssm_speed)
{
    set(frequency, defaultDropframeFlag(frequency), nfields, ssm_speed);
}

void ATimecode::set(
    VideoFrequency frequency, DropframeFlag flag, unsigned int nfields, unsigned int ssm_speed)
{
    set_undefined();
    make(frequency, flag, nfields, ssm_speed);
}

void ATimecode::set_df(DropframeFlag flag)
{
    if (!hasDropframe(field_rate) || !isValid(flag))
        return;
    take_flag(flag);
}

void ATimecode::force_f1()
{
    if (get_f2())
        --count;
}

void ATimecode::force_f2()
{
    if (!get_f2())
        ++count;
}

unsigned int ATimecode::get_fields_per_second() const
{
    return timecode_fields_per_second(field_rate, dfflag);
}

unsigned int ATimecode::get_fields_per_minute() const
{
    return timecode_fields_per_minute(field_rate, dfflag);
}

unsigned int ATimecode::get_fields_per_10minutes() const
{
    return timecode_fields_per_10minutes(field_rate, dfflag);
}

unsigned int ATimecode::get_fields_per_hour() const
{
    return timecode_fields_per_hour(field_rate, dfflag);
}

unsigned int ATimecode::get_fields_per_day() const
{
    return timecode_fields_per_day(field_rate, dfflag);
}

ATimecode ATimecode::operator++(int)
{
    ATimecode const before = *this;
    ++*this;
    return before;
}

ATimecode &ATimecode::add(ATimecode const &x, bool wrap)
{
    if (defined && !x.defined)
        set_undefined();
    return add(x.count, wrap);
}

ATimecode &ATimecode::add(unsigned int x, bool wrap)
{
    if (!defined)
        return *this;
    set_nfields(count + x);
    return wrap ? wrap24() : *this;
}

ATimecode &ATimecode::subtract(ATimecode const &x, bool wrap)
{
    if (defined && !x.defined)
        set_undefined();
    return subtract(x.count, wrap);
}

ATimecode &ATimecode::subtract(unsigned int x, bool wrap)
{
    if (!defined)
        return *this;
    if (wrap && x > count) {
        unsigned int const day = get_fields_per_day();
        x %= day;
        wrap24();
        set_nfields(x > count ? count + day - x : count - x);
    } else {
        set_nfields(x > count ? 0 : count - x);
    }
    return *this;
}

ATimecode &ATimecode::wrap24()
{
    if (get_days() != 0)
        set_nfields(timecode_numfields(field_rate, dfflag, 0, cache.hours, cache.minutes,
            cache.seconds, cache.frames, get_f2()));
    return *this;
}

ATimecode ATimecode::get24() const
{
    ATimecode result = *this;
    if (defined && count >= get_fields_per_day())
        result.wrap24();
    return result;
}

ATimecode ATimecode::t24() const
{
    ATimecode result;
    result.set(field_rate, dfflag, get_fields_per_day(), 1);
    return result;
}

int ATimecode::cmp24(ATimecode const &other) const
{
    if (!defined || !other.defined)
        return cmp(other);
    unsigned int const day = get_fields_per_day();
    unsigned int const distance = (count % day + day - other.count % day) % day;
    if (distance == 0)
        return 0;
    return distance > day / 2 ? -1 : 1;
}

bool ATimecode::is_inrange(ATimecode const &start, ATimecode const &duration) const
{
    return defined && start.defined && duration.defined && start <= *this
        && *this < start + duration;
}

bool ATimecode::is_inrange24(ATimecode start, ATimecode duration) const
{
    if (!defined || count >= get_fields_per_day() || !start.defined || !duration.defined)
        return false;
    start.wrap24();
    duration.wrap24();
    ATimecode const end = start + duration;
    if (end.get_days() == 0)
        return is_inrange(start, duration);
    return *this >= start || *this < end.get24();
}

} // namespace Corvane
