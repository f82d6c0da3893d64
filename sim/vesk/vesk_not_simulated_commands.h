// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "sim/vesk/vesk_handler.h"
#include "sim/vesk/vesk_request.h"
#include "sim/vesk/vesk_world.h"

// clang-format off
#define VESK_NOT_SIMULATED(X) \
    X(list_load, ListLoadArgs) \
    X(list_load_squall, ListLoadSquallArgs) \
    X(list_bed, ListBedArgs) \
    X(list_unload, ListUnloadArgs) \
    X(list_insert, ListInsertArgs) \
    X(list_remove_item, ListRemoveItemArgs) \
    X(list_up_one_item, ListUpOneItemArgs) \
    X(list_down_one_item, ListDownOneItemArgs) \
    X(list_set_loop, ListSetLoopArgs) \
    X(list_take, ListTakeArgs) \
    X(list_play_now, ListPlayNowArgs) \
    X(list_play_next, ListPlayNextArgs) \
    X(list_play_modify_item, ListPlayModifyItemArgs) \
    X(list_play_clear_modified, ListPlayClearModifiedArgs) \
    X(list_play_reorder_start, ListPlayReorderStartArgs) \
    X(list_play_reorder_item, ListPlayReorderItemArgs) \
    X(list_play_reorder_finish, ListPlayReorderFinishArgs) \
    X(chase_load, ChaseLoadArgs) \
    X(chase_unload, ChaseUnloadArgs) \
    X(chase_insert, ChaseInsertArgs) \
    X(chase_remove_item, ChaseRemoveItemArgs) \
    X(chase_play_modify_item, ChasePlayModifyItemArgs) \
    X(chase_play_clear_modified, ChasePlayClearModifiedArgs) \
    X(chase_play_reorder_start, ChasePlayReorderStartArgs) \
    X(chase_play_reorder_item, ChasePlayReorderItemArgs) \
    X(chase_play_reorder_finish, ChasePlayReorderFinishArgs) \
    X(vclip_create, VclipCreateArgs) \
    X(vclip_free, VclipFreeArgs) \
    X(vclip_modification_start, VclipModificationStartArgs) \
    X(vclip_modification_end, VclipModificationEndArgs) \
    X(vclip_cfg_tracks, VclipCfgTracksArgs) \
    X(vclip_add_segment, VclipAddSegmentArgs) \
    X(vclip_modify_segment, VclipModifySegmentArgs) \
    X(vclip_clear_segment, VclipClearSegmentArgs) \
    X(vclip_ripple, VclipRippleArgs) \
    X(vclip_track_enable, VclipTrackEnableArgs) \
    X(export_initiate, ExportInitiateArgs) \
    X(export_start, ExportStartArgs) \
    X(export_add, ExportAddArgs) \
    X(export_end, ExportEndArgs) \
    X(download_melts, DownloadMeltsArgs) \
    X(get_panel_mode, GetPanelModeArgs) \
    X(set_panel_mode, SetPanelModeArgs) \
    X(get_panel_event, GetPanelEventArgs) \
    X(set_panel_event, SetPanelEventArgs)
// clang-format on

/// What this server does not do yet: lists and chases on channels, virtual clips, export, melts
/// and panels. Each of their commands is answered with the error "not simulated".
class VeskNotSimulatedCommands : public virtual VeskHandler
{
public:
#define X(command, Args) void on_##command(VeskRequest &request, Args const &args) override;
    VESK_NOT_SIMULATED(X)
#undef X
};
