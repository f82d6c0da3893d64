// SPDX-License-Identifier: Apache-2.0
// Lookups in the configuration of a board, beside a single search of an ordered map whose key is
// known already. Names end in the number of boards that the questions are about.
#include "kestrel/mod/vctp3/tarnlibapi/channelcf/channel_lookups.h"

#include <benchmark/benchmark.h>
#include <map>
#include <random>
#include <tuple>
#include <utility>

namespace {

using namespace ChannelCF;

constexpr unsigned int quads = 10;

struct Question
{
    ChannelConfigSpec const *spec;
    unsigned int channel;
    unsigned int angle;
    unsigned int output;
    ConfigEnum config; ///< the one that holds the channel
    unsigned int slot; ///< of the channel within it
    std::pair<ConfigEnum, unsigned int> source; ///< the output within the one that drives it
};

TamarindConfigInfo const &board()
{
    static TamarindConfigInfo const only;
    return only;
}

/// Ten quads, filled from the left with configurations that fit where they stand.
ChannelConfigSpec random_spec(std::mt19937 &random)
{
    std::vector<ConfigEnum> configs(quads);
    for (unsigned int quad = 0; quad < quads;) {
        auto const value = static_cast<ConfigEnum>(1 + random() % 77);
        unsigned int const width = board().find_config(value)->width;
        if (width > 3 || quad % width != 0 || quad + width > quads)
            continue;
        configs[quad] = value;
        quad += width;
    }
    return {BoardType::Tamarind, configs};
}

/// The configuration that covers an output, and the output within it.
std::pair<ConfigEnum, unsigned int> key_of(ChannelConfigSpec const &spec, unsigned int output)
{
    unsigned int quad = output / 4;
    while (spec.get_cf(quad) == ConfigEnum::absent)
        --quad;
    return {spec.get_cf(quad), output - quad * 4};
}

std::vector<Question> questions(std::size_t boards)
{
    static std::vector<ChannelConfigSpec> const specs = [] {
        std::mt19937 random(1);
        std::vector<ChannelConfigSpec> made;
        for (int i = 0; i < 64; ++i)
            made.push_back(random_spec(random));
        return made;
    }();
    std::mt19937 random(2);
    std::vector<Question> asked;
    while (asked.size() < 4096) {
        ChannelConfigSpec const &spec = specs[random() % boards];
        auto const output = static_cast<unsigned int>(random() % (quads * 4));
        AOption<OutputSource> const source = GetOutputSource(spec, output);
        if (!source)
            continue;
        unsigned int const angle
            = static_cast<unsigned int>(random() % AngleCount(spec, source->channel));
        auto const key = key_of(spec, output);
        unsigned int const slot = source->channel - (output - key.second);
        asked.push_back({&spec, source->channel, angle, output, key.first, slot, key});
    }
    return asked;
}

template <typename Work> void over(benchmark::State &state, Work work)
{
    std::vector<Question> const asked = questions(std::size_t(state.range(0)));
    for (auto _ : state) {
        for (Question const &question : asked)
            benchmark::DoNotOptimize(work(question));
    }
    state.SetItemsProcessed(state.iterations() * std::int64_t(asked.size()));
}

/// The smallest map: 77 configurations.
void map_config(benchmark::State &state)
{
    std::map<ConfigEnum, Config const *> configs;
    for (int value = 1; value <= 77; ++value)
        configs[static_cast<ConfigEnum>(value)]
            = board().find_config(static_cast<ConfigEnum>(value));
    over(state, [&](Question const &asked) { return configs.find(asked.config)->second; });
}
BENCHMARK(map_config)->Arg(1)->Arg(64);

template <typename Use> void each_slot(Use use)
{
    for (int value = 1; value <= 77; ++value) {
        Config const *config = board().find_config(static_cast<ConfigEnum>(value));
        for (unsigned int slot = 0; slot < config->channels.size(); ++slot)
            use(static_cast<ConfigEnum>(value), slot, config->channels[slot]);
    }
}

/// From a configuration and an output to its source.
void map_source(benchmark::State &state)
{
    std::map<std::pair<ConfigEnum, unsigned int>, OutputSource> sources;
    each_slot([&](ConfigEnum value, unsigned int slot, ConfigChannel const &channel) {
        for (unsigned int i = 0; i < channel.all_outputs.size(); ++i)
            sources[{value, channel.all_outputs[i]}] = OutputSource(slot, i, false);
        for (unsigned int i = 0; i < channel.all_keys.size(); ++i)
            sources[{value, channel.all_keys[i]}] = OutputSource(slot, i, true);
    });
    over(state, [&](Question const &asked) { return sources.find(asked.source)->second; });
}
BENCHMARK(map_source)->Arg(1)->Arg(64);

/// From a configuration, a slot and an angle to its output.
void map_angle(benchmark::State &state)
{
    std::map<std::tuple<ConfigEnum, unsigned int, unsigned int>, std::uint32_t> angles;
    each_slot([&](ConfigEnum value, unsigned int slot, ConfigChannel const &channel) {
        for (unsigned int i = 0; i < channel.primary_outputs.size(); ++i)
            angles[{value, slot, i}] = channel.primary_outputs[i];
    });
    over(state, [&](Question const &asked) {
        return angles.find({asked.config, asked.slot, asked.angle})->second;
    });
}
BENCHMARK(map_angle)->Arg(1)->Arg(64);

/// From a configuration and a slot to its outputs, which are looked at in place, or copied as a
/// caller gets them.
template <bool copied> void map_outputs(benchmark::State &state)
{
    std::map<std::pair<ConfigEnum, unsigned int>, std::vector<std::uint32_t>> outputs;
    each_slot([&](ConfigEnum value, unsigned int slot, ConfigChannel const &channel) {
        outputs[{value, slot}] = channel.all_outputs;
    });
    over(state, [&](Question const &asked) {
        auto const &found = outputs.find({asked.config, asked.slot})->second;
        return copied ? std::vector<std::uint32_t>(found).size() : found.size();
    });
}
BENCHMARK(map_outputs<false>)->Arg(1)->Arg(64);
BENCHMARK(map_outputs<true>)->Arg(1)->Arg(64);

void tarn_get_output_source(benchmark::State &state)
{
    over(state, [](Question const &asked) { return GetOutputSource(*asked.spec, asked.output); });
}
BENCHMARK(tarn_get_output_source)->Arg(1)->Arg(64);

void tarn_locate_angle(benchmark::State &state)
{
    over(state,
        [](Question const &asked) { return LocateAngle(*asked.spec, asked.channel, asked.angle); });
}
BENCHMARK(tarn_locate_angle)->Arg(1)->Arg(64);

void tarn_find_all_outputs(benchmark::State &state)
{
    over(state, [](Question const &asked) {
        return FindAllOutputs(*asked.spec, asked.channel, false).size();
    });
}
BENCHMARK(tarn_find_all_outputs)->Arg(1)->Arg(64);

} // namespace

BENCHMARK_MAIN();
