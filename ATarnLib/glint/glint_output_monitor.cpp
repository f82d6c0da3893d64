// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/glint/glint_output_monitor.h"

#include "ATarnLib/glint/cf_channel_config.h"
#include "ATarnLib/glint/glint.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/atimer.h"

/// What belongs to a signal.
struct GlintOutputMonitor::Row
{
    QMetaMethod method;
    UpdateMethod update;
    void (GlintOutputMonitor::*manage_connect)(bool on);
    void (GlintOutputMonitor::*emit_value)();
};

GlintOutputMonitor::GlintOutputMonitor(Glint *owner, unsigned int number)
    : QObject(owner)
    , hub(owner)
    , output_number(number)
{
    setObjectName(QStringLiteral("GlintOutputMonitor %1").arg(number));
    qRegisterMetaType<UpdateMethod>("GlintOutputMonitor::UpdateMethod");
    connect_relay();
    // However many items change, the configuration is asked once.
    auto *config_timer = new ATimer(true, this);
    connect(hub->get_channel_config(), &CFChannelConfig::changed, config_timer,
        qOverload<>(&ATimer::start));
    connect(config_timer, &ATimer::timeout, this, &GlintOutputMonitor::cf_changed);
    config_timer->start();
}

auto GlintOutputMonitor::rows() -> Row const (&)[signal_count]
{
    using Monitor = GlintOutputMonitor;
    static Row const table[signal_count] = {
        {QMetaMethod::fromSignal(&Monitor::report_status), &Monitor::update_sig_status,
            &Monitor::manage_connect_status, &Monitor::emit_status},
        {QMetaMethod::fromSignal(&Monitor::report_clipid), &Monitor::update_sig_clipid,
            &Monitor::manage_connect_clipid, &Monitor::emit_clipid},
        {QMetaMethod::fromSignal(&Monitor::report_speed), &Monitor::update_sig_speed,
            &Monitor::manage_connect_speed, &Monitor::emit_speed},
        {QMetaMethod::fromSignal(&Monitor::report_timecodes), &Monitor::update_sig_timecodes,
            &Monitor::manage_connect_timecodes, &Monitor::emit_timecodes},
        {QMetaMethod::fromSignal(&Monitor::report_clip_position),
            &Monitor::update_sig_clip_position, &Monitor::manage_connect_clip_position,
            &Monitor::emit_clip_position},
        {QMetaMethod::fromSignal(&Monitor::report_aux_position), &Monitor::update_sig_aux_position,
            &Monitor::manage_connect_aux_position, &Monitor::emit_aux_position},
        {QMetaMethod::fromSignal(&Monitor::report_display_timecode),
            &Monitor::update_sig_display_timecode, &Monitor::manage_connect_display_timecode,
            &Monitor::emit_display_timecode},
        {QMetaMethod::fromSignal(&Monitor::report_input_timecode),
            &Monitor::update_sig_input_timecode, &Monitor::manage_connect_input_timecode,
            &Monitor::emit_input_timecode},
        {QMetaMethod::fromSignal(&Monitor::report_information), &Monitor::update_sig_information,
            &Monitor::manage_connect_information, &Monitor::emit_information},
        {QMetaMethod::fromSignal(&Monitor::report_playback_mode),
            &Monitor::update_sig_playback_mode, &Monitor::manage_connect_playback_mode,
            &Monitor::emit_playback_mode},
    };
    return table;
}

QMetaMethod const &GlintOutputMonitor::meta_method(Signal signal)
{
    return rows()[static_cast<std::size_t>(signal)].method;
}

void GlintOutputMonitor::cf_changed()
{
    auto const feed = hub->get_channel_config()->GetOutputSource(output_number);
    if (feed)
        set_channel_monitor(hub->get_channel_monitor(feed->channel));
    else if (source)
        set_channel_monitor(nullptr);
}

void GlintOutputMonitor::set_channel_monitor(GlintChannelMonitor *monitor)
{
    if (monitor == source)
        return;
    bool const had_source = source != nullptr;
    if (source)
        disconnect(source, nullptr, this, nullptr);
    clear_all();
    source = monitor;
    if (!source)
        status = VCTP3::ChannelStatus::nochannel;
    if (had_source)
        emit_all();
    for (std::size_t i = 0; source && i < signal_count; ++i)
        if (sig[i])
            (this->*rows()[i].manage_connect)(true);
}

void GlintOutputMonitor::emit_all()
{
    for (Row const &row : rows())
        (this->*row.emit_value)();
}

void GlintOutputMonitor::connectNotify(QMetaMethod const &signal)
{
    connect_disconnect_notify(true, signal);
}

void GlintOutputMonitor::disconnectNotify(QMetaMethod const &signal)
{
    // Who disconnects everybody from everything has taken the relay away too.
    if (!signal.isValid())
        connect_relay();
    connect_disconnect_notify(false, signal);
}

void GlintOutputMonitor::connect_disconnect_notify(bool connect, QMetaMethod const &signal)
{
    listeners.notify(connect, signal, rows());
}

/// Once, however often it is called.
void GlintOutputMonitor::connect_relay()
{
    connect(this, &GlintOutputMonitor::relay_connect_disconnect_notify2, this,
        &GlintOutputMonitor::connect_disconnect_notify2,
        static_cast<Qt::ConnectionType>(Qt::QueuedConnection | Qt::UniqueConnection));
}

void GlintOutputMonitor::connect_disconnect_notify2(bool connect, UpdateMethod const &method)
{
    (this->*method)(connect);
}

void GlintOutputMonitor::process_disconnected_signals()
{
    listeners.process_disconnected();
}

void GlintOutputMonitor::update_sig(Signal signal, bool emit_now)
{
    auto const index = static_cast<std::size_t>(signal);
    Row const &row = rows()[index];
    bool const listened = isSignalConnected(row.method);
    if (listened != sig[index]) {
        sig[index] = listened;
        (this->*row.manage_connect)(listened);
    }
    if (emit_now)
        (this->*row.emit_value)();
}
