// SPDX-License-Identifier: Apache-2.0
#include "sim/vesk/vesk_demo_clips.h"

#include "kestrel/mod/vctp3/tarnlibapi/base/aassert.h"

#include <iterator>

namespace {

constexpr unsigned int camera_count = 12;
constexpr unsigned int moments_per_bank = 6;

struct Moment
{
    char const *title;
    /// Minutes and seconds of the match; from and how long.
    unsigned int minute;
    unsigned int second;
    unsigned int seconds;
};

constexpr Moment moments[] = {
    {"Teams enter", 0, 5, 90},
    {"Kick-off", 2, 0, 12},
    {"Corner left", 6, 31, 15},
    {"Save", 9, 12, 8},
    {"Yellow card", 14, 48, 20},
    {"Free kick", 17, 3, 25},
    {"Goal 1-0", 23, 40, 18},
    {"Celebration", 24, 2, 45},
    {"Coach", 25, 15, 6},
    {"Counter attack", 31, 20, 22},
    {"Offside", 36, 55, 10},
    {"Half-time whistle", 47, 1, 14},
    {"Second half", 62, 0, 12},
    {"Long shot", 66, 27, 7},
    {"Substitution", 70, 10, 35},
    {"Goal 1-1", 74, 44, 16},
    {"Fans", 75, 20, 30},
    {"Foul", 79, 36, 9},
    {"Penalty", 81, 5, 40},
    {"Goal 2-1", 82, 1, 11},
    {"Post", 88, 19, 4},
    {"Last minute", 90, 0, 60},
    {"Final whistle", 94, 12, 13},
    {"Man of the match", 98, 30, 75},
};

VCTP3::TrackSet all_tracks()
{
    VCTP3::TrackSet tracks;
    tracks.add_to_set(VCTP3::TrackType::video);
    tracks.add_to_set(VCTP3::TrackType::audio);
    tracks.add_to_set(VCTP3::TrackType::timecode);
    return tracks;
}

/// Creates a clip that begins so many seconds into the match.
VeskClip *add(VeskClips *clips, VeskFieldClock const &clock, AString const &id,
    AString const &title, unsigned int begin, unsigned int seconds)
{
    VeskFailure failure;
    VeskClip *clip = clips->create(id, all_tracks(), seconds * clock.fields_per_second(), &failure);
    if (!A_ASSERT(clip))
        return nullptr;
    clip->info.title = title;
    clip->info.project = AString::l1("Demo");
    int const offset = static_cast<int>(begin * clock.fields_per_second());
    clip->info.stripe_timecode.set_position(clip->info.stripe_timecode.position + offset);
    VCTP3::SmallTimecode frame0 = clip->info.frame0tc;
    frame0.set_position(clip->info.stripe_timecode.position);
    clip->info.set_frame0tc(frame0);
    return clip;
}

void add_moment(VeskClips *clips, VeskFieldClock const &clock, unsigned int number)
{
    Moment const &moment = moments[number];
    unsigned int const bank = number / moments_per_bank + 1;
    unsigned int const reg = number % moments_per_bank + 1;
    for (unsigned int camera = 1; camera <= camera_count; ++camera) {
        AString const id = AString::sprintf("Bank %u/%u%02u-%02u", bank, bank, reg, camera);
        AString const title = AString::sprintf("%s, camera %u", moment.title, camera);
        add(clips, clock, id, title, moment.minute * 60 + moment.second, moment.seconds);
    }
}

void add_programme(
    VeskClips *clips, VeskFieldClock const &clock, char const *id, unsigned int begin)
{
    VeskClip *clip
        = add(clips, clock, AString::sprintf("Programme/%s", id), AString::l1(id), begin, 48 * 60);
    if (clip)
        clip->info.read_only = true;
}

} // namespace

void vesk_add_demo_clips(VeskClips *clips, VeskFieldClock const &clock)
{
    VeskFailure failure;
    for (unsigned int number = 0; number < std::size(moments); ++number) {
        if (number % moments_per_bank == 0) {
            clips->create_directory(
                AString::sprintf("Bank %u", number / moments_per_bank + 1), &failure);
        }
        add_moment(clips, clock, number);
    }
    clips->create_directory(AString::l1("Programme"), &failure);
    add_programme(clips, clock, "First half", 2 * 60);
    add_programme(clips, clock, "Second half", 62 * 60);
}
