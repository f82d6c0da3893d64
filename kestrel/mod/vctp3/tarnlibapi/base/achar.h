// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/tarn_export.h"

#include <string>

/// The element and string type of the `wchars` family: UTF-16 in 16-bit units on every platform.
using AWChar = char16_t;
using AWString = std::u16string;

/// One Unicode code point of 32 bits, by default 0. Any value may be held; comparison is by
/// number. The tests know the code points below 256 and treat every higher one as 0.
/// Thread: a value, for any.
class AChar
{
public:
    /// The highest value that the encoders accept.
    static constexpr char32_t max_code_point = 1114111;

    constexpr AChar() noexcept = default;
    constexpr explicit AChar(char32_t n) noexcept
        : code(n)
    {
    }
    static constexpr AChar chr(char32_t n) noexcept { return AChar(n); }
    static constexpr AChar from_latin1(unsigned char c) noexcept { return AChar(c); }
    constexpr char32_t ord() const noexcept { return code; }

    /// Blank, tab, line feed, carriage return, vertical tab and form feed; also 0, and so every
    /// code point from 256 up.
    constexpr bool is_space() const noexcept
    {
        return code == ' ' || (code >= '\t' && code <= '\r') || code == 0 || !is_latin1();
    }
    constexpr bool is_digit() const noexcept { return code >= '0' && code <= '9'; }
    /// Digits and the whole alphabet in both cases, not only up to F.
    constexpr bool is_hexdigit() const noexcept { return to_hexdigit(-1) >= 0; }
    constexpr int to_digit(int otherwise) const noexcept
    {
        return is_digit() ? static_cast<int>(code - '0') : otherwise;
    }
    /// 0 to 35: letters count from 10 in both cases.
    constexpr int to_hexdigit(int otherwise) const noexcept
    {
        if (is_digit())
            return static_cast<int>(code - '0');
        char32_t const lower = to_lower().code;
        return lower >= 'a' && lower <= 'z' ? static_cast<int>(lower - 'a') + 10 : otherwise;
    }
    /// "A" to "Z" only.
    constexpr AChar to_lower() const noexcept
    {
        return AChar(code >= 'A' && code <= 'Z' ? code + ('a' - 'A') : code);
    }
    constexpr bool is_ascii() const noexcept { return code < 128; }
    constexpr bool is_latin1() const noexcept { return code < 256; }
    constexpr unsigned char to_latin1(unsigned char replacement) const noexcept
    {
        return is_latin1() ? static_cast<unsigned char>(code) : replacement;
    }

    /// Reads one code point from the \a available units at \a p and tells how many it took.
    /// On failure: false, outputs untouched. UTF-8 fails on no units, a zero byte, an impossible
    /// lead byte, a sequence cut short or one above `max_code_point`; overlong forms of three and
    /// four bytes and surrogates are taken. UTF-16 fails on no units, 0 and unpaired surrogates.
    TARN_EXPORT static bool consume_utf8(
        char const *p, unsigned long long available, AChar *out, unsigned long long *consumed);
    TARN_EXPORT static bool consume_utf16(
        char16_t const *p, unsigned long long available, AChar *out, unsigned long long *consumed);
    static bool consume_wchars(
        AWChar const *p, unsigned long long available, AChar *out, unsigned long long *consumed)
    {
        return consume_utf16(p, available, out, consumed);
    }

    /// Write this code point into \a room units at \a p. False, and nothing written, when there
    /// is no room, when it is above `max_code_point`, or when it is a surrogate (UTF-16 only).
    TARN_EXPORT bool to_utf8(char *p, unsigned long long room, unsigned long long *written) const;
    TARN_EXPORT bool to_utf16(
        char16_t *p, unsigned long long room, unsigned long long *written) const;
    bool to_wchars(AWChar *p, unsigned long long room, unsigned long long *written) const
    {
        return to_utf16(p, room, written);
    }

    friend constexpr bool operator==(AChar a, AChar b) noexcept { return a.code == b.code; }
    friend constexpr bool operator<(AChar a, AChar b) noexcept { return a.code < b.code; }
    friend constexpr bool operator>(AChar a, AChar b) noexcept { return a.code > b.code; }
    friend constexpr bool operator<=(AChar a, AChar b) noexcept { return a.code <= b.code; }
    friend constexpr bool operator>=(AChar a, AChar b) noexcept { return a.code >= b.code; }

private:
    char32_t code = 0;
};
