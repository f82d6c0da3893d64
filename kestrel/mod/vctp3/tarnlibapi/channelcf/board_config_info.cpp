// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/channelcf/board_config_info.h"

#include "kestrel/mod/vctp3/tarnlibapi/base/aassert.h"
#include "kestrel/mod/vctp3/tarnlibapi/channelcf/config_builder_p.h"
#include "kestrel/mod/vctp3/tarnlibapi/channelcf/slot_lists_p.h"

#include <algorithm>
#include <utility>

namespace ChannelCF {

namespace {

/// What drives an output, in one word: a choice between two costs no branch.
class Source
{
public:
    Source() = default;
    Source(unsigned int channel, unsigned int angle, bool key)
        : bits(1u | (key ? 2u : 0u) | channel << 8 | angle << 16)
    {
    }

    bool present() const { return (bits & 1) != 0; }
    /// This one if present, else \a other.
    Source otherwise(Source other) const { return present() ? *this : other; }
    AOption<OutputSource> at(unsigned int base) const
    {
        if (!present())
            return {};
        return OutputSource((bits >> 8 & 0xff) + base, bits >> 16, (bits & 2) != 0);
    }

private:
    std::uint32_t bits = 0;
};

} // namespace

struct BoardConfigInfo::Row
{
    void add_sources(unsigned int slot, std::vector<std::uint32_t> const &outputs, bool key);
    void add_lists(ConfigChannel const &channel);

    std::unique_ptr<Config> config;
    unsigned int width = 0; ///< in quads; 0 without a configuration
    std::array<Source, max_outputs> sources;
    // Without keys, and keys alone.
    std::array<SlotLists, 2> primary;
    std::array<SlotLists, 2> all;
};

void BoardConfigInfo::Row::add_sources(
    unsigned int slot, std::vector<std::uint32_t> const &outputs, bool key)
{
    for (unsigned int position = 0; position < outputs.size(); ++position) {
        if (outputs[position] >= max_outputs) // reported by the lists
            continue;
        Source &source = sources[outputs[position]];
        if (A_ASSERT_TEXT(!source.present(), "output_source.find(k) == output_source.cend()"))
            source = Source(slot, position, key);
    }
}

void BoardConfigInfo::Row::add_lists(ConfigChannel const &channel)
{
    primary[false].add(channel.primary_outputs);
    primary[true].add(channel.primary_keys);
    all[false].add(channel.all_outputs);
    all[true].add(channel.all_keys);
}

struct BoardConfigInfo::Place
{
    Row const &row;
    unsigned int base;
    unsigned int slot;

    /// Null without a configuration, and behind its last slot.
    ConfigChannel const *channel() const
    {
        bool const there = row.config && slot < row.config->channels.size();
        return there ? &row.config->channels[slot] : nullptr;
    }
    std::uint64_t angle_count() const
    {
        ConfigChannel const *there = channel();
        return there && A_ASSERT_TEXT(there->finished, "finished") ? there->angle_count : 0;
    }
    std::uint32_t locate_angle(unsigned int angle) const
    {
        SlotLists const &angles = row.primary[false];
        if (!A_ASSERT_TEXT(row.config, "config != nullptr")
            || !A_ASSERT_TEXT(angle < angles.size(slot), "angle < angle_count"))
            return 0;
        return angles.at(slot, angle) + base;
    }
    std::vector<std::uint32_t> on_the_board(SlotLists const &lists) const
    {
        std::vector<std::uint32_t> outputs(lists.size(slot));
        for (unsigned int i = 0; i < outputs.size(); ++i)
            outputs[i] = lists.at(slot, i) + base;
        return outputs;
    }
};

BoardConfigInfo::BoardConfigInfo()
    : rows(std::make_unique<Row[]>(config_enum_count + 1))
{
}

BoardConfigInfo::~BoardConfigInfo() = default;

BoardConfigInfo::Row const &BoardConfigInfo::row_of(ConfigEnum value) const
{
    return rows[isValid(value) ? static_cast<std::size_t>(value) : config_enum_count];
}

void BoardConfigInfo::add(ConfigEnum value, std::unique_ptr<Config> config, std::size_t walked)
{
    if (!A_ASSERT(isValid(value)) || !A_ASSERT(config))
        return;
    config->finish();
    Row row;
    auto const count
        = static_cast<unsigned int>(std::min<std::size_t>(config->channels.size(), max_outputs));
    for (unsigned int slot = 0; slot < count; ++slot) {
        ConfigChannel const &channel = config->channels[slot];
        row.add_lists(channel);
        if (slot < walked) {
            row.add_sources(slot, channel.all_outputs, false);
            row.add_sources(slot, channel.all_keys, true);
        }
    }
    row.width = config->width;
    row.config = std::move(config);
    rows[static_cast<std::size_t>(value)] = std::move(row);
}

Config const *BoardConfigInfo::find_config(ConfigEnum value) const
{
    return row_of(value).config.get();
}

AOption<OutputSource> BoardConfigInfo::find_source(ConfigEnum value, unsigned int output) const
{
    if (output >= max_outputs)
        return {};
    return row_of(value).sources[output].at(0);
}

template <typename Board>
std::uint64_t BoardLookups<Board>::AngleCount(
    ChannelConfigSpec const &spec, unsigned int user_channel) const
{
    return board().find(spec, user_channel).angle_count();
}

template <typename Board>
std::uint32_t BoardLookups<Board>::LocateAngle(
    ChannelConfigSpec const &spec, unsigned int user_channel, unsigned int angle) const
{
    return board().find(spec, user_channel).locate_angle(angle);
}

template <typename Board>
std::vector<std::uint32_t> BoardLookups<Board>::FindPrimaryAngleOutputs(
    ChannelConfigSpec const &spec, unsigned int user_channel, bool key) const
{
    Place const place = board().find(spec, user_channel);
    return place.on_the_board(place.row.primary[key]);
}

template <typename Board>
std::vector<std::uint32_t> BoardLookups<Board>::FindAllOutputs(
    ChannelConfigSpec const &spec, unsigned int user_channel, bool key) const
{
    Place const place = board().find(spec, user_channel);
    return place.on_the_board(place.row.all[key]);
}

// --- Tamarind ---

TamarindConfigInfo::TamarindConfigInfo()
{
    for (unsigned int value = 1; value < config_enum_count; ++value) {
        std::unique_ptr<Config> config = build_tamarind(static_cast<ConfigEnum>(value));
        std::size_t const walked = config->slot_count;
        add(static_cast<ConfigEnum>(value), std::move(config), walked);
    }
}

TamarindConfigInfo::~TamarindConfigInfo() = default;

/// A configuration of two or three quads is found through its first one, if that stands where such
/// a configuration may; channels behind the first quad of a still wider one only through an entry
/// of their own quad. Which it is cannot be foretold, so nothing branches on it.
BoardConfigInfo::Place TamarindConfigInfo::find(
    ChannelConfigSpec const &spec, unsigned int user_channel) const
{
    unsigned int const in_two = user_channel % 8;
    unsigned int const in_three = user_channel % 12;
    bool const two = row_of(spec.get_cf((user_channel - in_two) / 4)).width == 2;
    bool const three = row_of(spec.get_cf((user_channel - in_three) / 4)).width == 3;
    bool const behind_in_two = in_two >= 4;
    bool const behind_in_three = in_three >= 4;
    unsigned int slot = user_channel % 4;
    slot = (three & behind_in_three) ? in_three : slot;
    slot = (two & behind_in_two) ? in_two : slot;
    unsigned int const base = user_channel - slot;
    return {row_of(spec.get_cf(base / 4)), base, slot};
}

bool TamarindConfigInfo::Is4K(ChannelConfigSpec const &spec, unsigned int user_channel) const
{
    ConfigChannel const *channel = find(spec, user_channel).channel();
    return channel && !channel->angles.empty() && channel->angles.front().is_4k;
}

/// An output is looked up in the entries of its blocks of three, two and one quads, whatever the
/// width of the configuration that stands there. The first that knows it has the answer.
AOption<OutputSource> TamarindConfigInfo::GetOutputSource(
    ChannelConfigSpec const &spec, unsigned int output) const
{
    unsigned int const in_three = output % 12;
    unsigned int const in_two = output % 8;
    unsigned int within = output % 4;
    Source const three = row_of(spec.get_cf((output - in_three) / 4)).sources[in_three];
    Source const two = row_of(spec.get_cf((output - in_two) / 4)).sources[in_two];
    Source const one = row_of(spec.get_cf(output / 4)).sources[within];
    within = two.present() ? in_two : within;
    within = three.present() ? in_three : within;
    return three.otherwise(two.otherwise(one)).at(output - within);
}

std::uint32_t TamarindConfigInfo::GetMaxUserChannels(ChannelConfigSpec const &spec) const
{
    std::uint32_t total = 0;
    while (Config const *config = find(spec, total).row.config.get()) {
        std::uint32_t const num_channels = config->slot_count;
        if (!A_ASSERT(num_channels != 0))
            return 0;
        total += num_channels;
        if (num_channels == 2 || num_channels == 6)
            break;
    }
    return total;
}

// --- Quince ---

QuinceConfigInfo::QuinceConfigInfo(std::uint32_t most)
    : user_channels(most)
{
    constexpr std::size_t walked = 3; // on every kind
    for (unsigned int value = 1; value < config_enum_count; ++value) {
        if (std::unique_ptr<Config> config = build_quince(static_cast<ConfigEnum>(value)))
            add(static_cast<ConfigEnum>(value), std::move(config), walked);
    }
}

QuinceConfigInfo::~QuinceConfigInfo() = default;

BoardConfigInfo::Place QuinceConfigInfo::find(
    ChannelConfigSpec const &spec, unsigned int user_channel) const
{
    return {row_of(spec.get_cf(0)), 0, user_channel};
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

template class BoardLookups<TamarindConfigInfo>;
template class BoardLookups<QuinceConfigInfo>;

} // namespace ChannelCF
