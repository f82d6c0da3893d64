// SPDX-License-Identifier: Apache-2.0
// Made by vctp3gen from replies.tbl; do not edit.

#include "kestrel/mod/vctp3/tarnlibapi/protocol/api.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/pending_table_p.h"

namespace VCTP3 {

void API::reply_ok(AString const &xid)
{
    pending->finish<AFunction>(xid, MessageId::reply_ok);
}

void API::reply_error(AString const &xid, AString const &message, unsigned int code)
{
    pending->finish<AFunction2<AString, unsigned int>>(xid, MessageId::reply_error, message, code);
}

void API::reply_car(AString const &xid, Car const &car)
{
    pending->answer<AFunction1<Car>>(xid, MessageId::reply_car, car);
}

void API::reply_road(AString const &xid, Road const &road, unsigned long long serial)
{
    pending->finish<AFunction2<Road, unsigned long long>>(xid, MessageId::reply_road, road, serial);
}

} // namespace VCTP3
