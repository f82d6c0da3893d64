// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnctl/health_facts.h"

#include "ATarnLib/glint/glint_health.h"

#include <QMetaEnum>
#include <QRegularExpression>
#include <QVariant>

namespace TarnCtl {
namespace {

constexpr auto counter = Exposition::Type::Counter;
constexpr auto gauge = Exposition::Type::Gauge;

constexpr HealthFact all_facts[] = {
    {"state", "tarn_connection_state", gauge,
        "Connection to the server: 1 for the state that it is in.", 1},
    {"state_since_ms", "tarn_connection_state_since_timestamp_seconds", gauge,
        "When the state of the connection began.", 1e-3},
    {"connect_attempts", "tarn_connection_attempts_total", counter, "Connections begun.", 1},
    {"reconnections", "tarn_reconnections_total", counter, "Connections made after the first.", 1},
    {"last_error", "tarn_last_error_info", gauge,
        "Why the last connection could not be made or has ended.", 1},
    {"calls_outstanding", "tarn_calls_outstanding", gauge, "Commands without their last reply.", 1},
    {"blocks_to_send", "tarn_blocks_to_send", gauge, "Blocks of bytes on their way to the socket.",
        1},
    {"input_bytes_waiting", "tarn_input_waiting_bytes", gauge,
        "Bytes received that are not handled yet.", 1},
    {"messages_to_decode", "tarn_messages_to_decode", gauge,
        "Reports at field rate that are not decoded yet.", 1},
    {"results_to_deliver", "tarn_results_to_deliver", gauge,
        "Decoded reports that are not delivered yet.", 1},
    {"messages_received", "tarn_messages_received_total", counter, "Messages received.", 1},
    {"bytes_received", "tarn_received_bytes_total", counter, "Bytes received.", 1},
    {"messages_sent", "tarn_messages_sent_total", counter, "Messages sent.", 1},
    {"bytes_sent", "tarn_sent_bytes_total", counter, "Bytes sent.", 1},
    {"reports_coalesced", "tarn_reports_coalesced_total", counter,
        "Reports overtaken by newer ones before their delivery.", 1},
    {"messages_dropped", "tarn_messages_dropped_total", counter,
        "Messages that were not understood.", 1},
    {"last_drop_reason", "tarn_last_drop_info", gauge,
        "What was wrong with the last message that was not understood.", 1},
    {"longest_stall_ms", "tarn_event_loop_longest_stall_seconds", gauge,
        "Longest time for which this program did not look at its events.", 1e-3},
    {"round_trip_us", "tarn_round_trip_seconds", gauge, "How long the server took to answer.",
        1e-6},
};

QMetaEnum socket_states()
{
    return QMetaEnum::fromType<QAbstractSocket::SocketState>();
}

/// "host_lookup" for `HostLookupState`.
QString state_name(char const *key)
{
    static QRegularExpression const hump(QStringLiteral("(?<=[a-z])([A-Z])"));
    QString name = QLatin1String(key);
    name.chop(int(sizeof("State")) - 1);
    return name.replace(hump, QStringLiteral("_\\1")).toLower();
}

QStringList state_names()
{
    QStringList names;
    for (int i = 0; i < socket_states().keyCount(); ++i)
        names << state_name(socket_states().key(i));
    return names;
}

bool is_state(QVariant const &value)
{
    return value.metaType() == QMetaType::fromType<QAbstractSocket::SocketState>();
}

QString socket_state(QVariant const &value)
{
    return state_name(socket_states().valueToKey(value.value<QAbstractSocket::SocketState>()));
}

bool is_text(QVariant const &value)
{
    return value.metaType() == QMetaType::fromType<QString>();
}

JsonValue json_of_property(QVariant const &value)
{
    if (is_state(value))
        return JsonValue::text(socket_state(value));
    if (is_text(value))
        return JsonValue::text(value.toString());
    return value.toDouble() < 0 ? JsonValue() : JsonValue::number(value.toString());
}

} // namespace

std::span<HealthFact const> health_facts()
{
    return all_facts;
}

JsonValue health_json(GlintHealth const &health)
{
    JsonValue object = JsonValue::object();
    for (HealthFact const &fact : all_facts)
        object.add(fact.property, json_of_property(health.property(fact.property)));
    return object;
}

void write_health(GlintHealth const &health, Exposition *metrics)
{
    for (HealthFact const &fact : all_facts) {
        QVariant const value = health.property(fact.property);
        metrics->family(fact.metric, fact.type, fact.help);
        if (is_state(value))
            metrics->states({}, state_names(), socket_state(value));
        else if (is_text(value) && !value.toString().isEmpty())
            metrics->value({{"text", value.toString()}}, 1);
        else if (!is_text(value) && value.toDouble() >= 0)
            metrics->value({}, value.toDouble() * fact.per_unit);
    }
}

} // namespace TarnCtl
