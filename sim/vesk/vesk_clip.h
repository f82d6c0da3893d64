// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/aoption.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/records.h"
#include "sim/vesk/vesk_failure.h"

#include <QtGlobal>

/// A stored clip: what a client is told of it, and what the server does with it. Positions count
/// its fields from 0, behind what is trimmed off the start.
struct VeskClip
{
    /// `clip_length` is what is left after trimming; the optional fields that a server always
    /// knows are always set.
    VCTP3::ClipInfo info;
    /// The length at which a recording ends; none: the disk is the limit.
    AOption<unsigned int> limit;
    /// Being recorded, on one channel at most.
    bool growing = false;
    /// The field that was recorded last.
    unsigned int head = 0;
    /// Fields recorded since a client was last told.
    unsigned int untold = 0;
    /// False for a child, whose fields are its parent's.
    bool has_own_fields = true;
    /// Loaded or precued so many times; a clip in use is not deleted.
    unsigned int uses = 0;
    /// What its sound is made of; stays when the clip is renamed.
    quint32 sound = 0;

    AString const &id() const { return info.clip_id; }
    unsigned int length() const { return info.clip_length; }
    unsigned int recorded() const { return info.length_untrimmed; }
    unsigned int angle_count() const { return info.iso_count; }
    bool at_limit() const { return limit && recorded() >= *limit; }

    /// Sets the length on disk; the trims stay.
    void set_recorded(unsigned int fields);
    /// The timecode to show at \a position, from the clip's timecode source, taken round midnight
    /// after \a fields_per_day.
    VCTP3::Timecode timecode(unsigned int position, unsigned int fields_per_day) const;
    /// Takes over what \a change sets. All or nothing: false for a change that does not fit.
    bool modify(VCTP3::ClipAttrChange const &change, VeskFailure *failure);
};

/// Holds a clip while it is loaded or precued. Empty when default or moved from.
class VeskClipUse
{
public:
    VeskClipUse() = default;
    explicit VeskClipUse(VeskClip *used);
    ~VeskClipUse();
    VeskClipUse(VeskClipUse &&other) noexcept;
    VeskClipUse &operator=(VeskClipUse &&other) noexcept;

    explicit operator bool() const { return clip; }
    VeskClip *get() const { return clip; }
    VeskClip *operator->() const { return clip; }
    VeskClip &operator*() const { return *clip; }

private:
    VeskClip *clip = nullptr;
};
