// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/glint/glint_channel_monitor.h"

#include "ATarnLib/glint/glint.h"

using VCTP3::ChannelReportType;

/// What belongs to a signal.
struct GlintChannelMonitor::Row
{
    QMetaMethod method;
    UpdateMethod update;
    void (GlintChannelMonitor::*emit_value)();
    ChannelReportType report;
};

GlintChannelMonitor::GlintChannelMonitor(Glint *owner, unsigned int number)
    : QObject(owner)
    , hub(owner)
    , channel_number(static_cast<VCTP3::Channel>(number))
{
    setObjectName(QStringLiteral("GlintChannelMonitor %1").arg(number));
    qRegisterMetaType<UpdateMethod>("GlintChannelMonitor::UpdateMethod");
    connect_relay();
}

auto GlintChannelMonitor::rows() -> Row const (&)[signal_count]
{
    using Monitor = GlintChannelMonitor;
    static Row const table[signal_count] = {
        {QMetaMethod::fromSignal(&Monitor::report_status), &Monitor::update_sig_status,
            &Monitor::emit_status, ChannelReportType::status},
        {QMetaMethod::fromSignal(&Monitor::report_clipid), &Monitor::update_sig_clipid,
            &Monitor::emit_clipid, ChannelReportType::clipid},
        {QMetaMethod::fromSignal(&Monitor::report_speed), &Monitor::update_sig_speed,
            &Monitor::emit_speed, ChannelReportType::speed},
        {QMetaMethod::fromSignal(&Monitor::report_timecodes), &Monitor::update_sig_timecodes,
            &Monitor::emit_timecodes, ChannelReportType::timecode},
        {QMetaMethod::fromSignal(&Monitor::report_clip_position),
            &Monitor::update_sig_clip_position, &Monitor::emit_clip_position,
            ChannelReportType::timecode},
        {QMetaMethod::fromSignal(&Monitor::report_display_timecode),
            &Monitor::update_sig_display_timecode, &Monitor::emit_display_timecode,
            ChannelReportType::timecode},
        {QMetaMethod::fromSignal(&Monitor::report_input_timecode),
            &Monitor::update_sig_input_timecode, &Monitor::emit_input_timecode,
            ChannelReportType::timecode},
        {QMetaMethod::fromSignal(&Monitor::report_information), &Monitor::update_sig_information,
            &Monitor::emit_information, ChannelReportType::info},
        {QMetaMethod::fromSignal(&Monitor::report_playback_mode),
            &Monitor::update_sig_playback_mode, &Monitor::emit_playback_mode,
            ChannelReportType::info},
        {QMetaMethod::fromSignal(&Monitor::report_peak), &Monitor::update_sig_peak,
            &Monitor::emit_peak, ChannelReportType::peak},
        {QMetaMethod::fromSignal(&Monitor::report_aux_status), &Monitor::update_sig_aux_status,
            &Monitor::emit_aux_status, ChannelReportType::aux_audio_status},
        {QMetaMethod::fromSignal(&Monitor::report_aux_clipid), &Monitor::update_sig_aux_clipid,
            &Monitor::emit_aux_clipid, ChannelReportType::aux_audio_clipid},
        {QMetaMethod::fromSignal(&Monitor::report_aux_speed), &Monitor::update_sig_aux_speed,
            &Monitor::emit_aux_speed, ChannelReportType::aux_audio_speed},
        {QMetaMethod::fromSignal(&Monitor::report_aux_position), &Monitor::update_sig_aux_position,
            &Monitor::emit_aux_position, ChannelReportType::aux_audio_timecode},
        {QMetaMethod::fromSignal(&Monitor::report_aux_information),
            &Monitor::update_sig_aux_information, &Monitor::emit_aux_information,
            ChannelReportType::aux_audio_info},
        {QMetaMethod::fromSignal(&Monitor::report_aux_peak), &Monitor::update_sig_aux_peak,
            &Monitor::emit_aux_peak, ChannelReportType::aux_audio_peak},
        {QMetaMethod::fromSignal(&Monitor::report_peak_hold), &Monitor::update_sig_peak_hold,
            &Monitor::emit_peak_hold, ChannelReportType::peak},
        {QMetaMethod::fromSignal(&Monitor::report_aux_peak_hold),
            &Monitor::update_sig_aux_peak_hold, &Monitor::emit_aux_peak_hold,
            ChannelReportType::aux_audio_peak},
    };
    return table;
}

QMetaMethod const &GlintChannelMonitor::meta_method(Signal signal)
{
    return rows()[static_cast<std::size_t>(signal)].method;
}

void GlintChannelMonitor::connectNotify(QMetaMethod const &signal)
{
    connect_disconnect_notify(true, signal);
}

void GlintChannelMonitor::disconnectNotify(QMetaMethod const &signal)
{
    // Who disconnects everybody from everything has taken the relay away too.
    if (!signal.isValid())
        connect_relay();
    connect_disconnect_notify(false, signal);
}

void GlintChannelMonitor::connect_disconnect_notify(bool connect, QMetaMethod const &signal)
{
    listeners.notify(connect, signal, rows());
}

/// Once, however often it is called.
void GlintChannelMonitor::connect_relay()
{
    connect(this, &GlintChannelMonitor::relay_connect_disconnect_notify2, this,
        &GlintChannelMonitor::connect_disconnect_notify2,
        static_cast<Qt::ConnectionType>(Qt::QueuedConnection | Qt::UniqueConnection));
}

void GlintChannelMonitor::connect_disconnect_notify2(bool connect, UpdateMethod const &method)
{
    (this->*method)(connect);
}

void GlintChannelMonitor::process_disconnected_signals()
{
    listeners.process_disconnected();
}

void GlintChannelMonitor::update_sig(Signal signal, bool emit_now)
{
    auto const index = static_cast<std::size_t>(signal);
    Row const &row = rows()[index];
    bool const listened = isSignalConnected(row.method);
    if (listened != sig[index]) {
        sig[index] = listened;
        update_reg(row.report);
    }
    if (emit_now)
        (this->*row.emit_value)();
}

void GlintChannelMonitor::update_reg(ChannelReportType report)
{
    auto const index = static_cast<std::size_t>(report);
    bool const needed = is_needed(report);
    if (needed == reg[index])
        return;
    reg[index] = needed;
    if (!hub->is_connected())
        return;
    if (needed)
        hub->cmd_channel_report_register(channel_number, report);
    else
        hub->cmd_channel_report_unregister(channel_number, report);
}

bool GlintChannelMonitor::is_needed(ChannelReportType report) const
{
    for (std::size_t i = 0; i < signal_count; ++i)
        if (sig[i] && rows()[i].report == report)
            return true;
    return false;
}
