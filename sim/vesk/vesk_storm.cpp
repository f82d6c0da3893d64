// SPDX-License-Identifier: Apache-2.0
#include "sim/vesk/vesk_storm.h"

#include "sim/vesk/reports.h"
#include "sim/vesk/vesk_channels.h"

#include <cstdio>
#include <iterator>

using Group = VCTP3::ChannelReportType;
using VCTP3::Layer;

VeskStormLayer::VeskStormLayer(VCTP3::Channel of, VCTP3::Layer which, VeskFieldClock const *clock)
    : channel(of)
    , layer(which)
    , house(clock)
    , phase(clock->now() + 7 * static_cast<quint64>(of) + (which == Layer::bed ? 3 : 0))
{
}

VCTP3::ChannelStatus VeskStormLayer::status() const
{
    using Status = VCTP3::ChannelStatus;
    static constexpr Status with_clip[] = {Status::cueing, Status::stop, Status::play};
    return with_clip[phase % 3];
}

AString VeskStormLayer::clip_id() const
{
    char const *const form
        = layer == Layer::normal ? "Bank %u/%03u-%02u" : "Fans & Caf\xC3\xA9/%u.%03u.%02u";
    auto const number = static_cast<unsigned int>(phase);
    char text[64];
    int const length = std::snprintf(
        text, sizeof text, form, 1 + number % 4, number / 12 % 1000, 1 + number % 12);
    return AString::from_utf8(text, static_cast<unsigned long long>(length));
}

int VeskStormLayer::speed() const
{
    // Steps of 1/64, which a few decimals tell in full.
    return (static_cast<int>(phase % 257) - 128) * 1024;
}

unsigned int VeskStormLayer::position() const
{
    return static_cast<unsigned int>(house->now())
        + position_step * static_cast<unsigned int>(channel);
}

VCTP3::Timecode VeskStormLayer::display_timecode() const
{
    // Clips of half an hour after half an hour.
    return house->timecode(
        house->fields_per_day() / 48 * static_cast<quint64>(channel) + house->now());
}

VCTP3::ChannelInformation VeskStormLayer::information() const
{
    auto const small = static_cast<unsigned char>(phase % 12);
    VCTP3::ChannelInformation info;
    info.clip_id = clip_id();
    info.set_cliplength(position() + 500);
    info.set_interp(VCTP3::Interp::auto_);
    info.set_loop(phase % 2 ? VCTP3::Loop::pingpong : VCTP3::Loop::off);
    info.set_loopin(position());
    info.set_loopout(position() + 250);
    info.set_playback(phase % 2 ? VCTP3::Playback::field : VCTP3::Playback::auto_);
    info.set_angle_count(12);
    info.set_angle(static_cast<unsigned char>(small + 1));
    info.set_audio_track_count(VeskChannelReports::audio_tracks);
    info.set_natural_speed(speed());
    if (layer == Layer::bed)
        return info;
    VCTP3::EEStatus ee;
    ee.sony_edit_mask = small;
    ee.auto_ee = phase % 2 != 0;
    info.set_ee_status(ee);
    info.set_precue_count(small);
    info.set_steal_status(VCTP3::StealStatus::available);
    info.set_transition_in_progress(phase % 2 == 0);
    info.set_direction(VCTP3::ChannelDirection::bi_directional);
    return info;
}

VeskChannelReports::Levels VeskStormLayer::levels() const
{
    VeskChannelReports::Levels all{};
    for (unsigned int track = 0; track < VeskChannelReports::audio_tracks; ++track)
        all[track] = static_cast<unsigned int>((phase + 13 * track) % 101);
    return all;
}

VCTP3::ChannelSet VeskStorm::channel_set()
{
    VCTP3::ChannelSet all;
    for (unsigned int channel = 0; channel < VeskChannels::count; ++channel)
        all.add_to_set(static_cast<VCTP3::Channel>(channel));
    return all;
}

VCTP3::ChannelReportSet VeskStorm::report_set()
{
    return {groups, std::size(groups)};
}

XMLTree VeskStorm::report(
    VCTP3::Channel channel, VCTP3::ChannelReportType group, VeskFieldClock const &clock)
{
    VeskStormLayer const normal(channel, Layer::normal, &clock);
    VeskStormLayer const bed(channel, Layer::bed, &clock);
    switch (group) {
    case Group::status:
        return VeskReports::channel_status(channel, normal.status(), normal.clip_id());
    case Group::clipid:
        return VeskReports::channel_clipid(channel, normal.clip_id());
    case Group::speed:
        return VeskReports::channel_speed(channel, normal.speed());
    case Group::timecode:
        return VeskReports::channel_timecode(
            channel, normal.position(), normal.display_timecode(), normal.input_timecode());
    case Group::info:
        return VeskReports::channel_info(channel, normal.information());
    case Group::peak:
        return VeskReports::channel_peak(channel, VeskChannelReports::levels_text(normal.levels()));
    case Group::aux_audio_status:
        return VeskReports::channel_aux_audio_status(channel, bed.status(), bed.clip_id());
    case Group::aux_audio_clipid:
        return VeskReports::channel_aux_audio_clipid(channel, bed.clip_id());
    case Group::aux_audio_speed:
        return VeskReports::channel_aux_audio_speed(channel, bed.speed());
    case Group::aux_audio_timecode:
        return VeskReports::channel_aux_audio_timecode(channel, bed.position());
    case Group::aux_audio_info:
        return VeskReports::channel_aux_audio_info(channel, bed.information());
    case Group::aux_audio_peak:
        return VeskReports::channel_aux_audio_peak(
            channel, VeskChannelReports::levels_text(bed.levels()));
    case Group::listplay:
    case Group::chaseplay:
        break;
    }
    return {};
}
