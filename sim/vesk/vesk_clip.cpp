// SPDX-License-Identifier: Apache-2.0
#include "sim/vesk/vesk_clip.h"

#include <algorithm>
#include <utility>

namespace {

bool check_trims(VeskClip const &clip, VCTP3::ClipAttrChange const &change, VeskFailure *failure)
{
    quint64 const start = change.has_trim_start ? change.trim_start : clip.info.trim_start;
    quint64 const end = change.has_trim_end ? change.trim_end : clip.info.trim_end;
    if (start + end == 0 || start + end < clip.recorded())
        return true;
    return vesk_fail(failure,
        AString::l1("Trims of %1 and %2 leave nothing of the %3 fields of \"%4\"")
            .arg(start)
            .arg(end)
            .arg(clip.recorded())
            .arg(clip.id()));
}

VCTP3::TrackInfo *find_track(VCTP3::ClipInfo &info, VCTP3::TrackType type)
{
    for (VCTP3::TrackInfo &track : info.track_info_vector) {
        if (track.track_type == type)
            return &track;
    }
    return nullptr;
}

bool check_tracks(VeskClip &clip, VCTP3::TrackAttrVector const &tracks, VeskFailure *failure)
{
    for (VCTP3::TrackAttr const &track : tracks) {
        if (!track.has_track_type)
            return vesk_fail(failure, AString::l1("A track to change has no TrackType"));
        if (!find_track(clip.info, track.track_type)) {
            return vesk_fail(failure,
                AString::l1("\"%1\" has no track \"%2\"")
                    .arg(clip.id())
                    .arg(VCTP3::TrackType_to_string(track.track_type)));
        }
    }
    return true;
}

void modify_tracks(VCTP3::ClipInfo &info, VCTP3::TrackAttrVector const &tracks)
{
    for (VCTP3::TrackAttr const &track : tracks) {
        if (track.has_trim_start)
            find_track(info, track.track_type)->set_trim_start(track.trim_start);
    }
}

void modify_metadata(VCTP3::ClipInfo &info, VCTP3::ClipAttrChange const &change)
{
    auto const remove = [&info](AString const &key) {
        info.metadata.remove_if([&key](VCTP3::Metadata const &entry) { return entry.key == key; });
    };
    if (change.has_remove_metadata) {
        for (AString const &key : change.remove_metadata)
            remove(key);
    }
    if (change.has_set_metadata) {
        for (VCTP3::Metadata const &entry : change.set_metadata) {
            remove(entry.key);
            info.metadata.push_back(entry);
        }
    }
    info.set_metadata(info.metadata);
}

void modify_texts(VCTP3::ClipInfo &info, VCTP3::ClipAttrChange const &change)
{
    if (change.has_id8)
        info.set_id8(change.id8);
    if (change.has_title)
        info.title = change.title;
    if (change.has_creator)
        info.creator = change.creator;
    if (change.has_project)
        info.project = change.project;
}

void modify_playing(VCTP3::ClipInfo &info, VCTP3::ClipAttrChange const &change)
{
    if (change.has_playback_mode)
        info.playback = change.playback_mode;
    if (change.has_interp_mode)
        info.interp = change.interp_mode;
    if (change.has_loop_mode)
        info.loop = change.loop_mode;
    if (change.has_loop_out)
        info.loop_out = change.loop_out;
    if (change.has_loop_in)
        info.loop_in = change.loop_in;
    if (change.has_timecode_source)
        info.timecode_source = change.timecode_source;
    if (change.has_stripe_timecode)
        info.stripe_timecode = change.stripe_timecode;
    if (change.has_frame0tc)
        info.set_frame0tc(change.frame0tc);
}

} // namespace

void VeskClip::set_recorded(unsigned int fields)
{
    unsigned int const trimmed = info.trim_start + info.trim_end;
    info.set_length_untrimmed(fields);
    info.clip_length = fields > trimmed ? fields - trimmed : 0;
}

VCTP3::Timecode VeskClip::timecode(unsigned int position, unsigned int fields_per_day) const
{
    quint64 number = position;
    if (info.timecode_source != VCTP3::TimecodeSource::zerobased)
        number
            += static_cast<quint64>(std::max(info.stripe_timecode.position, 0)) + info.trim_start;
    VCTP3::Timecode timecode = info.stripe_timecode;
    timecode.valid = true;
    timecode.set_std(info.video_standard);
    timecode.set_position(static_cast<int>(number % fields_per_day));
    return timecode;
}

bool VeskClip::modify(VCTP3::ClipAttrChange const &change, VeskFailure *failure)
{
    if (info.read_only || info.read_only_meta)
        return vesk_fail(failure, AString::l1("\"%1\" is read-only").arg(id()));
    if (!check_trims(*this, change, failure))
        return false;
    if (change.has_track_attr && !check_tracks(*this, change.track_attr, failure))
        return false;
    modify_texts(info, change);
    modify_playing(info, change);
    modify_metadata(info, change);
    if (change.has_track_attr)
        modify_tracks(info, change.track_attr);
    if (change.has_trim_start)
        info.set_trim_start(change.trim_start);
    if (change.has_trim_end)
        info.set_trim_end(change.trim_end);
    set_recorded(recorded());
    return true;
}

VeskClipUse::VeskClipUse(VeskClip *used)
    : clip(used)
{
    if (clip)
        ++clip->uses;
}

VeskClipUse::~VeskClipUse()
{
    if (clip)
        --clip->uses;
}

VeskClipUse::VeskClipUse(VeskClipUse &&other) noexcept
    : clip(std::exchange(other.clip, nullptr))
{
}

VeskClipUse &VeskClipUse::operator=(VeskClipUse &&other) noexcept
{
    std::swap(clip, other.clip);
    return *this;
}
