// SPDX-License-Identifier: Apache-2.0
// Made by vctp3gen from replies.tbl and reports.tbl; do not edit.

#include "kestrel/mod/vctp3/tarnlibapi/protocol/api_parser.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/field_reader_p.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/tag_table_p.h"

namespace VCTP3 {

struct APIParser::Dispatch
{
    static void reply_ok(APIParser &parser, XMLTree const &, AString const &xid)
    {
        parser.reply_ok(xid);
    }

    static void reply_error(APIParser &parser, XMLTree const &message, AString const &xid)
    {
        AString error;
        FieldReader fields(message, &error);
        AString message;
        fields.need(Word::Message, &message);
        unsigned int code = 0;
        fields.need(Word::Code, &code);
        if (fields.ok())
            parser.reply_error(xid, message, code);
        else
            parser.store_error(xid, error);
    }

    static void reply_car(APIParser &parser, XMLTree const &message, AString const &xid)
    {
        AString error;
        FieldReader fields(message, &error);
        Car car;
        fields.need(Word::Car, &car);
        if (fields.ok())
            parser.reply_car(xid, car);
        else
            parser.store_error(xid, error);
    }

    static void reply_road(APIParser &parser, XMLTree const &message, AString const &xid)
    {
        AString error;
        FieldReader fields(message, &error);
        Road road;
        fields.need(Word::Road, &road);
        unsigned long long serial = 0;
        fields.need(Word::Serial, &serial);
        if (fields.ok())
            parser.reply_road(xid, road, serial);
        else
            parser.store_error(xid, error);
    }

    static void report_passed(APIParser &parser, XMLTree const &message, AString const &xid)
    {
        AString error;
        FieldReader fields(message, &error);
        Side side = {};
        fields.need(Word::Side, &side);
        AString name;
        fields.need(Word::Name, &name);
        AOption<int> speed;
        fields.attempt(Word::Speed, &speed);
        if (fields.ok())
            parser.report_passed(side, name, speed);
        else
            parser.store_error(xid, error);
    }

    static void report_lamp(APIParser &parser, XMLTree const &message, AString const &xid)
    {
        AString error;
        FieldReader fields(message, &error);
        Side side = {};
        fields.need(Word::Side, &side);
        bool open = false;
        fields.need(Word::Open, &open);
        if (fields.ok())
            parser.report_lamp(side, open);
        else
            parser.store_error(xid, error);
    }

    static void report_names(APIParser &parser, XMLTree const &message, AString const &xid)
    {
        AString error;
        FieldReader fields(message, &error);
        std::list<AString> names;
        fields.need(Word::Names, &names);
        if (fields.ok())
            parser.report_names(names);
        else
            parser.store_error(xid, error);
    }
};

APIParser::MessageTable const &APIParser::reply_table()
{
    static constexpr MessageTable::Row rows[] = {
        {Word::ok, &Dispatch::reply_ok},
        {Word::error, &Dispatch::reply_error},
        {Word::car, &Dispatch::reply_car},
        {Word::road, &Dispatch::reply_road},
    };
    static MessageTable const table(rows);
    return table;
}

APIParser::MessageTable const &APIParser::report_table()
{
    static constexpr MessageTable::Row rows[] = {
        {Word::passed, &Dispatch::report_passed},
        {Word::lamp, &Dispatch::report_lamp},
        {Word::names, &Dispatch::report_names},
    };
    static MessageTable const table(rows);
    return table;
}

void APIParser::reply_ok(AString const &) {}
void APIParser::reply_error(AString const &, AString const &, unsigned int) {}
void APIParser::reply_car(AString const &, Car const &) {}
void APIParser::reply_road(AString const &, Road const &, unsigned long long) {}
void APIParser::report_passed(Side, AString const &, AOption<int> const &) {}
void APIParser::report_lamp(Side, bool) {}
void APIParser::report_names(std::list<AString> const &) {}

} // namespace VCTP3
