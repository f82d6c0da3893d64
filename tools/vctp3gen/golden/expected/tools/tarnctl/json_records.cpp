// SPDX-License-Identifier: Apache-2.0
// Made by vctp3gen from enums.tbl, records.tbl and collections.tbl; do not edit.

#include "tools/tarnctl/json_records.h"

namespace TarnCtl {

namespace {

template <typename Items> JsonValue json_of_items(Items const &items)
{
    JsonValue out = JsonValue::array();
    for (auto const &item : items)
        out.append(json_of(item));
    return out;
}

} // namespace

JsonValue json_of(VCTP3::Side value)
{
    return json_of(VCTP3::Side_to_string(value));
}

JsonValue json_of(VCTP3::Rate value)
{
    return json_of(VCTP3::Rate_to_string(value));
}

JsonValue json_of(VCTP3::ReportType value)
{
    return json_of(VCTP3::ReportType_to_string(value));
}

JsonValue json_of(VCTP3::ChannelReportType value)
{
    return json_of(VCTP3::ChannelReportType_to_string(value));
}

JsonValue json_of(VCTP3::Road const &value)
{
    JsonValue out = JsonValue::object();
    out.add("Side", json_of(value.side));
    out.add("Cars", json_of(value.cars));
    if (value.has_sides)
        out.add("SideSet", json_of(value.sides));
    return out;
}

JsonValue json_of(VCTP3::Car const &value)
{
    JsonValue out = JsonValue::object();
    out.add("Name", json_of(value.name));
    if (value.has_speed)
        out.add("Speed", json_of_speed(value.speed));
    if (value.has_lane)
        out.add("Lane", json_of(value.lane));
    out.add("Quiet", json_of(value.quiet));
    return out;
}

JsonValue json_of(VCTP3::SideSet const &value)
{
    return json_of_items(value);
}

JsonValue json_of(VCTP3::Cars const &value)
{
    return json_of_items(value);
}

JsonValue json_of(std::list<AString> const &value)
{
    return json_of_items(value);
}

} // namespace TarnCtl
