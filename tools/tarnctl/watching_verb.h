// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tools/tarnctl/verb.h"

namespace TarnCtl {

/// A verb that registers for reports by its commands and then prints each report, registered or
/// not, until it has had enough, is interrupted, or loses the connection.
class WatchingVerb : public Verb
{
    Q_OBJECT

protected:
    /// Reads --for, --count and --reconnect.
    bool prepare_watching(CommandLine const &line, QString *error);

    void connected() override;
    void got_reply(JsonValue const &) override { }
    void done() override;

private:
    void begin();
    void got_report(JsonValue const &report);

    /// 0 without a limit.
    int longest_ms = 0;
    quint64 most_reports = 0;
    bool reconnect = false;
    bool begun = false;
    bool registered = false;
    quint64 reports = 0;
};

} // namespace TarnCtl
