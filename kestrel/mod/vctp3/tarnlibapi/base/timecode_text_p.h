// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/astring.h"

#include <charconv>

/// The components of a timecode as text, the highest first.
struct TimecodeText
{
    unsigned int days;
    unsigned int hours;
    unsigned int minutes;
    unsigned int seconds;
    unsigned int frames;

    bool all_zero() const { return (days | hours | minutes | seconds | frames) == 0; }

    /// \a parts components, but at least one and all that are not 0. Below the days, each has two
    /// digits.
    AString print(unsigned int parts, char separator) const
    {
        unsigned int const values[] = {days, hours, minutes, seconds, frames};
        unsigned int at = first_shown(parts);
        char text[24];
        char *end = text;
        if (at == 0) {
            end = std::to_chars(text, text + sizeof text, days).ptr;
            *end++ = '+';
            at = 1;
        }
        end = put_two_digits(end, values[at]);
        while (++at < 5) {
            *end++ = separator;
            end = put_two_digits(end, values[at]);
        }
        return AString::from_latin1(text, static_cast<unsigned long long>(end - text));
    }

    static char separator(bool dropframe, bool f2)
    {
        return dropframe ? (f2 ? ';' : ',') : (f2 ? ':' : '.');
    }

private:
    /// Counted from the days.
    unsigned int first_shown(unsigned int parts) const
    {
        unsigned int const highest = days != 0 ? 0
            : hours != 0                       ? 1
            : minutes != 0                     ? 2
            : seconds != 0                     ? 3
                                               : 4;
        unsigned int const asked = parts >= 5 ? 0 : parts == 0 ? 4 : 5 - parts;
        return asked < highest ? asked : highest;
    }
    static char *put_two_digits(char *to, unsigned int value)
    {
        *to++ = static_cast<char>('0' + value / 10);
        *to++ = static_cast<char>('0' + value % 10);
        return to;
    }
};
