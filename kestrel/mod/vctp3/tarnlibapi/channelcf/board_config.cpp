// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/channelcf/board_config.h"

#include "kestrel/mod/vctp3/tarnlibapi/base/aassert.h"

#include <utility>

namespace ChannelCF {

namespace {

ConfigChannel empty_slot()
{
    ConfigChannel channel;
    channel.finish();
    return channel;
}

} // namespace

Config::Config(std::uint32_t quads, std::uint32_t offered)
    : width(quads)
    , slot_count(offered)
{
}

Config::~Config() = default;

void Config::finish()
{
    if (!A_ASSERT(!finished))
        return;
    for (ConfigChannel &channel : channels)
        channel.finish();
    if (!keep_order)
        renumber();
    finished = true;
}

void Config::renumber()
{
    std::vector<ConfigChannel> order;
    for (ConfigChannel &channel : channels) {
        std::uint32_t const primary = channel.first_output;
        A_ASSERT(primary >= order.size());
        while (order.size() < primary)
            order.push_back(empty_slot());
        order.push_back(std::move(channel));
    }
    channels = std::move(order);
}

} // namespace ChannelCF
