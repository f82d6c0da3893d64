// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/glint/glint.h"
#include "ATarnLib/glint/glint_channel_monitor.h"
#include "ATarnLib/glint/glint_health.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/xml_parse_engine2.h"
#include "sim/vesk/vesk_sim.h"
#include "tests/support/loopback_address.h"
#include "tests/support/patience.h"
#include "tests/support/storm_listener.h"
#include "tests/support/thoroughness.h"

#include <QFile>
#include <QSignalSpy>
#include <QTest>

#include <algorithm>
#include <array>
#include <list>

using Corvane::ATimecode;
using VCTP3::Layer;
using VCTP3::VideoStandard;

namespace {

constexpr auto standard = VideoStandard::v1080_60i;
constexpr unsigned int five_seconds = 5 * 60; // fields
constexpr unsigned int long_time = 150; // fields with 15 MB, more than the hub may keep

std::list<unsigned int> levels_of(VeskStormLayer const &layer)
{
    VeskChannelReports::Levels const levels = layer.levels();
    return {levels.begin(), levels.end()};
}

/// What the slots of one channel were given last.
struct Shown
{
    void listen(GlintChannelMonitor *monitor, QObject *context)
    {
        using Monitor = GlintChannelMonitor;
        auto const keep = [=](auto signal, auto *last) {
            QObject::connect(
                monitor, signal, context, [last](auto const &value) { *last = value; });
        };
        keep(&Monitor::report_status, &status);
        keep(&Monitor::report_clipid, &clipid);
        keep(&Monitor::report_speed, &speed);
        keep(&Monitor::report_clip_position, &position);
        keep(&Monitor::report_display_timecode, &display);
        keep(&Monitor::report_input_timecode, &input);
        keep(&Monitor::report_information, &information);
        keep(&Monitor::report_peak, &peak);
        keep(&Monitor::report_aux_status, &aux_status);
        keep(&Monitor::report_aux_clipid, &aux_clipid);
        keep(&Monitor::report_aux_speed, &aux_speed);
        keep(&Monitor::report_aux_position, &aux_position);
        keep(&Monitor::report_aux_information, &aux_information);
        keep(&Monitor::report_aux_peak, &aux_peak);
        // The highest that was ever shown.
        QObject::connect(monitor, &Monitor::report_peak_hold, context,
            [this](std::list<unsigned int> const &levels) {
                for (unsigned int level : levels)
                    highest = std::max(highest, level);
            });
    }
    bool is(VeskStormLayer const &normal, VeskStormLayer const &bed) const
    {
        return status == normal.status() && clipid == QString(normal.clip_id())
            && speed == normal.speed() && position == normal.position()
            && display == ATimecode(normal.display_timecode(), 1)
            && input == ATimecode(normal.input_timecode(), 1) && information == normal.information()
            && peak == levels_of(normal) && aux_status == bed.status()
            && aux_clipid == QString(bed.clip_id()) && aux_speed == bed.speed()
            && aux_position == bed.position() && aux_information == bed.information()
            && aux_peak == levels_of(bed);
    }

    VCTP3::ChannelStatus status{};
    QString clipid;
    int speed = 0;
    unsigned int position = 0;
    ATimecode display;
    ATimecode input;
    VCTP3::ChannelInformation information;
    std::list<unsigned int> peak;
    VCTP3::ChannelStatus aux_status{};
    QString aux_clipid;
    int aux_speed = 0;
    unsigned int aux_position = 0;
    VCTP3::ChannelInformation aux_information;
    std::list<unsigned int> aux_peak;
    unsigned int highest = 0;
};

/// A hub that listens to all that the channels of a storm report.
struct StormBench
{
    explicit StormBench(unsigned int parts = 1)
        : server(LoopbackAddress::unique(), options(parts))
        , hub(false)
        , truth(&hub, standard, StormListener::HighRate::newest)
    {
        for (unsigned int number = 0; number < Glint::channel_count; ++number)
            shown[number].listen(hub.get_channel_monitor(number), &hub);
    }
    static VeskSimOptions options(unsigned int parts)
    {
        VeskSimOptions wanted;
        wanted.standard = standard;
        wanted.storm = true;
        wanted.storm_parts = parts;
        return wanted;
    }
    /// Connects, and waits until each channel shows the field that the server is in.
    bool connect()
    {
        hub.set_server(server.address());
        return shows_field(server.fields());
    }
    /// Waits until each channel shows all of that field.
    bool shows_field(quint64 field)
    {
        return QTest::qWaitFor(
            [&] {
                for (unsigned int number = 0; number < Glint::channel_count; ++number) {
                    auto const channel = static_cast<VCTP3::Channel>(number);
                    if (!shown[number].is({channel, Layer::normal, &truth.at(field)},
                            {channel, Layer::bed, &truth.at(field)}))
                        return false;
                }
                return true;
            },
            2 * patience_ms);
    }
    /// Lets fields pass, with a turn of the event loop after each.
    void live(unsigned int fields)
    {
        for (unsigned int field = 0; field < fields; ++field) {
            server.advance(1);
            QCoreApplication::processEvents();
        }
    }

    VeskSim server;
    Glint hub;
    StormListener truth;
    std::array<Shown, Glint::channel_count> shown;
};

} // namespace

/// The hub under the load of 40 channels that report everything with every field.
class TestGlintStorm : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void every_monitor_shows_the_last_field_data();
    void every_monitor_shows_the_last_field();
    void reports_off_the_field_rate_road_arrive_each_in_order();
    void a_blocked_main_thread_loses_nothing_but_what_is_overtaken();
    void what_waits_in_the_hub_is_bounded_however_long_the_main_thread_is_blocked();
    void the_memory_of_a_blocked_time_serves_the_next_one();
    void a_storm_that_breaks_off_goes_on_with_the_next_connection();
};

void TestGlintStorm::every_monitor_shows_the_last_field_data()
{
    QTest::addColumn<unsigned int>("parts");
    QTest::newRow("in bursts") << 1U;
    QTest::newRow("spread") << VeskStorm::most_parts;
}

void TestGlintStorm::every_monitor_shows_the_last_field()
{
    QFETCH(unsigned int, parts);
    StormBench bench(parts);
    QVERIFY(bench.connect());
    bench.live(60);
    QVERIFY(bench.shows_field(60));
    QCOMPARE(bench.truth.wrong(), 0);
}

void TestGlintStorm::reports_off_the_field_rate_road_arrive_each_in_order()
{
    StormBench bench;
    QVERIFY(bench.connect());
    bench.live(60);
    QVERIFY(bench.shows_field(60));
    // Status, clip id, speed and information of both layers; timecodes end with their field.
    QVERIFY(bench.truth.came(61) >= 40 * (8 + 2));
    QCOMPARE(bench.truth.wrong(), 0);
    QCOMPARE(bench.hub.get_health()->messages_dropped(), quint64(0));
}

void TestGlintStorm::a_blocked_main_thread_loses_nothing_but_what_is_overtaken()
{
    StormBench bench;
    QVERIFY(bench.connect());
    bench.live(20);
    VCTP3::CallbackGroup_set1 group;
    QSignalSpy done(&group, &VCTP3::CallbackGroup_set1::sig_ok);
    bench.hub.cmd_sync(group);
    QCoreApplication::processEvents(); // the command leaves
    // Returns when the server has been through all of them.
    bench.server.advance(five_seconds);
    bench.live(20);
    quint64 const last = 40 + five_seconds;
    QVERIFY(bench.shows_field(last));
    QCOMPARE(done.count(), 1);
    QVERIFY(bench.truth.came(int(last) + 1) >= 40 * (8 + 2));
    QCOMPARE(bench.truth.wrong(), 0);
    // Each track comes to 100 in so many fields, and whoever meters peaks has to see it.
    for (Shown const &channel : bench.shown)
        QCOMPARE(channel.highest, 100U);
    GlintHealth const &health = *bench.hub.get_health();
    QVERIFY(health.reports_coalesced() > 0);
    QCOMPARE(health.messages_dropped(), quint64(0));
    QCOMPARE(health.input_bytes_waiting(), quint64(0));
    // A worker counts what it has decoded when it is through with all that it took.
    QTRY_COMPARE(health.messages_to_decode(), quint64(0));
    QCOMPARE(health.results_to_deliver(), quint64(0));
    QCOMPARE(health.reconnections(), quint64(0));
}

void TestGlintStorm::what_waits_in_the_hub_is_bounded_however_long_the_main_thread_is_blocked()
{
    StormBench bench;
    QVERIFY(bench.connect());
    GlintHealth const &health = *bench.hub.get_health();
    quint64 bytes = 0;
    quint64 results = 0;
    QObject::connect(
        bench.hub.get_channel_monitor(0), &GlintChannelMonitor::report_speed, &bench.hub, [&] {
            bytes = std::max(bytes, health.input_bytes_waiting());
            results = std::max(results, health.results_to_deliver());
        });
    bench.server.advance(long_time);
    QVERIFY(bench.shows_field(long_time));
    // The parser's high-water mark with a message of the longest size, and the socket's buffer with
    // one read more.
    QVERIFY(bytes > 0);
    QVERIFY(bytes <= XMLParseEngine2::high_water + 2 * 65536 + 256 * 1024);
    // The newest of each channel, of four kinds.
    QVERIFY(results <= 4 * Glint::channel_count);
}

void TestGlintStorm::the_memory_of_a_blocked_time_serves_the_next_one()
{
    if constexpr (sanitized)
        QSKIP("A sanitizer keeps memory of its own");
    auto const resident = [] {
        QFile file(QStringLiteral("/proc/self/statm"));
        return file.open(QIODevice::ReadOnly)
            ? file.readAll().split(' ').value(1).toLongLong() * 4096
            : 0;
    };
    StormBench bench;
    QVERIFY(bench.connect());
    qint64 const before = resident();
    QVERIFY(before > 0);
    bench.server.advance(long_time);
    // The server, in the same process, keeps what does not leave, with room to grow.
    QVERIFY(resident() - before < 64 * 1024 * 1024);
    QVERIFY(bench.shows_field(long_time));
    qint64 const first = resident();
    // How much a time takes depends on who ran when. Four times that kept theirs would be 60 MB.
    for (unsigned int time = 2; time <= 5; ++time) {
        bench.server.advance(long_time);
        QVERIFY(bench.shows_field(time * long_time));
    }
    QVERIFY2(resident() - first < 32 * 1024 * 1024,
        QByteArray::number((resident() - first) / 1024) + " KiB more");
}

void TestGlintStorm::a_storm_that_breaks_off_goes_on_with_the_next_connection()
{
    StormBench bench;
    QVERIFY(bench.connect());
    bench.live(20);
    bench.server.advance(30);
    bench.server.drop_connections();
    QTRY_COMPARE(bench.hub.get_health()->reconnections(), quint64(1));
    QTRY_COMPARE(bench.server.counters().count("channel_report_register"), quint64(2 * 40 * 12));
    bench.live(5);
    QVERIFY(bench.shows_field(55));
}

QTEST_GUILESS_MAIN(TestGlintStorm)
#include "tst_glint_storm.moc"
