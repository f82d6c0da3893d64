// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "sim/vesk/vesk_handler.h"
#include "sim/vesk/vesk_request.h"
#include "sim/vesk/vesk_world.h"

/// Answers what drives channels: transport, precue, loop and out points, gangs and ownership.
/// Thread: the server's.
class VeskTransportCommands : public virtual VeskHandler
{
public:
    /// \a world must outlive this object.
    explicit VeskTransportCommands(VeskWorld *world);

    void on_play(VeskRequest &request, PlayArgs const &args) override;
    void on_stop(VeskRequest &request, StopArgs const &args) override;
    void on_jog(VeskRequest &request, JogArgs const &args) override;
    void on_gotocmd(VeskRequest &request, GotocmdArgs const &args) override;
    void on_go_at(VeskRequest &request, GoAtArgs const &args) override;
    void on_go_live(VeskRequest &request, GoLiveArgs const &args) override;
    void on_cue_clip(VeskRequest &request, CueClipArgs const &args) override;
    void on_unload(VeskRequest &request, UnloadArgs const &args) override;
    void on_take(VeskRequest &request, TakeArgs const &args) override;
    void on_insert_edit(VeskRequest &request, InsertEditArgs const &args) override;
    void on_ee(VeskRequest &request, EeArgs const &args) override;
    void on_iso_angle(VeskRequest &request, IsoAngleArgs const &args) override;
    void on_output_gain(VeskRequest &request, OutputGainArgs const &args) override;
    void on_sending_chase_ltcin(VeskRequest &request, SendingChaseLtcinArgs const &args) override;
    void on_sync(VeskRequest &request, SyncArgs const &args) override;

    void on_precue(VeskRequest &request, PrecueArgs const &args) override;
    void on_precue_activate(VeskRequest &request, PrecueActivateArgs const &args) override;
    void on_precue_clear(VeskRequest &request, PrecueClearArgs const &args) override;

    void on_set_loop(VeskRequest &request, SetLoopArgs const &args) override;
    void on_set_loop_in(VeskRequest &request, SetLoopInArgs const &args) override;
    void on_set_loop_out(VeskRequest &request, SetLoopOutArgs const &args) override;
    void on_clear_loop_in(VeskRequest &request, ClearLoopInArgs const &args) override;
    void on_clear_loop_out(VeskRequest &request, ClearLoopOutArgs const &args) override;
    void on_set_out_point(VeskRequest &request, SetOutPointArgs const &args) override;
    void on_clear_out_point(VeskRequest &request, ClearOutPointArgs const &args) override;

    void on_gang_play(VeskRequest &request, GangPlayArgs const &args) override;
    void on_gang_stop(VeskRequest &request, GangStopArgs const &args) override;
    void on_gang_jog(VeskRequest &request, GangJogArgs const &args) override;
    void on_gang_gotocmd(VeskRequest &request, GangGotocmdArgs const &args) override;
    void on_gang_go_at(VeskRequest &request, GangGoAtArgs const &args) override;
    void on_gang_insert_edit(VeskRequest &request, GangInsertEditArgs const &args) override;
    void on_gang_ee(VeskRequest &request, GangEeArgs const &args) override;
    void on_gang_precue_activate(VeskRequest &request, GangPrecueActivateArgs const &args) override;

    void on_steal_channel(VeskRequest &request, StealChannelArgs const &args) override;
    void on_unsteal_channel(VeskRequest &request, UnstealChannelArgs const &args) override;

private:
    /// Checks all channels of a set, then acts on them in the order of the set: all or none.
    template <typename Check, typename Act>
    void gang(VeskRequest &request, VCTP3::ChannelSet const &set, Check check, Act act);
    /// For a command that cannot fail.
    template <typename Act> void act(VeskRequest &request, VCTP3::Channel channel, Act act);

    VeskWorld *model;
};
