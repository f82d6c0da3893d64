// SPDX-License-Identifier: Apache-2.0
#include "sim/vesk/vesk_channel_reports.h"
#include "sim/vesk/vesk_demo_clips.h"
#include "tests/sim/model_bench.h"

#include <QTest>

#include <cstdlib>
#include <new>

using VCTP3::Channel;
using Group = VCTP3::ChannelReportType;

namespace {

std::size_t allocations = 0;

} // namespace

void *operator new(std::size_t size)
{
    ++allocations;
    void *const memory = std::malloc(size ? size : 1);
    if (!memory)
        std::abort();
    return memory;
}

void operator delete(void *memory) noexcept
{
    std::free(memory);
}

void operator delete(void *memory, std::size_t) noexcept
{
    std::free(memory);
}

/// All channels together, and what they report.
class TestVeskChannels : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void reports_the_state_of_a_channel();
    void reports_the_state_of_the_bed();
    void reports_an_idle_channel();
    void reports_nothing_for_lists_and_chases();
    void informs_of_what_is_loaded();
    void informs_of_the_channel();
    void informs_of_the_owner_data();
    void informs_of_the_owner();
    void shows_the_house_timecode_of_the_input();

    void makes_levels_from_clip_and_position();
    void shifts_levels_by_the_gain_data();
    void shifts_levels_by_the_gain();
    void is_silent_when_nothing_moves();

    void empties_all_channels_on_a_restart();
    void allocates_nothing_while_fields_pass();
    void fills_banks_with_demo_clips();

private:
    QString report(Group group, Channel channel = Channel::A);

    std::unique_ptr<ModelBench> bench;
};

void TestVeskChannels::init()
{
    bench = std::make_unique<ModelBench>();
    VeskClip *clip = bench->clip("ten", 10);
    clip->info.stripe_timecode.set_position(1000);
}

void TestVeskChannels::cleanup()
{
    bench.reset();
}

QString TestVeskChannels::report(Group group, Channel channel)
{
    XMLTree const element = bench->world.channels.report(channel, group);
    return element.is_null() ? QString() : QString(element.flatten(XMLTree::FlattenCompact));
}

void TestVeskChannels::reports_the_state_of_a_channel()
{
    bench->ask(
        "cue_clip", "<Channel>A</Channel><ClipID>ten</ClipID><GotoPosition>3</GotoPosition>");
    bench->advance(2);
    bench->ask("play", "<Channel>A</Channel><Speed>-0.5X</Speed>");
    bench->advance(2);
    QCOMPARE(report(Group::status),
        QStringLiteral("<channel_status><Channel>A</Channel><ChannelStatus>play</ChannelStatus>"
                       "<ClipID>ten</ClipID></channel_status>"));
    QCOMPARE(report(Group::clipid),
        QStringLiteral("<channel_clipid><Channel>A</Channel><ClipID>ten</ClipID>"
                       "</channel_clipid>"));
    QCOMPARE(report(Group::speed),
        QStringLiteral("<channel_speed><Channel>A</Channel><Speed>-0.5X</Speed></channel_speed>"));
    QCOMPARE(report(Group::timecode),
        QStringLiteral("<channel_timecode><Channel>A</Channel><ClipPosition>2</ClipPosition>"
                       "<DisplayTimecode><Valid>true</Valid>"
                       "<VideoStandard>1080_50i</VideoStandard><FieldNumber>1002</FieldNumber>"
                       "<DropFrameFlag>ndf</DropFrameFlag></DisplayTimecode>"
                       "<InputTimecode><Valid>true</Valid>"
                       "<VideoStandard>1080_50i</VideoStandard><FieldNumber>1800004</FieldNumber>"
                       "<DropFrameFlag>ndf</DropFrameFlag></InputTimecode></channel_timecode>"));
    QVERIFY(
        report(Group::info)
            .startsWith(QStringLiteral("<channel_info><Channel>A</Channel><ChannelInformation>")));
    QVERIFY(report(Group::peak)
                .startsWith(QStringLiteral("<channel_peak><Channel>A</Channel><LevelsString>")));
}

void TestVeskChannels::reports_the_state_of_the_bed()
{
    bench->ask("cue_clip", "<Channel>B</Channel><ClipID>ten</ClipID><Layer>bed</Layer>");
    bench->ask("play", "<Channel>B</Channel><Layer>bed</Layer>");
    bench->advance(6);
    QCOMPARE(report(Group::aux_audio_status, Channel::B),
        QStringLiteral("<channel_aux_audio_status><Channel>B</Channel>"
                       "<ChannelStatus>play</ChannelStatus><ClipID>ten</ClipID>"
                       "</channel_aux_audio_status>"));
    QCOMPARE(report(Group::aux_audio_clipid, Channel::B),
        QStringLiteral("<channel_aux_audio_clipid><Channel>B</Channel><ClipID>ten</ClipID>"
                       "</channel_aux_audio_clipid>"));
    QCOMPARE(report(Group::aux_audio_speed, Channel::B),
        QStringLiteral("<channel_aux_audio_speed><Channel>B</Channel><Speed>1X</Speed>"
                       "</channel_aux_audio_speed>"));
    QCOMPARE(report(Group::aux_audio_timecode, Channel::B),
        QStringLiteral("<channel_aux_audio_timecode><Channel>B</Channel>"
                       "<ClipPosition>4</ClipPosition></channel_aux_audio_timecode>"));
    QVERIFY(report(Group::aux_audio_info, Channel::B)
                .startsWith(QStringLiteral("<channel_aux_audio_info><Channel>B</Channel>"
                                           "<ChannelInformation><ClipID>ten</ClipID>")));
    QVERIFY(report(Group::aux_audio_peak, Channel::B)
                .startsWith(QStringLiteral("<channel_aux_audio_peak><Channel>B</Channel>")));
}

void TestVeskChannels::reports_an_idle_channel()
{
    QCOMPARE(report(Group::status),
        QStringLiteral("<channel_status><Channel>A</Channel><ChannelStatus>idle</ChannelStatus>"
                       "</channel_status>"));
    QCOMPARE(report(Group::clipid),
        QStringLiteral("<channel_clipid><Channel>A</Channel><ClipID /></channel_clipid>"));
    QVERIFY(
        report(Group::timecode)
            .contains(QStringLiteral("<DisplayTimecode><Valid>false</Valid></DisplayTimecode>")));
    QCOMPARE(report(Group::peak),
        QStringLiteral(
            "<channel_peak><Channel>A</Channel><LevelsString>0 0 0 0 0 0 0 0 0 0 0 0 0 0 "
            "0 0</LevelsString></channel_peak>"));
}

void TestVeskChannels::reports_nothing_for_lists_and_chases()
{
    QCOMPARE(report(Group::listplay), QString());
    QCOMPARE(report(Group::chaseplay), QString());
}

void TestVeskChannels::informs_of_what_is_loaded()
{
    bench->clip("iso", 50)->info.set_iso_count(4);
    bench->ask("cue_clip",
        "<Channel>A</Channel><ClipID>iso</ClipID><Loop>loopto</Loop><Angle>3</Angle>"
        "<Playback>f12</Playback><Speed>0.5X</Speed><LoopIn>5</LoopIn><LoopOut>9</LoopOut>");
    VCTP3::ChannelInformation const info
        = VeskChannelReports::information(bench->channel(Channel::A), VCTP3::Layer::normal);
    QCOMPARE(QString(info.clip_id), QStringLiteral("iso"));
    QCOMPARE(info.cliplength, 50U);
    QVERIFY(info.loop == VCTP3::Loop::loopto);
    QCOMPARE(info.loopin, 5U);
    QCOMPARE(info.loopout, 9U);
    QVERIFY(info.playback == VCTP3::Playback::f12);
    QCOMPARE(int(info.angle_count), 4);
    QCOMPARE(int(info.angle), 3);
    QCOMPARE(int(info.audio_track_count), 8);
    QCOMPARE(info.natural_speed, 32768);
    bench->ask("clear_loop_in", "<Channel>A</Channel>");
    QVERIFY(!VeskChannelReports::information(bench->channel(Channel::A), VCTP3::Layer::normal)
                 .has_loopin);
}

void TestVeskChannels::informs_of_the_channel()
{
    bench->ask("ee", "<Channel>A</Channel><SonyEditMask>3</SonyEditMask><AutoEE>true</AutoEE>");
    bench->ask("precue", "<Channel>A</Channel><ClipID>ten</ClipID>");
    bench->ask("precue", "<Channel>A</Channel><ClipID>ten</ClipID>");
    bench->ask("take",
        "<Channel>A</Channel><TransitionType>dissolve</TransitionType>"
        "<TransitionDuration>3</TransitionDuration>");
    VCTP3::ChannelInformation info
        = VeskChannelReports::information(bench->channel(Channel::A), VCTP3::Layer::normal);
    QCOMPARE(int(info.ee_status.sony_edit_mask), 3);
    QVERIFY(info.ee_status.auto_ee);
    QCOMPARE(info.precue_count, 1U);
    QVERIFY(info.transition_in_progress);
    QVERIFY(info.direction == VCTP3::ChannelDirection::bi_directional);
    info = VeskChannelReports::information(bench->channel(Channel::A), VCTP3::Layer::bed);
    QVERIFY(!info.has_precue_count && !info.has_steal_status && !info.has_cliplength);
}

void TestVeskChannels::informs_of_the_owner_data()
{
    QTest::addColumn<QByteArray>("direction");
    QTest::addColumn<QString>("status");
    QTest::newRow("play") << QByteArray("play") << QStringLiteral("export");
    QTest::newRow("record") << QByteArray("record") << QStringLiteral("import");
}

void TestVeskChannels::informs_of_the_owner()
{
    QFETCH(QByteArray, direction);
    QFETCH(QString, status);
    QString const text = QStringLiteral("<StealStatus>%1</StealStatus>");
    QVERIFY(report(Group::info).contains(text.arg(QLatin1String("available"))));
    QByteArray const steal = "<Channel>A</Channel><PlayOrRecord>" + direction + "</PlayOrRecord>";
    bench->ask("steal_channel", steal.constData());
    QVERIFY(report(Group::info).contains(text.arg(status)));
}

void TestVeskChannels::shows_the_house_timecode_of_the_input()
{
    bench->ask("go_live", "<Channel>A</Channel>");
    bench->advance(5);
    QCOMPARE(
        VeskChannelReports::display_timecode(bench->layer(), bench->world.clock).position, 1800005);
}

void TestVeskChannels::makes_levels_from_clip_and_position()
{
    bench->clip("other", 10);
    for (char const *parameters :
        {"<Channel>A</Channel><ClipID>ten</ClipID>", "<Channel>B</Channel><ClipID>ten</ClipID>",
            "<Channel>C</Channel><ClipID>other</ClipID>"})
        bench->ask("cue_clip", parameters);
    bench->advance(2);
    bench->ask("gang_play",
        "<ChannelSet><Channel>A</Channel><Channel>B</Channel><Channel>C</Channel></ChannelSet>");
    bench->advance(3);
    auto const a = VeskChannelReports::levels(bench->layer(Channel::A));
    QVERIFY(a == VeskChannelReports::levels(bench->layer(Channel::B)));
    QVERIFY(a != VeskChannelReports::levels(bench->layer(Channel::C)));
    for (unsigned int track = 0; track < 16; ++track)
        QCOMPARE(a[track] > 0, track < VeskChannelReports::audio_tracks);
    bench->advance(1);
    QVERIFY(a != VeskChannelReports::levels(bench->layer(Channel::A)));
}

void TestVeskChannels::shifts_levels_by_the_gain_data()
{
    QTest::addColumn<int>("gain");
    QTest::newRow("up") << 10;
    QTest::newRow("down") << -10;
    QTest::newRow("all the way up") << 2147483647;
    QTest::newRow("all the way down") << -2147483647;
}

void TestVeskChannels::shifts_levels_by_the_gain()
{
    QFETCH(int, gain);
    bench->ask("cue_clip", "<Channel>A</Channel><ClipID>ten</ClipID>");
    bench->ask("play", "<Channel>A</Channel>");
    bench->advance(4);
    auto const before = VeskChannelReports::levels(bench->layer());
    QByteArray const set = "<Channel>A</Channel><Gain>" + QByteArray::number(gain) + "</Gain>";
    bench->ask("output_gain", set.constData());
    auto const after = VeskChannelReports::levels(bench->layer());
    for (unsigned int track = 0; track < VeskChannelReports::audio_tracks; ++track) {
        auto const wanted
            = std::clamp<long long>(static_cast<long long>(before[track]) + gain, 0, 100);
        QCOMPARE(static_cast<long long>(after[track]), wanted);
    }
}

void TestVeskChannels::is_silent_when_nothing_moves()
{
    bench->ask("cue_clip", "<Channel>A</Channel><ClipID>ten</ClipID>");
    bench->advance(2);
    QVERIFY(VeskChannelReports::levels(bench->layer()) == VeskChannelReports::Levels{});
}

void TestVeskChannels::empties_all_channels_on_a_restart()
{
    bench->ask("cue_clip", "<Channel>A</Channel><ClipID>ten</ClipID>");
    bench->ask("precue", "<Channel>A</Channel><ClipID>ten</ClipID>");
    bench->ask("steal_channel", "<Channel>A</Channel><PlayOrRecord>play</PlayOrRecord>");
    bench->ask("create_clip", "<ClipID>new</ClipID><TrackSet /><Channel>B</Channel>");
    bench->ask("play", "<Channel>B</Channel>");
    bench->advance(3);
    bench->world.channels.restart();
    QCOMPARE(bench->state(Channel::A), QStringLiteral("idle 0 0X"));
    QCOMPARE(bench->state(Channel::B), QStringLiteral("idle 0 0X"));
    QCOMPARE(bench->channel(Channel::A).precue_count(), 0U);
    QCOMPARE(bench->channel(Channel::A).owner().connection, quint64(0));
    QVERIFY(!bench->world.clips.find(AString::l1("new"))->growing);
    QCOMPARE(bench->world.clips.find(AString::l1("ten"))->uses, 0U);
}

void TestVeskChannels::allocates_nothing_while_fields_pass()
{
    bench->clip("long", 100000)->info.loop = VCTP3::Loop::pingpong;
    for (VeskChannel &channel : bench->world.channels.all()) {
        channel.load(VCTP3::Layer::normal, *bench->world.clips.find(AString::l1("long")), {});
        channel.load(VCTP3::Layer::bed, *bench->world.clips.find(AString::l1("long")), {});
        channel.play(VCTP3::Layer::normal, {});
        channel.play(VCTP3::Layer::bed, AOption<int>(-98304));
    }
    bench->world.channels.advance_field();
    std::size_t const before = allocations;
    for (int field = 0; field < 100; ++field) {
        bench->world.channels.advance_field();
        for (VeskChannel &channel : bench->world.channels.all())
            channel.take_changes();
    }
    QCOMPARE(allocations, before);
    QCOMPARE(bench->state(Channel::AN), QStringLiteral("play 99 1X"));
}

void TestVeskChannels::fills_banks_with_demo_clips()
{
    vesk_add_demo_clips(&bench->world.clips, bench->world.clock);
    bench->ask("download_directory_names");
    QCOMPARE(bench->replies.size(), 5);
    bench->ask("download_clipids", "<DirectoryName>Bank 2</DirectoryName>");
    QCOMPARE(bench->replies.size(), 72);
    VeskClip const *clip = bench->world.clips.find(AString::l1("Bank 2/201-07"));
    QCOMPARE(QString(clip->info.title), QStringLiteral("Goal 1-0, camera 7"));
    QCOMPARE(clip->length(), 18U * 50);
    QCOMPARE(clip->info.stripe_timecode.position, 1800000 + (23 * 60 + 40) * 50);
    QCOMPARE(bench->ask("delete_clip", "<ClipID>Programme/First half</ClipID>"),
        QStringLiteral("general: \"Programme/First half\" is read-only"));
}

QTEST_GUILESS_MAIN(TestVeskChannels)
#include "tst_vesk_channels.moc"
