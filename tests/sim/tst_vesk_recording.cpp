// SPDX-License-Identifier: Apache-2.0
#include "sim/vesk/vesk_channel_reports.h"
#include "tests/sim/model_bench.h"

#include <QTest>

using VCTP3::Channel;
using VCTP3::ChannelReportType;
using VCTP3::Layer;

namespace {

QString const ok = QStringLiteral("ok");

} // namespace

/// Clips that grow: recording, following a recording, and editing into a clip.
class TestVeskRecording : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void arms_a_channel_with_a_new_clip();
    void grows_by_a_field_each_field_until_stopped();
    void ends_when_the_channel_gets_something_else_data();
    void ends_when_the_channel_gets_something_else();
    void ends_at_the_length_it_was_given();
    void goes_round_in_record_loop();
    void ends_on_a_full_disk();
    void plays_back_what_it_recorded();
    void refuses_to_move_while_recording();
    void takes_the_time_of_day_of_its_first_field();
    void is_told_once_a_second_and_at_the_end();
    void tells_its_length_on_every_channel_that_has_it();

    void follows_a_recording_behind_its_head();
    void sees_the_new_head_in_the_same_field_on_any_channel();
    void plays_to_the_end_when_the_recording_ends();
    void follows_a_recording_that_goes_round();
    void refuses_to_follow_what_is_not_recorded();

    void inserts_from_its_position_to_the_end();
    void stops_an_insert();
    void refuses_to_insert_into_a_read_only_clip();

private:
    void record(char const *more = "");

    std::unique_ptr<ModelBench> bench;
};

void TestVeskRecording::init()
{
    bench = std::make_unique<ModelBench>();
}

void TestVeskRecording::cleanup()
{
    bench.reset();
}

void TestVeskRecording::record(char const *more)
{
    QByteArray const parameters
        = QByteArray("<ClipID>new</ClipID><TrackSet><TrackType>video</TrackType></TrackSet>") + more
        + "<Channel>A</Channel>";
    QCOMPARE(bench->ask("create_clip", parameters.constData()), ok);
    QCOMPARE(bench->ask("play", "<Channel>A</Channel>"), ok);
}

void TestVeskRecording::arms_a_channel_with_a_new_clip()
{
    QCOMPARE(bench->ask("create_clip", "<ClipID>new</ClipID><TrackSet /><Channel>A</Channel>"), ok);
    QCOMPARE(bench->state(), QStringLiteral("stop 0 0X"));
    QVERIFY(bench->layer().armed());
    bench->advance(5);
    QCOMPARE(bench->layer().clip()->length(), 0U);
    QCOMPARE(bench->told(),
        QStringList(
            QStringLiteral("clip_change <clip_created><ClipID>new</ClipID></clip_created>")));
    QCOMPARE(bench->ask("stop", "<Channel>A</Channel>"), ok);
    QVERIFY(bench->layer().armed());
}

void TestVeskRecording::grows_by_a_field_each_field_until_stopped()
{
    record();
    QCOMPARE(bench->state(), QStringLiteral("record 0 1X"));
    VeskClip const *clip = bench->layer().clip();
    QVERIFY(clip->growing);
    for (unsigned int field = 1; field <= 7; ++field) {
        bench->advance(1);
        QCOMPARE(clip->length(), field);
        QCOMPARE(bench->layer().position(), field - 1);
    }
    QCOMPARE(bench->ask("play", "<Channel>A</Channel><Speed>2X</Speed>"), ok);
    QCOMPARE(bench->state(), QStringLiteral("record 6 1X"));
    QCOMPARE(bench->ask("stop", "<Channel>A</Channel>"), ok);
    QCOMPARE(bench->state(), QStringLiteral("stop 6 0X"));
    QVERIFY(!clip->growing);
    bench->advance(3);
    QCOMPARE(clip->length(), 7U);
}

void TestVeskRecording::ends_when_the_channel_gets_something_else_data()
{
    QTest::addColumn<QByteArray>("command");
    QTest::addColumn<QByteArray>("more");
    QTest::newRow("unload") << QByteArray("unload") << QByteArray();
    QTest::newRow("cue") << QByteArray("cue_clip") << QByteArray("<ClipID>other</ClipID>");
    QTest::newRow("cue itself") << QByteArray("cue_clip") << QByteArray("<ClipID>new</ClipID>");
    QTest::newRow("input") << QByteArray("go_live") << QByteArray();
    QTest::newRow("record another")
        << QByteArray("create_clip") << QByteArray("<ClipID>newer</ClipID><TrackSet />");
}

void TestVeskRecording::ends_when_the_channel_gets_something_else()
{
    QFETCH(QByteArray, command);
    QFETCH(QByteArray, more);
    bench->clip("other", 5);
    record();
    bench->advance(4);
    VeskClip const *clip = bench->layer().clip();
    bench->told();
    QCOMPARE(bench->ask(command.constData(), ("<Channel>A</Channel>" + more).constData()), ok);
    QVERIFY(!clip->growing);
    QVERIFY(bench->told().contains(
        QStringLiteral("clip_change <clip_changed><ClipID>new</ClipID></clip_changed>")));
    bench->advance(4);
    QCOMPARE(clip->length(), 4U);
}

void TestVeskRecording::ends_at_the_length_it_was_given()
{
    record("<ClipLength>5</ClipLength>");
    bench->advance(4);
    QCOMPARE(bench->state(), QStringLiteral("record 3 1X"));
    bench->advance(1);
    QCOMPARE(bench->state(), QStringLiteral("stop 4 0X"));
    bench->advance(5);
    QCOMPARE(bench->layer().clip()->length(), 5U);
}

void TestVeskRecording::goes_round_in_record_loop()
{
    record("<ClipLength>4</ClipLength>");
    QCOMPARE(bench->ask("set_loop", "<Channel>A</Channel><Loop>record</Loop>"), ok);
    QList<unsigned int> seen;
    for (int field = 0; field < 10; ++field) {
        bench->advance(1);
        seen.append(bench->layer().position());
    }
    QCOMPARE(seen, (QList<unsigned int>{0, 1, 2, 3, 0, 1, 2, 3, 0, 1}));
    QCOMPARE(bench->layer().clip()->length(), 4U);
    QCOMPARE(bench->state(), QStringLiteral("record 1 1X"));
    bench->ask("set_loop", "<Channel>A</Channel><Loop>off</Loop>");
    bench->advance(1);
    QCOMPARE(bench->state(), QStringLiteral("stop 1 0X"));
}

void TestVeskRecording::ends_on_a_full_disk()
{
    bench->world.clips.set_total_disk_space(3 * bench->world.clips.field_size() + 1);
    record();
    bench->advance(3);
    QCOMPARE(bench->state(), QStringLiteral("record 2 1X"));
    bench->advance(1);
    QCOMPARE(bench->state(), QStringLiteral("stop 2 0X"));
    QCOMPARE(bench->layer().clip()->length(), 3U);
}

void TestVeskRecording::plays_back_what_it_recorded()
{
    record();
    bench->advance(6);
    bench->ask("stop", "<Channel>A</Channel>");
    bench->ask("gotocmd", "<Channel>A</Channel><GotoPosition>0</GotoPosition>");
    bench->ask("play", "<Channel>A</Channel>");
    QCOMPARE(bench->state(), QStringLiteral("play 0 1X"));
    bench->advance(9);
    QCOMPARE(bench->state(), QStringLiteral("stop 5 0X"));
}

void TestVeskRecording::refuses_to_move_while_recording()
{
    record();
    bench->advance(3);
    QString const refused = QStringLiteral("general: Channel A is recording");
    QCOMPARE(bench->ask("jog", "<Channel>A</Channel><JogDistance>-1</JogDistance>"), refused);
    QCOMPARE(bench->ask("gotocmd", "<Channel>A</Channel><GotoPosition>0</GotoPosition>"), refused);
    QCOMPARE(bench->ask("go_at", "<Channel>A</Channel><GotoPosition>0</GotoPosition>"), refused);
    QCOMPARE(
        bench->ask("insert_edit", "<Channel>A</Channel><SonyEditMask>1</SonyEditMask>"), refused);
    QCOMPARE(bench->state(), QStringLiteral("record 2 1X"));
}

void TestVeskRecording::takes_the_time_of_day_of_its_first_field()
{
    bench->ask("create_clip", "<ClipID>new</ClipID><TrackSet /><Channel>A</Channel>");
    bench->advance(100);
    int const now = bench->world.clock.time_of_day().position;
    bench->ask("play", "<Channel>A</Channel>");
    bench->advance(1);
    VeskClip const *clip = bench->layer().clip();
    QCOMPARE(clip->info.stripe_timecode.position, now);
    QCOMPARE(clip->info.frame0tc.position, now);
    QCOMPARE(clip->timecode(3, 4320000).position, now + 3);
}

void TestVeskRecording::is_told_once_a_second_and_at_the_end()
{
    record();
    bench->told();
    bench->channel(Channel::A).take_changes();
    bench->advance(49);
    QCOMPARE(bench->told(), QStringList());
    unsigned int const info = 1U << static_cast<unsigned int>(ChannelReportType::info);
    QVERIFY(!(bench->channel(Channel::A).take_changes() & info));
    bench->advance(1);
    QString const changed
        = QStringLiteral("clip_change <clip_changed><ClipID>new</ClipID></clip_changed>");
    QVERIFY(bench->told().contains(changed));
    QVERIFY(bench->channel(Channel::A).take_changes() & info);
    bench->advance(20);
    bench->told();
    bench->ask("stop", "<Channel>A</Channel>");
    QCOMPARE(bench->told(), QStringList(changed));
    bench->advance(60);
    QVERIFY(!bench->told().contains(changed));
}

void TestVeskRecording::tells_its_length_on_every_channel_that_has_it()
{
    unsigned int const info = 1U << static_cast<unsigned int>(ChannelReportType::info);
    auto const told
        = [&](Channel channel) { return (bench->channel(channel).take_changes() & info) != 0; };
    record();
    bench->advance(10);
    bench->ask("go_live", "<Channel>B</Channel><ClipID>new</ClipID><TimeDelay>2</TimeDelay>");
    bench->ask("cue_clip", "<Channel>F</Channel><ClipID>new</ClipID>");
    for (Channel channel : {Channel::A, Channel::B, Channel::F})
        QVERIFY(told(channel));
    bench->advance(39);
    for (Channel channel : {Channel::A, Channel::B, Channel::F})
        QVERIFY(!told(channel));
    bench->advance(1);
    for (Channel channel : {Channel::A, Channel::B, Channel::F})
        QVERIFY(told(channel));
    QCOMPARE(
        VeskChannelReports::information(bench->channel(Channel::F), Layer::normal).cliplength, 50U);

    bench->advance(7);
    bench->ask("stop", "<Channel>A</Channel>");
    QVERIFY(told(Channel::A));
    bench->advance(1);
    QVERIFY(told(Channel::B));
    QVERIFY(told(Channel::F));
    QCOMPARE(
        VeskChannelReports::information(bench->channel(Channel::F), Layer::normal).cliplength, 57U);
    bench->advance(60);
    QVERIFY(!told(Channel::F));
}

void TestVeskRecording::follows_a_recording_behind_its_head()
{
    record();
    bench->advance(10);
    QCOMPARE(
        bench->ask("go_live", "<Channel>B</Channel><ClipID>new</ClipID><TimeDelay>4</TimeDelay>"),
        ok);
    QCOMPARE(bench->state(Channel::B), QStringLiteral("timedelay 5 1X"));
    bench->advance(3);
    QCOMPARE(bench->state(Channel::A), QStringLiteral("record 12 1X"));
    QCOMPARE(bench->state(Channel::B), QStringLiteral("timedelay 8 1X"));

    // A longer delay than there is picture waits on the first field.
    bench->ask("go_live", "<Channel>C</Channel><ClipID>new</ClipID><TimeDelay>15</TimeDelay>");
    QCOMPARE(bench->state(Channel::C), QStringLiteral("timedelay 0 1X"));
    bench->advance(4);
    QCOMPARE(bench->state(Channel::C), QStringLiteral("timedelay 1 1X"));
    bench->ask("play", "<Channel>C</Channel><Speed>-1X</Speed>");
    QCOMPARE(bench->state(Channel::C), QStringLiteral("play 1 -1X"));
}

void TestVeskRecording::sees_the_new_head_in_the_same_field_on_any_channel()
{
    bench->ask("create_clip", "<ClipID>new</ClipID><TrackSet /><Channel>E</Channel>");
    bench->ask("play", "<Channel>E</Channel>");
    bench->advance(1);
    bench->ask("go_live", "<Channel>A</Channel><ClipID>new</ClipID>");
    bench->ask("go_live", "<Channel>F</Channel><ClipID>new</ClipID>");
    bench->advance(1);
    QCOMPARE(bench->layer(Channel::E).position(), 1U);
    QCOMPARE(bench->layer(Channel::A).position(), 1U);
    QCOMPARE(bench->layer(Channel::F).position(), 1U);
}

void TestVeskRecording::plays_to_the_end_when_the_recording_ends()
{
    record();
    bench->advance(10);
    bench->ask("go_live", "<Channel>B</Channel><ClipID>new</ClipID><TimeDelay>2</TimeDelay>");
    bench->ask("stop", "<Channel>A</Channel>");
    bench->advance(2);
    QCOMPARE(bench->state(Channel::B), QStringLiteral("timedelay 9 1X"));
    bench->advance(1);
    QCOMPARE(bench->state(Channel::B), QStringLiteral("stop 9 0X"));
}

void TestVeskRecording::follows_a_recording_that_goes_round()
{
    record("<ClipLength>5</ClipLength>");
    bench->ask("set_loop", "<Channel>A</Channel><Loop>record</Loop>");
    bench->advance(7);
    QCOMPARE(bench->state(), QStringLiteral("record 1 1X"));
    bench->ask("go_live", "<Channel>B</Channel><ClipID>new</ClipID><TimeDelay>3</TimeDelay>");
    QCOMPARE(bench->state(Channel::B), QStringLiteral("timedelay 3 1X"));
    bench->advance(3);
    QCOMPARE(bench->state(Channel::B), QStringLiteral("timedelay 1 1X"));
    // What is older than the clip is long was overwritten: the oldest field is shown.
    bench->ask("go_live", "<Channel>C</Channel><ClipID>new</ClipID><TimeDelay>50</TimeDelay>");
    bench->advance(3);
    QCOMPARE(bench->state(), QStringLiteral("record 2 1X"));
    QCOMPARE(bench->state(Channel::C), QStringLiteral("timedelay 3 1X"));
}

void TestVeskRecording::refuses_to_follow_what_is_not_recorded()
{
    bench->clip("old", 5);
    QCOMPARE(bench->ask("go_live", "<Channel>B</Channel><ClipID>old</ClipID>"),
        QStringLiteral("general: \"old\" is not being recorded"));
    QCOMPARE(bench->ask("go_live", "<Channel>B</Channel><ClipID>none</ClipID>"),
        QStringLiteral("clipnotfound: There is no clip \"none\""));
    record();
    QCOMPARE(bench->ask("go_live", "<Channel>A</Channel><ClipID>new</ClipID>"),
        QStringLiteral("general: \"new\" is recorded on this channel"));
    QCOMPARE(bench->ask("go_live", "<Channel>B</Channel><ClipID>new</ClipID><Angle>2</Angle>"),
        QStringLiteral("general: \"new\" has no angle 2"));
}

void TestVeskRecording::inserts_from_its_position_to_the_end()
{
    bench->clip("old", 10);
    bench->ask(
        "cue_clip", "<Channel>A</Channel><ClipID>old</ClipID><GotoPosition>6</GotoPosition>");
    bench->advance(2);
    bench->told();
    QCOMPARE(bench->ask("insert_edit", "<Channel>A</Channel><SonyEditMask>7</SonyEditMask>"), ok);
    QCOMPARE(bench->state(), QStringLiteral("insert 6 1X"));
    QCOMPARE(bench->channel(Channel::A).edit_mask(), static_cast<unsigned short>(7));
    bench->advance(3);
    QCOMPARE(bench->state(), QStringLiteral("insert 9 1X"));
    QCOMPARE(bench->told(), QStringList());
    bench->advance(1);
    QCOMPARE(bench->state(), QStringLiteral("stop 9 0X"));
    QCOMPARE(bench->told(),
        QStringList(
            QStringLiteral("clip_change <clip_changed><ClipID>old</ClipID></clip_changed>")));
    QCOMPARE(bench->layer().clip()->length(), 10U);
}

void TestVeskRecording::stops_an_insert()
{
    bench->clip("old", 10);
    bench->ask("cue_clip", "<Channel>A</Channel><ClipID>old</ClipID>");
    bench->advance(2);
    bench->ask("insert_edit", "<Channel>A</Channel><SonyEditMask>7</SonyEditMask>");
    bench->advance(2);
    bench->told();
    bench->ask("stop", "<Channel>A</Channel>");
    QCOMPARE(bench->state(), QStringLiteral("stop 2 0X"));
    QCOMPARE(bench->told().size(), 1);
}

void TestVeskRecording::refuses_to_insert_into_a_read_only_clip()
{
    QCOMPARE(bench->ask("insert_edit", "<Channel>A</Channel><SonyEditMask>7</SonyEditMask>"),
        QStringLiteral("general: Channel A has no clip loaded"));
    bench->clip("old", 10)->info.set_read_only_content(true);
    bench->ask("cue_clip", "<Channel>A</Channel><ClipID>old</ClipID>");
    QCOMPARE(bench->ask("insert_edit", "<Channel>A</Channel><SonyEditMask>7</SonyEditMask>"),
        QStringLiteral("general: Channel A has a read-only clip"));
}

QTEST_GUILESS_MAIN(TestVeskRecording)
#include "tst_vesk_recording.moc"
