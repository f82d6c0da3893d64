// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/channelcf/channel_config_spec.h"

#include <algorithm>

namespace ChannelCF {

ChannelConfigSpec::ChannelConfigSpec(BoardType board, std::initializer_list<AString> names)
    : board_type(board)
{
    std::vector<ConfigEnum> configs;
    configs.reserve(names.size());
    for (AString const &name : names)
        configs.push_back(vctp3_to_config(name));
    fill(configs.data(), configs.size());
}

ChannelConfigSpec::ChannelConfigSpec(BoardType board, std::initializer_list<ConfigEnum> configs)
    : board_type(board)
{
    fill(configs.begin(), configs.size());
}

ChannelConfigSpec::ChannelConfigSpec(BoardType board, std::vector<ConfigEnum> const &configs)
    : board_type(board)
{
    fill(configs.data(), configs.size());
}

void ChannelConfigSpec::fill(ConfigEnum const *configs, std::size_t count)
{
    std::size_t const inside = std::min(count, first.size());
    std::copy_n(configs, inside, first.begin());
    more.assign(configs + inside, configs + count);
}

} // namespace ChannelCF
