// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tools/tarnctl/command_line.h"

#include <memory>

namespace TarnCtl {

class Verb;

/// What the first word behind a verb is, for completion.
enum class FirstWord
{
    None,
    Command,
    Channel,
    SubVerb,
    VerbName
};

struct VerbInfo
{
    char const *name;
    /// What stands behind the name, words first, then options; one form per line. In brackets what
    /// may be left out, "..." behind what may be repeated.
    char const *forms;
    char const *summary;
    /// Behind the summary in its help; may be empty.
    char const *details;
    char const *example;
    std::span<OptionInfo const> options;
    FirstWord first_word;
    /// Null for a verb that needs no server.
    std::unique_ptr<Verb> (*make)(CommandLine const &line);
    /// What its help lists at the end; may be null.
    QString (*list)() = nullptr;
};

/// Verbs for people; the hidden one that completion scripts use is not among them.
std::span<VerbInfo const> all_verbs();
/// Null for an unknown name; knows the hidden one too.
VerbInfo const *find_verb(QString const &name);
QStringList verb_names();
/// The words that may follow a verb of the kind `FirstWord::SubVerb`.
QStringList sub_verbs(VerbInfo const &verb);

/// \name How verbs are made
/// @{
std::unique_ptr<Verb> make_call(CommandLine const &line);
std::unique_ptr<Verb> make_watch(CommandLine const &line);
std::unique_ptr<Verb> make_monitor(CommandLine const &line);
std::unique_ptr<Verb> make_status(CommandLine const &line);
std::unique_ptr<Verb> make_outputs(CommandLine const &line);
std::unique_ptr<Verb> make_tally(CommandLine const &line);
std::unique_ptr<Verb> make_alerts(CommandLine const &line);
std::unique_ptr<Verb> make_health(CommandLine const &line);
std::unique_ptr<Verb> make_clips(CommandLine const &line);
std::unique_ptr<Verb> make_clip(CommandLine const &line);
std::unique_ptr<Verb> make_play(CommandLine const &line);
std::unique_ptr<Verb> make_stop(CommandLine const &line);
std::unique_ptr<Verb> make_cue(CommandLine const &line);
std::unique_ptr<Verb> make_record(CommandLine const &line);
std::unique_ptr<Verb> make_meta(CommandLine const &line);
std::unique_ptr<Verb> make_config(CommandLine const &line);
/// @}

} // namespace TarnCtl
