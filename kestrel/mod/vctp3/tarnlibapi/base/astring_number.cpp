// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/base/astring.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/astring_builder_p.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/astring_list.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/astring_p.h"

#include <charconv>
#include <cstdio>
#include <limits>
#include <utility>

namespace {

/// What is left to read of a number. Reading takes no references.
struct Part
{
    AChar const *begin;
    AChar const *end;

    bool starts_with(char32_t c) const { return begin != end && begin->ord() == c; }
    void despace()
    {
        while (begin != end && begin->is_space())
            ++begin;
        while (begin != end && end[-1].is_space())
            --end;
    }
    /// Takes "0x" off the front; whether it was there.
    bool take_hex()
    {
        bool const hex = end - begin >= 2 && begin[0].ord() == '0' && begin[1].ord() == 'x';
        begin += hex ? 2 : 0;
        return hex;
    }
    /// Takes a sign off the front; true for a minus.
    bool take_sign()
    {
        bool const minus = starts_with('-');
        begin += minus || starts_with('+') ? 1 : 0;
        return minus;
    }
};

bool read_unsigned(Part part, std::uint64_t *out)
{
    part.despace();
    bool const hex = part.take_hex();
    if (part.begin == part.end)
        return false;
    std::uint64_t value = 0;
    for (AChar const *at = part.begin; at != part.end; ++at) {
        int const digit = hex ? at->to_hexdigit(-1) : at->to_digit(-1);
        if (digit < 0)
            return false;
        // Digits of "0x" weigh ten like all others: servers count on it.
        std::uint64_t const next = value * 10 + static_cast<unsigned int>(digit);
        if (next < value)
            return false;
        value = next;
    }
    *out = value;
    return true;
}

bool read_signed(Part part, std::int64_t *out)
{
    part.despace();
    bool const minus = part.take_sign();
    std::uint64_t magnitude = 0;
    if (!read_unsigned(part, &magnitude))
        return false;
    constexpr std::uint64_t highest = std::numeric_limits<std::int64_t>::max();
    if (magnitude > highest + (minus ? 1 : 0))
        return false;
    *out = static_cast<std::int64_t>(minus ? 0 - magnitude : magnitude);
    return true;
}

template <typename T> bool narrow(AString const &s, T *out)
{
    std::conditional_t<std::is_signed_v<T>, std::int64_t, std::uint64_t> value = 0;
    AStringPiece const text(s);
    bool read = false;
    if constexpr (std::is_signed_v<T>)
        read = read_signed({text.begin(), text.end()}, &value);
    else
        read = read_unsigned({text.begin(), text.end()}, &value);
    if (!read || !std::in_range<T>(value))
        return false;
    if (out)
        *out = static_cast<T>(value);
    return true;
}

/// The digits of \a magnitude with "-" in front if \a minus, padded between to \a width.
AString latin1_between(char const *begin, char const *end)
{
    return AString::from_latin1(begin, static_cast<unsigned long long>(end - begin));
}

AString print(std::uint64_t magnitude, bool minus, long long width, AChar fill)
{
    char text[21];
    text[0] = '-';
    char const *end = std::to_chars(text + 1, text + sizeof text, magnitude).ptr;
    unsigned long long const n = static_cast<unsigned long long>(end - (text + 1));
    if (minus && width != 0)
        width += width > 0 ? -1 : 1;
    unsigned long long const bits = static_cast<unsigned long long>(width);
    if ((width < 0 ? 0 - bits : bits) <= n)
        return AString::from_latin1(minus ? text : text + 1, minus ? n + 1 : n);
    AString const padded = AString::from_latin1(text + 1, n).pad(width, fill);
    return minus ? AString(AChar(U'-')) + padded : padded;
}

/// The 16 fractional bits of the digits behind a point.
bool read_fraction(AString const &digits, std::uint32_t *out)
{
    std::uint64_t acc = 0;
    for (unsigned long long i = digits.length(); i > 0; --i) {
        int const digit = digits.getchar(i - 1).to_digit(-1);
        if (digit < 0)
            return false;
        acc = ((static_cast<std::uint64_t>(digit) << 60) + acc) / 10;
    }
    *out = static_cast<std::uint32_t>(acc >> 44 & 0xffffu);
    return true;
}

/// A speed as a ratio, the "X" behind it already gone.
bool read_ratio(AString text, int *out)
{
    bool const minus = text.firstchar() == AChar(U'-');
    if (minus || text.firstchar() == AChar(U'+'))
        text = text.remove_front(1);
    long long const point = text.find(AChar(U'.'));
    AString const whole_text = point < 0 ? text : text.left(static_cast<unsigned long long>(point));
    AString const fraction_text
        = point < 0 ? AString() : text.mid(static_cast<unsigned long long>(point) + 1);
    AString const hex = AString::l1("0x");
    if (whole_text.has_prefix(hex) || fraction_text.has_prefix(hex))
        return false;
    std::uint64_t whole = 0;
    std::uint32_t fraction = 0;
    if (!whole_text.empty() && !whole_text.to_uint64_t(&whole))
        return false;
    if (whole > (minus ? 32768u : 32767u) || !read_fraction(fraction_text, &fraction))
        return false;
    std::uint32_t const speed = static_cast<std::uint32_t>(whole) << 16 | fraction;
    *out = static_cast<int>(minus ? 0 - speed : speed);
    return true;
}

/// Reads what is written by `from_speed`, with few enough digits that nothing overflows: false for
/// any other text, whether it is a speed or not.
bool read_plain_speed(AString const &text, int *out)
{
    AChar const *at = flat_text(text);
    if (!at || text.length() > 18)
        return false;
    AChar const *const end = at + text.length();
    bool const minus = *at == AChar(U'-');
    at += minus ? 1 : 0;
    std::uint64_t whole = 0;
    AChar const *const first = at;
    for (; at != end && at->is_digit(); ++at)
        whole = whole * 10 + (at->ord() - U'0');
    std::uint64_t fraction = 0;
    std::uint64_t scale = 1;
    bool const has_whole = at != first;
    if (at != end && *at == AChar(U'.'))
        for (++at; at != end && at->is_digit() && scale < 1000000000; ++at, scale *= 10)
            fraction = fraction * 10 + (at->ord() - U'0');
    if (!has_whole || whole > 32766 || at == end || *at != AChar(U'X') || at + 1 != end)
        return false;
    auto const speed = static_cast<int>(whole << 16 | (fraction << 16) / scale);
    *out = minus ? -speed : speed;
    return true;
}

} // namespace

bool AString::to_int8_t(std::int8_t *out) const
{
    return narrow(*this, out);
}

bool AString::to_int16_t(std::int16_t *out) const
{
    return narrow(*this, out);
}

bool AString::to_int32_t(std::int32_t *out) const
{
    return narrow(*this, out);
}

bool AString::to_int64_t(std::int64_t *out) const
{
    return narrow(*this, out);
}

bool AString::to_uint8_t(std::uint8_t *out) const
{
    return narrow(*this, out);
}

bool AString::to_uint16_t(std::uint16_t *out) const
{
    return narrow(*this, out);
}

bool AString::to_uint32_t(std::uint32_t *out) const
{
    return narrow(*this, out);
}

bool AString::to_uint64_t(std::uint64_t *out) const
{
    return narrow(*this, out);
}

bool AString::to_short(short *out) const
{
    return narrow(*this, out);
}

bool AString::to_unsigned_short(unsigned short *out) const
{
    return narrow(*this, out);
}

bool AString::to_int(int *out) const
{
    return narrow(*this, out);
}

bool AString::to_unsigned(unsigned int *out) const
{
    return narrow(*this, out);
}

bool AString::to_long_long(long long *out) const
{
    return narrow(*this, out);
}

bool AString::to_unsigned_long_long(unsigned long long *out) const
{
    return narrow(*this, out);
}

AString AString::from_int64_t(std::int64_t value, long long width, AChar fill)
{
    std::uint64_t const bits = static_cast<std::uint64_t>(value);
    return print(value < 0 ? 0 - bits : bits, value < 0, width, fill);
}

AString AString::from_uint64_t(std::uint64_t value, long long width, AChar fill)
{
    return print(value, false, width, fill);
}

bool AString::to_speed(int *out) const
{
    int speed = 0;
    if (read_plain_speed(*this, &speed)) {
        if (out)
            *out = speed;
        return true;
    }
    AString const text = despace();
    if (text.empty())
        return false;
    if (text.lastchar() == AChar(U'X')) {
        if (!read_ratio(text.remove_end(1), &speed))
            return false;
    } else if (!text.to_int(&speed)) {
        unsigned int raw = 0;
        if (!text.to_unsigned(&raw))
            return false;
        speed = static_cast<int>(raw);
    }
    if (out)
        *out = speed;
    return true;
}

AString AString::from_speed(int speed, unsigned int precision)
{
    unsigned int const bits = static_cast<unsigned int>(speed);
    unsigned int const magnitude = speed < 0 ? 0 - bits : bits;
    unsigned int fraction = magnitude & 0xffffu;
    char text[48];
    text[0] = '-';
    if (precision == 0 || fraction == 0) {
        char *end = std::to_chars(text + 1, text + sizeof text, (magnitude + 32768) >> 16).ptr;
        *end++ = 'X';
        return speed < 0 ? latin1_between(text, end) : latin1_between(text + 1, end);
    }

    // 16 digits hold 16 bits exactly: more could only add zeros, which go again.
    precision = std::min(precision, 16u);
    unsigned long long digits = 0;
    unsigned long long limit = 1;
    for (unsigned int i = 0; i < precision; ++i) {
        fraction *= 10;
        digits = digits * 10 + (fraction >> 16);
        fraction &= 0xffffu;
        limit *= 10;
    }
    unsigned int whole = magnitude >> 16;
    if (fraction >= 32768 && ++digits == limit) {
        digits = 0;
        ++whole;
    }
    bool const minus = speed < 0 && (whole != 0 || digits != 0);
    char *end = std::to_chars(text + 1, text + sizeof text, whole).ptr;
    *end++ = '.';
    for (char *at = end += precision; precision-- > 0; digits /= 10)
        *--at = static_cast<char>('0' + digits % 10);
    while (end[-1] == '0')
        --end;
    if (end[-1] == '.')
        --end;
    *end++ = 'X';
    return latin1_between(minus ? text : text + 1, end);
}

std::uint32_t AString::to_ipaddr(std::uint32_t otherwise) const
{
    AStringList const parts = split(AString(AChar(U'.')), true);
    if (parts.size() != 4)
        return otherwise;
    std::uint32_t address = 0;
    unsigned int shift = 0;
    for (AString const &part : parts) {
        std::uint8_t byte = 0;
        if (!part.to_uint8_t(&byte))
            return otherwise;
        address |= static_cast<std::uint32_t>(byte) << shift;
        shift += 8;
    }
    return address;
}

AString AString::from_ipaddr(std::uint32_t address)
{
    return sprintf(
        "%u.%u.%u.%u", address & 0xffu, address >> 8 & 0xffu, address >> 16 & 0xffu, address >> 24);
}

AString AString::sprintf(char const *format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    AString result = vsprintf(format, arguments);
    va_end(arguments);
    return result;
}

AString AString::vsprintf(char const *format, std::va_list arguments)
{
    char text[2048];
    if (std::vsnprintf(text, sizeof text, format, arguments) < 0)
        return {};
    return from_latin1z(text, sizeof text);
}
