// SPDX-License-Identifier: Apache-2.0
// Made by vctp3gen from reports.tbl; do not edit.

#include "kestrel/mod/vctp3/tarnlibapi/protocol/api_qt.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/api_qt_impl_p.h"

namespace VCTP3 {

void APIQtImpl::report_passed(Side side, AString const &name, AOption<int> const &speed)
{
    owner->do_report_passed(side, name, speed);
}

void APIQtImpl::report_lamp(Side side, bool open)
{
    owner->do_report_lamp(side, open);
}

void APIQtImpl::report_names(std::list<AString> const &names)
{
    owner->do_report_names(names);
}

} // namespace VCTP3
