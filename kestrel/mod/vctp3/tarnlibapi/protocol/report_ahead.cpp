// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/protocol/report_ahead_p.h"

#include "kestrel/mod/vctp3/tarnlibapi/protocol/tag_table_p.h"

#include <utility>

namespace VCTP3 {

ReportDecoder decoder_of(XMLTree const &message)
{
    if (!message.has_tag(word(Word::report)))
        return ReportDecoder::parser;
    auto child = message.children().begin();
    if (child == XMLChildren::const_iterator())
        return ReportDecoder::parser;
    ReportDecoder const *decoder = report_decoders().find_of(*child);
    return decoder && ++child == XMLChildren::const_iterator() ? *decoder : ReportDecoder::parser;
}

std::unique_ptr<ReportAhead const> ReportReader::read(XMLTree const &message)
{
    if (message.has_tag(word(Word::report)) && decoder_of(message) == ReportDecoder::parser)
        parse(message);
    return std::move(made);
}

} // namespace VCTP3
