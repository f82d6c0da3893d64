// SPDX-License-Identifier: Apache-2.0
#include "sim/vesk/vesk_sim.h"
#include "tests/support/loopback_address.h"
#include "tests/support/patience.h"
#include "tests/tarnctl/message_samples.h"
#include "tests/tarnctl/running_tool.h"
#include "tests/tarnctl/tool_run.h"

#include <QTest>

#include <csignal>
#include <memory>
#include <set>

/// `tarnctl watch` and `tarnctl meta watch`, which run until they have had enough.
class TestTarnctlWatch : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void registers_for_everything_on_all_channels();
    void registers_only_for_what_was_named_data();
    void registers_only_for_what_was_named();
    void prints_reports_as_they_arrive();
    void prints_every_report_with_all_its_elements();
    void prints_what_it_did_not_register_for();
    void prints_aligned_lines_for_people();
    void ends_after_a_number_of_reports();
    void ends_after_a_time();
    void ends_when_its_reader_goes_while_nothing_happens();
    void ends_with_0_by_an_interrupt_data();
    void ends_with_0_by_an_interrupt();
    void ends_with_3_when_the_connection_is_lost();
    void ends_with_3_when_it_never_had_a_connection();
    void ends_with_4_when_the_registration_is_not_answered();
    void ends_with_1_when_the_registration_is_refused();
    void dials_again_and_registers_anew();
    void meta_watch_prints_changes_of_the_keys_below_a_prefix();

private:
    /// Starts the program and waits until the server has had \a count registrations of that name.
    void start(QStringList const &arguments, char const *registration, quint64 count = 1);

    QHostAddress address;
    std::unique_ptr<VeskSim> server;
    std::unique_ptr<RunningTool> process;
};

void TestTarnctlWatch::init()
{
    address = LoopbackAddress::unique();
    VeskSimOptions options;
    options.demo = true;
    server = std::make_unique<VeskSim>(address, options);
    process = std::make_unique<RunningTool>();
}

void TestTarnctlWatch::cleanup()
{
    process.reset();
    server.reset();
}

void TestTarnctlWatch::start(QStringList const &arguments, char const *registration, quint64 count)
{
    process->begin(address, arguments);
    QTRY_VERIFY(server->counters().count(registration) >= count);
}

void TestTarnctlWatch::registers_for_everything_on_all_channels()
{
    start(words("--trace watch --for 0.2"), "channel_reports_register");
    QCOMPARE(process->end_code(), 0);
    QString const sent = QString::fromUtf8(process->readAllStandardError());
    for (char const *wanted : {"<ReportType>clip_change</ReportType>",
             "<ReportType>ltc_input</ReportType></ReportSet>", "<Channel>A</Channel>",
             "<Channel>AN</Channel></ChannelSet>", "<ChannelReportType>status</ChannelReportType>",
             "<ChannelReportType>chaseplay</ChannelReportType></ChannelReportSet>"})
        QVERIFY2(sent.contains(QLatin1String(wanted)), wanted);
    QCOMPARE(sent.count(QStringLiteral("</ReportType>")), 12);
    QCOMPARE(sent.count(QStringLiteral("</ChannelReportType>")), 14);
    QCOMPARE(sent.section(u'\n', 0, 0).count(QStringLiteral("<Channel>"))
            + sent.count(QStringLiteral("<ChannelSet>")),
        1);
}

void TestTarnctlWatch::registers_only_for_what_was_named_data()
{
    QTest::addColumn<QStringList>("sent");
    QTest::newRow("--channels A,C --reports channel_status,peak") << QStringList{QStringLiteral(
        "<channel_reports_register><ChannelSet><Channel>A</Channel><Channel>C</Channel>"
        "</ChannelSet><ChannelReportSet><ChannelReportType>status</ChannelReportType>"
        "<ChannelReportType>peak</ChannelReportType></ChannelReportSet>"
        "</channel_reports_register>")};
    QTest::newRow("--reports alert,clip_created,clip_deleted,temperature") << QStringList{
        QStringLiteral("<reports_register><ReportSet><ReportType>alerts</ReportType>"
                       "<ReportType>clip_change</ReportType><ReportType>temperature</ReportType>"
                       "</ReportSet></reports_register>")};
    QTest::newRow("--reports userdict_change") << QStringList();
}

void TestTarnctlWatch::registers_only_for_what_was_named()
{
    QFETCH(QStringList, sent);
    QString const line = QStringLiteral("--trace --server %1 watch --for 0.2 %2")
                             .arg(address.toString(), QLatin1String(QTest::currentDataTag()));
    ToolRun const run = run_tool(line.split(u' '));
    QStringList traced;
    for (QString const &message : run.traced(QLatin1String("->")))
        traced << message.section(QStringLiteral("</xid>"), 1).remove(QStringLiteral("</cmd>"));
    QCOMPARE(traced, sent);
    QCOMPARE(run.code, 0);
}

void TestTarnctlWatch::prints_reports_as_they_arrive()
{
    start(words("--json watch --channels B --reports channel_status"), "channel_reports_register");
    QCOMPARE(process->take_lines(1),
        QStringList{
            QStringLiteral(R"({"report":"channel_status","Channel":"B","ChannelStatus":"idle"})")});
    QCOMPARE(run_json(address, words("cue B") << QStringLiteral("Bank 1/101-01")).code, 0);
    QCOMPARE(process->take_lines(1),
        QStringList{QStringLiteral(
            R"({"report":"channel_status","Channel":"B","ChannelStatus":"cueing","ClipID":"Bank 1/101-01"})")});
    server->advance(2);
    QCOMPARE(process->take_lines(1),
        QStringList{QStringLiteral(
            R"({"report":"channel_status","Channel":"B","ChannelStatus":"stop","ClipID":"Bank 1/101-01"})")});
    QCOMPARE(run_json(address, words("play B")).code, 0);
    QCOMPARE(process->take_lines(1),
        QStringList{QStringLiteral(
            R"({"report":"channel_status","Channel":"B","ChannelStatus":"play","ClipID":"Bank 1/101-01"})")});
}

void TestTarnctlWatch::prints_every_report_with_all_its_elements()
{
    start(words("--json watch --reports alerts --count") << QString::number(report_samples.size()),
        "reports_register");
    QByteArray all;
    QStringList lines;
    std::set<QByteArray> names;
    for (ReportSample const &sample : report_samples) {
        all += sample.wire;
        lines << QString::fromUtf8(sample.line);
        names.insert(sample.name);
    }
    QCOMPARE(names.size(), std::size_t(57));
    server->say(all);
    QStringList const printed = process->take_lines(int(lines.size()));
    for (int i = 0; i < lines.size(); ++i)
        QCOMPARE(printed.value(i), lines[i]);
    QCOMPARE(process->end_code(), 0);
}

void TestTarnctlWatch::prints_what_it_did_not_register_for()
{
    start(words("--json watch --reports alerts --count 1"), "reports_register");
    server->say("<report><panel_num_event><Panel>18446744073709551615</Panel>"
                "<EventName>a&lt;b</EventName></panel_num_event></report>");
    QCOMPARE(process->end_code(), 0);
    QCOMPARE(process->readAllStandardOutput(),
        QByteArray("{\"report\":\"panel_num_event\",\"Panel\":\"18446744073709551615\","
                   "\"EventName\":\"a<b\"}\n"));
}

void TestTarnctlWatch::prints_aligned_lines_for_people()
{
    start(words("watch --reports clip_change --count 2"), "reports_register");
    server->say("<report><clip_created><ClipID>a b</ClipID></clip_created></report>"
                "<report><channel_speed><Channel>C</Channel><Speed>32768</Speed></channel_speed>"
                "</report>");
    QCOMPARE(process->end_code(), 0);
    QCOMPARE(process->readAllStandardOutput(),
        QByteArray("clip_created                    ClipID=\"a b\"\n"
                   "channel_speed                   Channel=C Speed=0.5X\n"));
}

void TestTarnctlWatch::ends_after_a_number_of_reports()
{
    start(words("--json watch --reports alerts --count 2"), "reports_register");
    server->say("<report><clip_deleted><ClipID>1</ClipID></clip_deleted></report>"
                "<report><clip_deleted><ClipID>2</ClipID></clip_deleted></report>"
                "<report><clip_deleted><ClipID>3</ClipID></clip_deleted></report>");
    QCOMPARE(process->end_code(), 0);
    QCOMPARE(process->readAllStandardOutput(),
        QByteArray("{\"report\":\"clip_deleted\",\"ClipID\":\"1\"}\n"
                   "{\"report\":\"clip_deleted\",\"ClipID\":\"2\"}\n"));
}

void TestTarnctlWatch::ends_after_a_time()
{
    // The time may be longer than the time-out, which only covers the registration.
    ToolRun const run = run_beyond_timeout(address, words("watch --reports alerts"), 0.3);
    QCOMPARE(run.err, QString());
    QCOMPARE(run.code, 0);
}

void TestTarnctlWatch::ends_when_its_reader_goes_while_nothing_happens()
{
    ToolRun const run = run_shell(QStringLiteral(
        "{ \"$0\" --server %1 watch --channels A --reports status; echo $? >&2; } | head -n 1")
                                      .arg(address.toString()));
    QCOMPARE(run.err, QStringLiteral("0\n"));
    QCOMPARE(run.lines().size(), 1);
}

void TestTarnctlWatch::ends_with_0_by_an_interrupt_data()
{
    QTest::addColumn<int>("number");
    QTest::newRow("interrupt") << SIGINT;
    QTest::newRow("terminate") << SIGTERM;
}

void TestTarnctlWatch::ends_with_0_by_an_interrupt()
{
    QFETCH(int, number);
    start(words("--json watch --reports clip_change"), "reports_register");
    server->say("<report><clip_deleted><ClipID>1</ClipID></clip_deleted></report>");
    QCOMPARE(process->take_lines(1).size(), 1);
    QCOMPARE(::kill(pid_t(process->processId()), number), 0);
    QCOMPARE(process->end_code(), 0);
    QCOMPARE(process->readAllStandardError(), QByteArray());
}

void TestTarnctlWatch::ends_with_3_when_the_connection_is_lost()
{
    start(words("watch --reports clip_change"), "reports_register");
    server->say("<report><clip_deleted><ClipID>1</ClipID></clip_deleted></report>");
    QCOMPARE(process->take_lines(1).size(), 1);
    server->drop_connections();
    QCOMPARE(process->end_code(), 3);
    QCOMPARE(process->readAllStandardError(),
        QStringLiteral("tarnctl: the connection to %1 was lost\n")
            .arg(address.toString())
            .toUtf8());
}

void TestTarnctlWatch::ends_with_3_when_it_never_had_a_connection()
{
    server.reset();
    QCOMPARE(run_json(address, words("watch --reconnect")).code, 3);
}

void TestTarnctlWatch::ends_with_4_when_the_registration_is_not_answered()
{
    server->stay_silent(true);
    QCOMPARE(run_json(address, words("watch --timeout 0.3 --for 0.1 --reconnect")).code, 4);
}

void TestTarnctlWatch::ends_with_1_when_the_registration_is_refused()
{
    server->fail_command("channel_reports_register", "no");
    ToolRun const run = run_text(address, words("watch --reports status"));
    QCOMPARE(run.code, 1);
    QCOMPARE(run.err, QStringLiteral("tarnctl: the server answered: no (general)\n"));
}

void TestTarnctlWatch::dials_again_and_registers_anew()
{
    start(words("--json watch --channels B --reports status --reconnect"),
        "channel_reports_register");
    QString const idle
        = QStringLiteral(R"({"report":"channel_status","Channel":"B","ChannelStatus":"idle"})");
    QCOMPARE(process->take_lines(1), QStringList{idle});
    server->stop();
    QTRY_COMPARE(server->counters().open_connections, 0U);
    server->restart(VeskState::keep);
    QCOMPARE(process->take_lines(1), QStringList{idle});
    QCOMPARE(server->counters().count("channel_reports_register"), 2U);
    QCOMPARE(process->state(), QProcess::Running);
    QTRY_COMPARE(process->error_text(),
        QStringLiteral("tarnctl: the connection to %1 was lost, dialling again\n"
                       "tarnctl: connected to %2 again\n")
            .arg(address.toString(), address.toString()));
}

void TestTarnctlWatch::meta_watch_prints_changes_of_the_keys_below_a_prefix()
{
    start(words("--json meta watch demo score. --count 2"), "watch_metadata_database");
    QCOMPARE(run_json(address, words("meta set demo other.home 9")).code, 0);
    QCOMPARE(run_json(address, words("meta set demo score.home 3")).code, 0);
    QCOMPARE(run_json(address, words("meta erase demo home --prefix score.")).code, 0);
    QCOMPARE(process->end_code(), 0);
    QCOMPARE(process->readAllStandardOutput(),
        QByteArray("{\"report\":\"metadata_change\",\"MetadataDatabase\":\"demo\","
                   "\"MetadataPrefix\":\"score.\",\"MetadataList\":[{\"Key\":\"home\","
                   "\"Value\":\"3\"}]}\n"
                   "{\"report\":\"metadata_remove\",\"MetadataDatabase\":\"demo\","
                   "\"MetadataPrefix\":\"score.\",\"KeyList\":[\"home\"]}\n"));
}

QTEST_GUILESS_MAIN(TestTarnctlWatch)
#include "tst_tarnctl_watch.moc"
