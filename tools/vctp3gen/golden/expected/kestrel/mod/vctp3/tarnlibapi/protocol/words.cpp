// SPDX-License-Identifier: Apache-2.0
// Made by vctp3gen from all tables; do not edit.

#include "kestrel/mod/vctp3/tarnlibapi/protocol/words_p.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/word_list_p.h"

namespace VCTP3 {

static constexpr std::string_view texts[] = {
    "Car",
    "Cars",
    "ChannelReportType",
    "Code",
    "Count",
    "Lane",
    "Message",
    "Name",
    "Names",
    "Offset",
    "Open",
    "OtherCar",
    "Quiet",
    "Rate",
    "ReportType",
    "Road",
    "Serial",
    "Side",
    "SideSet",
    "Speed",
    "car",
    "cars",
    "cmd",
    "drive",
    "error",
    "get_road",
    "lamp",
    "names",
    "ok",
    "passed",
    "reply",
    "report",
    "road",
    "stop",
    "xid",
};

AString const &word(Word id)
{
    static WordList const list(texts);
    return list[static_cast<unsigned int>(id)];
}

std::string_view word_bytes(Word id)
{
    return texts[static_cast<unsigned int>(id)];
}

} // namespace VCTP3
