// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/glint/channel_monitor.h"

#include "ATarnLib/glint/glint.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/aassert.h"

#include <algorithm>

using VCTP3::Channel;
using VCTP3::ChannelReportType;

/// A signal, the report it needs, and the slots that see to that.
struct ChannelMonitor::Row
{
    QMetaMethod signal;
    ChannelReportType report;
    char const *register_slot;
    char const *unregister_slot;
};

auto ChannelMonitor::rows() -> Row const (&)[16]
{
    static Row const table[16] = {
        {QMetaMethod::fromSignal(&ChannelMonitor::sig_status), ChannelReportType::status,
            SLOT(register_status()), SLOT(unregister_status())},
        {QMetaMethod::fromSignal(&ChannelMonitor::sig_clipid), ChannelReportType::clipid,
            SLOT(register_clipid()), SLOT(unregister_clipid())},
        {QMetaMethod::fromSignal(&ChannelMonitor::sig_speed), ChannelReportType::speed,
            SLOT(register_speed()), SLOT(unregister_speed())},
        {QMetaMethod::fromSignal(&ChannelMonitor::sig_timecodes), ChannelReportType::timecode,
            SLOT(register_timecode()), SLOT(unregister_timecode())},
        {QMetaMethod::fromSignal(&ChannelMonitor::sig_clip_position), ChannelReportType::timecode,
            SLOT(register_timecode()), SLOT(unregister_timecode())},
        {QMetaMethod::fromSignal(&ChannelMonitor::sig_channel_information), ChannelReportType::info,
            SLOT(register_info()), SLOT(unregister_info())},
        {QMetaMethod::fromSignal(&ChannelMonitor::sig_peak), ChannelReportType::peak,
            SLOT(register_peak()), SLOT(unregister_peak())},
        {QMetaMethod::fromSignal(&ChannelMonitor::sig_aux_status),
            ChannelReportType::aux_audio_status, SLOT(register_aux_audio_status()),
            SLOT(unregister_aux_audio_status())},
        {QMetaMethod::fromSignal(&ChannelMonitor::sig_aux_clipid),
            ChannelReportType::aux_audio_clipid, SLOT(register_aux_audio_clipid()),
            SLOT(unregister_aux_audio_clipid())},
        {QMetaMethod::fromSignal(&ChannelMonitor::sig_aux_speed),
            ChannelReportType::aux_audio_speed, SLOT(register_aux_audio_speed()),
            SLOT(unregister_aux_audio_speed())},
        {QMetaMethod::fromSignal(&ChannelMonitor::sig_aux_position),
            ChannelReportType::aux_audio_timecode, SLOT(register_aux_audio_timecode()),
            SLOT(unregister_aux_audio_timecode())},
        {QMetaMethod::fromSignal(&ChannelMonitor::sig_aux_information),
            ChannelReportType::aux_audio_info, SLOT(register_aux_audio_info()),
            SLOT(unregister_aux_audio_info())},
        {QMetaMethod::fromSignal(&ChannelMonitor::sig_aux_peak), ChannelReportType::aux_audio_peak,
            SLOT(register_aux_audio_peak()), SLOT(unregister_aux_audio_peak())},
        {QMetaMethod::fromSignal(&ChannelMonitor::sig_display_timecode),
            ChannelReportType::timecode, SLOT(register_timecode()), SLOT(unregister_timecode())},
        {QMetaMethod::fromSignal(&ChannelMonitor::sig_input_timecode), ChannelReportType::timecode,
            SLOT(register_timecode()), SLOT(unregister_timecode())},
        {QMetaMethod::fromSignal(&ChannelMonitor::sig_playback_mode), ChannelReportType::info,
            SLOT(register_info()), SLOT(unregister_info())},
    };
    return table;
}

ChannelMonitor::ChannelMonitor(QObject *parent)
    : ASignalMonitor(parent)
{
}

ChannelMonitor::~ChannelMonitor()
{
    // Those who listen still are connected here, and hear nothing any more.
    for (int report = 0; report < 12; ++report)
        if (registered.test(std::size_t(report)))
            give_up(static_cast<ChannelReportType>(report));
}

void ChannelMonitor::config(Glint *hub, Channel number)
{
    config_api(hub);
    config_channel(number);
}

void ChannelMonitor::config_api(Glint *hub)
{
    if (api && api == hub)
        return;
    if (!A_ASSERT_TEXT(!has_api, "api == 0"))
        return;
    api = hub;
    has_api = hub != nullptr;
    check_config_done();
}

void ChannelMonitor::config_channel(Channel number)
{
    if (channel) {
        A_ASSERT_TEXT(*channel == number, "channel.get() == achannel");
        return;
    }
    channel = number;
    setObjectName(QStringLiteral("ChannelMonitor%1").arg(static_cast<unsigned int>(number)));
    check_config_done();
}

bool ChannelMonitor::channel_is(Channel number) const
{
    return channel && *channel == number;
}

void ChannelMonitor::timecode_use_add()
{
    if (timecode_uses++ == 0)
        QMetaObject::invokeMethod(this, &ChannelMonitor::register_timecode);
}

void ChannelMonitor::timecode_use_remove()
{
    timecode_uses.decrease(0);
}

void ChannelMonitor::check_config_done()
{
    if (!api || !channel)
        return;
    connect_api();
    add_monitors();
    if (api->is_connected())
        connected();
}

void ChannelMonitor::connect_api()
{
    connect(api, &Glint::connected, this, &ChannelMonitor::connected);
    connect(api, &Glint::disconnected, this, &ChannelMonitor::disconnected);
    connect(api, &Glint::report_channel_status, this, &ChannelMonitor::report_channel_status);
    connect(api, &Glint::report_channel_clipid, this, &ChannelMonitor::report_channel_clipid);
    connect(api, &Glint::report_channel_speed, this, &ChannelMonitor::report_channel_speed);
    connect(api, &Glint::report_channel_timecode, this, &ChannelMonitor::report_channel_timecode);
    connect(api, &Glint::report_channel_info, this, &ChannelMonitor::report_channel_info);
    connect(api, &Glint::report_channel_peak, this, &ChannelMonitor::report_channel_peak);
    connect(api, &Glint::report_channel_aux_audio_status, this,
        &ChannelMonitor::report_channel_aux_audio_status);
    connect(api, &Glint::report_channel_aux_audio_clipid, this,
        &ChannelMonitor::report_channel_aux_audio_clipid);
    connect(api, &Glint::report_channel_aux_audio_speed, this,
        &ChannelMonitor::report_channel_aux_audio_speed);
    connect(api, &Glint::report_channel_aux_audio_timecode, this,
        &ChannelMonitor::report_channel_aux_audio_timecode);
    connect(api, &Glint::report_channel_aux_audio_info, this,
        &ChannelMonitor::report_channel_aux_audio_info);
    connect(api, &Glint::report_channel_aux_audio_peak, this,
        &ChannelMonitor::report_channel_aux_audio_peak);
}

void ChannelMonitor::add_monitors()
{
    for (Row const &row : rows())
        add_sig_monitor(norm(row.signal).constData(), row.register_slot, row.unregister_slot);
}

void ChannelMonitor::connected()
{
    lost = false;
    for (int report = 0; report < 12; ++report)
        if (has_receiver(static_cast<ChannelReportType>(report)))
            register_report(static_cast<ChannelReportType>(report));
}

void ChannelMonitor::disconnected()
{
    lost = true;
    registered.reset();
    clear_all_values();
}

void ChannelMonitor::register_timecode()
{
    register_report(ChannelReportType::timecode);
}

bool ChannelMonitor::needs(QByteArray const &signature, ChannelReportType report)
{
    return std::any_of(std::begin(rows()), std::end(rows()),
        [&](Row const &row) { return row.report == report && norm(row.signal) == signature; });
}

bool ChannelMonitor::has_receiver(ChannelReportType report) const
{
    if (report == ChannelReportType::timecode && timecode_uses > 0)
        return true;
    return std::any_of(std::begin(rows()), std::end(rows()),
        [&](Row const &row) { return row.report == report && isSignalConnected(row.signal); });
}

void ChannelMonitor::register_report(ChannelReportType report)
{
    if (api && channel && api->is_connected()) {
        registered.set(std::size_t(report));
        api->cmd_channel_report_register(*channel, report);
    } else if (report == ChannelReportType::timecode) {
        reemit_timecode();
    }
}

/// A report may have other listeners, by another of its signals.
void ChannelMonitor::unregister_report(ChannelReportType report)
{
    if (!has_receiver(report))
        give_up(report);
}

void ChannelMonitor::give_up(ChannelReportType report)
{
    registered.reset(std::size_t(report));
    if (api && channel && api->is_connected())
        api->cmd_channel_report_unregister(*channel, report);
}
