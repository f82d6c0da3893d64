// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/protocol/reply_notes.h"

#include <span>

/// One form of a command in the classes without the toolkit, with samples for its parameters.
struct CommandRow
{
    char const *name; // the command and the form
    char const *replies; // what it can get, the last one behind
    void (*plain)(VCTP3::APICommand &); // under the id 7
    AString (*with_callbacks)(VCTP3::API &, VCTP3::ReplyNotes &);
    void (*without)(VCTP3::API &);
    char const *element; // the command element on the wire
};

/// Generated from the tables.
std::span<CommandRow const> command_rows();
