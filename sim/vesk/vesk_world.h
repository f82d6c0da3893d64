// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "sim/vesk/vesk_alerts.h"
#include "sim/vesk/vesk_board.h"
#include "sim/vesk/vesk_channels.h"
#include "sim/vesk/vesk_clips.h"
#include "sim/vesk/vesk_configuration.h"
#include "sim/vesk/vesk_dictionary.h"
#include "sim/vesk/vesk_facts.h"
#include "sim/vesk/vesk_field_clock.h"
#include "sim/vesk/vesk_lists.h"
#include "sim/vesk/vesk_log.h"
#include "sim/vesk/vesk_metadata.h"
#include "sim/vesk/vesk_reporter.h"

/// All that a server knows and keeps, whoever is connected. Each part tells its changes to the
/// reporter.
/// Thread: the server's.
struct VeskWorld
{
    /// A server without clips. \a told must outlive the world.
    VeskWorld(VeskReporter *told, VCTP3::VideoStandard standard, VeskBoard board);
    VeskWorld(VeskWorld const &) = delete;
    VeskWorld &operator=(VeskWorld const &) = delete;

    void advance_field();
    /// What those who register for a group are told at once; nothing for groups that tell of
    /// events.
    std::vector<XMLTree> group_reports(VCTP3::ReportType group) const;
    /// The channel as it stands.
    XMLTree channel_report(VCTP3::Channel channel, VCTP3::ChannelReportType group) const;
    /// Gives up what \a connection alone held: watches, owned keys, stolen channels.
    void connection_ended(quint64 connection);
    /// What a restart of the machine does to a world that is kept: the saved configuration comes
    /// into effect, the video standard too, and the channels are empty.
    void restart();

    VeskReporter *reporter;
    /// Whether the channels report a load instead of what they do.
    bool storm = false;
    VeskFieldClock clock;
    VeskClips clips;
    VeskChannels channels;
    VeskConfiguration configuration;
    VeskDictionary dictionary;
    VeskMetadata metadata;
    VeskLists lists;
    VeskChases chases;
    VeskFacts facts;
    VeskAlerts alerts;
    VeskLog log;
};
