// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/glint/cf_channel_config.h"
#include "ATarnLib/glint/glint_output_monitor.h"
#include "tests/glint/hub_bench.h"
#include "tests/glint/monitor_signals.h"
#include "tests/glint/report_text.h"
#include "tests/glint/signal_notes.h"
#include "tests/support/assert_log.h"
#include "tests/support/patience.h"

#include <QTest>

using VCTP3::ChannelStatus;

namespace {

using Channel = GlintChannelMonitor;
using Monitor = GlintOutputMonitor;
using Signal = MonitorSignal<Monitor>;

/// Of channel C, which feeds output 2 at first.
QString registration(char const *report)
{
    return WireLog::registration("C", report);
}

/// A connected bench whose outputs have their channels.
struct OutputBench : HubBench
{
    bool start()
    {
        return connect() && set_board("VVVV")
            && QTest::qWaitFor(
                [this] { return hub->get_output_monitor(3)->channel_monitor() != nullptr; },
                patience_ms)
            && sync();
    }
    Channel *channel_of(unsigned int output) const
    {
        return hub->get_output_monitor(output)->channel_monitor();
    }
};

} // namespace

/// What an output shows, and what it asks of its channel.
class TestGlintOutputMonitor : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void has_its_names();
    void is_found_by_number();
    void shows_the_channel_that_the_configuration_gives_it();
    void listening_registers_through_the_channel_data();
    void listening_registers_through_the_channel();
    void what_is_not_listened_to_is_not_connected();
    void a_new_channel_comes_with_the_defaults_first();
    void reports_move_with_the_listener();
    void a_new_channel_is_connected_signal_by_signal_in_order();
    void an_output_without_a_channel_has_no_channel_status();
    void many_changes_are_one_question();
    void the_same_channel_again_changes_nothing();
    void values_of_the_channel_reach_the_signals();
    void an_unknown_signal_is_an_assertion();
    void one_source_feeds_several_outputs();
    void a_channel_of_another_hub_may_go_first();
    void a_listener_is_heard_after_everybody_was_disconnected();
};

void TestGlintOutputMonitor::has_its_names()
{
    Glint hub(false);
    for (unsigned int i : {0u, 39u}) {
        QCOMPARE(hub.get_output_monitor(i)->objectName(),
            QStringLiteral("GlintOutputMonitor %1").arg(i));
        QCOMPARE(hub.get_output_monitor(i)->output(), i);
    }
    QVERIFY(QMetaType::fromName("GlintOutputMonitor::UpdateMethod").isValid());
    for (Signal const &signal : MonitorSignals::of_output())
        QCOMPARE(signal.method().name(), QByteArray("report_") + signal.name);
}

void TestGlintOutputMonitor::is_found_by_number()
{
    Glint hub(false);
    AssertLog asserts;
    QVERIFY(hub.get_output_monitor(39) != hub.get_output_monitor(0));
    QCOMPARE(asserts.take(), QStringList());
    QCOMPARE(hub.get_output_monitor(40), hub.get_output_monitor(0));
    QCOMPARE(asserts.take(), QStringList(QStringLiteral("i < output_monitors.size()")));
}

void TestGlintOutputMonitor::shows_the_channel_that_the_configuration_gives_it()
{
    OutputBench bench;
    QVERIFY(!bench.channel_of(2));
    QVERIFY(bench.start());
    for (unsigned int output = 0; output < 8; ++output)
        QTRY_COMPARE(bench.channel_of(output), bench.hub->get_channel_monitor(output));
    QVERIFY(!bench.channel_of(8));
    QVERIFY(!bench.channel_of(39));
    QVERIFY(bench.set_board("ISO4"));
    for (unsigned int output = 0; output < 4; ++output)
        QTRY_COMPARE(bench.channel_of(output), bench.hub->get_channel_monitor(0));
}

void TestGlintOutputMonitor::listening_registers_through_the_channel_data()
{
    QTest::addColumn<int>("index");
    for (std::size_t i = 0; i < MonitorSignals::of_output().size(); ++i)
        QTest::newRow(MonitorSignals::of_output()[i].name) << int(i);
}

void TestGlintOutputMonitor::listening_registers_through_the_channel()
{
    QFETCH(int, index);
    Signal const &signal = MonitorSignals::of_output()[std::size_t(index)];
    OutputBench bench;
    QVERIFY(bench.start());
    int heard = 0;
    auto const connection
        = signal.connect(bench.hub->get_output_monitor(2), this, [&heard] { ++heard; });
    QCOMPARE(heard, 0);
    // The value held here, the one that the channel holds, and what the server says.
    QTRY_COMPARE(heard, 3);
    QVERIFY(bench.settle());
    QCOMPARE(bench.log.channel_reports(), QStringList(registration(signal.report)));
    disconnect(connection);
    QVERIFY(bench.settle());
    QCOMPARE(bench.log.channel_reports().size(), 1);
    bench.ten_seconds_pass();
    QVERIFY(bench.settle());
    QCOMPARE(bench.log.channel_reports(),
        QStringList({registration(signal.report), WireLog::unregistration("C", signal.report)}));
}

void TestGlintOutputMonitor::what_is_not_listened_to_is_not_connected()
{
    OutputBench bench;
    QVERIFY(bench.start());
    connect(bench.hub->get_output_monitor(2), &Monitor::report_speed, this, [] {});
    QVERIFY(bench.settle());
    QCOMPARE(bench.log.channel_reports(), QStringList(registration("speed")));
}

void TestGlintOutputMonitor::a_new_channel_comes_with_the_defaults_first()
{
    OutputBench bench;
    QVERIFY(bench.start());
    bench.hub->get_channel_monitor(3)->glint_speed(333);
    bench.hub->get_channel_monitor(1)->glint_speed(222);
    QObject others;
    // The new channel has a listener, and so a value, already.
    connect(bench.hub->get_channel_monitor(1), &Channel::report_speed, &others, [] {});
    QVERIFY(bench.settle());
    QList<int> speeds;
    QList<ChannelStatus> states;
    connect(bench.hub->get_output_monitor(3), &Monitor::report_speed, this,
        [&speeds](int speed) { speeds.append(speed); });
    connect(bench.hub->get_output_monitor(3), &Monitor::report_status, this,
        [&states](ChannelStatus status) { states.append(status); });
    QVERIFY(bench.settle());
    QTRY_VERIFY(!speeds.isEmpty());
    bench.hub->get_channel_monitor(3)->glint_speed(334);
    bench.hub->get_channel_monitor(1)->glint_speed(223);
    QCOMPARE(speeds.last(), 334);
    speeds.clear();
    states.clear();
    QVERIFY(bench.set_board("VVVK"));
    QTRY_COMPARE(bench.channel_of(3), bench.hub->get_channel_monitor(1));
    QTRY_COMPARE(speeds, QList<int>({0, 223}));
    QCOMPARE(states.first(), ChannelStatus::idle);
    bench.hub->get_channel_monitor(3)->glint_speed(335);
    bench.hub->get_channel_monitor(1)->glint_speed(224);
    QCOMPARE(speeds, QList<int>({0, 223, 224}));
}

void TestGlintOutputMonitor::reports_move_with_the_listener()
{
    OutputBench bench;
    QVERIFY(bench.start());
    connect(bench.hub->get_output_monitor(3), &Monitor::report_speed, this, [] {});
    QVERIFY(bench.settle());
    QVERIFY(bench.log.registered().contains(QStringLiteral("D speed")));
    QVERIFY(bench.set_board("VVVK"));
    QTRY_VERIFY(bench.log.registered().contains(QStringLiteral("B speed")));
    QVERIFY(bench.log.registered().contains(QStringLiteral("D speed")));
    bench.ten_seconds_pass();
    QVERIFY(bench.settle());
    QVERIFY(bench.log.registered().contains(QStringLiteral("B speed")));
    QVERIFY(!bench.log.registered().contains(QStringLiteral("D speed")));
}

void TestGlintOutputMonitor::a_new_channel_is_connected_signal_by_signal_in_order()
{
    OutputBench bench;
    QVERIFY(bench.start());
    Monitor *monitor = bench.hub->get_output_monitor(30); // the configuration gives it none
    for (auto signal = MonitorSignals::of_output().rbegin();
         signal != MonitorSignals::of_output().rend(); ++signal)
        signal->connect(monitor, this, [] {});
    QVERIFY(bench.settle());
    QCOMPARE(bench.log.channel_reports(), QStringList());
    monitor->set_channel_monitor(bench.hub->get_channel_monitor(2));
    QVERIFY(bench.settle());
    QCOMPARE(bench.log.channel_reports(),
        QStringList({registration("status"), registration("clipid"), registration("speed"),
            registration("timecode"), registration("aux_audio_timecode"), registration("info")}));
}

void TestGlintOutputMonitor::an_output_without_a_channel_has_no_channel_status()
{
    OutputBench bench;
    QVERIFY(bench.start());
    QList<ChannelStatus> states;
    QList<QString> clips;
    connect(bench.hub->get_output_monitor(1), &Monitor::report_status, this,
        [&states](ChannelStatus status) { states.append(status); });
    connect(bench.hub->get_output_monitor(1), &Monitor::report_clipid, this,
        [&clips](QString const &clip) { clips.append(clip); });
    QVERIFY(bench.settle());
    bench.hub->get_channel_monitor(1)->glint_status(ChannelStatus::play, AString::l1("x"));
    QCOMPARE(states.last(), ChannelStatus::play);
    states.clear();
    clips.clear();
    QVERIFY(bench.set_board("absent"));
    QTRY_COMPARE(states, QList<ChannelStatus>{ChannelStatus::nochannel});
    QCOMPARE(clips, QList<QString>{QString()});
    QVERIFY(!bench.channel_of(1));
    bench.ten_seconds_pass();
    QVERIFY(bench.settle());
    QVERIFY(!bench.log.registered().contains(QStringLiteral("B status")));
    // An output that never had one keeps its default.
    QList<ChannelStatus> never;
    connect(bench.hub->get_output_monitor(30), &Monitor::report_status, this,
        [&never](ChannelStatus status) { never.append(status); });
    QTRY_COMPARE(never, QList<ChannelStatus>{ChannelStatus::idle});
}

void TestGlintOutputMonitor::many_changes_are_one_question()
{
    OutputBench bench;
    QVERIFY(bench.start());
    Monitor *monitor = bench.hub->get_output_monitor(1);
    QList<ChannelStatus> states;
    connect(monitor, &Monitor::report_status, this,
        [&states](ChannelStatus status) { states.append(status); });
    QVERIFY(bench.settle());
    monitor->set_channel_monitor(bench.hub->get_channel_monitor(7));
    states.clear();
    // It goes back in one step, from the event loop.
    for (int i = 0; i < 5; ++i)
        Q_EMIT bench.hub->get_channel_config()->changed();
    QCOMPARE(bench.channel_of(1), bench.hub->get_channel_monitor(7));
    QTRY_COMPARE(bench.channel_of(1), bench.hub->get_channel_monitor(1));
    int timers = 0;
    for (ATimer *timer : monitor->findChildren<ATimer *>())
        timers += timer->isSingleShot() && timer->interval() == 0;
    QCOMPARE(timers, 1);
}

void TestGlintOutputMonitor::the_same_channel_again_changes_nothing()
{
    OutputBench bench;
    QVERIFY(bench.start());
    Monitor *monitor = bench.hub->get_output_monitor(1);
    int heard = 0;
    connect(monitor, &Monitor::report_status, this, [&heard] { ++heard; });
    QTRY_VERIFY(heard >= 3);
    QVERIFY(bench.settle());
    heard = 0;
    monitor->set_channel_monitor(bench.hub->get_channel_monitor(1));
    monitor->cf_changed();
    QVERIFY(bench.settle());
    QCOMPARE(heard, 0);
}

void TestGlintOutputMonitor::values_of_the_channel_reach_the_signals()
{
    Glint hub(false);
    Monitor *monitor = hub.get_output_monitor(0);
    Channel *channel = hub.get_channel_monitor(9);
    SignalNotes heard;
    heard.hear(monitor, &Monitor::report_status, "status");
    heard.hear(monitor, &Monitor::report_clipid, "clip");
    heard.hear(monitor, &Monitor::report_speed, "speed");
    heard.hear(monitor, &Monitor::report_timecodes, "timecodes");
    heard.hear(monitor, &Monitor::report_clip_position, "position");
    heard.hear(monitor, &Monitor::report_aux_position, "aux");
    heard.hear(monitor, &Monitor::report_display_timecode, "display");
    heard.hear(monitor, &Monitor::report_input_timecode, "input");
    heard.hear(monitor, &Monitor::report_information, "information");
    heard.hear(monitor, &Monitor::report_playback_mode, "mode");
    QTRY_COMPARE(heard.lines().size(), 10);
    monitor->set_channel_monitor(channel);
    QTRY_COMPARE(heard.lines().size(), 20);
    heard.clear();

    VCTP3::Timecode const timecode = ReportText::timecode_value(11);
    VCTP3::ChannelInformation information;
    information.set_cliplength(12);
    channel->glint_status(ChannelStatus::stop, AString::l1("c"));
    channel->glint_speed(5);
    channel->glint_timecode(6, timecode, timecode);
    channel->glint_aux_audio_timecode(7);
    channel->glint_info(information);
    QCOMPARE(heard.lines(),
        SignalNotes::of({"status 3", "clip c", "speed 5", "timecodes 6 00:00:00:05 00:00:00:05",
            "position 6", "display 00:00:00:05", "input 00:00:00:05", "aux 7", "information 12",
            "mode none"}));
    // They are kept for those who come later.
    heard.clear();
    monitor->emit_all();
    QCOMPARE(heard.lines(),
        SignalNotes::of({"status 3", "clip c", "speed 5", "timecodes 6 00:00:00:05 00:00:00:05",
            "position 6", "aux 7", "display 00:00:00:05", "input 00:00:00:05", "information 12",
            "mode none"}));
    monitor->ch_playback_mode(VCTP3::Playback::field);
    QCOMPARE(heard.lines().last(), QStringLiteral("mode 1"));
    heard.clear();
    monitor->clear_all();
    monitor->emit_all();
    QCOMPARE(heard.lines(),
        SignalNotes::of(
            {"status 1", "clip ", "speed 0", "timecodes 0 (invalid) (invalid)", "position 0",
                "aux 0", "display (invalid)", "input (invalid)", "information 0", "mode none"}));
}

void TestGlintOutputMonitor::an_unknown_signal_is_an_assertion()
{
    Glint hub(false);
    AssertLog asserts;
    connect(hub.get_output_monitor(2), &QObject::destroyed, this, [] {});
    QCOMPARE(asserts.take(), QStringList(QStringLiteral("false")));
}

void TestGlintOutputMonitor::one_source_feeds_several_outputs()
{
    OutputBench bench;
    QVERIFY(bench.start());
    QVERIFY(bench.set_board("ISO4"));
    QObject first;
    QObject second;
    connect(bench.hub->get_output_monitor(0), &Monitor::report_speed, &first, [] {});
    connect(bench.hub->get_output_monitor(1), &Monitor::report_speed, &second, [] {});
    QVERIFY(bench.settle());
    QCOMPARE(bench.log.channel_reports(), QStringList(WireLog::registration("A", "speed")));
    disconnect(bench.hub->get_output_monitor(0), nullptr, &first, nullptr);
    bench.ten_seconds_pass();
    QVERIFY(bench.settle());
    QCOMPARE(bench.log.channel_reports().size(), 1);
    disconnect(bench.hub->get_output_monitor(1), nullptr, &second, nullptr);
    bench.ten_seconds_pass();
    QVERIFY(bench.settle());
    QCOMPARE(bench.log.channel_reports().size(), 2);
}

void TestGlintOutputMonitor::a_channel_of_another_hub_may_go_first()
{
    Glint hub(false);
    auto other = std::make_unique<Glint>(false);
    Monitor *monitor = hub.get_output_monitor(0);
    QList<int> speeds;
    connect(monitor, &Monitor::report_speed, this, [&speeds](int speed) { speeds.append(speed); });
    QTRY_COMPARE(speeds, QList<int>{0}); // and the configuration has been asked
    other->get_channel_monitor(0)->glint_speed(7);
    monitor->set_channel_monitor(other->get_channel_monitor(0));
    QTRY_VERIFY(speeds.contains(7));
    other.reset();
    QVERIFY(!monitor->channel_monitor());
    hub.get_channel_monitor(1)->glint_speed(8);
    monitor->set_channel_monitor(hub.get_channel_monitor(1));
    QTRY_COMPARE(speeds.last(), 8);
}

void TestGlintOutputMonitor::a_listener_is_heard_after_everybody_was_disconnected()
{
    OutputBench bench;
    QVERIFY(bench.start());
    Monitor *monitor = bench.hub->get_output_monitor(2);
    connect(monitor, &Monitor::report_status, this, [] {});
    QVERIFY(bench.settle());
    monitor->disconnect();
    bench.ten_seconds_pass();
    int heard = 0;
    connect(monitor, &Monitor::report_speed, this, [&heard] { ++heard; });
    // The value held here, the one that the channel holds, and what the server says.
    QTRY_COMPARE(heard, 3);
    QVERIFY(bench.settle());
    QCOMPARE(heard, 3);
    QVERIFY(bench.log.registered().contains(QStringLiteral("C speed")));
    QVERIFY(!bench.log.registered().contains(QStringLiteral("C status")));
}

QTEST_GUILESS_MAIN(TestGlintOutputMonitor)
#include "tst_glint_output_monitor.moc"
