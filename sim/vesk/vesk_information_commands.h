// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "sim/vesk/vesk_handler.h"
#include "sim/vesk/vesk_request.h"
#include "sim/vesk/vesk_world.h"

/// Answers what concerns the machine itself, and keeps the log.
/// Thread: the server's.
class VeskInformationCommands : public virtual VeskHandler
{
public:
    explicit VeskInformationCommands(VeskWorld *world);

    void on_get_computer_name(VeskRequest &request, GetComputerNameArgs const &args) override;
    void on_get_version_info(VeskRequest &request, GetVersionInfoArgs const &args) override;
    void on_get_reference_source(VeskRequest &request, GetReferenceSourceArgs const &args) override;
    void on_get_video_standard(VeskRequest &request, GetVideoStandardArgs const &args) override;
    void on_get_compression_info(VeskRequest &request, GetCompressionInfoArgs const &args) override;
    void on_get_io_latency(VeskRequest &request, GetIoLatencyArgs const &args) override;
    void on_get_playlist_status(VeskRequest &request, GetPlaylistStatusArgs const &args) override;
    void on_get_pgm_dbkey(VeskRequest &request, GetPgmDbkeyArgs const &args) override;
    void on_set_pgm_dbkey(VeskRequest &request, SetPgmDbkeyArgs const &args) override;
    void on_log(VeskRequest &request, LogArgs const &args) override;
    void on_debug_label(VeskRequest &request, DebugLabelArgs const &args) override;

private:
    VeskWorld *model;
};
