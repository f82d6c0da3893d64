// SPDX-License-Identifier: Apache-2.0
// Made by vctp3gen from enums.tbl, records.tbl and collections.tbl; do not edit.

#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/protocol/command_tree_p.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/records.h"

namespace VCTP3 {

/// Writing of the protocol's types as text of a command.
void write_text(CommandTree &command, Word tag, Side value);
void write_text(CommandTree &command, Word tag, Rate value);
void write_text(CommandTree &command, Word tag, ReportType value);
void write_text(CommandTree &command, Word tag, ChannelReportType value);
void write_text(CommandTree &command, Word tag, SideSet const &value);
void write_text(CommandTree &command, Word tag, Cars const &value);
void write_text(CommandTree &command, Word tag, std::list<AString> const &value);
void write_text(CommandTree &command, Word tag, Road const &value);
void write_text(CommandTree &command, Word tag, Car const &value);

} // namespace VCTP3
