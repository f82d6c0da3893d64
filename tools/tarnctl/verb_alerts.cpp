// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/glint/alert_model.h"
#include "ATarnLib/glint/glint.h"
#include "tools/tarnctl/json_records.h"
#include "tools/tarnctl/snapshot_verb.h"
#include "tools/tarnctl/verbs.h"
#include "tools/tarnctl/vocabulary_info.h"

namespace TarnCtl {
namespace {

/// All alerts that the server tells of, those that are over too, by name.
class AlertsVerb : public SnapshotVerb
{
protected:
    bool needs_configuration() const override { return false; }

    void begin() override { hub().get_alert_model(); }

    void told() override
    {
        // The model takes reports on a thread of its own; what came before this is taken then.
        QMetaObject::invokeMethod(
            hub().get_alert_model(), [] {}, Qt::BlockingQueuedConnection);
        for (QString const &name : hub().get_alert_model()->names()) {
            if (AOption<VCTP3::Alert> const alert = hub().get_alert_model()->get(name)->get())
                alerts.push_back(*alert);
        }
        SnapshotVerb::told();
    }

    void print_json() override
    {
        for (VCTP3::Alert const &alert : alerts) {
            JsonValue line = JsonValue::object();
            line.add("alert", json_of(alert.alert_name));
            line.add("level", json_of(alert.alerting_level));
            line.add("priority", json_of(alert.alerting_priority));
            line.add("description", json_of(alert.alert_name_description));
            line.add("value", json_of(alert.alert_value_description));
            output().json_line(line);
        }
    }

    void write(Exposition *metrics) override
    {
        QStringList const levels = names_of(enumeration("AlertingLevel"));
        metrics->family("tarn_alert_level", Exposition::Type::Gauge,
            "Severity of an alert: 1 for the state that it is in.");
        for (VCTP3::Alert const &alert : alerts)
            metrics->states({{"alert", QString(alert.alert_name)}}, levels,
                json_of(alert.alerting_level).scalar());
        metrics->family("tarn_alert_info", Exposition::Type::Gauge, "What an alert says.");
        for (VCTP3::Alert const &alert : alerts)
            metrics->value({{"alert", QString(alert.alert_name)},
                               {"priority", json_of(alert.alerting_priority).scalar()},
                               {"description", QString(alert.alert_name_description)},
                               {"value", QString(alert.alert_value_description)}},
                1);
    }

private:
    std::vector<VCTP3::Alert> alerts;
};

} // namespace

std::unique_ptr<Verb> make_alerts(CommandLine const &)
{
    return std::make_unique<AlertsVerb>();
}

} // namespace TarnCtl
