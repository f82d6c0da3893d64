// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/glint/glint.h"

#include "ATarnLib/glint/alert_model.h"
#include "ATarnLib/glint/glint_channel_monitor.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/aassert.h"

#include <utility>

using VCTP3::Channel;
using VCTP3::ChannelReportType;
using VCTP3::ReportType;

void Glint::require_melt_notification()
{
    melt_required = true;
    if (is_connected())
        cmd_report_register(ReportType::melt);
}

void Glint::require_export_notification()
{
    export_required = true;
    if (is_connected())
        cmd_report_register(ReportType::export_);
}

AlertModel *Glint::get_alert_model()
{
    AlertModel *published = alert_model;
    if (published)
        return published;
    auto *const made = new AlertModel(this);
    if (!alert_model.compare_exchange_strong(published, made)) {
        delete made;
        return published;
    }
    QMetaObject::invokeMethod(this, &Glint::register_alerts);
    return made;
}

/// Once on each connection: another thread may make the model while a connection is coming up.
void Glint::register_alerts()
{
    if (is_connected() && std::exchange(alerts_connection, connection_count) != connection_count)
        cmd_report_register(ReportType::alerts);
}

void Glint::request_listplay_notification(Channel channel)
{
    unsigned int *users = listplay_users(channel);
    if (!users)
        return;
    ++*users;
    register_listplay(channel);
}

void Glint::request_chaseplay_notification(Channel channel)
{
    unsigned int *users = listplay_users(channel);
    if (!users)
        return;
    ++*users;
    register_chaseplay(channel);
}

void Glint::unrequest_listplay_notification(Channel channel)
{
    if (leave_listplay(channel))
        cmd_channel_report_unregister(channel, ChannelReportType::listplay);
}

void Glint::unrequest_chaseplay_notification(Channel channel)
{
    if (leave_listplay(channel))
        cmd_channel_report_unregister(channel, ChannelReportType::chaseplay);
}

void Glint::slot_connected()
{
    ++connection_count;
    if (melt_required)
        cmd_report_register(ReportType::melt);
    if (export_required)
        cmd_report_register(ReportType::export_);
    if (alert_model)
        register_alerts();
    renew_listplay();
    for (GlintChannelMonitor *monitor : channel_monitors)
        monitor->glint_connected();
}

/// Those who show lists forget what they were playing, as the server reports it anew.
void Glint::renew_listplay()
{
    for (unsigned int i = 0; i < listplay_count; ++i) {
        if (rq_listplay[i] == 0)
            continue;
        auto const channel = static_cast<Channel>(i);
        Q_EMIT report_channel_listplay_unloaded(channel);
        register_listplay(channel);
        Q_EMIT report_channel_chaseplay_unloaded(channel);
        register_chaseplay(channel);
    }
}

void Glint::register_listplay(Channel channel)
{
    cmd_channel_report_register(channel, ChannelReportType::listplay);
}

void Glint::register_chaseplay(Channel channel)
{
    cmd_channel_report_register(channel, ChannelReportType::chaseplay);
}

/// Null for a channel without a counter.
unsigned int *Glint::listplay_users(Channel number)
{
    auto const channel = static_cast<unsigned int>(number);
    if (!A_ASSERT_TEXT(channel < rq_listplay.size(), "channel < countof(rq_listplay)"))
        return nullptr;
    return &rq_listplay[channel];
}

/// Whether the last user of the channel has left.
bool Glint::leave_listplay(Channel channel)
{
    unsigned int *users = listplay_users(channel);
    if (!users || *users == 0)
        return false;
    return --*users == 0;
}
