// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/channelcf/board_config_info.h"

/// Questions to the configuration of a board. User channels, outputs and angles count from 0;
/// outputs are those of the whole board. A user channel that the board does not have, as behind
/// the last one or between two, has no angles and no outputs. Of an unknown board everything is 0,
/// false, empty or absent.
/// Thread: any.
namespace ChannelCF {

TARN_EXPORT std::uint64_t AngleCount(ChannelConfigSpec spec, unsigned int user_channel);
/// The first output of an angle. 0, and an assertion, where there is no such angle.
TARN_EXPORT std::uint32_t LocateAngle(
    ChannelConfigSpec spec, unsigned int user_channel, unsigned int angle);
/// The first output of each angle; with \a key the first output of each angle's key.
TARN_EXPORT std::vector<std::uint32_t> FindPrimaryAngleOutputs(
    ChannelConfigSpec spec, unsigned int user_channel, bool key);
/// All outputs, angle after angle; with \a key all that carry a key.
TARN_EXPORT std::vector<std::uint32_t> FindAllOutputs(
    ChannelConfigSpec spec, unsigned int user_channel, bool key);
/// Whether the first angle is of 4K. Never on a Quince board.
TARN_EXPORT bool Is4K(ChannelConfigSpec spec, unsigned int user_channel);
TARN_EXPORT AOption<OutputSource> GetOutputSource(ChannelConfigSpec spec, unsigned int output);
/// One more than the highest user channel may be. A configuration of 2 or 6 slots ends a spec of a
/// Tamarind board, whatever follows.
TARN_EXPORT std::uint32_t GetMaxUserChannels(ChannelConfigSpec spec);
/// Whether it has outputs.
TARN_EXPORT bool IsUserChannel(ChannelConfigSpec spec, unsigned int user_channel);

/// What a name means on that board; null if it means nothing there. It lives as long as the
/// process.
TARN_EXPORT Config const *FindConfig(BoardType board, ConfigEnum value);

/// "A" to "Z" for 0 to 25, "AA" to "AN" for 26 to 39. Above: an assertion, and "????".
TARN_EXPORT AString ChannelName(unsigned int user_channel);

} // namespace ChannelCF
