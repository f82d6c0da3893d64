// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/protocol/enums.h"
#include "sim/vesk/vesk_board.h"

#include <QByteArray>

#include <functional>

/// What a restart keeps.
enum class VeskState
{
    /// Everything but what a machine forgets without power: connections, channels, what
    /// connections owned.
    keep,
    /// Nothing: the server is as it was at its first start.
    lose,
};

/// How a simulated server starts.
struct VeskSimOptions
{
    /// One with 50, 59.94 or 60 fields a second.
    VCTP3::VideoStandard standard = VCTP3::VideoStandard::v1080_59_94i;
    /// What `ChannelConfigurationSet0` to 7 can be set to, and are at first.
    VeskBoard board = VeskBoard::hd;
    /// Starts with the demo event instead of without clips.
    bool demo = false;
    /// Fields pass by themselves; otherwise only when `VeskSim::advance` says so.
    bool real_time = false;
    /// Whether the channels report, instead of what they do, everything about themselves with
    /// every field, to those who have registered for it.
    bool storm = false;
    /// Over how many parts of a field that is spread, one write for each; at most
    /// `VeskStorm::most_parts`.
    unsigned int storm_parts = 1;
    /// Called when a field, or a part of it from 0 on, has passed, just before what it has to tell
    /// is written; on the server's thread.
    std::function<void(quint64 field, unsigned int part)> passed;
    /// Gets every message and what the server has to say, a line each, on the server's thread.
    std::function<void(QByteArray const &line)> trace;
};
