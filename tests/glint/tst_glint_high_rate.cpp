// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/glint/glint_audio_levels.h"
#include "ATarnLib/glint/glint_channel_monitor.h"
#include "ATarnLib/glint/glint_health.h"
#include "ATarnLib/glint/glint_timecode.h"
#include "tests/glint/hub_bench.h"
#include "tests/glint/report_text.h"
#include "tests/support/assert_log.h"
#include "tests/support/count_here.h"
#include "tests/support/event_loop.h"
#include "tests/support/patience.h"

#include <QDeadlineTimer>
#include <QEventLoop>
#include <QTest>
#include <QThread>
#include <QTimer>

#include <functional>
#include <vector>

using VCTP3::Channel;
using VCTP3::ChannelReportType;
using VCTP3::Timecode;

namespace {

/// A hub that can be given messages.
class FeedHub : public Glint
{
public:
    FeedHub()
        : Glint(false)
    {
    }
    bool feed(QByteArray const &text) { return parse_intercept(ReportText::parsed(text)); }
};

/// It lists what it reports, too.
class OpenHub : public FeedHub
{
public:
    OpenHub()
    {
        using namespace VCTP3;
        connect(this, &Glint::report_channel_timecode, this,
            [this](Channel channel, unsigned int position, Timecode const &display,
                Timecode const &input) {
                note(QStringLiteral("timecode %1 %2 %3 %4")
                         .arg(int(channel))
                         .arg(position)
                         .arg(display.position)
                         .arg(input.position));
            });
        connect(this, &Glint::report_channel_aux_audio_timecode, this,
            [this](Channel channel, unsigned int position) {
                note(QStringLiteral("aux %1 %2").arg(int(channel)).arg(position));
            });
        connect(this, &Glint::report_ltc_timecode, this,
            [this](Timecode const &value) { note(QStringLiteral("ltc %1").arg(value.position)); });
        connect(this, &Glint::report_channel_peak, this,
            [this](Channel channel, AString const &levels) {
                note(QStringLiteral("peak %1 %2").arg(int(channel)).arg(QString(levels)));
            });
        connect(this, &Glint::report_channel_aux_audio_peak, this,
            [this](Channel channel, AString const &levels) {
                note(QStringLiteral("aux peak %1 %2").arg(int(channel)).arg(QString(levels)));
            });
    }

    void note(QString const &text) { heard.append(text); }

    QStringList heard;
};

/// A hub that says which report passes, and lets none come to its signal.
class KeepingHub : public OpenHub
{
protected:
    void do_report_channel_timecode(
        Channel channel, unsigned int position, Timecode const &, Timecode const &) override
    {
        note(QStringLiteral("kept timecode %1 %2").arg(int(channel)).arg(position));
    }
    void do_report_channel_aux_audio_timecode(Channel channel, unsigned int position) override
    {
        note(QStringLiteral("kept aux %1 %2").arg(int(channel)).arg(position));
    }
    void do_report_ltc_timecode(Timecode const &value) override
    {
        note(QStringLiteral("kept ltc %1").arg(value.position));
    }
    void do_report_channel_peak(Channel channel, AString const &levels) override
    {
        note(QStringLiteral("kept peak %1 %2").arg(int(channel)).arg(QString(levels)));
    }
    void do_report_channel_aux_audio_peak(Channel channel, AString const &levels) override
    {
        note(QStringLiteral("kept aux peak %1 %2").arg(int(channel)).arg(QString(levels)));
    }
};

/// Waits until a worker has done what it was given before.
template <typename Worker> void finish(Worker *worker)
{
    QMetaObject::invokeMethod(
        worker, [] {}, Qt::BlockingQueuedConnection);
}

/// Waits until a hub's workers have decoded what it was fed, without a turn of its event loop.
void let_workers_finish(Glint *hub)
{
    QCoreApplication::sendPostedEvents(hub);
    while (hub->get_health()->messages_to_decode() > 0)
        QThread::yieldCurrentThread();
}

} // namespace

/// The reports that come at field rate, on their way around the parser.
class TestGlintHighRate : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void five_kinds_of_report_are_taken_data();
    void five_kinds_of_report_are_taken();
    void a_subclass_may_act_instead_of_each_signal();
    void other_messages_are_left_to_the_parser_data();
    void other_messages_are_left_to_the_parser();
    void a_report_overtaken_before_delivery_is_replaced();
    void channels_are_delivered_in_arrival_order_each_on_its_own_pass();
    void each_pass_delivers_one_of_each_kind_data();
    void each_pass_delivers_one_of_each_kind();
    void a_pass_is_given_to_channels_with_listeners_only_data();
    void a_pass_is_given_to_channels_with_listeners_only();
    void a_slot_that_runs_an_event_loop_holds_no_other_channel_up_data();
    void a_slot_that_runs_an_event_loop_holds_no_other_channel_up();
    void a_slot_that_runs_an_event_loop_leaves_the_newest_last_data();
    void a_slot_that_runs_an_event_loop_leaves_the_newest_last();
    void results_of_an_older_connection_fall_away();
    void a_malformed_report_does_not_stop_later_ones_data();
    void a_malformed_report_does_not_stop_later_ones();
    void what_is_no_report_is_an_assertion_on_the_worker_data();
    void what_is_no_report_is_an_assertion_on_the_worker();
    void the_last_ltc_value_is_delivered_once();
    void an_ltc_value_of_an_older_connection_is_dropped();
    void levels_are_held_until_they_are_taken();
    void levels_of_another_connection_are_not_held();
    void signals_come_again_after_all_was_taken_data();
    void signals_come_again_after_all_was_taken();
    void a_worker_begins_while_the_hub_is_still_reading();
    void reports_of_a_server_arrive();
    void a_blocked_loop_catches_up_with_the_newest_alone();
    void a_hub_may_go_with_work_in_its_queues();
};

void TestGlintHighRate::five_kinds_of_report_are_taken_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("heard");
    QTest::newRow("timecode") << ReportText::timecode(3, 17, 100, 200)
                              << QStringLiteral("timecode 3 17 100 200");
    QTest::newRow("aux") << ReportText::aux_position(39, 5) << QStringLiteral("aux 39 5");
    QTest::newRow("ltc") << ReportText::ltc(99) << QStringLiteral("ltc 99");
    QTest::newRow("peak") << ReportText::peak(0, "1 2 3") << QStringLiteral("peak 0 1 2 3");
    QTest::newRow("aux peak") << ReportText::aux_peak(1, "9") << QStringLiteral("aux peak 1 9");
}

void TestGlintHighRate::five_kinds_of_report_are_taken()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, heard);
    OpenHub hub;
    QVERIFY(hub.feed(text));
    QTRY_COMPARE(hub.heard, QStringList(heard));
}

void TestGlintHighRate::a_subclass_may_act_instead_of_each_signal()
{
    KeepingHub hub;
    for (QByteArray const &text : {ReportText::timecode(1, 2), ReportText::aux_position(3, 4),
             ReportText::peak(5, "6"), ReportText::aux_peak(7, "8"), ReportText::ltc(9)})
        QVERIFY(hub.feed(text));
    QTRY_COMPARE(hub.heard.size(), 5);
    QCOMPARE(QSet<QString>(hub.heard.begin(), hub.heard.end()),
        QSet<QString>({QStringLiteral("kept timecode 1 2"), QStringLiteral("kept aux 3 4"),
            QStringLiteral("kept peak 5 6"), QStringLiteral("kept aux peak 7 8"),
            QStringLiteral("kept ltc 9")}));
}

void TestGlintHighRate::other_messages_are_left_to_the_parser_data()
{
    QTest::addColumn<QByteArray>("text");
    QByteArray const peak = "<channel_peak><Channel>A</Channel><LevelsString>1</LevelsString>"
                            "</channel_peak>";
    QTest::newRow("status") << ReportText::channel_report(
        "channel_status", 0, "<ChannelStatus>play</ChannelStatus>");
    QTest::newRow("two children") << ReportText::report(peak + peak);
    QTest::newRow("two children, one of them unknown") << ReportText::report(peak + "<more/>");
    QTest::newRow("no child") << QByteArray("<report/>");
    QTest::newRow("text") << QByteArray("<report>channel_peak</report>");
    QTest::newRow("reply") << "<reply>" + peak + "</reply>";
}

void TestGlintHighRate::other_messages_are_left_to_the_parser()
{
    QFETCH(QByteArray, text);
    OpenHub hub;
    QVERIFY(!hub.feed(text));
}

void TestGlintHighRate::a_report_overtaken_before_delivery_is_replaced()
{
    GlintTimecode worker;
    CountHere available(&worker, &GlintTimecode::timecode_available);
    worker.add_work(1, ReportText::parsed(ReportText::timecode(4, 1)));
    worker.add_work(1, ReportText::parsed(ReportText::timecode(4, 2)));
    finish(&worker);
    QTRY_COMPARE(available.count(), 1);
    QCOMPARE(worker.overtaken(), 1u);
    QCOMPARE(worker.waiting(), 1u);
    GlintTimecodeResult result;
    QVERIFY(worker.take_timecode(1, &result));
    QCOMPARE(int(result.channel), 4);
    QCOMPARE(result.position, 2u);
    QVERIFY(!worker.take_timecode(1, &result));
}

void TestGlintHighRate::channels_are_delivered_in_arrival_order_each_on_its_own_pass()
{
    OpenHub hub;
    // What is posted in a delivery runs before the delivery of the next pass.
    connect(&hub, &Glint::report_channel_timecode, &hub, [&hub] {
        QMetaObject::invokeMethod(
            &hub, [&hub] { hub.note(QStringLiteral("turn")); }, Qt::QueuedConnection);
    });
    for (int channel : {3, 5, 0})
        QVERIFY(hub.feed(ReportText::timecode(channel, channel + 10)));
    QTRY_COMPARE(hub.heard.size(), 6);
    QCOMPARE(hub.heard,
        QStringList({QStringLiteral("timecode 3 13 0 0"), QStringLiteral("turn"),
            QStringLiteral("timecode 5 15 0 0"), QStringLiteral("turn"),
            QStringLiteral("timecode 0 10 0 0"), QStringLiteral("turn")}));
}

void TestGlintHighRate::each_pass_delivers_one_of_each_kind_data()
{
    QTest::addColumn<QByteArrayList>("texts");
    QTest::addColumn<QStringList>("heard");
    QTest::newRow("timecodes") << QByteArrayList{ReportText::timecode(1, 7),
        ReportText::aux_position(1, 8), ReportText::timecode(2, 7), ReportText::aux_position(2, 8)}
                               << QStringList{QStringLiteral("timecode 1 7 0 0"),
                                      QStringLiteral("aux 1 8"), QStringLiteral("turn"),
                                      QStringLiteral("timecode 2 7 0 0"), QStringLiteral("aux 2 8"),
                                      QStringLiteral("turn")};
    QTest::newRow("levels") << QByteArrayList{ReportText::aux_peak(1, "8"),
        ReportText::peak(1, "7"), ReportText::aux_peak(2, "8"), ReportText::peak(2, "7")}
                            << QStringList{QStringLiteral("peak 1 7"),
                                   QStringLiteral("aux peak 1 8"), QStringLiteral("turn"),
                                   QStringLiteral("peak 2 7"), QStringLiteral("aux peak 2 8"),
                                   QStringLiteral("turn")};
}

void TestGlintHighRate::each_pass_delivers_one_of_each_kind()
{
    QFETCH(QByteArrayList, texts);
    QFETCH(QStringList, heard);
    OpenHub hub;
    auto const post_turn = [&hub] {
        QMetaObject::invokeMethod(
            &hub, [&hub] { hub.note(QStringLiteral("turn")); }, Qt::QueuedConnection);
    };
    connect(&hub, &Glint::report_channel_aux_audio_timecode, &hub, post_turn);
    connect(&hub, &Glint::report_channel_aux_audio_peak, &hub, post_turn);
    for (QByteArray const &text : texts)
        QVERIFY(hub.feed(text));
    QTRY_COMPARE(hub.heard.size(), heard.size());
    QCOMPARE(hub.heard, heard);
}

namespace {

using Monitor = GlintChannelMonitor;

/// What comes of a channel at field rate: how it is said, delivered and listened to.
struct FieldRateKind
{
    char const *name;
    std::function<QByteArray(int channel)> text;
    void (Glint::*deliver)();
    std::function<void(Glint *hub, int *heard)> listen_to_hub;
    std::function<void(Monitor *monitor, int *heard)> listen_to_monitor;
};

/// Counts the emissions of a signal.
template <typename Sender, typename Signal> auto counting(Signal signal)
{
    return [signal](Sender *sender, int *heard) {
        QObject::connect(sender, signal, sender, [heard] { ++*heard; });
    };
}

std::vector<FieldRateKind> field_rate_kinds()
{
    return {
        {"timecodes", [](int channel) { return ReportText::timecode(channel, 1); },
            &Glint::process_timecode, counting<Glint>(&Glint::report_channel_timecode),
            counting<Monitor>(&Monitor::report_clip_position)},
        {"aux positions", [](int channel) { return ReportText::aux_position(channel, 1); },
            &Glint::process_timecode, counting<Glint>(&Glint::report_channel_aux_audio_timecode),
            counting<Monitor>(&Monitor::report_aux_position)},
        {"levels", [](int channel) { return ReportText::peak(channel, "1"); },
            &Glint::process_audio_levels, counting<Glint>(&Glint::report_channel_peak),
            counting<Monitor>(&Monitor::report_peak_hold)},
        {"aux levels", [](int channel) { return ReportText::aux_peak(channel, "1"); },
            &Glint::process_audio_levels, counting<Glint>(&Glint::report_channel_aux_audio_peak),
            counting<Monitor>(&Monitor::report_aux_peak)},
    };
}

enum class Listening
{
    nobody,
    to_monitor_of_2,
    to_other_kinds_of_2,
    to_hub
};

} // namespace

void TestGlintHighRate::a_pass_is_given_to_channels_with_listeners_only_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<int>("listening");
    QTest::addColumn<quint64>("left");
    int number = 0;
    for (FieldRateKind const &kind : field_rate_kinds()) {
        auto const row = [&](char const *who, Listening listening, quint64 left) {
            QTest::addRow("%s, %s", kind.name, who) << number << int(listening) << left;
        };
        row("nobody listens", Listening::nobody, 0);
        row("a listener of the second", Listening::to_monitor_of_2, 1);
        row("a listener of the second's other kinds", Listening::to_other_kinds_of_2, 0);
        row("a listener of the hub", Listening::to_hub, 2);
        ++number;
    }
}

void TestGlintHighRate::a_pass_is_given_to_channels_with_listeners_only()
{
    QFETCH(int, kind);
    QFETCH(int, listening);
    QFETCH(quint64, left);
    std::vector<FieldRateKind> const kinds = field_rate_kinds();
    FieldRateKind const &tested = kinds[std::size_t(kind)];
    FeedHub hub;
    int heard = 0;
    if (Listening(listening) == Listening::to_hub)
        tested.listen_to_hub(&hub, &heard);
    else if (Listening(listening) == Listening::to_monitor_of_2)
        tested.listen_to_monitor(hub.get_channel_monitor(2), &heard);
    else if (Listening(listening) == Listening::to_other_kinds_of_2)
        for (FieldRateKind const &other : kinds)
            if (&other != &tested)
                other.listen_to_monitor(hub.get_channel_monitor(2), &heard);
    QCoreApplication::processEvents();
    heard = 0;

    for (int channel : {1, 2, 3})
        QVERIFY(hub.feed(tested.text(channel)));
    // Without the timers, whose passes this test makes itself.
    let_workers_finish(&hub);
    GlintHealth const &health = *hub.get_health();
    QCOMPARE(health.results_to_deliver(), quint64(3));
    (hub.*tested.deliver)();
    QCOMPARE(health.results_to_deliver(), left);
    QCOMPARE(heard, left > 0 ? 1 : 0);
}

void TestGlintHighRate::a_slot_that_runs_an_event_loop_holds_no_other_channel_up_data()
{
    QTest::addColumn<QByteArrayList>("texts");
    QTest::newRow("timecodes") << QByteArrayList{
        ReportText::timecode(1, 1), ReportText::timecode(2, 2)};
    QTest::newRow("aux positions")
        << QByteArrayList{ReportText::aux_position(1, 1), ReportText::aux_position(2, 2)};
    QTest::newRow("levels") << QByteArrayList{ReportText::peak(1, "1"), ReportText::peak(2, "2")};
    QTest::newRow("aux levels") << QByteArrayList{
        ReportText::aux_peak(1, "1"), ReportText::aux_peak(2, "2")};
}

void TestGlintHighRate::a_slot_that_runs_an_event_loop_holds_no_other_channel_up()
{
    QFETCH(QByteArrayList, texts);
    OpenHub hub;
    QEventLoop dialog;
    bool came_meanwhile = false;
    auto const open_or_close = [&](VCTP3::Channel channel) {
        if (channel == static_cast<VCTP3::Channel>(1)) {
            QTimer::singleShot(patience_ms, &dialog, &QEventLoop::quit);
            dialog.exec();
        } else {
            came_meanwhile = dialog.isRunning();
            dialog.quit();
        }
    };
    connect(&hub, &Glint::report_channel_timecode, &hub, open_or_close);
    connect(&hub, &Glint::report_channel_aux_audio_timecode, &hub, open_or_close);
    connect(&hub, &Glint::report_channel_peak, &hub, open_or_close);
    connect(&hub, &Glint::report_channel_aux_audio_peak, &hub, open_or_close);
    for (QByteArray const &text : texts)
        QVERIFY(hub.feed(text));
    QTRY_COMPARE(hub.heard.size(), 2);
    QVERIFY(came_meanwhile);
}

void TestGlintHighRate::a_slot_that_runs_an_event_loop_leaves_the_newest_last_data()
{
    QTest::addColumn<QByteArrayList>("before");
    QTest::addColumn<QByteArray>("meanwhile");
    QTest::addColumn<QString>("newest");
    QTest::newRow("aux positions")
        << QByteArrayList{ReportText::timecode(1, 1), ReportText::aux_position(1, 6)}
        << ReportText::aux_position(1, 7) << QStringLiteral("aux 1 7");
    QTest::newRow("aux levels") << QByteArrayList{ReportText::peak(1, "1"),
        ReportText::aux_peak(1, "6")}
                                << ReportText::aux_peak(1, "7") << QStringLiteral("aux peak 1 7");
}

void TestGlintHighRate::a_slot_that_runs_an_event_loop_leaves_the_newest_last()
{
    QFETCH(QByteArrayList, before);
    QFETCH(QByteArray, meanwhile);
    QFETCH(QString, newest);
    OpenHub hub;
    auto const stay = [&] {
        hub.feed(meanwhile);
        QTRY_VERIFY(hub.heard.contains(newest));
    };
    connect(&hub, &Glint::report_channel_timecode, &hub, stay);
    connect(&hub, &Glint::report_channel_peak, &hub, stay);
    for (QByteArray const &text : before)
        QVERIFY(hub.feed(text));
    QTRY_VERIFY(hub.heard.contains(newest));
    EventLoop::turn();
    QCOMPARE(hub.heard.last(), newest);
}

void TestGlintHighRate::results_of_an_older_connection_fall_away()
{
    OpenHub hub;
    for (QByteArray const &text : {ReportText::timecode(1, 1), ReportText::aux_position(1, 1),
             ReportText::peak(1, "1"), ReportText::aux_peak(1, "1"), ReportText::ltc(1)})
        QVERIFY(hub.feed(text));
    hub.slot_connected();
    for (QByteArray const &text : {ReportText::timecode(2, 2), ReportText::aux_position(2, 2),
             ReportText::peak(2, "2"), ReportText::aux_peak(2, "2"), ReportText::ltc(2)})
        QVERIFY(hub.feed(text));
    QTRY_COMPARE(hub.heard.size(), 5);
    QCOMPARE(QSet<QString>(hub.heard.begin(), hub.heard.end()),
        QSet<QString>({QStringLiteral("timecode 2 2 0 0"), QStringLiteral("aux 2 2"),
            QStringLiteral("peak 2 2"), QStringLiteral("aux peak 2 2"), QStringLiteral("ltc 2")}));
}

void TestGlintHighRate::a_malformed_report_does_not_stop_later_ones_data()
{
    QTest::addColumn<bool>("levels");
    QTest::addColumn<QByteArray>("bad");
    QByteArray const record = ReportText::timecode_record(1);
    QTest::newRow("no channel") << false
                                << ReportText::report("<channel_timecode><ClipPosition>1"
                                                      "</ClipPosition></channel_timecode>");
    QTest::newRow("no position") << false
                                 << ReportText::channel_report("channel_timecode", 1, QByteArray());
    QTest::newRow("no display timecode") << false
                                         << ReportText::channel_report("channel_timecode", 1,
                                                ReportText::field("ClipPosition", "1"));
    QTest::newRow("no input timecode") << false
                                       << ReportText::channel_report("channel_timecode", 1,
                                              ReportText::field("ClipPosition", "1")
                                                  + ReportText::field("DisplayTimecode", record));
    QTest::newRow("unknown channel") << false
                                     << ReportText::report("<channel_timecode><Channel>AO"
                                                           "</Channel></channel_timecode>");
    QTest::newRow("aux without position")
        << false << ReportText::channel_report("channel_aux_audio_timecode", 1, QByteArray());
    QTest::newRow("empty ltc") << false << ReportText::report("<ltc_timecode/>");
    QTest::newRow("not a timecode")
        << false << ReportText::channel_report("channel_peak", 1, QByteArray());
    QTest::newRow("no levels") << true
                               << ReportText::channel_report("channel_peak", 1, QByteArray());
    QTest::newRow("levels of no channel")
        << true
        << ReportText::report(
               "<channel_aux_audio_peak><LevelsString>1</LevelsString></channel_aux_audio_peak>");
    QTest::newRow("not levels") << true << ReportText::ltc(1);
}

void TestGlintHighRate::a_malformed_report_does_not_stop_later_ones()
{
    QFETCH(bool, levels);
    QFETCH(QByteArray, bad);
    AssertLog asserts;
    GlintTimecode timecode;
    GlintAudioLevels audio;
    GlintWorker *worker = &timecode;
    if (levels)
        worker = &audio;
    worker->add_work(1, ReportText::parsed(bad));
    worker->add_work(
        1, ReportText::parsed(levels ? ReportText::peak(1, "5") : ReportText::timecode(1, 5)));
    finish(worker);
    QCOMPARE(asserts.take(), QStringList(QStringLiteral("false")));
    QCOMPARE(worker->dropped(), 1u);
    QVERIFY(!worker->last_drop_reason().empty());
    GlintTimecodeResult result;
    GlintAudioLevelsResult heard;
    if (levels) {
        QVERIFY(audio.take_levels(1, &heard));
        QCOMPARE(QString(heard.levels), QStringLiteral("5"));
    } else {
        QVERIFY(timecode.take_timecode(1, &result));
        QCOMPARE(result.position, 5u);
    }
}

void TestGlintHighRate::what_is_no_report_is_an_assertion_on_the_worker_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("assertion");
    QString const tag = QStringLiteral("tree.has_tag_z(\"report\")");
    QString const count = QStringLiteral("tree_nodes.size() == 1");
    QTest::newRow("reply") << QByteArray("<reply><channel_timecode/></reply>") << tag;
    QTest::newRow("empty") << QByteArray("<report/>") << count;
    QTest::newRow("two") << QByteArray("<report><ltc_timecode/><ltc_timecode/></report>") << count;
}

void TestGlintHighRate::what_is_no_report_is_an_assertion_on_the_worker()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, assertion);
    AssertLog asserts;
    GlintTimecode worker;
    worker.add_work(1, ReportText::parsed(text));
    worker.add_work(1, ReportText::parsed(ReportText::aux_position(2, 3)));
    finish(&worker);
    QCOMPARE(asserts.take(), QStringList(assertion));
    GlintTimecodeResult result;
    QVERIFY(worker.take_aux_position(1, &result));
    QCOMPARE(result.position, 3u);
}

void TestGlintHighRate::the_last_ltc_value_is_delivered_once()
{
    GlintTimecode worker;
    CountHere available(&worker, &GlintTimecode::ltc_available);
    for (int position : {1, 2, 3})
        worker.add_work(1, ReportText::parsed(ReportText::ltc(position)));
    finish(&worker);
    QTRY_COMPARE(available.count(), 1);
    QCOMPARE(worker.waiting(), 1u);
    Timecode value;
    QVERIFY(worker.take_ltc(1, &value));
    QCOMPARE(value.position, 3);
    QCOMPARE(worker.waiting(), 0u);
    QVERIFY(!worker.take_ltc(1, &value));
    worker.add_work(1, ReportText::parsed(ReportText::ltc(4)));
    QTRY_COMPARE(available.count(), 2);
}

void TestGlintHighRate::an_ltc_value_of_an_older_connection_is_dropped()
{
    GlintTimecode worker;
    worker.add_work(1, ReportText::parsed(ReportText::ltc(1)));
    finish(&worker);
    Timecode value;
    QVERIFY(!worker.take_ltc(2, &value));
    QVERIFY(!worker.take_ltc(1, &value));
}

void TestGlintHighRate::levels_are_held_until_they_are_taken()
{
    GlintAudioLevels worker;
    for (char const *levels : {"1 50 3", "40 2 3", "7 7 7"})
        worker.add_work(1, ReportText::parsed(ReportText::peak(2, levels)));
    worker.add_work(1, ReportText::parsed(ReportText::aux_peak(2, "99")));
    finish(&worker);
    GlintAudioLevelsResult result;
    QVERIFY(worker.take_levels(1, &result));
    QCOMPARE(QString(result.levels), QStringLiteral("7 7 7"));
    QCOMPARE(result.hold, (std::array<unsigned int, 16>{40, 50, 7}));
    QVERIFY(worker.take_aux_levels(1, &result));
    QCOMPARE(result.hold, (std::array<unsigned int, 16>{99}));
    worker.add_work(1, ReportText::parsed(ReportText::peak(2, "1 1 1")));
    finish(&worker);
    QVERIFY(worker.take_levels(1, &result));
    QCOMPARE(result.hold, (std::array<unsigned int, 16>{1, 1, 1}));
}

void TestGlintHighRate::levels_of_another_connection_are_not_held()
{
    GlintAudioLevels worker;
    worker.add_work(1, ReportText::parsed(ReportText::peak(2, "90")));
    worker.add_work(2, ReportText::parsed(ReportText::peak(2, "10")));
    finish(&worker);
    GlintAudioLevelsResult result;
    QVERIFY(worker.take_levels(2, &result));
    QCOMPARE(result.hold, (std::array<unsigned int, 16>{10}));
}

namespace {

/// What a worker tells of reports of one kind, \a text of a channel, which are taken by \a take.
template <typename Worker, typename Result>
void signals_of_one_kind(void (Worker::*available)(), QByteArray (*text)(int channel),
    bool (Worker::*take)(unsigned long long connection, Result *result))
{
    Worker worker;
    CountHere told(&worker, available);
    Result result;
    for (int round = 1; round <= 3; ++round) {
        worker.add_work(1, ReportText::parsed(text(1)));
        QTRY_COMPARE(told.count(), round);
        worker.add_work(1, ReportText::parsed(text(2)));
        finish(&worker);
        QVERIFY((worker.*take)(1, &result));
        QVERIFY((worker.*take)(1, &result));
        QVERIFY(!(worker.*take)(1, &result));
    }
    EventLoop::turn();
    QCOMPARE(told.count(), 3);
}

} // namespace

void TestGlintHighRate::signals_come_again_after_all_was_taken_data()
{
    QTest::addColumn<int>("kind");
    QTest::newRow("timecodes") << 0;
    QTest::newRow("aux positions") << 1;
    QTest::newRow("levels") << 2;
    QTest::newRow("aux levels") << 3;
}

void TestGlintHighRate::signals_come_again_after_all_was_taken()
{
    QFETCH(int, kind);
    if (kind == 0)
        signals_of_one_kind(
            &GlintTimecode::timecode_available,
            [](int channel) { return ReportText::timecode(channel, 1); },
            &GlintTimecode::take_timecode);
    else if (kind == 1)
        signals_of_one_kind(
            &GlintTimecode::timecode_available,
            [](int channel) { return ReportText::aux_position(channel, 1); },
            &GlintTimecode::take_aux_position);
    else if (kind == 2)
        signals_of_one_kind(
            &GlintAudioLevels::audio_levels_available,
            [](int channel) { return ReportText::peak(channel, "1"); },
            &GlintAudioLevels::take_levels);
    else
        signals_of_one_kind(
            &GlintAudioLevels::audio_levels_available,
            [](int channel) { return ReportText::aux_peak(channel, "1"); },
            &GlintAudioLevels::take_aux_levels);
}

void TestGlintHighRate::a_worker_begins_while_the_hub_is_still_reading()
{
    FeedHub hub;
    for (int i = 0; i < 300; ++i)
        QVERIFY(hub.feed(ReportText::aux_position(i % 40, i)));
    // The event loop has not run since.
    QDeadlineTimer const limit(patience_ms);
    while (hub.get_health()->results_to_deliver() == 0 && !limit.hasExpired())
        QThread::yieldCurrentThread();
    QVERIFY(hub.get_health()->results_to_deliver() > 0);
}

void TestGlintHighRate::reports_of_a_server_arrive()
{
    VeskSimOptions options;
    options.demo = true;
    HubBench bench(options);
    QVERIFY(bench.connect());
    QStringList heard;
    connect(bench.hub.get(), &Glint::report_channel_timecode, this,
        [&heard](Channel channel, unsigned int position) {
            heard.append(QStringLiteral("%1 %2").arg(int(channel)).arg(position));
        });
    int peaks = 0;
    connect(bench.hub.get(), &Glint::report_channel_peak, this, [&peaks] { ++peaks; });
    bench.hub->cmd_cue_clip(Channel::A, AString::l1("Bank 1/101-01"));
    bench.hub->cmd_play(Channel::A);
    bench.hub->cmd_channel_report_register(Channel::A, ChannelReportType::timecode);
    bench.hub->cmd_channel_report_register(Channel::A, ChannelReportType::peak);
    QVERIFY(bench.sync());
    bench.server.advance(25);
    QString const newest
        = QStringLiteral("0 %1").arg(bench.server.channel_state(Channel::A).position);
    QTRY_VERIFY(heard.contains(newest));
    QVERIFY(newest != QStringLiteral("0 0"));
    QTRY_VERIFY(peaks > 0);
}

void TestGlintHighRate::a_blocked_loop_catches_up_with_the_newest_alone()
{
    OpenHub hub;
    // The loop does not run here; the workers do.
    for (int round = 0; round < 1000; ++round) {
        for (int channel = 0; channel < 40; ++channel)
            hub.feed(ReportText::aux_position(channel, round));
    }
    let_workers_finish(&hub);
    QStringList newest;
    for (int channel = 0; channel < 40; ++channel)
        newest.append(QStringLiteral("aux %1 999").arg(channel));
    QTRY_COMPARE(hub.heard, newest);
}

void TestGlintHighRate::a_hub_may_go_with_work_in_its_queues()
{
    for (int round = 0; round < 20; ++round) {
        OpenHub hub;
        for (int i = 0; i < 100; ++i) {
            hub.feed(ReportText::timecode(i % 40, i));
            hub.feed(ReportText::peak(i % 40, "1 2 3"));
        }
        if (round % 2)
            QCoreApplication::processEvents();
    }
}

QTEST_GUILESS_MAIN(TestGlintHighRate)
#include "tst_glint_high_rate.moc"
