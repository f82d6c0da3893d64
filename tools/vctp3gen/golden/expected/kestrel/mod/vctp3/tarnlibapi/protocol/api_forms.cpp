// SPDX-License-Identifier: Apache-2.0
// Made by vctp3gen from commands.tbl; do not edit.

#include "kestrel/mod/vctp3/tarnlibapi/protocol/api.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/pending_table_p.h"

namespace VCTP3 {

AString API::cmd_stop(AFunction const &on_ok, AFunction2<AString, ErrorCode> const &on_error)
{
    ReplyFunctions functions;
    functions.set(MessageId::reply_ok, on_ok);
    functions.set(MessageId::reply_error, on_error);
    AString const xid = pending->open(functions);
    APICommand::cmd_stop(xid);
    return xid;
}

void API::cmd_stop()
{
    APICommand::cmd_stop(pending->untracked_xid());
}

AString API::cmd_drive(Car const &other_car, bool has_offset, int const &offset, bool has_rate,
    Rate const &rate, bool has_quiet, bool const &quiet, AFunction const &on_ok,
    AFunction2<AString, ErrorCode> const &on_error)
{
    ReplyFunctions functions;
    functions.set(MessageId::reply_ok, on_ok);
    functions.set(MessageId::reply_error, on_error);
    AString const xid = pending->open(functions);
    APICommand::cmd_drive(xid, other_car, has_offset, offset, has_rate, rate, has_quiet, quiet);
    return xid;
}

void API::cmd_drive(Car const &other_car, bool has_offset, int const &offset, bool has_rate,
    Rate const &rate, bool has_quiet, bool const &quiet)
{
    APICommand::cmd_drive(pending->untracked_xid(), other_car, has_offset, offset, has_rate, rate,
        has_quiet, quiet);
}

AString API::cmd_drive(Car const &other_car, AFunction const &on_ok, AFunction2<AString,
    ErrorCode> const &on_error)
{
    return cmd_drive(other_car, false, 0, false, Rate(), false, false, on_ok, on_error);
}

void API::cmd_drive(Car const &other_car)
{
    cmd_drive(other_car, false, 0, false, Rate(), false, false);
}

AString API::cmd_drive(Car const &other_car, int const &offset, AFunction const &on_ok,
    AFunction2<AString, ErrorCode> const &on_error)
{
    return cmd_drive(other_car, true, offset, false, Rate(), false, false, on_ok, on_error);
}

void API::cmd_drive(Car const &other_car, int const &offset)
{
    cmd_drive(other_car, true, offset, false, Rate(), false, false);
}

AString API::cmd_drive(Car const &other_car, int const &offset, Rate const &rate,
    AFunction const &on_ok, AFunction2<AString, ErrorCode> const &on_error)
{
    return cmd_drive(other_car, true, offset, true, rate, false, false, on_ok, on_error);
}

void API::cmd_drive(Car const &other_car, int const &offset, Rate const &rate)
{
    cmd_drive(other_car, true, offset, true, rate, false, false);
}

AString API::cmd_drive(Car const &other_car, int const &offset, Rate const &rate,
    bool const &quiet, AFunction const &on_ok, AFunction2<AString, ErrorCode> const &on_error)
{
    return cmd_drive(other_car, true, offset, true, rate, true, quiet, on_ok, on_error);
}

void API::cmd_drive(Car const &other_car, int const &offset, Rate const &rate, bool const &quiet)
{
    cmd_drive(other_car, true, offset, true, rate, true, quiet);
}

AString API::cmd_cars(unsigned int const &count, AFunction const &on_ok,
    AFunction1<Car> const &on_car, AFunction2<AString, ErrorCode> const &on_error)
{
    ReplyFunctions functions;
    functions.set(MessageId::reply_ok, on_ok);
    functions.set(MessageId::reply_car, on_car);
    functions.set(MessageId::reply_error, on_error);
    AString const xid = pending->open(functions);
    APICommand::cmd_cars(xid, count);
    return xid;
}

void API::cmd_cars(unsigned int const &count)
{
    APICommand::cmd_cars(pending->untracked_xid(), count);
}

AString API::cmd_get_road(SideSet const &side_set, bool has_speed, int const &speed,
    AFunction2<Road, unsigned long long> const &on_road, AFunction2<AString,
    ErrorCode> const &on_error)
{
    ReplyFunctions functions;
    functions.set(MessageId::reply_road, on_road);
    functions.set(MessageId::reply_error, on_error);
    AString const xid = pending->open(functions);
    APICommand::cmd_get_road(xid, side_set, has_speed, speed);
    return xid;
}

void API::cmd_get_road(SideSet const &side_set, bool has_speed, int const &speed)
{
    APICommand::cmd_get_road(pending->untracked_xid(), side_set, has_speed, speed);
}

AString API::cmd_get_road(SideSet const &side_set, AFunction2<Road,
    unsigned long long> const &on_road, AFunction2<AString, ErrorCode> const &on_error)
{
    return cmd_get_road(side_set, false, 0, on_road, on_error);
}

void API::cmd_get_road(SideSet const &side_set)
{
    cmd_get_road(side_set, false, 0);
}

AString API::cmd_get_road(SideSet const &side_set, int const &speed, AFunction2<Road,
    unsigned long long> const &on_road, AFunction2<AString, ErrorCode> const &on_error)
{
    return cmd_get_road(side_set, true, speed, on_road, on_error);
}

void API::cmd_get_road(SideSet const &side_set, int const &speed)
{
    cmd_get_road(side_set, true, speed);
}

} // namespace VCTP3
