// SPDX-License-Identifier: Apache-2.0
// Made by vctp3gen from enums.tbl, records.tbl and collections.tbl; do not edit.

#include "kestrel/mod/vctp3/tarnlibapi/protocol/record_xml.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/collection_xml_p.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/element_builder_p.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/field_reader_p.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/record_text_p.h"

namespace VCTP3 {

template <typename Fields> void add_fields(Fields &fields, Car const &value)
{
    fields.add(Word::Name, value.name);
    fields.add_speed_if(value.has_speed, Word::Speed, value.speed);
    fields.add_if(value.has_lane, Word::Lane, value.lane);
    fields.add_flag(Word::Quiet, value.quiet);
}

template <typename Fields> void add_fields(Fields &fields, Road const &value)
{
    fields.add(Word::Side, value.side);
    fields.add(Word::Cars, value.cars);
    fields.add_if(value.has_sides, Word::SideSet, value.sides);
}

bool read_element(XMLTree const &parent, AString const &tag, Side *out, AString *error)
{
    return read_enum(parent, tag, Side_names(), "Side", out, error);
}

XMLTree write_element(AString const &tag, Side value)
{
    return XMLTree(tag, Side_to_string(value));
}

void write_text(CommandTree &command, Word tag, Side value)
{
    command.add(tag, Side_to_string(value));
}

bool read_element(XMLTree const &parent, AString const &tag, Rate *out, AString *error)
{
    return read_enum(parent, tag, Rate_names(), "Rate", out, error);
}

XMLTree write_element(AString const &tag, Rate value)
{
    return XMLTree(tag, Rate_to_string(value));
}

void write_text(CommandTree &command, Word tag, Rate value)
{
    command.add(tag, Rate_to_string(value));
}

bool read_element(XMLTree const &parent, AString const &tag, ReportType *out, AString *error)
{
    return read_enum(parent, tag, ReportType_names(), "ReportType", out, error);
}

XMLTree write_element(AString const &tag, ReportType value)
{
    return XMLTree(tag, ReportType_to_string(value));
}

void write_text(CommandTree &command, Word tag, ReportType value)
{
    command.add(tag, ReportType_to_string(value));
}

bool read_element(XMLTree const &parent, AString const &tag, ChannelReportType *out, AString *error)
{
    return read_enum(parent, tag, ChannelReportType_names(), "ChannelReportType", out, error);
}

XMLTree write_element(AString const &tag, ChannelReportType value)
{
    return XMLTree(tag, ChannelReportType_to_string(value));
}

void write_text(CommandTree &command, Word tag, ChannelReportType value)
{
    command.add(tag, ChannelReportType_to_string(value));
}

bool read_element(XMLTree const &parent, AString const &tag, SideSet *out, AString *error)
{
    return read_set(parent, tag, Word::Side, out, error);
}

XMLTree write_element(AString const &tag, SideSet const &value)
{
    return write_items(tag, Word::Side, value);
}

void write_text(CommandTree &command, Word tag, SideSet const &value)
{
    command.open(tag);
    for (auto const &one : value)
        command.add(Word::Side, one);
    command.close(tag);
}

bool read_element(XMLTree const &parent, AString const &tag, Cars *out, AString *error)
{
    return read_vector(parent, tag, Word::Car, out, error);
}

XMLTree write_element(AString const &tag, Cars const &value)
{
    return write_items(tag, Word::Car, value);
}

void write_text(CommandTree &command, Word tag, Cars const &value)
{
    command.open(tag);
    for (auto const &one : value)
        command.add(Word::Car, one);
    command.close(tag);
}

bool read_element(XMLTree const &parent, AString const &tag, std::list<AString> *out,
    AString *error)
{
    return read_list(parent, tag, Word::Name, out, error);
}

XMLTree write_element(AString const &tag, std::list<AString> const &value)
{
    return write_items(tag, Word::Name, value);
}

void write_text(CommandTree &command, Word tag, std::list<AString> const &value)
{
    command.open(tag);
    for (auto const &one : value)
        command.add(Word::Name, one);
    command.close(tag);
}

bool read_element(XMLTree const &parent, AString const &tag, Road *out, AString *error)
{
    FieldReader fields(parent, tag, error);
    Road value;
    fields.need(Word::Side, &value.side);
    fields.need(Word::Cars, &value.cars);
    fields.take(Word::SideSet, &value.has_sides, &value.sides);
    if (!fields.ok())
        return false;
    *out = std::move(value);
    return true;
}

XMLTree write_element(AString const &tag, Road const &value)
{
    ElementBuilder element(tag);
    add_fields(element, value);
    return element.take();
}

void write_text(CommandTree &command, Word tag, Road const &value)
{
    command.open(tag);
    add_fields(command, value);
    command.close(tag);
}

bool read_element(XMLTree const &parent, AString const &tag, Car *out, AString *error)
{
    FieldReader fields(parent, tag, error);
    Car value;
    fields.need(Word::Name, &value.name);
    fields.take_speed(Word::Speed, &value.has_speed, &value.speed);
    fields.take(Word::Lane, &value.has_lane, &value.lane);
    fields.flag(Word::Quiet, &value.quiet);
    if (!fields.ok())
        return false;
    *out = std::move(value);
    return true;
}

XMLTree write_element(AString const &tag, Car const &value)
{
    ElementBuilder element(tag);
    add_fields(element, value);
    return element.take();
}

void write_text(CommandTree &command, Word tag, Car const &value)
{
    command.open(tag);
    add_fields(command, value);
    command.close(tag);
}

} // namespace VCTP3
