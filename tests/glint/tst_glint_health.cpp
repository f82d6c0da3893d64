// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/glint/glint_health.h"
#include "tests/glint/hub_bench.h"
#include "tests/glint/report_text.h"
#include "tests/support/assert_log.h"
#include "tests/support/event_loop.h"
#include "tests/support/patience.h"
#include "tests/support/virtual_time.h"

#include <QMetaProperty>
#include <QSignalSpy>
#include <QTest>

using State = QAbstractSocket::SocketState;

namespace {

/// What a timer of that interval does, now.
void timer_fires(GlintHealth *health, int interval)
{
    for (ATimer *timer : health->findChildren<ATimer *>())
        if (timer->interval() == interval)
            EventLoop::fire(timer);
}

} // namespace

/// What a hub tells of itself.
class TestGlintHealth : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void every_property_is_notified();
    void tells_the_state_and_since_when();
    void counts_attempts_and_reconnections();
    void tells_why_a_connection_could_not_be_made();
    void tells_why_a_connection_has_ended();
    void counts_messages_and_bytes_each_way();
    void counts_calls_outstanding();
    void counts_what_waits_to_be_sent();
    void counts_every_result_as_delivered_or_coalesced();
    void counts_what_was_dropped_and_tells_why();
    void measures_the_longest_stall();
    void probes_only_when_asked_to();
    void measures_a_round_trip();
    void a_probe_without_an_answer_is_not_repeated();
    void tells_of_changes_at_most_once_a_second();
};

void TestGlintHealth::every_property_is_notified()
{
    Glint hub(false);
    GlintHealth *health = hub.get_health();
    QMetaObject const &meta = GlintHealth::staticMetaObject;
    QCOMPARE(meta.propertyCount() - meta.propertyOffset(), 19);
    for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i) {
        QVERIFY2(meta.property(i).read(health).isValid(), meta.property(i).name());
        QCOMPARE(meta.property(i).notifySignal().name(), QByteArray("changed"));
    }
    QCOMPARE(health->state(), State::UnconnectedState);
    QCOMPARE(health->round_trip_us(), -1);
    QCOMPARE(health->last_error(), QString());
    QCOMPARE(health->last_drop_reason(), QString());
}

void TestGlintHealth::tells_the_state_and_since_when()
{
    VirtualTime time;
    time.set_wall_start_ms(1000000);
    HubBench bench;
    GlintHealth *health = bench.hub->get_health();
    QCOMPARE(health->state_since_ms(), 1000000);
    time.advance_ms(500);
    QSignalSpy changed(health, &GlintHealth::changed);
    QVERIFY(bench.connect());
    QVERIFY(changed.count() > 0);
    QCOMPARE(health->state(), State::ConnectedState);
    QCOMPARE(health->state_since_ms(), 1000500);
    time.advance_ms(9000);
    QVERIFY(bench.sync());
    QCOMPARE(health->state_since_ms(), 1000500);
    bench.server.stop();
    QTRY_VERIFY(health->state() != State::ConnectedState);
    QCOMPARE(health->state_since_ms(), 1009500);
}

void TestGlintHealth::counts_attempts_and_reconnections()
{
    HubBench bench;
    GlintHealth *health = bench.hub->get_health();
    QCOMPARE(health->connect_attempts(), 0u);
    QVERIFY(bench.connect());
    QCOMPARE(health->connect_attempts(), 1u);
    QCOMPARE(health->reconnections(), 0u);
    QVERIFY(bench.reconnect());
    QCOMPARE(health->connect_attempts(), 2u);
    QCOMPARE(health->reconnections(), 1u);
    bench.server.stop();
    QTRY_VERIFY(health->connect_attempts() >= 4);
    QCOMPARE(health->reconnections(), 1u);
    bench.server.restart(VeskState::keep);
    QTRY_COMPARE(health->reconnections(), 2u);
}

void TestGlintHealth::tells_why_a_connection_could_not_be_made()
{
    Glint hub(false);
    hub.set_server(LoopbackAddress::unique());
    QTRY_COMPARE(hub.get_health()->last_error(), QStringLiteral("Connection refused"));
}

void TestGlintHealth::tells_why_a_connection_has_ended()
{
    HubBench bench;
    QVERIFY(bench.connect());
    bench.server.say("<report><a></b></report>");
    QTRY_COMPARE(bench.hub->get_health()->last_error(),
        QStringLiteral("The server has sent what is no message, or one too long"));
    QTRY_VERIFY(bench.hub->is_connected());
    bench.server.drop_connections();
    QTRY_COMPARE(bench.hub->get_health()->last_error(),
        QStringLiteral("The remote host closed the connection"));
}

void TestGlintHealth::counts_messages_and_bytes_each_way()
{
    HubBench bench;
    GlintHealth *health = bench.hub->get_health();
    QVERIFY(bench.connect());
    QVERIFY(bench.settle());
    QTRY_COMPARE(health->bytes_sent(), bench.server.counters().bytes_received);
    QTRY_COMPARE(health->bytes_received(), bench.server.counters().bytes_sent);
    quint64 commands = 0;
    for (auto const &[name, count] : bench.server.counters().commands)
        commands += count;
    QCOMPARE(health->messages_sent(), commands);
    quint64 const received = health->messages_received();
    bench.server.say(ReportText::timecode(1, 2) + ReportText::report("<what/>"));
    QTRY_COMPARE(health->messages_received(), received + 2);
}

void TestGlintHealth::counts_calls_outstanding()
{
    HubBench bench;
    GlintHealth *health = bench.hub->get_health();
    QVERIFY(bench.connect());
    QTRY_COMPARE(health->calls_outstanding(), 0u);
    bench.server.stay_silent(true);
    VCTP3::CallbackGroup_set1 group;
    for (int i = 0; i < 3; ++i)
        bench.hub->cmd_sync(group);
    QCOMPARE(health->calls_outstanding(), 3u);
    bench.server.stop();
    QTRY_COMPARE(health->calls_outstanding(), 0u);
}

void TestGlintHealth::counts_what_waits_to_be_sent()
{
    HubBench bench;
    GlintHealth *health = bench.hub->get_health();
    QVERIFY(bench.connect());
    QTRY_COMPARE(health->blocks_to_send(), 0u);
    bench.hub->cmd_sync();
    bench.hub->cmd_debug_label(AString(QString(2000, QLatin1Char('x'))));
    QCOMPARE(health->blocks_to_send(), 3u);
    QVERIFY(bench.sync());
    QTRY_COMPARE(health->blocks_to_send(), 0u);
}

void TestGlintHealth::counts_every_result_as_delivered_or_coalesced()
{
    HubBench bench;
    GlintHealth *health = bench.hub->get_health();
    QVERIFY(bench.connect());
    quint64 delivered = 0;
    connect(bench.hub.get(), &Glint::report_channel_timecode, this, [&delivered] { ++delivered; });
    connect(bench.hub.get(), &Glint::report_channel_peak, this, [&delivered] { ++delivered; });
    connect(bench.hub.get(), &Glint::report_ltc_timecode, this, [&delivered] { ++delivered; });
    connect(bench.hub.get(), &Glint::report_channel_aux_audio_timecode, this,
        [&delivered] { ++delivered; });
    connect(bench.hub.get(), &Glint::report_channel_aux_audio_peak, this,
        [&delivered] { ++delivered; });
    QByteArray reports;
    for (int i = 0; i < 200; ++i)
        reports += ReportText::timecode(i % 2, i) + ReportText::peak(i % 3, "1 2")
            + ReportText::ltc(i) + ReportText::aux_position(i % 2, i)
            + ReportText::aux_peak(i % 3, "1 2");
    bench.server.say(reports);
    QTRY_COMPARE(delivered + health->reports_coalesced(), 1000u);
    QVERIFY(health->reports_coalesced() > 0);
    QTRY_COMPARE(health->messages_to_decode(), 0u);
    QCOMPARE(health->results_to_deliver(), 0u);
    QCOMPARE(health->input_bytes_waiting(), 0u);
}

void TestGlintHealth::counts_what_was_dropped_and_tells_why()
{
    HubBench bench;
    GlintHealth *health = bench.hub->get_health();
    QVERIFY(bench.connect());
    QCOMPARE(health->messages_dropped(), 0u);
    bench.server.say("<report><what/></report>");
    QTRY_COMPARE(health->messages_dropped(), 1u);
    QCOMPARE(health->last_drop_reason(), QStringLiteral("XML Message contains no commands"));

    AssertLog asserts;
    bench.server.say(ReportText::channel_report("channel_peak", 1, QByteArray()));
    QTRY_COMPARE(health->messages_dropped(), 2u);
    QTRY_VERIFY(health->last_drop_reason().contains(QStringLiteral("LevelsString")));
    QCOMPARE(asserts.take(), QStringList(QStringLiteral("false")));

    bench.server.say("<report><disk_space_changed/></report>");
    QTRY_COMPARE(health->messages_dropped(), 3u);
    QVERIFY(!health->last_drop_reason().contains(QStringLiteral("LevelsString")));
}

void TestGlintHealth::measures_the_longest_stall()
{
    VirtualTime time;
    Glint hub(false);
    GlintHealth *health = hub.get_health();
    time.advance_ms(GlintHealth::beat_ms);
    timer_fires(health, GlintHealth::beat_ms);
    QCOMPARE(health->longest_stall_ms(), 0);
    time.advance_ms(GlintHealth::beat_ms + 500);
    timer_fires(health, GlintHealth::beat_ms);
    QCOMPARE(health->longest_stall_ms(), 500);
    time.advance_ms(GlintHealth::beat_ms + 100);
    timer_fires(health, GlintHealth::beat_ms);
    QCOMPARE(health->longest_stall_ms(), 500);
    health->reset_longest_stall();
    QCOMPARE(health->longest_stall_ms(), 0);
    time.advance_ms(GlintHealth::beat_ms + 100);
    timer_fires(health, GlintHealth::beat_ms);
    QCOMPARE(health->longest_stall_ms(), 100);
}

void TestGlintHealth::probes_only_when_asked_to()
{
    HubBench bench;
    GlintHealth *health = bench.hub->get_health();
    QVERIFY(bench.connect());
    quint64 const before = bench.server.counters().count("sync");
    QCOMPARE(health->probe_interval(), 0);
    health->set_probe_interval(-5);
    QCOMPARE(health->probe_interval(), 0);
    health->set_probe_interval(1);
    QCOMPARE(health->probe_interval(), 1);
    QTRY_VERIFY(bench.server.counters().count("sync") >= before + 3);
    QVERIFY(health->round_trip_us() >= 0);
    health->set_probe_interval(0);
    QCOMPARE(health->probe_interval(), 0);
    QVERIFY(bench.sync());
    quint64 const after = bench.server.counters().count("sync");
    QVERIFY(bench.sync());
    QCOMPARE(bench.server.counters().count("sync"), after + 1);
    bench.server.stop();
    QTRY_COMPARE(health->round_trip_us(), -1);
}

void TestGlintHealth::measures_a_round_trip()
{
    VirtualTime time;
    HubBench bench;
    GlintHealth *health = bench.hub->get_health();
    QVERIFY(bench.connect());
    // The question is seen when it is sent, so the time passes behind that.
    std::function<void(QByteArray const &)> const pass = [&time](QByteArray const &bytes) {
        if (bytes.contains("<sync"))
            time.advance_ms(7);
    };
    connect(bench.hub.get(), &Glint::indirect_send, this, pass);
    health->set_probe_interval(1);
    QTRY_COMPARE(health->round_trip_us(), 7000);
}

void TestGlintHealth::a_probe_without_an_answer_is_not_repeated()
{
    HubBench bench;
    GlintHealth *health = bench.hub->get_health();
    QVERIFY(bench.connect());
    QTRY_COMPARE(health->calls_outstanding(), 0u);
    bench.server.stay_silent(true);
    quint64 const before = bench.server.counters().count("sync");
    health->set_probe_interval(50);
    for (int i = 0; i < 5; ++i)
        timer_fires(health, 50);
    QCOMPARE(health->calls_outstanding(), 1u);
    QTRY_COMPARE(bench.server.counters().count("sync"), before + 1);
    // It fails with the connection, and the next one is probed again.
    bench.server.clear_faults();
    bench.server.stay_silent(false);
    QVERIFY(bench.reconnect());
    timer_fires(health, 50);
    QTRY_VERIFY(health->round_trip_us() >= 0);
}

void TestGlintHealth::tells_of_changes_at_most_once_a_second()
{
    HubBench bench;
    GlintHealth *health = bench.hub->get_health();
    QVERIFY(bench.connect());
    QVERIFY(bench.settle());
    QSignalSpy changed(health, &GlintHealth::changed);
    for (ATimer *timer : health->findChildren<ATimer *>())
        timer->stop();
    QVERIFY(bench.sync());
    QCOMPARE(changed.count(), 0);
    timer_fires(health, 1000);
    QCOMPARE(changed.count(), 1);
    timer_fires(health, 1000);
    QCOMPARE(changed.count(), 1);
    QVERIFY(bench.sync());
    timer_fires(health, 1000);
    QCOMPARE(changed.count(), 2);
}

QTEST_GUILESS_MAIN(TestGlintHealth)
#include "tst_glint_health.moc"
