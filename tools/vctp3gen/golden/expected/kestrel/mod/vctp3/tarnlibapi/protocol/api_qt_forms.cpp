// SPDX-License-Identifier: Apache-2.0
// Made by vctp3gen from commands.tbl and reports.tbl; do not edit.

#include "kestrel/mod/vctp3/tarnlibapi/protocol/api_qt.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/api_qt_impl_p.h"

namespace VCTP3 {

void APIQt::cmd_stop(CallbackGroup_set1 const &group)
{
    group.addref();
    impl->cmd_stop(group.on_ok, group.on_error);
}

void APIQt::cmd_stop()
{
    impl->cmd_stop();
}

void APIQt::cmd_drive(Car const &other_car, bool has_offset, int const &offset, bool has_rate,
    Rate const &rate, bool has_quiet, bool const &quiet, CallbackGroup_set1 const &group)
{
    group.addref();
    impl->cmd_drive(other_car, has_offset, offset, has_rate, rate, has_quiet, quiet, group.on_ok,
        group.on_error);
}

void APIQt::cmd_drive(Car const &other_car, bool has_offset, int const &offset, bool has_rate,
    Rate const &rate, bool has_quiet, bool const &quiet)
{
    impl->cmd_drive(other_car, has_offset, offset, has_rate, rate, has_quiet, quiet);
}

void APIQt::cmd_drive(Car const &other_car, CallbackGroup_set1 const &group)
{
    cmd_drive(other_car, false, 0, false, Rate(), false, false, group);
}

void APIQt::cmd_drive(Car const &other_car)
{
    cmd_drive(other_car, false, 0, false, Rate(), false, false);
}

void APIQt::cmd_drive(Car const &other_car, int const &offset, CallbackGroup_set1 const &group)
{
    cmd_drive(other_car, true, offset, false, Rate(), false, false, group);
}

void APIQt::cmd_drive(Car const &other_car, int const &offset)
{
    cmd_drive(other_car, true, offset, false, Rate(), false, false);
}

void APIQt::cmd_drive(Car const &other_car, int const &offset, Rate const &rate,
    CallbackGroup_set1 const &group)
{
    cmd_drive(other_car, true, offset, true, rate, false, false, group);
}

void APIQt::cmd_drive(Car const &other_car, int const &offset, Rate const &rate)
{
    cmd_drive(other_car, true, offset, true, rate, false, false);
}

void APIQt::cmd_drive(Car const &other_car, int const &offset, Rate const &rate, bool const &quiet,
    CallbackGroup_set1 const &group)
{
    cmd_drive(other_car, true, offset, true, rate, true, quiet, group);
}

void APIQt::cmd_drive(Car const &other_car, int const &offset, Rate const &rate, bool const &quiet)
{
    cmd_drive(other_car, true, offset, true, rate, true, quiet);
}

void APIQt::cmd_cars(unsigned int const &count, CallbackGroup_set2 const &group)
{
    group.addref();
    impl->cmd_cars(count, group.on_ok, group.on_car, group.on_error);
}

void APIQt::cmd_cars(unsigned int const &count)
{
    impl->cmd_cars(count);
}

void APIQt::cmd_get_road(SideSet const &side_set, bool has_speed, int const &speed,
    CallbackGroup_set3 const &group)
{
    group.addref();
    impl->cmd_get_road(side_set, has_speed, speed, group.on_road, group.on_error);
}

void APIQt::cmd_get_road(SideSet const &side_set, bool has_speed, int const &speed)
{
    impl->cmd_get_road(side_set, has_speed, speed);
}

void APIQt::cmd_get_road(SideSet const &side_set, CallbackGroup_set3 const &group)
{
    cmd_get_road(side_set, false, 0, group);
}

void APIQt::cmd_get_road(SideSet const &side_set)
{
    cmd_get_road(side_set, false, 0);
}

void APIQt::cmd_get_road(SideSet const &side_set, int const &speed, CallbackGroup_set3 const &group)
{
    cmd_get_road(side_set, true, speed, group);
}

void APIQt::cmd_get_road(SideSet const &side_set, int const &speed)
{
    cmd_get_road(side_set, true, speed);
}

void APIQt::do_report_passed(Side side, AString const &name, AOption<int> const &speed)
{
    Q_EMIT report_passed(side, name, speed);
}

void APIQt::do_report_lamp(Side side, bool open)
{
    Q_EMIT report_lamp(side, open);
}

void APIQt::do_report_names(std::list<AString> const &names)
{
    Q_EMIT report_names(names);
}

} // namespace VCTP3
