// SPDX-License-Identifier: Apache-2.0
// Made by vctp3gen from reports.tbl; do not edit.

#include "kestrel/mod/vctp3/tarnlibapi/protocol/api_qt_impl_p.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/report_ahead_p.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/tag_table_p.h"

namespace VCTP3 {

TagTable<ReportDecoder> const &report_decoders()
{
    static constexpr TagTable<ReportDecoder>::Row rows[] = {
        {Word::lamp, ReportDecoder::levels},
        {Word::names, ReportDecoder::timecodes},
    };
    static TagTable<ReportDecoder> const table(rows);
    return table;
}

void ReportReader::report_passed(Side side, AString const &name, AOption<int> const &speed)
{
    hold<&APIQtImpl::report_passed>(side, name, speed);
}

} // namespace VCTP3
