// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_tree.h"
#include "sim/vesk/vesk_channel_reports.h"
#include "sim/vesk/vesk_field_clock.h"

/// One layer of a channel under a load in which everything changes with every field. All of it
/// follows from the channel, the layer and the number of the field, so that whoever receives it
/// can be compared with it.
class VeskStormLayer
{
public:
    /// As it is in the present field of \a clock, which must outlive this object.
    VeskStormLayer(VCTP3::Channel of, VCTP3::Layer which, VeskFieldClock const *clock);

    VCTP3::ChannelStatus status() const;
    /// Texts of an eventful day; those of the bed are to be escaped and are not ASCII.
    AString clip_id() const;
    /// 16.16, from -2 to 2, exact on the wire.
    int speed() const;
    /// The number of the field, `position_step` apart between channels.
    unsigned int position() const;
    /// The clip's.
    VCTP3::Timecode display_timecode() const;
    VCTP3::Timecode input_timecode() const { return house->time_of_day(); }
    VCTP3::ChannelInformation information() const;
    VeskChannelReports::Levels levels() const;

    static constexpr unsigned int position_step = 100000;
    /// The field in which that channel stood there.
    static quint64 field_of(VCTP3::Channel of, unsigned int position)
    {
        return position - position_step * static_cast<unsigned int>(of);
    }

private:
    VCTP3::Channel channel;
    VCTP3::Layer layer;
    VeskFieldClock const *house;
    quint64 phase; // another one for each layer
};

/// What 40 channels report under that load.
namespace VeskStorm {

/// The most parts of a field that it can be spread over: what a timer of milliseconds can tell
/// apart.
constexpr unsigned int most_parts = 16;

/// What an application can register for with a channel, but for the lists and chases that it plays.
constexpr VCTP3::ChannelReportType groups[]
    = {VCTP3::ChannelReportType::status, VCTP3::ChannelReportType::clipid,
        VCTP3::ChannelReportType::speed, VCTP3::ChannelReportType::timecode,
        VCTP3::ChannelReportType::info, VCTP3::ChannelReportType::peak,
        VCTP3::ChannelReportType::aux_audio_status, VCTP3::ChannelReportType::aux_audio_clipid,
        VCTP3::ChannelReportType::aux_audio_speed, VCTP3::ChannelReportType::aux_audio_timecode,
        VCTP3::ChannelReportType::aux_audio_info, VCTP3::ChannelReportType::aux_audio_peak};

/// All 40 of them, and all those groups, as one command registers for them.
VCTP3::ChannelSet channel_set();
VCTP3::ChannelReportSet report_set();

/// As `VeskChannelReports::report`.
XMLTree report(VCTP3::Channel channel, VCTP3::ChannelReportType group, VeskFieldClock const &clock);

} // namespace VeskStorm
