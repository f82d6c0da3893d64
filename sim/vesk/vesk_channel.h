// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "sim/vesk/vesk_layer.h"

#include <deque>

/// A clip that is made ready behind what a channel plays.
struct VeskPrecue
{
    VeskClipUse clip;
    VeskCue cue;
    VCTP3::PrecueCondition condition = VCTP3::PrecueCondition::explicit_switch;
};

/// Who holds a channel, and for what.
struct VeskOwner
{
    /// 0: nobody.
    quint64 connection = 0;
    VCTP3::PlayOrRecord direction = VCTP3::PlayOrRecord::play;
    AString client;
};

/// One channel: two layers, the clips precued behind the first, a transition, and who holds it.
///
/// A command is checked first and then done, so that a gang is done on all its channels or none:
/// the `can_` functions say why not in \a failure, the others count on their having been asked.
/// Thread: the server's.
class VeskChannel
{
public:
    static constexpr unsigned int max_precues = 16;
    /// Fields of a dissolve that names no duration.
    static constexpr unsigned int usual_dissolve = 30;

    VeskChannel(VCTP3::Channel name, VeskClips *store);

    VCTP3::Channel name() const { return letter; }
    VeskLayer const &layer(VCTP3::Layer which) const { return at(which); }
    VeskLayer const &normal() const { return layers[0]; }
    unsigned int precue_count() const { return static_cast<unsigned int>(precues.size()); }
    bool in_transition() const { return transition_left != 0; }
    unsigned short edit_mask() const { return mask; }
    bool auto_ee() const { return automatic; }
    VeskOwner const &owner() const { return holder; }

    /// Something is loaded.
    bool can_play(VCTP3::Layer which, VeskFailure *failure) const;
    /// Something is loaded that is not for recording.
    bool can_move(VCTP3::Layer which, VeskFailure *failure) const;
    bool can_insert(VeskFailure *failure) const;
    /// \a angle is one of \a clip.
    bool can_show(
        VeskClip const &clip, AOption<unsigned char> const &angle, VeskFailure *failure) const;
    bool can_precue(VeskFailure *failure) const;
    bool can_activate(VeskFailure *failure) const;

    void load(VCTP3::Layer which, VeskClip &clip, VeskCue const &cue);
    void arm(VeskClip &clip);
    void show_input();
    void follow(VeskClip &clip, AOption<unsigned char> const &angle, unsigned int delay);
    void unload(VCTP3::Layer which);

    /// Without a speed: the one that the clip was cued with.
    void play(VCTP3::Layer which, AOption<int> const &speed);
    void stop(VCTP3::Layer which);
    void jog(VCTP3::Layer which, int fields);
    void go_to(unsigned int field);
    void go_at(VCTP3::Layer which, unsigned int field, AOption<int> const &speed);
    void insert(unsigned short edit_mask);
    void set_ee(unsigned short edit_mask, bool automatic_ee);
    void set_angle(unsigned char angle);
    void set_gain(VCTP3::Layer which, int decibels);
    void set_loop(VCTP3::Layer which, VCTP3::Loop loop);
    void set_loop_in(AOption<unsigned int> const &field);
    void set_loop_out(AOption<unsigned int> const &field);
    void set_out_point(AOption<unsigned int> const &field);

    /// Starts at once what need not wait.
    void precue(VeskPrecue precue);
    void clear_precues();
    /// Starts the first precued clip at its natural speed.
    void activate();
    /// Starts the first precued clip. \a duration: fields of a dissolve, 0 for a cut.
    void take(VCTP3::FollowSpeed speed, unsigned int duration);

    void set_owner(VeskOwner const &next);

    /// Whatever is loaded or precued goes, and so does the owner.
    void reset();
    void clip_edited(VeskClip const &clip);
    /// One field: first the recordings of all channels, then everything else.
    void record_field() { layers[0].record_field(); }
    void advance_field();

    /// The `ChannelReportType` bits of what changed since the last call.
    unsigned int take_changes();

private:
    VeskLayer &at(VCTP3::Layer which) { return layers[static_cast<int>(which)]; }
    VeskLayer const &at(VCTP3::Layer which) const { return layers[static_cast<int>(which)]; }
    void start_precued(int speed);
    void start_what_is_due();
    void info_changed();

    VCTP3::Channel letter;
    VeskLayer layers[2];
    std::deque<VeskPrecue> precues;
    unsigned int transition_left = 0;
    unsigned short mask = 0;
    bool automatic = false;
    VeskOwner holder;
    unsigned int changes = 0;
};
