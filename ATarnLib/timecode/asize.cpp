// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/timecode/asize.h"

#include "kestrel/mod/vctp3/tarnlibapi/base/aassert.h"

#include <algorithm>

namespace Corvane {

ASize ASize::frame_size(VideoResolution resolution)
{
    return {width(resolution), frame_height(resolution)};
}

ASize ASize::frame_size(VideoStandard standard)
{
    return frame_size(Corvane::toVideoResolution(standard));
}

ASize ASize::field_size(VideoResolution resolution)
{
    return {width(resolution), field_height(resolution)};
}

ASize ASize::field_size(VideoStandard standard)
{
    return field_size(Corvane::toVideoResolution(standard));
}

VideoResolution ASize::toVideoResolution() const
{
    VideoResolution resolution{};
    getfirst(&resolution);
    do {
        if (frame_size(resolution) == *this)
            return resolution;
    } while (getnext(&resolution));
    return VideoResolution::invalid;
}

std::uint64_t ASize::pixel_number(int x, int y) const
{
    if (!A_ASSERT(x >= 0 && static_cast<std::uint32_t>(x) < w)
        || !A_ASSERT(y >= 0 && static_cast<std::uint32_t>(y) < h))
        return 0;
    return static_cast<std::uint64_t>(y) * w + static_cast<std::uint64_t>(x);
}

ASize ASize::operator/(std::uint32_t n) const
{
    if (!A_ASSERT(n != 0))
        return {};
    return {w / n, h / n};
}

ASize ASize::intersect(ASize other) const
{
    return {std::min(w, other.w), std::min(h, other.h)};
}

ASize ASize::deinterlace_field1(VideoResolution resolution) const
{
    if (isProgressive(resolution))
        return *this;
    return top_field_is_f1(resolution) ? deinterlace_top() : deinterlace_bottom();
}

ASize ASize::deinterlace_field1(VideoStandard standard) const
{
    return deinterlace_field1(Corvane::toVideoResolution(standard));
}

ASize ASize::deinterlace_field2(VideoResolution resolution) const
{
    if (isProgressive(resolution))
        return *this;
    return top_field_is_f1(resolution) ? deinterlace_bottom() : deinterlace_top();
}

ASize ASize::deinterlace_field2(VideoStandard standard) const
{
    return deinterlace_field2(Corvane::toVideoResolution(standard));
}

} // namespace Corvane
