// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <limits>
#include <utility>

/// The value of \a Target nearest to \a value: beyond its range, its maximum or minimum.
/// Thread: any.
template <typename Target, typename Source> constexpr Target limit_cvt(Source value)
{
    using Limits = std::numeric_limits<Target>;
    if (std::cmp_greater(value, Limits::max()))
        return Limits::max();
    if (std::cmp_less(value, Limits::min()))
        return Limits::min();
    return static_cast<Target>(value);
}

// limit_cvt_<type>(value), by the names of the targets. The plus promotes what is narrower than
// int.
#define TARN_LIMIT_CVT(name, type)                                                                 \
    template <typename Source> constexpr type limit_cvt_##name(Source value)                       \
    {                                                                                              \
        return limit_cvt<type>(+value);                                                            \
    }

TARN_LIMIT_CVT(int8, std::int8_t)
TARN_LIMIT_CVT(schar, signed char)
TARN_LIMIT_CVT(uint8, std::uint8_t)
TARN_LIMIT_CVT(uchar, unsigned char)
TARN_LIMIT_CVT(int16, std::int16_t)
TARN_LIMIT_CVT(short, short)
TARN_LIMIT_CVT(uint16, std::uint16_t)
TARN_LIMIT_CVT(ushort, unsigned short)
TARN_LIMIT_CVT(int32, std::int32_t)
TARN_LIMIT_CVT(int, int)
TARN_LIMIT_CVT(uint32, std::uint32_t)
TARN_LIMIT_CVT(unsigned, unsigned int)

#undef TARN_LIMIT_CVT
