// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/achar.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

// Conversions of runs in blocks of 16. The bytes of a block go through a local array, since the
// compiler must take for granted that other bytes overlap the text and then uses no vectors.
namespace AStringBlocks {

constexpr unsigned int block = 16;

inline void widen(unsigned char const (&bytes)[block], AChar *to)
{
    for (unsigned int i = 0; i < block; ++i)
        to[i] = AChar(bytes[i]);
}

/// Whether all bytes are 1 to 127.
inline bool all_ascii(unsigned char const (&bytes)[block])
{
    constexpr std::uint64_t ones = 0x0101010101010101ull;
    constexpr std::uint64_t highs = 0x8080808080808080ull;
    std::uint64_t a = 0;
    std::uint64_t b = 0;
    std::memcpy(&a, bytes, 8);
    std::memcpy(&b, bytes + 8, 8);
    // A byte of 0 borrows into its high bit, one of 128 and above has it.
    return ((a | (a - ones) | b | (b - ones)) & highs) == 0;
}

/// Widens bytes of 1 to 127; returns how many stood in front of the first other one.
inline unsigned long long widen_ascii(char const *from, unsigned long long n, AChar *to)
{
    unsigned long long done = 0;
    for (; n - done >= block; done += block) {
        unsigned char bytes[block];
        std::memcpy(bytes, from + done, block);
        if (!all_ascii(bytes))
            break;
        widen(bytes, to + done);
    }
    for (; done < n; ++done) {
        unsigned char const c = static_cast<unsigned char>(from[done]);
        if (c == 0 || c > 127)
            break;
        to[done] = AChar(c);
    }
    return done;
}

inline void widen_latin1(char const *from, unsigned long long n, AChar *to)
{
    unsigned long long done = 0;
    for (; n - done >= block; done += block) {
        unsigned char bytes[block];
        std::memcpy(bytes, from + done, block);
        widen(bytes, to + done);
    }
    for (; done < n; ++done)
        to[done] = AChar(static_cast<unsigned char>(from[done]));
}

/// Writes code points of 0 to 127; returns how many stood in front of the first other one.
inline unsigned long long narrow_ascii(AChar const *from, unsigned long long n, char *to)
{
    unsigned long long done = 0;
    for (; n - done >= block; done += block) {
        char32_t bits = 0;
        for (unsigned int i = 0; i < block; ++i)
            bits |= from[done + i].ord();
        if (bits > 127)
            break;
        unsigned char bytes[block];
        for (unsigned int i = 0; i < block; ++i)
            bytes[i] = static_cast<unsigned char>(from[done + i].ord());
        std::memcpy(to + done, bytes, block);
    }
    for (; done < n && from[done].is_ascii(); ++done)
        to[done] = static_cast<char>(from[done].ord());
    return done;
}

/// Widens UTF-16 units that are code points and not 0; returns how many stood in front of the
/// first other one.
inline unsigned long long widen_utf16(char16_t const *from, unsigned long long n, AChar *to)
{
    unsigned long long done = 0;
    for (; done < n; ++done) {
        char16_t const unit = from[done];
        if (unit == 0 || (unit & 0xf800) == 0xd800)
            break;
        to[done] = AChar(unit);
    }
    return done;
}

/// The number of bytes that do not continue a UTF-8 sequence.
inline unsigned long long count_utf8_leads(char const *text, unsigned long long n)
{
    constexpr std::uint64_t ones = 0x0101010101010101ull;
    constexpr unsigned long long words_a_sum = 255; // as many as the counts of one byte hold
    unsigned long long continuations = 0;
    unsigned long long done = 0;
    while (n - done >= 8) {
        unsigned long long const words = std::min((n - done) / 8, words_a_sum);
        std::uint64_t sums = 0;
        for (unsigned long long i = 0; i < words; ++i) {
            std::uint64_t eight = 0;
            std::memcpy(&eight, text + done + 8 * i, 8);
            sums += eight >> 7 & ~(eight >> 6) & ones;
        }
        for (; sums != 0; sums >>= 8)
            continuations += sums & 255;
        done += 8 * words;
    }
    for (; done < n; ++done)
        continuations += (static_cast<unsigned char>(text[done]) & 0xc0u) == 0x80u;
    return n - continuations;
}

} // namespace AStringBlocks
