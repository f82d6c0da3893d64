// SPDX-License-Identifier: Apache-2.0
#include "sim/vesk/vesk_world.h"

#include "sim/vesk/reports.h"
#include "sim/vesk/vesk_settings.h"
#include "sim/vesk/vesk_storm.h"

VeskWorld::VeskWorld(VeskReporter *told, VCTP3::VideoStandard standard, VeskBoard board)
    : reporter(told)
    , clock(standard)
    , clips(told, &clock)
    , channels(&clips, &clock)
    , configuration(told, vesk_settings(clock.standard(), board))
    , dictionary(told)
    , metadata(told)
    , lists(told)
    , chases(told)
    , facts(told, &clock)
    , alerts(told)
{
    vesk_define_user_settings(&dictionary, board);
}

void VeskWorld::advance_field()
{
    clock.advance();
    channels.advance_field();
    clips.advance_field();
    facts.advance_field();
    alerts.watch_temperature(facts.temperature());
    alerts.watch_disk(clips.total_disk_space(), clips.available_disk_space());
}

std::vector<XMLTree> VeskWorld::group_reports(VCTP3::ReportType group) const
{
    switch (group) {
    case VCTP3::ReportType::disk_space: {
        VCTP3::DiskSpaceChange change;
        change.total_disk_space = clips.total_disk_space();
        change.available_disk_space = clips.available_disk_space();
        return {VeskReports::disk_space_changed(change)};
    }
    case VCTP3::ReportType::temperature:
        return {facts.temperature_report()};
    case VCTP3::ReportType::ltc_input:
        return {facts.ltc_report()};
    case VCTP3::ReportType::alerts:
        return alerts.reports();
    default:
        return {};
    }
}

XMLTree VeskWorld::channel_report(VCTP3::Channel channel, VCTP3::ChannelReportType group) const
{
    switch (group) {
    case VCTP3::ChannelReportType::listplay:
        return VeskReports::channel_listplay_unloaded(channel);
    case VCTP3::ChannelReportType::chaseplay:
        return VeskReports::channel_chaseplay_unloaded(channel);
    default:
        return storm ? VeskStorm::report(channel, group, clock) : channels.report(channel, group);
    }
}

void VeskWorld::connection_ended(quint64 connection)
{
    channels.connection_ended(connection);
    dictionary.connection_ended(connection);
    metadata.connection_ended(connection);
}

void VeskWorld::restart()
{
    configuration.restart();
    auto standard = clock.standard();
    VCTP3::string_to_VideoStandard(
        configuration.effective(AString::l1("VideoStandard")), &standard);
    clock = VeskFieldClock(standard);
    clips.restart();
    channels.restart();
}
