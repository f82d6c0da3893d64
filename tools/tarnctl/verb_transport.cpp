// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnctl/verb.h"
#include "tools/tarnctl/verbs.h"

namespace TarnCtl {
namespace {

/// The command for one channel, or the one that does the same to several on the same field.
struct ChannelCommand
{
    char const *name;
    QString target;
};

bool choose(char const *single, char const *gang, QString const &channels, ChannelCommand *out,
    QString *error)
{
    QStringList names;
    if (!read_channels(channels, &names, error))
        return false;
    if (names.size() == 1)
        *out = {single, argument("Channel", names.first())};
    else
        *out = {gang, argument("ChannelSet", json_names(names))};
    return true;
}

class PlayVerb : public Verb
{
public:
    bool prepare(CommandLine const &line, QString *error) override
    {
        ChannelCommand command{};
        if (!check_words(line, 1, 2, error)
            || !choose("play", "gang_play", line.words[0], &command, error))
            return false;
        QStringList arguments{command.target};
        if (line.words.size() > 1)
            arguments << argument("Speed", as_factor(line.words[1]));
        return add_call(command.name, arguments, error);
    }

private:
    /// On the wire a bare number counts in 65536ths, which nobody means at a terminal.
    static QString as_factor(QString const &speed)
    {
        return speed.endsWith(u'X') ? speed : speed + u'X';
    }
};

class StopVerb : public Verb
{
public:
    bool prepare(CommandLine const &line, QString *error) override
    {
        ChannelCommand command{};
        return check_words(line, 1, 1, error)
            && choose("stop", "gang_stop", line.words[0], &command, error)
            && add_call(command.name, {command.target}, error);
    }
};

class CueVerb : public Verb
{
public:
    bool prepare(CommandLine const &line, QString *error) override
    {
        if (!check_words(line, 2, 3, error))
            return false;
        QStringList arguments{
            argument("Channel", line.words[0]), argument("ClipID", line.words[1])};
        if (line.words.size() > 2)
            arguments << argument("GotoPosition", line.words[2]);
        return add_call("cue_clip", arguments, error);
    }
};

class RecordVerb : public Verb
{
public:
    bool prepare(CommandLine const &line, QString *error) override
    {
        if (!check_words(line, 2, 2, error))
            return false;
        QString const channel = argument("Channel", line.words[0]);
        QStringList arguments{channel, argument("ClipID", line.words[1]),
            QStringLiteral("TrackSet=[\"video\",\"audio\"]")};
        if (line.has("length"))
            arguments << argument("ClipLength", line.value("length"));
        // A clip that is created on a channel is armed there, and play begins the recording.
        return add_call("create_clip", arguments, error) && add_call("play", {channel}, error);
    }
};

} // namespace

std::unique_ptr<Verb> make_play(CommandLine const &)
{
    return std::make_unique<PlayVerb>();
}

std::unique_ptr<Verb> make_stop(CommandLine const &)
{
    return std::make_unique<StopVerb>();
}

std::unique_ptr<Verb> make_cue(CommandLine const &)
{
    return std::make_unique<CueVerb>();
}

std::unique_ptr<Verb> make_record(CommandLine const &)
{
    return std::make_unique<RecordVerb>();
}

} // namespace TarnCtl
