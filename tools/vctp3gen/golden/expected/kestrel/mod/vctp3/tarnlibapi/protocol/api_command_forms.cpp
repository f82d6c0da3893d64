// SPDX-License-Identifier: Apache-2.0
// Made by vctp3gen from commands.tbl; do not edit.

#include "kestrel/mod/vctp3/tarnlibapi/protocol/api_command.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/record_text_p.h"

namespace VCTP3 {

void APICommand::cmd_stop(AString const &xid)
{
    CommandTree tree(xid, Word::stop);
    send_command(tree);
}

void APICommand::cmd_drive(AString const &xid, Car const &other_car, bool has_offset,
    int const &offset, bool has_rate, Rate const &rate, bool has_quiet, bool const &quiet)
{
    CommandTree tree(xid, Word::drive);
    tree.add(Word::OtherCar, other_car);
    tree.add_if(has_offset, Word::Offset, offset);
    tree.add_if(has_rate, Word::Rate, rate);
    tree.add_flag(Word::Quiet, has_quiet && quiet);
    send_command(tree);
}

void APICommand::cmd_drive(AString const &xid, Car const &other_car)
{
    cmd_drive(xid, other_car, false, 0, false, Rate(), false, false);
}

void APICommand::cmd_drive(AString const &xid, Car const &other_car, int const &offset)
{
    cmd_drive(xid, other_car, true, offset, false, Rate(), false, false);
}

void APICommand::cmd_drive(AString const &xid, Car const &other_car, int const &offset,
    Rate const &rate)
{
    cmd_drive(xid, other_car, true, offset, true, rate, false, false);
}

void APICommand::cmd_drive(AString const &xid, Car const &other_car, int const &offset,
    Rate const &rate, bool const &quiet)
{
    cmd_drive(xid, other_car, true, offset, true, rate, true, quiet);
}

void APICommand::cmd_cars(AString const &xid, unsigned int const &count)
{
    CommandTree tree(xid, Word::cars);
    tree.add(Word::Count, count);
    send_command(tree);
}

void APICommand::cmd_get_road(AString const &xid, SideSet const &side_set, bool has_speed,
    int const &speed)
{
    CommandTree tree(xid, Word::get_road);
    tree.add(Word::SideSet, side_set);
    tree.add_speed_if(has_speed, Word::Speed, speed);
    send_command(tree);
}

void APICommand::cmd_get_road(AString const &xid, SideSet const &side_set)
{
    cmd_get_road(xid, side_set, false, 0);
}

void APICommand::cmd_get_road(AString const &xid, SideSet const &side_set, int const &speed)
{
    cmd_get_road(xid, side_set, true, speed);
}

} // namespace VCTP3
