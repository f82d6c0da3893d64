// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnctl/verbs.h"

#include "tools/tarnctl/help.h"
#include "tools/tarnctl/verb.h"

namespace TarnCtl {
namespace {

constexpr OptionInfo channels_option{
    "channels", "LIST", "channels such as A-D,F; all if not given"};
constexpr OptionInfo time_option{"for", "SECONDS", "end after that time"};
constexpr OptionInfo count_option{"count", "N", "end after that many reports"};
constexpr OptionInfo reconnect_option{
    "reconnect", nullptr, "dial again whenever the connection is lost"};

constexpr OptionInfo watch_options[] = {
    channels_option,
    {"reports", "NAME,...", "reports or groups of reports; all if not given"},
    time_option,
    count_option,
    reconnect_option,
};
constexpr OptionInfo monitor_options[] = {
    {"channels", "LIST", "channels such as A-D,F; those that the board makes if not given"},
    {"signals", "NAME,...", "what is wanted of each; all if not given"},
    time_option,
};
constexpr OptionInfo status_options[] = {channels_option};
constexpr OptionInfo record_options[]
    = {{"length", "FIELDS", "the longest that the clip may become"}};
constexpr OptionInfo meta_options[] = {
    {"prefix", "PREFIX", "set and erase: what the server puts in front of each key"},
    time_option,
    count_option,
    reconnect_option,
};

constexpr char metrics_text[]
    = "Without --json it prints what a metrics collector reads: the text exposition format of\n"
      "Prometheus.";

constexpr VerbInfo verbs[] = {
    {"call", "NAME [ELEMENT=VALUE ...]", "send any command of the protocol and print every reply",
        "Values stand in their wire form, flags and booleans as true or false, records, sets,\n"
        "vectors and lists as JSON with element names as keys. What is not given is absent on\n"
        "the wire. 'tarnctl call NAME --help' tells what a command takes.\n"
        "\n"
        "Each run has a connection of its own, and what the server keeps for a connection ends\n"
        "with the run: registrations, channels stolen, keys owned, and the brackets that save a\n"
        "list or a chase. So list_save_start to list_save_end cannot be put together of runs.",
        "tarnctl call metadata_set MetadataDatabase=notes \\\n"
        "    MetadataList='[{\"Key\":\"match.7.title\",\"Value\":\"Second half\"}]'",
        {}, FirstWord::Command, &make_call, &command_list},
    {"watch", "[--channels LIST] [--reports NAME,...] [--for SECONDS] [--count N] [--reconnect]",
        "register for reports and print each one that arrives",
        "Ends after the time or the number of reports that was given, by an interrupt, or with\n"
        "the connection. A report that comes without being registered for is printed too.",
        "tarnctl watch --channels A-D --reports channel_status,clip_change --for 60", watch_options,
        FirstWord::None, &make_watch, &report_list},
    {"monitor", "[--channels LIST] [--signals NAME,...] [--for SECONDS]",
        "print the live state of channels as it changes",
        "Prints what each signal has now, and from there on each value that comes. The server\n"
        "reports no more than those signals need. Ends after the time that was given or by an\n"
        "interrupt; a lost connection comes back by itself, which standard error tells.",
        "tarnctl monitor --channels A-D --signals status,timecodes --for 60", monitor_options,
        FirstWord::None, &make_monitor, &signal_list},
    {"status", "[--channels LIST]", "facts of the server and a table of its channels", "",
        "tarnctl --server 10.0.0.7 status --channels A-D", status_options, FirstWord::None,
        &make_status},
    {"outputs", "", "what feeds each output and what it shows", metrics_text,
        "tarnctl --json outputs", {}, FirstWord::None, &make_outputs},
    {"tally", "", "the tally light of each channel", metrics_text, "tarnctl --json tally", {},
        FirstWord::None, &make_tally},
    {"alerts", "", "what the server finds wrong with itself", metrics_text, "tarnctl --json alerts",
        {}, FirstWord::None, &make_alerts},
    {"health", "", "the connection, its traffic, and how long the server takes to answer",
        metrics_text, "tarnctl health > tarn.tmp && mv tarn.tmp /var/lib/node_exporter/tarn.prom",
        {}, FirstWord::None, &make_health},
    {"clips", "[DIRECTORY]", "the ids of all clips, or of those in a directory", "",
        "tarnctl clips Replays", {}, FirstWord::None, &make_clips},
    {"clip", "ID", "all that the server tells of a clip", "", "tarnctl clip Replays/goal", {},
        FirstWord::None, &make_clip},
    {"play", "CHANNELS [SPEED]", "play channels, several of them on the same field",
        "SPEED is a factor such as 0.5 or -1X. Without it a clip plays at its natural speed.",
        "tarnctl play A-C 0.5", {}, FirstWord::Channel, &make_play},
    {"stop", "CHANNELS", "stop channels, several of them on the same field", "", "tarnctl stop A,C",
        {}, FirstWord::Channel, &make_stop},
    {"cue", "CHANNEL CLIP [POSITION]", "load a clip on a channel, at a position in fields", "",
        "tarnctl cue A Replays/goal 250", {}, FirstWord::Channel, &make_cue},
    {"record", "CHANNEL CLIP [--length FIELDS]", "create a clip on a channel and record into it",
        "'tarnctl stop CHANNEL' ends the recording.", "tarnctl record B Replays/next --length 3000",
        record_options, FirstWord::Channel, &make_record},
    {"meta",
        "get DATABASE [PREFIX]\nset DATABASE KEY VALUE [--prefix PREFIX]\n"
        "erase DATABASE KEY ... [--prefix PREFIX]\n"
        "watch DATABASE [PREFIX] [--for SECONDS] [--count N] [--reconnect]",
        "read, write and follow a metadata database", "",
        "tarnctl meta set notes match.7.title 'Second half'", meta_options, FirstWord::SubVerb,
        &make_meta},
    {"config", "list [TEXT]\nget NAME\nset NAME VALUE",
        "read and write the configuration of the server",
        "TEXT keeps the list to the names that contain it.", "tarnctl config list Video", {},
        FirstWord::SubVerb, &make_config},
    {"help", "[VERB] [NAME]", "tell what a verb does",
        "With 'call' and the NAME of a command: what that takes.", "tarnctl help watch", {},
        FirstWord::VerbName, nullptr},
};

constexpr VerbInfo complete_verb{"complete", "-- WORD ...", "what may stand for the last word", "",
    "tarnctl complete -- call pl", {}, FirstWord::None, nullptr};

} // namespace

std::span<VerbInfo const> all_verbs()
{
    return verbs;
}

VerbInfo const *find_verb(QString const &name)
{
    for (VerbInfo const &verb : verbs) {
        if (name == QLatin1String(verb.name))
            return &verb;
    }
    return name == QLatin1String(complete_verb.name) ? &complete_verb : nullptr;
}

QStringList verb_names()
{
    QStringList names;
    for (VerbInfo const &verb : verbs)
        names << QLatin1String(verb.name);
    return names;
}

QStringList sub_verbs(VerbInfo const &verb)
{
    QStringList names;
    if (verb.first_word != FirstWord::SubVerb)
        return names;
    for (QString const &form : QString(QLatin1String(verb.forms)).split(u'\n'))
        names << form.section(u' ', 0, 0);
    return names;
}

} // namespace TarnCtl
