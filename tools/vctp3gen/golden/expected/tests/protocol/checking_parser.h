// SPDX-License-Identifier: Apache-2.0
// Made by vctp3gen from replies.tbl and reports.tbl; do not edit.

#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/protocol/api_parser.h"
#include "tests/protocol/samples.h"

#include <QStringList>

namespace VCTP3 {

/// Notes each message, and whether its values are the samples.
class CheckingParser : public APIParser
{
public:
    QStringList seen;
    bool options = true; // whether tried fields are to be there

protected:
    void reply_ok(AString const &xid) override
    {
        note("reply_ok", xid == AString::l1("7"));
    }
    void reply_error(AString const &xid, AString const &message, unsigned int code) override
    {
        note("reply_error", xid == AString::l1("7") && message == sample_Message() && code == sample_Code());
    }
    void reply_car(AString const &xid, Car const &car) override
    {
        note("reply_car", xid == AString::l1("7") && car == sample_Car());
    }
    void reply_road(AString const &xid, Road const &road, unsigned long long serial) override
    {
        note("reply_road", xid == AString::l1("7") && road == sample_Road() && serial == sample_Serial());
    }
    void report_passed(Side side, AString const &name, AOption<int> const &speed) override
    {
        note("report_passed", side == sample_Side() && name == sample_Name() && speed.has_value() == options && (!options || *speed == sample_Speed()));
    }
    void report_lamp(Side side, bool open) override
    {
        note("report_lamp", side == sample_Side() && open == sample_Open());
    }
    void report_names(std::list<AString> const &names) override
    {
        note("report_names", names == sample_Names());
    }

private:
    void note(char const *name, bool right)
    {
        seen.append(QLatin1String(right ? "" : "wrong ") + QLatin1String(name));
    }
};

} // namespace VCTP3
