// SPDX-License-Identifier: Apache-2.0
// AString at the string work that the other string classes do.
#include "kestrel/mod/vctp3/tarnlibapi/base/astring.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/astring_list.h"
#include "texts.hpp"

#include <benchmark/benchmark.h>
#include <cstdint>
#include <string>
#include <vector>

namespace {

wl::Texts const &texts()
{
    static wl::Texts const made = wl::make_texts();
    return made;
}

AString make(std::string const &text)
{
    return AString::from_utf8(text.data(), text.size());
}

std::vector<AString> make_all(std::vector<std::string> const &from, std::size_t n = SIZE_MAX)
{
    std::vector<AString> made;
    for (std::size_t i = 0; i < std::min(n, from.size()); ++i)
        made.push_back(make(from[i]));
    return made;
}

template <typename Work> void loop(benchmark::State &state, std::size_t n, Work work)
{
    for (auto _ : state) {
        for (std::size_t i = 0; i < n; ++i)
            benchmark::DoNotOptimize(work(i));
    }
    state.SetItemsProcessed(state.iterations() * std::int64_t(n));
}

std::int64_t long_bytes()
{
    std::size_t bytes = 0;
    for (std::size_t i = 0; i < 256; ++i)
        bytes += texts().longs[i].size();
    return std::int64_t(bytes);
}

void tarn_from_utf8_keys(benchmark::State &state)
{
    auto const &from = texts().keys;
    loop(state, from.size(), [&](std::size_t i) { return make(from[i]); });
}
BENCHMARK(tarn_from_utf8_keys);

void tarn_from_utf8_titles(benchmark::State &state)
{
    auto const &from = texts().titles;
    loop(state, from.size(), [&](std::size_t i) { return make(from[i]); });
}
BENCHMARK(tarn_from_utf8_titles);

void tarn_from_utf8_long(benchmark::State &state)
{
    auto const &from = texts().longs;
    loop(state, 256, [&](std::size_t i) { return make(from[i]); });
    state.SetBytesProcessed(state.iterations() * long_bytes());
}
BENCHMARK(tarn_from_utf8_long);

void tarn_to_utf8_long(benchmark::State &state)
{
    auto const from = make_all(texts().longs, 256);
    loop(state, 256, [&](std::size_t i) { return from[i].to_string(); });
    state.SetBytesProcessed(state.iterations() * long_bytes());
}
BENCHMARK(tarn_to_utf8_long);

void tarn_copy(benchmark::State &state)
{
    auto const from = make_all(texts().keys);
    loop(state, from.size(), [&](std::size_t i) { return AString(from[i]); });
}
BENCHMARK(tarn_copy);

void tarn_split_dots(benchmark::State &state)
{
    auto const from = make_all(texts().keys);
    AString const dot = AString::l1(".");
    loop(state, from.size(), [&](std::size_t i) {
        std::size_t n = 0;
        AStringList const parts = from[i].split(dot, true);
        for (AString const &part : parts)
            n += part.length();
        return n;
    });
}
BENCHMARK(tarn_split_dots);

void tarn_slice_long(benchmark::State &state)
{
    auto const from = make_all(texts().longs, 256);
    std::size_t slices = 0;
    for (AString const &text : from)
        slices += text.length() / 4;
    loop(state, 256, [&](std::size_t i) {
        std::size_t n = 0;
        for (unsigned long long at = 0; at + 4 <= from[i].length(); at += 4)
            n += from[i].mid(at, 4).getchar(0).ord();
        return n;
    });
    state.SetItemsProcessed(state.iterations() * std::int64_t(slices));
}
BENCHMARK(tarn_slice_long);

void tarn_concat(benchmark::State &state)
{
    auto const from = make_all(texts().titles);
    AString const dot = AString::l1(".");
    loop(state, from.size() - 1, [&](std::size_t i) { return from[i] + dot + from[i + 1]; });
}
BENCHMARK(tarn_concat);

void tarn_hash_keys(benchmark::State &state)
{
    auto const from = make_all(texts().keys);
    // A copy forgets its hash, so that each turn computes it.
    loop(state, from.size(), [&](std::size_t i) { return AString(from[i]).hash(); });
}
BENCHMARK(tarn_hash_keys);

void tarn_parse_u64(benchmark::State &state)
{
    auto const from = make_all(texts().numbers);
    loop(state, from.size(), [&](std::size_t i) {
        std::uint64_t value = 0;
        from[i].to_uint64_t(&value);
        return value;
    });
}
BENCHMARK(tarn_parse_u64);

void tarn_print_u64(benchmark::State &state)
{
    auto const &from = texts().values;
    loop(state, from.size(), [&](std::size_t i) { return AString::from_uint64_t(from[i]); });
}
BENCHMARK(tarn_print_u64);

void tarn_compare_less(benchmark::State &state)
{
    auto const from = make_all(texts().keys);
    loop(state, from.size() - 1, [&](std::size_t i) { return from[i] < from[i + 1]; });
}
BENCHMARK(tarn_compare_less);

void tarn_compare_equal(benchmark::State &state)
{
    auto const from = make_all(texts().keys);
    auto const same = make_all(texts().keys);
    loop(state, from.size(), [&](std::size_t i) { return from[i] == same[i]; });
}
BENCHMARK(tarn_compare_equal);

} // namespace
