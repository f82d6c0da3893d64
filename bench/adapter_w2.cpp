// SPDX-License-Identifier: Apache-2.0
// Reports parsed on the engine's worker and taken on the main thread. Feeding the engine is done
// on the main thread too, as the owner of a socket does it, and is counted there; the peers are
// handed their trees for nothing.
#include "kestrel/mod/vctp3/tarnlibapi/protocol/xml_parse_engine2.h"
#include "message_stream.hpp"

#include <QByteArray>
#include <QCoreApplication>
#include <QObject>

#include <algorithm>
#include <benchmark/benchmark.h>
#include <cstdint>
#include <ctime>
#include <string_view>
#include <thread>
#include <vector>

namespace {

std::int64_t now_ns()
{
    timespec t;
    clock_gettime(CLOCK_MONOTONIC, &t);
    return t.tv_sec * 1000000000LL + t.tv_nsec;
}

std::int64_t cpu_ns()
{
    timespec t;
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &t);
    return t.tv_sec * 1000000000LL + t.tv_nsec;
}

wl::Stream const &reports()
{
    static wl::Stream const stream = wl::kind_stream(wl::Kind::Report, 8 << 20);
    return stream;
}

/// Takes whatever is there and leaves the loop when all has come.
struct Consumer : QObject
{
    explicit Consumer(XMLParseEngine2 *from)
        : engine(from)
    {
        connect(engine, &XMLParseEngine2::parse_result_available, this, [this] { take(); });
    }
    void take()
    {
        ++wakes;
        for (XMLTree tree = engine->get_xml(); !tree.is_null(); tree = engine->get_xml()) {
            sum += tree.count_subnodes();
            if (!born.empty())
                ages.push_back(now_ns() - born[got]);
            if (++got == want)
                QCoreApplication::exit();
        }
    }
    XMLParseEngine2 *engine;
    std::size_t got = 0;
    std::size_t want = 0;
    std::size_t wakes = 0;
    std::uint64_t sum = 0;
    std::vector<std::int64_t> born; // when each message was fed
    std::vector<std::int64_t> ages;
};

/// As much as the worker and the main thread can do together.
void tarn_capacity_parse_handoff(benchmark::State &state)
{
    wl::Stream const &stream = reports();
    double main_cpu = 0;
    for (auto _ : state) {
        XMLParseEngine2 engine(65536);
        engine.config_tag("reply");
        engine.config_tag("report");
        Consumer consumer(&engine);
        consumer.want = stream.messages.size();
        std::size_t at = 0;
        auto const feed = [&] {
            while (at < stream.bytes.size() && engine.input_wanted()) {
                std::size_t const n = std::min<std::size_t>(16384, stream.bytes.size() - at);
                engine.input_bytes(QByteArray(stream.bytes.data() + at, qsizetype(n)));
                at += n;
            }
        };
        QObject::connect(&engine, &XMLParseEngine2::input_wanted_again, &consumer, feed);
        std::int64_t const t0 = now_ns();
        std::int64_t const c0 = cpu_ns();
        feed();
        QCoreApplication::exec();
        state.SetIterationTime(double(now_ns() - t0) * 1e-9);
        main_cpu += double(cpu_ns() - c0) / double(consumer.want);
    }
    state.SetItemsProcessed(state.iterations() * std::int64_t(stream.messages.size()));
    state.counters["main_ns_per_msg"] = main_cpu / double(state.iterations());
}
BENCHMARK(tarn_capacity_parse_handoff)->UseManualTime();

/// 28,800 reports a second for two seconds, in bursts or spread.
void tarn_paced(benchmark::State &state)
{
    wl::Stream const &stream = reports();
    int const hz = int(state.range(0));
    std::size_t const per = 28800 / std::size_t(hz);
    int const ticks = hz * 2;
    for (auto _ : state) {
        XMLParseEngine2 engine(65536);
        engine.config_tag("reply");
        engine.config_tag("report");
        Consumer consumer(&engine);
        consumer.want = per * std::size_t(ticks);
        consumer.born.reserve(consumer.want);
        consumer.ages.reserve(consumer.want);
        std::size_t k = 0;
        auto const next_burst = [&] {
            QByteArray burst;
            for (std::size_t j = 0; j < per; ++j, ++k) {
                std::string_view const m = stream.view(k % stream.messages.size());
                burst.append(m.data(), qsizetype(m.size()));
            }
            return burst;
        };
        std::int64_t const t0 = now_ns();
        std::int64_t const c0 = cpu_ns();
        std::thread pace([&] {
            std::int64_t t = now_ns();
            for (int i = 0; i < ticks; ++i) {
                QByteArray const burst = next_burst();
                t += 1000000000LL / hz;
                timespec const at{time_t(t / 1000000000), long(t % 1000000000)};
                clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, &at, nullptr);
                QMetaObject::invokeMethod(
                    &consumer,
                    [&, burst, now = now_ns()] {
                        consumer.born.insert(consumer.born.end(), per, now);
                        engine.input_bytes(burst);
                    },
                    Qt::QueuedConnection);
            }
        });
        QCoreApplication::exec();
        std::int64_t const t1 = now_ns();
        std::int64_t const c1 = cpu_ns();
        pace.join();
        std::sort(consumer.ages.begin(), consumer.ages.end());
        std::size_t const n = consumer.ages.size();
        state.counters["main_cpu_pct"] = 100.0 * double(c1 - c0) / double(t1 - t0);
        state.counters["p50_us"] = double(consumer.ages[n / 2]) / 1e3;
        state.counters["p99_us"] = double(consumer.ages[n * 99 / 100]) / 1e3;
        state.counters["wakes_per_s"] = double(consumer.wakes) / 2;
        state.SetIterationTime(double(t1 - t0) * 1e-9);
    }
}
BENCHMARK(tarn_paced)->Arg(60)->Arg(960)->Iterations(1)->UseManualTime();

} // namespace
