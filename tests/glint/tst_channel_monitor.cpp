// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/glint/channel_monitor.h"
#include "ATarnLib/glint/glint_health.h"
#include "tests/glint/hub_bench.h"
#include "tests/glint/own_signals.h"
#include "tests/glint/report_text.h"
#include "tests/glint/signal_notes.h"
#include "tests/support/assert_log.h"
#include "tests/support/patience.h"

#include <QSignalSpy>
#include <QTest>
#include <thread>

using VCTP3::Channel;
using VCTP3::ChannelStatus;

namespace {

using Signal = OwnSignals<ChannelMonitor>::Signal;

std::vector<Signal> const &signal_table()
{
    return OwnSignals<ChannelMonitor>::all();
}

QString registered(char const *report)
{
    return WireLog::registration("B", report);
}

QString unregistered(char const *report)
{
    return WireLog::unregistration("B", report);
}

/// A bench with a monitor of channel B.
struct MonitorBench : HubBench
{
    explicit MonitorBench(VeskSimOptions const &options = {})
        : HubBench(options)
    {
        monitor.config(hub.get(), Channel::B);
    }

    ChannelMonitor monitor;
};

/// All that a monitor emits.
struct MonitorNotes : SignalNotes
{
    explicit MonitorNotes(ChannelMonitor *monitor)
    {
        using M = ChannelMonitor;
        hear(monitor, &M::sig_status, "status");
        hear(monitor, &M::sig_clipid, "clipid");
        hear(monitor, &M::sig_speed, "speed");
        hear(monitor, &M::sig_timecodes, "timecodes");
        hear(monitor, &M::sig_clip_position, "position");
        hear(monitor, &M::sig_display_timecode, "display");
        hear(monitor, &M::sig_input_timecode, "input");
        hear(monitor, &M::sig_channel_information, "info");
        hear(monitor, &M::sig_playback_mode, "mode");
        hear(monitor, &M::sig_peak, "peak");
        hear(monitor, &M::sig_aux_status, "aux_status");
        hear(monitor, &M::sig_aux_clipid, "aux_clipid");
        hear(monitor, &M::sig_aux_speed, "aux_speed");
        hear(monitor, &M::sig_aux_position, "aux_position");
        hear(monitor, &M::sig_aux_information, "aux_info");
        hear(monitor, &M::sig_aux_peak, "aux_peak");
    }
};

/// What can be asked about a report.
struct ReportQuestions
{
    char const *report;
    bool (ChannelMonitor::*is_needed)() const;
    bool (*is_needed_by)(QByteArray const &signature);
};

constexpr ReportQuestions report_questions[] = {
    {"status", &ChannelMonitor::has_receiver_status, &ChannelMonitor::is_sig_status},
    {"clipid", &ChannelMonitor::has_receiver_clipid, &ChannelMonitor::is_sig_clipid},
    {"speed", &ChannelMonitor::has_receiver_speed, &ChannelMonitor::is_sig_speed},
    {"timecode", &ChannelMonitor::has_receiver_timecode, &ChannelMonitor::is_sig_timecode},
    {"info", &ChannelMonitor::has_receiver_info, &ChannelMonitor::is_sig_info},
    {"peak", &ChannelMonitor::has_receiver_peak, &ChannelMonitor::is_sig_peak},
    {"aux_audio_status", &ChannelMonitor::has_receiver_aux_audio_status,
        &ChannelMonitor::is_sig_aux_audio_status},
    {"aux_audio_clipid", &ChannelMonitor::has_receiver_aux_audio_clipid,
        &ChannelMonitor::is_sig_aux_audio_clipid},
    {"aux_audio_speed", &ChannelMonitor::has_receiver_aux_audio_speed,
        &ChannelMonitor::is_sig_aux_audio_speed},
    {"aux_audio_timecode", &ChannelMonitor::has_receiver_aux_audio_timecode,
        &ChannelMonitor::is_sig_aux_audio_timecode},
    {"aux_audio_info", &ChannelMonitor::has_receiver_aux_audio_info,
        &ChannelMonitor::is_sig_aux_audio_info},
    {"aux_audio_peak", &ChannelMonitor::has_receiver_aux_audio_peak,
        &ChannelMonitor::is_sig_aux_audio_peak},
};

/// The reports for which the answer is yes.
template <typename Answer> QStringList reports_with(Answer answer)
{
    QStringList result;
    for (ReportQuestions const &questions : report_questions)
        if (answer(questions))
            result.append(QString::fromLatin1(questions.report));
    return result;
}

QStringList const defaults = SignalNotes::of(
    {"status 1", "clipid ", "speed 0", "timecodes 0 (invalid) (invalid)", "position 0",
        "display (invalid)", "input (invalid)", "info 0", "mode none", "peak 0", "aux_status 1",
        "aux_clipid ", "aux_speed 0", "aux_position 0", "aux_info 0", "aux_peak 0"});

} // namespace

/// A channel as an object of the application.
class TestChannelMonitor : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void may_be_configured_in_any_order_data();
    void may_be_configured_in_any_order();
    void another_channel_is_an_assertion();
    void another_hub_is_an_assertion();
    void another_hub_is_an_assertion_when_the_first_has_gone();
    void listening_registers_and_leaving_unregisters_data();
    void listening_registers_and_leaving_unregisters();
    void a_report_stays_while_another_of_its_signals_is_listened_to_data();
    void a_report_stays_while_another_of_its_signals_is_listened_to();
    void two_objects_of_a_channel_share_its_registrations();
    void each_listener_gets_the_present_value();
    void an_object_that_goes_unregisters_what_it_registered();
    void an_object_that_goes_leaves_alone_what_it_did_not_register();
    void an_object_that_goes_unregisters_a_use_of_timecode_too();
    void an_object_that_goes_leaves_alone_what_an_older_connection_had();
    void an_object_may_go_behind_the_connection_and_the_hub();
    void a_connection_registers_in_report_order();
    void is_registered_when_configured_while_connected();
    void timecodes_are_emitted_again_while_unconnected();
    void uses_of_timecode_register_once_and_unregister_nothing();
    void a_use_that_is_not_there_cannot_be_removed();
    void another_thread_may_use_timecode();
    void knows_which_signals_need_a_report_data();
    void knows_which_signals_need_a_report();
    void reports_reach_the_signals();
    void reports_of_other_channels_are_passed_over();
    void a_lost_connection_blanks_all();
    void a_report_behind_the_end_of_the_connection_is_passed_over();
    void peaks_are_the_highest_level();
};

void TestChannelMonitor::may_be_configured_in_any_order_data()
{
    QTest::addColumn<int>("order");
    QTest::newRow("both") << 0;
    QTest::newRow("hub first") << 1;
    QTest::newRow("channel first") << 2;
    QTest::newRow("all twice") << 3;
}

void TestChannelMonitor::may_be_configured_in_any_order()
{
    QFETCH(int, order);
    HubBench bench;
    ChannelMonitor monitor;
    AssertLog asserts;
    QVERIFY(!monitor.channel_is(Channel::B));
    if (order == 0) {
        monitor.config(bench.hub.get(), Channel::B);
    } else if (order == 1) {
        monitor.config_api(bench.hub.get());
        monitor.config_channel(Channel::B);
    } else {
        monitor.config_channel(Channel::B);
        monitor.config_api(bench.hub.get());
    }
    if (order == 3)
        monitor.config(bench.hub.get(), Channel::B);
    QCOMPARE(asserts.take(), QStringList());
    QCOMPARE(monitor.objectName(), QStringLiteral("ChannelMonitor1"));
    QVERIFY(monitor.channel_is(Channel::B));
    QVERIFY(!monitor.channel_is(Channel::A));
    connect(&monitor, &ChannelMonitor::sig_speed, this, [] {});
    QVERIFY(bench.connect());
    QCOMPARE(bench.log.channel_reports(), QStringList(registered("speed")));
}

void TestChannelMonitor::another_channel_is_an_assertion()
{
    ChannelMonitor monitor;
    AssertLog asserts;
    monitor.config_channel(Channel::B);
    monitor.config_channel(Channel::C);
    QCOMPARE(asserts.take(), QStringList(QStringLiteral("channel.get() == achannel")));
    QVERIFY(monitor.channel_is(Channel::B));
}

void TestChannelMonitor::another_hub_is_an_assertion()
{
    MonitorBench bench;
    Glint other(false);
    AssertLog asserts;
    bench.monitor.config(&other, Channel::B);
    QCOMPARE(asserts.take(), QStringList(QStringLiteral("api == 0")));
}

void TestChannelMonitor::another_hub_is_an_assertion_when_the_first_has_gone()
{
    ChannelMonitor monitor;
    auto first = std::make_unique<Glint>(false);
    monitor.config(first.get(), Channel::B);
    connect(&monitor, &ChannelMonitor::sig_speed, this, [] {});
    first.reset();
    AssertLog asserts;
    HubBench bench;
    monitor.config_api(bench.hub.get());
    QCOMPARE(asserts.take(), QStringList(QStringLiteral("api == 0")));
    QVERIFY(bench.connect());
    QCOMPARE(bench.log.channel_reports(), QStringList());
}

void TestChannelMonitor::listening_registers_and_leaving_unregisters_data()
{
    QTest::addColumn<int>("index");
    for (std::size_t i = 0; i < signal_table().size(); ++i)
        QTest::newRow(signal_table()[i].name) << int(i);
}

void TestChannelMonitor::listening_registers_and_leaving_unregisters()
{
    QFETCH(int, index);
    Signal const &signal = signal_table()[std::size_t(index)];
    MonitorBench bench;
    QVERIFY(bench.monitor.metaObject()->indexOfSignal(signal.name + 1) >= 0);
    QVERIFY(bench.connect());
    auto const first = signal.connect(&bench.monitor, this);
    auto const second = signal.connect(&bench.monitor, this);
    QVERIFY(bench.sync());
    // Each listener registers, so that the server tells it the present value.
    QCOMPARE(bench.log.channel_reports(),
        QStringList({registered(signal.report), registered(signal.report)}));
    bench.log.take();
    disconnect(first);
    QVERIFY(bench.sync());
    QCOMPARE(bench.log.channel_reports(), QStringList());
    disconnect(second);
    QTRY_COMPARE(bench.log.channel_reports(), QStringList(unregistered(signal.report)));
}

void TestChannelMonitor::a_report_stays_while_another_of_its_signals_is_listened_to_data()
{
    QTest::addColumn<QByteArray>("report");
    QTest::newRow("timecode") << QByteArray("timecode");
    QTest::newRow("info") << QByteArray("info");
}

void TestChannelMonitor::a_report_stays_while_another_of_its_signals_is_listened_to()
{
    QFETCH(QByteArray, report);
    MonitorBench bench;
    QVERIFY(bench.connect());
    QList<QMetaObject::Connection> connections;
    for (Signal const &signal : signal_table())
        if (report == signal.report)
            connections.append(signal.connect(&bench.monitor, this));
    QVERIFY(connections.size() >= 2);
    QVERIFY(bench.sync());
    while (connections.size() > 1) {
        disconnect(connections.takeFirst());
        QVERIFY(bench.sync());
        QVERIFY(
            bench.log.registered().contains(QStringLiteral("B ") + QString::fromLatin1(report)));
    }
    disconnect(connections.takeFirst());
    QTRY_VERIFY(
        !bench.log.registered().contains(QStringLiteral("B ") + QString::fromLatin1(report)));
}

void TestChannelMonitor::two_objects_of_a_channel_share_its_registrations()
{
    MonitorBench bench;
    ChannelMonitor other;
    other.config(bench.hub.get(), Channel::B);
    QVERIFY(bench.connect());
    auto const leaving = connect(&bench.monitor, &ChannelMonitor::sig_speed, this, [] {});
    QList<int> speeds;
    connect(
        &other, &ChannelMonitor::sig_speed, this, [&speeds](int speed) { speeds.append(speed); });
    QVERIFY(bench.sync());
    QCOMPARE(speeds, QList<int>({0, 0})); // the answers to both registrations
    disconnect(leaving);
    QTRY_VERIFY(!bench.log.registered().contains(QStringLiteral("B speed")));
}

void TestChannelMonitor::each_listener_gets_the_present_value()
{
    MonitorBench bench;
    QVERIFY(bench.connect());
    connect(&bench.monitor, &ChannelMonitor::sig_speed, this, [] {});
    QVERIFY(bench.sync());
    QList<int> speeds;
    connect(&bench.monitor, &ChannelMonitor::sig_speed, this,
        [&speeds](int speed) { speeds.append(speed); });
    QVERIFY(bench.sync());
    QCOMPARE(speeds, QList<int>{0});
}

void TestChannelMonitor::an_object_that_goes_unregisters_what_it_registered()
{
    HubBench bench;
    auto monitor = std::make_unique<ChannelMonitor>();
    monitor->config(bench.hub.get(), Channel::B);
    QVERIFY(bench.connect());
    QStringList expected;
    for (int report = 0; report < 12; ++report)
        expected.append(
            unregistered(VCTP3::ChannelReportType_to_string(VCTP3::ChannelReportType(report))
                             .to_string()
                             .c_str()));
    for (Signal const &signal : signal_table())
        signal.connect(monitor.get(), this);
    QVERIFY(bench.sync());
    QCOMPARE(bench.log.channels_registered().size(), 12);
    bench.log.take();
    monitor.reset();
    QVERIFY(bench.sync());
    QCOMPARE(bench.log.channel_reports(), expected);
}

void TestChannelMonitor::an_object_that_goes_leaves_alone_what_it_did_not_register()
{
    MonitorBench bench;
    auto other = std::make_unique<ChannelMonitor>();
    other->config(bench.hub.get(), Channel::B);
    QVERIFY(bench.connect());
    connect(&bench.monitor, &ChannelMonitor::sig_speed, this, [] {});
    connect(other.get(), &ChannelMonitor::sig_clipid, this, [] {});
    auto const left = connect(other.get(), &ChannelMonitor::sig_status, this, [] {});
    disconnect(left);
    QTRY_COMPARE(bench.log.channels_registered(),
        (QSet<QString>{QStringLiteral("B speed"), QStringLiteral("B clipid")}));
    bench.log.take();
    other.reset();
    QVERIFY(bench.sync());
    QCOMPARE(bench.log.channel_reports(), QStringList(unregistered("clipid")));
}

void TestChannelMonitor::an_object_that_goes_unregisters_a_use_of_timecode_too()
{
    HubBench bench;
    auto monitor = std::make_unique<ChannelMonitor>();
    monitor->config(bench.hub.get(), Channel::B);
    QVERIFY(bench.connect());
    monitor->timecode_use_add();
    monitor->timecode_use_remove();
    QVERIFY(bench.sync());
    QCOMPARE(bench.log.channels_registered(), QSet<QString>{QStringLiteral("B timecode")});
    monitor.reset();
    QVERIFY(bench.sync());
    QCOMPARE(bench.log.channels_registered(), QSet<QString>());
}

void TestChannelMonitor::an_object_that_goes_leaves_alone_what_an_older_connection_had()
{
    HubBench bench;
    auto monitor = std::make_unique<ChannelMonitor>();
    monitor->config(bench.hub.get(), Channel::B);
    QVERIFY(bench.connect());
    monitor->timecode_use_add();
    QVERIFY(bench.sync());
    monitor->timecode_use_remove();
    QVERIFY(bench.reconnect());
    bench.log.take();
    monitor.reset();
    QVERIFY(bench.sync());
    QCOMPARE(bench.log.channel_reports(), QStringList());
}

void TestChannelMonitor::an_object_may_go_behind_the_connection_and_the_hub()
{
    HubBench bench;
    auto first = std::make_unique<ChannelMonitor>();
    auto second = std::make_unique<ChannelMonitor>();
    for (ChannelMonitor *monitor : {first.get(), second.get()}) {
        monitor->config(bench.hub.get(), Channel::B);
        connect(monitor, &ChannelMonitor::sig_speed, this, [] {});
    }
    QVERIFY(bench.connect());
    bench.server.stop();
    QTRY_VERIFY(!bench.hub->is_connected());
    bench.log.take();
    first.reset();
    bench.server.restart(VeskState::keep);
    QTRY_VERIFY(bench.hub->is_connected());
    QVERIFY(bench.sync());
    QCOMPARE(bench.log.channel_reports(), QStringList(registered("speed")));
    bench.hub.reset();
    second.reset();
    QCOMPARE(bench.log.channel_reports(), QStringList(registered("speed")));
}

void TestChannelMonitor::a_connection_registers_in_report_order()
{
    MonitorBench bench;
    for (auto signal = signal_table().rbegin(); signal != signal_table().rend(); ++signal)
        signal->connect(&bench.monitor, this);
    QStringList expected;
    for (int report = 0; report < 12; ++report)
        expected.append(
            registered(VCTP3::ChannelReportType_to_string(VCTP3::ChannelReportType(report))
                           .to_string()
                           .c_str()));
    QVERIFY(bench.connect());
    QCOMPARE(bench.log.channel_reports(), expected);
    bench.log.take();
    QVERIFY(bench.reconnect());
    QCOMPARE(bench.log.channel_reports(), expected);
}

void TestChannelMonitor::is_registered_when_configured_while_connected()
{
    HubBench bench;
    QVERIFY(bench.connect());
    ChannelMonitor monitor;
    connect(&monitor, &ChannelMonitor::sig_status, this, [] {});
    monitor.config(bench.hub.get(), Channel::B);
    QVERIFY(bench.sync());
    QCOMPARE(bench.log.channel_reports(), QStringList(registered("status")));
}

void TestChannelMonitor::timecodes_are_emitted_again_while_unconnected()
{
    MonitorBench bench;
    bench.monitor.report_channel_timecode(Channel::B, 7, {}, {});
    QList<unsigned int> positions;
    int displays = 0;
    connect(&bench.monitor, &ChannelMonitor::sig_clip_position, this,
        [&positions](unsigned int position) { positions.append(position); });
    QCOMPARE(positions, QList<unsigned int>{7});
    connect(&bench.monitor, &ChannelMonitor::sig_display_timecode, this, [&] { ++displays; });
    QCOMPARE(displays, 1);
    QCOMPARE(positions, QList<unsigned int>({7, 7}));
    // `connected` does so too, should it come without a connection.
    bench.monitor.connected();
    QCOMPARE(displays, 2);
    QCOMPARE(bench.log.channel_reports(), QStringList());
}

void TestChannelMonitor::uses_of_timecode_register_once_and_unregister_nothing()
{
    MonitorBench bench;
    QVERIFY(bench.connect());
    bench.monitor.timecode_use_add();
    bench.monitor.timecode_use_add();
    QVERIFY(bench.sync());
    QCOMPARE(bench.log.channel_reports(), QStringList(registered("timecode")));
    // A listener that comes and goes does not end the use.
    disconnect(connect(&bench.monitor, &ChannelMonitor::sig_clip_position, this, [] {}));
    QVERIFY(bench.sync());
    QVERIFY(bench.log.registered().contains(QStringLiteral("B timecode")));
    bench.monitor.timecode_use_remove();
    bench.monitor.timecode_use_remove();
    QVERIFY(bench.sync());
    QVERIFY(bench.log.registered().contains(QStringLiteral("B timecode")));
    bench.log.take();
    bench.monitor.timecode_use_add();
    QVERIFY(bench.sync());
    QCOMPARE(bench.log.channel_reports(), QStringList(registered("timecode")));
}

void TestChannelMonitor::a_use_that_is_not_there_cannot_be_removed()
{
    MonitorBench bench;
    QVERIFY(bench.connect());
    bench.monitor.timecode_use_remove();
    QVERIFY(!bench.monitor.has_receiver_timecode());
    bench.monitor.timecode_use_add();
    QVERIFY(bench.sync());
    QCOMPARE(bench.log.channel_reports(), QStringList(registered("timecode")));
}

void TestChannelMonitor::another_thread_may_use_timecode()
{
    MonitorBench bench;
    QList<QThread *> told_on;
    connect(
        &bench.monitor, &ChannelMonitor::sig_clip_position, &bench.monitor,
        [&told_on] { told_on.append(QThread::currentThread()); }, Qt::DirectConnection);
    QCOMPARE(told_on.size(), 1); // the listener's first value
    std::thread([&bench] { bench.monitor.timecode_use_add(); }).join();
    // Without a connection the values are emitted again, where all signals are.
    QTRY_COMPARE(told_on, QList<QThread *>(2, QThread::currentThread()));
    std::thread([&bench] { bench.monitor.timecode_use_remove(); }).join();
    QVERIFY(bench.connect());
    bench.log.take();
    std::thread([&bench] { bench.monitor.timecode_use_add(); }).join();
    QTRY_COMPARE(bench.log.channel_reports(), QStringList(registered("timecode")));
}

void TestChannelMonitor::knows_which_signals_need_a_report_data()
{
    listening_registers_and_leaving_unregisters_data();
}

void TestChannelMonitor::knows_which_signals_need_a_report()
{
    QFETCH(int, index);
    Signal const &signal = signal_table()[std::size_t(index)];
    ChannelMonitor monitor;
    auto const needed = [&monitor] {
        return reports_with([&](auto const &report) { return (monitor.*report.is_needed)(); });
    };
    auto const needed_by = [](QByteArray const &signature) {
        return reports_with([&](auto const &report) { return report.is_needed_by(signature); });
    };
    QStringList const expected(QString::fromLatin1(signal.report));
    QCOMPARE(needed(), QStringList());
    signal.connect(&monitor, this);
    QCOMPARE(needed(), expected);
    QCOMPARE(needed_by(signal.name), expected);
    QCOMPARE(needed_by("2destroyed()"), QStringList());
}

void TestChannelMonitor::reports_reach_the_signals()
{
    Glint hub(false);
    ChannelMonitor monitor;
    monitor.config(&hub, Channel::B);
    MonitorNotes heard(&monitor);
    heard.clear();
    VCTP3::ChannelInformation information;
    information.set_cliplength(9);
    information.set_playback(VCTP3::Playback::field);
    VCTP3::Timecode const timecode = ReportText::timecode_value(50);

    Q_EMIT hub.report_channel_status(Channel::B, ChannelStatus::play, AString::l1("a"));
    Q_EMIT hub.report_channel_status(Channel::B, ChannelStatus::stop, {});
    Q_EMIT hub.report_channel_clipid(Channel::B, AString::l1("b"));
    Q_EMIT hub.report_channel_speed(Channel::B, -65536);
    Q_EMIT hub.report_channel_timecode(Channel::B, 4, timecode, VCTP3::Timecode());
    Q_EMIT hub.report_channel_info(Channel::B, information);
    Q_EMIT hub.report_channel_peak(Channel::B, AString::l1("1 5 2"));
    Q_EMIT hub.report_channel_aux_audio_status(Channel::B, ChannelStatus::cueing, AString::l1("c"));
    Q_EMIT hub.report_channel_aux_audio_clipid(Channel::B, AString::l1("d"));
    Q_EMIT hub.report_channel_aux_audio_speed(Channel::B, 7);
    Q_EMIT hub.report_channel_aux_audio_timecode(Channel::B, 8);
    Q_EMIT hub.report_channel_aux_audio_info(Channel::B, information);
    Q_EMIT hub.report_channel_aux_audio_peak(Channel::B, AString::l1("6"));
    QCOMPARE(heard.lines(),
        SignalNotes::of({"status 4", "clipid a", "status 3", "clipid b", "speed -65536",
            "timecodes 4 00.00.01.00 (invalid)", "position 4", "display 00.00.01.00",
            "input (invalid)", "info 9", "mode 1", "peak 5", "aux_status 2", "aux_clipid c",
            "aux_clipid d", "aux_speed 7", "aux_position 8", "aux_info 9", "aux_peak 6"}));
}

void TestChannelMonitor::reports_of_other_channels_are_passed_over()
{
    Glint hub(false);
    ChannelMonitor monitor;
    monitor.config_api(&hub);
    MonitorNotes heard(&monitor);
    heard.clear();
    // Without a channel, and then of another one.
    for (int round = 0; round < 2; ++round) {
        monitor.report_channel_status(Channel::A, ChannelStatus::play, AString::l1("x"));
        monitor.report_channel_clipid(Channel::A, AString::l1("x"));
        monitor.report_channel_speed(Channel::A, 1);
        monitor.report_channel_timecode(Channel::A, 1, {}, {});
        monitor.report_channel_info(Channel::A, {});
        monitor.report_channel_peak(Channel::A, AString::l1("1"));
        monitor.report_channel_aux_audio_status(Channel::A, ChannelStatus::play, {});
        monitor.report_channel_aux_audio_clipid(Channel::A, AString::l1("x"));
        monitor.report_channel_aux_audio_speed(Channel::A, 1);
        monitor.report_channel_aux_audio_timecode(Channel::A, 1);
        monitor.report_channel_aux_audio_info(Channel::A, {});
        monitor.report_channel_aux_audio_peak(Channel::A, AString::l1("1"));
        QCOMPARE(heard.lines(), QStringList());
        monitor.config_channel(Channel::B);
    }
}

void TestChannelMonitor::a_lost_connection_blanks_all()
{
    MonitorBench bench;
    QVERIFY(bench.connect());
    MonitorNotes heard(&bench.monitor);
    QVERIFY(bench.sync());
    // What the workers decode comes last.
    GlintHealth const *health = bench.hub->get_health();
    QTRY_VERIFY(health->messages_to_decode() == 0 && health->results_to_deliver() == 0);
    for (char const *late : {"timecodes 0", "aux_position 0", "peak 0", "aux_peak 0"})
        QVERIFY(heard.lines().filter(QLatin1String(late)).size() > 0);
    bench.monitor.report_channel_speed(Channel::B, 65536);
    heard.clear();
    bench.server.stop();
    QTRY_COMPARE(heard.lines(), defaults);
}

void TestChannelMonitor::a_report_behind_the_end_of_the_connection_is_passed_over()
{
    MonitorBench bench;
    QVERIFY(bench.connect());
    QList<unsigned int> positions;
    connect(&bench.monitor, &ChannelMonitor::sig_clip_position, this,
        [&positions](unsigned int position) { positions.append(position); });
    QTRY_COMPARE(positions.size(), 1);
    bench.server.stop();
    QTRY_COMPARE(positions.size(), 2);
    // What the workers decoded late is reported as ever.
    Q_EMIT bench.hub->report_channel_timecode(Channel::B, 7, {}, {});
    QCOMPARE(positions, QList<unsigned int>({0, 0}));
    bench.server.restart(VeskState::keep);
    QTRY_COMPARE(positions.size(), 3);
    Q_EMIT bench.hub->report_channel_timecode(Channel::B, 8, {}, {});
    QCOMPARE(positions, QList<unsigned int>({0, 0, 0, 8}));
}

void TestChannelMonitor::peaks_are_the_highest_level()
{
    Glint hub(false);
    ChannelMonitor monitor;
    monitor.config(&hub, Channel::B);
    QList<unsigned int> heard;
    connect(&monitor, &ChannelMonitor::sig_peak, this,
        [&heard](unsigned int level) { heard.append(level); });
    for (char const *levels : {"3 1 2", "", "x", "4294967295 1"})
        Q_EMIT hub.report_channel_peak(Channel::B, AString::l1(levels));
    QCOMPARE(heard, QList<unsigned int>({3, 0, 0, 4294967295u}));
}

QTEST_GUILESS_MAIN(TestChannelMonitor)
#include "tst_channel_monitor.moc"
