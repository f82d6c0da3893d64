// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/astring.h"

#include <QtGlobal>

#include <map>

/// What has passed through the server since it was made; a restart does not clear it.
struct VeskCounters
{
    /// Connections accepted, and how many of them are open.
    quint64 connections = 0;
    quint64 open_connections = 0;
    /// By command name, those answered with an error too.
    std::map<AString, quint64> commands;
    /// Messages that were no command that the server knows, or lacked an id.
    quint64 bad_messages = 0;
    quint64 bytes_received = 0;
    quint64 bytes_sent = 0;

    quint64 count(char const *command) const
    {
        auto found = commands.find(AString::l1(command));
        return found == commands.end() ? 0 : found->second;
    }
};
