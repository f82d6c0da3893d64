// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "sim/vesk/vesk_handler.h"
#include "sim/vesk/vesk_registrations.h"
#include "sim/vesk/vesk_request.h"
#include "sim/vesk/vesk_world.h"

/// What a connection wants to be told. What it registers for anew is told to it at once, as it
/// stands, behind the "ok".
class VeskRegistrationCommands : public virtual VeskHandler
{
public:
    explicit VeskRegistrationCommands(VeskWorld *world);

    void on_report_register(VeskRequest &request, ReportRegisterArgs const &args) override;
    void on_report_unregister(VeskRequest &request, ReportUnregisterArgs const &args) override;
    void on_reports_register(VeskRequest &request, ReportsRegisterArgs const &args) override;
    void on_reports_unregister(VeskRequest &request, ReportsUnregisterArgs const &args) override;
    void on_channel_report_register(
        VeskRequest &request, ChannelReportRegisterArgs const &args) override;
    void on_channel_report_unregister(
        VeskRequest &request, ChannelReportUnregisterArgs const &args) override;
    void on_channel_reports_register(
        VeskRequest &request, ChannelReportsRegisterArgs const &args) override;
    void on_channel_reports_unregister(
        VeskRequest &request, ChannelReportsUnregisterArgs const &args) override;

    VeskRegistrations const &registrations() const { return registered; }

private:
    void add(quint64 connection, VCTP3::ReportType group);
    void add(quint64 connection, VCTP3::Channel channel, VCTP3::ChannelReportType group);

    VeskWorld *model;
    VeskRegistrations registered;
};
