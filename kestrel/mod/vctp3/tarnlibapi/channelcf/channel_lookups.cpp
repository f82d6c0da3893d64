// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/channelcf/channel_lookups.h"

#include "kestrel/mod/vctp3/tarnlibapi/base/aassert.h"

#include <iterator>
#include <utility>

namespace ChannelCF {

namespace {

struct Boards
{
    TamarindConfigInfo tamarind;
    QuinceConfigInfo1 quince1;
    QuinceConfigInfo2 quince2;
    QuinceConfigInfo3 quince3;
    BoardConfigInfo const *by_type[5] = {nullptr, &tamarind, &quince1, &quince2, &quince3};
};

/// Null for an unknown board.
BoardConfigInfo const *find_board(BoardType board)
{
    static Boards const boards;
    auto const type = static_cast<unsigned int>(board);
    return type < std::size(boards.by_type) ? boards.by_type[type] : nullptr;
}

} // namespace

std::uint64_t AngleCount(ChannelConfigSpec spec, unsigned int user_channel)
{
    BoardConfigInfo const *board = find_board(spec.board());
    return board ? board->AngleCount(spec, user_channel) : 0;
}

std::uint32_t LocateAngle(ChannelConfigSpec spec, unsigned int user_channel, unsigned int angle)
{
    BoardConfigInfo const *board = find_board(spec.board());
    return board ? board->LocateAngle(spec, user_channel, angle) : 0;
}

std::vector<std::uint32_t> FindPrimaryAngleOutputs(
    ChannelConfigSpec spec, unsigned int user_channel, bool key)
{
    BoardConfigInfo const *board = find_board(spec.board());
    return board ? board->FindPrimaryAngleOutputs(spec, user_channel, key)
                 : std::vector<std::uint32_t>();
}

std::vector<std::uint32_t> FindAllOutputs(
    ChannelConfigSpec spec, unsigned int user_channel, bool key)
{
    BoardConfigInfo const *board = find_board(spec.board());
    return board ? board->FindAllOutputs(spec, user_channel, key) : std::vector<std::uint32_t>();
}

bool Is4K(ChannelConfigSpec spec, unsigned int user_channel)
{
    BoardConfigInfo const *board = find_board(spec.board());
    return board && board->Is4K(spec, user_channel);
}

AOption<OutputSource> GetOutputSource(ChannelConfigSpec spec, unsigned int output)
{
    BoardConfigInfo const *board = find_board(spec.board());
    return board ? board->GetOutputSource(spec, output) : AOption<OutputSource>();
}

std::uint32_t GetMaxUserChannels(ChannelConfigSpec spec)
{
    BoardConfigInfo const *board = find_board(spec.board());
    return board ? board->GetMaxUserChannels(spec) : 0;
}

bool IsUserChannel(ChannelConfigSpec spec, unsigned int user_channel)
{
    return !FindAllOutputs(std::move(spec), user_channel, false).empty();
}

Config const *FindConfig(BoardType type, ConfigEnum value)
{
    BoardConfigInfo const *board = find_board(type);
    return board ? board->find_config(value) : nullptr;
}

AString ChannelName(unsigned int user_channel)
{
    constexpr unsigned int letters = 26;
    if (!A_ASSERT_TEXT(user_channel < 40, "user_channel < 40"))
        return AString::l1("????");
    AString const letter(AChar(U'A' + user_channel % letters));
    return user_channel < letters ? letter : AString::l1("A") + letter;
}

} // namespace ChannelCF
