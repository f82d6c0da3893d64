// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/glint/cf_channel_config.h"
#include "ATarnLib/glint/glint.h"
#include "ATarnLib/glint/glint_output_monitor.h"
#include "tools/tarnctl/json_records.h"
#include "tools/tarnctl/monitor_signals.h"
#include "tools/tarnctl/snapshot_verb.h"
#include "tools/tarnctl/verbs.h"
#include "tools/tarnctl/vocabulary_info.h"

namespace TarnCtl {
namespace {

/// An output that a channel feeds. People count outputs and angles from 1.
struct FedOutput
{
    unsigned int number;
    ChannelCF::OutputSource source;
    /// What its monitor has told last, by the names of the signals.
    JsonValue values;

    QString name() const { return QString::number(number + 1); }
    QString scalar_of(char const *signal) const { return values.scalar_of(QLatin1String(signal)); }
};

/// 1 is the natural speed.
double speed_factor(QString const &wire)
{
    int speed = 0;
    return AString(wire).to_speed(&speed) ? speed / 65536.0 : 0;
}

double plain_number(QString const &digits)
{
    return digits.toDouble();
}

/// Values that are numbers.
struct OutputMetric
{
    char const *signal;
    char const *name;
    char const *help;
    double (*read)(QString const &scalar);
};
constexpr OutputMetric output_metrics[] = {
    {"speed", "tarn_output_speed_ratio", "How fast an output plays; 1 is natural.", &speed_factor},
    {"clip_position", "tarn_output_clip_position_fields", "Fields from the start of the clip.",
        &plain_number},
    {"aux_position", "tarn_output_aux_position_fields",
        "Fields from the start of the clip of the auxiliary audio.", &plain_number},
};

class OutputsVerb : public SnapshotVerb
{
protected:
    void begin() override
    {
        for (unsigned int i = 0; i < Glint::channel_count; ++i) {
            if (auto const source = hub().get_channel_config()->GetOutputSource(i))
                outputs.push_back({i, *source, JsonValue::object()});
        }
        for (FedOutput &output : outputs)
            follow(&output);
    }

    void print_json() override
    {
        for (FedOutput const &fed : outputs) {
            JsonValue line = JsonValue::object();
            line.add("output", json_of(fed.number + 1));
            line.add("channel", json_of(VCTP3::Channel(fed.source.channel)));
            line.add("angle", json_of(fed.source.angle + 1));
            line.add("key", json_of(fed.source.key));
            for (JsonValue::Member const &value : fed.values.members())
                line.add(value.key, value.value);
            output().json_line(line);
        }
    }

    void write(Exposition *metrics) override
    {
        write_sources(metrics);
        metrics->family("tarn_output_status", Exposition::Type::Gauge,
            "What an output shows: 1 for the state that it is in.");
        for (FedOutput const &fed : outputs)
            metrics->states({{"output", fed.name()}}, names_of(enumeration("ChannelStatus")),
                fed.scalar_of("status"));
        for (OutputMetric const &metric : output_metrics) {
            metrics->family(metric.name, Exposition::Type::Gauge, metric.help);
            for (FedOutput const &fed : outputs)
                metrics->value({{"output", fed.name()}}, metric.read(fed.scalar_of(metric.signal)));
        }
    }

private:
    void follow(FedOutput *fed)
    {
        GlintOutputMonitor *const monitor = hub().get_output_monitor(fed->number);
        // It looks at the configuration once in a while; here that is known to be complete.
        monitor->cf_changed();
        for (OutputSignal const &signal : output_signals())
            signal.listen(monitor, this, [fed, &signal](JsonValue const &value) {
                fed->values.set(QLatin1String(signal.name), value);
            });
    }

    void write_sources(Exposition *metrics)
    {
        metrics->family("tarn_output_info", Exposition::Type::Gauge, "What feeds an output.");
        for (FedOutput const &fed : outputs)
            metrics->value({{"output", fed.name()},
                               {"channel", json_of(VCTP3::Channel(fed.source.channel)).scalar()},
                               {"angle", QString::number(fed.source.angle + 1)},
                               {"key", QLatin1String(fed.source.key ? "true" : "false")},
                               {"clip", fed.scalar_of("clipid")}},
                1);
    }

    std::vector<FedOutput> outputs;
};

} // namespace

std::unique_ptr<Verb> make_outputs(CommandLine const &)
{
    return std::make_unique<OutputsVerb>();
}

} // namespace TarnCtl
