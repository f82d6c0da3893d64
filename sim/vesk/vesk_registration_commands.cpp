// SPDX-License-Identifier: Apache-2.0
#include "sim/vesk/vesk_registration_commands.h"

VeskRegistrationCommands::VeskRegistrationCommands(VeskWorld *world)
    : model(world)
{
}

void VeskRegistrationCommands::add(quint64 connection, VCTP3::ReportType group)
{
    registered.add(group);
    for (XMLTree const &state : model->group_reports(group))
        model->reporter->report_to(connection, state);
}

void VeskRegistrationCommands::add(
    quint64 connection, VCTP3::Channel channel, VCTP3::ChannelReportType group)
{
    registered.add(channel, group);
    model->reporter->report_to(connection, model->channel_report(channel, group));
}

void VeskRegistrationCommands::on_report_register(
    VeskRequest &request, ReportRegisterArgs const &args)
{
    add(request.connection(), args.report_type);
    request.ok();
}

void VeskRegistrationCommands::on_report_unregister(
    VeskRequest &request, ReportUnregisterArgs const &args)
{
    registered.remove(args.report_type);
    request.ok();
}

void VeskRegistrationCommands::on_reports_register(
    VeskRequest &request, ReportsRegisterArgs const &args)
{
    for (VCTP3::ReportType group : args.report_set)
        add(request.connection(), group);
    request.ok();
}

void VeskRegistrationCommands::on_reports_unregister(
    VeskRequest &request, ReportsUnregisterArgs const &args)
{
    for (VCTP3::ReportType group : args.report_set)
        registered.remove(group);
    request.ok();
}

void VeskRegistrationCommands::on_channel_report_register(
    VeskRequest &request, ChannelReportRegisterArgs const &args)
{
    add(request.connection(), args.channel, args.channel_report_type);
    request.ok();
}

void VeskRegistrationCommands::on_channel_report_unregister(
    VeskRequest &request, ChannelReportUnregisterArgs const &args)
{
    registered.remove(args.channel, args.channel_report_type);
    request.ok();
}

void VeskRegistrationCommands::on_channel_reports_register(
    VeskRequest &request, ChannelReportsRegisterArgs const &args)
{
    for (VCTP3::Channel channel : args.channel_set)
        for (VCTP3::ChannelReportType group : args.channel_report_set)
            add(request.connection(), channel, group);
    request.ok();
}

void VeskRegistrationCommands::on_channel_reports_unregister(
    VeskRequest &request, ChannelReportsUnregisterArgs const &args)
{
    for (VCTP3::Channel channel : args.channel_set)
        for (VCTP3::ChannelReportType group : args.channel_report_set)
            registered.remove(channel, group);
    request.ok();
}
