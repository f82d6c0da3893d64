// SPDX-License-Identifier: Apache-2.0
// Made by vctp3gen from enums.tbl; do not edit.

#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/protocol/enum_string.h"

namespace VCTP3 {

/// A side of the road.
enum class Side : int { left, right };
/// Side: the wire name; the empty string for a value out of range.
TARN_EXPORT AString Side_to_string(Side value);
/// Side: exact, case-sensitive. Unknown: false, *value untouched. value may be null.
TARN_EXPORT bool string_to_Side(AString const &name, Side *value);
/// Side: whether \a value is one of its 2 values.
TARN_EXPORT bool valid_Side(int value);
/// Side: the table behind these functions.
TARN_EXPORT EnumString const &Side_names();

/// How often.
enum class Rate : int { v59_94, auto_, v25 };
/// Rate: the wire name; the empty string for a value out of range.
TARN_EXPORT AString Rate_to_string(Rate value);
/// Rate: exact, case-sensitive. Unknown: false, *value untouched. value may be null.
TARN_EXPORT bool string_to_Rate(AString const &name, Rate *value);
/// Rate: whether \a value is one of its 3 values.
TARN_EXPORT bool valid_Rate(int value);
/// Rate: the table behind these functions.
TARN_EXPORT EnumString const &Rate_names();

/// Global groups.
enum class ReportType : int { cars };
/// ReportType: the wire name; the empty string for a value out of range.
TARN_EXPORT AString ReportType_to_string(ReportType value);
/// ReportType: exact, case-sensitive. Unknown: false, *value untouched. value may be null.
TARN_EXPORT bool string_to_ReportType(AString const &name, ReportType *value);
/// ReportType: whether \a value is one of its 1 values.
TARN_EXPORT bool valid_ReportType(int value);
/// ReportType: the table behind these functions.
TARN_EXPORT EnumString const &ReportType_names();

/// Groups of a channel.
enum class ChannelReportType : int { lamps };
/// ChannelReportType: the wire name; the empty string for a value out of range.
TARN_EXPORT AString ChannelReportType_to_string(ChannelReportType value);
/// ChannelReportType: exact, case-sensitive. Unknown: false, *value untouched. value may be null.
TARN_EXPORT bool string_to_ChannelReportType(AString const &name, ChannelReportType *value);
/// ChannelReportType: whether \a value is one of its 1 values.
TARN_EXPORT bool valid_ChannelReportType(int value);
/// ChannelReportType: the table behind these functions.
TARN_EXPORT EnumString const &ChannelReportType_names();

} // namespace VCTP3
