// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnctl/watching_verb.h"

#include "tools/tarnctl/json_messages.h"

#include <utility>

namespace TarnCtl {

bool WatchingVerb::prepare_watching(CommandLine const &line, QString *error)
{
    reconnect = line.has("reconnect");
    if (line.has("for") && !read_seconds("for", line.value("for"), &longest_ms, error))
        return false;
    if (!line.has("count"))
        return true;
    bool is_number = false;
    most_reports = line.value("count").toULongLong(&is_number);
    if (is_number && most_reports > 0)
        return true;
    *error = QStringLiteral("bad value '%1' for --count: expected a number above 0")
                 .arg(line.value("count"));
    return false;
}

void WatchingVerb::connected()
{
    if (!begun)
        begin();
    Verb::connected();
}

void WatchingVerb::begin()
{
    begun = true;
    if (reconnect)
        session().set_reconnect();
    hear_reports(&session().api(), this, [this](JsonValue const &report) { got_report(report); });
    end_when_unwanted();
}

void WatchingVerb::done()
{
    session().set_patient();
    if (!std::exchange(registered, true))
        end_after(longest_ms);
}

void WatchingVerb::got_report(JsonValue const &report)
{
    if (session().is_over())
        return;
    output().report(report);
    if (++reports == most_reports)
        Verb::done();
}

} // namespace TarnCtl
