// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/protocol/api_qt.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/api_qt_impl_p.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/report_ahead_p.h"

namespace VCTP3 {

void APIQtImpl::send(void const *data, unsigned long long size)
{
    if (belongs_to_stream())
        owner->send(data, size);
}

bool APIQtImpl::deliver_ahead(ReportAhead const *report)
{
    if (!report || has_receive_hook)
        return false;
    report->deliver(*this);
    return true;
}

} // namespace VCTP3
