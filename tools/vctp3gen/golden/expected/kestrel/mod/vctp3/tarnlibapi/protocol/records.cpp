// SPDX-License-Identifier: Apache-2.0
// Made by vctp3gen from records.tbl; do not edit.

#include "kestrel/mod/vctp3/tarnlibapi/protocol/records.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/record_order_p.h"

namespace VCTP3 {

bool operator==(Car const &a, Car const &b)
{
    return same(a.name, b.name)
        && same(a.has_speed, a.speed, b.has_speed, b.speed)
        && same(a.has_lane, a.lane, b.has_lane, b.lane)
        && same(a.quiet, b.quiet);
}

bool operator<(Car const &a, Car const &b)
{
    int order = 0;
    order = order ? order : compare(a.name, b.name);
    order = order ? order : compare(a.has_speed, a.speed, b.has_speed, b.speed);
    order = order ? order : compare(a.has_lane, a.lane, b.has_lane, b.lane);
    order = order ? order : compare(a.quiet, b.quiet);
    return order < 0;
}

bool operator==(Road const &a, Road const &b)
{
    return same(a.side, b.side)
        && same(a.cars, b.cars)
        && same(a.has_sides, a.sides, b.has_sides, b.sides);
}

bool operator<(Road const &a, Road const &b)
{
    int order = 0;
    order = order ? order : compare(a.side, b.side);
    order = order ? order : compare(a.cars, b.cars);
    order = order ? order : compare(a.has_sides, a.sides, b.has_sides, b.sides);
    return order < 0;
}

} // namespace VCTP3
