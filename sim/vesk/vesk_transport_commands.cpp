// SPDX-License-Identifier: Apache-2.0
#include "sim/vesk/vesk_transport_commands.h"

#include "sim/vesk/replies.h"
#include "sim/vesk/reports.h"

#include <utility>

using Layer = VCTP3::Layer;
using VCTP3::ChannelSet;

namespace {

using Can = bool (VeskChannel::*)(VeskFailure *) const;

/// A check of the whole channel.
auto check(Can can)
{
    return
        [can](VeskChannel const &channel, VeskFailure *failure) { return (channel.*can)(failure); };
}

auto can_play(Layer layer)
{
    return [layer](VeskChannel const &channel, VeskFailure *failure) {
        return channel.can_play(layer, failure);
    };
}

auto can_move(Layer layer)
{
    return [layer](VeskChannel const &channel, VeskFailure *failure) {
        return channel.can_move(layer, failure);
    };
}

bool anything(VeskChannel const &, VeskFailure *)
{
    return true;
}

void fail(VeskRequest &request, VeskFailure const &failure)
{
    request.error(failure.text, failure.code);
}

VeskCue cue_of(CueClipArgs const &args)
{
    VeskCue cue;
    cue.loop = args.loop;
    cue.position = args.goto_position;
    cue.out_point = args.clip_position;
    cue.angle = args.angle;
    cue.playback = args.playback;
    cue.speed = args.speed;
    cue.loop_in = args.loop_in;
    cue.loop_out = args.loop_out;
    cue.gain = args.gain;
    cue.black_on_cue = args.black_on_cue;
    return cue;
}

VeskCue cue_of(PrecueArgs const &args)
{
    VeskCue cue;
    cue.loop = args.loop;
    cue.position = args.goto_position;
    cue.angle = args.angle;
    cue.loop_in = args.loop_in;
    cue.loop_out = args.loop_out;
    if (args.clip_length)
        cue.out_point = args.goto_position.value_or(0) + *args.clip_length;
    return cue;
}

} // namespace

VeskTransportCommands::VeskTransportCommands(VeskWorld *world)
    : model(world)
{
}

template <typename Check, typename Act>
void VeskTransportCommands::gang(VeskRequest &request, ChannelSet const &set, Check check, Act act)
{
    VeskFailure failure;
    for (VCTP3::Channel channel : set) {
        if (!check(model->channels.at(channel), &failure))
            return fail(request, failure);
    }
    for (VCTP3::Channel channel : set)
        act(model->channels.at(channel));
    request.ok();
}

template <typename Act>
void VeskTransportCommands::act(VeskRequest &request, VCTP3::Channel channel, Act act)
{
    act(model->channels.at(channel));
    request.ok();
}

// transport

void VeskTransportCommands::on_play(VeskRequest &request, PlayArgs const &args)
{
    Layer const layer = args.layer.value_or(Layer::normal);
    gang(request, ChannelSet(args.channel), can_play(layer),
        [&](VeskChannel &channel) { channel.play(layer, args.speed); });
}

void VeskTransportCommands::on_stop(VeskRequest &request, StopArgs const &args)
{
    act(request, args.channel,
        [&](VeskChannel &channel) { channel.stop(args.layer.value_or(Layer::normal)); });
}

void VeskTransportCommands::on_jog(VeskRequest &request, JogArgs const &args)
{
    Layer const layer = args.layer.value_or(Layer::normal);
    gang(request, ChannelSet(args.channel), can_move(layer),
        [&](VeskChannel &channel) { channel.jog(layer, args.jog_distance); });
}

void VeskTransportCommands::on_gotocmd(VeskRequest &request, GotocmdArgs const &args)
{
    gang(request, ChannelSet(args.channel), can_move(Layer::normal),
        [&](VeskChannel &channel) { channel.go_to(args.goto_position); });
}

void VeskTransportCommands::on_go_at(VeskRequest &request, GoAtArgs const &args)
{
    Layer const layer = args.layer.value_or(Layer::normal);
    gang(request, ChannelSet(args.channel), can_move(layer),
        [&](VeskChannel &channel) { channel.go_at(layer, args.goto_position, args.speed); });
}

void VeskTransportCommands::on_go_live(VeskRequest &request, GoLiveArgs const &args)
{
    VeskChannel &channel = model->channels.at(args.channel);
    if (!args.clip_id) {
        if (args.angle || args.time_delay)
            return request.error(AString::l1("Angle and TimeDelay need a ClipID"));
        channel.show_input();
        return request.ok();
    }
    VeskFailure failure;
    VeskClip *clip = model->clips.find(*args.clip_id, &failure);
    if (!clip || !channel.can_show(*clip, args.angle, &failure))
        return fail(request, failure);
    if (!clip->growing)
        return request.error(AString::l1("\"%1\" is not being recorded").arg(clip->id()));
    if (clip == channel.normal().clip() && channel.normal().recording())
        return request.error(AString::l1("\"%1\" is recorded on this channel").arg(clip->id()));
    channel.follow(*clip, args.angle, args.time_delay.value_or(0));
    request.ok();
}

void VeskTransportCommands::on_cue_clip(VeskRequest &request, CueClipArgs const &args)
{
    if (args.clip_scope.value_or(VCTP3::ClipScope::clip) == VCTP3::ClipScope::vclip)
        return request.error(AString::l1("not simulated"));
    VeskChannel &channel = model->channels.at(args.channel);
    VeskFailure failure;
    VeskClip *clip = model->clips.find(args.clip_id, &failure);
    if (!clip || !channel.can_show(*clip, args.angle, &failure))
        return fail(request, failure);
    channel.load(args.layer.value_or(Layer::normal), *clip, cue_of(args));
    request.ok();
}

void VeskTransportCommands::on_unload(VeskRequest &request, UnloadArgs const &args)
{
    act(request, args.channel,
        [&](VeskChannel &channel) { channel.unload(args.layer.value_or(Layer::normal)); });
}

void VeskTransportCommands::on_take(VeskRequest &request, TakeArgs const &args)
{
    if (args.layer.value_or(Layer::normal) == Layer::bed) {
        return request.error(AString::l1("Channel %1 has no precued clip on its bed")
                                 .arg(VCTP3::Channel_to_string(args.channel)));
    }
    bool const dissolve = args.transition_type.value_or(VCTP3::TransitionType::cut)
        == VCTP3::TransitionType::dissolve;
    unsigned int const duration
        = dissolve ? args.transition_duration.value_or(VeskChannel::usual_dissolve) : 0;
    gang(request, ChannelSet(args.channel), check(&VeskChannel::can_activate),
        [&](VeskChannel &channel) {
            channel.take(args.follow_speed.value_or(VCTP3::FollowSpeed::smart), duration);
        });
}

void VeskTransportCommands::on_insert_edit(VeskRequest &request, InsertEditArgs const &args)
{
    gang(request, ChannelSet(args.channel), check(&VeskChannel::can_insert),
        [&](VeskChannel &channel) { channel.insert(args.sony_edit_mask); });
}

void VeskTransportCommands::on_ee(VeskRequest &request, EeArgs const &args)
{
    act(request, args.channel,
        [&](VeskChannel &channel) { channel.set_ee(args.sony_edit_mask, args.auto_ee); });
}

void VeskTransportCommands::on_iso_angle(VeskRequest &request, IsoAngleArgs const &args)
{
    auto const can = [&](VeskChannel const &channel, VeskFailure *failure) {
        return channel.can_play(Layer::normal, failure)
            && channel.can_show(*channel.normal().clip(), args.angle, failure);
    };
    gang(request, ChannelSet(args.channel), can,
        [&](VeskChannel &channel) { channel.set_angle(args.angle); });
}

void VeskTransportCommands::on_output_gain(VeskRequest &request, OutputGainArgs const &args)
{
    act(request, args.channel, [&](VeskChannel &channel) {
        channel.set_gain(args.layer.value_or(Layer::normal), args.gain);
    });
}

void VeskTransportCommands::on_sending_chase_ltcin(
    VeskRequest &request, SendingChaseLtcinArgs const &args)
{
    model->reporter->report(
        VCTP3::ReportType::chase_ltc_timecode, VeskReports::chase_ltc_timecode(args.timecode));
    request.ok();
}

void VeskTransportCommands::on_sync(VeskRequest &request, SyncArgs const &)
{
    request.ok();
}

// precue

void VeskTransportCommands::on_precue(VeskRequest &request, PrecueArgs const &args)
{
    VeskChannel &channel = model->channels.at(args.channel);
    VeskFailure failure;
    VeskClip *clip = model->clips.find(args.clip_id, &failure);
    if (!clip || !channel.can_show(*clip, args.angle, &failure) || !channel.can_precue(&failure))
        return fail(request, failure);
    VeskPrecue precue;
    precue.clip = VeskClipUse(clip);
    precue.cue = cue_of(args);
    precue.condition = args.precue_condition.value_or(VCTP3::PrecueCondition::explicit_switch);
    channel.precue(std::move(precue));
    request.ok();
}

void VeskTransportCommands::on_precue_activate(VeskRequest &request, PrecueActivateArgs const &args)
{
    gang(request, ChannelSet(args.channel), check(&VeskChannel::can_activate),
        [](VeskChannel &channel) { channel.activate(); });
}

void VeskTransportCommands::on_precue_clear(VeskRequest &request, PrecueClearArgs const &args)
{
    act(request, args.channel, [](VeskChannel &channel) { channel.clear_precues(); });
}

// loop and out points

void VeskTransportCommands::on_set_loop(VeskRequest &request, SetLoopArgs const &args)
{
    act(request, args.channel, [&](VeskChannel &channel) {
        channel.set_loop(args.layer.value_or(Layer::normal), args.loop);
    });
}

void VeskTransportCommands::on_set_loop_in(VeskRequest &request, SetLoopInArgs const &args)
{
    act(request, args.channel, [&](VeskChannel &channel) { channel.set_loop_in(args.loop_in); });
}

void VeskTransportCommands::on_set_loop_out(VeskRequest &request, SetLoopOutArgs const &args)
{
    act(request, args.channel, [&](VeskChannel &channel) { channel.set_loop_out(args.loop_out); });
}

void VeskTransportCommands::on_clear_loop_in(VeskRequest &request, ClearLoopInArgs const &args)
{
    act(request, args.channel, [](VeskChannel &channel) { channel.set_loop_in({}); });
}

void VeskTransportCommands::on_clear_loop_out(VeskRequest &request, ClearLoopOutArgs const &args)
{
    act(request, args.channel, [](VeskChannel &channel) { channel.set_loop_out({}); });
}

void VeskTransportCommands::on_set_out_point(VeskRequest &request, SetOutPointArgs const &args)
{
    act(request, args.channel,
        [&](VeskChannel &channel) { channel.set_out_point(args.clip_position); });
}

void VeskTransportCommands::on_clear_out_point(VeskRequest &request, ClearOutPointArgs const &args)
{
    act(request, args.channel, [](VeskChannel &channel) { channel.set_out_point({}); });
}

// gangs

void VeskTransportCommands::on_gang_play(VeskRequest &request, GangPlayArgs const &args)
{
    gang(request, args.channel_set, can_play(Layer::normal),
        [&](VeskChannel &channel) { channel.play(Layer::normal, args.speed); });
}

void VeskTransportCommands::on_gang_stop(VeskRequest &request, GangStopArgs const &args)
{
    gang(request, args.channel_set, anything,
        [](VeskChannel &channel) { channel.stop(Layer::normal); });
}

void VeskTransportCommands::on_gang_jog(VeskRequest &request, GangJogArgs const &args)
{
    gang(request, args.channel_set, can_move(Layer::normal),
        [&](VeskChannel &channel) { channel.jog(Layer::normal, args.jog_distance); });
}

void VeskTransportCommands::on_gang_gotocmd(VeskRequest &request, GangGotocmdArgs const &args)
{
    gang(request, args.channel_set, can_move(Layer::normal),
        [&](VeskChannel &channel) { channel.go_to(args.goto_position); });
}

void VeskTransportCommands::on_gang_go_at(VeskRequest &request, GangGoAtArgs const &args)
{
    gang(request, args.channel_set, can_move(Layer::normal), [&](VeskChannel &channel) {
        channel.go_at(Layer::normal, args.goto_position, args.speed);
    });
}

void VeskTransportCommands::on_gang_insert_edit(
    VeskRequest &request, GangInsertEditArgs const &args)
{
    gang(request, args.channel_set, check(&VeskChannel::can_insert),
        [&](VeskChannel &channel) { channel.insert(args.sony_edit_mask); });
}

void VeskTransportCommands::on_gang_ee(VeskRequest &request, GangEeArgs const &args)
{
    gang(request, args.channel_set, anything,
        [&](VeskChannel &channel) { channel.set_ee(args.sony_edit_mask, args.auto_ee); });
}

void VeskTransportCommands::on_gang_precue_activate(
    VeskRequest &request, GangPrecueActivateArgs const &args)
{
    gang(request, args.channel_set, check(&VeskChannel::can_activate),
        [](VeskChannel &channel) { channel.activate(); });
}

// ownership

void VeskTransportCommands::on_steal_channel(VeskRequest &request, StealChannelArgs const &args)
{
    VeskOwner owner;
    owner.connection = request.connection();
    owner.direction = args.play_or_record;
    owner.client = args.steal_client.value_or(AString());
    request.reply(VeskReplies::steal_info(model->channels.steal(args.channel, owner)));
}

void VeskTransportCommands::on_unsteal_channel(VeskRequest &request, UnstealChannelArgs const &)
{
    model->channels.unsteal(request.connection());
    request.ok();
}
