// SPDX-License-Identifier: Apache-2.0
// Made by vctp3gen from commands.tbl; do not edit.

#pragma once

namespace VCTP3 {
class APIQt;
}

namespace TarnCtl {

class Answer;
class Parameters;

/// \name Each command with all of its parameters, absent ones marked so
/// @{
void call_stop(Parameters const &in, VCTP3::APIQt &api, Answer *answer);
void call_drive(Parameters const &in, VCTP3::APIQt &api, Answer *answer);
void call_cars(Parameters const &in, VCTP3::APIQt &api, Answer *answer);
void call_get_road(Parameters const &in, VCTP3::APIQt &api, Answer *answer);
/// @}

} // namespace TarnCtl
