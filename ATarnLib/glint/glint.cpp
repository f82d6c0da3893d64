// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/glint/glint.h"

#include "ATarnLib/config/cf_model.h"
#include "ATarnLib/glint/alert_model.h"
#include "ATarnLib/glint/cf_channel_config.h"
#include "ATarnLib/glint/glint_audio_levels.h"
#include "ATarnLib/glint/glint_channel_monitor.h"
#include "ATarnLib/glint/glint_health.h"
#include "ATarnLib/glint/glint_output_monitor.h"
#include "ATarnLib/glint/glint_timecode.h"
#include "ATarnLib/glint/us_model.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/aassert.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/atimer.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/computer_name.h"

namespace {

constexpr int connect_interval_ms = 200;
/// How long a report may stay registered when its last listener has gone.
constexpr int disconnect_interval_ms = 10000;

} // namespace

Glint::Glint(bool local, QObject *parent)
    : APIQt(parent)
{
    make_workers();
    setObjectName(QStringLiteral("Glint"));
    make_models(local);

    auto *connect_timer = new ATimer(this);
    connect(connect_timer, &ATimer::timeout, this, &Glint::stay_connected);
    connect_timer->start(connect_interval_ms);
    connect(this, &Glint::indirect_send, this, &Glint::slot_indirect_send, Qt::QueuedConnection);

    make_monitors();
    connect_reports();
    field_rate_is_watched = false; // but for the hub's own
    connect(this, &Glint::connected, this, &Glint::slot_connected);
    health = new GlintHealth(this);
}

Glint::Glint(QString const &server, QObject *parent)
    : Glint(server == VCTP3::getcomputername_qs(), parent)
{
    set_server(server);
}

Glint::~Glint()
{
    delete levels_worker;
    delete timecode_worker;
    delete alert_model;
}

void Glint::make_models(bool local)
{
    cf_model = CFModel::create(local, this);
    us_model = USModel::create(local, this);
    channel_config = new CFChannelConfig(cf_model, us_model, this);
}

CFModel *Glint::get_cf_model() const
{
    return cf_model;
}

USModel *Glint::get_us_model() const
{
    return us_model;
}

void Glint::make_monitors()
{
    for (unsigned int i = 0; i < channel_count; ++i)
        channel_monitors[i] = new GlintChannelMonitor(this, i);
    for (unsigned int i = 0; i < channel_count; ++i)
        output_monitors[i] = new GlintOutputMonitor(this, i);
    auto *disconnect_timer = new ATimer(this);
    connect(disconnect_timer, &ATimer::timeout, this, &Glint::process_disconnected_signals);
    disconnect_timer->start(disconnect_interval_ms);
}

/// The outputs first: what they give up counts for the channels in the same pass.
void Glint::process_disconnected_signals()
{
    for (GlintOutputMonitor *monitor : output_monitors)
        monitor->process_disconnected_signals();
    for (GlintChannelMonitor *monitor : channel_monitors)
        monitor->process_disconnected_signals();
}

GlintChannelMonitor *Glint::get_channel_monitor(unsigned int i) const
{
    if (!A_ASSERT_TEXT(i < channel_monitors.size(), "i < channel_monitors.size()"))
        return channel_monitors[0];
    return channel_monitors[i];
}

GlintOutputMonitor *Glint::get_output_monitor(unsigned int i) const
{
    if (!A_ASSERT_TEXT(i < output_monitors.size(), "i < output_monitors.size()"))
        return output_monitors[0];
    return output_monitors[i];
}

void Glint::set_server(QString const &server)
{
    if (server_name_set && server_name == server)
        return;
    server_name_set = true;
    server_name = server;
    server_address_set = false;
}

void Glint::set_server(QHostAddress const &server)
{
    if (server_address_set && server_address == server)
        return;
    if (socket_state() != QAbstractSocket::UnconnectedState)
        disconnect_socket_receivers();
    server_address_set = true;
    server_address = server;
    server_name_set = false;
    stay_connected();
}

void Glint::set_server_localhost()
{
    set_server(QHostAddress(QHostAddress::LocalHost));
    stay_connected();
}

void Glint::stay_connected()
{
    if (socket_state() != QAbstractSocket::UnconnectedState)
        return;
    if (server_name_set)
        connect_to_server(server_name);
    else if (server_address_set)
        connect_to_server(server_address);
}

void Glint::send(void const *data, unsigned long long size)
{
    if (!threading) {
        APIQt::send(data, size);
        return;
    }
    AProtect<std::deque<unsigned int>>::Lock(streams_to_send)->push_back(stream_of_message());
    Q_EMIT indirect_send(QByteArray(static_cast<char const *>(data), static_cast<qsizetype>(size)));
}

void Glint::slot_indirect_send(QByteArray const &bytes)
{
    {
        AProtect<std::deque<unsigned int>>::Lock streams(streams_to_send);
        if (!streams->empty()) {
            bool const stale = streams->front() != present_stream();
            streams->pop_front();
            if (stale)
                return;
        }
    }
    APIQt::send(bytes.constData(), static_cast<unsigned long long>(bytes.size()));
}
