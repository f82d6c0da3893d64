// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnctl/verb.h"
#include "tools/tarnctl/verbs.h"

namespace TarnCtl {
namespace {

class ClipsVerb : public Verb
{
public:
    bool prepare(CommandLine const &line, QString *error) override
    {
        QStringList arguments;
        if (!line.words.isEmpty())
            arguments << argument("DirectoryName", line.words[0]);
        return add_call("download_clipids", arguments, error);
    }

protected:
    void got_reply(JsonValue const &reply) override
    {
        if (output().as_json())
            output().json_line(reply);
        else if (JsonValue const *const clip = reply.find(QStringLiteral("ClipID")))
            output().text(visible(clip->scalar()));
    }
};

class ClipVerb : public Verb
{
public:
    bool prepare(CommandLine const &line, QString *error) override
    {
        return add_call("get_clip_info", {argument("ClipID", line.words[0])}, error);
    }
};

} // namespace

std::unique_ptr<Verb> make_clips(CommandLine const &)
{
    return std::make_unique<ClipsVerb>();
}

std::unique_ptr<Verb> make_clip(CommandLine const &)
{
    return std::make_unique<ClipVerb>();
}

} // namespace TarnCtl
