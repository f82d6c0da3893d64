// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/timecode/aregion.h"

#include <algorithm>

namespace Corvane {

namespace {

/// A stretch of one axis; wide, so that no end of a region is out of reach.
struct Span
{
    std::int64_t begin;
    std::int64_t end;

    static Span of(std::int32_t begin, std::uint32_t n)
    {
        return {begin, static_cast<std::int64_t>(begin) + n};
    }
    Span common(Span other) const
    {
        return {std::max(begin, other.begin), std::min(end, other.end)};
    }
    bool is_empty() const { return end <= begin; }
};

ARegion region(Span x, Span y)
{
    return ARegion(static_cast<std::int32_t>(x.begin), static_cast<std::int32_t>(y.begin),
        static_cast<std::uint32_t>(x.end - x.begin), static_cast<std::uint32_t>(y.end - y.begin));
}

void add_if_any(QList<ARegion> *list, Span x, Span y)
{
    if (!x.is_empty() && !y.is_empty())
        list->append(region(x, y));
}

} // namespace

APoint::APoint(ARegion const &region)
    : APoint(region.pt_ul())
{
}

ARegion ARegion::frame_region(VideoResolution resolution)
{
    return ASize::frame_size(resolution);
}

ARegion ARegion::frame_region(VideoStandard standard)
{
    return ASize::frame_size(standard);
}

ARegion ARegion::field_region(VideoResolution resolution)
{
    return ASize::field_size(resolution);
}

ARegion ARegion::field_region(VideoStandard standard)
{
    return ASize::field_size(standard);
}

ARegion ARegion::left_half() const
{
    return {corner, w() / 2, h()};
}

ARegion ARegion::right_half() const
{
    return {corner + ASize(w() / 2, 0), w() - w() / 2, h()};
}

ARegion ARegion::top_half() const
{
    return {corner, w(), h() / 2};
}

ARegion ARegion::bottom_half() const
{
    return {corner + ASize(0, h() / 2), w(), h() - h() / 2};
}

ARegion ARegion::remove_top(std::uint32_t n) const
{
    return {corner + ASize(0, std::min(n, h())), extent.reduce_h(n)};
}

ARegion ARegion::intersect(ARegion const &other) const
{
    Span const across = Span::of(x(), w()).common(Span::of(other.x(), other.w()));
    Span const down = Span::of(y(), h()).common(Span::of(other.y(), other.h()));
    return across.is_empty() || down.is_empty() ? ARegion() : region(across, down);
}

QList<ARegion> ARegion::operator-(ARegion const &other) const
{
    Span const across = Span::of(x(), w());
    Span const down = Span::of(y(), h());
    Span const hole_across = across.common(Span::of(other.x(), other.w()));
    Span const hole_down = down.common(Span::of(other.y(), other.h()));
    if (hole_across.is_empty() || hole_down.is_empty())
        return {*this};
    QList<ARegion> rest;
    add_if_any(&rest, across, {down.begin, hole_down.begin});
    add_if_any(&rest, {across.begin, hole_across.begin}, hole_down);
    add_if_any(&rest, {hole_across.end, across.end}, hole_down);
    add_if_any(&rest, across, {hole_down.end, down.end});
    return rest;
}

} // namespace Corvane
