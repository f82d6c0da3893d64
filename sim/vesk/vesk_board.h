// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/astring.h"

#include <vector>

/// What video board a simulated server has; it decides what each quad of outputs can be set to.
enum class VeskBoard
{
    hd, ///< standard and high definition
    uhd, ///< 4K
    zephyrx, ///< many inputs for slow motion
};

/// What clients are told of a board.
struct VeskBoardFacts
{
    AString type;
    /// With what it is set to at first.
    unsigned int channel_count = 0;
    /// What each quad can be set to, the same for all; "absent" is one of them.
    std::vector<AString> configurations;
    /// What the quads from the first one on are set to at first; the rest are absent.
    std::vector<AString> quads;
};

VeskBoardFacts vesk_board_facts(VeskBoard board);
