// SPDX-License-Identifier: Apache-2.0
#include "tests/sim/model_bench.h"

#include <QTest>

using VCTP3::Channel;
using VCTP3::ChannelReportType;

namespace {

QString const ok = QStringLiteral("ok");

unsigned int bit(ChannelReportType group)
{
    return 1U << static_cast<unsigned int>(group);
}

} // namespace

/// Playing of one layer, as the transport commands drive it.
class TestVeskLayer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void cues_for_two_fields_and_then_stands();
    void cues_at_the_position_it_is_given_data();
    void cues_at_the_position_it_is_given();
    void plays_when_cued_if_told_so_before();
    void plays_at_each_speed_data();
    void plays_at_each_speed();
    void plays_at_the_natural_speed_without_a_speed();
    void stands_at_speed_zero();
    void stands_on_the_last_field_at_the_end_data();
    void stands_on_the_last_field_at_the_end();
    void stops_at_the_out_point();
    void plays_on_from_behind_the_out_point();
    void jogs_within_the_clip();
    void goes_to_positions_within_the_clip();
    void goes_to_a_position_and_plays_on();
    void loops_as_its_mode_says_data();
    void loops_as_its_mode_says();
    void loops_between_the_points_of_the_clip();
    void does_not_loop_through_an_empty_range();
    void turns_the_speed_that_it_reports();
    void plays_the_bed_by_itself();
    void unloads_to_idle();
    void shows_the_input_without_a_clip();
    void follows_a_trim_of_its_clip();
    void tells_what_changed();

private:
    /// Cues on channel A and lets it become ready.
    void cue(char const *more = "");

    std::unique_ptr<ModelBench> bench;
};

void TestVeskLayer::init()
{
    bench = std::make_unique<ModelBench>();
    bench->clip("ten", 10);
}

void TestVeskLayer::cleanup()
{
    bench.reset();
}

void TestVeskLayer::cue(char const *more)
{
    QByteArray const text = QByteArray("<Channel>A</Channel><ClipID>ten</ClipID>") + more;
    QCOMPARE(bench->ask("cue_clip", text.constData()), ok);
    bench->advance(2);
}

void TestVeskLayer::cues_for_two_fields_and_then_stands()
{
    QCOMPARE(bench->ask("cue_clip", "<Channel>A</Channel><ClipID>ten</ClipID>"), ok);
    QCOMPARE(bench->state(), QStringLiteral("cueing 0 0X"));
    bench->advance(1);
    QCOMPARE(bench->state(), QStringLiteral("cueing 0 0X"));
    bench->advance(1);
    QCOMPARE(bench->state(), QStringLiteral("stop 0 0X"));
    QCOMPARE(bench->layer().clip()->id(), AString::l1("ten"));
}

void TestVeskLayer::cues_at_the_position_it_is_given_data()
{
    QTest::addColumn<QByteArray>("more");
    QTest::addColumn<unsigned int>("position");
    QTest::newRow("start") << QByteArray() << 0U;
    QTest::newRow("position") << QByteArray("<GotoPosition>4</GotoPosition>") << 4U;
    QTest::newRow("last") << QByteArray("<GotoPosition>9</GotoPosition>") << 9U;
    QTest::newRow("beyond") << QByteArray("<GotoPosition>10</GotoPosition>") << 9U;
    QTest::newRow("loop in") << QByteArray("<LoopIn>3</LoopIn>") << 3U;
    QTest::newRow("position before loop in")
        << QByteArray("<GotoPosition>1</GotoPosition><LoopIn>3</LoopIn>") << 1U;
}

void TestVeskLayer::cues_at_the_position_it_is_given()
{
    QFETCH(QByteArray, more);
    cue(more.constData());
    QTEST(bench->layer().position(), "position");
}

void TestVeskLayer::plays_when_cued_if_told_so_before()
{
    bench->ask("cue_clip", "<Channel>A</Channel><ClipID>ten</ClipID>");
    QCOMPARE(bench->ask("play", "<Channel>A</Channel><Speed>2X</Speed>"), ok);
    QCOMPARE(bench->state(), QStringLiteral("cueing 0 0X"));
    bench->advance(2);
    QCOMPARE(bench->state(), QStringLiteral("play 0 2X"));
    bench->advance(1);
    QCOMPARE(bench->state(), QStringLiteral("play 2 2X"));
}

void TestVeskLayer::plays_at_each_speed_data()
{
    QTest::addColumn<QByteArray>("speed");
    QTest::addColumn<unsigned int>("from");
    QTest::addColumn<QList<unsigned int>>("seen");
    using Fields = QList<unsigned int>;
    QTest::newRow("1X") << QByteArray("1X") << 0U << Fields{1, 2, 3, 4};
    QTest::newRow("2.5X") << QByteArray("2.5X") << 0U << Fields{2, 5, 7};
    QTest::newRow("0.5X") << QByteArray("0.5X") << 3U << Fields{3, 4, 4, 5};
    QTest::newRow("-1X") << QByteArray("-1X") << 5U << Fields{4, 3, 2, 1, 0};
    QTest::newRow("-0.5X") << QByteArray("-0.5X") << 2U << Fields{1, 1, 0, 0};
    QTest::newRow("-2.5X") << QByteArray("-2.5X") << 9U << Fields{6, 4, 1};
    QTest::newRow("raw") << QByteArray("131072") << 1U << Fields{3, 5, 7};
}

void TestVeskLayer::plays_at_each_speed()
{
    QFETCH(QByteArray, speed);
    QFETCH(unsigned int, from);
    QFETCH(QList<unsigned int>, seen);
    cue(("<GotoPosition>" + QByteArray::number(from) + "</GotoPosition>").constData());
    QByteArray const play = "<Channel>A</Channel><Speed>" + speed + "</Speed>";
    QCOMPARE(bench->ask("play", play.constData()), ok);
    QVERIFY(bench->layer().status() == VCTP3::ChannelStatus::play);
    for (unsigned int position : seen) {
        bench->advance(1);
        QCOMPARE(bench->layer().position(), position);
    }
    QVERIFY(bench->layer().status() == VCTP3::ChannelStatus::play);
}

void TestVeskLayer::plays_at_the_natural_speed_without_a_speed()
{
    cue();
    bench->ask("play", "<Channel>A</Channel>");
    QCOMPARE(bench->state(), QStringLiteral("play 0 1X"));
    cue("<Speed>0.75X</Speed>");
    bench->ask("play", "<Channel>A</Channel>");
    QCOMPARE(bench->state(), QStringLiteral("play 0 0.75X"));
}

void TestVeskLayer::stands_at_speed_zero()
{
    cue();
    bench->ask("play", "<Channel>A</Channel>");
    bench->advance(3);
    QCOMPARE(bench->ask("play", "<Channel>A</Channel><Speed>0X</Speed>"), ok);
    QCOMPARE(bench->state(), QStringLiteral("stop 3 0X"));
    bench->advance(1);
    QCOMPARE(bench->state(), QStringLiteral("stop 3 0X"));
}

void TestVeskLayer::stands_on_the_last_field_at_the_end_data()
{
    QTest::addColumn<QByteArray>("play");
    QTest::addColumn<unsigned int>("fields");
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("after");
    QTest::newRow("1X") << QByteArray("<Speed>1X</Speed>") << 4U << QStringLiteral("play 9 1X")
                        << QStringLiteral("stop 9 0X");
    QTest::newRow("2.5X") << QByteArray("<Speed>2.5X</Speed>") << 1U
                          << QStringLiteral("play 7 2.5X") << QStringLiteral("stop 9 0X");
    QTest::newRow("-1X") << QByteArray("<Speed>-1X</Speed>") << 5U << QStringLiteral("play 0 -1X")
                         << QStringLiteral("stop 0 0X");
    QTest::newRow("-3X") << QByteArray("<Speed>-3X</Speed>") << 1U << QStringLiteral("play 2 -3X")
                         << QStringLiteral("stop 0 0X");
}

void TestVeskLayer::stands_on_the_last_field_at_the_end()
{
    QFETCH(QByteArray, play);
    QFETCH(unsigned int, fields);
    cue("<GotoPosition>5</GotoPosition>");
    bench->ask("play", ("<Channel>A</Channel>" + play).constData());
    bench->advance(fields);
    QTEST(bench->state(), "before");
    bench->advance(2);
    QTEST(bench->state(), "after");
}

void TestVeskLayer::stops_at_the_out_point()
{
    cue("<ClipPosition>3</ClipPosition>");
    bench->ask("play", "<Channel>A</Channel>");
    bench->advance(5);
    QCOMPARE(bench->state(), QStringLiteral("stop 2 0X"));

    QCOMPARE(bench->ask("set_out_point", "<Channel>A</Channel><ClipPosition>6</ClipPosition>"), ok);
    bench->ask("play", "<Channel>A</Channel>");
    bench->advance(9);
    QCOMPARE(bench->state(), QStringLiteral("stop 5 0X"));

    QCOMPARE(bench->ask("clear_out_point", "<Channel>A</Channel>"), ok);
    bench->ask("play", "<Channel>A</Channel>");
    bench->advance(9);
    QCOMPARE(bench->state(), QStringLiteral("stop 9 0X"));
}

void TestVeskLayer::plays_on_from_behind_the_out_point()
{
    cue("<ClipPosition>3</ClipPosition><GotoPosition>4</GotoPosition>");
    bench->ask("play", "<Channel>A</Channel>");
    bench->advance(3);
    QCOMPARE(bench->state(), QStringLiteral("play 7 1X"));
    bench->ask("play", "<Channel>A</Channel><Speed>-1X</Speed>");
    bench->advance(6);
    QCOMPARE(bench->state(), QStringLiteral("play 1 -1X"));
}

void TestVeskLayer::jogs_within_the_clip()
{
    cue();
    bench->ask("play", "<Channel>A</Channel>");
    bench->advance(2);
    QCOMPARE(bench->ask("jog", "<Channel>A</Channel><JogDistance>3</JogDistance>"), ok);
    QCOMPARE(bench->state(), QStringLiteral("stop 5 0X"));
    bench->ask("jog", "<Channel>A</Channel><JogDistance>-4</JogDistance>");
    QCOMPARE(bench->state(), QStringLiteral("stop 1 0X"));
    bench->ask("jog", "<Channel>A</Channel><JogDistance>-2147483648</JogDistance>");
    QCOMPARE(bench->state(), QStringLiteral("stop 0 0X"));
    bench->ask("jog", "<Channel>A</Channel><JogDistance>2147483647</JogDistance>");
    QCOMPARE(bench->state(), QStringLiteral("stop 9 0X"));
}

void TestVeskLayer::goes_to_positions_within_the_clip()
{
    cue();
    bench->ask("play", "<Channel>A</Channel>");
    QCOMPARE(bench->ask("gotocmd", "<Channel>A</Channel><GotoPosition>7</GotoPosition>"), ok);
    QCOMPARE(bench->state(), QStringLiteral("stop 7 0X"));
    bench->ask("gotocmd", "<Channel>A</Channel><GotoPosition>4294967295</GotoPosition>");
    QCOMPARE(bench->state(), QStringLiteral("stop 9 0X"));
}

void TestVeskLayer::goes_to_a_position_and_plays_on()
{
    cue("<Speed>0.5X</Speed>");
    QCOMPARE(bench->ask("go_at", "<Channel>A</Channel><GotoPosition>5</GotoPosition>"), ok);
    QCOMPARE(bench->state(), QStringLiteral("play 5 0.5X"));
    bench->ask("go_at", "<Channel>A</Channel><GotoPosition>99</GotoPosition><Speed>-1X</Speed>");
    bench->advance(2);
    QCOMPARE(bench->state(), QStringLiteral("play 7 -1X"));
}

void TestVeskLayer::loops_as_its_mode_says_data()
{
    QTest::addColumn<QByteArray>("mode");
    QTest::addColumn<QByteArray>("points");
    QTest::addColumn<QByteArray>("speed");
    QTest::addColumn<QList<unsigned int>>("seen");
    using Fields = QList<unsigned int>;
    QByteArray const both = "<LoopIn>6</LoopIn><LoopOut>9</LoopOut>";
    QByteArray const in = "<LoopIn>6</LoopIn>";
    QByteArray const out = "<LoopOut>9</LoopOut>";
    QTest::newRow("off") << QByteArray("off") << both << QByteArray("1X") << Fields{8, 9, 9, 9};
    QTest::newRow("loop") << QByteArray("loop") << both << QByteArray("1X") << Fields{8, 9, 0, 1};
    QTest::newRow("loop back") << QByteArray("loop") << both << QByteArray("-3X")
                               << Fields{4, 1, 8, 5};
    QTest::newRow("loopto") << QByteArray("loopto") << both << QByteArray("1X")
                            << Fields{8, 6, 7, 8};
    QTest::newRow("loopto back") << QByteArray("loopto") << both << QByteArray("-1X")
                                 << Fields{6, 8, 7, 6};
    QTest::newRow("loopto 2.5") << QByteArray("loopto") << both << QByteArray("2.5X")
                                << Fields{6, 6, 8, 8};
    QTest::newRow("loopto from in")
        << QByteArray("loopto") << in << QByteArray("1X") << Fields{8, 9, 6, 7};
    QTest::newRow("loopto up to out")
        << QByteArray("loopto") << out << QByteArray("1X") << Fields{8, 0, 1, 2};
    QTest::newRow("pingpong") << QByteArray("pingpong") << both << QByteArray("1X")
                              << Fields{8, 9, 8, 7};
    QTest::newRow("pingpong back")
        << QByteArray("pingpong") << both << QByteArray("-4X") << Fields{3, 1, 5, 9};
    QTest::newRow("pingpongto") << QByteArray("pingpongto") << both << QByteArray("1X")
                                << Fields{8, 7, 6, 7};
    QTest::newRow("pingpongto back")
        << QByteArray("pingpongto") << both << QByteArray("-1X") << Fields{6, 7, 8, 7};
    QTest::newRow("auto with both")
        << QByteArray("auto") << both << QByteArray("1X") << Fields{8, 6, 7, 8};
    QTest::newRow("auto with one")
        << QByteArray("auto") << in << QByteArray("1X") << Fields{8, 9, 9, 9};
    QTest::newRow("record while playing")
        << QByteArray("record") << both << QByteArray("1X") << Fields{8, 9, 9, 9};
}

void TestVeskLayer::loops_as_its_mode_says()
{
    QFETCH(QByteArray, mode);
    QFETCH(QByteArray, points);
    QFETCH(QByteArray, speed);
    QFETCH(QList<unsigned int>, seen);
    cue("<GotoPosition>7</GotoPosition>");
    bench->ask("set_loop", ("<Channel>A</Channel><Loop>" + mode + "</Loop>").constData());
    if (points.contains("LoopIn"))
        bench->ask("set_loop_in", "<Channel>A</Channel><LoopIn>6</LoopIn>");
    if (points.contains("LoopOut"))
        bench->ask("set_loop_out", "<Channel>A</Channel><LoopOut>9</LoopOut>");
    bench->ask("play", ("<Channel>A</Channel><Speed>" + speed + "</Speed>").constData());
    for (unsigned int position : seen) {
        bench->advance(1);
        QCOMPARE(bench->layer().position(), position);
    }
}

void TestVeskLayer::loops_between_the_points_of_the_clip()
{
    VeskClip *clip = bench->world.clips.find(AString::l1("ten"));
    clip->info.loop = VCTP3::Loop::loopto;
    clip->info.loop_in = 2;
    clip->info.loop_out = 4;
    cue();
    bench->ask("play", "<Channel>A</Channel>");
    bench->advance(5);
    QCOMPARE(bench->layer().position(), 3U);

    // Points of the command go before those of the clip, one by one.
    cue("<LoopOut>5</LoopOut>");
    QVERIFY(bench->layer().loop_in() == AOption<unsigned int>(2));
    QVERIFY(bench->layer().loop_out() == AOption<unsigned int>(5));
    bench->ask("clear_loop_in", "<Channel>A</Channel>");
    bench->ask("clear_loop_out", "<Channel>A</Channel>");
    QVERIFY(!bench->layer().loop_in() && !bench->layer().loop_out());
}

void TestVeskLayer::does_not_loop_through_an_empty_range()
{
    cue("<Loop>loopto</Loop><LoopIn>5</LoopIn><LoopOut>5</LoopOut>");
    bench->ask("play", "<Channel>A</Channel>");
    bench->advance(10);
    QCOMPARE(bench->state(), QStringLiteral("stop 9 0X"));
}

void TestVeskLayer::turns_the_speed_that_it_reports()
{
    cue("<Loop>pingpong</Loop><GotoPosition>9</GotoPosition>");
    bench->ask("play", "<Channel>A</Channel><Speed>1.5X</Speed>");
    bench->channel(Channel::A).take_changes();
    bench->advance(1);
    QCOMPARE(bench->layer().speed(), -98304);
    QVERIFY(bench->channel(Channel::A).take_changes() & bit(ChannelReportType::speed));
    bench->advance(1);
    QVERIFY(!(bench->channel(Channel::A).take_changes() & bit(ChannelReportType::speed)));
}

void TestVeskLayer::plays_the_bed_by_itself()
{
    cue();
    bench->ask("cue_clip", "<Channel>A</Channel><ClipID>ten</ClipID><Layer>bed</Layer>");
    bench->advance(2);
    QCOMPARE(bench->ask("play", "<Channel>A</Channel><Layer>bed</Layer>"), ok);
    bench->advance(4);
    QCOMPARE(bench->bed(), QStringLiteral("play 4 1X"));
    QCOMPARE(bench->state(), QStringLiteral("stop 0 0X"));
    bench->ask("jog", "<Channel>A</Channel><JogDistance>1</JogDistance><Layer>bed</Layer>");
    QCOMPARE(bench->bed(), QStringLiteral("stop 5 0X"));
    bench->ask("go_at",
        "<Channel>A</Channel><GotoPosition>2</GotoPosition><Speed>1X</Speed><Layer>bed</Layer>");
    QCOMPARE(bench->bed(), QStringLiteral("play 2 1X"));
    bench->ask("stop", "<Channel>A</Channel><Layer>bed</Layer>");
    QCOMPARE(bench->bed(), QStringLiteral("stop 2 0X"));
    bench->ask("set_loop", "<Channel>A</Channel><Loop>loop</Loop><Layer>bed</Layer>");
    QVERIFY(bench->layer().loop() == VCTP3::Loop::off);
    bench->ask("unload", "<Channel>A</Channel><Layer>bed</Layer>");
    QCOMPARE(bench->bed(), QStringLiteral("idle 0 0X"));
    QVERIFY(bench->layer().clip());
}

void TestVeskLayer::unloads_to_idle()
{
    cue("<Loop>loop</Loop><Speed>2X</Speed><GotoPosition>5</GotoPosition>");
    bench->ask("play", "<Channel>A</Channel>");
    QCOMPARE(bench->ask("unload", "<Channel>A</Channel>"), ok);
    QCOMPARE(bench->state(), QStringLiteral("idle 0 0X"));
    QVERIFY(!bench->layer().clip());
    QVERIFY(bench->layer().loop() == VCTP3::Loop::off);
    QCOMPARE(bench->layer().natural_speed(), 65536);
    QCOMPARE(bench->ask("play", "<Channel>A</Channel>"),
        QStringLiteral("general: Channel A has no clip loaded"));
    QCOMPARE(bench->ask("stop", "<Channel>A</Channel>"), ok);
    QCOMPARE(bench->state(), QStringLiteral("idle 0 0X"));
}

void TestVeskLayer::shows_the_input_without_a_clip()
{
    cue();
    QVERIFY(bench->ask("go_live", "<Channel>A</Channel><TimeDelay>3</TimeDelay>") != ok);
    QCOMPARE(bench->ask("go_live", "<Channel>A</Channel>"), ok);
    QCOMPARE(bench->state(), QStringLiteral("play 0 1X"));
    QVERIFY(!bench->layer().clip());
    bench->channel(Channel::A).take_changes();
    bench->advance(1);
    QCOMPARE(bench->channel(Channel::A).take_changes(),
        bit(ChannelReportType::timecode) | bit(ChannelReportType::peak));
    bench->ask("stop", "<Channel>A</Channel>");
    QCOMPARE(bench->state(), QStringLiteral("idle 0 0X"));
}

void TestVeskLayer::follows_a_trim_of_its_clip()
{
    cue("<GotoPosition>9</GotoPosition>");
    bench->ask("modify_clip_attributes",
        "<ClipID>ten</ClipID><ClipAttrChange><TrimEnd>4</TrimEnd></ClipAttrChange>");
    QCOMPARE(bench->state(), QStringLiteral("stop 5 0X"));
}

void TestVeskLayer::tells_what_changed()
{
    VeskChannel &channel = bench->channel(Channel::A);
    QCOMPARE(channel.take_changes(), 0U);
    cue();
    QCOMPARE(channel.take_changes(),
        bit(ChannelReportType::status) | bit(ChannelReportType::clipid)
            | bit(ChannelReportType::info) | bit(ChannelReportType::timecode));
    bench->ask("play", "<Channel>A</Channel>");
    QCOMPARE(
        channel.take_changes(), bit(ChannelReportType::status) | bit(ChannelReportType::speed));
    bench->advance(1);
    QCOMPARE(
        channel.take_changes(), bit(ChannelReportType::timecode) | bit(ChannelReportType::peak));
    bench->ask("stop", "<Channel>A</Channel>");
    QCOMPARE(channel.take_changes(),
        bit(ChannelReportType::status) | bit(ChannelReportType::speed)
            | bit(ChannelReportType::peak));
    bench->advance(1);
    QCOMPARE(channel.take_changes(), 0U);
    bench->ask("gotocmd", "<Channel>A</Channel><GotoPosition>4</GotoPosition>");
    QCOMPARE(channel.take_changes(), bit(ChannelReportType::timecode));
    bench->ask("set_loop", "<Channel>A</Channel><Loop>loop</Loop>");
    QCOMPARE(channel.take_changes(), bit(ChannelReportType::info));
    bench->ask("cue_clip", "<Channel>A</Channel><ClipID>ten</ClipID><Layer>bed</Layer>");
    QVERIFY(channel.take_changes() & bit(ChannelReportType::aux_audio_status));
    bench->ask("play", "<Channel>A</Channel><Layer>bed</Layer>");
    bench->advance(3);
    QCOMPARE(channel.take_changes(),
        bit(ChannelReportType::aux_audio_status) | bit(ChannelReportType::aux_audio_speed)
            | bit(ChannelReportType::aux_audio_timecode) | bit(ChannelReportType::aux_audio_peak));
}

QTEST_GUILESS_MAIN(TestVeskLayer)
#include "tst_vesk_layer.moc"
