// SPDX-License-Identifier: Apache-2.0
// ATimecode at the arithmetic and the texts that hand-written code and the C library do.
#include "ATarnLib/timecode/atimecode.h"
#include "counts.hpp"

#include <benchmark/benchmark.h>
#include <cstdint>
#include <vector>

namespace {

using Corvane::ATimecode;

constexpr Corvane::VideoFrequency frequency = Corvane::VideoFrequency::v59_94;

struct Components
{
    unsigned int days;
    unsigned int hours;
    unsigned int minutes;
    unsigned int seconds;
    unsigned int frames;
    bool f2;
};

Components read(ATimecode const &t)
{
    return {
        t.get_days(), t.get_hours(), t.get_minutes(), t.get_seconds(), t.get_frames(), t.get_f2()};
}

template <typename Work> void over(benchmark::State &state, Work work)
{
    auto const counts = wl::field_counts(4096, 5178816, state.range(0) != 0);
    for (auto _ : state) {
        for (std::uint32_t n : counts)
            work(n);
    }
    state.SetItemsProcessed(state.iterations() * std::int64_t(counts.size()));
}

/// A monitor keeps its timecode and gets a new count each field.
void tarn_parts(benchmark::State &state)
{
    ATimecode t(frequency, 0, 1);
    over(state, [&t](std::uint32_t n) {
        t.set_nfields(n);
        benchmark::DoNotOptimize(read(t));
    });
}
BENCHMARK(tarn_parts)->Arg(0)->Arg(1)->ArgName("random");

void tarn_parts_made(benchmark::State &state)
{
    over(state, [](std::uint32_t n) {
        ATimecode const t(frequency, n, 1);
        benchmark::DoNotOptimize(read(t));
    });
}
BENCHMARK(tarn_parts_made)->Arg(0)->Arg(1)->ArgName("random");

void tarn_to_string(benchmark::State &state)
{
    ATimecode t(frequency, 0, 1);
    over(state, [&t](std::uint32_t n) {
        t.set_nfields(n);
        benchmark::DoNotOptimize(t.toString(4));
    });
}
BENCHMARK(tarn_to_string)->Arg(0)->Arg(1)->ArgName("random");

void tarn_from_string(benchmark::State &state)
{
    std::vector<AString> texts;
    for (std::uint32_t n : wl::field_counts(4096, 5178816, state.range(0) != 0))
        texts.push_back(ATimecode(frequency, n, 1).toString(4));
    for (auto _ : state) {
        for (AString const &text : texts)
            benchmark::DoNotOptimize(Corvane::fromString(text, frequency).get_nfields());
    }
    state.SetItemsProcessed(state.iterations() * std::int64_t(texts.size()));
}
BENCHMARK(tarn_from_string)->Arg(0)->Arg(1)->ArgName("random");

} // namespace
