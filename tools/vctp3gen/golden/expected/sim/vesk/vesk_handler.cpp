// SPDX-License-Identifier: Apache-2.0
// Made by vctp3gen from commands.tbl; do not edit.

#include "sim/vesk/vesk_handler.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/astring_format.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/field_reader_p.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/tag_table_p.h"

using VCTP3::FieldReader;
using VCTP3::Word;

bool read_stop(XMLTree const &, StopArgs *, AString *)
{
    return true;
}

bool read_drive(XMLTree const &command, DriveArgs *args, AString *error)
{
    FieldReader fields(command, error);
    fields.need(Word::OtherCar, &args->other_car);
    fields.take(Word::Offset, &args->offset);
    fields.take(Word::Rate, &args->rate);
    fields.flag(Word::Quiet, &args->quiet);
    return fields.ok();
}

bool read_cars(XMLTree const &command, CarsArgs *args, AString *error)
{
    FieldReader fields(command, error);
    fields.need(Word::Count, &args->count);
    return fields.ok();
}

bool read_get_road(XMLTree const &command, GetRoadArgs *args, AString *error)
{
    FieldReader fields(command, error);
    fields.need(Word::SideSet, &args->side_set);
    fields.take_speed(Word::Speed, &args->speed);
    return fields.ok();
}

namespace {

using Call = bool (*)(XMLTree const &, VeskRequest &, VeskHandler &, AString *);

template <typename Args, bool (*read)(XMLTree const &, Args *, AString *),
    void (VeskHandler::*method)(VeskRequest &, Args const &)>
bool call(XMLTree const &command, VeskRequest &request, VeskHandler &handler, AString *error)
{
    Args args;
    if (!read(command, &args, error))
        return false;
    (handler.*method)(request, args);
    return true;
}

VCTP3::TagTable<Call> const &commands()
{
    static constexpr VCTP3::TagTable<Call>::Row rows[] = {
        {Word::stop, &call<StopArgs, read_stop, &VeskHandler::on_stop>},
        {Word::drive, &call<DriveArgs, read_drive, &VeskHandler::on_drive>},
        {Word::cars, &call<CarsArgs, read_cars, &VeskHandler::on_cars>},
        {Word::get_road, &call<GetRoadArgs, read_get_road, &VeskHandler::on_get_road>},
    };
    static VCTP3::TagTable<Call> const table(rows);
    return table;
}

} // namespace

bool vesk_knows_command(AString const &name)
{
    return commands().find(name) != nullptr;
}

bool vesk_dispatch(XMLTree const &command, VeskRequest &request, VeskHandler &handler,
    AString *error)
{
    Call const *found = commands().find(command.get_tag());
    if (found)
        return (*found)(command, request, handler, error);
    *error = AString::l1("There is no command '%1'").arg(command.get_tag());
    return false;
}
