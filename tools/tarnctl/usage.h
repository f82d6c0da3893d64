// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tools/tarnctl/command_line.h"

namespace TarnCtl {

/// "usage: tarnctl VERB ...", one line for each form; how the program is used if no verb was typed.
QString usage_text(CommandLine const &line);

/// Whether the words and options that were typed suit a form of their verb. On failure: false, the
/// word that is missing, surplus or unknown in *error.
bool check_usage(CommandLine const &line, QString *error);

/// Whether the form that was typed so far has an option of its verb: some are not for every
/// sub-verb.
bool takes_option(CommandLine const &line, OptionInfo const &option);

/// Whether help can be given on what was typed: behind --help stands nothing but what help is
/// wanted on. What is missing for the verb itself is not missed. On failure as `check_usage`.
bool check_topic(CommandLine const &line, QString *error);

} // namespace TarnCtl
