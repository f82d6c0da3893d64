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
    /// Gets every message and what the server has to say, a line each, on the server's thread.
    std::function<void(QByteArray const &line)> trace;
};
