// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/glint/glint_channel_monitor.h"
#include "tests/glint/hub_bench.h"
#include "tests/glint/monitor_signals.h"
#include "tests/glint/report_text.h"
#include "tests/glint/signal_notes.h"
#include "tests/support/assert_log.h"
#include "tests/support/event_loop.h"
#include "tests/support/patience.h"

#include <QSignalSpy>
#include <QTest>
#include <array>
#include <thread>

using VCTP3::Channel;
using VCTP3::ChannelStatus;

namespace {

using Monitor = GlintChannelMonitor;
using Signal = MonitorSignal<Monitor>;

QString registration(char const *report)
{
    return WireLog::registration("C", report);
}

QString unregistration(char const *report)
{
    return WireLog::unregistration("C", report);
}

} // namespace

/// What is registered for a channel, and what its listeners get.
class TestGlintChannelMonitor : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void has_its_names_and_defaults();
    void signals_are_known_by_their_method_data();
    void signals_are_known_by_their_method();
    void a_first_listener_registers_once_and_each_gets_the_value_data();
    void a_first_listener_registers_once_and_each_gets_the_value();
    void the_first_value_comes_from_the_event_loop();
    void a_listener_while_unconnected_sends_nothing_until_the_next_connection_data();
    void a_listener_while_unconnected_sends_nothing_until_the_next_connection();
    void a_report_stays_registered_until_the_ten_second_pass_data();
    void a_report_stays_registered_until_the_ten_second_pass();
    void the_pass_comes_every_ten_seconds();
    void the_pass_tells_nothing_to_those_who_stay();
    void signals_of_one_report_are_counted_together_data();
    void signals_of_one_report_are_counted_together();
    void disconnecting_and_connecting_again_sends_nothing();
    void losing_the_listener_while_unconnected_sends_nothing();
    void every_way_of_leaving_is_seen_data();
    void every_way_of_leaving_is_seen();
    void a_listener_is_heard_after_everybody_was_disconnected();
    void other_threads_may_connect_and_disconnect();
    void an_unknown_signal_is_an_assertion();
    void the_internal_signal_is_no_listener();
    void news_are_stored_and_emitted_to_listeners();
    void a_status_with_a_clip_sets_the_clip_data();
    void a_status_with_a_clip_sets_the_clip();
    void the_playback_mode_is_not_taken_from_the_information();
    void values_outlive_the_connection();
    void levels_are_brought_to_16_numbers_data();
    void levels_are_brought_to_16_numbers();
    void reports_of_channel_40_are_passed_over();
    void a_monitor_is_found_by_number_and_channel();
    void a_peak_between_two_deliveries_is_held();
};

void TestGlintChannelMonitor::has_its_names_and_defaults()
{
    Glint hub(false);
    Monitor *monitor = hub.get_channel_monitor(39);
    QCOMPARE(monitor->objectName(), QStringLiteral("GlintChannelMonitor 39"));
    QCOMPARE(int(monitor->channel()), 39);
    QCOMPARE(int(Monitor::default_status()), 1);
    QCOMPARE(int(Monitor::default_aux_status()), 1);
    QCOMPARE(Monitor::default_clipid(), QString());
    QCOMPARE(Monitor::default_speed(), 0);
    QCOMPARE(Monitor::default_timecodes().clip_position, 0u);
    QVERIFY(Monitor::default_timecodes().display.is_undefined());
    QVERIFY(Monitor::default_timecodes().input.is_undefined());
    QCOMPARE(Monitor::default_clip_position(), 0u);
    QVERIFY(Monitor::default_information() == VCTP3::ChannelInformation());
    QVERIFY(Monitor::default_peak().empty());
    QVERIFY(Monitor::default_display_timecode().is_undefined());
    QVERIFY(Monitor::default_input_timecode().is_undefined());
    QVERIFY(!Monitor::default_playback_mode());
    QCOMPARE(Monitor::default_aux_clipid(), QString());
    QCOMPARE(Monitor::default_aux_speed(), 0);
    QCOMPARE(Monitor::default_aux_position(), 0u);
    QVERIFY(Monitor::default_aux_information() == VCTP3::ChannelInformation());
    QVERIFY(Monitor::default_aux_peak().empty());
    QVERIFY(QMetaType::fromName("GlintChannelMonitor::UpdateMethod").isValid());
}

void TestGlintChannelMonitor::signals_are_known_by_their_method_data()
{
    QTest::addColumn<int>("index");
    for (std::size_t i = 0; i < MonitorSignals::of_channel().size(); ++i)
        QTest::newRow(MonitorSignals::of_channel()[i].name) << int(i);
}

void TestGlintChannelMonitor::signals_are_known_by_their_method()
{
    QFETCH(int, index);
    Signal const &signal = MonitorSignals::of_channel()[std::size_t(index)];
    QCOMPARE(signal.method().name(), QByteArray("report_") + signal.name);
}

void TestGlintChannelMonitor::a_first_listener_registers_once_and_each_gets_the_value_data()
{
    signals_are_known_by_their_method_data();
}

void TestGlintChannelMonitor::a_first_listener_registers_once_and_each_gets_the_value()
{
    QFETCH(int, index);
    Signal const &signal = MonitorSignals::of_channel()[std::size_t(index)];
    HubBench bench;
    QVERIFY(bench.connect());
    Monitor *monitor = bench.hub->get_channel_monitor(2);
    QObject listener;
    int first = 0;
    int second = 0;
    signal.connect(monitor, &listener, [&first] { ++first; });
    // The present value, and what the server says to the registration.
    QTRY_COMPARE(first, 2);
    QVERIFY(bench.sync());
    QCOMPARE(bench.log.channel_reports(), QStringList(registration(signal.report)));

    signal.connect(monitor, &listener, [&second] { ++second; });
    QCOMPARE(second, 0);
    QTRY_COMPARE(second, 1);
    QVERIFY(bench.sync());
    QCOMPARE(bench.log.channel_reports().size(), 1);
}

void TestGlintChannelMonitor::the_first_value_comes_from_the_event_loop()
{
    Glint hub(false);
    Monitor *monitor = hub.get_channel_monitor(0);
    monitor->glint_status(ChannelStatus::record, AOption<AString>());
    QList<ChannelStatus> heard;
    connect(monitor, &Monitor::report_status, this,
        [&heard](ChannelStatus status) { heard.append(status); });
    QVERIFY(heard.isEmpty());
    QTRY_COMPARE(heard, QList<ChannelStatus>{ChannelStatus::record});
    // A listener that has left before the event loop came to it.
    QList<ChannelStatus> never;
    disconnect(connect(monitor, &Monitor::report_speed, this, [&never] { never.append({}); }));
    EventLoop::turn();
    QVERIFY(never.isEmpty());
}

void TestGlintChannelMonitor::
    a_listener_while_unconnected_sends_nothing_until_the_next_connection_data()
{
    signals_are_known_by_their_method_data();
}

void TestGlintChannelMonitor::a_listener_while_unconnected_sends_nothing_until_the_next_connection()
{
    QFETCH(int, index);
    Signal const &signal = MonitorSignals::of_channel()[std::size_t(index)];
    HubBench bench;
    QSignalSpy sends(bench.hub.get(), &Glint::indirect_send);
    QObject listener;
    int heard = 0;
    signal.connect(bench.hub->get_channel_monitor(2), &listener, [&heard] { ++heard; });
    QTRY_COMPARE(heard, 1);
    QCOMPARE(sends.count(), 0);
    QVERIFY(bench.connect());
    QCOMPARE(bench.log.channel_reports(), QStringList(registration(signal.report)));
}

void TestGlintChannelMonitor::a_report_stays_registered_until_the_ten_second_pass_data()
{
    signals_are_known_by_their_method_data();
}

void TestGlintChannelMonitor::a_report_stays_registered_until_the_ten_second_pass()
{
    QFETCH(int, index);
    Signal const &signal = MonitorSignals::of_channel()[std::size_t(index)];
    HubBench bench;
    QVERIFY(bench.connect());
    QObject listener;
    auto const connection = signal.connect(bench.hub->get_channel_monitor(2), &listener, [] {});
    EventLoop::turn();
    disconnect(connection);
    EventLoop::turn();
    QVERIFY(bench.sync());
    QCOMPARE(bench.log.channel_reports(), QStringList(registration(signal.report)));
    bench.ten_seconds_pass();
    bench.ten_seconds_pass();
    QVERIFY(bench.sync());
    QCOMPARE(bench.log.channel_reports(),
        QStringList({registration(signal.report), unregistration(signal.report)}));
}

void TestGlintChannelMonitor::the_pass_comes_every_ten_seconds()
{
    Glint hub(false);
    int timers = 0;
    for (ATimer *timer : hub.findChildren<ATimer *>())
        timers += timer->isActive() && timer->interval() == 10000 && !timer->isSingleShot();
    QCOMPARE(timers, 1);
}

void TestGlintChannelMonitor::the_pass_tells_nothing_to_those_who_stay()
{
    HubBench bench;
    Monitor *monitor = bench.hub->get_channel_monitor(2);
    int heard = 0;
    connect(monitor, &Monitor::report_speed, this, [&heard] { ++heard; });
    disconnect(connect(monitor, &Monitor::report_speed, this, [] {}));
    EventLoop::turn();
    heard = 0;
    bench.ten_seconds_pass();
    EventLoop::turn();
    QCOMPARE(heard, 0);
}

void TestGlintChannelMonitor::signals_of_one_report_are_counted_together_data()
{
    QTest::addColumn<QByteArray>("report");
    for (char const *report : {"timecode", "info", "peak", "aux_audio_peak"})
        QTest::newRow(report) << QByteArray(report);
}

void TestGlintChannelMonitor::signals_of_one_report_are_counted_together()
{
    QFETCH(QByteArray, report);
    HubBench bench;
    QVERIFY(bench.connect());
    QObject listener;
    QList<QMetaObject::Connection> connections;
    for (Signal const &signal : MonitorSignals::of_channel())
        if (report == signal.report)
            connections.append(signal.connect(bench.hub->get_channel_monitor(2), &listener, [] {}));
    QVERIFY(connections.size() >= 2);
    EventLoop::turn();
    while (!connections.isEmpty()) {
        QVERIFY(bench.sync());
        QCOMPARE(bench.log.channel_reports(), QStringList(registration(report.constData())));
        disconnect(connections.takeFirst());
        bench.ten_seconds_pass();
    }
    QVERIFY(bench.sync());
    QCOMPARE(bench.log.channel_reports(),
        QStringList({registration(report.constData()), unregistration(report.constData())}));
}

void TestGlintChannelMonitor::disconnecting_and_connecting_again_sends_nothing()
{
    HubBench bench;
    QVERIFY(bench.connect());
    Monitor *monitor = bench.hub->get_channel_monitor(2);
    auto const listen = [&] { return connect(monitor, &Monitor::report_speed, this, [] {}); };
    auto connection = listen();
    EventLoop::turn();
    disconnect(connection);
    EventLoop::turn();
    connection = listen();
    EventLoop::turn();
    bench.ten_seconds_pass();
    QVERIFY(bench.sync());
    QCOMPARE(bench.log.channel_reports(), QStringList(registration("speed")));
    disconnect(connection);
}

void TestGlintChannelMonitor::losing_the_listener_while_unconnected_sends_nothing()
{
    HubBench bench;
    QVERIFY(bench.connect());
    Monitor *monitor = bench.hub->get_channel_monitor(2);
    auto const connection = connect(monitor, &Monitor::report_speed, this, [] {});
    QVERIFY(bench.sync());
    bench.server.stop();
    QTRY_VERIFY(!bench.hub->is_connected());
    disconnect(connection);
    bench.ten_seconds_pass();
    bench.log.take();
    bench.server.restart(VeskState::keep);
    QTRY_VERIFY(bench.hub->is_connected());
    QVERIFY(bench.sync());
    QCOMPARE(bench.log.channel_reports(), QStringList());
}

void TestGlintChannelMonitor::every_way_of_leaving_is_seen_data()
{
    QTest::addColumn<int>("way");
    QTest::newRow("by its connection") << 0;
    QTest::newRow("by its signal") << 1;
    QTest::newRow("with all signals") << 2;
    QTest::newRow("with all receivers") << 3;
    QTest::newRow("by its end") << 4;
}

void TestGlintChannelMonitor::every_way_of_leaving_is_seen()
{
    QFETCH(int, way);
    HubBench bench;
    QVERIFY(bench.connect());
    Monitor *monitor = bench.hub->get_channel_monitor(2);
    auto listener = std::make_unique<QObject>();
    auto const connection = connect(monitor, &Monitor::report_speed, listener.get(), [] {});
    EventLoop::turn();
    switch (way) {
    case 0:
        disconnect(connection);
        break;
    case 1:
        disconnect(monitor, &Monitor::report_speed, listener.get(), nullptr);
        break;
    case 2:
        disconnect(monitor, nullptr, listener.get(), nullptr);
        break;
    case 3:
        disconnect(monitor, &Monitor::report_speed, nullptr, nullptr);
        break;
    default:
        listener.reset();
    }
    bench.ten_seconds_pass();
    QVERIFY(bench.sync());
    QCOMPARE(
        bench.log.channel_reports(), QStringList({registration("speed"), unregistration("speed")}));
}

void TestGlintChannelMonitor::a_listener_is_heard_after_everybody_was_disconnected()
{
    HubBench bench;
    QVERIFY(bench.connect());
    Monitor *monitor = bench.hub->get_channel_monitor(2);
    connect(monitor, &Monitor::report_status, this, [] {});
    EventLoop::turn();
    // Of all signals and all receivers; what is the monitor's own must stay.
    monitor->disconnect();
    monitor->disconnect();
    bench.ten_seconds_pass();
    int heard = 0;
    connect(monitor, &Monitor::report_speed, this, [&heard] { ++heard; });
    // The present value, once, and what the server says to the registration.
    QTRY_COMPARE(heard, 2);
    QVERIFY(bench.sync());
    QCOMPARE(heard, 2);
    QCOMPARE(bench.log.channel_reports(),
        QStringList({registration("status"), unregistration("status"), registration("speed")}));
}

void TestGlintChannelMonitor::other_threads_may_connect_and_disconnect()
{
    HubBench bench;
    QVERIFY(bench.connect());
    Monitor *monitor = bench.hub->get_channel_monitor(2);
    QObject listener;
    std::atomic<int> heard{0};
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t)
        threads.emplace_back([&] {
            for (int i = 0; i < 200; ++i)
                disconnect(
                    connect(monitor, &Monitor::report_clipid, &listener, [&heard] { ++heard; }));
        });
    for (std::thread &thread : threads)
        thread.join();
    QMetaObject::Connection connection;
    std::thread([&] {
        connection = connect(monitor, &Monitor::report_speed, &listener, [&heard] { ++heard; });
    }).join();
    QTRY_VERIFY(heard > 0);
    bench.ten_seconds_pass();
    QVERIFY(bench.sync());
    QCOMPARE(bench.log.channels_registered(), QSet<QString>{QStringLiteral("C speed")});
}

void TestGlintChannelMonitor::an_unknown_signal_is_an_assertion()
{
    Glint hub(false);
    AssertLog asserts;
    auto const connection = connect(hub.get_channel_monitor(2), &QObject::destroyed, this, [] {});
    QCOMPARE(asserts.take(), QStringList(QStringLiteral("false")));
    disconnect(connection);
    QCOMPARE(asserts.take(), QStringList(QStringLiteral("false")));
}

void TestGlintChannelMonitor::the_internal_signal_is_no_listener()
{
    Glint hub(false);
    Monitor *monitor = hub.get_channel_monitor(2);
    AssertLog asserts;
    int relayed = 0;
    auto const connection = connect(
        monitor, &Monitor::relay_connect_disconnect_notify2, this, [&relayed] { ++relayed; });
    QCOMPARE(relayed, 0);
    connect(monitor, &Monitor::report_speed, this, [] {});
    QCOMPARE(relayed, 1);
    disconnect(connection);
    QCOMPARE(asserts.take(), QStringList());
}

void TestGlintChannelMonitor::news_are_stored_and_emitted_to_listeners()
{
    Glint hub(false);
    Monitor *monitor = hub.get_channel_monitor(1);
    VCTP3::ChannelInformation information;
    information.set_cliplength(77);
    SignalNotes heard;
    heard.hear(monitor, &Monitor::report_timecodes, "timecodes");
    heard.hear(monitor, &Monitor::report_clip_position, "position");
    heard.hear(monitor, &Monitor::report_display_timecode, "display");
    heard.hear(monitor, &Monitor::report_input_timecode, "input");
    heard.hear(monitor, &Monitor::report_information, "information");
    heard.hear(monitor, &Monitor::report_aux_information, "aux information");
    heard.hear(monitor, &Monitor::report_aux_status, "aux status");
    heard.hear(monitor, &Monitor::report_aux_clipid, "aux clip");
    heard.hear(monitor, &Monitor::report_aux_speed, "aux speed");
    heard.hear(monitor, &Monitor::report_aux_position, "aux position");
    heard.hear(monitor, &Monitor::report_aux_peak, "aux peak");
    EventLoop::turn();
    heard.clear();

    monitor->glint_timecode(5, ReportText::timecode_value(100), ReportText::timecode_value(200));
    monitor->glint_info(information);
    monitor->glint_aux_audio_status(ChannelStatus::play, AString::l1("x"));
    monitor->glint_aux_audio_speed(65536);
    monitor->glint_aux_audio_timecode(9);
    monitor->glint_aux_audio_info(information);
    monitor->glint_aux_audio_peak(std::array{1U, 2U});
    // Nobody listens to these.
    monitor->glint_status(ChannelStatus::play, AString::l1("y"));
    monitor->glint_speed(-65536);
    monitor->glint_peak(std::array{3U});
    QCOMPARE(heard.lines(),
        SignalNotes::of({"timecodes 5 00.00.02.00 00.00.04.00", "position 5", "display 00.00.02.00",
            "input 00.00.04.00", "information 77", "aux status 4", "aux clip x", "aux speed 65536",
            "aux position 9", "aux information 77", "aux peak 1 2"}));
    heard.clear();
    heard.hear(monitor, &Monitor::report_speed, "speed");
    heard.hear(monitor, &Monitor::report_peak, "peak");
    QTRY_COMPARE(heard.lines(), SignalNotes::of({"speed -65536", "peak 3"}));
}

void TestGlintChannelMonitor::a_status_with_a_clip_sets_the_clip_data()
{
    QTest::addColumn<bool>("aux");
    QTest::addColumn<bool>("clip");
    QTest::newRow("with") << false << true;
    QTest::newRow("without") << false << false;
    QTest::newRow("aux with") << true << true;
    QTest::newRow("aux without") << true << false;
}

void TestGlintChannelMonitor::a_status_with_a_clip_sets_the_clip()
{
    QFETCH(bool, aux);
    QFETCH(bool, clip);
    Glint hub(false);
    Monitor *monitor = hub.get_channel_monitor(1);
    QStringList heard;
    connect(monitor, aux ? &Monitor::report_aux_status : &Monitor::report_status, this,
        [&](ChannelStatus status) { heard.append(QString::number(int(status))); });
    connect(monitor, aux ? &Monitor::report_aux_clipid : &Monitor::report_clipid, this,
        [&](QString const &id) { heard.append(id); });
    EventLoop::turn();
    heard.clear();
    AOption<AString> const id = clip ? AOption<AString>(AString::l1("b/1")) : AOption<AString>();
    if (aux)
        hub.got_report_channel_aux_audio_status(Channel::B, ChannelStatus::stop, id);
    else
        hub.got_report_channel_status(Channel::B, ChannelStatus::stop, id);
    QCOMPARE(heard,
        clip ? QStringList({QStringLiteral("3"), QStringLiteral("b/1")})
             : QStringList(QStringLiteral("3")));
}

void TestGlintChannelMonitor::the_playback_mode_is_not_taken_from_the_information()
{
    Glint hub(false);
    Monitor *monitor = hub.get_channel_monitor(1);
    QList<bool> heard;
    connect(monitor, &Monitor::report_playback_mode, this,
        [&heard](AOption<VCTP3::Playback> const &mode) { heard.append(mode.has_value()); });
    EventLoop::turn();
    VCTP3::ChannelInformation information;
    information.set_playback(VCTP3::Playback::field);
    monitor->glint_info(information);
    QCOMPARE(heard, QList<bool>({false, false}));
    // It belongs to the channel's own information.
    monitor->glint_aux_audio_info(information);
    QCOMPARE(heard.size(), 2);
}

void TestGlintChannelMonitor::values_outlive_the_connection()
{
    HubBench bench;
    QVERIFY(bench.connect());
    Monitor *monitor = bench.hub->get_channel_monitor(0);
    QList<ChannelStatus> heard;
    connect(monitor, &Monitor::report_status, this,
        [&heard](ChannelStatus status) { heard.append(status); });
    EventLoop::turn();
    QVERIFY(bench.settle()); // what the server says to the registration has come
    monitor->glint_status(ChannelStatus::play, {});
    bench.server.stop();
    QTRY_VERIFY(!bench.hub->is_connected());
    QCOMPARE(heard.last(), ChannelStatus::play);
    QList<ChannelStatus> late;
    connect(monitor, &Monitor::report_status, this,
        [&late](ChannelStatus status) { late.append(status); });
    QTRY_COMPARE(late, QList<ChannelStatus>{ChannelStatus::play});
}

void TestGlintChannelMonitor::levels_are_brought_to_16_numbers_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QList<unsigned int>>("numbers");
    QTest::newRow("three") << QByteArray("1 2 3") << QList<unsigned int>{1, 2, 3};
    QTest::newRow("none") << QByteArray() << QList<unsigned int>{};
    QTest::newRow("blanks") << QByteArray("   ") << QList<unsigned int>{};
    QTest::newRow("blanks around") << QByteArray("  7   8 ") << QList<unsigned int>{7, 8};
    QTest::newRow("not numbers") << QByteArray("1 x 2 -3 4") << QList<unsigned int>{1, 2, 4};
    QTest::newRow("the highest") << QByteArray("4294967295 4294967296 1")
                                 << QList<unsigned int>{4294967295u, 1};
    QTest::newRow("seventeen") << QByteArray("1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17")
                               << QList<unsigned int>{
                                      1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16};
    QTest::newRow("bad ones before the sixteenth")
        << QByteArray("x 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16")
        << QList<unsigned int>{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16};
}

void TestGlintChannelMonitor::levels_are_brought_to_16_numbers()
{
    QFETCH(QByteArray, text);
    QFETCH(QList<unsigned int>, numbers);
    Glint hub(false);
    std::list<unsigned int> peak;
    std::list<unsigned int> aux_peak;
    Monitor *monitor = hub.get_channel_monitor(0);
    connect(monitor, &Monitor::report_peak, this,
        [&peak](std::list<unsigned int> const &levels) { peak = levels; });
    connect(monitor, &Monitor::report_aux_peak, this,
        [&aux_peak](std::list<unsigned int> const &levels) { aux_peak = levels; });
    EventLoop::turn();
    hub.got_report_channel_peak(Channel::A, AString::from_latin1(text.constData()));
    // With so many blanks the text no longer lies in one piece.
    QByteArray const wide = QByteArray(text).replace(" ", QByteArray(300, ' '));
    hub.got_report_channel_aux_audio_peak(Channel::A, AString::from_latin1(wide.constData()));
    numbers.resize(16);
    QCOMPARE(QList<unsigned int>(peak.begin(), peak.end()), numbers);
    QCOMPARE(QList<unsigned int>(aux_peak.begin(), aux_peak.end()), numbers);
}

void TestGlintChannelMonitor::reports_of_channel_40_are_passed_over()
{
    Glint hub(false);
    QObject listener;
    int heard = 0;
    for (unsigned int channel = 0; channel < 40; ++channel)
        for (Signal const &signal : MonitorSignals::of_channel())
            signal.connect(hub.get_channel_monitor(channel), &listener, [&heard] { ++heard; });
    EventLoop::turn();
    heard = 0;
    AssertLog asserts;
    for (int number : {40, 79, -1}) {
        auto const channel = static_cast<Channel>(number);
        hub.got_report_channel_status(channel, ChannelStatus::play, AString::l1("x"));
        hub.got_report_channel_clipid(channel, AString::l1("x"));
        hub.got_report_channel_speed(channel, 1);
        hub.got_report_channel_timecode(channel, 1, {}, {});
        hub.got_report_channel_info(channel, {});
        hub.got_report_channel_peak(channel, AString::l1("1"));
        hub.got_report_channel_aux_audio_status(channel, ChannelStatus::play, AString::l1("x"));
        hub.got_report_channel_aux_audio_clipid(channel, AString::l1("x"));
        hub.got_report_channel_aux_audio_speed(channel, 1);
        hub.got_report_channel_aux_audio_timecode(channel, 1);
        hub.got_report_channel_aux_audio_info(channel, {});
        hub.got_report_channel_aux_audio_peak(channel, AString::l1("1"));
    }
    QCOMPARE(heard, 0);
    QCOMPARE(asserts.take(), QStringList());
}

void TestGlintChannelMonitor::a_monitor_is_found_by_number_and_channel()
{
    Glint hub(false);
    AssertLog asserts;
    for (unsigned int i = 0; i < 40; ++i) {
        QCOMPARE(hub.get_channel_monitor(i), hub.toMonitor(static_cast<Channel>(i)));
        QCOMPARE(unsigned(hub.get_channel_monitor(i)->channel()), i);
    }
    QCOMPARE(asserts.take(), QStringList());
    QVERIFY(!hub.toMonitor(static_cast<Channel>(40)));
    QVERIFY(!hub.toMonitor(static_cast<Channel>(-1)));
    QCOMPARE(hub.get_channel_monitor(40), hub.get_channel_monitor(0));
    QCOMPARE(asserts.take(), QStringList(QStringLiteral("i < channel_monitors.size()")));
}

void TestGlintChannelMonitor::a_peak_between_two_deliveries_is_held()
{
    HubBench bench;
    QVERIFY(bench.connect());
    Monitor *monitor = bench.hub->get_channel_monitor(0);
    QList<unsigned int> newest;
    QList<unsigned int> held;
    connect(monitor, &Monitor::report_peak, this, [&](std::list<unsigned int> const &levels) {
        newest.append(levels.empty() ? 0 : levels.front());
    });
    connect(monitor, &Monitor::report_peak_hold, this, [&](std::list<unsigned int> const &levels) {
        held.append(levels.empty() ? 0 : levels.front());
    });
    QVERIFY(bench.sync());
    QTRY_VERIFY(held.size() >= 2);
    // However these are delivered, alone or overtaken, the highest is seen.
    QByteArray reports;
    for (int level : {10, 9000, 20, 30})
        reports += "<report><channel_peak><Channel>A</Channel><LevelsString>"
            + QByteArray::number(level) + "</LevelsString></channel_peak></report>";
    bench.server.say(reports);
    QTRY_VERIFY(!newest.isEmpty() && newest.last() == 30);
    QTRY_COMPARE(held.size(), newest.size());
    QVERIFY(held.contains(9000));
}

QTEST_GUILESS_MAIN(TestGlintChannelMonitor)
#include "tst_glint_channel_monitor.moc"
