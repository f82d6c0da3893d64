// SPDX-License-Identifier: Apache-2.0
#include "sim/vesk/vesk_sim.h"
#include "tests/support/loopback_address.h"
#include "tests/support/patience.h"
#include "tests/tarnctl/call_samples.h"
#include "tests/tarnctl/demo_server.h"
#include "tests/tarnctl/message_samples.h"
#include "tests/tarnctl/tool_run.h"

#include <QMutex>
#include <QTest>

#include <memory>

/// `tarnctl call`: what is typed, what goes over the wire, what is printed.
class TestTarnctlCall : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void prints_every_reply_as_a_line_data();
    void prints_every_reply_as_a_line();
    void prints_every_kind_of_reply_with_all_its_elements_data();
    void prints_every_kind_of_reply_with_all_its_elements();
    void prints_blocks_for_people();
    void texts_go_through_unchanged_both_ways();
    void numbers_of_64_bits_go_through_whole();
    void every_command_arrives_as_it_was_given_data();
    void every_command_arrives_as_it_was_given();

private:
    void note(QByteArray const &line);
    QByteArray take_received();

    QHostAddress address;
    std::unique_ptr<VeskSim> server;
    QMutex mutex;
    QByteArray received; // guarded by mutex; written by the server's thread
};

void TestTarnctlCall::initTestCase()
{
    address = LoopbackAddress::unique();
}

void TestTarnctlCall::init()
{
    VeskSimOptions options = demo_options();
    options.trace = [this](QByteArray const &line) { note(line); };
    server = std::make_unique<VeskSim>(address, options);
    QVERIFY(server->is_listening());
}

void TestTarnctlCall::cleanup()
{
    server.reset();
}

void TestTarnctlCall::note(QByteArray const &line)
{
    QMutexLocker lock(&mutex);
    received += line;
}

QByteArray TestTarnctlCall::take_received()
{
    QMutexLocker lock(&mutex);
    return std::exchange(received, QByteArray());
}

void TestTarnctlCall::prints_every_reply_as_a_line_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("lines");
    auto const row = [](char const *name, QStringList const &arguments, char const *lines) {
        QTest::newRow(name) << arguments << QString::fromUtf8(lines);
    };
    QString const ok = QStringLiteral("{\"reply\":\"ok\"}");
    row("transport", words("call stop Channel=A MinLatency=true"), R"({"reply":"ok"})");
    row("precue", words("call precue_clear Channel=A"), R"({"reply":"ok"})");
    row("gang", words(R"(call gang_stop ChannelSet=["A","B"])"), R"({"reply":"ok"})");
    row("ownership", words("call steal_channel Channel=C PlayOrRecord=record"),
        R"({"reply":"steal_info","StealSwapped":false})");
    row("clips",
        {QStringLiteral("call"), QStringLiteral("clip_exists"),
            QStringLiteral("ClipID=Bank 1/101-01")},
        R"({"reply":"clipexists","ClipID":"Bank 1/101-01","Exists":true})");
    row("stream of clips",
        {QStringLiteral("call"), QStringLiteral("download_clipids"),
            QStringLiteral("DirectoryName=Programme")},
        "{\"reply\":\"clipid\",\"ClipID\":\"Programme/First half\"}\n"
        "{\"reply\":\"clipid\",\"ClipID\":\"Programme/Second half\"}\n"
        "{\"reply\":\"ok\"}");
    row("directories", words("call download_directory_names"),
        "{\"reply\":\"directory_name\",\"DirectoryName\":\"Bank 1\"}\n"
        "{\"reply\":\"directory_name\",\"DirectoryName\":\"Bank 2\"}\n"
        "{\"reply\":\"directory_name\",\"DirectoryName\":\"Bank 3\"}\n"
        "{\"reply\":\"directory_name\",\"DirectoryName\":\"Bank 4\"}\n"
        "{\"reply\":\"directory_name\",\"DirectoryName\":\"Programme\"}\n"
        "{\"reply\":\"ok\"}");
    row("information", words("call get_video_standard"),
        R"({"reply":"video_standard","VideoStandard":"1080_50i","VideoRate":"50","VideoResolution":"1080i"})");
    row("playlist status", words("call get_playlist_status Channel=B"),
        R"({"reply":"playlist_status","Channel":"B","PlaylistStatus":"not_in_either_channel"})");
    row("stored lists", words("call download_listids"),
        "{\"reply\":\"listid\",\"ListID\":\"Goals\"}\n"
        "{\"reply\":\"listid\",\"ListID\":\"Opening\"}\n"
        "{\"reply\":\"ok\"}");
    row("stored chase",
        {QStringLiteral("call"), QStringLiteral("download_chase"),
            QStringLiteral("ChaseID=Whole match")},
        "{\"reply\":\"chase_element\",\"ChaseElement\":{\"ContentID\":{\"ClipID\":"
        "\"Programme/First half\"},\"TcStartTrigger\":0}}\n"
        "{\"reply\":\"chase_element\",\"ChaseElement\":{\"ContentID\":{\"ClipID\":"
        "\"Programme/Second half\"},\"ChaseElementAtEnd\":\"black\"}}\n"
        "{\"reply\":\"ok\"}");
    row("metadata", words("call download_metadata MetadataDatabase=demo MetadataPrefix=score."),
        "{\"reply\":\"metadata\",\"MetadataDatabase\":\"demo\",\"MetadataPrefix\":\"score.\","
        "\"MetadataList\":[{\"Key\":\"away\",\"Value\":\"1\"},{\"Key\":\"home\",\"Value\":\"2\"}]}"
        "\n"
        "{\"reply\":\"ok\"}");
    row("user dictionary", words("call userdict_set Key=k Value=v"), R"({"reply":"ok"})");
    row("virtual clips", words("call vclip_free VClipID=v"),
        R"({"reply":"error","ErrorMessage":"not simulated","ErrorCode":"general"})");
    row("panels", words("call get_panel_mode"),
        R"({"reply":"error","ErrorMessage":"not simulated","ErrorCode":"general"})");
    row("registration", words(R"(call reports_register ReportSet=["clip_change"])"),
        R"({"reply":"ok"})");
}

void TestTarnctlCall::prints_every_reply_as_a_line()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, lines);
    ToolRun const run = run_json(address, arguments);
    QCOMPARE(run.out, lines + u'\n');
    QCOMPARE(run.err, QString());
    QCOMPARE(run.code, lines.contains(QStringLiteral("\"error\"")) ? 1 : 0);
}

void TestTarnctlCall::prints_every_kind_of_reply_with_all_its_elements_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("replies");
    QTest::addColumn<QStringList>("lines");
    for (AnswerSample const &sample : answer_samples) {
        QStringList arguments{QStringLiteral("call"), QString::fromUtf8(sample.command)};
        for (char const *argument : sample.arguments)
            arguments << QString::fromUtf8(argument);
        QStringList lines;
        for (char const *line : sample.lines)
            lines << QString::fromUtf8(line);
        QTest::newRow(sample.command) << arguments << QByteArray(sample.wire) << lines;
    }
}

void TestTarnctlCall::prints_every_kind_of_reply_with_all_its_elements()
{
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, replies);
    QFETCH(QStringList, lines);
    server->stay_silent(true);
    QProcess process;
    process.start(QStringLiteral(TARNCTL_PROGRAM),
        QStringList{QStringLiteral("--server"), address.toString(), QStringLiteral("--json")}
            + arguments);
    QTRY_COMPARE(server->counters().count(QTest::currentDataTag()), 1U);
    server->say(replies);
    QVERIFY(process.waitForFinished(patience_ms));
    QCOMPARE(QString::fromUtf8(process.readAllStandardOutput()), lines.join(u'\n') + u'\n');
    QCOMPARE(process.readAllStandardError(), QByteArray());
    QCOMPARE(process.exitCode(), 0);
}

void TestTarnctlCall::prints_blocks_for_people()
{
    ToolRun const run = run_text(address, words("call download_list ListID=Opening"));
    QCOMPARE(run.out.section(u'\n', 0, 6),
        QStringLiteral("list_element\n"
                       "  ListElement\n"
                       "    ContentID\n"
                       "      ClipID  \"Bank 1/101-01\"\n"
                       "    ListElementAtStart  play\n"
                       "    ListElementAtEnd    take\n"
                       "    NickName            Teams"));
    QVERIFY(run.out.endsWith(QStringLiteral("\nok\n")));
    QCOMPARE(run.code, 0);
}

void TestTarnctlCall::texts_go_through_unchanged_both_ways()
{
    QString const text = QStringLiteral(" <&>'\"\\ ü€𝄞\t= ");
    ToolRun const set = run_json(address,
        {QStringLiteral("call"), QStringLiteral("set_pgm_dbkey"), QStringLiteral("PGMChannel=PGM2"),
            QStringLiteral("DBKey=") + text});
    QCOMPARE(set.code, 0);
    ToolRun const get = run_json(address, words("call get_pgm_dbkey PGMChannel=PGM2"));
    QCOMPARE(get.out,
        QStringLiteral("{\"reply\":\"pgm_dbkey_reply\",\"DBKey\":\" <&>'\\\"\\\\ ü€𝄞\\t= \"}\n"));
}

void TestTarnctlCall::numbers_of_64_bits_go_through_whole()
{
    ToolRun const run
        = run_json(address, words("--trace call get_panel_event Panel=18446744073709551615"));
    QCOMPARE(run.traced(QLatin1String("->")),
        QStringList{QStringLiteral("<cmd><xid>1</xid><get_panel_event><Panel>18446744073709551615"
                                   "</Panel></get_panel_event></cmd>")});
    ToolRun const usage = run_json(address, words("call get_disk_usage"));
    QVERIFY2(
        usage.out.startsWith(QStringLiteral("{\"reply\":\"disk_usage\",\"TotalDiskSpace\":\"")),
        qPrintable(usage.out));
}

void TestTarnctlCall::every_command_arrives_as_it_was_given_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("wire");
    for (CallSample const &sample : call_samples) {
        QStringList arguments{QString::fromUtf8(sample.command)};
        for (char const *argument : sample.arguments)
            arguments << QString::fromUtf8(argument);
        QTest::newRow(sample.title) << arguments << QString::fromUtf8(sample.wire);
    }
}

void TestTarnctlCall::every_command_arrives_as_it_was_given()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, wire);
    take_received();
    ToolRun const run = run_json(
        address, QStringList{QStringLiteral("--trace"), QStringLiteral("call")} + arguments);
    QCOMPARE(run.traced(QLatin1String("->")),
        QStringList{QStringLiteral("<cmd><xid>1</xid>%1</cmd>").arg(wire)});
    QVERIFY2(run.code == 0 || run.code == 1, qPrintable(run.err));
    QString const last = run.lines().value(run.lines().size() - 1);
    QVERIFY2(last.startsWith(QStringLiteral("{\"reply\":\"")), qPrintable(last));
    QCOMPARE(last.startsWith(QStringLiteral("{\"reply\":\"error\"")), run.code == 1);
    QString const arrived = QString::fromUtf8(take_received()).remove(QStringLiteral("\r\n"));
    QVERIFY2(arrived.contains(wire), qPrintable(arrived));
    // Not a reader's complaint about what was sent.
    QVERIFY2(!last.contains(QStringLiteral("Tag ")), qPrintable(last));
}

QTEST_GUILESS_MAIN(TestTarnctlCall)
#include "tst_tarnctl_call.moc"
