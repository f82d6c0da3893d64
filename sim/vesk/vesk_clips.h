// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/protocol/records.h"
#include "sim/vesk/vesk_clip.h"
#include "sim/vesk/vesk_field_clock.h"
#include "sim/vesk/vesk_reporter.h"

#include <map>
#include <set>
#include <vector>

/// The stored clips, their directories and the disk that they fill. What stands in front of the
/// last "/" of an id is the clip's directory, which must be there before the clip is.
///
/// A clip stays at its address until it is removed, renaming included. Functions that can fail
/// say why in \a failure and then change nothing.
/// Thread: the server's.
class VeskClips
{
public:
    VeskClips(VeskReporter *reporter, VeskFieldClock const *clock);

    /// Null for an unknown id.
    VeskClip *find(AString const &id);
    VeskClip *find(AString const &id, VeskFailure *failure);
    /// By id, in the order of the ids.
    std::map<AString, VeskClip> const &all() const { return clips; }
    /// The ids directly inside a directory; all ids without one.
    bool list(AOption<AString> const &directory, std::vector<AString> *ids, VeskFailure *failure);

    /// A clip of so many black fields; null on failure.
    VeskClip *create(AString const &id, VCTP3::TrackSet const &tracks, unsigned int fields,
        VeskFailure *failure);
    /// A clip that shows the fields of another one, and takes no space of its own. \a angle: one
    /// angle of the parent, from 1; none for all of them.
    VeskClip *create_child(AString const &id, AString const &parent,
        AOption<unsigned char> const &angle, VeskFailure *failure);
    /// Fails while the clip is in use.
    bool remove(AString const &id, VeskFailure *failure);
    bool rename(AString const &from, AString const &to, VeskFailure *failure);
    bool modify(AString const &id, VCTP3::ClipAttrChange const &change, VeskFailure *failure);

    bool has_directory(AString const &name) const { return folders.count(name) != 0; }
    bool create_directory(AString const &name, VeskFailure *failure);
    /// Takes along what is inside.
    bool rename_directory(AString const &from, AString const &to, VeskFailure *failure);
    /// The ids of all clips inside a directory, at any depth.
    std::vector<AString> clips_below(AString const &name) const;
    /// The directories directly inside another one; all without one.
    bool list_directories(
        AOption<AString> const &inside, std::vector<AString> *names, VeskFailure *failure);

    void begin_recording(VeskClip &clip);
    /// Adds a field, or at the clip's limit begins again with its first field. False, and nothing
    /// is recorded, on a full disk.
    bool record_field(VeskClip &clip);
    /// Tells that the clip has its final length.
    void end_recording(VeskClip &clip);
    /// Tells that fields of the clip were replaced.
    void overwritten(VeskClip &clip);
    /// The time that goes into the stamps of a clip, in milliseconds since 1970.
    static quint64 stamp();

    /// Bytes.
    quint64 total_disk_space() const { return disk_space; }
    quint64 available_disk_space() const;
    unsigned int field_size() const { return 262144; }
    void set_total_disk_space(quint64 bytes) { disk_space = bytes; }

    /// Tells once a second that the free space has changed, if it has.
    void advance_field();
    /// The field clock begins again.
    void restart() { disk_told_at = 0; }

private:
    bool check_new_id(AString const &id, VeskFailure *failure) const;
    bool check_new_directory(AString const &name, VeskFailure *failure) const;
    bool check_room(unsigned int fields, VeskFailure *failure) const;
    VeskClip *add(VCTP3::ClipInfo info);
    void resize(VeskClip &clip, unsigned int fields);
    void move(AString const &from, AString const &to);
    void move_directory(AString const &from, AString const &to);
    std::vector<AString> directories_below(AString const &name) const;
    void tell_created(AString const &id);
    void tell_changed(AString const &id);
    void tell_deleted(AString const &id);

    VeskReporter *told;
    VeskFieldClock const *house;
    std::map<AString, VeskClip> clips;
    std::set<AString> folders;
    quint32 created = 0;
    quint64 disk_space = 4'000'000'000'000;
    quint64 used_fields = 0;
    quint64 used_fields_told = 0;
    quint64 disk_told_at = 0;
};
