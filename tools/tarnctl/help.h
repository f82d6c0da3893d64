// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tools/tarnctl/command_line.h"

namespace TarnCtl {

/// What this program is, its verbs and its global options.
QString help_text();
/// What a verb does; for "call" also its commands, or what the named command takes.
QString help_text(CommandLine const &line);
/// \name What the help of a verb lists
/// @{
QString command_list();
QString report_list();
QString signal_list();
/// @}

/// What may stand for the last of \a words, which were typed behind the program's name; one per
/// line. ELEMENT=VALUE counts as one word.
QStringList completions(QStringList const &words);

} // namespace TarnCtl
