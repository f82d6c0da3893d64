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
        if (!choose("play", "gang_play", line.words[0], &command, error))
            return false;
        QStringList arguments{command.target};
        if (line.words.size() > 1 && !add_speed(line.words[1], &arguments, error))
            return false;
        return add_call(command.name, arguments, error);
    }

private:
    /// On the wire a bare number counts in 65536ths, which nobody means at a terminal.
    static bool add_speed(QString const &typed, QStringList *arguments, QString *error)
    {
        QString const factor = typed.endsWith(u'X') ? typed : typed + u'X';
        FieldInfo const &field = *find_field(
            find_command(QStringLiteral("play"))->parameters, QStringLiteral("Speed"));
        XMLTree unused;
        // A lone X is a speed of 0 to the library, and hardly meant.
        if (factor.size() > 1 && read_argument(field, factor, &unused, error)) {
            *arguments << argument("Speed", factor);
            return true;
        }
        *error = QStringLiteral("bad value '%1' for SPEED: expected a factor such as 0.5 or -1X")
                     .arg(typed);
        return false;
    }
};

class StopVerb : public Verb
{
public:
    bool prepare(CommandLine const &line, QString *error) override
    {
        ChannelCommand command{};
        return choose("stop", "gang_stop", line.words[0], &command, error)
            && add_call(command.name, {command.target}, error);
    }
};

class CueVerb : public Verb
{
public:
    bool prepare(CommandLine const &line, QString *error) override
    {
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
