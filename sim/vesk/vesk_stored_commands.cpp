// SPDX-License-Identifier: Apache-2.0
#include "sim/vesk/vesk_stored_commands.h"

VeskStoredCommands::VeskStoredCommands(VeskWorld *world)
    : lists(&world->lists)
    , chases(&world->chases)
{
}

void VeskStoredCommands::on_list_save_start(VeskRequest &request, ListSaveStartArgs const &args)
{
    lists.start(request, args.list_id);
}

void VeskStoredCommands::on_list_save_element(VeskRequest &request, ListSaveElementArgs const &args)
{
    lists.add(request, args.list_element);
}

void VeskStoredCommands::on_list_save_end(VeskRequest &request, ListSaveEndArgs const &)
{
    lists.end(request);
}

void VeskStoredCommands::on_download_list(VeskRequest &request, DownloadListArgs const &args)
{
    lists.download(request, args.list_id);
}

void VeskStoredCommands::on_download_listids(VeskRequest &request, DownloadListidsArgs const &)
{
    lists.ids(request);
}

void VeskStoredCommands::on_list_delete(VeskRequest &request, ListDeleteArgs const &args)
{
    lists.remove(request, args.list_id);
}

void VeskStoredCommands::on_list_rename(VeskRequest &request, ListRenameArgs const &args)
{
    lists.rename(request, args.list_from_id, args.list_to_id);
}

void VeskStoredCommands::on_chase_save_start(VeskRequest &request, ChaseSaveStartArgs const &args)
{
    chases.start(request, args.chase_id);
}

void VeskStoredCommands::on_chase_save_element(
    VeskRequest &request, ChaseSaveElementArgs const &args)
{
    chases.add(request, args.chase_element);
}

void VeskStoredCommands::on_chase_save_end(VeskRequest &request, ChaseSaveEndArgs const &)
{
    chases.end(request);
}

void VeskStoredCommands::on_download_chase(VeskRequest &request, DownloadChaseArgs const &args)
{
    chases.download(request, args.chase_id);
}

void VeskStoredCommands::on_download_chaseids(VeskRequest &request, DownloadChaseidsArgs const &)
{
    chases.ids(request);
}

void VeskStoredCommands::on_chase_delete(VeskRequest &request, ChaseDeleteArgs const &args)
{
    chases.remove(request, args.chase_id);
}

void VeskStoredCommands::on_chase_rename(VeskRequest &request, ChaseRenameArgs const &args)
{
    chases.rename(request, args.chase_from_id, args.chase_to_id);
}
