// SPDX-License-Identifier: Apache-2.0
// A storm of reports through the hub: 40 channels, twelve kinds of reports, 60 fields a second. It
// joins the program of the hand-off, whose `paced/0/60` is what the main thread pays for as many
// reports when each comes as a queued signal. Here it reads the socket as well.
#include "ATarnLib/glint/glint.h"
#include "ATarnLib/glint/glint_channel_monitor.h"
#include "ATarnLib/glint/glint_health.h"
#include "sim/vesk/vesk_sim.h"
#include "sim/vesk/vesk_storm.h"
#include "sim/vesk/vesk_world.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>

#include <algorithm>
#include <array>
#include <atomic>
#include <benchmark/benchmark.h>
#include <ctime>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

constexpr int warm_up_ms = 500;
/// With the usual nine repetitions a minute of the load; TARN_STORM_SECONDS makes it longer at a
/// stretch.
int const measured_ms = qEnvironmentVariableIsSet("TARN_STORM_SECONDS")
    ? 1000 * qEnvironmentVariableIntValue("TARN_STORM_SECONDS")
    : 7000;

long long ns_of(clockid_t clock)
{
    timespec t;
    clock_gettime(clock, &t);
    return t.tv_sec * 1000000000LL + t.tv_nsec;
}

long long now_ns()
{
    return ns_of(CLOCK_MONOTONIC);
}

/// The value below which so many percent lie.
double percentile(std::vector<long long> *values, unsigned int percent)
{
    if (values->empty())
        return 0;
    auto const at = values->begin() + std::ptrdiff_t(values->size() * percent / 100);
    std::nth_element(values->begin(), at, values->end());
    return double(*at);
}

/// When each part of a field has left the server.
class Stamps
{
public:
    void note(quint64 field, unsigned int part)
    {
        times[field % fields][part].store(now_ns(), std::memory_order_relaxed);
    }
    long long of(VCTP3::Channel channel, quint64 field, unsigned int parts) const
    {
        unsigned int const number = static_cast<unsigned int>(channel);
        unsigned int part = 0;
        while (VeskChannels::count * (part + 1) / parts <= number)
            ++part;
        return times[field % fields][part].load(std::memory_order_relaxed);
    }

private:
    static constexpr std::size_t fields = 4096;
    std::array<std::array<std::atomic<long long>, VeskStorm::most_parts>, fields> times{};
};

/// Runs the event loop for so long.
void run_loop(int ms)
{
    QEventLoop loop;
    QTimer::singleShot(ms, Qt::PreciseTimer, &loop, &QEventLoop::quit);
    loop.exec();
}

/// Of this process alone, since the protocol's port is fixed.
QHostAddress own_address()
{
    return QHostAddress(0x7f630000U | (static_cast<quint32>(::getpid()) & 0xffffU));
}

/// A server and a hub that has registered everything about all channels.
struct Rig
{
    explicit Rig(unsigned int parts_of_field)
        : parts(parts_of_field)
        , server(own_address(), options())
        , hub(false)
    {
        QEventLoop loop;
        VCTP3::CallbackGroup_set1 registered;
        QObject::connect(&registered, &VCTP3::CallbackGroup_set1::sig_ok, &loop, &QEventLoop::quit);
        QObject::connect(&hub, &Glint::connected, &loop, [&] {
            hub.cmd_channel_reports_register(
                VeskStorm::channel_set(), VeskStorm::report_set(), registered);
        });
        hub.set_server(server.address());
        loop.exec();
        hub.disconnect(&loop);
    }
    VeskSimOptions options()
    {
        VeskSimOptions wanted;
        wanted.standard = VCTP3::VideoStandard::v1080_60i;
        wanted.storm = true;
        wanted.storm_parts = parts;
        wanted.passed = [this](quint64 field, unsigned int part) {
            stamps.note(field, part);
            if (part == 0)
                field_now = field;
        };
        return wanted;
    }
    /// Connects a slot to every signal of every channel.
    void listen()
    {
        using Monitor = GlintChannelMonitor;
        auto const to = [this](auto... signal) {
            for (unsigned int number = 0; number < Glint::channel_count; ++number)
                (QObject::connect(
                     hub.get_channel_monitor(number), signal, &hub, [this] { ++heard; }),
                    ...);
        };
        to(&Monitor::report_status, &Monitor::report_clipid, &Monitor::report_speed,
            &Monitor::report_timecodes, &Monitor::report_clip_position,
            &Monitor::report_display_timecode, &Monitor::report_input_timecode,
            &Monitor::report_information, &Monitor::report_playback_mode, &Monitor::report_peak,
            &Monitor::report_peak_hold, &Monitor::report_aux_status, &Monitor::report_aux_clipid,
            &Monitor::report_aux_speed, &Monitor::report_aux_position,
            &Monitor::report_aux_information, &Monitor::report_aux_peak,
            &Monitor::report_aux_peak_hold);
    }

    unsigned int parts;
    Stamps stamps;
    std::atomic<quint64> field_now{0};
    VeskSim server;
    Glint hub;
    quint64 heard = 0;
};

/// What the main thread pays: without listeners (0) or with one on each signal (1), in parts of a
/// field.
void tarn_storm(benchmark::State &state)
{
    Rig rig(static_cast<unsigned int>(state.range(1)));
    if (state.range(0))
        rig.listen();
    GlintHealth const &health = *rig.hub.get_health();
    rig.server.set_real_time(true);
    run_loop(warm_up_ms);
    for (auto _ : state) {
        quint64 const reports = health.messages_received();
        quint64 const heard = rig.heard;
        long long const wall = now_ns();
        long long const cpu = ns_of(CLOCK_THREAD_CPUTIME_ID);
        run_loop(measured_ms);
        auto const spent = double(ns_of(CLOCK_THREAD_CPUTIME_ID) - cpu);
        auto const elapsed = double(now_ns() - wall);
        auto const received = double(health.messages_received() - reports);
        state.SetIterationTime(elapsed * 1e-9);
        state.counters["main_cpu_pct"] = 100 * spent / elapsed;
        state.counters["main_ns_per_report"] = spent / received;
        state.counters["reports_per_s"] = received / elapsed * 1e9;
        state.counters["signals_per_s"] = double(rig.heard - heard) / elapsed * 1e9;
    }
}
BENCHMARK(tarn_storm)
    ->ArgsProduct({{0, 1}, {1, VeskStorm::most_parts}})
    ->Iterations(1)
    ->UseManualTime();

/// Asks the event loop for its time every few milliseconds from another thread.
class LoopProbe
{
public:
    LoopProbe()
        : thread([this] { ask(); })
    {
    }
    ~LoopProbe()
    {
        ended = true;
        thread.join();
    }
    std::vector<long long> waits;

private:
    void ask()
    {
        timespec const pause{0, 3700000};
        while (!ended) {
            QMetaObject::invokeMethod(
                &here, [this, asked = now_ns()] { waits.push_back(now_ns() - asked); },
                Qt::QueuedConnection);
            nanosleep(&pause, nullptr);
        }
    }
    QObject here;
    std::atomic<bool> ended{false};
    std::thread thread;
};

/// How old a value is when its slot is called, by the road of the workers (position) and that of
/// the parser (information), and how long the event loop lets others wait, with a listener on each
/// signal.
void tarn_storm_age(benchmark::State &state)
{
    Rig rig(static_cast<unsigned int>(state.range(0)));
    rig.listen();
    std::vector<long long> of_worker;
    std::vector<long long> of_parser;
    auto const note = [&](std::vector<long long> *ages, VCTP3::Channel channel, unsigned int at) {
        quint64 const field = VeskStormLayer::field_of(channel, at);
        ages->push_back(now_ns() - rig.stamps.of(channel, field, rig.parts));
    };
    for (unsigned int number = 0; number < Glint::channel_count; ++number) {
        GlintChannelMonitor *monitor = rig.hub.get_channel_monitor(number);
        auto const channel = static_cast<VCTP3::Channel>(number);
        QObject::connect(monitor, &GlintChannelMonitor::report_clip_position, &rig.hub,
            [&, channel](unsigned int position) { note(&of_worker, channel, position); });
        QObject::connect(monitor, &GlintChannelMonitor::report_information, &rig.hub,
            [&, channel](VCTP3::ChannelInformation const &value) {
                note(&of_parser, channel, value.loopin);
            });
    }
    rig.server.set_real_time(true);
    run_loop(warm_up_ms);
    for (auto _ : state) {
        of_worker.clear();
        of_parser.clear();
        LoopProbe probe;
        run_loop(measured_ms);
        state.SetIterationTime(measured_ms * 1e-3);
        state.counters["position_p50_us"] = percentile(&of_worker, 50) / 1e3;
        state.counters["position_p99_us"] = percentile(&of_worker, 99) / 1e3;
        state.counters["information_p50_us"] = percentile(&of_parser, 50) / 1e3;
        state.counters["information_p99_us"] = percentile(&of_parser, 99) / 1e3;
        state.counters["loop_wait_p99_us"] = percentile(&probe.waits, 99) / 1e3;
        state.counters["loop_wait_max_us"]
            = double(*std::max_element(probe.waits.begin(), probe.waits.end())) / 1e3;
    }
}
BENCHMARK(tarn_storm_age)->Arg(1)->Arg(VeskStorm::most_parts)->Iterations(1)->UseManualTime();

/// Five seconds without the main thread, and how long it is behind then: until it has the field
/// that the server sends.
void tarn_storm_blocked(benchmark::State &state)
{
    Rig rig(1);
    rig.listen();
    rig.server.set_real_time(true);
    run_loop(warm_up_ms);
    for (auto _ : state) {
        timespec const five{5, 0};
        nanosleep(&five, nullptr);
        long long const awake = now_ns();
        quint64 most_waiting = 0;
        QEventLoop loop;
        auto const look = [&](unsigned int position) {
            most_waiting = std::max(most_waiting, rig.hub.get_health()->input_bytes_waiting());
            if (position >= rig.field_now)
                loop.quit();
        };
        QObject::connect(
            rig.hub.get_channel_monitor(0), &GlintChannelMonitor::report_aux_position, &loop, look);
        loop.exec();
        state.SetIterationTime(double(now_ns() - awake) * 1e-9);
        state.counters["caught_up_ms"] = double(now_ns() - awake) / 1e6;
        state.counters["most_waiting_kB"] = double(most_waiting) / 1e3;
    }
}
BENCHMARK(tarn_storm_blocked)->Iterations(1)->UseManualTime();

} // namespace
