// SPDX-License-Identifier: Apache-2.0
// Made by vctp3gen from all tables; do not edit.

#include "kestrel/mod/vctp3/tarnlibapi/base/aassert.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/record_xml.h"
#include "tools/tarnctl/calls.h"
#include "tools/tarnctl/vocabulary_info.h"

#include <string_view>

namespace TarnCtl {

namespace {

template <typename T> bool check(XMLTree const &element, AString *error)
{
    T value {};
    return VCTP3::read_element(element, element.get_tag(), &value, error);
}

bool check_speed(XMLTree const &element, AString *error)
{
    int value = 0;
    return VCTP3::read_speed(element, element.get_tag(), &value, error);
}

extern TypeInfo const type_Side;
extern TypeInfo const type_Rate;
extern TypeInfo const type_ReportType;
extern TypeInfo const type_ChannelReportType;
extern TypeInfo const type_Road;
extern TypeInfo const type_Car;
extern TypeInfo const type_SideSet;
extern TypeInfo const type_Cars;
extern TypeInfo const type_Names;
extern TypeInfo const type_text;
extern TypeInfo const type_uint;
extern TypeInfo const type_int;
extern TypeInfo const type_uint64;
extern TypeInfo const type_uchar;
extern TypeInfo const type_speed;
extern TypeInfo const type_bool;
extern TypeInfo const type_flag;

constexpr char const *names_Side[] = {
    "left",
    "right",
};

constexpr char const *names_Rate[] = {
    "59_94",
    "auto",
    "25",
};

constexpr char const *names_ReportType[] = {
    "cars",
};

constexpr char const *names_ChannelReportType[] = {
    "lamps",
};

constexpr FieldInfo fields_Road[] = {
    {"Side", &type_Side, false},
    {"Cars", &type_Cars, false},
    {"SideSet", &type_SideSet, true},
};

constexpr FieldInfo fields_Car[] = {
    {"Name", &type_text, false},
    {"Speed", &type_speed, true},
    {"Lane", &type_uchar, true},
    {"Quiet", &type_flag, true},
};

constexpr FieldInfo item_SideSet {"Side", &type_Side, false};

constexpr FieldInfo item_Cars {"Car", &type_Car, false};

constexpr FieldInfo item_Names {"Name", &type_text, false};

TypeInfo const type_Side {TypeKind::Enum, "Side", names_Side, {}, nullptr, 0, &check<VCTP3::Side>};
TypeInfo const type_Rate {TypeKind::Enum, "Rate", names_Rate, {}, nullptr, 0, &check<VCTP3::Rate>};
TypeInfo const type_ReportType {TypeKind::Enum, "ReportType", names_ReportType, {}, nullptr, 0,
    &check<VCTP3::ReportType>};
TypeInfo const type_ChannelReportType {TypeKind::Enum, "ChannelReportType",
    names_ChannelReportType, {}, nullptr, 0, &check<VCTP3::ChannelReportType>};
TypeInfo const type_Road {TypeKind::Record, "Road", {}, fields_Road, nullptr, 0,
    &check<VCTP3::Road>};
TypeInfo const type_Car {TypeKind::Record, "Car", {}, fields_Car, nullptr, 0, &check<VCTP3::Car>};
TypeInfo const type_SideSet {TypeKind::Set, "SideSet", {}, {}, &item_SideSet, 2,
    &check<VCTP3::SideSet>};
TypeInfo const type_Cars {TypeKind::Vector, "Cars", {}, {}, &item_Cars, 3, &check<VCTP3::Cars>};
TypeInfo const type_Names {TypeKind::List, "Names", {}, {}, &item_Names, 0,
    &check<std::list<AString>>};
TypeInfo const type_text {TypeKind::Text, "text", {}, {}, nullptr, 0, &check<AString>};
TypeInfo const type_uint {TypeKind::UInt, "uint", {}, {}, nullptr, 0, &check<unsigned int>};
TypeInfo const type_int {TypeKind::Int, "int", {}, {}, nullptr, 0, &check<int>};
TypeInfo const type_uint64 {TypeKind::UInt64, "uint64", {}, {}, nullptr, 0,
    &check<unsigned long long>};
TypeInfo const type_uchar {TypeKind::UChar, "uchar", {}, {}, nullptr, 0, &check<unsigned char>};
TypeInfo const type_speed {TypeKind::Speed, "speed", {}, {}, nullptr, 0, &check_speed};
TypeInfo const type_bool {TypeKind::Bool, "bool", {}, {}, nullptr, 0, &check<bool>};
TypeInfo const type_flag {TypeKind::Flag, "flag", {}, {}, nullptr, 0, &check<bool>};

constexpr FieldInfo parameters_drive[] = {
    {"OtherCar", &type_Car, false},
    {"Offset", &type_int, true},
    {"Rate", &type_Rate, true},
    {"Quiet", &type_flag, true},
};

constexpr FieldInfo parameters_cars[] = {
    {"Count", &type_uint, false},
};

constexpr FieldInfo parameters_get_road[] = {
    {"SideSet", &type_SideSet, false},
    {"Speed", &type_speed, true},
};

constexpr CommandInfo commands[] = {
    {"stop", "Driving", {}, &call_stop},
    {"drive", "Driving", parameters_drive, &call_drive},
    {"cars", "Asking", parameters_cars, &call_cars},
    {"get_road", "Asking", parameters_get_road, &call_get_road},
};

constexpr ReportInfo reports[] = {
    {"passed", "cars", false},
    {"lamp", "lamps", true},
    {"names", "", false},
};

constexpr TypeInfo const *enumerations[] = {
    &type_Side,
    &type_Rate,
    &type_ReportType,
    &type_ChannelReportType,
};

} // namespace

std::span<CommandInfo const> all_commands()
{
    return commands;
}

std::span<ReportInfo const> all_reports()
{
    return reports;
}

TypeInfo const &enumeration(char const *name)
{
    for (TypeInfo const *type : enumerations) {
        if (std::string_view(type->name) == name)
            return *type;
    }
    A_ASSERT_TEXT(false, "unknown enumeration");
    return *enumerations[0];
}

} // namespace TarnCtl
