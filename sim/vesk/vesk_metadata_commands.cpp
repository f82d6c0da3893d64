// SPDX-License-Identifier: Apache-2.0
#include "sim/vesk/vesk_metadata_commands.h"

#include "sim/vesk/replies.h"

VeskMetadataCommands::VeskMetadataCommands(VeskWorld *world)
    : model(world)
{
}

void VeskMetadataCommands::on_metadata_set(VeskRequest &request, MetadataSetArgs const &args)
{
    model->metadata.set(args.metadata_database, *args.metadata_prefix, args.metadata_list);
    request.ok();
}

void VeskMetadataCommands::on_metadata_erase(VeskRequest &request, MetadataEraseArgs const &args)
{
    model->metadata.erase(args.metadata_database, *args.metadata_prefix, args.key_list);
    request.ok();
}

void VeskMetadataCommands::on_download_metadata(
    VeskRequest &request, DownloadMetadataArgs const &args)
{
    AString const prefix = *args.metadata_prefix;
    model->metadata.read(args.metadata_database, prefix, [&](VeskMetadata::Pairs const &block) {
        request.reply(VeskReplies::metadata(args.metadata_database, prefix, block));
    });
    request.ok();
}

void VeskMetadataCommands::on_watch_metadata_database(
    VeskRequest &request, WatchMetadataDatabaseArgs const &args)
{
    model->metadata.watch(args.metadata_database, *args.metadata_prefix, request.connection());
    request.ok();
}

void VeskMetadataCommands::on_unwatch_metadata_database(
    VeskRequest &request, UnwatchMetadataDatabaseArgs const &args)
{
    model->metadata.unwatch(args.metadata_database, request.connection());
    request.ok();
}
