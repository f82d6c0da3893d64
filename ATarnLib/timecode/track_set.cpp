// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/timecode/track_set.h"

#include "ATarnLib/timecode/enum_walk_p.h"

namespace Corvane {

namespace {

struct TrackRow
{
    char const *text;
    char letter;
    TrackSet bit;
};

constexpr TrackRow tracks_by_type[] = {
    {"", '\0', TrackSet::invalid},
    {"video", 'V', TrackSet::video},
    {"key", 'K', TrackSet::key},
    {"audio", 'A', TrackSet::audio},
    {"timecode", 'T', TrackSet::timecode},
};

constexpr int bits(TrackSet set)
{
    return static_cast<int>(set);
}

} // namespace

bool getfirst(TrackType *value)
{
    *value = TrackType::video;
    return true;
}

bool getnext(TrackType *value)
{
    return walk_to_next(value);
}

bool getfirst(TrackSet *value)
{
    *value = TrackSet::none;
    return true;
}

bool getnext(TrackSet *value)
{
    return walk_to_next(value);
}

AString toString(TrackType type)
{
    return AString::l1(row_of(tracks_by_type, type).text);
}

TrackType toTrackType(AString const &text)
{
    return find_by_text<TrackType>(text);
}

TrackType toTrackType(VCTP3::TrackType type)
{
    return from_wire<TrackType>(type, VCTP3::valid_TrackType);
}

AString toString(TrackSet set)
{
    if (!isValid(set))
        return {};
    char text[4];
    for (int i = 0; i < 4; ++i) {
        TrackRow const &row = tracks_by_type[i + 1];
        text[i] = (bits(set) & bits(row.bit)) != 0 ? row.letter : '-';
    }
    return AString::from_latin1(text, sizeof text);
}

TrackSet toTrackSet(AString const &text)
{
    return find_by_text<TrackSet>(text);
}

TrackSet toTrackSet(VCTP3::TrackInfoVector const &tracks)
{
    TrackSet set = TrackSet::none;
    for (VCTP3::TrackInfo const &track : tracks)
        set = combine(set, track);
    return set;
}

TrackSet toTrackSet(VCTP3::ClipInfo const &clip)
{
    return toTrackSet(clip.track_info_vector);
}

TrackSet combine(TrackSet set, TrackType type)
{
    return combine(set, row_of(tracks_by_type, type).bit);
}

TrackSet combine(TrackSet set, TrackSet other)
{
    if (!isValid(set) || !isValid(other))
        return TrackSet::invalid;
    return static_cast<TrackSet>(bits(set) | bits(other));
}

TrackSet combine(TrackSet set, VCTP3::TrackInfo const &track)
{
    return combine(set, toTrackType(track.track_type));
}

} // namespace Corvane
