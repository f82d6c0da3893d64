// SPDX-License-Identifier: Apache-2.0
// Made by vctp3gen from all tables; do not edit.

#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/astring.h"

#include <string_view>

namespace VCTP3 {

/// Every tag of the protocol.
enum class Word : unsigned short {
    Car,
    Cars,
    ChannelReportType,
    Code,
    Count,
    Lane,
    Message,
    Name,
    Names,
    Offset,
    Open,
    OtherCar,
    Quiet,
    Rate,
    ReportType,
    Road,
    Serial,
    Side,
    SideSet,
    Speed,
    car,
    cars,
    cmd,
    drive,
    error,
    get_road,
    lamp,
    names,
    ok,
    passed,
    reply,
    report,
    road,
    stop,
    xid,
};

/// The text of a word, one string shared by the whole process.
TARN_EXPORT AString const &word(Word id);
/// The same as bytes.
std::string_view word_bytes(Word id);

/// Replies and, behind them, reports by their number in the tables.
enum class MessageId : unsigned char {
    reply_ok,
    reply_error,
    reply_car,
    reply_road,
    report_passed,
    report_lamp,
    report_names,
};

} // namespace VCTP3
