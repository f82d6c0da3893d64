// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnctl/verb.h"
#include "tools/tarnctl/verbs.h"

#include <algorithm>

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

/// Whether what was typed suits that element of the command. If not, *error calls it \a name, as
/// the usage of the verb does.
bool suits(char const *command, char const *element, QString const &typed, char const *name,
    QString *error)
{
    FieldInfo const *const field
        = find_field(find_command(QLatin1String(command))->parameters, QLatin1String(element));
    XMLTree unused;
    return A_ASSERT(field) && read_argument(*field, typed, QLatin1String(name), &unused, error);
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
        // Without a digit it is a speed of 0 to the library, and hardly meant.
        bool const has_digit = std::any_of(
            typed.begin(), typed.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
        if (has_digit && suits("play", "Speed", factor, "SPEED", error)) {
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
        if (!suits("cue_clip", "Channel", line.words[0], "CHANNEL", error))
            return false;
        QStringList arguments{
            argument("Channel", line.words[0]), argument("ClipID", line.words[1])};
        if (line.words.size() > 2) {
            if (!suits("cue_clip", "GotoPosition", line.words[2], "POSITION", error))
                return false;
            arguments << argument("GotoPosition", line.words[2]);
        }
        return add_call("cue_clip", arguments, error);
    }
};

class RecordVerb : public Verb
{
public:
    bool prepare(CommandLine const &line, QString *error) override
    {
        if (!suits("create_clip", "Channel", line.words[0], "CHANNEL", error))
            return false;
        QString const channel = argument("Channel", line.words[0]);
        QStringList arguments{channel, argument("ClipID", line.words[1]),
            QStringLiteral("TrackSet=[\"video\",\"audio\"]")};
        if (line.has("length")) {
            if (!suits("create_clip", "ClipLength", line.value("length"), "--length", error))
                return false;
            arguments << argument("ClipLength", line.value("length"));
        }
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
