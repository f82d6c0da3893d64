// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "sim/vesk/vesk_handler.h"
#include "sim/vesk/vesk_request.h"
#include "sim/vesk/vesk_sequence_desk.h"
#include "sim/vesk/vesk_world.h"

/// Stored lists and chases.
class VeskStoredCommands : public virtual VeskHandler
{
public:
    explicit VeskStoredCommands(VeskWorld *world);

    void on_list_save_start(VeskRequest &request, ListSaveStartArgs const &args) override;
    void on_list_save_element(VeskRequest &request, ListSaveElementArgs const &args) override;
    void on_list_save_end(VeskRequest &request, ListSaveEndArgs const &args) override;
    void on_download_list(VeskRequest &request, DownloadListArgs const &args) override;
    void on_download_listids(VeskRequest &request, DownloadListidsArgs const &args) override;
    void on_list_delete(VeskRequest &request, ListDeleteArgs const &args) override;
    void on_list_rename(VeskRequest &request, ListRenameArgs const &args) override;

    void on_chase_save_start(VeskRequest &request, ChaseSaveStartArgs const &args) override;
    void on_chase_save_element(VeskRequest &request, ChaseSaveElementArgs const &args) override;
    void on_chase_save_end(VeskRequest &request, ChaseSaveEndArgs const &args) override;
    void on_download_chase(VeskRequest &request, DownloadChaseArgs const &args) override;
    void on_download_chaseids(VeskRequest &request, DownloadChaseidsArgs const &args) override;
    void on_chase_delete(VeskRequest &request, ChaseDeleteArgs const &args) override;
    void on_chase_rename(VeskRequest &request, ChaseRenameArgs const &args) override;

private:
    VeskSequenceDesk<VeskListKind> lists;
    VeskSequenceDesk<VeskChaseKind> chases;
};
