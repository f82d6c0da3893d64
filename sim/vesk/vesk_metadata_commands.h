// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "sim/vesk/vesk_handler.h"
#include "sim/vesk/vesk_request.h"
#include "sim/vesk/vesk_world.h"

/// Metadata databases.
class VeskMetadataCommands : public virtual VeskHandler
{
public:
    explicit VeskMetadataCommands(VeskWorld *world);

    void on_metadata_set(VeskRequest &request, MetadataSetArgs const &args) override;
    void on_metadata_erase(VeskRequest &request, MetadataEraseArgs const &args) override;
    void on_download_metadata(VeskRequest &request, DownloadMetadataArgs const &args) override;
    void on_watch_metadata_database(
        VeskRequest &request, WatchMetadataDatabaseArgs const &args) override;
    void on_unwatch_metadata_database(
        VeskRequest &request, UnwatchMetadataDatabaseArgs const &args) override;

private:
    VeskWorld *model;
};
