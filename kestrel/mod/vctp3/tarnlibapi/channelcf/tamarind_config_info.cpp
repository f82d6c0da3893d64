// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/base/aassert.h"
#include "kestrel/mod/vctp3/tarnlibapi/channelcf/board_config_info.h"
#include "kestrel/mod/vctp3/tarnlibapi/channelcf/config_builder_p.h"

namespace ChannelCF {

TamarindConfigInfo::TamarindConfigInfo()
{
    for (unsigned int value = 1; value < config_enum_count; ++value) {
        std::unique_ptr<Config> config = build_tamarind(static_cast<ConfigEnum>(value));
        std::size_t const walked = config->slot_count;
        add(static_cast<ConfigEnum>(value), std::move(config), walked);
    }
}

/// Whether a configuration of that width covers a user channel behind its first quad.
template <unsigned int width>
bool TamarindConfigInfo::find_wide(
    ChannelConfigSpec const &spec, unsigned int user_channel, Place *place) const
{
    unsigned int const within = user_channel % (width * 4);
    if (within < 4)
        return false;
    unsigned int const base = user_channel - within;
    Config const *config = find_config(spec.get_cf(base / 4));
    if (!config || config->width != width)
        return false;
    *place = {config, base};
    return true;
}

/// Channels behind the first quad of a still wider configuration are not found, except through an
/// entry of their own quad.
BoardConfigInfo::Place TamarindConfigInfo::find(
    ChannelConfigSpec const &spec, unsigned int user_channel) const
{
    Place place;
    if (find_wide<2>(spec, user_channel, &place) || find_wide<3>(spec, user_channel, &place))
        return place;
    return {find_config(spec.get_cf(user_channel / 4)), user_channel & ~3u};
}

std::uint64_t TamarindConfigInfo::AngleCount(
    ChannelConfigSpec const &spec, unsigned int user_channel) const
{
    return angle_count(find(spec, user_channel), user_channel);
}

std::uint32_t TamarindConfigInfo::LocateAngle(
    ChannelConfigSpec const &spec, unsigned int user_channel, unsigned int angle) const
{
    return locate_angle(find(spec, user_channel), user_channel, angle);
}

std::vector<std::uint32_t> TamarindConfigInfo::FindPrimaryAngleOutputs(
    ChannelConfigSpec const &spec, unsigned int user_channel, bool key) const
{
    return primary_outputs(find(spec, user_channel), user_channel, key);
}

std::vector<std::uint32_t> TamarindConfigInfo::FindAllOutputs(
    ChannelConfigSpec const &spec, unsigned int user_channel, bool key) const
{
    return all_outputs(find(spec, user_channel), user_channel, key);
}

bool TamarindConfigInfo::Is4K(ChannelConfigSpec const &spec, unsigned int user_channel) const
{
    ConfigChannel const *slot = find_slot(find(spec, user_channel), user_channel);
    return slot && !slot->angles.empty() && slot->angles.front().is_4k;
}

/// An output is looked up in the entry of its block of \a width quads, whatever the width of the
/// configuration that stands there.
template <unsigned int width>
bool TamarindConfigInfo::find_output(
    ChannelConfigSpec const &spec, unsigned int output, AOption<OutputSource> *source) const
{
    unsigned int const within = output % (width * 4);
    unsigned int const base = output - within;
    AOption<OutputSource> const found = find_source(spec.get_cf(base / 4), within);
    if (found)
        *source = OutputSource(found->channel + base, found->angle, found->key);
    return found.has_value();
}

AOption<OutputSource> TamarindConfigInfo::GetOutputSource(
    ChannelConfigSpec const &spec, unsigned int output) const
{
    AOption<OutputSource> source;
    if (!find_output<3>(spec, output, &source) && !find_output<2>(spec, output, &source))
        find_output<1>(spec, output, &source);
    return source;
}

std::uint32_t TamarindConfigInfo::GetMaxUserChannels(ChannelConfigSpec const &spec) const
{
    std::uint32_t total = 0;
    while (Config const *config = find(spec, total).config) {
        std::uint32_t const num_channels = config->slot_count;
        if (!A_ASSERT(num_channels != 0))
            return 0;
        total += num_channels;
        if (num_channels == 2 || num_channels == 6)
            break;
    }
    return total;
}

} // namespace ChannelCF
