// SPDX-License-Identifier: Apache-2.0
// Made by vctp3gen from api_qt_impl_p.h.in and reports.tbl; do not edit.
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/protocol/api.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/xml_parse_engine2.h"

namespace VCTP3 {

class APIQt;

/// The command side of an `APIQt`: hands its bytes and every report on to it.
class APIQtImpl : public API
{
public:
    explicit APIQtImpl(APIQt *of)
        : owner(of)
    {
    }

    using API::begin_stream;
    using API::present_stream;
    using API::send;
    using API::stream_of_message;

    /// A hook wants to see each message being parsed.
    void set_receive_debug_hook(AFunction1<XMLTree const &> const &hook)
    {
        has_receive_hook = !hook.is_null();
        API::set_receive_debug_hook(hook);
    }
    /// Calls what `parse` would call for the message that \a prepared was made of. False if there
    /// is nothing to call, or if a hook is set.
    bool deliver_ahead(XMLParseEngine2::Prepared const *prepared);

protected:
    void send(void const *data, unsigned long long size) override;

    void report_passed(Side side, AString const &name, AOption<int> const &speed) override;
    void report_lamp(Side side, bool open) override;
    void report_names(std::list<AString> const &names) override;

private:
    bool has_receive_hook = false;
    APIQt *const owner;
};

} // namespace VCTP3
