// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/channelcf/channel_lookups.h"
#include "tests/channelcf/config_rows.h"

#include <optional>
#include <tuple>

/// The lookups on a Tamarind board, once more: told from the typed rows by searches of ordered
/// maps, without a glance at speed.
class ReferenceLookups
{
public:
    using Entries = std::vector<int>;
    using Source = std::tuple<std::uint32_t, std::uint32_t, bool>;

    ReferenceLookups()
    {
        for (auto const &[value, config] : expected_configs()) {
            for (auto const &[number, channel] : config.channels) {
                std::uint32_t position[2] = {0, 0};
                for (ExpectedAngle const &angle : channel) {
                    for (std::uint32_t output : angle.outputs())
                        sources[{value, output}] = {number, position[false]++, false};
                    for (std::uint32_t key : angle.keys())
                        sources[{value, key}] = {number, position[true]++, true};
                }
            }
        }
    }

    struct Found
    {
        ExpectedConfig const *config = nullptr;
        unsigned int base = 0;
    };
    static Found find(Entries const &entries, unsigned int c)
    {
        if (c % 8 >= 4) {
            ExpectedConfig const *config = at(entries, c / 8 * 2);
            if (config && config->width == 2)
                return {config, c / 8 * 8};
        }
        if (c % 12 >= 4) {
            ExpectedConfig const *config = at(entries, c / 12 * 3);
            if (config && config->width == 3)
                return {config, c / 12 * 12};
        }
        return {at(entries, c / 4), c / 4 * 4};
    }

    /// The angles of a user channel, their outputs counted on the whole board.
    static ExpectedChannel channel(Entries const &entries, unsigned int c)
    {
        Found const found = find(entries, c);
        if (!found.config || !found.config->channels.count(c - found.base))
            return {};
        ExpectedChannel angles = found.config->channels.at(c - found.base);
        for (ExpectedAngle &angle : angles) {
            for (std::uint32_t &output : angle.all)
                output += found.base;
        }
        return angles;
    }

    std::optional<Source> source(Entries const &entries, unsigned int output) const
    {
        for (unsigned int width : {3u, 2u, 1u}) {
            unsigned int const block = output / (width * 4);
            auto const found = sources.find({entry(entries, block * width), output % (width * 4)});
            if (found == sources.end())
                continue;
            auto const [channel, position, key] = found->second;
            return Source(channel + block * width * 4, position, key);
        }
        return std::nullopt;
    }

    static unsigned int max_user_channels(Entries const &entries)
    {
        unsigned int total = 0;
        while (ExpectedConfig const *config = find(entries, total).config) {
            total += config->slots_offered;
            if (config->slots_offered == 2 || config->slots_offered == 6)
                return total;
        }
        return total;
    }

private:
    static int entry(Entries const &entries, unsigned int quad)
    {
        return quad < entries.size() ? entries[quad] : 0;
    }
    static ExpectedConfig const *at(Entries const &entries, unsigned int quad)
    {
        auto const found = expected_configs().find(entry(entries, quad));
        return found == expected_configs().end() ? nullptr : &found->second;
    }

    std::map<std::pair<int, std::uint32_t>, Source> sources;
};
