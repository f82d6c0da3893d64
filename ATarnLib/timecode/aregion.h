// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ATarnLib/timecode/apoint.h"
#include "ATarnLib/timecode/asize.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/tarn_export.h"

#include <QList>
#include <concepts>
#include <cstdint>

namespace Corvane {

/// Whatever tells its size in pixels, such as an image.
template <typename T>
concept Picture = requires(T const &picture)
{
    {
        picture.get_size()
        } -> std::convertible_to<ASize>;
};

/// A rectangle of pixels: its upper left corner and its size. Coordinates that pass 32 bits wrap.
/// Thread: a value without a lock.
class TARN_EXPORT ARegion
{
public:
    constexpr ARegion() = default;
    /// At 0, 0.
    constexpr ARegion(ASize size)
        : extent(size)
    {
    }
    constexpr ARegion(APoint at, ASize size)
        : corner(at)
        , extent(size)
    {
    }
    constexpr ARegion(APoint at, std::uint32_t width, std::uint32_t height)
        : ARegion(at, ASize(width, height))
    {
    }
    constexpr ARegion(std::int32_t left, std::int32_t top, ASize size)
        : ARegion(APoint(left, top), size)
    {
    }
    constexpr ARegion(
        std::int32_t left, std::int32_t top, std::uint32_t width, std::uint32_t height)
        : ARegion(APoint(left, top), ASize(width, height))
    {
    }
    /// All of a picture.
    template <Picture T>
    ARegion(T const &picture)
        : ARegion(picture.get_size())
    {
    }

    /// A whole frame or field, at 0, 0; empty for an invalid value.
    static ARegion frame_region(VideoResolution resolution);
    static ARegion frame_region(VideoStandard standard);
    static ARegion field_region(VideoResolution resolution);
    static ARegion field_region(VideoStandard standard);

    std::int32_t x() const { return corner.x; }
    std::int32_t y() const { return corner.y; }
    std::uint32_t w() const { return extent.w; }
    std::uint32_t h() const { return extent.h; }
    ASize size() const { return extent; }
    std::uint64_t pixel_count() const { return extent.pixel_count(); }
    bool is_empty() const { return extent.is_empty(); }

    /// The last pixel inside, and the first one beyond.
    std::int32_t last_x() const { return wrapping_sum(corner.x, extent.w - 1); }
    std::int32_t last_y() const { return wrapping_sum(corner.y, extent.h - 1); }
    std::int32_t next_x() const { return wrapping_sum(corner.x, extent.w); }
    std::int32_t next_y() const { return wrapping_sum(corner.y, extent.h); }
    /// \name The pixels in the corners: upper and lower, left and right
    /// @{
    APoint pt_ul() const { return corner; }
    APoint pt_ur() const { return {last_x(), y()}; }
    APoint pt_ll() const { return {x(), last_y()}; }
    APoint pt_lr() const { return {last_x(), last_y()}; }
    /// @}

    /// \name Parts
    /// Of an odd size the right and the bottom half get the pixel more.
    /// @{
    ARegion left_half() const;
    ARegion right_half() const;
    ARegion top_half() const;
    ARegion bottom_half() const;
    ARegion ul_quarter() const { return top_half().left_half(); }
    ARegion ur_quarter() const { return top_half().right_half(); }
    ARegion ll_quarter() const { return bottom_half().left_half(); }
    ARegion lr_quarter() const { return bottom_half().right_half(); }
    /// @}

    /// Shorter by \a n lines at that edge, stopping at 0.
    ARegion remove_top(std::uint32_t n) const;
    ARegion remove_bottom(std::uint32_t n) const { return {corner, extent.reduce_h(n)}; }

    /// The overlap; all zeros where there is none.
    ARegion intersect(ARegion const &other) const;
    /// Whether the overlap is \a other: of the empty regions only the one of all zeros is.
    bool contains(ARegion const &other) const { return intersect(other) == other; }
    /// What \a other leaves of this region: up to four rectangles that do not overlap; the region
    /// itself where there is no overlap.
    QList<ARegion> operator-(ARegion const &other) const;

    friend bool operator==(ARegion const &a, ARegion const &b)
    {
        return a.corner == b.corner && a.extent == b.extent;
    }

private:
    APoint corner;
    ASize extent;
};

} // namespace Corvane
