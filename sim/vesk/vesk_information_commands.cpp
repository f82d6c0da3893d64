// SPDX-License-Identifier: Apache-2.0
#include "sim/vesk/vesk_information_commands.h"

#include "kestrel/mod/vctp3/tarnlibapi/base/astring_format.h"
#include "sim/vesk/replies.h"

VeskInformationCommands::VeskInformationCommands(VeskWorld *world)
    : model(world)
{
}

void VeskInformationCommands::on_get_computer_name(
    VeskRequest &request, GetComputerNameArgs const &)
{
    request.reply(VeskReplies::computername(model->facts.computer_name()));
}

void VeskInformationCommands::on_get_version_info(VeskRequest &request, GetVersionInfoArgs const &)
{
    request.reply(VeskReplies::version_info(model->facts.version(), model->facts.version_path()));
}

void VeskInformationCommands::on_get_reference_source(
    VeskRequest &request, GetReferenceSourceArgs const &)
{
    auto source = VCTP3::ReferenceSource::freerun;
    VCTP3::string_to_ReferenceSource(
        model->configuration.effective(AString::l1("ReferenceSource")), &source);
    request.reply(VeskReplies::reference_source(source));
}

void VeskInformationCommands::on_get_video_standard(
    VeskRequest &request, GetVideoStandardArgs const &)
{
    VCTP3::VideoStandard const standard = model->clock.standard();
    request.reply(VeskReplies::video_standard(
        standard, vesk_video_rate(standard), vesk_video_resolution(standard)));
}

void VeskInformationCommands::on_get_compression_info(
    VeskRequest &request, GetCompressionInfoArgs const &)
{
    request.reply(
        VeskReplies::compression_info(model->facts.compression(model->clips.field_size())));
}

void VeskInformationCommands::on_get_io_latency(VeskRequest &request, GetIoLatencyArgs const &)
{
    request.reply(VeskReplies::io_latency(model->facts.io_latency()));
}

void VeskInformationCommands::on_get_playlist_status(
    VeskRequest &request, GetPlaylistStatusArgs const &args)
{
    request.reply(
        VeskReplies::playlist_status(args.channel, VCTP3::PlaylistStatus::not_in_either_channel));
}

void VeskInformationCommands::on_get_pgm_dbkey(VeskRequest &request, GetPgmDbkeyArgs const &args)
{
    request.reply(VeskReplies::pgm_dbkey_reply(model->facts.pgm_dbkey(args.pgm_channel)));
}

void VeskInformationCommands::on_set_pgm_dbkey(VeskRequest &request, SetPgmDbkeyArgs const &args)
{
    model->facts.set_pgm_dbkey(args.pgm_channel, args.db_key);
    request.ok();
}

void VeskInformationCommands::on_log(VeskRequest &request, LogArgs const &args)
{
    model->log.add(AString::l1("%1:%2 [%3 %4] %5")
                       .arg(args.log_filename)
                       .arg(args.log_line)
                       .arg(args.log_client)
                       .arg(AString::l1(args.log_error ? "error" : "log"))
                       .arg(args.log_text));
    request.ok();
}

void VeskInformationCommands::on_debug_label(VeskRequest &request, DebugLabelArgs const &args)
{
    model->log.add(args.debug_string);
    request.ok();
}
