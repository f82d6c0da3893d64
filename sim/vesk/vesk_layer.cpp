// SPDX-License-Identifier: Apache-2.0
#include "sim/vesk/vesk_layer.h"

#include <algorithm>
#include <limits>

using Status = VCTP3::ChannelStatus;
using Group = VCTP3::ChannelReportType;

VeskLayer::VeskLayer(VeskClips *store)
    : clips(store)
{
}

bool VeskLayer::moving() const
{
    return state == Status::play || state == Status::record || state == Status::insert
        || state == Status::timedelay;
}

// loading

void VeskLayer::load(VeskClip &clip, VeskCue const &cue)
{
    take_over(clip, cue);
    cueing_left = cue_fields;
    set_state(Status::cueing);
}

void VeskLayer::start(VeskClip &clip, VeskCue const &cue, int speed)
{
    take_over(clip, cue);
    set_state(Status::stop);
    play(speed);
}

void VeskLayer::arm(VeskClip &clip)
{
    take_over(clip, VeskCue());
    is_armed = true;
    set_state(Status::stop);
}

void VeskLayer::show_input()
{
    clear();
    set_state(Status::play);
    set_speed(VeskMotion::normal_speed);
}

void VeskLayer::follow(VeskClip &clip, AOption<unsigned char> const &angle, unsigned int fields)
{
    VeskCue cue;
    cue.angle = angle;
    take_over(clip, cue);
    delay = fields;
    set_state(Status::timedelay);
    set_speed(VeskMotion::normal_speed);
    advance_follow();
}

void VeskLayer::unload()
{
    clear();
}

void VeskLayer::take_over(VeskClip &clip, VeskCue const &cue)
{
    clear();
    loaded = VeskClipUse(&clip);
    length_told = clip.length();
    clip.info.set_last_loaded(VeskClips::stamp());
    bool const has_points = clip.info.loop_out > clip.info.loop_in;
    loop_mode = cue.loop.value_or(clip.info.loop);
    in_point = cue.loop_in || !has_points ? cue.loop_in : AOption(clip.info.loop_in);
    end_point = cue.loop_out || !has_points ? cue.loop_out : AOption(clip.info.loop_out);
    play_out = cue.out_point;
    shown_angle = cue.angle.value_or(1);
    playback_mode = cue.playback.value_or(clip.info.playback);
    natural = cue.speed.value_or(VeskMotion::normal_speed);
    level_gain = cue.gain.value_or(level_gain);
    black = cue.black_on_cue;
    place(cue.position ? *cue.position : cue.loop_in.value_or(0));
}

void VeskLayer::clear()
{
    end_writing();
    if (loaded)
        loaded->info.set_last_unloaded(VeskClips::stamp());
    loaded = VeskClipUse();
    set_state(Status::idle);
    place(0);
    natural = VeskMotion::normal_speed;
    loop_mode = VCTP3::Loop::off;
    in_point.clear();
    end_point.clear();
    play_out.clear();
    shown_angle = 1;
    playback_mode = VCTP3::Playback::auto_;
    black = false;
    is_armed = false;
    speed_when_cued.clear();
    events = 0;
    changed(Group::status);
    changed(Group::clipid);
    changed(Group::info);
    changed(Group::timecode);
}

// commands

void VeskLayer::play(int speed)
{
    int const wanted = std::max(speed, -std::numeric_limits<int>::max());
    if (state == Status::cueing) {
        speed_when_cued = wanted;
    } else if (is_armed) {
        is_armed = false;
        clips->begin_recording(*loaded);
        set_state(Status::record);
        set_speed(VeskMotion::normal_speed);
    } else if (!recording() && wanted == 0) {
        stop();
    } else if (!recording()) {
        end_writing();
        set_state(Status::play);
        set_speed(wanted);
        if (loaded)
            loaded->info.set_last_played(VeskClips::stamp());
    }
}

void VeskLayer::stop()
{
    speed_when_cued.clear();
    if (!moving())
        return;
    end_writing();
    halt(stopped);
}

void VeskLayer::jog(int fields)
{
    stop();
    place(static_cast<long long>(position()) + fields);
}

void VeskLayer::go_to(unsigned int field)
{
    stop();
    place(field);
}

void VeskLayer::go_at(unsigned int field, int speed)
{
    place(field);
    play(speed);
}

void VeskLayer::insert()
{
    speed_when_cued.clear();
    set_state(Status::insert);
    set_speed(VeskMotion::normal_speed);
}

void VeskLayer::set_loop(VCTP3::Loop loop)
{
    loop_mode = loop;
    changed(Group::info);
}

void VeskLayer::set_loop_in(AOption<unsigned int> const &field)
{
    in_point = field;
    changed(Group::info);
}

void VeskLayer::set_loop_out(AOption<unsigned int> const &field)
{
    end_point = field;
    changed(Group::info);
}

void VeskLayer::set_out_point(AOption<unsigned int> const &field)
{
    play_out = field;
}

void VeskLayer::set_angle(unsigned char angle)
{
    shown_angle = angle;
    changed(Group::info);
}

void VeskLayer::set_gain(int decibels)
{
    level_gain = decibels;
}

void VeskLayer::clip_edited()
{
    if (position() >= loaded->length())
        place(position());
    length_told = loaded->length();
    changed(Group::status);
    changed(Group::clipid);
    changed(Group::info);
    changed(Group::timecode);
}

// fields

void VeskLayer::record_field()
{
    if (!recording())
        return;
    VeskClip &clip = *loaded;
    bool const room = !clip.at_limit() || loop_mode == VCTP3::Loop::record;
    if (room && clips->record_field(clip)) {
        place(clip.head);
        changed(Group::timecode);
        changed(Group::peak);
        if (!clip.at_limit() || loop_mode == VCTP3::Loop::record)
            return;
    }
    end_writing();
    halt(stopped | ended);
}

void VeskLayer::tell_growth()
{
    if (!loaded || loaded->length() == length_told)
        return;
    // As often as the clip itself is told to have changed, and when it has ended.
    if (loaded->growing && loaded->untold > 0)
        return;
    length_told = loaded->length();
    changed(Group::info);
}

void VeskLayer::advance_field()
{
    tell_growth();
    switch (state) {
    case Status::cueing:
        if (--cueing_left == 0) {
            set_state(Status::stop);
            if (speed_when_cued)
                play(*speed_when_cued);
            speed_when_cued.clear();
        }
        break;
    case Status::play:
        advance_play();
        break;
    case Status::timedelay:
        advance_follow();
        break;
    case Status::insert:
        advance_insert();
        break;
    default:
        break;
    }
}

void VeskLayer::advance_play()
{
    changed(Group::timecode);
    changed(Group::peak);
    if (!loaded)
        return;
    VeskRange const range = loop_range();
    if (range.empty()) {
        if (motion.step(way_ahead()))
            halt(stopped | ended);
    } else if (to_and_fro()) {
        int const before = motion.speed;
        motion.step_to_and_fro(range);
        if (motion.speed != before)
            changed(Group::speed);
    } else {
        motion.step_round(range);
    }
}

void VeskLayer::advance_follow()
{
    changed(Group::timecode);
    changed(Group::peak);
    VeskClip const &clip = *loaded;
    if (!clip.growing) {
        if (motion.step(whole()))
            halt(stopped | ended);
    } else if (clip.head >= delay) {
        place(clip.head - delay);
    } else {
        // A recording that goes round still has what it has not yet overwritten.
        unsigned int const older = clip.at_limit() ? clip.length() - 1 - clip.head : 0;
        place(older > 0 ? clip.length() - std::min(delay - clip.head, older) : 0);
    }
}

void VeskLayer::advance_insert()
{
    changed(Group::timecode);
    changed(Group::peak);
    if (motion.step(whole())) {
        end_writing();
        halt(stopped | ended);
    }
}

void VeskLayer::end_writing()
{
    if (state == Status::record)
        clips->end_recording(*loaded);
    else if (state == Status::insert)
        clips->overwritten(*loaded);
    else
        return;
    changed(Group::info);
}

void VeskLayer::halt(unsigned int event)
{
    set_state(loaded ? Status::stop : Status::idle);
    events |= event;
}

void VeskLayer::set_state(Status next)
{
    if (state == next)
        return;
    bool const moved = moving();
    state = next;
    changed(Group::status);
    if (!moving()) {
        set_speed(0);
        if (moved)
            changed(Group::peak);
    }
}

void VeskLayer::set_speed(int speed)
{
    if (motion.speed == speed)
        return;
    motion.speed = speed;
    changed(Group::speed);
}

void VeskLayer::place(long long field)
{
    unsigned int const before = position();
    motion.go_to(field, whole());
    if (position() != before)
        changed(Group::timecode);
}

VeskRange VeskLayer::whole() const
{
    return {0, loaded ? loaded->length() : 0};
}

VeskRange VeskLayer::way_ahead() const
{
    VeskRange range = whole();
    if (play_out && motion.speed > 0 && position() < *play_out)
        range.end = std::min(range.end, *play_out);
    return range;
}

VeskRange VeskLayer::loop_range() const
{
    switch (loop_mode) {
    case VCTP3::Loop::loop:
    case VCTP3::Loop::pingpong:
        return whole();
    case VCTP3::Loop::auto_:
        if (!in_point || !end_point)
            return {};
        [[fallthrough]];
    case VCTP3::Loop::loopto:
    case VCTP3::Loop::pingpongto: {
        unsigned int const length = loaded->length();
        return {in_point.value_or(0), std::min(end_point.value_or(length), length)};
    }
    default:
        return {};
    }
}

bool VeskLayer::to_and_fro() const
{
    return loop_mode == VCTP3::Loop::pingpong || loop_mode == VCTP3::Loop::pingpongto;
}

void VeskLayer::changed(Group type)
{
    changes |= 1U << static_cast<unsigned int>(type);
}
