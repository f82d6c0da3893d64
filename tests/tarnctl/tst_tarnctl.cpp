// SPDX-License-Identifier: Apache-2.0
#include "sim/vesk/vesk_sim.h"
#include "tests/support/loopback_address.h"
#include "tests/support/patience.h"
#include "tests/tarnctl/tool_run.h"

#include <QFile>
#include <QTest>

#include <memory>

/// The program's promises to scripts: exit codes, options, what goes to which stream.
class TestTarnctl : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void ends_with_0_when_it_is_done();
    void ends_with_1_when_the_server_answers_an_error();
    void ends_with_2_before_anything_is_sent_data();
    void ends_with_2_before_anything_is_sent();
    void refuses_words_that_are_no_utf8_data();
    void refuses_words_that_are_no_utf8();
    void ends_with_3_at_once_when_it_is_refused();
    void ends_with_3_for_a_name_that_is_none();
    void ends_with_3_when_the_connection_is_lost();
    void ends_with_3_when_the_connection_is_lost_behind_an_error();
    void ends_with_3_when_the_server_talks_nonsense();
    void ends_with_4_when_nobody_answers();
    void ends_with_4_when_the_answer_stops_in_the_middle();
    void an_error_is_a_json_line_or_a_text_on_standard_error();
    void global_options_stand_in_both_places();
    void trace_shows_every_message_both_ways();
    void ends_with_5_when_the_output_cannot_be_written_data();
    void ends_with_5_when_the_output_cannot_be_written();
    void closed_streams_do_not_become_the_connection();
    void ends_quietly_when_its_reader_has_gone();
    void ends_with_0_when_nobody_reads_data();
    void ends_with_0_when_nobody_reads();
    void is_silent_in_a_locale_without_utf8();
    void tells_help_and_version_without_a_server();
    void the_manual_knows_every_verb_and_option();
    void bash_completes_words_that_it_parts_itself();

private:
    std::unique_ptr<VeskSim> server;
};

void TestTarnctl::init()
{
    server = std::make_unique<VeskSim>(LoopbackAddress::unique());
    QVERIFY(server->is_listening());
}

void TestTarnctl::cleanup()
{
    server.reset();
}

void TestTarnctl::ends_with_0_when_it_is_done()
{
    ToolRun const run = run_json(server->address(), words("call sync"));
    QCOMPARE(run.err, QString());
    QCOMPARE(run.out, QStringLiteral("{\"reply\":\"ok\"}\n"));
    QCOMPARE(run.code, 0);
}

void TestTarnctl::ends_with_1_when_the_server_answers_an_error()
{
    ToolRun const run = run_json(server->address(), words("call get_clip_info ClipID=none"));
    QCOMPARE(run.lines().size(), 1);
    QVERIFY2(run.out.startsWith(QStringLiteral("{\"reply\":\"error\",\"ErrorMessage\":\"")),
        qPrintable(run.out));
    QVERIFY2(run.out.endsWith(QStringLiteral("\",\"ErrorCode\":\"clipnotfound\"}\n")),
        qPrintable(run.out));
    QCOMPARE(run.code, 1);
}

void TestTarnctl::ends_with_2_before_anything_is_sent_data()
{
    QTest::addColumn<QString>("error");
    auto const row = [](char const *line, QByteArray const &error) {
        QTest::newRow(line) << QString::fromUtf8(error);
    };
    QByteArray const channels
        = "A, B, C, D, E, F, G, H, I, J, K, L, M, N, O, P, Q, R, S, T, U, V, W, X, Y, Z, AA, AB, "
          "AC, AD, AE, AF, AG, AH, AI, AJ, AK, AL, AM, AN";
    row("",
        "VERB is missing: expected one of call, watch, monitor, status, outputs, tally, alerts, "
        "health, "
        "clips, clip, play, stop, cue, record, meta, config, help");
    row("fly",
        "no verb 'fly': expected one of call, watch, monitor, status, outputs, tally, alerts, "
        "health, "
        "clips, clip, play, stop, cue, record, meta, config, help");
    row("--bogus clips", "no option --bogus before the verb");
    row("clips --bogus", "no option --bogus of 'clips'");
    row("clips --timeout", "--timeout needs a value: SECONDS");
    row("clips --timeout 0",
        "bad value '0' for --timeout: expected seconds above 0, at most 1000000");
    row("clips --timeout 1000001",
        "bad value '1000001' for --timeout: expected seconds above 0, at most 1000000");
    row("clips --server=", "bad value '' for --server: expected a name or an address");
    row("clips --server=127.0.0.1:8913",
        "bad value '127.0.0.1:8913' for --server: expected a name or an address without a port, "
        "which is always 8913");
    row("clips --json=yes", "--json takes no value");
    row("clips a b", "'b' is too much");
    row("clip", "ID is missing");
    row("call", "NAME is missing");
    row("call plya", "no command 'plya': like play, log; 'tarnctl call --help' lists them");
    row("call xxxxxxxxxx", "no command 'xxxxxxxxxx': 'tarnctl call --help' lists them");
    row("call jog Channel=A",
        "JogDistance is missing: expected a number from -2147483648 to 2147483647");
    row("call play Channel=A Layer=x", "bad value 'x' for Layer: expected one of normal, bed");
    row("call play Channel=A Sped=1X",
        "no parameter is named 'Sped': play takes Channel, Speed?, Layer?, MinLatency?");
    row("call sync A", "'A' is not of the form ELEMENT=VALUE: sync takes no parameters");
    row("call sync Channel=A", "no parameter is named 'Channel': sync takes no parameters");
    row("call iso_angle Angle=1 Angle=2",
        "Angle is given twice: expected once, a number from 0 to 255");
    row("call gang_stop ChannelSet=A",
        "bad value for ChannelSet: no JSON: expected a value (texts stand in double quotes) at "
        "character 1; expected a JSON array of at most 40 Channel, each one of "
            + channels);
    row("play", "CHANNELS is missing");
    row("play a", "bad channels 'a': expected a list such as A-D,F of A to AN");
    row("play A fast", "bad value 'fast' for SPEED: expected a factor such as 0.5 or -1X");
    row("play A X", "bad value 'X' for SPEED: expected a factor such as 0.5 or -1X");
    row("play A -", "bad value '-' for SPEED: expected a factor such as 0.5 or -1X");
    row("play A -X", "bad value '-X' for SPEED: expected a factor such as 0.5 or -1X");
    row("play A 1XX", "bad value '1XX' for SPEED: expected a factor such as 0.5 or -1X");
    row("play A 1X more", "'more' is too much");
    row("stop", "CHANNELS is missing");
    row("stop A-", "bad channels 'A-': expected a list such as A-D,F of A to AN");
    row("cue", "CHANNEL is missing");
    row("cue A", "CLIP is missing");
    row("cue A-B clip", "bad value 'A-B' for CHANNEL: expected one of " + channels);
    row("cue A clip x", "bad value 'x' for POSITION: expected a number from 0 to 4294967295");
    row("record", "CHANNEL is missing");
    row("record A", "CLIP is missing");
    row("record 1 clip", "bad value '1' for CHANNEL: expected one of " + channels);
    row("record A clip --length x",
        "bad value 'x' for --length: expected a number from 0 to 4294967295");
    row("watch more", "'more' is too much");
    row("watch --channels A-", "bad channels 'A-': expected a list such as A-D,F of A to AN");
    row("watch --reports status,bogus", "no report 'bogus': 'tarnctl watch --help' lists them");
    row("watch --reports chanel_status",
        "no report 'chanel_status': like channel_status; 'tarnctl watch --help' lists them");
    row("watch --for soon",
        "bad value 'soon' for --for: expected seconds above 0, at most 1000000");
    row("watch --count 0", "bad value '0' for --count: expected a number above 0");
    row("monitor more", "'more' is too much");
    row("monitor --channels D-A", "bad channels 'D-A': expected a list such as A-D,F of A to AN");
    row("monitor --signals status,report_speed",
        "no signal 'report_speed': expected one of status, clipid, speed, timecodes, "
        "clip_position, display_timecode, input_timecode, information, playback_mode, peak, "
        "aux_status, aux_clipid, aux_speed, aux_position, aux_information, aux_peak, peak_hold, "
        "aux_peak_hold");
    row("monitor --for 0", "bad value '0' for --for: expected seconds above 0, at most 1000000");
    row("monitor --count 1", "no option --count of 'monitor'");
    row("outputs 1", "'1' is too much");
    row("tally A", "'A' is too much");
    row("alerts --for 1", "no option --for of 'alerts'");
    row("health now", "'now' is too much");
    row("meta", "one of get, set, erase, watch is missing behind 'meta'");
    row("meta put d k v", "no 'meta put': expected one of get, set, erase, watch");
    row("meta get", "DATABASE is missing");
    row("meta get d p more", "'more' is too much");
    row("meta set", "DATABASE is missing");
    row("meta set d", "KEY is missing");
    row("meta set d k", "VALUE is missing");
    row("meta set d k v more", "'more' is too much");
    row("meta erase", "DATABASE is missing");
    row("meta erase d", "KEY is missing");
    row("meta watch", "DATABASE is missing");
    row("meta watch d --prefix p", "no option --prefix of 'meta watch'");
    row("meta get d --prefix p", "no option --prefix of 'meta get'");
    row("meta set d k v --count 1", "no option --count of 'meta set'");
    row("config", "one of list, get, set is missing behind 'config'");
    row("config put name", "no 'config put': expected one of list, get, set");
    row("config list a b", "'b' is too much");
    row("config get", "NAME is missing");
    row("config set", "NAME is missing");
    row("config set name", "VALUE is missing");
    row("--help fly",
        "no verb 'fly': expected one of call, watch, monitor, status, outputs, tally, alerts, "
        "health, "
        "clips, clip, play, stop, cue, record, meta, config, help");
    row("play --help more", "'more' is too much");
    row("--help play more", "'more' is too much");
    row("meta --help put", "no 'meta put': expected one of get, set, erase, watch");
    row("call --help log more", "'more' is too much");
    row("call --help plya", "no command 'plya': like play, log; 'tarnctl call --help' lists them");
    row("call plya --help", "no command 'plya': like play, log; 'tarnctl call --help' lists them");
    row("help play more", "'more' is too much");
    row("help call log more", "'more' is too much");
    row("help call plya", "no command 'plya': like play, log; 'tarnctl call --help' lists them");
    row("help meta put", "no 'meta put': expected one of get, set, erase, watch");
    row("help fly",
        "no verb 'fly': expected one of call, watch, monitor, status, outputs, tally, alerts, "
        "health, "
        "clips, clip, play, stop, cue, record, meta, config, help");
}

void TestTarnctl::ends_with_2_before_anything_is_sent()
{
    QFETCH(QString, error);
    QStringList arguments = words(QTest::currentDataTag());
    // The server comes first, so that a row may lack its verb; the last of an option counts.
    if (!arguments.isEmpty())
        arguments.prepend(QStringLiteral("--server=") + server->address().toString());
    ToolRun const run = run_tool(arguments);
    QCOMPARE(run.err.section(u'\n', 0, 0), QStringLiteral("tarnctl: ") + error);
    QVERIFY(run.err.contains(QStringLiteral("\nusage: tarnctl ")));
    QCOMPARE(run.out, QString());
    QCOMPARE(run.code, 2);
    QCOMPARE(server->counters().connections, 0U);
}

void TestTarnctl::refuses_words_that_are_no_utf8_data()
{
    QTest::addColumn<QString>("word");
    QTest::newRow("no start") << QStringLiteral("a\\377b");
    QTest::newRow("cut off") << QStringLiteral("a\\303");
    QTest::newRow("surrogate") << QStringLiteral("\\355\\240\\200");
}

void TestTarnctl::refuses_words_that_are_no_utf8()
{
    QFETCH(QString, word);
    ToolRun const run = run_redirected(
        QStringLiteral("--server %1 call debug_label DebugString=\"$(printf '%2')\"")
            .arg(server->address().toString(), word),
        QString());
    QVERIFY2(run.err.startsWith(QStringLiteral("tarnctl: 'DebugString=")), qPrintable(run.err));
    QVERIFY2(
        run.err.contains(QStringLiteral("' is no UTF-8\nusage: tarnctl ")), qPrintable(run.err));
    QCOMPARE(run.code, 2);
    QCOMPARE(server->counters().connections, 0U);
}

void TestTarnctl::ends_with_3_at_once_when_it_is_refused()
{
    QHostAddress const nobody = LoopbackAddress::unique();
    // Longer than this test would wait for it.
    ToolRun const run = run_json(nobody, words("--timeout 1000 call sync"));
    QCOMPARE(run.err, QStringLiteral("tarnctl: no connection to %1\n").arg(nobody.toString()));
    QCOMPARE(run.out, QString());
    QCOMPARE(run.code, 3);
}

void TestTarnctl::ends_with_3_for_a_name_that_is_none()
{
    QString const name = ToolRun::name_of_nobody();
    ToolRun const run = run_tool({QStringLiteral("--server"), name, QStringLiteral("clips")});
    QCOMPARE(run.err, QStringLiteral("tarnctl: no connection to %1\n").arg(name));
    QCOMPARE(run.code, 3);
}

void TestTarnctl::ends_with_3_when_the_connection_is_lost()
{
    server->close_after(10);
    ToolRun const run = run_json(server->address(), words("call sync"));
    QCOMPARE(run.err,
        QStringLiteral("tarnctl: the connection to %1 was lost\n")
            .arg(server->address().toString()));
    QCOMPARE(run.out, QString());
    QCOMPARE(run.code, 3);
}

void TestTarnctl::ends_with_3_when_the_connection_is_lost_behind_an_error()
{
    server->stay_silent(true);
    QProcess process;
    process.start(QStringLiteral(TARNCTL_PROGRAM),
        words("call sync --trace --server") << server->address().toString());
    QTRY_COMPARE(server->counters().count("sync"), 1U);
    // It answers another command than the one that then fails for the lost connection.
    server->say("<reply><xid>0</xid><error><ErrorMessage>no</ErrorMessage><ErrorCode>general"
                "</ErrorCode></error></reply>");
    QByteArray errors;
    QTRY_VERIFY((errors += process.readAllStandardError(), errors.contains("<- <reply>")));
    server->drop_connections();
    QVERIFY(process.waitForFinished(patience_ms));
    errors += process.readAllStandardError();
    QVERIFY2(errors.endsWith(
                 "the connection to " + server->address().toString().toLatin1() + " was lost\n"),
        errors.constData());
    QCOMPARE(process.exitCode(), 3);
}

void TestTarnctl::ends_with_3_when_the_server_talks_nonsense()
{
    server->stay_silent(true);
    QProcess process;
    process.start(QStringLiteral(TARNCTL_PROGRAM),
        words("call sync --trace --server") << server->address().toString());
    QTRY_COMPARE(server->counters().count("sync"), 1U);
    server->say("<reply><ok></reply>");
    QVERIFY(process.waitForFinished(patience_ms));
    QCOMPARE(process.exitCode(), 3);
}

void TestTarnctl::ends_with_4_when_nobody_answers()
{
    server->stay_silent(true);
    ToolRun const run = run_json(server->address(), words("call sync --timeout 0.3"));
    QCOMPARE(run.err,
        QStringLiteral("tarnctl: %1 did not answer in time\n").arg(server->address().toString()));
    QCOMPARE(run.out, QString());
    QCOMPARE(run.code, 4);
}

void TestTarnctl::ends_with_4_when_the_answer_stops_in_the_middle()
{
    // Time stands still at the server, and with it the reply that was to wait for a field.
    server->delay_replies(1);
    ToolRun const run = run_json(server->address(), words("call sync --timeout 0.3"));
    QCOMPARE(run.code, 4);
    QCOMPARE(run.out, QString());
}

void TestTarnctl::an_error_is_a_json_line_or_a_text_on_standard_error()
{
    server->fail_command("sync", "no \"sync\"", VCTP3::ErrorCode::configname_invalid);
    ToolRun const json = run_json(server->address(), words("call sync"));
    QCOMPARE(json.err, QString());
    QCOMPARE(json.out,
        QStringLiteral("{\"reply\":\"error\",\"ErrorMessage\":\"no \\\"sync\\\"\","
                       "\"ErrorCode\":\"configname_invalid\"}\n"));
    QCOMPARE(json.code, 1);
    ToolRun const text = run_text(server->address(), words("call sync"));
    QCOMPARE(text.err,
        QStringLiteral("tarnctl: the server answered: no \"sync\" (configname_invalid)\n"));
    QCOMPARE(text.out, QString());
    QCOMPARE(text.code, 1);
}

void TestTarnctl::global_options_stand_in_both_places()
{
    QString const address = server->address().toString();
    for (QString const &form : {QStringLiteral("--server %1 --json --timeout 20 call sync"),
             QStringLiteral("call --server %1 sync --json --timeout=20"),
             QStringLiteral("--json call sync --timeout 20 --server=%1")}) {
        ToolRun const run = run_tool(form.arg(address).split(u' '));
        QCOMPARE(run.out, QStringLiteral("{\"reply\":\"ok\"}\n"));
        QCOMPARE(run.code, 0);
    }
}

void TestTarnctl::trace_shows_every_message_both_ways()
{
    ToolRun const run = run_json(server->address(), words("call stop Channel=B --trace"));
    QCOMPARE(run.err,
        QStringLiteral("-> <cmd><xid>1</xid><stop><Channel>B</Channel></stop></cmd>\n"
                       "<- <reply><xid>1</xid><ok /></reply>\n"));
    QCOMPARE(run.out, QStringLiteral("{\"reply\":\"ok\"}\n"));
}

void TestTarnctl::ends_with_5_when_the_output_cannot_be_written_data()
{
    QTest::addColumn<QString>("redirection");
    QTest::addColumn<QString>("reason");
    QTest::addColumn<unsigned int>("sent");
    QString const full = QStringLiteral("No space left on device");
    QString const closed = QStringLiteral("it is closed");
    QTest::newRow("call sync") << QStringLiteral(">/dev/full") << full << 1U;
    QTest::newRow("--json call sync") << QStringLiteral(">/dev/full") << full << 1U;
    QTest::newRow("--help") << QStringLiteral(">/dev/full") << full << 0U;
    QTest::newRow("call sync --trace") << QStringLiteral(">&-") << closed << 0U;
    QTest::newRow("--version") << QStringLiteral(">&-") << closed << 0U;
}

void TestTarnctl::ends_with_5_when_the_output_cannot_be_written()
{
    QFETCH(QString, redirection);
    QFETCH(QString, reason);
    QFETCH(unsigned int, sent);
    QString const arguments = QStringLiteral("--server %1 ").arg(server->address().toString())
        + QLatin1String(QTest::currentDataTag());
    ToolRun const run = run_redirected(arguments, redirection);
    QCOMPARE(run.err, QStringLiteral("tarnctl: cannot write to standard output: %1\n").arg(reason));
    QCOMPARE(run.code, 5);
    QCOMPARE(server->counters().count("sync"), sent);
    QVERIFY(run_tool(words("--help")).out.contains(QStringLiteral("5 the output could not be")));
}

void TestTarnctl::closed_streams_do_not_become_the_connection()
{
    QString const arguments
        = QStringLiteral("--server %1 --trace call sync").arg(server->address().toString());
    ToolRun const run = run_redirected(arguments, QStringLiteral("<&- 2>&-"));
    QCOMPARE(run.out, QStringLiteral("ok\n"));
    QCOMPARE(run.code, 0);
    QCOMPARE(server->counters().count("sync"), 1U);
}

void TestTarnctl::ends_quietly_when_its_reader_has_gone()
{
    QProcess process;
    process.start(QStringLiteral("sh"),
        {QStringLiteral("-c"),
            QStringLiteral("{ \"$0\" --server %1 --json watch; echo $? >&2; } | head -n 1")
                .arg(server->address().toString()),
            QStringLiteral(TARNCTL_PROGRAM)});
    QTRY_COMPARE(server->counters().count("reports_register"), 1U);
    // Each round gives another report, until the program notices that nobody reads.
    QTRY_VERIFY((server->advance(50), process.state() == QProcess::NotRunning));
    QCOMPARE(process.readAllStandardError(), QByteArray("0\n"));
}

void TestTarnctl::ends_with_0_when_nobody_reads_data()
{
    QTest::addColumn<unsigned int>("sent");
    QTest::newRow("--help") << 0U;
    QTest::newRow("--version") << 0U;
    QTest::newRow("complete -- call") << 0U;
    QTest::newRow("call sync") << 1U;
}

void TestTarnctl::ends_with_0_when_nobody_reads()
{
    QFETCH(unsigned int, sent);
    QString const place = QStringLiteral("--server=") + server->address().toString();
    QCOMPARE(run_unread(QStringList(place) + words(QTest::currentDataTag())), 0);
    QCOMPARE(server->counters().count("sync"), sent);
}

void TestTarnctl::is_silent_in_a_locale_without_utf8()
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C"));
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral(TARNCTL_PROGRAM),
        {QStringLiteral("--server"), server->address().toString(), QStringLiteral("--trace"),
            QStringLiteral("call"), QStringLiteral("debug_label"),
            QStringLiteral("DebugString=ü€𝄞")});
    QVERIFY(process.waitForFinished(patience_ms));
    QCOMPARE(QString::fromUtf8(process.readAllStandardError()),
        QStringLiteral("-> <cmd><xid>1</xid><debug_label><DebugString>ü€𝄞</DebugString>"
                       "</debug_label></cmd>\n<- <reply><xid>1</xid><ok /></reply>\n"));
}

void TestTarnctl::tells_help_and_version_without_a_server()
{
    QCOMPARE(run_tool(words("--version")).out, QStringLiteral("tarnctl " TARN_VERSION "\n"));
    ToolRun const general = run_tool(words("--help"));
    QCOMPARE(general.code, 0);
    QCOMPARE(run_tool(words("help")).out, general.out);
    ToolRun const watch = run_tool(words("watch --help"));
    QCOMPARE(watch.code, 0);
    QVERIFY(watch.out.contains(QStringLiteral("--reconnect")));
    QCOMPARE(run_tool(words("help watch")).out, watch.out);
    QCOMPARE(run_tool(words("--help watch")).out, watch.out);
    QCOMPARE(run_tool(words("watch surplus --help")).out, watch.out);
    QVERIFY(run_tool(words("call --help"))
                .out.contains(QStringLiteral("\n  jog Channel JogDistance Layer? MinLatency?\n")));
    QVERIFY(run_tool(words("call jog --help"))
                .out.contains(
                    QStringLiteral("\n  JogDistance  a number from -2147483648 to 2147483647\n")));
    QCOMPARE(run_tool(words("help call jog")).out, run_tool(words("call jog --help")).out);
    QCOMPARE(run_tool(words("call --help jog")).out, run_tool(words("call jog --help")).out);
    QVERIFY(run_tool(words("call --help"))
                .out.contains(QStringLiteral("Each run has a connection of its own")));
}

void TestTarnctl::the_manual_knows_every_verb_and_option()
{
    QFile page(QStringLiteral(TARNCTL_SOURCES "/tarnctl.1.in"));
    QVERIFY(page.open(QIODevice::ReadOnly));
    QString const manual = QString::fromUtf8(page.readAll()).remove(u'\\');
    QString const help = run_tool(words("--help")).out;
    QStringList wanted;
    for (QString const &line : help.split(u'\n')) {
        QString const word = line.section(u' ', 2, 2);
        if (line.startsWith(QStringLiteral("  ")) && !word.isEmpty())
            wanted << word;
    }
    QVERIFY(wanted.size() > 15);
    for (QString const &verb : {QStringLiteral("watch"), QStringLiteral("monitor"),
             QStringLiteral("record"), QStringLiteral("meta")}) {
        for (QString const &line : run_tool({QStringLiteral("help"), verb}).lines()) {
            if (line.startsWith(QStringLiteral("  --")))
                wanted << line.section(u' ', 2, 2);
        }
    }
    for (QString const &word : std::as_const(wanted))
        QVERIFY2(manual.contains(word), qPrintable(word));
}

void TestTarnctl::bash_completes_words_that_it_parts_itself()
{
    QProcess bash;
    bash.start(QStringLiteral("bash"),
        {QStringLiteral("-c"),
            QStringLiteral("compopt() { :; }; . \"$0\"; for COMP_LINE in \"$1 call play Channel=A "
                           "Layer=n\" \"$1 meta \" \"$1 watch --reports=channel_st\"; do "
                           "COMP_POINT=${#COMP_LINE}; _tarnctl; echo \"${COMPREPLY[@]}\"; done"),
            QStringLiteral(TARNCTL_SOURCES "/tarnctl.bash"), QStringLiteral(TARNCTL_PROGRAM)});
    QVERIFY(bash.waitForFinished(patience_ms));
    QCOMPARE(bash.readAllStandardError(), QByteArray());
    QCOMPARE(
        bash.readAllStandardOutput(), QByteArray("normal\nget set erase watch\nchannel_status\n"));
}

QTEST_GUILESS_MAIN(TestTarnctl)
#include "tst_tarnctl.moc"
