// SPDX-License-Identifier: Apache-2.0
// Made by vctp3gen from commands.tbl; do not edit.

#include "tools/tarnctl/calls.h"

#include "kestrel/mod/vctp3/tarnlibapi/protocol/api_qt.h"
#include "tools/tarnctl/json_messages.h"
#include "tools/tarnctl/parameters.h"

namespace TarnCtl {

void call_stop(Parameters const &, VCTP3::APIQt &api, Answer *answer)
{
    api.cmd_stop(*heard_group<VCTP3::CallbackGroup_set1>(answer));
}

void call_drive(Parameters const &in, VCTP3::APIQt &api, Answer *answer)
{
    auto const other_car = in.value<VCTP3::Car>("OtherCar");
    auto const offset = in.option<int>("Offset");
    auto const rate = in.option<VCTP3::Rate>("Rate");
    auto const quiet = in.option<bool>("Quiet");
    api.cmd_drive(other_car, offset.has_value(), *offset, rate.has_value(), *rate,
        quiet.has_value(), *quiet, *heard_group<VCTP3::CallbackGroup_set1>(answer));
}

void call_cars(Parameters const &in, VCTP3::APIQt &api, Answer *answer)
{
    auto const count = in.value<unsigned int>("Count");
    api.cmd_cars(count, *heard_group<VCTP3::CallbackGroup_set2>(answer));
}

void call_get_road(Parameters const &in, VCTP3::APIQt &api, Answer *answer)
{
    auto const side_set = in.value<VCTP3::SideSet>("SideSet");
    auto const speed = in.option_speed("Speed");
    api.cmd_get_road(side_set, speed.has_value(), *speed,
        *heard_group<VCTP3::CallbackGroup_set3>(answer));
}

} // namespace TarnCtl
