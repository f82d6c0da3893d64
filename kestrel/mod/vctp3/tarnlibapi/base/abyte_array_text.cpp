// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/base/abyte_array.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/astring_builder_p.h"

#include <algorithm>

namespace {

constexpr char base64_symbols[]
    = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr char hex_digits[] = "0123456789ABCDEF";
constexpr unsigned int base64_line = 20; // bytes of input

/// The six bits of a symbol, or -1.
int base64_value(AChar c)
{
    if (c >= AChar(U'A') && c <= AChar(U'Z'))
        return static_cast<int>(c.ord() - U'A');
    if (c >= AChar(U'a') && c <= AChar(U'z'))
        return static_cast<int>(c.ord() - U'a') + 26;
    if (c.is_digit())
        return c.to_digit(0) + 52;
    return c == AChar(U'+') ? 62 : c == AChar(U'/') ? 63 : -1;
}

} // namespace

AString AByteArray::toBase64() const
{
    AStringBuilder text(size() / 3 * 4 + 4 + size() / base64_line);
    auto const put = [&text](std::uint32_t six) {
        text.append(AChar::from_latin1(static_cast<unsigned char>(base64_symbols[six & 0x3fu])));
    };
    std::uint32_t bits = 0;
    unsigned int held = 0;
    for (unsigned long long i = 0; i < size(); ++i) {
        bits = bits << 8 | const_data()[i];
        held += 8;
        for (; held >= 6; held -= 6)
            put(bits >> (held - 6));
        if ((i + 1) % base64_line == 0)
            text.append(U'\n');
    }
    if (held != 0)
        put(bits << (6 - held));
    return text.take();
}

AByteArray AByteArray::fromBase64(AString const &text)
{
    AByteArray bytes;
    bytes.reserve(text.length() / 4 * 3 + text.length() % 4 * 3 / 4 + 2);
    std::uint32_t bits = 0;
    unsigned int held = 0;
    for (AChar const c : text) {
        int const six = base64_value(c);
        if (six < 0)
            continue;
        bits = bits << 6 | static_cast<std::uint32_t>(six);
        held += 6;
        if (held >= 8) {
            held -= 8;
            bytes.append(static_cast<Byte>(bits >> held));
        }
    }
    return bytes;
}

AString AByteArray::toHex(unsigned int width) const
{
    unsigned long long const full = std::max(width, 1u) - 1;
    AStringBuilder text(size() * 3);
    unsigned long long line = 0;
    for (unsigned long long i = 0; i < size(); ++i) {
        if (line >= full) {
            text.append(U'\n');
            line = 0;
        }
        Byte const byte = const_data()[i];
        char const digits[] = {hex_digits[byte >> 4], hex_digits[byte & 15]};
        text.append_latin1(digits, 2);
        line += 2;
    }
    return text.take();
}

AByteArray AByteArray::toHexAscii() const
{
    AByteArray digits;
    digits.reserve(size() * 2);
    for (unsigned long long i = 0; i < size(); ++i) {
        Byte const byte = const_data()[i];
        digits.append(
            static_cast<Byte>(hex_digits[byte >> 4]), static_cast<Byte>(hex_digits[byte & 15]));
    }
    return digits;
}

AByteArray AByteArray::fromHexAscii(AByteArray const &digits)
{
    AByteArray bytes;
    bytes.reserve(digits.size() / 2);
    int high = -1;
    for (unsigned long long i = 0; i < digits.size(); ++i) {
        int const digit = AChar::from_latin1(digits.const_data()[i]).to_hexdigit(-1);
        if (digit < 0)
            continue;
        if (high < 0) {
            high = digit;
        } else {
            bytes.append(static_cast<Byte>(high * 16 + digit));
            high = -1;
        }
    }
    return bytes;
}

AString AByteArray::fromUtf8() const
{
    return AString::from_utf8(reinterpret_cast<char const *>(const_data()), size());
}
