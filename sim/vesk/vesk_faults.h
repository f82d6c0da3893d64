// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/astring.h"
#include "sim/vesk/vesk_failure.h"

#include <QtGlobal>

#include <map>

/// How the server misbehaves on purpose; by default not at all.
struct VeskFaults
{
    /// Commands are read and done, and neither answers nor reports are sent.
    bool silent = false;
    /// Each byte is written by itself, one in a turn of the event loop.
    bool split_writes = false;
    /// Replies wait for so many fields; reports do not wait.
    unsigned int reply_delay = 0;
    /// Answers are gathered until there are so many, and sent in an order drawn from the seed. The
    /// replies to one command stay together. Those that are left go with the next field. 0 or 1:
    /// the order stays.
    unsigned int reorder_window = 0;
    quint32 reorder_seed = 0;
    /// Commands that fail, by name, and how. They are not done.
    std::map<AString, VeskFailure> failing;
};
