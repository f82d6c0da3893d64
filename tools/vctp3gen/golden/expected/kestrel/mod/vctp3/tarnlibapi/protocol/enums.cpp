// SPDX-License-Identifier: Apache-2.0
// Made by vctp3gen from enums.tbl; do not edit.

#include "kestrel/mod/vctp3/tarnlibapi/protocol/enums.h"

#include <iterator>

namespace VCTP3 {

EnumString const &Side_names()
{
    static constexpr EnumString::ByLatin1 rows[] = {{0, "left"}, {1, "right"}};
    static EnumString const table(rows, std::size(rows), -1, AString());
    return table;
}

AString Side_to_string(Side value)
{
    return Side_names().to_name(static_cast<int>(value));
}

bool string_to_Side(AString const &name, Side *value)
{
    int found = 0;
    if (!Side_names().valid_name(name, &found))
        return false;
    if (value)
        *value = static_cast<Side>(found);
    return true;
}

bool valid_Side(int value)
{
    return value >= 0 && value < 2;
}

EnumString const &Rate_names()
{
    static constexpr EnumString::ByLatin1 rows[] = {{0, "59_94"}, {1, "auto"}, {2, "25"}};
    static EnumString const table(rows, std::size(rows), -1, AString());
    return table;
}

AString Rate_to_string(Rate value)
{
    return Rate_names().to_name(static_cast<int>(value));
}

bool string_to_Rate(AString const &name, Rate *value)
{
    int found = 0;
    if (!Rate_names().valid_name(name, &found))
        return false;
    if (value)
        *value = static_cast<Rate>(found);
    return true;
}

bool valid_Rate(int value)
{
    return value >= 0 && value < 3;
}

EnumString const &ReportType_names()
{
    static constexpr EnumString::ByLatin1 rows[] = {{0, "cars"}};
    static EnumString const table(rows, std::size(rows), -1, AString());
    return table;
}

AString ReportType_to_string(ReportType value)
{
    return ReportType_names().to_name(static_cast<int>(value));
}

bool string_to_ReportType(AString const &name, ReportType *value)
{
    int found = 0;
    if (!ReportType_names().valid_name(name, &found))
        return false;
    if (value)
        *value = static_cast<ReportType>(found);
    return true;
}

bool valid_ReportType(int value)
{
    return value >= 0 && value < 1;
}

EnumString const &ChannelReportType_names()
{
    static constexpr EnumString::ByLatin1 rows[] = {{0, "lamps"}};
    static EnumString const table(rows, std::size(rows), -1, AString());
    return table;
}

AString ChannelReportType_to_string(ChannelReportType value)
{
    return ChannelReportType_names().to_name(static_cast<int>(value));
}

bool string_to_ChannelReportType(AString const &name, ChannelReportType *value)
{
    int found = 0;
    if (!ChannelReportType_names().valid_name(name, &found))
        return false;
    if (value)
        *value = static_cast<ChannelReportType>(found);
    return true;
}

bool valid_ChannelReportType(int value)
{
    return value >= 0 && value < 1;
}

} // namespace VCTP3
