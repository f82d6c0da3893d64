// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/protocol/enums.h"

#include <array>
#include <bitset>
#include <cstddef>

/// The report groups that one connection has registered for; none at its start.
class VeskRegistrations
{
public:
    void add(VCTP3::ReportType group) { groups.set(index(group)); }
    void remove(VCTP3::ReportType group) { groups.reset(index(group)); }
    bool has(VCTP3::ReportType group) const { return groups.test(index(group)); }

    void add(VCTP3::Channel channel, VCTP3::ChannelReportType group)
    {
        channels[index(channel)].set(index(group));
    }
    void remove(VCTP3::Channel channel, VCTP3::ChannelReportType group)
    {
        channels[index(channel)].reset(index(group));
    }
    bool has(VCTP3::Channel channel, VCTP3::ChannelReportType group) const
    {
        return channels[index(channel)].test(index(group));
    }

private:
    template <typename Enum> static std::size_t index(Enum value)
    {
        return static_cast<std::size_t>(value);
    }

    std::bitset<12> groups;
    std::array<std::bitset<14>, 40> channels;
};
