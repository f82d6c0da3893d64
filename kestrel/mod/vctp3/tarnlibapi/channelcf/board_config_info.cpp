// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/channelcf/board_config_info.h"

#include "kestrel/mod/vctp3/tarnlibapi/base/aassert.h"

#include <algorithm>
#include <utility>

namespace ChannelCF {

namespace {

std::vector<std::uint32_t> shifted(std::vector<std::uint32_t> const &outputs, std::uint32_t base)
{
    std::vector<std::uint32_t> result(outputs);
    for (std::uint32_t &output : result)
        output += base;
    return result;
}

} // namespace

BoardConfigInfo::BoardConfigInfo() = default;
BoardConfigInfo::~BoardConfigInfo() = default;

void BoardConfigInfo::add(ConfigEnum value, std::unique_ptr<Config> config, std::size_t walked)
{
    if (!A_ASSERT(isValid(value)) || !A_ASSERT(config))
        return;
    config->finish();
    std::size_t const count = std::min(walked, config->channels.size());
    for (unsigned int slot = 0; slot < count; ++slot) {
        add_sources(value, slot, config->channels[slot].all_outputs, false);
        add_sources(value, slot, config->channels[slot].all_keys, true);
    }
    configs[static_cast<std::size_t>(value)] = std::move(config);
}

void BoardConfigInfo::add_sources(
    ConfigEnum value, unsigned int slot, std::vector<std::uint32_t> const &outputs, bool key)
{
    for (unsigned int position = 0; position < outputs.size(); ++position) {
        if (!A_ASSERT(outputs[position] < max_outputs))
            continue;
        Source &source = output_source[static_cast<std::size_t>(value)][outputs[position]];
        if (A_ASSERT_TEXT(!source.present, "output_source.find(k) == output_source.cend()"))
            source
                = {true, key, static_cast<std::uint8_t>(slot), static_cast<std::uint8_t>(position)};
    }
}

AOption<OutputSource> BoardConfigInfo::find_source(ConfigEnum value, unsigned int output) const
{
    if (!isValid(value) || output >= max_outputs)
        return {};
    Source const &source = output_source[static_cast<std::size_t>(value)][output];
    if (!source.present)
        return {};
    return OutputSource(source.channel, source.angle, source.key);
}

ConfigChannel const *BoardConfigInfo::find_slot(Place const &place, unsigned int user_channel)
{
    if (!place.config || user_channel - place.base >= place.config->channels.size())
        return nullptr;
    return &place.config->channels[user_channel - place.base];
}

std::uint64_t BoardConfigInfo::angle_count(Place const &place, unsigned int user_channel)
{
    ConfigChannel const *slot = find_slot(place, user_channel);
    return slot && A_ASSERT_TEXT(slot->finished, "finished") ? slot->angle_count : 0;
}

std::uint32_t BoardConfigInfo::locate_angle(
    Place const &place, unsigned int user_channel, unsigned int angle)
{
    if (!A_ASSERT_TEXT(place.config, "config != nullptr"))
        return 0;
    ConfigChannel const *slot = find_slot(place, user_channel);
    if (!A_ASSERT_TEXT(slot && angle < slot->primary_outputs.size(), "angle < angle_count"))
        return 0;
    return slot->primary_outputs[angle] + place.base;
}

std::vector<std::uint32_t> BoardConfigInfo::primary_outputs(
    Place const &place, unsigned int user_channel, bool key)
{
    ConfigChannel const *slot = find_slot(place, user_channel);
    if (!slot)
        return {};
    return shifted(key ? slot->primary_keys : slot->primary_outputs, place.base);
}

std::vector<std::uint32_t> BoardConfigInfo::all_outputs(
    Place const &place, unsigned int user_channel, bool key)
{
    ConfigChannel const *slot = find_slot(place, user_channel);
    if (!slot)
        return {};
    return shifted(key ? slot->all_keys : slot->all_outputs, place.base);
}

} // namespace ChannelCF
