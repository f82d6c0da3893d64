// SPDX-License-Identifier: Apache-2.0
// Made by vctp3gen from reports.tbl; do not edit.

#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/aoption.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/records.h"
#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_tree.h"

/// Elements of the reports with their fields; each is the only child of its message.
namespace VeskReports {

XMLTree passed(VCTP3::Side side, AString const &name, AOption<int> const &speed);
XMLTree lamp(VCTP3::Side side, bool open);
XMLTree names(std::list<AString> const &names);

} // namespace VeskReports
