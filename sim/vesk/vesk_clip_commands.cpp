// SPDX-License-Identifier: Apache-2.0
#include "sim/vesk/vesk_clip_commands.h"

#include "sim/vesk/replies.h"
#include "sim/vesk/vesk_channel_reports.h"

#include <list>
#include <vector>

namespace {

/// Ends a command that has done its work or could not.
void finish(VeskRequest &request, bool done, VeskFailure const &failure)
{
    if (done)
        request.ok();
    else
        request.error(failure.text, failure.code);
}

/// How the file of a clip is made up, as nested lists in brackets.
std::list<AString> composition(VeskClip const &clip)
{
    std::list<AString> keys{
        AString::l1("("), AString::l1("file"), clip.info.file_name, AString::l1(")")};
    auto const wrap = [&keys](char const *kind, AOption<unsigned int> const &number) {
        if (number)
            keys.push_front(AString::from_uint32_t(*number));
        keys.push_front(AString::l1(kind));
        keys.push_front(AString::l1("("));
        keys.push_back(AString::l1(")"));
    };
    if (clip.limit)
        wrap("limited", clip.limit);
    wrap(clip.growing ? "grow" : "clip", clip.recorded());
    return keys;
}

} // namespace

VeskClipCommands::VeskClipCommands(VeskWorld *world)
    : model(world)
{
}

// clips

void VeskClipCommands::on_clip_exists(VeskRequest &request, ClipExistsArgs const &args)
{
    request.reply(
        VeskReplies::clipexists(args.clip_id, model->clips.find(args.clip_id) != nullptr));
}

void VeskClipCommands::on_get_clip_info(VeskRequest &request, GetClipInfoArgs const &args)
{
    VeskFailure failure;
    if (VeskClip const *clip = model->clips.find(args.clip_id, &failure))
        request.reply(VeskReplies::clipinfo(clip->info));
    else
        request.error(failure.text, failure.code);
}

void VeskClipCommands::on_create_clip(VeskRequest &request, CreateClipArgs const &args)
{
    if (args.channel)
        return record_on(request, args);
    VeskFailure failure;
    VeskClip const *clip
        = model->clips.create(args.clip_id, args.track_set, args.clip_length.value_or(0), &failure);
    finish(request, clip, failure);
}

void VeskClipCommands::record_on(VeskRequest &request, CreateClipArgs const &args)
{
    VeskFailure failure;
    VeskClip *clip = model->clips.create(args.clip_id, args.track_set, 0, &failure);
    if (clip) {
        // A length of 0 is how clients ask for a recording without an end.
        if (args.clip_length.value_or(0))
            clip->limit = args.clip_length;
        model->channels.at(*args.channel).arm(*clip);
    }
    finish(request, clip, failure);
}

void VeskClipCommands::on_create_child_clip(VeskRequest &request, CreateChildClipArgs const &args)
{
    VeskFailure failure;
    finish(request,
        model->clips.create_child(args.clip_id, args.parent_clip_id, args.angle, &failure),
        failure);
}

void VeskClipCommands::on_delete_clip(VeskRequest &request, DeleteClipArgs const &args)
{
    VeskFailure failure;
    finish(request, model->clips.remove(args.clip_id, &failure), failure);
}

void VeskClipCommands::on_rename_clip(VeskRequest &request, RenameClipArgs const &args)
{
    VeskFailure failure;
    bool const done = model->clips.rename(args.from_id, args.to_id, &failure);
    if (done)
        model->channels.clip_edited(*model->clips.find(args.to_id));
    finish(request, done, failure);
}

void VeskClipCommands::on_modify_clip_attributes(
    VeskRequest &request, ModifyClipAttributesArgs const &args)
{
    VeskFailure failure;
    bool const done = model->clips.modify(args.clip_id, args.clip_attr_change, &failure);
    if (done)
        model->channels.clip_edited(*model->clips.find(args.clip_id));
    finish(request, done, failure);
}

void VeskClipCommands::on_download_clipids(VeskRequest &request, DownloadClipidsArgs const &args)
{
    VeskFailure failure;
    std::vector<AString> ids;
    bool const done = model->clips.list(args.directory_name, &ids, &failure);
    for (AString const &id : ids)
        request.reply(VeskReplies::clipid(id));
    finish(request, done, failure);
}

// directories

void VeskClipCommands::on_create_directory(VeskRequest &request, CreateDirectoryArgs const &args)
{
    VeskFailure failure;
    finish(request, model->clips.create_directory(args.directory_name, &failure), failure);
}

void VeskClipCommands::on_rename_dir(VeskRequest &request, RenameDirArgs const &args)
{
    VeskFailure failure;
    bool const done = model->clips.rename_directory(args.from_dir, args.to_dir, &failure);
    if (done) {
        for (AString const &id : model->clips.clips_below(args.to_dir))
            model->channels.clip_edited(*model->clips.find(id));
    }
    finish(request, done, failure);
}

void VeskClipCommands::on_download_directory_names(
    VeskRequest &request, DownloadDirectoryNamesArgs const &args)
{
    VeskFailure failure;
    std::vector<AString> names;
    bool const done = model->clips.list_directories(args.directory_name, &names, &failure);
    for (AString const &name : names)
        request.reply(VeskReplies::directory_name(name));
    finish(request, done, failure);
}

// information

void VeskClipCommands::on_get_disk_usage(VeskRequest &request, GetDiskUsageArgs const &)
{
    request.reply(VeskReplies::disk_usage(model->clips.total_disk_space(),
        model->clips.available_disk_space(), model->clips.field_size()));
}

void VeskClipCommands::on_get_current_timecode(
    VeskRequest &request, GetCurrentTimecodeArgs const &args)
{
    VeskLayer const &layer = model->channels.at(args.channel).normal();
    request.reply(VeskReplies::channel_current_timecode(args.channel,
        VeskChannelReports::display_timecode(layer, model->clock),
        layer.clip() ? layer.clip()->length() : 0, layer.position()));
}

void VeskClipCommands::on_get_volatile_file_info(
    VeskRequest &request, GetVolatileFileInfoArgs const &args)
{
    VeskFailure failure;
    VeskClip const *clip = model->clips.find(args.clip_id, &failure);
    if (clip)
        request.reply(VeskReplies::volatile_file_info(composition(*clip)));
    finish(request, clip, failure);
}
