// SPDX-License-Identifier: Apache-2.0
#include "tests/sim/model_bench.h"

#include <QTest>

using VCTP3::Channel;

namespace {

QString const ok = QStringLiteral("ok");

} // namespace

/// What is left of the transport commands beside the motion of a layer: errors, settings of a
/// channel, gangs and ownership.
class TestVeskTransportCommands : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void answers_sync();
    void refuses_what_needs_a_clip_data();
    void refuses_what_needs_a_clip();
    void refuses_to_cue_what_it_does_not_have_data();
    void refuses_to_cue_what_it_does_not_have();
    void remembers_how_a_clip_was_cued();
    void shows_one_angle_of_several();
    void keeps_the_edit_mask();
    void passes_on_the_chase_timecode();

    void acts_on_all_channels_of_a_gang_data();
    void acts_on_all_channels_of_a_gang();
    void acts_on_no_channel_when_one_cannot_data();
    void acts_on_no_channel_when_one_cannot();
    void acts_on_nothing_for_an_empty_gang();

    void gives_a_channel_to_a_client();
    void tells_who_took_a_channel_over();
    void takes_back_all_channels_of_a_connection();

private:
    void cue(char const *channel);

    std::unique_ptr<ModelBench> bench;
};

void TestVeskTransportCommands::init()
{
    bench = std::make_unique<ModelBench>();
    bench->clip("ten", 10);
}

void TestVeskTransportCommands::cleanup()
{
    bench.reset();
}

void TestVeskTransportCommands::cue(char const *channel)
{
    QByteArray const parameters
        = QByteArray("<Channel>") + channel + "</Channel><ClipID>ten</ClipID>";
    QCOMPARE(bench->ask("cue_clip", parameters.constData()), ok);
    bench->advance(2);
}

void TestVeskTransportCommands::answers_sync()
{
    QCOMPARE(bench->ask("sync"), ok);
}

void TestVeskTransportCommands::refuses_what_needs_a_clip_data()
{
    QTest::addColumn<QByteArray>("command");
    QTest::addColumn<QByteArray>("more");
    QTest::newRow("play") << QByteArray("play") << QByteArray();
    QTest::newRow("play bed") << QByteArray("play") << QByteArray("<Layer>bed</Layer>");
    QTest::newRow("jog") << QByteArray("jog") << QByteArray("<JogDistance>1</JogDistance>");
    QTest::newRow("gotocmd") << QByteArray("gotocmd")
                             << QByteArray("<GotoPosition>1</GotoPosition>");
    QTest::newRow("go_at") << QByteArray("go_at") << QByteArray("<GotoPosition>1</GotoPosition>");
    QTest::newRow("insert_edit") << QByteArray("insert_edit")
                                 << QByteArray("<SonyEditMask>1</SonyEditMask>");
    QTest::newRow("iso_angle") << QByteArray("iso_angle") << QByteArray("<Angle>1</Angle>");
}

void TestVeskTransportCommands::refuses_what_needs_a_clip()
{
    QFETCH(QByteArray, command);
    QFETCH(QByteArray, more);
    QCOMPARE(bench->ask(command.constData(), ("<Channel>AN</Channel>" + more).constData()),
        QStringLiteral("general: Channel AN has no clip loaded"));
}

void TestVeskTransportCommands::refuses_to_cue_what_it_does_not_have_data()
{
    QTest::addColumn<QByteArray>("parameters");
    QTest::addColumn<QString>("error");
    QTest::newRow("unknown") << QByteArray("<ClipID>none</ClipID>")
                             << QStringLiteral("clipnotfound: There is no clip \"none\"");
    QTest::newRow("virtual") << QByteArray("<ClipID>ten</ClipID><ClipScope>vclip</ClipScope>")
                             << QStringLiteral("general: not simulated");
    QTest::newRow("angle 0") << QByteArray("<ClipID>ten</ClipID><Angle>0</Angle>")
                             << QStringLiteral("general: \"ten\" has no angle 0");
    QTest::newRow("angle 2") << QByteArray("<ClipID>ten</ClipID><Angle>2</Angle>")
                             << QStringLiteral("general: \"ten\" has no angle 2");
}

void TestVeskTransportCommands::refuses_to_cue_what_it_does_not_have()
{
    QFETCH(QByteArray, parameters);
    cue("A");
    QByteArray const all = "<Channel>A</Channel>" + parameters;
    QTEST(bench->ask("cue_clip", all.constData()), "error");
    QCOMPARE(bench->state(), QStringLiteral("stop 0 0X"));
}

void TestVeskTransportCommands::remembers_how_a_clip_was_cued()
{
    bench->ask("cue_clip",
        "<Channel>A</Channel><ClipID>ten</ClipID><Loop>pingpong</Loop>"
        "<ClipPosition>8</ClipPosition><Angle>1</Angle><Playback>f12</Playback><Speed>-2X</Speed>"
        "<ClipScope>clip</ClipScope><LoopIn>1</LoopIn><LoopOut>7</LoopOut><Layer>normal</Layer>"
        "<Gain>-6</Gain><BlackOnCue />");
    VeskLayer const &layer = bench->layer();
    QVERIFY(layer.loop() == VCTP3::Loop::pingpong);
    QVERIFY(layer.out_point() == AOption<unsigned int>(8));
    QVERIFY(layer.playback() == VCTP3::Playback::f12);
    QCOMPARE(layer.natural_speed(), -131072);
    QCOMPARE(layer.gain(), -6);
    QVERIFY(layer.black_on_cue());
    // The gain is the output's: it stays when the next clip says nothing of it.
    cue("A");
    QCOMPARE(layer.gain(), -6);
    QVERIFY(!layer.black_on_cue());
    QCOMPARE(bench->ask("output_gain", "<Channel>A</Channel><Gain>3</Gain>"), ok);
    QCOMPARE(layer.gain(), 3);
    bench->ask("output_gain", "<Channel>A</Channel><Gain>9</Gain><Layer>bed</Layer>");
    QCOMPARE(layer.gain(), 3);
}

void TestVeskTransportCommands::shows_one_angle_of_several()
{
    bench->clip("iso", 5)->info.set_iso_count(4);
    bench->ask("cue_clip", "<Channel>A</Channel><ClipID>iso</ClipID><Angle>2</Angle>");
    QCOMPARE(int(bench->layer().angle()), 2);
    QCOMPARE(bench->ask("iso_angle", "<Channel>A</Channel><Angle>4</Angle>"), ok);
    QCOMPARE(int(bench->layer().angle()), 4);
    QCOMPARE(bench->ask("iso_angle", "<Channel>A</Channel><Angle>0</Angle>"),
        QStringLiteral("general: \"iso\" has no angle 0"));
    QCOMPARE(bench->ask("iso_angle", "<Channel>A</Channel><Angle>5</Angle>"),
        QStringLiteral("general: \"iso\" has no angle 5"));
    QCOMPARE(int(bench->layer().angle()), 4);
}

void TestVeskTransportCommands::keeps_the_edit_mask()
{
    QCOMPARE(bench->ask(
                 "ee", "<Channel>A</Channel><SonyEditMask>258</SonyEditMask><AutoEE>true</AutoEE>"),
        ok);
    QCOMPARE(bench->channel(Channel::A).edit_mask(), static_cast<unsigned short>(258));
    QVERIFY(bench->channel(Channel::A).auto_ee());
    QCOMPARE(bench->state(), QStringLiteral("idle 0 0X"));
}

void TestVeskTransportCommands::passes_on_the_chase_timecode()
{
    bench->told();
    QCOMPARE(bench->ask("sending_chase_ltcin",
                 "<Timecode><Valid>true</Valid><FieldNumber>77</FieldNumber></Timecode>"),
        ok);
    QCOMPARE(bench->told(),
        QStringList(
            QStringLiteral("chase_ltc_timecode <chase_ltc_timecode><Timecode><Valid>true</Valid>"
                           "<FieldNumber>77</FieldNumber></Timecode></chase_ltc_timecode>")));
}

void TestVeskTransportCommands::acts_on_all_channels_of_a_gang_data()
{
    QTest::addColumn<QByteArray>("command");
    QTest::addColumn<QByteArray>("more");
    QTest::addColumn<QString>("state");
    QTest::newRow("play") << QByteArray("gang_play") << QByteArray("<Speed>2X</Speed>")
                          << QStringLiteral("play 3 2X");
    QTest::newRow("stop") << QByteArray("gang_stop") << QByteArray() << QStringLiteral("stop 3 0X");
    QTest::newRow("jog") << QByteArray("gang_jog") << QByteArray("<JogDistance>-2</JogDistance>")
                         << QStringLiteral("stop 1 0X");
    QTest::newRow("gotocmd") << QByteArray("gang_gotocmd")
                             << QByteArray("<GotoPosition>6</GotoPosition>")
                             << QStringLiteral("stop 6 0X");
    QTest::newRow("go_at") << QByteArray("gang_go_at")
                           << QByteArray("<GotoPosition>6</GotoPosition><Speed>0.5X</Speed>")
                           << QStringLiteral("play 6 0.5X");
    QTest::newRow("insert") << QByteArray("gang_insert_edit")
                            << QByteArray("<SonyEditMask>5</SonyEditMask>")
                            << QStringLiteral("insert 3 1X");
    QTest::newRow("ee") << QByteArray("gang_ee")
                        << QByteArray("<SonyEditMask>5</SonyEditMask><AutoEE>true</AutoEE>")
                        << QStringLiteral("play 3 1X");
    QTest::newRow("precue") << QByteArray("gang_precue_activate") << QByteArray()
                            << QStringLiteral("play 0 1X");
}

void TestVeskTransportCommands::acts_on_all_channels_of_a_gang()
{
    QFETCH(QByteArray, command);
    QFETCH(QByteArray, more);
    QFETCH(QString, state);
    QByteArray const set = "<ChannelSet><Channel>C</Channel><Channel>A</Channel></ChannelSet>";
    for (char const *channel : {"A", "B", "C"}) {
        cue(channel);
        QByteArray const name = QByteArray("<Channel>") + channel + "</Channel>";
        bench->ask("precue", (name + "<ClipID>ten</ClipID>").constData());
    }
    bench->ask("gang_play",
        "<ChannelSet><Channel>A</Channel><Channel>B</Channel><Channel>C</Channel></ChannelSet>");
    bench->advance(3);
    QCOMPARE(bench->ask(command.constData(), (set + more).constData()), ok);
    QCOMPARE(bench->state(Channel::A), state);
    QCOMPARE(bench->state(Channel::B), QStringLiteral("play 3 1X"));
    QCOMPARE(bench->state(Channel::C), state);
    bool const with_mask = more.contains("SonyEditMask");
    QCOMPARE(int(bench->channel(Channel::C).edit_mask()), with_mask ? 5 : 0);
}

void TestVeskTransportCommands::acts_on_no_channel_when_one_cannot_data()
{
    QTest::addColumn<QByteArray>("command");
    QTest::addColumn<QByteArray>("more");
    QTest::addColumn<QString>("error");
    QString const no_clip = QStringLiteral("general: Channel C has no clip loaded");
    QTest::newRow("play") << QByteArray("gang_play") << QByteArray() << no_clip;
    QTest::newRow("jog") << QByteArray("gang_jog") << QByteArray("<JogDistance>2</JogDistance>")
                         << no_clip;
    QTest::newRow("gotocmd") << QByteArray("gang_gotocmd")
                             << QByteArray("<GotoPosition>2</GotoPosition>") << no_clip;
    QTest::newRow("go_at") << QByteArray("gang_go_at")
                           << QByteArray("<GotoPosition>2</GotoPosition>") << no_clip;
    QTest::newRow("insert") << QByteArray("gang_insert_edit")
                            << QByteArray("<SonyEditMask>5</SonyEditMask>") << no_clip;
    QTest::newRow("precue") << QByteArray("gang_precue_activate") << QByteArray()
                            << QStringLiteral("general: Channel C has no precued clip");
}

void TestVeskTransportCommands::acts_on_no_channel_when_one_cannot()
{
    QFETCH(QByteArray, command);
    QFETCH(QByteArray, more);
    QByteArray const set = "<ChannelSet><Channel>A</Channel><Channel>B</Channel>"
                           "<Channel>C</Channel></ChannelSet>";
    for (char const *channel : {"A", "B"}) {
        cue(channel);
        QByteArray const name = QByteArray("<Channel>") + channel + "</Channel>";
        bench->ask("precue", (name + "<ClipID>ten</ClipID>").constData());
    }
    QTEST(bench->ask(command.constData(), (set + more).constData()), "error");
    for (Channel channel : {Channel::A, Channel::B}) {
        QCOMPARE(bench->state(channel), QStringLiteral("stop 0 0X"));
        QCOMPARE(bench->channel(channel).precue_count(), 1U);
    }
}

void TestVeskTransportCommands::acts_on_nothing_for_an_empty_gang()
{
    QCOMPARE(bench->ask("gang_play", "<ChannelSet />"), ok);
}

void TestVeskTransportCommands::gives_a_channel_to_a_client()
{
    QCOMPARE(bench->ask("steal_channel",
                 "<Channel>A</Channel><PlayOrRecord>record</PlayOrRecord>"
                 "<StealClient>desk</StealClient>",
                 7),
        QStringLiteral("<steal_info><StealSwapped>false</StealSwapped></steal_info>"));
    VeskOwner const &owner = bench->channel(Channel::A).owner();
    QCOMPARE(owner.connection, quint64(7));
    QVERIFY(owner.direction == VCTP3::PlayOrRecord::record);
    QCOMPARE(QString(owner.client), QStringLiteral("desk"));
}

void TestVeskTransportCommands::tells_who_took_a_channel_over()
{
    char const *const parameters = "<Channel>A</Channel><PlayOrRecord>play</PlayOrRecord>";
    QString const fresh
        = QStringLiteral("<steal_info><StealSwapped>false</StealSwapped></steal_info>");
    QString const swapped
        = QStringLiteral("<steal_info><StealSwapped>true</StealSwapped></steal_info>");
    QCOMPARE(bench->ask("steal_channel", parameters, 1), fresh);
    QCOMPARE(bench->ask("steal_channel", parameters, 1), fresh);
    QCOMPARE(bench->ask("steal_channel", parameters, 2), swapped);
    // Who lost a channel has nothing to give back.
    QCOMPARE(bench->ask("unsteal_channel", "", 1), ok);
    QCOMPARE(bench->channel(Channel::A).owner().connection, quint64(2));
    QCOMPARE(bench->ask("unsteal_channel", "", 2), ok);
    QCOMPARE(bench->channel(Channel::A).owner().connection, quint64(0));
    QCOMPARE(bench->ask("steal_channel", parameters, 1), fresh);
}

void TestVeskTransportCommands::takes_back_all_channels_of_a_connection()
{
    unsigned int const info = 1U << static_cast<unsigned int>(VCTP3::ChannelReportType::info);
    bench->ask("steal_channel", "<Channel>A</Channel><PlayOrRecord>play</PlayOrRecord>", 1);
    bench->ask("steal_channel", "<Channel>B</Channel><PlayOrRecord>record</PlayOrRecord>", 1);
    bench->ask("steal_channel", "<Channel>C</Channel><PlayOrRecord>record</PlayOrRecord>", 2);
    QCOMPARE(bench->world.channels.take_changes(Channel::B), info);
    bench->world.connection_ended(1);
    QCOMPARE(bench->channel(Channel::A).owner().connection, quint64(0));
    QCOMPARE(bench->channel(Channel::B).owner().connection, quint64(0));
    QCOMPARE(bench->channel(Channel::C).owner().connection, quint64(2));
    QCOMPARE(bench->world.channels.take_changes(Channel::B), info);
}

QTEST_GUILESS_MAIN(TestVeskTransportCommands)
#include "tst_vesk_transport_commands.moc"
