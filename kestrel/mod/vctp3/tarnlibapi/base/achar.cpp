// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/base/achar.h"

namespace {

/// One row for each length of a UTF-8 sequence, in order from 1.
struct Utf8Row
{
    unsigned char lead; // the fixed bits of the lead byte
    unsigned char lead_end; // the first byte that is no lead of this length
    char32_t highest;
};

constexpr Utf8Row utf8_rows[] = {
    {0, 128, 127},
    {192, 224, 2047},
    {224, 240, 65535},
    {240, 248, AChar::max_code_point},
};

constexpr bool is_high_surrogate(char32_t unit)
{
    return unit >= 0xd800 && unit < 0xdc00;
}

constexpr bool is_low_surrogate(char32_t unit)
{
    return unit >= 0xdc00 && unit < 0xe000;
}

} // namespace

bool AChar::consume_utf8(
    char const *p, unsigned long long available, AChar *out, unsigned long long *consumed)
{
    if (available == 0)
        return false;
    unsigned char const lead = static_cast<unsigned char>(*p);
    if (lead == 0 || lead == 192 || lead == 193)
        return false;
    for (unsigned int length = 1; length <= 4; ++length) {
        Utf8Row const &row = utf8_rows[length - 1];
        if (lead >= row.lead_end)
            continue;
        if (lead < row.lead || available < length)
            return false;
        char32_t code = static_cast<char32_t>(lead - row.lead);
        for (unsigned int i = 1; i < length; ++i) {
            unsigned char const next = static_cast<unsigned char>(p[i]);
            if ((next & 0xc0) != 0x80)
                return false;
            code = code << 6 | (next & 0x3fu);
        }
        if (code > row.highest)
            return false;
        *out = AChar(code);
        *consumed = length;
        return true;
    }
    return false;
}

bool AChar::consume_utf16(
    char16_t const *p, unsigned long long available, AChar *out, unsigned long long *consumed)
{
    if (available == 0 || *p == 0 || is_low_surrogate(*p))
        return false;
    if (!is_high_surrogate(*p)) {
        *out = AChar(*p);
        *consumed = 1;
        return true;
    }
    if (available < 2 || !is_low_surrogate(p[1]))
        return false;
    *out = AChar(0x10000u + ((p[0] & 0x3ffu) << 10 | (p[1] & 0x3ffu)));
    *consumed = 2;
    return true;
}

bool AChar::to_utf8(char *p, unsigned long long room, unsigned long long *written) const
{
    unsigned int length = 1;
    while (length <= 4 && code > utf8_rows[length - 1].highest)
        ++length;
    if (length > 4 || room < length)
        return false;
    char32_t rest = code;
    for (unsigned int i = length - 1; i > 0; --i) {
        p[i] = static_cast<char>(0x80u | (rest & 0x3fu));
        rest >>= 6;
    }
    p[0] = static_cast<char>(utf8_rows[length - 1].lead | rest);
    *written = length;
    return true;
}

bool AChar::to_utf16(char16_t *p, unsigned long long room, unsigned long long *written) const
{
    bool const pair = code > 0xffff;
    if (code > max_code_point || is_high_surrogate(code) || is_low_surrogate(code)
        || room < (pair ? 2u : 1u))
        return false;
    if (pair) {
        p[0] = static_cast<char16_t>(0xd800u + ((code - 0x10000u) >> 10));
        p[1] = static_cast<char16_t>(0xdc00u + ((code - 0x10000u) & 0x3ffu));
    } else {
        p[0] = static_cast<char16_t>(code);
    }
    *written = pair ? 2 : 1;
    return true;
}
