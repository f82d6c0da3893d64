// SPDX-License-Identifier: Apache-2.0
#include "sim/vesk/vesk_sim.h"
#include "tests/support/loopback_address.h"
#include "tests/tarnctl/demo_server.h"
#include "tests/tarnctl/tool_run.h"

#include <QTest>

#include <memory>

/// What people type, against the demo event.
class TestTarnctlVerbs : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void status_shows_facts_and_channels();
    void status_tells_scripts_the_same();
    void clips_lists_ids();
    void clip_shows_a_clip();
    void cue_and_play_move_a_channel();
    void play_and_stop_take_several_channels_on_the_same_field();
    void record_makes_a_clip_that_grows();
    void record_ends_with_the_first_error();
    void meta_sets_gets_and_erases();
    void config_lists_gets_and_sets();

private:
    VeskChannelState channel(VCTP3::Channel which) const { return server->channel_state(which); }

    QHostAddress address;
    std::unique_ptr<VeskSim> server;
};

namespace {

QString const demo_clip = QStringLiteral("Bank 1/101-01");
QString const ok_line = QStringLiteral("{\"reply\":\"ok\"}\n");

} // namespace

void TestTarnctlVerbs::init()
{
    address = LoopbackAddress::unique();
    server = std::make_unique<VeskSim>(address, demo_options());
}

void TestTarnctlVerbs::cleanup()
{
    server.reset();
}

void TestTarnctlVerbs::status_shows_facts_and_channels()
{
    QCOMPARE(run_text(address, words("cue B") << demo_clip << QStringLiteral("25")).code, 0);
    server->advance(2);
    ToolRun const run = run_text(address, words("status --channels A-B"));
    QCOMPARE(run.code, 0);
    QStringList const lines = run.out.split(u'\n');
    QCOMPARE(lines.size(), 10);
    QCOMPARE(lines[0], QStringLiteral("Server     vesk-sim"));
    QCOMPARE(lines[2], QStringLiteral("Video      1080_50i"));
    QVERIFY2(lines[4].startsWith(QStringLiteral("Disk       ")), qPrintable(lines[4]));
    QVERIFY2(lines[4].contains(QStringLiteral(" GB free of ")), qPrintable(lines[4]));
    QCOMPARE(lines[5], QString());
    QCOMPARE(
        lines[6].simplified(), QStringLiteral("Channel Status Clip Speed Position Length Loop"));
    QVERIFY2(lines[7].startsWith(QStringLiteral("A        idle    ")), qPrintable(lines[7]));
    QCOMPARE(lines[8].simplified(), QStringLiteral("B stop \"Bank 1/101-01\" 0X 25 4500 off"));
    QCOMPARE(lines[8].indexOf(u'"'), lines[6].indexOf(QStringLiteral("Clip")));
}

void TestTarnctlVerbs::status_tells_scripts_the_same()
{
    QCOMPARE(run_text(address, words("cue B") << demo_clip).code, 0);
    server->advance(2);
    ToolRun const run = run_json(address, words("status --channels B"));
    QCOMPARE(run.code, 0);
    QCOMPARE(run.lines().size(), 2);
    QVERIFY2(run.lines()[0].startsWith(
                 QStringLiteral("{\"status\":\"server\",\"ComputerName\":\"vesk-sim\",")),
        qPrintable(run.out));
    QCOMPARE(run.lines()[1],
        QStringLiteral("{\"status\":\"channel\",\"Channel\":\"B\",\"ChannelStatus\":\"stop\","
                       "\"ClipID\":\"Bank 1/101-01\",\"Speed\":\"0X\",\"ClipPosition\":0,"
                       "\"ClipLength\":4500,\"Loop\":\"off\"}"));
}

void TestTarnctlVerbs::clips_lists_ids()
{
    QCOMPARE(run_text(address, words("clips Programme")).out,
        QStringLiteral("Programme/First half\nProgramme/Second half\n"));
    QCOMPARE(run_text(address, words("clips")).lines().size(), int(server->clip_ids().size()));
    QCOMPARE(run_json(address, words("clips Programme")).out,
        QStringLiteral("{\"reply\":\"clipid\",\"ClipID\":\"Programme/First half\"}\n"
                       "{\"reply\":\"clipid\",\"ClipID\":\"Programme/Second half\"}\n")
            + ok_line);
}

void TestTarnctlVerbs::clip_shows_a_clip()
{
    ToolRun const text = run_text(address, QStringList{QStringLiteral("clip"), demo_clip});
    QCOMPARE(text.code, 0);
    QVERIFY2(text.out.startsWith(QStringLiteral("clipinfo\n  ClipInfo\n    ClipID ")),
        qPrintable(text.out));
    ToolRun const json = run_json(address, QStringList{QStringLiteral("clip"), demo_clip});
    QVERIFY2(
        json.out.startsWith(QStringLiteral("{\"reply\":\"clipinfo\",\"ClipInfo\":{\"ClipID\":"
                                           "\"Bank 1/101-01\",\"VideoStandard\":\"1080_50i\"")),
        qPrintable(json.out));
    QCOMPARE(run_text(address, words("clip none")).code, 1);
}

void TestTarnctlVerbs::cue_and_play_move_a_channel()
{
    QCOMPARE(run_json(address, words("cue A") << demo_clip << QStringLiteral("100")).out, ok_line);
    server->advance(2);
    QCOMPARE(channel(VCTP3::Channel::A).position, 100U);
    QCOMPARE(run_json(address, words("play A -0.5")).out, ok_line);
    QCOMPARE(channel(VCTP3::Channel::A).speed, -32768);
    server->advance(10);
    QCOMPARE(channel(VCTP3::Channel::A).position, 95U);
    QCOMPARE(run_json(address, words("stop A")).out, ok_line);
    QCOMPARE(int(channel(VCTP3::Channel::A).status), int(VCTP3::ChannelStatus::stop));
    QCOMPARE(run_json(address, words("cue A none")).code, 1);
}

void TestTarnctlVerbs::play_and_stop_take_several_channels_on_the_same_field()
{
    for (char const *name : {"A", "C"})
        QCOMPARE(
            run_json(address, {QStringLiteral("cue"), QLatin1String(name), demo_clip}).code, 0);
    server->advance(2);
    QCOMPARE(run_text(address, words("play A,C 2X")).out, QStringLiteral("ok\n"));
    QCOMPARE(server->counters().count("gang_play"), 1U);
    QCOMPARE(channel(VCTP3::Channel::A).speed, 131072);
    QCOMPARE(channel(VCTP3::Channel::C).speed, 131072);
    QCOMPARE(run_text(address, words("stop A,C")).out, QStringLiteral("ok\n"));
    QCOMPARE(server->counters().count("gang_stop"), 1U);
    QCOMPARE(channel(VCTP3::Channel::C).speed, 0);
}

void TestTarnctlVerbs::record_makes_a_clip_that_grows()
{
    ToolRun const run = run_text(address, words("record D next --length 100"));
    QCOMPARE(run.out, QStringLiteral("ok\n"));
    QCOMPARE(run.code, 0);
    QCOMPARE(int(channel(VCTP3::Channel::D).status), int(VCTP3::ChannelStatus::record));
    server->advance(10);
    AOption<VCTP3::ClipInfo> const clip = server->clip(AString::l1("next"));
    QVERIFY(clip.has_value());
    QCOMPARE(clip->clip_length, 10U);
    QCOMPARE(run_text(address, words("stop D")).code, 0);
    server->advance(10);
    QCOMPARE(server->clip(AString::l1("next"))->clip_length, 10U);
}

void TestTarnctlVerbs::record_ends_with_the_first_error()
{
    ToolRun const run = run_json(address, words("record D") << demo_clip);
    QCOMPARE(run.code, 1);
    QCOMPARE(run.lines().size(), 1);
    QCOMPARE(server->counters().count("play"), 0U);
}

void TestTarnctlVerbs::meta_sets_gets_and_erases()
{
    QCOMPARE(
        run_text(address, words("meta get demo score.")).out, QStringLiteral("away  1\nhome  2\n"));
    QCOMPARE(run_text(address, words("meta get nothing")).out, QString());
    QCOMPARE(run_json(address,
                 {QStringLiteral("meta"), QStringLiteral("set"), QStringLiteral("demo"),
                     QStringLiteral("k"), QStringLiteral("a=\"b\" ü")})
                 .out,
        ok_line);
    QCOMPARE(QString(*server->metadata_value(AString::l1("demo"), AString::l1("k"))),
        QStringLiteral("a=\"b\" ü"));
    QCOMPARE(run_json(address, words("meta set demo home 3 --prefix score.")).code, 0);
    QCOMPARE(run_json(address, words("meta get demo score.")).out,
        QStringLiteral("{\"reply\":\"metadata\",\"MetadataDatabase\":\"demo\",\"MetadataPrefix\":"
                       "\"score.\",\"MetadataList\":[{\"Key\":\"away\",\"Value\":\"1\"},"
                       "{\"Key\":\"home\",\"Value\":\"3\"}]}\n")
            + ok_line);
    QCOMPARE(run_text(address, words("meta erase demo k score.home")).out, QStringLiteral("ok\n"));
    QVERIFY(!server->metadata_value(AString::l1("demo"), AString::l1("k")).has_value());
    QVERIFY(!server->metadata_value(AString::l1("demo"), AString::l1("score.home")).has_value());
}

void TestTarnctlVerbs::config_lists_gets_and_sets()
{
    ToolRun const list = run_text(address, words("config list VideoAspect"));
    QCOMPARE(list.code, 0);
    QCOMPARE(list.lines().size(), 2);
    QCOMPARE(list.lines()[0].simplified(), QStringLiteral("Name Effective Saved Access Reboot"));
    QVERIFY(list.lines()[1].startsWith(QStringLiteral("VideoAspectRatio  16x9")));
    QVERIFY(run_text(address, words("config list")).lines().size() > 5);

    QCOMPARE(
        run_text(address, words("config set VideoAspectRatio 4x3")).out, QStringLiteral("ok\n"));
    QVERIFY(run_json(address, words("config get VideoAspectRatio"))
                .out.contains(QStringLiteral("\"ConfigurationItemSavedValue\":\"4x3\"")));
    ToolRun const bad = run_json(address, words("config set VideoAspectRatio 1x1"));
    QCOMPARE(bad.code, 1);
    QVERIFY(bad.out.contains(QStringLiteral("\"ErrorCode\":\"configvalue_invalid\"")));
    ToolRun const unknown = run_text(address, words("config get none"));
    QCOMPARE(unknown.code, 1);
    QVERIFY(unknown.err.endsWith(QStringLiteral("(configname_invalid)\n")));
}

QTEST_GUILESS_MAIN(TestTarnctlVerbs)
#include "tst_tarnctl_verbs.moc"
