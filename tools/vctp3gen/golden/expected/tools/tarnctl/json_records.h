// SPDX-License-Identifier: Apache-2.0
// Made by vctp3gen from enums.tbl, records.tbl and collections.tbl; do not edit.

#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/protocol/records.h"
#include "tools/tarnctl/json_leaves.h"

namespace TarnCtl {

/// \name Values of the protocol as JSON: element names as keys, in wire order
/// @{
JsonValue json_of(VCTP3::Side value);
JsonValue json_of(VCTP3::Rate value);
JsonValue json_of(VCTP3::ReportType value);
JsonValue json_of(VCTP3::ChannelReportType value);
JsonValue json_of(VCTP3::Road const &value);
JsonValue json_of(VCTP3::Car const &value);
JsonValue json_of(VCTP3::SideSet const &value);
JsonValue json_of(VCTP3::Cars const &value);
JsonValue json_of(std::list<AString> const &value);
/// @}

} // namespace TarnCtl
