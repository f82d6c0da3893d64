// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>

/// A reply or report, whole or with one thing wrong.
struct MessageRow
{
    char const *name;
    char const *call; // the function that gets it; empty if it is dropped
    bool options; // whether fields that may fail are there
    char const *error; // why it is dropped
    char const *text; // on the wire
};

/// Generated from the tables.
std::span<MessageRow const> message_rows();
