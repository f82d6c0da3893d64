// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnctl/json_messages.h"
#include "tools/tarnctl/text_form.h"
#include "tools/tarnctl/verb.h"
#include "tools/tarnctl/verbs.h"

namespace TarnCtl {
namespace {

/// What is told of each channel, and its heading for people.
struct ChannelFact
{
    char const *key;
    char const *heading;
};
constexpr ChannelFact channel_facts[] = {
    {"Channel", "Channel"},
    {"ChannelStatus", "Status"},
    {"ClipID", "Clip"},
    {"Speed", "Speed"},
    {"ClipPosition", "Position"},
    {"ClipLength", "Length"},
    {"Loop", "Loop"},
};

/// Asks for the server's facts and registers for the state of the channels. The server tells the
/// state of a channel behind the "ok" of its registration, so that a round trip later all is here.
class StatusVerb : public Verb
{
public:
    bool prepare(CommandLine const &line, QString *error) override
    {
        QString const all = QStringLiteral("A-") + names_of(enumeration("Channel")).last();
        if (!read_channels(line.value("channels", all), &channels, error))
            return false;
        for (char const *question : {"get_computer_name", "get_version_info", "get_video_standard",
                 "get_reference_source", "get_disk_usage"}) {
            if (!add_call(question, {}, error))
                return false;
        }
        return add_call("channel_reports_register",
                   {argument("ChannelSet", json_names(channels)),
                       QStringLiteral("ChannelReportSet="
                                      "[\"status\",\"clipid\",\"speed\",\"timecode\",\"info\"]")},
                   error)
            && add_call("sync", {}, error);
    }

protected:
    void connected() override
    {
        hear_reports(
            &session().api(), this, [this](JsonValue const &report) { got_report(report); });
        Verb::connected();
    }

    void got_reply(JsonValue const &reply) override
    {
        for (JsonValue::Member const &fact : reply.members()) {
            if (fact.key != QLatin1String("reply"))
                server.add(fact.key, fact.value);
        }
    }

    void done() override
    {
        if (output().as_json())
            print_json();
        else
            print_tables();
        Verb::done();
    }

private:
    void got_report(JsonValue const &report)
    {
        QString const name = report.scalar_of(QStringLiteral("Channel"));
        if (!channels.contains(name))
            return;
        JsonValue &channel = states.try_emplace(name, JsonValue::object()).first->second;
        take(report, &channel);
        if (JsonValue const *const info = report.find(QStringLiteral("ChannelInformation")))
            take(*info, &channel);
    }

    static void take(JsonValue const &from, JsonValue *channel)
    {
        for (ChannelFact const &fact : channel_facts) {
            if (JsonValue const *const value = from.find(QLatin1String(fact.key)))
                channel->set(QLatin1String(fact.key), *value);
        }
    }

    bool exists(QString const &channel) const
    {
        auto const found = states.find(channel);
        return found != states.end()
            && found->second.scalar_of(QStringLiteral("ChannelStatus"))
            != QLatin1String("nochannel");
    }

    void print_json()
    {
        JsonValue facts = JsonValue::object();
        facts.add("status", JsonValue::text(QStringLiteral("server")));
        for (JsonValue::Member const &fact : server.members())
            facts.add(fact.key, fact.value);
        output().json_line(facts);
        for (QString const &name : channels) {
            if (!exists(name))
                continue;
            JsonValue line = JsonValue::object();
            line.add("status", JsonValue::text(QStringLiteral("channel")));
            for (ChannelFact const &fact : channel_facts) {
                if (JsonValue const *const value = states[name].find(QLatin1String(fact.key)))
                    line.add(fact.key, *value);
            }
            output().json_line(line);
        }
    }

    void print_tables()
    {
        TextTable facts;
        facts.add({QStringLiteral("Server"), fact("ComputerName")});
        facts.add({QStringLiteral("Version"), fact("SVNVersion") + u' ' + fact("SVNPath")});
        facts.add({QStringLiteral("Video"), fact("VideoStandard")});
        facts.add({QStringLiteral("Reference"), fact("ReferenceSource")});
        facts.add({QStringLiteral("Disk"),
            gigabytes("AvailableDiskSpace") + QStringLiteral(" GB free of ")
                + gigabytes("TotalDiskSpace") + QStringLiteral(" GB")});
        output().text(facts.text() + u'\n');

        TextTable table;
        QStringList headings;
        for (ChannelFact const &column : channel_facts)
            headings << QLatin1String(column.heading);
        table.add(headings);
        for (QString const &name : channels) {
            if (exists(name))
                table.add(cells(states[name]));
        }
        output().text(table.text());
    }

    static QStringList cells(JsonValue const &channel)
    {
        QStringList row;
        for (ChannelFact const &fact : channel_facts) {
            JsonValue const *const value = channel.find(QLatin1String(fact.key));
            row << (value && !value->scalar().isEmpty() ? plain_text(*value) : QStringLiteral("-"));
        }
        return row;
    }

    QString fact(char const *key) const { return visible(server.scalar_of(QLatin1String(key))); }

    QString gigabytes(char const *key) const
    {
        return QString::number(fact(key).toDouble() / 1e9, 'f', 1);
    }

    QStringList channels;
    JsonValue server = JsonValue::object();
    std::map<QString, JsonValue> states;
};

} // namespace

std::unique_ptr<Verb> make_status(CommandLine const &)
{
    return std::make_unique<StatusVerb>();
}

} // namespace TarnCtl
