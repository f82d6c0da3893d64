// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "sim/vesk/vesk_clip.h"
#include "sim/vesk/vesk_clips.h"
#include "sim/vesk/vesk_motion.h"

#include <utility>

/// How a clip is loaded. What is not given is the clip's own, or none.
struct VeskCue
{
    AOption<VCTP3::Loop> loop;
    AOption<unsigned int> position;
    AOption<unsigned int> out_point;
    AOption<unsigned char> angle;
    AOption<VCTP3::Playback> playback;
    AOption<int> speed;
    AOption<unsigned int> loop_in;
    AOption<unsigned int> loop_out;
    AOption<int> gain;
    bool black_on_cue = false;
};

/// The transport of one layer of a channel: what is loaded, where it stands and how it moves.
/// Commands take effect at once, movement comes with the fields. No field allocates memory.
/// Thread: the server's.
class VeskLayer
{
public:
    /// What a field or a command led to, as bits.
    enum Event : unsigned int
    {
        /// It moved and now stands still.
        stopped = 1,
        /// It came to the end of its clip or to its out point.
        ended = 2,
    };
    /// The fields that a clip takes to cue.
    static constexpr unsigned int cue_fields = 2;

    explicit VeskLayer(VeskClips *store);

    VCTP3::ChannelStatus status() const { return state; }
    /// Null while nothing is loaded.
    VeskClip *clip() const { return loaded.get(); }
    unsigned int position() const { return motion.field(); }
    /// 16.16; what a report shows, 0 unless it moves.
    int speed() const { return moving() ? motion.speed : 0; }
    int natural_speed() const { return natural; }
    VCTP3::Loop loop() const { return loop_mode; }
    AOption<unsigned int> const &loop_in() const { return in_point; }
    AOption<unsigned int> const &loop_out() const { return end_point; }
    AOption<unsigned int> const &out_point() const { return play_out; }
    unsigned char angle() const { return shown_angle; }
    VCTP3::Playback playback() const { return playback_mode; }
    int gain() const { return level_gain; }
    bool black_on_cue() const { return black; }
    bool moving() const;
    bool recording() const { return state == VCTP3::ChannelStatus::record; }
    /// Whether `play` starts a recording.
    bool armed() const { return is_armed; }

    /// Loads a clip and cues it; the layer stands at its position after `cue_fields`.
    void load(VeskClip &clip, VeskCue const &cue);
    /// Loads a clip that was made ready before and plays it from this field on.
    void start(VeskClip &clip, VeskCue const &cue, int speed);
    /// Loads a new clip, which `play` records.
    void arm(VeskClip &clip);
    /// Shows the input.
    void show_input();
    /// Shows a clip that is being recorded so many fields behind its head.
    void follow(VeskClip &clip, AOption<unsigned char> const &angle, unsigned int delay);
    void unload();

    /// What follows needs a loaded clip, but for `stop`. A clip that is still cueing does it when
    /// it is ready.
    void play(int speed);
    void stop();
    void jog(int fields);
    void go_to(unsigned int field);
    void go_at(unsigned int field, int speed);
    void insert();

    void set_loop(VCTP3::Loop loop);
    void set_loop_in(AOption<unsigned int> const &field);
    void set_loop_out(AOption<unsigned int> const &field);
    void set_out_point(AOption<unsigned int> const &field);
    void set_angle(unsigned char angle);
    void set_gain(int decibels);
    /// The clip's attributes or its name are others now.
    void clip_edited();

    /// One field of a recording; nothing for any other state. Comes before `advance_field` of all
    /// layers, so that those who follow the recording see its new head.
    void record_field();
    void advance_field();

    /// The `ChannelReportType` bits, of the normal layer, of what changed since the last call.
    unsigned int take_changes() { return std::exchange(changes, 0U); }
    unsigned int take_events() { return std::exchange(events, 0U); }

private:
    void take_over(VeskClip &clip, VeskCue const &cue);
    void clear();
    void end_writing();
    void halt(unsigned int event);
    void set_state(VCTP3::ChannelStatus next);
    void set_speed(int speed);
    void place(long long field);
    void advance_play();
    void advance_follow();
    void advance_insert();
    void tell_growth();
    VeskRange whole() const;
    /// What `play` goes through without a loop.
    VeskRange way_ahead() const;
    /// The range that a loop goes through; empty when it does not loop.
    VeskRange loop_range() const;
    bool to_and_fro() const;
    void changed(VCTP3::ChannelReportType type);

    VeskClips *clips;
    VeskClipUse loaded;
    VCTP3::ChannelStatus state = VCTP3::ChannelStatus::idle;
    VeskMotion motion;
    int natural = VeskMotion::normal_speed;
    VCTP3::Loop loop_mode = VCTP3::Loop::off;
    AOption<unsigned int> in_point;
    AOption<unsigned int> end_point;
    AOption<unsigned int> play_out;
    unsigned char shown_angle = 1;
    VCTP3::Playback playback_mode = VCTP3::Playback::auto_;
    int level_gain = 0;
    bool black = false;
    bool is_armed = false;
    unsigned int cueing_left = 0;
    AOption<int> speed_when_cued;
    unsigned int delay = 0;
    /// What was last said of the clip's length.
    unsigned int length_told = 0;
    unsigned int changes = 0;
    unsigned int events = 0;
};
