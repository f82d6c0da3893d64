// SPDX-License-Identifier: Apache-2.0
#include "tests/sim/model_bench.h"

#include <QTest>

using VCTP3::Channel;

namespace {

QString const ok = QStringLiteral("ok");

} // namespace

/// What stands behind the clip that plays: precued clips and takes.
class TestVeskChannel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void waits_for_an_explicit_switch();
    void starts_when_its_condition_holds_data();
    void starts_when_its_condition_holds();
    void starts_at_once_when_nothing_is_loaded();
    void starts_precued_clips_one_after_the_other();
    void starts_as_it_was_precued();
    void forgets_what_was_precued();
    void has_room_for_sixteen();
    void refuses_what_cannot_be_precued();
    void holds_precued_clips();

    void takes_at_the_speed_it_is_told_data();
    void takes_at_the_speed_it_is_told();
    void is_in_transition_while_it_dissolves();
    void refuses_to_take_without_a_precued_clip();

private:
    /// "first" plays on channel A from its field 5.
    void play_first();
    QString loaded();

    std::unique_ptr<ModelBench> bench;
};

void TestVeskChannel::init()
{
    bench = std::make_unique<ModelBench>();
    bench->clip("first", 10);
    bench->clip("second", 20);
    bench->clip("third", 30);
}

void TestVeskChannel::cleanup()
{
    bench.reset();
}

void TestVeskChannel::play_first()
{
    bench->ask(
        "cue_clip", "<Channel>A</Channel><ClipID>first</ClipID><GotoPosition>5</GotoPosition>");
    bench->advance(2);
    QCOMPARE(bench->ask("play", "<Channel>A</Channel>"), ok);
}

QString TestVeskChannel::loaded()
{
    return QString(bench->layer().clip()->id());
}

void TestVeskChannel::waits_for_an_explicit_switch()
{
    play_first();
    QCOMPARE(bench->ask("precue", "<Channel>A</Channel><ClipID>second</ClipID>"), ok);
    QCOMPARE(bench->channel(Channel::A).precue_count(), 1U);
    bench->advance(20);
    QCOMPARE(loaded(), QStringLiteral("first"));
    bench->ask("stop", "<Channel>A</Channel>");
    QCOMPARE(loaded(), QStringLiteral("first"));
    QCOMPARE(bench->ask("precue_activate", "<Channel>A</Channel>"), ok);
    QCOMPARE(loaded(), QStringLiteral("second"));
    QCOMPARE(bench->state(), QStringLiteral("play 0 1X"));
    QCOMPARE(bench->channel(Channel::A).precue_count(), 0U);
    QCOMPARE(bench->ask("precue_activate", "<Channel>A</Channel>"),
        QStringLiteral("general: Channel A has no precued clip"));
}

void TestVeskChannel::starts_when_its_condition_holds_data()
{
    QTest::addColumn<QByteArray>("condition");
    QTest::addColumn<QString>("at_once");
    QTest::addColumn<QString>("when_stopped");
    QTest::addColumn<QString>("at_the_end");
    QString const first = QStringLiteral("first");
    QString const second = QStringLiteral("second");
    QTest::newRow("explicit") << QByteArray("explicit_switch") << first << first << first;
    QTest::newRow("stops") << QByteArray("previous_stops") << first << second << second;
    QTest::newRow("end") << QByteArray("end_of_clip") << first << first << second;
    QTest::newRow("end 2") << QByteArray("end_of_clip2") << first << first << second;
    QTest::newRow("immediate") << QByteArray("immediate") << second << second << second;
}

void TestVeskChannel::starts_when_its_condition_holds()
{
    QFETCH(QByteArray, condition);
    QByteArray const precue = "<Channel>A</Channel><ClipID>second</ClipID><PrecueCondition>"
        + condition + "</PrecueCondition>";
    play_first();
    QCOMPARE(bench->ask("precue", precue.constData()), ok);
    QTEST(loaded(), "at_once");
    bench->ask("stop", "<Channel>A</Channel>");
    QTEST(loaded(), "when_stopped");

    bench->ask("unload", "<Channel>A</Channel>");
    bench->ask("precue_clear", "<Channel>A</Channel>");
    play_first();
    bench->ask("precue", precue.constData());
    bench->advance(5);
    QTEST(loaded(), "at_the_end");
}

void TestVeskChannel::starts_at_once_when_nothing_is_loaded()
{
    bench->ask("precue",
        "<Channel>A</Channel><ClipID>second</ClipID><PrecueCondition>end_of_clip</"
        "PrecueCondition>");
    QCOMPARE(bench->state(), QStringLiteral("play 0 1X"));
    bench->ask("precue", "<Channel>B</Channel><ClipID>second</ClipID>");
    QCOMPARE(bench->state(Channel::B), QStringLiteral("idle 0 0X"));
}

void TestVeskChannel::starts_precued_clips_one_after_the_other()
{
    play_first();
    bench->ask("precue",
        "<Channel>A</Channel><ClipID>second</ClipID><PrecueCondition>end_of_clip</"
        "PrecueCondition>");
    bench->ask("precue",
        "<Channel>A</Channel><ClipID>third</ClipID><PrecueCondition>immediate</PrecueCondition>");
    QCOMPARE(loaded(), QStringLiteral("first"));
    bench->advance(5);
    QCOMPARE(loaded(), QStringLiteral("second"));
    bench->advance(1);
    QCOMPARE(loaded(), QStringLiteral("third"));
}

void TestVeskChannel::starts_as_it_was_precued()
{
    play_first();
    bench->ask("precue",
        "<Channel>A</Channel><ClipID>second</ClipID><GotoPosition>4</GotoPosition>"
        "<ClipLength>3</ClipLength><LoopIn>1</LoopIn><LoopOut>9</LoopOut><Loop>off</Loop>");
    bench->ask("precue_activate", "<Channel>A</Channel>");
    QCOMPARE(bench->state(), QStringLiteral("play 4 1X"));
    QVERIFY(bench->layer().loop_in() == AOption<unsigned int>(1));
    QVERIFY(bench->layer().loop_out() == AOption<unsigned int>(9));
    bench->advance(9);
    QCOMPARE(bench->state(), QStringLiteral("stop 6 0X"));
}

void TestVeskChannel::forgets_what_was_precued()
{
    play_first();
    bench->ask("precue", "<Channel>A</Channel><ClipID>second</ClipID>");
    bench->ask("precue", "<Channel>A</Channel><ClipID>third</ClipID>");
    QCOMPARE(bench->ask("precue_clear", "<Channel>A</Channel>"), ok);
    QCOMPARE(bench->channel(Channel::A).precue_count(), 0U);
    QCOMPARE(bench->ask("precue_clear", "<Channel>A</Channel>"), ok);
}

void TestVeskChannel::has_room_for_sixteen()
{
    for (int number = 0; number < 16; ++number)
        QCOMPARE(bench->ask("precue", "<Channel>A</Channel><ClipID>second</ClipID>"), ok);
    QCOMPARE(bench->ask("precue", "<Channel>A</Channel><ClipID>second</ClipID>"),
        QStringLiteral("general: Channel A has no room for a precue"));
    QCOMPARE(bench->channel(Channel::A).precue_count(), 16U);
}

void TestVeskChannel::refuses_what_cannot_be_precued()
{
    QCOMPARE(bench->ask("precue", "<Channel>A</Channel><ClipID>none</ClipID>"),
        QStringLiteral("clipnotfound: There is no clip \"none\""));
    QCOMPARE(bench->ask("precue", "<Channel>A</Channel><ClipID>second</ClipID><Angle>2</Angle>"),
        QStringLiteral("general: \"second\" has no angle 2"));
}

void TestVeskChannel::holds_precued_clips()
{
    bench->ask("precue", "<Channel>A</Channel><ClipID>second</ClipID>");
    QCOMPARE(bench->ask("delete_clip", "<ClipID>second</ClipID>"),
        QStringLiteral("general: \"second\" is loaded on a channel"));
    bench->ask("precue_clear", "<Channel>A</Channel>");
    QCOMPARE(bench->ask("delete_clip", "<ClipID>second</ClipID>"), ok);
}

void TestVeskChannel::takes_at_the_speed_it_is_told_data()
{
    QTest::addColumn<QByteArray>("follow");
    QTest::addColumn<QString>("from_play");
    QTest::addColumn<QString>("from_stop");
    QString const stop = QStringLiteral("stop 0 0X");
    QString const one = QStringLiteral("play 0 1X");
    QString const half = QStringLiteral("play 0 0.5X");
    QTest::newRow("none") << QByteArray("<FollowSpeed>none</FollowSpeed>") << stop << stop;
    QTest::newRow("oneX") << QByteArray("<FollowSpeed>oneX</FollowSpeed>") << one << one;
    QTest::newRow("follow") << QByteArray("<FollowSpeed>follow</FollowSpeed>") << half << stop;
    QTest::newRow("smart") << QByteArray("<FollowSpeed>smart</FollowSpeed>") << half << one;
    QTest::newRow("not told") << QByteArray() << half << one;
}

void TestVeskChannel::takes_at_the_speed_it_is_told()
{
    QFETCH(QByteArray, follow);
    QByteArray const take = "<Channel>A</Channel>" + follow;
    play_first();
    bench->ask("play", "<Channel>A</Channel><Speed>0.5X</Speed>");
    bench->ask("precue", "<Channel>A</Channel><ClipID>second</ClipID>");
    QCOMPARE(bench->ask("take", take.constData()), ok);
    QTEST(bench->state(), "from_play");
    QVERIFY(!bench->channel(Channel::A).in_transition());

    play_first();
    bench->ask("stop", "<Channel>A</Channel>");
    bench->ask("precue", "<Channel>A</Channel><ClipID>second</ClipID>");
    QCOMPARE(bench->ask("take", take.constData()), ok);
    QTEST(bench->state(), "from_stop");
}

void TestVeskChannel::is_in_transition_while_it_dissolves()
{
    unsigned int const info = 1U << static_cast<unsigned int>(VCTP3::ChannelReportType::info);
    VeskChannel &channel = bench->channel(Channel::A);
    play_first();
    bench->ask("precue", "<Channel>A</Channel><ClipID>second</ClipID>");
    bench->ask("take",
        "<Channel>A</Channel><TransitionType>dissolve</TransitionType>"
        "<TransitionDuration>3</TransitionDuration>");
    QVERIFY(channel.in_transition());
    QVERIFY(channel.take_changes() & info);
    bench->advance(2);
    QVERIFY(channel.in_transition());
    QVERIFY(!(channel.take_changes() & info));
    bench->advance(1);
    QVERIFY(!channel.in_transition());
    QVERIFY(channel.take_changes() & info);

    bench->ask("precue", "<Channel>A</Channel><ClipID>third</ClipID>");
    bench->ask("take", "<Channel>A</Channel><TransitionType>dissolve</TransitionType>");
    bench->advance(29);
    QVERIFY(channel.in_transition());
    bench->advance(1);
    QVERIFY(!channel.in_transition());
}

void TestVeskChannel::refuses_to_take_without_a_precued_clip()
{
    play_first();
    QCOMPARE(bench->ask("take", "<Channel>A</Channel>"),
        QStringLiteral("general: Channel A has no precued clip"));
    bench->ask("precue", "<Channel>A</Channel><ClipID>second</ClipID>");
    QCOMPARE(bench->ask("take", "<Channel>A</Channel><Layer>bed</Layer>"),
        QStringLiteral("general: Channel A has no precued clip on its bed"));
    QCOMPARE(loaded(), QStringLiteral("first"));
}

QTEST_GUILESS_MAIN(TestVeskChannel)
#include "tst_vesk_channel.moc"
