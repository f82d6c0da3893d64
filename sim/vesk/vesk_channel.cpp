// SPDX-License-Identifier: Apache-2.0
#include "sim/vesk/vesk_channel.h"

#include <utility>

using Layer = VCTP3::Layer;
using Condition = VCTP3::PrecueCondition;
using Group = VCTP3::ChannelReportType;

namespace {

constexpr unsigned int normal_groups = 6;

bool fail_on(VeskFailure *failure, VCTP3::Channel channel, char const *text)
{
    AString const letter = VCTP3::Channel_to_string(channel);
    return vesk_fail(failure, AString::l1("Channel %1 %2").arg(letter).arg(AString::l1(text)));
}

int followed_speed(VCTP3::FollowSpeed mode, int before, int natural)
{
    switch (mode) {
    case VCTP3::FollowSpeed::none:
        return 0;
    case VCTP3::FollowSpeed::oneX:
        return VeskMotion::normal_speed;
    case VCTP3::FollowSpeed::follow:
        return before;
    case VCTP3::FollowSpeed::smart:
        break;
    }
    return before ? before : natural;
}

} // namespace

VeskChannel::VeskChannel(VCTP3::Channel name, VeskClips *store)
    : letter(name)
    , layers{VeskLayer(store), VeskLayer(store)}
{
}

// what can be done

bool VeskChannel::can_play(Layer which, VeskFailure *failure) const
{
    return at(which).clip() || fail_on(failure, letter, "has no clip loaded");
}

bool VeskChannel::can_move(Layer which, VeskFailure *failure) const
{
    if (!can_play(which, failure))
        return false;
    VeskLayer const &layer = at(which);
    return !(layer.armed() || layer.recording()) || fail_on(failure, letter, "is recording");
}

bool VeskChannel::can_insert(VeskFailure *failure) const
{
    if (!can_move(Layer::normal, failure))
        return false;
    VCTP3::ClipInfo const &info = normal().clip()->info;
    return !(info.read_only || info.read_only_content)
        || fail_on(failure, letter, "has a read-only clip");
}

bool VeskChannel::can_show(
    VeskClip const &clip, AOption<unsigned char> const &angle, VeskFailure *failure) const
{
    if (!angle || (*angle >= 1 && *angle <= clip.angle_count()))
        return true;
    return vesk_fail(failure,
        AString::l1("\"%1\" has no angle %2")
            .arg(clip.id())
            .arg(static_cast<unsigned int>(*angle)));
}

bool VeskChannel::can_precue(VeskFailure *failure) const
{
    return precues.size() < max_precues || fail_on(failure, letter, "has no room for a precue");
}

bool VeskChannel::can_activate(VeskFailure *failure) const
{
    return !precues.empty() || fail_on(failure, letter, "has no precued clip");
}

// loading

void VeskChannel::load(Layer which, VeskClip &clip, VeskCue const &cue)
{
    at(which).load(clip, cue);
}

void VeskChannel::arm(VeskClip &clip)
{
    layers[0].arm(clip);
}

void VeskChannel::show_input()
{
    layers[0].show_input();
}

void VeskChannel::follow(VeskClip &clip, AOption<unsigned char> const &angle, unsigned int delay)
{
    layers[0].follow(clip, angle, delay);
}

void VeskChannel::unload(Layer which)
{
    at(which).unload();
}

// transport

void VeskChannel::play(Layer which, AOption<int> const &speed)
{
    VeskLayer &layer = at(which);
    layer.play(speed.value_or(layer.natural_speed()));
    start_what_is_due();
}

void VeskChannel::stop(Layer which)
{
    at(which).stop();
    start_what_is_due();
}

void VeskChannel::jog(Layer which, int fields)
{
    at(which).jog(fields);
    start_what_is_due();
}

void VeskChannel::go_to(unsigned int field)
{
    layers[0].go_to(field);
    start_what_is_due();
}

void VeskChannel::go_at(Layer which, unsigned int field, AOption<int> const &speed)
{
    VeskLayer &layer = at(which);
    layer.go_at(field, speed.value_or(layer.natural_speed()));
    start_what_is_due();
}

void VeskChannel::insert(unsigned short edit_mask)
{
    set_ee(edit_mask, automatic);
    layers[0].insert();
}

void VeskChannel::set_ee(unsigned short edit_mask, bool automatic_ee)
{
    mask = edit_mask;
    automatic = automatic_ee;
    info_changed();
}

void VeskChannel::set_angle(unsigned char angle)
{
    layers[0].set_angle(angle);
}

void VeskChannel::set_gain(Layer which, int decibels)
{
    at(which).set_gain(decibels);
}

void VeskChannel::set_loop(Layer which, VCTP3::Loop loop)
{
    at(which).set_loop(loop);
}

void VeskChannel::set_loop_in(AOption<unsigned int> const &field)
{
    layers[0].set_loop_in(field);
}

void VeskChannel::set_loop_out(AOption<unsigned int> const &field)
{
    layers[0].set_loop_out(field);
}

void VeskChannel::set_out_point(AOption<unsigned int> const &field)
{
    layers[0].set_out_point(field);
}

// precue

void VeskChannel::precue(VeskPrecue precue)
{
    bool const nothing_before = precues.empty() && !normal().clip();
    Condition const condition = precue.condition;
    precues.push_back(std::move(precue));
    info_changed();
    if (nothing_before && condition != Condition::explicit_switch)
        activate();
    else
        start_what_is_due();
}

void VeskChannel::clear_precues()
{
    precues.clear();
    info_changed();
}

void VeskChannel::activate()
{
    start_precued(precues.front().cue.speed.value_or(VeskMotion::normal_speed));
}

void VeskChannel::take(VCTP3::FollowSpeed speed, unsigned int duration)
{
    int const natural = precues.front().cue.speed.value_or(VeskMotion::normal_speed);
    start_precued(followed_speed(speed, normal().speed(), natural));
    transition_left = duration;
    info_changed();
}

void VeskChannel::start_precued(int speed)
{
    VeskPrecue const next = std::move(precues.front());
    precues.pop_front();
    layers[0].start(*next.clip, next.cue, speed);
}

void VeskChannel::start_what_is_due()
{
    unsigned int const events = layers[0].take_events();
    if (precues.empty())
        return;
    switch (precues.front().condition) {
    case Condition::explicit_switch:
        return;
    case Condition::previous_stops:
        if (!(events & VeskLayer::stopped))
            return;
        break;
    case Condition::end_of_clip:
    case Condition::end_of_clip2:
        if (!(events & VeskLayer::ended))
            return;
        break;
    case Condition::immediate:
        break;
    }
    activate();
}

// the rest

void VeskChannel::set_owner(VeskOwner const &next)
{
    holder = next;
    info_changed();
}

void VeskChannel::reset()
{
    clear_precues();
    layers[0].unload();
    layers[1].unload();
    transition_left = 0;
    mask = 0;
    automatic = false;
    set_owner(VeskOwner());
}

void VeskChannel::clip_edited(VeskClip const &clip)
{
    for (VeskLayer &layer : layers) {
        if (layer.clip() == &clip)
            layer.clip_edited();
    }
}

void VeskChannel::advance_field()
{
    for (VeskLayer &layer : layers)
        layer.advance_field();
    start_what_is_due();
    if (transition_left && --transition_left == 0)
        info_changed();
}

unsigned int VeskChannel::take_changes()
{
    unsigned int const all
        = changes | layers[0].take_changes() | layers[1].take_changes() << normal_groups;
    changes = 0;
    return all;
}

void VeskChannel::info_changed()
{
    changes |= 1U << static_cast<unsigned int>(Group::info);
}
