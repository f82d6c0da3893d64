// SPDX-License-Identifier: Apache-2.0
#include "sim/vesk/vesk_sim.h"
#include "tests/glint/report_text.h"
#include "tests/glint/wire_log.h"
#include "tests/support/loopback_address.h"
#include "tests/support/patience.h"
#include "tests/tarnctl/demo_server.h"
#include "tests/tarnctl/running_tool.h"
#include "tests/tarnctl/tool_run.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

#include <csignal>
#include <memory>

/// `tarnctl monitor`, which asks the server for no more than it prints.
class TestTarnctlMonitor : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void registers_what_its_signals_need_and_nothing_else_data();
    void registers_what_its_signals_need_and_nothing_else();
    void watches_every_channel_that_the_board_makes();
    void watches_all_forty_channels_of_a_server_without_a_board();
    void prints_what_is_there_and_then_each_emission();
    void prints_no_defaults_before_the_server_has_told();
    void prints_the_value_of_each_signal_data();
    void prints_the_value_of_each_signal();
    void prints_aligned_lines_for_people();
    void names_channels_beyond_z();
    void ends_after_a_time();
    void ends_when_its_reader_goes_while_nothing_happens();
    void ends_with_0_by_an_interrupt_data();
    void ends_with_0_by_an_interrupt();
    void ends_quietly_when_its_reader_has_gone();
    void ends_with_5_when_the_output_cannot_be_written();
    void goes_on_by_itself_when_the_server_is_back();
    void goes_on_when_the_connection_is_lost_before_anything_was_told();
    void ends_with_1_when_the_server_answers_an_error();
    void ends_with_3_when_it_never_had_a_connection_data();
    void ends_with_3_when_it_never_had_a_connection();
    void ends_with_4_when_the_server_does_not_answer_data();
    void ends_with_4_when_the_server_does_not_answer();
    void needs_no_display();
    void trace_shows_what_comes_at_field_rate_too();

private:
    /// Starts the program with --json and waits until it has printed so many lines, which it drops.
    void start(QStringList const &arguments, int lines);
    /// A line as it was printed, with its value as JSON.
    QJsonObject take_object();

    QHostAddress address;
    std::unique_ptr<WireLog> log;
    std::unique_ptr<VeskSim> server;
    std::unique_ptr<RunningTool> process;
};

namespace {

QJsonObject object_in(QString const &line)
{
    QJsonParseError error;
    QJsonDocument const document = QJsonDocument::fromJson(line.toUtf8(), &error);
    return error.error == QJsonParseError::NoError ? document.object() : QJsonObject();
}

QStringList letters(int count)
{
    QStringList names;
    for (int channel = 0; channel < count; ++channel)
        names << QString::fromUtf8(ReportText::letter(channel));
    return names;
}

/// "A status", as the log shows what is registered, with what the hub wants for itself.
QSet<QString> registrations(QStringList const &channels, QStringList const &reports)
{
    QSet<QString> all{QStringLiteral("config_change")};
    for (QString const &channel : channels)
        for (QString const &report : reports)
            all.insert(channel + u' ' + report);
    return all;
}

} // namespace

void TestTarnctlMonitor::init()
{
    address = LoopbackAddress::unique();
    log = std::make_unique<WireLog>();
    server = std::make_unique<VeskSim>(address, log->options(demo_options()));
    process = std::make_unique<RunningTool>();
}

void TestTarnctlMonitor::cleanup()
{
    process.reset();
    server.reset();
    log.reset();
}

void TestTarnctlMonitor::start(QStringList const &arguments, int lines)
{
    process->begin(address, words("--json monitor") + arguments);
    QCOMPARE(process->take_lines(lines).size(), lines);
}

QJsonObject TestTarnctlMonitor::take_object()
{
    return object_in(process->take_lines(1).value(0));
}

void TestTarnctlMonitor::registers_what_its_signals_need_and_nothing_else_data()
{
    QTest::addColumn<QString>("channels");
    QTest::addColumn<QString>("reports");
    QTest::addColumn<int>("lines");
    auto const row = [](char const *line, char const *channels, char const *reports, int lines) {
        QTest::newRow(line) << QString::fromLatin1(channels) << QString::fromLatin1(reports)
                            << lines;
    };
    row("--channels A --signals status", "A", "status", 1);
    row("--channels B,D --signals clip_position,speed,timecodes", "B D", "timecode speed", 6);
    row("--channels A-C,F --signals display_timecode,input_timecode", "A B C F", "timecode", 8);
    row("--channels H --signals information,playback_mode", "H", "info", 2);
    row("--channels AN --signals peak,peak_hold", "AN", "peak", 2);
    row("--channels A --signals aux_position", "A", "aux_audio_timecode", 1);
    row("--channels A --signals aux_peak_hold,aux_clipid", "A", "aux_audio_peak aux_audio_clipid",
        2);
    row("--channels A", "A",
        "status clipid speed timecode info peak aux_audio_status aux_audio_clipid "
        "aux_audio_speed aux_audio_timecode aux_audio_info aux_audio_peak",
        18);
}

void TestTarnctlMonitor::registers_what_its_signals_need_and_nothing_else()
{
    QFETCH(QString, channels);
    QFETCH(QString, reports);
    QFETCH(int, lines);
    start(words(QTest::currentDataTag()), lines);
    QSet<QString> const wanted = registrations(channels.split(u' '), reports.split(u' '));
    QCOMPARE(log->registered(), wanted);
    // Each once, and none of them taken back.
    QCOMPARE(log->commands().filter(QStringLiteral("register")).size(), wanted.size());
}

void TestTarnctlMonitor::watches_every_channel_that_the_board_makes()
{
    set_board(server.get(), "VVVV", "SSM2");
    ToolRun const run = run_json(address, words("monitor --signals status --for 0.1"));
    QCOMPARE(run.code, 0);
    QStringList channels;
    for (QString const &line : run.lines())
        channels << object_in(line).value(QStringLiteral("channel")).toString();
    // The second quad has two angles of two outputs each, which are numbered by their first.
    QCOMPARE(channels.mid(0, 4), letters(4));
    QVERIFY2(channels.size() > 4 && channels.size() < 8, qPrintable(channels.join(u' ')));
    QCOMPARE(log->registered(), registrations(channels, {QStringLiteral("status")}));
}

void TestTarnctlMonitor::watches_all_forty_channels_of_a_server_without_a_board()
{
    set_board(server.get(), "absent", "absent");
    ToolRun const run = run_json(address, words("monitor --signals status --for 0.1"));
    QCOMPARE(run.code, 0);
    QCOMPARE(run.lines().size(), 40);
    QCOMPARE(log->registered(), registrations(letters(40), {QStringLiteral("status")}));
}

void TestTarnctlMonitor::prints_what_is_there_and_then_each_emission()
{
    QCOMPARE(run_json(address, words("cue B") << QStringLiteral("Bank 1/101-01")).code, 0);
    server->advance(2);
    process->begin(address, words("--json monitor --channels B --signals status,clipid,speed"));
    QCOMPARE(process->take_lines(3),
        (QStringList{QStringLiteral(R"({"channel":"B","signal":"status","value":"stop"})"),
            QStringLiteral(R"({"channel":"B","signal":"clipid","value":"Bank 1/101-01"})"),
            QStringLiteral(R"({"channel":"B","signal":"speed","value":"0X"})")}));
    QCOMPARE(run_json(address, words("play B 0.5")).code, 0);
    // A status carries the clip, which is emitted with it.
    QCOMPARE(process->take_lines(3),
        (QStringList{QStringLiteral(R"({"channel":"B","signal":"status","value":"play"})"),
            QStringLiteral(R"({"channel":"B","signal":"clipid","value":"Bank 1/101-01"})"),
            QStringLiteral(R"({"channel":"B","signal":"speed","value":"0.5X"})")}));
}

void TestTarnctlMonitor::prints_no_defaults_before_the_server_has_told()
{
    QCOMPARE(run_json(address, words("cue A") << QStringLiteral("Bank 1/101-01")).code, 0);
    QCOMPARE(run_json(address, words("play A")).code, 0);
    server->advance(30);
    ToolRun const run = run_json(
        address, words("monitor --channels A --signals status,clip_position,peak --for 0.1"));
    QCOMPARE(run.lines().size(), 3);
    QCOMPARE(object_in(run.lines()[0]).value(QStringLiteral("value")), QStringLiteral("play"));
    QCOMPARE(object_in(run.lines()[1]).value(QStringLiteral("value")).toInt(),
        int(server->channel_state(VCTP3::Channel::A).position));
    QJsonArray const levels = object_in(run.lines()[2]).value(QStringLiteral("value")).toArray();
    QCOMPARE(levels.size(), 16);
    QVERIFY(levels[0].toInt() > 0);
}

void TestTarnctlMonitor::prints_the_value_of_each_signal_data()
{
    QTest::addColumn<QByteArray>("report");
    QTest::addColumn<QByteArray>("value");
    using namespace ReportText;
    auto const row = [](char const *signal, QByteArray const &report, char const *value) {
        QTest::newRow(signal) << report << QByteArray(value);
    };
    auto const of_e
        = [](char const *tag, QByteArray const &fields) { return channel_report(tag, 4, fields); };
    row("status", of_e("channel_status", field("ChannelStatus", "record")), "\"record\"");
    row("clipid", of_e("channel_clipid", field("ClipID", "a \"b\" &lt; ü")), "\"a \\\"b\\\" < ü\"");
    row("speed", of_e("channel_speed", field("Speed", "-98304")), "\"-1.5X\"");
    row("timecodes", timecode(4, 7, 180000, 1),
        R"({"clip_position":7,"display":"01.00.00.00","input":"00:00:00:00"})");
    row("clip_position", timecode(4, 4294967, 0, 0), "4294967");
    row("display_timecode", timecode(4, 0, 180002, 0), "\"01.00.00.01\"");
    row("input_timecode", timecode(4, 0, 0, 3), "\"00:00:00:01\"");
    row("information",
        of_e("channel_info",
            field("ChannelInformation", field("ClipID", "x") + field("Loop", "pingpong"))),
        R"({"ClipID":"x","Loop":"pingpong"})");
    row("playback_mode",
        of_e("channel_info",
            field("ChannelInformation", field("ClipID", "x") + field("Playback", "field"))),
        "null");
    row("peak", peak(4, "1 2 3"), "[1,2,3,0,0,0,0,0,0,0,0,0,0,0,0,0]");
    row("peak_hold", peak(4, "4 5"), "[4,5,0,0,0,0,0,0,0,0,0,0,0,0,0,0]");
    row("aux_status", of_e("channel_aux_audio_status", field("ChannelStatus", "play")), "\"play\"");
    row("aux_clipid", of_e("channel_aux_audio_clipid", field("ClipID", "y")), "\"y\"");
    row("aux_speed", of_e("channel_aux_audio_speed", field("Speed", "65536")), "\"1X\"");
    row("aux_position", aux_position(4, 12), "12");
    row("aux_information",
        of_e("channel_aux_audio_info", field("ChannelInformation", field("ClipID", "z"))),
        R"({"ClipID":"z"})");
    row("aux_peak", aux_peak(4, "9"), "[9,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0]");
    row("aux_peak_hold", aux_peak(4, "8"), "[8,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0]");
}

void TestTarnctlMonitor::prints_the_value_of_each_signal()
{
    QFETCH(QByteArray, report);
    QFETCH(QByteArray, value);
    QString const signal = QString::fromLatin1(QTest::currentDataTag());
    start(words("--channels E --signals") << signal, 1);
    server->say(report);
    QJsonObject const printed = take_object();
    QCOMPARE(printed.value(QStringLiteral("channel")), QStringLiteral("E"));
    QCOMPARE(printed.value(QStringLiteral("signal")), signal);
    QJsonObject const expected
        = object_in(QStringLiteral("{\"value\":%1}").arg(QString::fromUtf8(value)));
    QVERIFY(expected.contains(QStringLiteral("value")));
    QCOMPARE(printed.value(QStringLiteral("value")), expected.value(QStringLiteral("value")));
    QCOMPARE(printed.size(), 3);
}

void TestTarnctlMonitor::prints_aligned_lines_for_people()
{
    process->begin(address,
        words("monitor --channels A,AN --signals status,clipid,clip_position,playback_mode"));
    QCOMPARE(process->take_lines(8).mid(3, 3),
        (QStringList{QStringLiteral("A   playback_mode     -"),
            QStringLiteral("AN  status            idle"),
            QStringLiteral("AN  clipid            \"\"")}));
    server->say(ReportText::timecode(39, 5));
    QCOMPARE(process->take_lines(1), QStringList{QStringLiteral("AN  clip_position     5")});
}

void TestTarnctlMonitor::names_channels_beyond_z()
{
    process->begin(address, words("--json monitor --channels Y-AB --signals aux_speed"));
    QStringList channels;
    for (QString const &line : process->take_lines(4))
        channels << object_in(line).value(QStringLiteral("channel")).toString();
    QCOMPARE(channels, words("Y Z AA AB"));
}

void TestTarnctlMonitor::ends_after_a_time()
{
    // The time may be longer than the time-out, which only covers the beginning.
    ToolRun const run
        = run_beyond_timeout(address, words("monitor --channels A --signals status"), 0.5);
    QCOMPARE(run.err, QString());
    QCOMPARE(run.code, 0);
    QCOMPARE(run.lines().size(), 1);
}

void TestTarnctlMonitor::ends_when_its_reader_goes_while_nothing_happens()
{
    ToolRun const run = run_shell(QStringLiteral(
        "{ \"$0\" --server %1 monitor --channels A --signals status; echo $? >&2; } | head -n 1")
                                      .arg(address.toString()));
    QCOMPARE(run.err, QStringLiteral("0\n"));
    QCOMPARE(run.lines().size(), 1);
}

void TestTarnctlMonitor::ends_with_0_by_an_interrupt_data()
{
    QTest::addColumn<int>("number");
    QTest::newRow("interrupt") << SIGINT;
    QTest::newRow("terminate") << SIGTERM;
}

void TestTarnctlMonitor::ends_with_0_by_an_interrupt()
{
    QFETCH(int, number);
    start(words("--channels A --signals status"), 1);
    QCOMPARE(::kill(pid_t(process->processId()), number), 0);
    QCOMPARE(process->end_code(), 0);
    QCOMPARE(process->error_text(), QString());
}

void TestTarnctlMonitor::ends_quietly_when_its_reader_has_gone()
{
    QProcess shell;
    shell.start(QStringLiteral("sh"),
        {QStringLiteral("-c"),
            QStringLiteral("{ \"$0\" --server %1 monitor --channels A --signals input_timecode; "
                           "echo $? >&2; } | head -n 1")
                .arg(address.toString()),
            QStringLiteral(TARNCTL_PROGRAM)});
    QTRY_VERIFY(log->registered().contains(QStringLiteral("A timecode")));
    // Each round gives another report, until the program notices that nobody reads.
    int position = 0;
    QTRY_VERIFY(
        (server->say(ReportText::timecode(0, ++position)), shell.state() == QProcess::NotRunning));
    QCOMPARE(shell.readAllStandardError(), QByteArray("0\n"));
}

void TestTarnctlMonitor::ends_with_5_when_the_output_cannot_be_written()
{
    ToolRun const run = run_redirected(
        QStringLiteral("--server %1 monitor --channels A --signals status").arg(address.toString()),
        QStringLiteral(">/dev/full"));
    QCOMPARE(run.err,
        QStringLiteral("tarnctl: cannot write to standard output: No space left on device\n"));
    QCOMPARE(run.code, 5);
}

void TestTarnctlMonitor::goes_on_by_itself_when_the_server_is_back()
{
    QCOMPARE(run_json(address, words("cue A") << QStringLiteral("Bank 1/101-01")).code, 0);
    server->advance(2);
    process->begin(address, words("--json monitor --channels A-B --signals status"));
    QCOMPARE(process->take_lines(2),
        (QStringList{QStringLiteral(R"({"channel":"A","signal":"status","value":"stop"})"),
            QStringLiteral(R"({"channel":"B","signal":"status","value":"idle"})")}));
    server->stop();
    QTRY_COMPARE(server->counters().open_connections, 0U);
    QString const lost = QStringLiteral("tarnctl: the connection to %1 was lost, dialling again\n")
                             .arg(address.toString());
    QTRY_COMPARE(process->error_text(), lost);
    log->take();
    server->restart(VeskState::keep);
    // The restart has emptied channel A.
    QCOMPARE(process->take_lines(2),
        (QStringList{QStringLiteral(R"({"channel":"A","signal":"status","value":"idle"})"),
            QStringLiteral(R"({"channel":"B","signal":"status","value":"idle"})")}));
    QTRY_COMPARE(process->error_text(),
        lost + QStringLiteral("tarnctl: connected to %1 again\n").arg(address.toString()));
    QCOMPARE(log->commands(QStringLiteral("channel_report_register")),
        (QStringList{QStringLiteral("channel_report_register A status"),
            QStringLiteral("channel_report_register B status")}));
    QCOMPARE(process->state(), QProcess::Running);
}

void TestTarnctlMonitor::goes_on_when_the_connection_is_lost_before_anything_was_told()
{
    // Time stands still, and with it the replies that are to wait for a field.
    server->delay_replies(1);
    process->begin(address, words("--json monitor --channels A --signals status"));
    QTRY_COMPARE(server->counters().count("sync"), 1U);
    server->drop_connections();
    server->clear_faults();
    QCOMPARE(process->take_lines(1),
        QStringList{QStringLiteral(R"({"channel":"A","signal":"status","value":"idle"})")});
    server->say(ReportText::channel_report(
        "channel_status", 0, ReportText::field("ChannelStatus", "play")));
    QCOMPARE(process->take_lines(1),
        QStringList{QStringLiteral(R"({"channel":"A","signal":"status","value":"play"})")});
}

void TestTarnctlMonitor::ends_with_1_when_the_server_answers_an_error()
{
    server->fail_command("sync", "no");
    ToolRun const run = run_text(address, words("monitor --channels A --signals status"));
    QCOMPARE(run.code, 1);
    QCOMPARE(run.err, QStringLiteral("tarnctl: the server answered: no (general)\n"));
    QCOMPARE(run.out, QString());
}

void TestTarnctlMonitor::ends_with_3_when_it_never_had_a_connection_data()
{
    QTest::addColumn<QString>("host");
    QTest::newRow("address") << LoopbackAddress::unique().toString();
    QTest::newRow("name") << ToolRun::name_of_nobody();
}

void TestTarnctlMonitor::ends_with_3_when_it_never_had_a_connection()
{
    QFETCH(QString, host);
    ToolRun const run = run_tool(words("monitor --for 0.1 --server") << host);
    QCOMPARE(run.err, QStringLiteral("tarnctl: no connection to %1\n").arg(host));
    QCOMPARE(run.code, 3);
}

void TestTarnctlMonitor::ends_with_4_when_the_server_does_not_answer_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::newRow("configuration") << QString();
    QTest::newRow("registration") << QStringLiteral("--channels A");
}

void TestTarnctlMonitor::ends_with_4_when_the_server_does_not_answer()
{
    QFETCH(QString, arguments);
    server->stay_silent(true);
    ToolRun const run = run_json(address,
        words("monitor --for 0.1 --timeout 0.3") + arguments.split(u' ', Qt::SkipEmptyParts));
    QCOMPARE(
        run.err, QStringLiteral("tarnctl: %1 did not answer in time\n").arg(address.toString()));
    QCOMPARE(run.out, QString());
    QCOMPARE(run.code, 4);
}

void TestTarnctlMonitor::needs_no_display()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(QStringLiteral("DISPLAY"));
    environment.remove(QStringLiteral("WAYLAND_DISPLAY"));
    // An application with windows would end with this.
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("none-such"));
    process->setProcessEnvironment(environment);
    start(words("--channels A --for 0.1"), 18);
    QCOMPARE(process->end_code(), 0);
    QCOMPARE(process->error_text(), QString());
}

void TestTarnctlMonitor::trace_shows_what_comes_at_field_rate_too()
{
    ToolRun const run = run_json(
        address, words("monitor --channels A --signals clip_position,peak --for 0.1 --trace"));
    QCOMPARE(run.code, 0);
    QStringList const received = run.traced(QLatin1String("<-"));
    for (char const *report : {"<report><channel_timecode>", "<report><channel_peak>"})
        QCOMPARE(received.filter(QLatin1String(report)).size(), 1);
}

QTEST_GUILESS_MAIN(TestTarnctlMonitor)
#include "tst_tarnctl_monitor.moc"
