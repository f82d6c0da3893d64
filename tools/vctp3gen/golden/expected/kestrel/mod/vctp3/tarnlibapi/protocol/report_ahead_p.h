// SPDX-License-Identifier: Apache-2.0
// Made by vctp3gen from report_ahead_p.h.in and reports.tbl; do not edit.
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/protocol/api_parser.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/xml_parse_engine2.h"

#include <memory>
#include <tuple>
#include <utility>

namespace VCTP3 {

class APIQtImpl;

/// Who reads a report: the parser, or for what comes at field rate a worker of its own.
enum class ReportDecoder
{
    parser,
    timecodes,
    levels
};

/// Those of reports that are not the parser's.
TagTable<ReportDecoder> const &report_decoders();
/// The parser, too, for a message that holds anything but one report.
ReportDecoder decoder_of(XMLTree const &message);

/// A report that was read by the thread that has parsed its message: its memory is at hand there,
/// and still far from the thread that delivers.
struct ReportAhead : XMLParseEngine2::Prepared
{
    /// Calls what `APIParser::parse` would call for the message.
    virtual void deliver(APIQtImpl &to) const = 0;
};

/// Reads reports as `APIParser::parse` does, and holds their values instead of handing them on.
/// Thread: one at a time.
class ReportReader final : private APIParser
{
public:
    /// Null for a reply, for a report at field rate, and for a message that is not as it should
    /// be: `parse` tells why.
    std::unique_ptr<ReportAhead const> read(XMLTree const &message);

private:
    template <auto report, typename... Values> struct Held final : ReportAhead
    {
        explicit Held(Values const &...given)
            : values(given...)
        {
        }
        void deliver(APIQtImpl &to) const override
        {
            std::apply([&to](Values const &...each) { (to.*report)(each...); }, values);
        }
        std::tuple<Values...> const values;
    };

    template <auto report, typename... Values> void hold(Values const &...values)
    {
        made = std::make_unique<Held<report, Values...>>(values...);
    }

    void report_passed(Side side, AString const &name, AOption<int> const &speed) override;

    std::unique_ptr<ReportAhead const> made;
};

} // namespace VCTP3
