// SPDX-License-Identifier: Apache-2.0
#include "demo/desktop/health_panel.h"

#include "demo/desktop/desk_style.h"

#include <QLocale>

namespace {

constexpr int probe_interval_ms = 1000;

QString traffic_text(quint64 messages, quint64 bytes)
{
    QLocale const locale(QLocale::C);
    return QStringLiteral("%1 messages, %2")
        .arg(locale.toString(messages), locale.formattedDataSize(qint64(bytes)));
}

QString count_text(quint64 count, char const *what)
{
    return QStringLiteral("%1 %2%3").arg(
        QString::number(count), QLatin1String(what), count == 1 ? QString() : QStringLiteral("s"));
}

} // namespace

HealthPanel::HealthPanel(Glint *hub, QWidget *parent)
    : QWidget(parent)
    , health(hub->get_health())
    , rows(DeskStyle::form(this))
    , round_trip(DeskStyle::row(rows, "Round trip"))
    , received(DeskStyle::row(rows, "Received"))
    , sent(DeskStyle::row(rows, "Sent"))
    , waiting(DeskStyle::row(rows, "Commands without an answer"))
    , coalesced(DeskStyle::row(rows, "Results overtaken by newer ones"))
    , dropped(DeskStyle::row(rows, "Messages not understood"))
    , stall(DeskStyle::row(rows, "Longest stall of this program"))
    , connections(DeskStyle::row(rows, "Connections"))
    , last_error(DeskStyle::row(rows, "Last error"))
{
    // The round trip is told of only where somebody asks for it.
    health->set_probe_interval(probe_interval_ms);
    connect(health, &GlintHealth::changed, this, &HealthPanel::show_health);
    show_health();
}

void HealthPanel::show_health()
{
    qint64 const trip = health->round_trip_us();
    round_trip->setText(trip < 0
            ? QString()
            : QString::number(double(trip) / 1000, 'f', 2) + QStringLiteral(" ms"));
    received->setText(traffic_text(health->messages_received(), health->bytes_received()));
    sent->setText(traffic_text(health->messages_sent(), health->bytes_sent()));
    waiting->setText(QString::number(health->calls_outstanding()));
    coalesced->setText(QString::number(health->reports_coalesced()));
    QString const reason = health->last_drop_reason();
    dropped->setText(QString::number(health->messages_dropped())
        + (reason.isEmpty() ? QString() : QStringLiteral(", the last: ") + reason));
    stall->setText(QStringLiteral("%1 ms").arg(health->longest_stall_ms()));
    connections->setText(count_text(health->connect_attempts(), "attempt") + QStringLiteral(", ")
        + count_text(health->reconnections(), "reconnection"));
    last_error->setText(health->last_error());
}
