// SPDX-License-Identifier: Apache-2.0
// Made by vctp3gen from replies.tbl, reports.tbl and groups.tbl; do not edit.

#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/aoption.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/callback_groups.h"
#include "tools/tarnctl/answer.h"
#include "tools/tarnctl/json_records.h"

#include <functional>

namespace VCTP3 {
class APIQt;
}

namespace TarnCtl {

/// \name Replies as JSON, under the key "reply"
/// @{
JsonValue reply_ok();
JsonValue reply_error(AString const &message, unsigned int code);
JsonValue reply_car(VCTP3::Car const &car);
JsonValue reply_road(VCTP3::Road const &road, unsigned long long serial);
/// @}

/// \name Reports as JSON, under the key "report"
/// @{
JsonValue report_passed(VCTP3::Side side, AString const &name, AOption<int> const &speed);
JsonValue report_lamp(VCTP3::Side side, bool open);
JsonValue report_names(std::list<AString> const &names);
/// @}

/// \name What comes to a callback group goes to \a answer
/// @{
void hear(VCTP3::CallbackGroup_set1 const *group, Answer *answer);
void hear(VCTP3::CallbackGroup_set2 const *group, Answer *answer);
void hear(VCTP3::CallbackGroup_set3 const *group, Answer *answer);
/// @}

/// A new group, heard by its parent.
template <typename Group> Group *heard_group(Answer *answer)
{
    auto *const group = new Group(answer);
    hear(group, answer);
    return group;
}

/// Calls \a report with each report that comes to \a api while \a context lives.
void hear_reports(VCTP3::APIQt const *api, QObject *context,
    std::function<void(JsonValue const &)> const &report);

} // namespace TarnCtl
