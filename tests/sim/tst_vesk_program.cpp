// SPDX-License-Identifier: Apache-2.0
#include "tests/support/loopback_address.h"
#include "tests/support/patience.h"
#include "tests/support/wire_peer.h"

#include <QProcess>
#include <QTcpSocket>
#include <QTest>

#include <csignal>
#include <sys/types.h>
#include <unistd.h>

/// The program vesk-sim as people and scripts use it.
class TestVeskProgram : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void tells_when_it_listens_and_serves();
    void ends_well_on_a_signal_data();
    void ends_well_on_a_signal();
    void ends_well_after_its_run_time();
    void tells_all_in_its_help();
    void refuses_bad_usage_data();
    void refuses_bad_usage();
    void cannot_listen_twice();
    void starts_with_the_demo_event_or_empty_data();
    void starts_with_the_demo_event_or_empty();
    void runs_at_the_given_standard_in_real_time();
    void has_the_given_board();
    void makes_a_storm_data();
    void makes_a_storm();
    void traces_on_standard_error();
    void traces_each_message_as_one_visible_line();
    void goes_on_when_nobody_reads_its_trace();
    void serves_with_its_streams_closed();
};

namespace {

/// A running vesk-sim; killed at the end of its life.
class Program
{
public:
    /// With \a unread its standard error is a pipe whose reader has gone.
    explicit Program(QStringList const &arguments, bool unread = false)
        : address(LoopbackAddress::unique())
    {
        int ends[2] = {-1, -1};
        if (unread && ::pipe(ends) == 0) {
            ::close(ends[0]);
            process.setChildProcessModifier([end = ends[1]] { ::dup2(end, STDERR_FILENO); });
        }
        process.start(QStringLiteral(VESK_SIM_PROGRAM),
            QStringList{QStringLiteral("--address"), address.toString()} + arguments);
        process.waitForReadyRead(patience_ms);
        if (unread)
            ::close(ends[1]);
    }
    ~Program()
    {
        process.kill();
        process.waitForFinished(patience_ms);
    }
    int exit_code()
    {
        if (process.state() != QProcess::NotRunning && !process.waitForFinished(patience_ms))
            return -1;
        return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -2;
    }

    QHostAddress const address;
    QProcess process;
};

} // namespace

void TestVeskProgram::tells_when_it_listens_and_serves()
{
    Program program({});
    QCOMPARE(program.process.readAllStandardOutput(),
        "listening on " + program.address.toString().toUtf8() + ":8913\n");
    WirePeer peer(program.address);
    QCOMPARE(peer.call("<sync/>"), QByteArrayList{"<ok />"});
}

void TestVeskProgram::ends_well_on_a_signal_data()
{
    QTest::addColumn<int>("number");
    QTest::newRow("SIGTERM") << SIGTERM;
    QTest::newRow("SIGINT") << SIGINT;
}

void TestVeskProgram::ends_well_on_a_signal()
{
    QFETCH(int, number);
    Program program({});
    WirePeer peer(program.address);
    QCOMPARE(peer.call("<sync/>"), QByteArrayList{"<ok />"});
    QCOMPARE(::kill(pid_t(program.process.processId()), number), 0);
    QCOMPARE(program.exit_code(), 0);
    QVERIFY(peer.wait_for_end());
}

void TestVeskProgram::ends_well_after_its_run_time()
{
    Program program({QStringLiteral("--run-time"), QStringLiteral("0.05")});
    QVERIFY(program.process.readAllStandardOutput().startsWith("listening on "));
    QCOMPARE(program.exit_code(), 0);
}

void TestVeskProgram::tells_all_in_its_help()
{
    Program program({QStringLiteral("--help")});
    QCOMPARE(program.exit_code(), 0);
    QByteArray const help = program.process.readAllStandardOutput();
    for (char const *word : {"--address", "--standard", "1080_59_94i", "625_50i", "--board",
             "zephyrx", "--demo", "--empty", "--storm", "--spread", "--run-time", "--trace",
             "--help", "8913", "demo event", "Bank 1", "Goals", "Exit codes: 0", "SIGTERM"})
        QVERIFY2(help.contains(word), word);
}

void TestVeskProgram::refuses_bad_usage_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("word");
    auto const row = [](char const *arguments, char const *word) {
        QTest::newRow(arguments) << QString::fromLatin1(arguments).split(QLatin1Char(' '))
                                 << QByteArray(word);
    };
    row("--levitate", "levitate");
    row("extra", "extra");
    row("--address nowhere", "nowhere");
    row("--standard 1080_24p", "1080_24p");
    row("--standard VHS", "VHS");
    row("--board 8K", "8K");
    row("--run-time soon", "soon");
    row("--run-time 0", "'0'");
    row("--run-time -1", "-1");
    row("--run-time 1e9", "1e9");
    row("--demo --empty", "--empty");
    row("--storm --spread 0", "'0'");
    row("--storm --spread 17", "'17'");
    row("--storm --spread wide", "wide");
    row("--spread 2", "--storm");
    row("--run-time", "run-time");
}

void TestVeskProgram::refuses_bad_usage()
{
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, word);
    Program program(arguments);
    QCOMPARE(program.exit_code(), 2);
    QByteArray const error = program.process.readAllStandardError();
    QVERIFY2(error.startsWith("vesk-sim: "), error);
    QVERIFY2(error.contains(word), error);
    QVERIFY(program.process.readAllStandardOutput().isEmpty());
}

void TestVeskProgram::cannot_listen_twice()
{
    Program first({});
    Program second({QStringLiteral("--address"), first.address.toString()});
    QCOMPARE(second.exit_code(), 3);
    QVERIFY(second.process.readAllStandardError().contains(
        "cannot listen on " + first.address.toString().toUtf8() + ":8913: "));
}

void TestVeskProgram::starts_with_the_demo_event_or_empty_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<bool>("filled");
    QTest::newRow("neither") << QStringList() << true;
    QTest::newRow("demo") << QStringList{QStringLiteral("--demo")} << true;
    QTest::newRow("empty") << QStringList{QStringLiteral("--empty")} << false;
}

void TestVeskProgram::starts_with_the_demo_event_or_empty()
{
    QFETCH(QStringList, arguments);
    QFETCH(bool, filled);
    Program program(arguments);
    WirePeer peer(program.address);
    QCOMPARE(peer.call("<download_clipids/>").size() > 1, filled);
    QCOMPARE(peer.call("<download_listids/>").size() > 1, filled);
}

void TestVeskProgram::runs_at_the_given_standard_in_real_time()
{
    Program program({QStringLiteral("--standard"), QStringLiteral("1080_50i")});
    WirePeer peer(program.address);
    QVERIFY(peer.call("<get_video_standard/>").value(0).contains("<VideoRate>50</VideoRate>"));
    peer.call("<report_register><ReportType>ltc_input</ReportType></report_register>");
    QVERIFY(peer.wait_for_reports(20).size() >= 20);
}

void TestVeskProgram::has_the_given_board()
{
    Program program({QStringLiteral("--board"), QStringLiteral("uhd")});
    WirePeer peer(program.address);
    QVERIFY(peer.call("<get_one_configuration><ConfigurationItemName>ChannelConfigurationSet0"
                      "</ConfigurationItemName></get_one_configuration>")
                .value(0)
                .contains("<ConfigurationItemEffectiveValue>V_V<"));
}

void TestVeskProgram::makes_a_storm_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("at once") << QStringList{QStringLiteral("--storm")};
    QTest::newRow("spread") << QStringList{
        QStringLiteral("--storm"), QStringLiteral("--spread"), QStringLiteral("16")};
}

void TestVeskProgram::makes_a_storm()
{
    QFETCH(QStringList, arguments);
    Program program(arguments);
    WirePeer peer(program.address);
    peer.call("<channel_report_register><Channel>AN</Channel><ChannelReportType>info"
              "</ChannelReportType></channel_report_register>");
    // The channel does nothing.
    QVERIFY(peer.wait_for_reports(20).size() >= 20);
}

void TestVeskProgram::traces_on_standard_error()
{
    Program program({QStringLiteral("--trace"), QStringLiteral("--empty")});
    WirePeer peer(program.address);
    peer.call("<sync/>");
    QByteArray error;
    QTRY_VERIFY((error += program.process.readAllStandardError())
                    .contains("#1 > <reply><xid>1</xid><ok /></reply>\n"));
    QVERIFY(error.contains("#1 < <cmd><xid>1</xid><sync /></cmd>\n"));
}

void TestVeskProgram::traces_each_message_as_one_visible_line()
{
    Program program({QStringLiteral("--trace"), QStringLiteral("--empty")});
    WirePeer peer(program.address);
    peer.call("<debug_label>\n<DebugString>a\nb\x1b[31m\xc2\x9b\x7f\xc3\xa4</DebugString>"
              "</debug_label>");
    QByteArray error;
    QTRY_VERIFY((error += program.process.readAllStandardError()).contains("#1 > "));
    QCOMPARE(error.left(error.indexOf('\n')),
        QByteArray("#1 < <cmd><xid>1</xid><debug_label><DebugString>a\\u000ab\\u001b[31m\\u009b"
                   "\\u007f\xc3\xa4</DebugString></debug_label></cmd>"));
}

void TestVeskProgram::goes_on_when_nobody_reads_its_trace()
{
    Program program({QStringLiteral("--trace"), QStringLiteral("--empty")}, true);
    WirePeer peer(program.address);
    for (int call = 0; call < 3; ++call)
        QCOMPARE(peer.call("<sync/>"), QByteArrayList{"<ok />"});
    program.process.terminate();
    QCOMPARE(program.exit_code(), 0);
}

void TestVeskProgram::serves_with_its_streams_closed()
{
    QHostAddress const address = LoopbackAddress::unique();
    QProcess process;
    process.setChildProcessModifier([] {
        for (int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
            ::close(stream);
    });
    process.start(QStringLiteral(VESK_SIM_PROGRAM),
        {QStringLiteral("--address"), address.toString(), QStringLiteral("--trace")});
    QTcpSocket socket;
    QTRY_VERIFY((socket.connectToHost(address, 8913), socket.waitForConnected(1000)));
    for (int connection = 0; connection < 3; ++connection) {
        WirePeer peer(address);
        QCOMPARE(peer.call("<sync/>"), QByteArrayList{"<ok />"});
    }
    process.terminate();
    QVERIFY(process.waitForFinished(patience_ms));
    QCOMPARE(process.exitCode(), 0);
}

QTEST_GUILESS_MAIN(TestVeskProgram)
#include "tst_vesk_program.moc"
