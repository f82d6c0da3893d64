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
    /// True if it was not registered before.
    bool add(VCTP3::ReportType group) { return put(&groups, index(group)); }
    void remove(VCTP3::ReportType group) { groups.reset(index(group)); }
    bool has(VCTP3::ReportType group) const { return groups.test(index(group)); }

    /// True if it was not registered before.
    bool add(VCTP3::Channel channel, VCTP3::ChannelReportType group)
    {
        return put(&channels[index(channel)], index(group));
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
    template <std::size_t n> static bool put(std::bitset<n> *set, std::size_t at)
    {
        bool const fresh = !set->test(at);
        set->set(at);
        return fresh;
    }

    std::bitset<12> groups;
    std::array<std::bitset<14>, 40> channels;
};
