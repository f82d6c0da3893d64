// SPDX-License-Identifier: Apache-2.0
// Made by vctp3gen from replies.tbl; do not edit.

#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/aoption.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/records.h"
#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_tree.h"

/// Elements of the replies with their fields; the message adds the command's id.
namespace VeskReplies {

XMLTree ok();
XMLTree error(AString const &message, unsigned int code);
XMLTree car(VCTP3::Car const &car);
XMLTree road(VCTP3::Road const &road, unsigned long long serial);

} // namespace VeskReplies
