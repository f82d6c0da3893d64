// SPDX-License-Identifier: Apache-2.0
// Made by vctp3gen from api_qt_impl_p.h.in and reports.tbl; do not edit.
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/protocol/api.h"

namespace VCTP3 {

class APIQt;
struct ReportAhead;

/// The command side of an `APIQt`: hands its bytes and every report on to it.
class APIQtImpl final : public API
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

    void set_receive_debug_hook(AFunction1<XMLTree const &> const &hook)
    {
        has_receive_hook = !hook.is_null();
        API::set_receive_debug_hook(hook);
    }
    /// Calls what `parse` would call for the message that \a report was read from. False if there
    /// is none, and for a hook, which wants to see the message being parsed.
    bool deliver_ahead(ReportAhead const *report);

protected:
    void send(void const *data, unsigned long long size) override;

    void report_passed(Side side, AString const &name, AOption<int> const &speed) override;
    void report_lamp(Side side, bool open) override;
    void report_names(std::list<AString> const &names) override;

private:
    friend class ReportReader;

    bool has_receive_hook = false;
    APIQt *const owner;
};

} // namespace VCTP3
