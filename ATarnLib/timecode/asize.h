// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ATarnLib/timecode/video_standard.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/tarn_export.h"

#include <cstdint>

namespace Corvane {

/// Width and height of a picture in pixels.
/// Thread: a value without a lock.
struct TARN_EXPORT ASize
{
    std::uint32_t w = 0;
    std::uint32_t h = 0;

    constexpr ASize() = default;
    constexpr ASize(std::uint32_t width, std::uint32_t height)
        : w(width)
        , h(height)
    {
    }

    /// Empty for an invalid value.
    static ASize frame_size(VideoResolution resolution);
    static ASize frame_size(VideoStandard standard);
    static ASize field_size(VideoResolution resolution);
    static ASize field_size(VideoStandard standard);

    /// The first resolution with frames of this size, so 1080p for all that is 1920 by 1080;
    /// invalid if there is none.
    VideoResolution toVideoResolution() const;

    std::uint64_t area() const { return std::uint64_t{w} * h; }
    std::uint64_t pixel_count() const { return area(); }
    bool is_empty() const { return w == 0 || h == 0; }
    /// Where a pixel stands, counted line by line. A coordinate outside is an assertion and
    /// gives 0.
    std::uint64_t pixel_number(int x, int y) const;

    /// By components.
    ASize operator*(ASize other) const { return {w * other.w, h * other.h}; }
    ASize operator*(std::uint32_t n) const { return {w * n, h * n}; }
    /// A divisor of 0 is an assertion and gives the empty size.
    ASize operator/(std::uint32_t n) const;
    /// The smaller width and the smaller height.
    ASize intersect(ASize other) const;
    /// Smaller by \a n, stopping at 0.
    ASize reduce_w(std::uint32_t n) const { return {w > n ? w - n : 0, h}; }
    ASize reduce_h(std::uint32_t n) const { return {w, h > n ? h - n : 0}; }

    /// The lines of the field that has the topmost line, and of the other one.
    ASize deinterlace_top() const { return {w, h / 2 + h % 2}; }
    ASize deinterlace_bottom() const { return {w, h / 2}; }
    /// The lines of a field. The size itself where the resolution is progressive; without a
    /// resolution it is the one of this size.
    ASize deinterlace_field1() const { return deinterlace_field1(toVideoResolution()); }
    ASize deinterlace_field1(VideoResolution resolution) const;
    ASize deinterlace_field1(VideoStandard standard) const;
    ASize deinterlace_field2() const { return deinterlace_field2(toVideoResolution()); }
    ASize deinterlace_field2(VideoResolution resolution) const;
    ASize deinterlace_field2(VideoStandard standard) const;

    friend constexpr bool operator==(ASize a, ASize b) { return a.w == b.w && a.h == b.h; }
};

} // namespace Corvane
