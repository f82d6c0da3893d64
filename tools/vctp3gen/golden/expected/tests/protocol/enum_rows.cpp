// SPDX-License-Identifier: Apache-2.0
// Made by vctp3gen from enums.tbl; do not edit.

#include "tests/protocol/record_rows.h"

using namespace VCTP3;

static EnumRow const rows[] = {
    {"Side", &check_enum<Side, Side_to_string, string_to_Side, valid_Side>,
        static_cast<int>(Side::left), 0, 2, "left"},
    {"Side", &check_enum<Side, Side_to_string, string_to_Side, valid_Side>,
        static_cast<int>(Side::right), 1, 2, "right"},
    {"Rate", &check_enum<Rate, Rate_to_string, string_to_Rate, valid_Rate>,
        static_cast<int>(Rate::v59_94), 0, 3, "59_94"},
    {"Rate", &check_enum<Rate, Rate_to_string, string_to_Rate, valid_Rate>,
        static_cast<int>(Rate::auto_), 1, 3, "auto"},
    {"Rate", &check_enum<Rate, Rate_to_string, string_to_Rate, valid_Rate>,
        static_cast<int>(Rate::v25), 2, 3, "25"},
    {"ReportType", &check_enum<ReportType, ReportType_to_string, string_to_ReportType, valid_ReportType>,
        static_cast<int>(ReportType::cars), 0, 1, "cars"},
    {"ChannelReportType", &check_enum<ChannelReportType, ChannelReportType_to_string, string_to_ChannelReportType, valid_ChannelReportType>,
        static_cast<int>(ChannelReportType::lamps), 0, 1, "lamps"},
};

std::span<EnumRow const> enum_rows()
{
    return rows;
}
