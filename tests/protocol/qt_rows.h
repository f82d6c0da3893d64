// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/protocol/api_qt.h"
#include "tests/protocol/reply_notes.h"

#include <memory>
#include <span>
#include <vector>

/// One callback group of each kind.
struct Groups;

/// Makes them, lists them in the order of their numbers, and leads every signal to \a notes.
std::shared_ptr<Groups> make_groups(std::vector<QObject *> *list, VCTP3::ReplyNotes *notes);

/// One form of a command in the toolkit's class, with samples for its parameters.
struct QtRow
{
    char const *name; // the command and the form
    char const *replies; // what it can get, the last one behind
    void (*with_group)(VCTP3::APIQt &, Groups &);
    void (*without)(VCTP3::APIQt &);
    unsigned int group; // the number of its group
    char const *element; // the command element on the wire
};

/// Generated from the tables.
std::span<QtRow const> qt_rows();
