// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/channelcf/board_config_info.h"
#include "kestrel/mod/vctp3/tarnlibapi/channelcf/config_builder_p.h"

namespace ChannelCF {

QuinceConfigInfo::QuinceConfigInfo(std::uint32_t most)
    : user_channels(most)
{
    constexpr std::size_t walked = 3; // on every kind
    for (unsigned int value = 1; value < config_enum_count; ++value) {
        if (std::unique_ptr<Config> config = build_quince(static_cast<ConfigEnum>(value)))
            add(static_cast<ConfigEnum>(value), std::move(config), walked);
    }
}

BoardConfigInfo::Place QuinceConfigInfo::find(ChannelConfigSpec const &spec) const
{
    return {find_config(spec.get_cf(0)), 0};
}

std::uint64_t QuinceConfigInfo::AngleCount(
    ChannelConfigSpec const &spec, unsigned int user_channel) const
{
    return angle_count(find(spec), user_channel);
}

std::uint32_t QuinceConfigInfo::LocateAngle(
    ChannelConfigSpec const &spec, unsigned int user_channel, unsigned int angle) const
{
    return locate_angle(find(spec), user_channel, angle);
}

std::vector<std::uint32_t> QuinceConfigInfo::FindPrimaryAngleOutputs(
    ChannelConfigSpec const &spec, unsigned int user_channel, bool key) const
{
    return primary_outputs(find(spec), user_channel, key);
}

std::vector<std::uint32_t> QuinceConfigInfo::FindAllOutputs(
    ChannelConfigSpec const &spec, unsigned int user_channel, bool key) const
{
    return all_outputs(find(spec), user_channel, key);
}

bool QuinceConfigInfo::Is4K(ChannelConfigSpec const &, unsigned int) const
{
    return false;
}

AOption<OutputSource> QuinceConfigInfo::GetOutputSource(
    ChannelConfigSpec const &spec, unsigned int output) const
{
    return find_source(spec.get_cf(0), output);
}

std::uint32_t QuinceConfigInfo::GetMaxUserChannels(ChannelConfigSpec const &) const
{
    return user_channels;
}

} // namespace ChannelCF
