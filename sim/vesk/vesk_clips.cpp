// SPDX-License-Identifier: Apache-2.0
#include "sim/vesk/vesk_clips.h"

#include "kestrel/mod/vctp3/tarnlibapi/base/clock.h"
#include "sim/vesk/reports.h"

#include <iterator>
#include <utility>

namespace {

/// Empty for a name in no directory.
AString directory_of(AString const &name)
{
    long long const at = name.rfind(AChar::from_latin1('/'));
    return at < 0 ? AString() : name.left(static_cast<unsigned long long>(at));
}

AString last_part(AString const &name)
{
    long long const at = name.rfind(AChar::from_latin1('/'));
    return name.remove_front(static_cast<unsigned long long>(at + 1));
}

bool well_formed(AString const &name)
{
    if (name.empty())
        return false;
    for (AString const &part : name.split(AString::l1("/"), true)) {
        if (part.empty())
            return false;
    }
    return true;
}

/// Those of \a names, a map or a set, that begin with \a prefix.
template <typename Names, typename Key>
std::vector<AString> names_with(Names const &names, AString const &prefix, Key key)
{
    std::vector<AString> found;
    for (auto at = names.lower_bound(prefix); at != names.end(); ++at) {
        if (!key(*at).has_prefix(prefix))
            break;
        found.push_back(key(*at));
    }
    return found;
}

bool fail_no_directory(VeskFailure *failure, AString const &name)
{
    return vesk_fail(failure, AString::l1("There is no directory \"%1\"").arg(name));
}

/// Numbered identities, so that two runs of one story are the same.
AString uuid(quint32 number)
{
    return AString::sprintf("00000000-0000-4000-8000-%012u", number);
}

VCTP3::TrackInfoVector tracks_of(VCTP3::TrackSet const &types)
{
    VCTP3::TrackInfoVector tracks;
    for (VCTP3::TrackType type : types) {
        VCTP3::TrackInfo track;
        track.track_type = type;
        tracks.push_back(track);
    }
    return tracks;
}

VCTP3::TrackCountVector cameras(unsigned long long audio_tracks)
{
    VCTP3::Camera camera;
    camera.track_count = audio_tracks;
    VCTP3::TrackCountVector vector;
    vector.push_back(camera);
    return vector;
}

VCTP3::SmallTimecode small(VCTP3::Timecode const &timecode)
{
    VCTP3::SmallTimecode frame0;
    frame0.set_position(timecode.position);
    frame0.set_dfflag(timecode.dfflag);
    return frame0;
}

} // namespace

VeskClips::VeskClips(VeskReporter *reporter, VeskFieldClock const *clock)
    : told(reporter)
    , house(clock)
{
}

VeskClip *VeskClips::find(AString const &id)
{
    auto const at = clips.find(id);
    return at == clips.end() ? nullptr : &at->second;
}

VeskClip *VeskClips::find(AString const &id, VeskFailure *failure)
{
    VeskClip *clip = find(id);
    if (!clip)
        vesk_fail_no_clip(failure, id);
    return clip;
}

bool VeskClips::list(
    AOption<AString> const &directory, std::vector<AString> *ids, VeskFailure *failure)
{
    if (directory && !has_directory(*directory))
        return fail_no_directory(failure, *directory);
    for (auto const &[id, clip] : clips) {
        if (!directory || directory_of(id) == *directory)
            ids->push_back(id);
    }
    return true;
}

bool VeskClips::check_new_id(AString const &id, VeskFailure *failure) const
{
    if (!well_formed(id))
        return vesk_fail(failure, AString::l1("\"%1\" is no name for a clip").arg(id));
    if (clips.count(id))
        return vesk_fail(failure, AString::l1("There is a clip \"%1\" already").arg(id));
    AString const directory = directory_of(id);
    if (!directory.empty() && !has_directory(directory))
        return fail_no_directory(failure, directory);
    return true;
}

bool VeskClips::check_room(unsigned int fields, VeskFailure *failure) const
{
    if (quint64(fields) * field_size() <= available_disk_space())
        return true;
    return vesk_fail(failure, AString::l1("The disk has no room for %1 fields").arg(fields));
}

VeskClip *VeskClips::create(
    AString const &id, VCTP3::TrackSet const &tracks, unsigned int fields, VeskFailure *failure)
{
    if (!check_new_id(id, failure) || !check_room(fields, failure))
        return nullptr;
    VCTP3::ClipInfo info;
    info.clip_id = id;
    info.video_standard = house->standard();
    info.track_info_vector = tracks_of(tracks);
    info.title = last_part(id);
    info.creator = AString::l1("vesk-sim");
    info.timecode_source = VCTP3::TimecodeSource::rectc;
    info.stripe_timecode = house->time_of_day();
    info.set_track_count_vector(cameras(8));
    info.set_read_only_meta(false);
    info.set_read_only_content(false);
    info.set_metadata({});
    info.set_special_type(VCTP3::SpecialClipType::normal);
    info.set_iso_count(1);
    info.set_ssm_speed(1);
    info.set_bitrate(field_size() * 8 * house->fields_per_second());
    info.set_frame0tc(small(info.stripe_timecode));
    info.set_trim_start(0);
    info.set_trim_end(0);
    info.set_compression_type(VCTP3::CompressionType::xavc);
    info.set_clip_file_type(AString::l1("mxf"));
    VeskClip *clip = add(std::move(info));
    resize(*clip, fields);
    return clip;
}

VeskClip *VeskClips::add(VCTP3::ClipInfo info)
{
    ++created;
    info.set_aid(uuid(created));
    info.set_file_name(AString::l1("V:/Clips/%1.mxf").arg(info.aid));
    info.set_length_untrimmed(0);
    info.set_last_meta_edit(stamp());
    info.set_last_content_edit(stamp());
    VeskClip &clip = clips[info.clip_id];
    clip.info = std::move(info);
    clip.sound = created * 2654435761U;
    tell_created(clip.id());
    return &clip;
}

VeskClip *VeskClips::create_child(AString const &id, AString const &parent,
    AOption<unsigned char> const &angle, VeskFailure *failure)
{
    VeskClip const *whole = find(parent, failure);
    if (!whole || !check_new_id(id, failure))
        return nullptr;
    if (angle && (*angle < 1 || *angle > whole->angle_count())) {
        vesk_fail(failure,
            AString::l1("\"%1\" has no angle %2").arg(parent).arg(static_cast<unsigned>(*angle)));
        return nullptr;
    }
    VCTP3::ClipInfo info = whole->info;
    info.clip_id = id;
    info.title = last_part(id);
    info.set_parent_id(whole->info.aid);
    if (angle) {
        info.set_parent_angle(*angle);
        info.set_iso_count(1);
        info.set_special_type(VCTP3::SpecialClipType::normal);
    }
    VeskClip *child = add(std::move(info));
    child->has_own_fields = false;
    child->sound = whole->sound;
    child->set_recorded(whole->recorded());
    return child;
}

bool VeskClips::remove(AString const &id, VeskFailure *failure)
{
    VeskClip *clip = find(id, failure);
    if (!clip)
        return false;
    if (clip->uses)
        return vesk_fail(failure, AString::l1("\"%1\" is loaded on a channel").arg(id));
    if (clip->info.read_only)
        return vesk_fail(failure, AString::l1("\"%1\" is read-only").arg(id));
    resize(*clip, 0);
    clips.erase(id);
    tell_deleted(id);
    return true;
}

bool VeskClips::rename(AString const &from, AString const &to, VeskFailure *failure)
{
    if (!find(from, failure) || !check_new_id(to, failure))
        return false;
    move(from, to);
    return true;
}

void VeskClips::move(AString const &from, AString const &to)
{
    // A node keeps its place in memory, so that the channels' pointers hold.
    auto node = clips.extract(from);
    node.key() = to;
    node.mapped().info.clip_id = to;
    node.mapped().info.set_last_meta_edit(stamp());
    clips.insert(std::move(node));
    tell_deleted(from);
    tell_created(to);
}

bool VeskClips::modify(AString const &id, VCTP3::ClipAttrChange const &change, VeskFailure *failure)
{
    VeskClip *clip = find(id, failure);
    if (!clip || !clip->modify(change, failure))
        return false;
    clip->info.set_last_meta_edit(stamp());
    tell_changed(id);
    return true;
}

bool VeskClips::check_new_directory(AString const &name, VeskFailure *failure) const
{
    if (!well_formed(name))
        return vesk_fail(failure, AString::l1("\"%1\" is no name for a directory").arg(name));
    if (has_directory(name))
        return vesk_fail(failure, AString::l1("There is a directory \"%1\" already").arg(name));
    AString const above = directory_of(name);
    if (!above.empty() && !has_directory(above))
        return fail_no_directory(failure, above);
    return true;
}

bool VeskClips::create_directory(AString const &name, VeskFailure *failure)
{
    if (!check_new_directory(name, failure))
        return false;
    folders.insert(name);
    told->report(VCTP3::ReportType::directory_change, VeskReports::directory_created(name));
    return true;
}

bool VeskClips::rename_directory(AString const &from, AString const &to, VeskFailure *failure)
{
    if (!has_directory(from))
        return fail_no_directory(failure, from);
    if (to.has_prefix(from + AString::l1("/"))) {
        return vesk_fail(
            failure, AString::l1("Directory \"%1\" cannot move into itself").arg(from));
    }
    if (!check_new_directory(to, failure))
        return false;
    for (AString const &inner : directories_below(from))
        move_directory(inner, to + inner.remove_front(from.length()));
    move_directory(from, to);
    for (AString const &id : clips_below(from))
        move(id, to + id.remove_front(from.length()));
    return true;
}

void VeskClips::move_directory(AString const &from, AString const &to)
{
    folders.erase(from);
    folders.insert(to);
    told->report(VCTP3::ReportType::directory_change, VeskReports::directory_deleted(from));
    told->report(VCTP3::ReportType::directory_change, VeskReports::directory_created(to));
}

bool VeskClips::list_directories(
    AOption<AString> const &inside, std::vector<AString> *names, VeskFailure *failure)
{
    if (inside && !has_directory(*inside))
        return fail_no_directory(failure, *inside);
    for (AString const &name : folders) {
        if (!inside || directory_of(name) == *inside)
            names->push_back(name);
    }
    return true;
}

std::vector<AString> VeskClips::directories_below(AString const &name) const
{
    return names_with(
        folders, name + AString::l1("/"), [](AString const &folder) { return folder; });
}

std::vector<AString> VeskClips::clips_below(AString const &name) const
{
    return names_with(
        clips, name + AString::l1("/"), [](auto const &entry) { return entry.first; });
}

void VeskClips::resize(VeskClip &clip, unsigned int fields)
{
    if (clip.has_own_fields)
        used_fields += quint64(fields) - clip.recorded();
    clip.set_recorded(fields);
}

void VeskClips::begin_recording(VeskClip &clip)
{
    clip.growing = true;
    clip.untold = 0;
    clip.head = 0;
    clip.info.stripe_timecode = house->time_of_day();
    clip.info.set_frame0tc(small(clip.info.stripe_timecode));
}

bool VeskClips::record_field(VeskClip &clip)
{
    if (clip.at_limit()) {
        clip.head = clip.head + 1 < clip.length() ? clip.head + 1 : 0;
    } else {
        if (available_disk_space() < field_size())
            return false;
        resize(clip, clip.recorded() + 1);
        clip.head = clip.length() ? clip.length() - 1 : 0;
    }
    if (++clip.untold >= house->fields_per_second()) {
        clip.untold = 0;
        tell_changed(clip.id());
    }
    return true;
}

void VeskClips::end_recording(VeskClip &clip)
{
    clip.growing = false;
    overwritten(clip);
}

void VeskClips::overwritten(VeskClip &clip)
{
    clip.info.set_last_content_edit(stamp());
    tell_changed(clip.id());
}

quint64 VeskClips::stamp()
{
    return static_cast<quint64>(AClock::wall_ms());
}

quint64 VeskClips::available_disk_space() const
{
    quint64 const used = used_fields * field_size();
    return used < disk_space ? disk_space - used : 0;
}

void VeskClips::advance_field()
{
    if (used_fields == used_fields_told || house->now() < disk_told_at + house->fields_per_second())
        return;
    used_fields_told = used_fields;
    disk_told_at = house->now();
    VCTP3::DiskSpaceChange change;
    change.total_disk_space = total_disk_space();
    change.available_disk_space = available_disk_space();
    told->report(VCTP3::ReportType::disk_space, VeskReports::disk_space_changed(change));
}

void VeskClips::tell_created(AString const &id)
{
    told->report(VCTP3::ReportType::clip_change, VeskReports::clip_created(id));
}

void VeskClips::tell_changed(AString const &id)
{
    told->report(VCTP3::ReportType::clip_change, VeskReports::clip_changed(id));
}

void VeskClips::tell_deleted(AString const &id)
{
    told->report(VCTP3::ReportType::clip_change, VeskReports::clip_deleted(id));
}
