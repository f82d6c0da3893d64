// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/glint/glint.h"
#include "ATarnLib/glint/glint_channel_monitor.h"
#include "tools/tarnctl/hub_verb.h"
#include "tools/tarnctl/json_records.h"
#include "tools/tarnctl/monitor_signals.h"
#include "tools/tarnctl/text_form.h"
#include "tools/tarnctl/verbs.h"

namespace TarnCtl {
namespace {

// The longest names, and two blanks.
constexpr int channel_column = 4;
constexpr int signal_column = 18;

/// Connecting to a signal is all that it does: the hub registers what that needs, and renews it
/// with each connection. A monitor emits its defaults until the server has told, so nothing is
/// printed before that; then each value once as it is, and from there on each emission.
class MonitorVerb : public HubVerb
{
public:
    bool prepare(CommandLine const &line, QString *error) override
    {
        if (line.has("for") && !read_seconds("for", line.value("for"), &longest_ms, error))
            return false;
        QStringList names;
        if (line.has("channels") && !read_channels(line.value("channels"), &names, error))
            return false;
        for (QString const &name : names) {
            VCTP3::Channel channel = {};
            if (A_ASSERT(VCTP3::string_to_Channel(AString(name), &channel)))
                channels.push_back(channel);
        }
        return HubVerb::prepare(line, error)
            && read_signals(line.value("signals", signal_names().join(u',')), &wanted, error);
    }

protected:
    bool needs_configuration() const override { return channels.empty(); }

    void begin() override
    {
        session().set_reconnect();
        end_when_unwanted();
        if (channels.empty())
            channels = server_channels();
        for (VCTP3::Channel const channel : channels) {
            for (ChannelSignal const *signal : wanted)
                signal->listen(hub().toMonitor(channel), this,
                    [this, channel, signal](
                        JsonValue const &value) { emitted(channel, *signal, value); });
        }
    }

    void told() override
    {
        session().set_patient();
        printing = true;
        for (VCTP3::Channel const channel : channels) {
            for (ChannelSignal const *signal : wanted)
                (hub().toMonitor(channel)->*signal->repeat)();
        }
        end_after(longest_ms);
    }

private:
    void emitted(VCTP3::Channel channel, ChannelSignal const &signal, JsonValue const &value)
    {
        if (!printing || session().is_over())
            return;
        JsonValue line = JsonValue::object();
        line.add("channel", json_of(channel));
        line.add("signal", JsonValue::text(QLatin1String(signal.name)));
        line.add("value", value);
        if (output().as_json())
            output().json_line(line);
        else
            output().text(line.scalar_of(QStringLiteral("channel")).leftJustified(channel_column)
                + line.scalar_of(QStringLiteral("signal")).leftJustified(signal_column)
                + value_text(value));
    }

    std::vector<VCTP3::Channel> channels;
    std::vector<ChannelSignal const *> wanted;
    /// 0 without a limit.
    int longest_ms = 0;
    bool printing = false;
};

} // namespace

std::unique_ptr<Verb> make_monitor(CommandLine const &)
{
    return std::make_unique<MonitorVerb>();
}

} // namespace TarnCtl
