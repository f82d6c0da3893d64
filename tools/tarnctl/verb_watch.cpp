// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnctl/verbs.h"
#include "tools/tarnctl/watching_verb.h"

namespace TarnCtl {
namespace {

class WatchVerb : public WatchingVerb
{
public:
    bool prepare(CommandLine const &line, QString *error) override
    {
        QString const all = QStringLiteral("A-") + names_of(enumeration("Channel")).last();
        QStringList channels;
        return prepare_watching(line, error)
            && read_channels(line.value("channels", all), &channels, error)
            && read_reports(line, error) && register_for(channels, error);
    }

private:
    /// What --reports names, as groups to register.
    bool read_reports(CommandLine const &line, QString *error)
    {
        QStringList const server_wide = names_of(enumeration("ReportType"));
        QStringList const per_channel = names_of(enumeration("ChannelReportType"));
        if (!line.has("reports")) {
            groups = server_wide;
            channel_groups = per_channel;
            return true;
        }
        for (QString const &name : line.value("reports").split(u',')) {
            if (server_wide.contains(name)) {
                groups << name;
            } else if (per_channel.contains(name)) {
                channel_groups << name;
            } else if (!add_group_of(name)) {
                *error = unknown_name("report", name, report_names(), "watch");
                return false;
            }
        }
        return true;
    }

    /// The group of one report. Some come without a registration.
    bool add_group_of(QString const &report)
    {
        for (ReportInfo const &info : all_reports()) {
            if (report != QLatin1String(info.name))
                continue;
            if (*info.registration)
                (info.per_channel ? channel_groups : groups) << QLatin1String(info.registration);
            return true;
        }
        return false;
    }

    bool register_for(QStringList const &channels, QString *error)
    {
        if (!groups.isEmpty()
            && !add_call("reports_register", {argument("ReportSet", json_names(groups))}, error))
            return false;
        return channel_groups.isEmpty()
            || add_call("channel_reports_register",
                {argument("ChannelSet", json_names(channels)),
                    argument("ChannelReportSet", json_names(channel_groups))},
                error);
    }

    QStringList groups;
    QStringList channel_groups;
};

} // namespace

std::unique_ptr<Verb> make_watch(CommandLine const &)
{
    return std::make_unique<WatchVerb>();
}

} // namespace TarnCtl
