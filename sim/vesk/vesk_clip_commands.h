// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "sim/vesk/vesk_handler.h"
#include "sim/vesk/vesk_request.h"
#include "sim/vesk/vesk_world.h"

/// Answers what concerns stored clips, their directories and the disk.
/// Thread: the server's.
class VeskClipCommands : public virtual VeskHandler
{
public:
    /// \a world must outlive this object.
    explicit VeskClipCommands(VeskWorld *world);

    void on_clip_exists(VeskRequest &request, ClipExistsArgs const &args) override;
    void on_get_clip_info(VeskRequest &request, GetClipInfoArgs const &args) override;
    void on_create_clip(VeskRequest &request, CreateClipArgs const &args) override;
    void on_create_child_clip(VeskRequest &request, CreateChildClipArgs const &args) override;
    void on_delete_clip(VeskRequest &request, DeleteClipArgs const &args) override;
    void on_rename_clip(VeskRequest &request, RenameClipArgs const &args) override;
    void on_modify_clip_attributes(
        VeskRequest &request, ModifyClipAttributesArgs const &args) override;
    void on_download_clipids(VeskRequest &request, DownloadClipidsArgs const &args) override;

    void on_create_directory(VeskRequest &request, CreateDirectoryArgs const &args) override;
    void on_rename_dir(VeskRequest &request, RenameDirArgs const &args) override;
    void on_download_directory_names(
        VeskRequest &request, DownloadDirectoryNamesArgs const &args) override;

    void on_get_disk_usage(VeskRequest &request, GetDiskUsageArgs const &args) override;
    void on_get_current_timecode(VeskRequest &request, GetCurrentTimecodeArgs const &args) override;
    void on_get_volatile_file_info(
        VeskRequest &request, GetVolatileFileInfoArgs const &args) override;

private:
    void record_on(VeskRequest &request, CreateClipArgs const &args);

    VeskWorld *model;
};
