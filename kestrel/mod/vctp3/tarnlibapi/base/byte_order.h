// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <bit>
#include <cstdint>

namespace AByteOrder {

constexpr std::uint8_t swap(std::uint8_t v)
{
    return v;
}
constexpr std::uint16_t swap(std::uint16_t v)
{
    return static_cast<std::uint16_t>(v << 8 | v >> 8);
}
constexpr std::uint32_t swap(std::uint32_t v)
{
    return __builtin_bswap32(v);
}
constexpr std::uint64_t swap(std::uint64_t v)
{
    return __builtin_bswap64(v);
}

/// From host to big-endian order or back, which is one and the same exchange.
template <typename T> constexpr T exchange(T v)
{
    return std::endian::native == std::endian::big ? v : swap(v);
}

/// The host's value of two parts, the most significant first.
constexpr std::uint16_t join(std::uint8_t a, std::uint8_t b)
{
    return static_cast<std::uint16_t>(a << 8 | b);
}
constexpr std::uint32_t join(std::uint16_t a, std::uint16_t b)
{
    return std::uint32_t{a} << 16 | b;
}
constexpr std::uint64_t join(std::uint32_t a, std::uint32_t b)
{
    return std::uint64_t{a} << 32 | b;
}

} // namespace AByteOrder

/// Values in big-endian order from host values: what to store in memory that is sent. The forms
/// with parts take them as the host has them, the most significant first.
namespace toBE {

constexpr std::uint8_t s8(std::uint8_t v)
{
    return v;
}
constexpr std::uint16_t s16(std::uint16_t v)
{
    return AByteOrder::exchange(v);
}
constexpr std::uint16_t s16(std::uint8_t a, std::uint8_t b)
{
    return s16(AByteOrder::join(a, b));
}
constexpr std::uint32_t s32(std::uint32_t v)
{
    return AByteOrder::exchange(v);
}
constexpr std::uint32_t s32(std::uint16_t a, std::uint16_t b)
{
    return s32(AByteOrder::join(a, b));
}
constexpr std::uint32_t s32(std::uint8_t a, std::uint8_t b, std::uint8_t c, std::uint8_t d)
{
    return s32(AByteOrder::join(a, b), AByteOrder::join(c, d));
}
constexpr std::uint64_t s64(std::uint64_t v)
{
    return AByteOrder::exchange(v);
}
constexpr std::uint64_t s64(std::uint32_t a, std::uint32_t b)
{
    return s64(AByteOrder::join(a, b));
}
constexpr std::uint64_t s64(std::uint16_t a, std::uint16_t b, std::uint16_t c, std::uint16_t d)
{
    return s64(AByteOrder::join(a, b), AByteOrder::join(c, d));
}
constexpr std::uint64_t s64(std::uint8_t a, std::uint8_t b, std::uint8_t c, std::uint8_t d,
    std::uint8_t e, std::uint8_t f, std::uint8_t g, std::uint8_t h)
{
    return s64(AByteOrder::join(a, b), AByteOrder::join(c, d), AByteOrder::join(e, f),
        AByteOrder::join(g, h));
}

} // namespace toBE

/// Host values from values in big-endian order: what was read from memory that was received. The
/// forms with parts take them as they lie in memory, from the lowest address on.
namespace fromBE {

constexpr std::uint8_t s8(std::uint8_t v)
{
    return v;
}
constexpr std::uint16_t s16(std::uint16_t v)
{
    return AByteOrder::exchange(v);
}
constexpr std::uint16_t s16(std::uint8_t a, std::uint8_t b)
{
    return AByteOrder::join(a, b);
}
constexpr std::uint32_t s32(std::uint32_t v)
{
    return AByteOrder::exchange(v);
}
constexpr std::uint32_t s32(std::uint16_t a, std::uint16_t b)
{
    return AByteOrder::join(s16(a), s16(b));
}
constexpr std::uint32_t s32(std::uint8_t a, std::uint8_t b, std::uint8_t c, std::uint8_t d)
{
    return AByteOrder::join(s16(a, b), s16(c, d));
}
constexpr std::uint64_t s64(std::uint64_t v)
{
    return AByteOrder::exchange(v);
}
constexpr std::uint64_t s64(std::uint32_t a, std::uint32_t b)
{
    return AByteOrder::join(s32(a), s32(b));
}
constexpr std::uint64_t s64(std::uint16_t a, std::uint16_t b, std::uint16_t c, std::uint16_t d)
{
    return AByteOrder::join(s32(a, b), s32(c, d));
}
constexpr std::uint64_t s64(std::uint8_t a, std::uint8_t b, std::uint8_t c, std::uint8_t d,
    std::uint8_t e, std::uint8_t f, std::uint8_t g, std::uint8_t h)
{
    return AByteOrder::join(s32(a, b, c, d), s32(e, f, g, h));
}

} // namespace fromBE
