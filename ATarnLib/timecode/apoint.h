// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ATarnLib/timecode/asize.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/tarn_export.h"

#include <cstdint>

namespace Corvane {

class ARegion;

/// Adds as the machine does: what passes 32 bits wraps.
constexpr std::int32_t wrapping_sum(std::int32_t a, std::uint32_t b)
{
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) + b);
}

/// A place in a picture: pixels to the right and down from its upper left corner. Sums that pass 32
/// bits wrap.
/// Thread: a value without a lock.
struct TARN_EXPORT APoint
{
    std::int32_t x = 0;
    std::int32_t y = 0;

    constexpr APoint() = default;
    constexpr APoint(std::int32_t right, std::int32_t down)
        : x(right)
        , y(down)
    {
    }
    /// The upper left corner.
    explicit APoint(ARegion const &region);

    /// \name A point elsewhere
    /// @{
    APoint move(std::int32_t dx, std::int32_t dy) const { return *this + APoint(dx, dy); }
    APoint move_x(std::int32_t dx) const { return move(dx, 0); }
    APoint move_y(std::int32_t dy) const { return move(0, dy); }
    APoint moveto_x(std::int32_t new_x) const { return {new_x, y}; }
    APoint moveto_y(std::int32_t new_y) const { return {x, new_y}; }
    /// @}

    friend constexpr APoint operator+(APoint a, APoint b)
    {
        return {wrapping_sum(a.x, static_cast<std::uint32_t>(b.x)),
            wrapping_sum(a.y, static_cast<std::uint32_t>(b.y))};
    }
    friend constexpr APoint operator-(APoint a, APoint b)
    {
        return {wrapping_sum(a.x, 0u - static_cast<std::uint32_t>(b.x)),
            wrapping_sum(a.y, 0u - static_cast<std::uint32_t>(b.y))};
    }
    friend constexpr APoint operator+(APoint a, ASize b)
    {
        return {wrapping_sum(a.x, b.w), wrapping_sum(a.y, b.h)};
    }
    friend constexpr APoint operator-(APoint a, ASize b)
    {
        return {wrapping_sum(a.x, 0u - b.w), wrapping_sum(a.y, 0u - b.h)};
    }
    friend constexpr bool operator==(APoint a, APoint b) { return a.x == b.x && a.y == b.y; }
};

} // namespace Corvane
