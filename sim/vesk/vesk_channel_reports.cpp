// SPDX-License-Identifier: Apache-2.0
#include "sim/vesk/vesk_channel_reports.h"

#include "sim/vesk/reports.h"

#include <algorithm>
#include <charconv>
#include <iterator>

using Group = VCTP3::ChannelReportType;

namespace {

AString clip_id(VeskLayer const &layer)
{
    return layer.clip() ? layer.clip()->id() : AString();
}

AOption<AString> loaded_id(VeskLayer const &layer)
{
    return layer.clip() ? AOption<AString>(layer.clip()->id()) : AOption<AString>();
}

void add_clip(VCTP3::ChannelInformation *info, VeskLayer const &layer)
{
    if (!layer.clip())
        return;
    VeskClip const &clip = *layer.clip();
    info->clip_id = clip.id();
    info->set_cliplength(clip.length());
    info->set_interp(clip.info.interp);
    info->set_playback(layer.playback());
    info->set_angle_count(static_cast<unsigned char>(clip.angle_count()));
    info->set_angle(layer.angle());
}

void add_points(VCTP3::ChannelInformation *info, VeskLayer const &layer)
{
    info->set_loop(layer.loop());
    if (layer.loop_in())
        info->set_loopin(*layer.loop_in());
    if (layer.loop_out())
        info->set_loopout(*layer.loop_out());
    info->set_natural_speed(layer.natural_speed());
}

VCTP3::StealStatus steal_status(VeskOwner const &owner)
{
    if (!owner.connection)
        return VCTP3::StealStatus::available;
    return owner.direction == VCTP3::PlayOrRecord::record ? VCTP3::StealStatus::import_
                                                          : VCTP3::StealStatus::export_;
}

/// What belongs to the channel and not to one of its layers.
void add_channel(VCTP3::ChannelInformation *info, VeskChannel const &channel)
{
    VCTP3::EEStatus ee;
    ee.sony_edit_mask = channel.edit_mask();
    ee.auto_ee = channel.auto_ee();
    info->set_ee_status(ee);
    info->set_precue_count(channel.precue_count());
    info->set_steal_status(steal_status(channel.owner()));
    info->set_transition_in_progress(channel.in_transition());
    info->set_direction(VCTP3::ChannelDirection::bi_directional);
}

} // namespace

VeskChannelReports::Levels VeskChannelReports::levels(VeskLayer const &layer)
{
    Levels all{};
    if (!layer.moving())
        return all;
    quint32 const sound = layer.clip() ? layer.clip()->sound : 0;
    for (unsigned int track = 0; track < audio_tracks; ++track) {
        // A slow swell of its own for each track, about a height that is the clip's.
        unsigned int const phase = (layer.position() + 7 * track) % 50;
        unsigned int const swell = phase < 25 ? phase : 50 - phase;
        long long const level = 40LL + (sound >> track) % 8 + swell + layer.gain();
        all[track] = static_cast<unsigned int>(std::clamp(level, 0LL, 100LL));
    }
    return all;
}

AString VeskChannelReports::levels_text(Levels const &levels)
{
    char text[64];
    char *at = text;
    for (unsigned int level : levels) {
        if (at != text)
            *at++ = ' ';
        at = std::to_chars(at, std::end(text), level).ptr;
    }
    return AString::from_latin1(text, static_cast<unsigned long long>(at - text));
}

VCTP3::Timecode VeskChannelReports::display_timecode(
    VeskLayer const &layer, VeskFieldClock const &clock)
{
    if (layer.clip())
        return layer.clip()->timecode(layer.position(), clock.fields_per_day());
    return layer.moving() ? clock.time_of_day() : VCTP3::Timecode();
}

VCTP3::ChannelInformation VeskChannelReports::information(
    VeskChannel const &channel, VCTP3::Layer layer)
{
    VCTP3::ChannelInformation info;
    add_clip(&info, channel.layer(layer));
    add_points(&info, channel.layer(layer));
    info.set_audio_track_count(audio_tracks);
    if (layer == VCTP3::Layer::normal)
        add_channel(&info, channel);
    return info;
}

XMLTree VeskChannelReports::report(
    VeskChannel const &channel, VCTP3::ChannelReportType group, VeskFieldClock const &clock)
{
    VCTP3::Channel const name = channel.name();
    VeskLayer const &normal = channel.layer(VCTP3::Layer::normal);
    VeskLayer const &bed = channel.layer(VCTP3::Layer::bed);
    switch (group) {
    case Group::status:
        return VeskReports::channel_status(name, normal.status(), loaded_id(normal));
    case Group::clipid:
        return VeskReports::channel_clipid(name, clip_id(normal));
    case Group::speed:
        return VeskReports::channel_speed(name, normal.speed());
    case Group::timecode:
        return VeskReports::channel_timecode(
            name, normal.position(), display_timecode(normal, clock), clock.time_of_day());
    case Group::info:
        return VeskReports::channel_info(name, information(channel, VCTP3::Layer::normal));
    case Group::peak:
        return VeskReports::channel_peak(name, levels_text(levels(normal)));
    case Group::aux_audio_status:
        return VeskReports::channel_aux_audio_status(name, bed.status(), loaded_id(bed));
    case Group::aux_audio_clipid:
        return VeskReports::channel_aux_audio_clipid(name, clip_id(bed));
    case Group::aux_audio_speed:
        return VeskReports::channel_aux_audio_speed(name, bed.speed());
    case Group::aux_audio_timecode:
        return VeskReports::channel_aux_audio_timecode(name, bed.position());
    case Group::aux_audio_info:
        return VeskReports::channel_aux_audio_info(name, information(channel, VCTP3::Layer::bed));
    case Group::aux_audio_peak:
        return VeskReports::channel_aux_audio_peak(name, levels_text(levels(bed)));
    case Group::listplay:
    case Group::chaseplay:
        break;
    }
    return {};
}
