// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/protocol/client.h"
#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_parse.h"
#include "tests/protocol/server_texts.h"
#include "tests/support/answers.h"
#include "tests/support/assert_log.h"
#include "tests/support/own_network.h"
#include "tests/support/patience.h"
#include "tests/support/scripted_server.h"
#include "tests/support/socket_probe.h"
#include "tests/support/virtual_time.h"

#include <QElapsedTimer>
#include <QFile>
#include <QSet>
#include <QTest>

#include <netinet/tcp.h>
#include <thread>
#include <utility>
#include <vector>

using namespace VCTP3;

namespace {

/// A client that notes what its loop does.
class WatchedClient : public Client
{
public:
    explicit WatchedClient(ScriptedServer const &server)
        : Client(server.ipaddr())
    {
    }
    ~WatchedClient() override { stop(); }

    void start() { run_forever_in_own_thread(0); }
    void connected() override
    {
        on_connected();
        ++times_connected;
    }
    void disconnected() override
    {
        outstanding_at_end = int(outstanding_commands());
        ++times_disconnected;
    }

    QStringList clips() const
    {
        QMutexLocker lock(&mutex);
        return clips_created;
    }

    std::atomic<int> times_connected{0};
    std::atomic<int> times_disconnected{0};
    std::atomic<int> outstanding_at_end{-1};
    AFunction on_connected; // set before the start

protected:
    void report_clip_created(AString const &clip_id) override
    {
        QMutexLocker lock(&mutex);
        clips_created.append(QString(clip_id));
    }

private:
    mutable QMutex mutex;
    QStringList clips_created;
};

struct Count
{
    void up() { ++value; }
    std::atomic<int> value{0};
};

/// Attempts to connect that have failed on this machine since its start.
qint64 failed_attempts()
{
    QFile file(QStringLiteral("/proc/net/snmp"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    QList<QByteArray> rows;
    for (QByteArray const &line : file.readAll().split('\n')) {
        if (line.startsWith("Tcp:"))
            rows.append(line);
    }
    if (rows.size() != 2)
        return 0;
    return rows[1].split(' ').value(rows[0].split(' ').indexOf("AttemptFails")).toLongLong();
}

} // namespace

class TestClient : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void knows_the_loopback_address();
    void dials_this_machine_by_default();
    void connects_sets_no_delay_and_says_so();
    void a_command_gets_its_answer();
    void what_it_calls_finds_the_connection_as_told();
    void a_new_address_takes_effect_at_the_next_connect();
    void an_absent_server_is_dialled_again_in_silence();
    void redials_wait_100_ms();
    void a_lost_connection_fails_each_command_once_data();
    void a_lost_connection_fails_each_command_once();
    void a_server_killed_and_restarted_is_found_again();
    void a_command_without_a_connection_fails();
    void a_message_of_32768_bytes_is_read();
    void reads_may_split_at_every_byte();
    void a_deep_tree_fits_the_loops_stack();
    void a_deep_message_fits_the_loops_stack();
    void the_periodic_call_waits_its_time();
    void the_periodic_call_is_held_back_at_4_outstanding();
    void a_second_periodic_call_replaces_the_first();
    void the_periodic_call_needs_no_server_that_speaks();
    void a_stream_may_be_reset_from_inside();
    void eight_threads_sending_at_once_arrive_whole();
    void senders_survive_a_server_that_goes_and_comes();
    void a_partial_write_ends_in_a_new_connection_data();
    void a_partial_write_ends_in_a_new_connection();
    void a_failed_write_fails_what_follows_at_once();
    void the_rest_of_a_message_never_begins_a_connection();
    void the_loop_runs_on_the_callers_thread_data();
    void the_loop_runs_on_the_callers_thread();
    void a_second_own_thread_asserts();
    void destruction_ends_the_loop_data();
    void destruction_ends_the_loop();
    void destruction_forgets_commands_in_silence();
};

void TestClient::knows_the_loopback_address()
{
    QCOMPARE(Client::localhost(), 2130706433U);
    QCOMPARE(Client::ip_127_0_0_1(), 2130706433U);
}

void TestClient::dials_this_machine_by_default()
{
    // Somebody else may listen on the machine's own 127.0.0.1.
    if (!OwnNetwork::is_inside()) {
        QCOMPARE(OwnNetwork::run("dials_this_machine_by_default"), QString());
        return;
    }
    ScriptedServer server(QHostAddress(QHostAddress::LocalHost));
    Client client;
    client.run_forever_in_own_thread(0);
    QTRY_VERIFY(client.isConnected());
    QTRY_COMPARE(server.connections_open(), 1);
}

void TestClient::connects_sets_no_delay_and_says_so()
{
    ScriptedServer server;
    WatchedClient client(server);
    QVERIFY(!client.isConnected());
    client.start();
    QTRY_COMPARE(client.times_connected.load(), 1);
    QVERIFY(client.isConnected());
    QCOMPARE(client.times_disconnected.load(), 0);
    int const descriptor = SocketProbe::descriptor_to(server.address(), ScriptedServer::port);
    QCOMPARE(SocketProbe::option(descriptor, IPPROTO_TCP, TCP_NODELAY), 1);
}

void TestClient::a_command_gets_its_answer()
{
    ScriptedServer server;
    server.answer_with(ScriptedServer::ok_to);
    WatchedClient client(server);
    client.start();
    QTRY_VERIFY(client.isConnected());
    Answers answers;
    AString const xid = client.cmd_sync(answers.ok(), answers.error());
    QTRY_COMPARE(answers.oks(), 1);
    QCOMPARE(answers.errors(), QStringList());
    QTRY_COMPARE(client.outstanding_commands(), 0U);
    QCOMPARE(server.received(),
        "<cmd>\r\n<xid>" + QString(xid).toUtf8() + "</xid>\r\n<sync />\r\n</cmd>");
}

void TestClient::what_it_calls_finds_the_connection_as_told()
{
    /// Sends a command whenever its connection comes or goes, as one that registers for reports.
    class SendingClient : public Client
    {
    public:
        explicit SendingClient(ScriptedServer const &server)
            : Client(server.ipaddr())
        {
        }
        ~SendingClient() override { stop(); }

        Answers answers;
        std::atomic<bool> up_when_connected{false};
        std::atomic<bool> up_when_failing{false};
        std::atomic<bool> up_when_disconnected{false};
        std::atomic<int> times_disconnected{0};

        void in_flight()
        {
            cmd_sync({}, AFunction2<AString, ErrorCode>::bind<&SendingClient::failed>(this));
        }

    private:
        void connected() override
        {
            up_when_connected = isConnected();
            cmd_sync(answers.ok(), answers.error());
        }
        void failed(AString const &, ErrorCode) { up_when_failing = isConnected(); }
        void disconnected() override
        {
            up_when_disconnected = isConnected();
            cmd_sync(answers.ok(), answers.error());
            ++times_disconnected;
        }
    };
    ScriptedServer server;
    server.answer_with(ScriptedServer::ok_to);
    SendingClient client(server);
    client.run_forever_in_own_thread(0);
    QTRY_COMPARE(client.answers.oks(), 1);
    QVERIFY(client.up_when_connected);
    QCOMPARE(client.answers.errors(), QStringList());

    server.answer_with([](QByteArray const &) { return QByteArray(); });
    client.up_when_failing = true;
    client.up_when_disconnected = true;
    client.in_flight();
    QTRY_COMPARE(server.commands().size(), 2);
    server.hang_up();
    QTRY_COMPARE(client.times_disconnected.load(), 1);
    QVERIFY(!client.up_when_failing);
    QVERIFY(!client.up_when_disconnected);
    QCOMPARE(client.answers.errors(), QStringList({Answers::failing_all()}));
}

void TestClient::a_new_address_takes_effect_at_the_next_connect()
{
    ScriptedServer first;
    ScriptedServer second;
    WatchedClient client(first);
    client.start();
    QTRY_COMPARE(first.connections_open(), 1);
    client.set_ipaddr(second.ipaddr());
    first.say(clip_created("a"));
    QTRY_COMPARE(client.clips().size(), 1);
    QCOMPARE(second.connections_made(), 0);
    first.hang_up();
    QTRY_COMPARE(second.connections_open(), 1);
    QCOMPARE(first.connections_made(), 1);
}

void TestClient::an_absent_server_is_dialled_again_in_silence()
{
    ScriptedServer server;
    server.kill();
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
    WatchedClient client(server);
    qint64 const before = failed_attempts();
    client.start();
    QTRY_VERIFY(failed_attempts() >= before + 2);
    QVERIFY(!client.isConnected());
    server.restart();
    QTRY_COMPARE(client.times_connected.load(), 1);
    QVERIFY(client.isConnected());
    QCOMPARE(client.times_disconnected.load(), 0);
}

void TestClient::redials_wait_100_ms()
{
    ScriptedServer server;
    WatchedClient client(server);
    QElapsedTimer timer;
    timer.start();
    client.start();
    for (int connections = 1; connections <= 4; ++connections) {
        QVERIFY(ScriptedServer::wait_for([&] { return server.connections_open() == 1; }));
        QCOMPARE(server.connections_made(), connections);
        server.hang_up();
    }
    QVERIFY(timer.elapsed() >= 4 * 100 - 4);
}

void TestClient::a_lost_connection_fails_each_command_once_data()
{
    QTest::addColumn<QByteArray>("last_words");
    QTest::newRow("hangs up") << QByteArray();
    QTest::newRow("malformed") << QByteArray("<reply><xid>1</xid><ok></reply>");
    QTest::newRow("one byte too long") << report_of_size(32769);
    QTest::newRow("no end to it") << "<report>" + QByteArray(40000, 'x');
    QTest::newRow("no root tag") << QByteArray(40000, 'x');
}

void TestClient::a_lost_connection_fails_each_command_once()
{
    QFETCH(QByteArray, last_words);
    ScriptedServer server;
    WatchedClient client(server);
    client.start();
    QTRY_VERIFY(client.isConnected());
    Answers answers;
    for (int i = 0; i < 3; ++i)
        client.cmd_sync(answers.ok(), answers.error());
    QTRY_COMPARE(server.commands().size(), 3);
    QCOMPARE(client.outstanding_commands(), 3U);
    if (last_words.isEmpty())
        server.hang_up();
    else
        server.say(last_words);
    QTRY_COMPARE(client.times_disconnected.load(), 1);
    QCOMPARE(answers.errors(), QStringList(3, Answers::failing_all()));
    QCOMPARE(client.outstanding_at_end.load(), 0);
    QCOMPARE(answers.oks(), 0);
    QCOMPARE(client.clips(), QStringList());

    // Nothing of the old stream is left behind.
    QTRY_COMPARE(client.times_connected.load(), 2);
    QTRY_COMPARE(server.connections_made(), 2);
    QTRY_COMPARE(server.connections_open(), 1);
    server.say(clip_created("a"));
    QTRY_COMPARE(client.clips(), QStringList({QStringLiteral("a")}));
    QCOMPARE(answers.errors().size(), 3);
}

void TestClient::a_server_killed_and_restarted_is_found_again()
{
    ScriptedServer server;
    WatchedClient client(server);
    client.start();
    for (int round = 1; round <= 3; ++round) {
        QTRY_COMPARE(client.times_connected.load(), round);
        Answers answers;
        for (int i = 0; i < 20; ++i)
            client.cmd_sync(answers.ok(), answers.error());
        server.kill();
        QTRY_COMPARE(client.times_disconnected.load(), round);
        QCOMPARE(answers.errors(), QStringList(20, Answers::failing_all()));
        QCOMPARE(answers.oks(), 0);
        server.restart();
    }
    QTRY_VERIFY(client.isConnected());
    server.answer_with(ScriptedServer::ok_to);
    Answers answers;
    client.cmd_sync(answers.ok(), answers.error());
    QTRY_COMPARE(answers.oks(), 1);
}

void TestClient::a_command_without_a_connection_fails()
{
    ScriptedServer server;
    WatchedClient client(server);
    Answers answers;
    client.cmd_sync(answers.ok(), answers.error());
    // On this thread, as the loop does not even run.
    QCOMPARE(answers.errors(), QStringList({Answers::failing_all()}));
    QCOMPARE(client.outstanding_commands(), 0U);
}

void TestClient::a_message_of_32768_bytes_is_read()
{
    ScriptedServer server;
    WatchedClient client(server);
    client.start();
    QTRY_COMPARE(server.connections_open(), 1);
    QTRY_VERIFY(client.isConnected());
    server.say(report_of_size(32768) + report_of_size(32768));
    QTRY_COMPARE(client.clips().size(), 2);
    QCOMPARE(client.clips()[1].size(), 32768 - clip_created("").size());
    QCOMPARE(client.times_disconnected.load(), 0);
}

void TestClient::reads_may_split_at_every_byte()
{
    ScriptedServer server;
    WatchedClient client(server);
    client.start();
    QTRY_VERIFY(client.isConnected());
    Answers answers;
    client.cmd_download_clipids(answers.ok(), answers.text(), answers.error());
    QTRY_COMPARE(server.commands().size(), 1);
    QByteArray const command = server.commands().constFirst();
    QByteArray const utf8 = QByteArrayLiteral("caf\xC3\xA9 \xE2\x82\xAC");
    server.say_bytewise(clip_listed(command, "a &lt;") + clip_created(utf8) + "\r\n"
            + clip_listed(command, "b") + ScriptedServer::ok_to(command),
        SocketProbe::descriptor_to(server.address(), ScriptedServer::port));
    QTRY_COMPARE(answers.oks(), 1);
    QCOMPARE(answers.texts(), QStringList({QStringLiteral("a <"), QStringLiteral("b")}));
    QCOMPARE(client.clips(), QStringList({QString::fromUtf8(utf8)}));
}

void TestClient::a_deep_tree_fits_the_loops_stack()
{
    ScriptedServer server;
    WatchedClient client(server);
    static std::atomic<int> same_text;
    same_text = -1;
    client.on_connected = AFunction([] {
        constexpr int depth = 10900;
        AString const text
            = AString::rep(AString::l1("<a>"), depth) + AString::rep(AString::l1("</a>"), depth);
        XMLTree copy;
        {
            XMLTree const tree = XMLParse(text);
            copy = tree;
        }
        same_text = copy.flatten(XMLTree::FlattenCompact, false) == text ? 1 : 0;
    });
    client.start();
    QTRY_COMPARE(same_text.load(), 1);
}

void TestClient::a_deep_message_fits_the_loops_stack()
{
    ScriptedServer server;
    WatchedClient client(server);
    client.start();
    QTRY_VERIFY(client.isConnected());
    QTRY_COMPARE(server.connections_open(), 1);
    // As deep as a whole message can be, and then as deep as one that breaks off can be.
    server.say("<report>" + QByteArray("<a>").repeated(4600) + QByteArray("</a>").repeated(4600)
        + "<clip_created><ClipID>deep</ClipID></clip_created></report>");
    QTRY_COMPARE(client.clips(), QStringList({QStringLiteral("deep")}));
    server.say("<report>" + QByteArray("<a>").repeated(10900) + "</report>");
    QTRY_COMPARE(client.times_connected.load(), 2);
}

void TestClient::the_periodic_call_waits_its_time()
{
    VirtualTime time;
    time.advance_ms(1000);
    ScriptedServer server;
    WatchedClient client(server);
    Count calls;
    client.add_periodic(5, AFunction::bind<&Count::up>(&calls));
    client.start();
    QTRY_COMPARE(client.times_connected.load(), 1);
    QTRY_COMPARE(server.connections_open(), 1);
    int turns = 0;
    // The loop looks at the time between two reads.
    auto const turn_twice = [&] {
        for (int i = 0; i < 2; ++i) {
            server.say(clip_created("a"));
            ++turns;
            QTRY_COMPARE(client.clips().size(), turns);
        }
    };
    turn_twice();
    time.advance_ms(4999);
    turn_twice();
    QCOMPARE(calls.value.load(), 0);
    time.advance_ms(1);
    turn_twice();
    QCOMPARE(calls.value.load(), 1);
    turn_twice();
    QCOMPARE(calls.value.load(), 1);
    time.advance_ms(12000);
    turn_twice();
    QCOMPARE(calls.value.load(), 2);

    // A new connection begins a new period.
    time.advance_ms(4000);
    server.hang_up();
    QTRY_COMPARE(client.times_connected.load(), 2);
    QTRY_COMPARE(server.connections_open(), 1);
    time.advance_ms(4000);
    turn_twice();
    QCOMPARE(calls.value.load(), 2);
    time.advance_ms(1000);
    turn_twice();
    QCOMPARE(calls.value.load(), 3);
}

void TestClient::the_periodic_call_is_held_back_at_4_outstanding()
{
    ScriptedServer server;
    WatchedClient client(server);
    Count calls;
    client.add_periodic(0, AFunction::bind<&Count::up>(&calls));
    client.start();
    QTRY_COMPARE(server.connections_open(), 1);
    QTRY_VERIFY(calls.value > 0);

    Answers answers;
    for (int i = 0; i < 4; ++i)
        client.cmd_sync(answers.ok(), answers.error());
    int turns = 0;
    auto const turn = [&] {
        server.say(clip_created("a"));
        ++turns;
        QTRY_COMPARE(client.clips().size(), turns);
    };
    turn();
    int const held_back_at = calls.value;
    for (int i = 0; i < 5; ++i)
        turn();
    QCOMPARE(calls.value.load(), held_back_at);

    QTRY_COMPARE(server.commands().size(), 4);
    server.say(ScriptedServer::ok_to(server.commands().constFirst()));
    QTRY_VERIFY(calls.value > held_back_at);
    QCOMPARE(answers.oks(), 1);
}

void TestClient::a_second_periodic_call_replaces_the_first()
{
    ScriptedServer server;
    WatchedClient client(server);
    Count first;
    Count second;
    client.add_periodic(0, AFunction::bind<&Count::up>(&first));
    client.add_periodic(0, AFunction::bind<&Count::up>(&second));
    client.start();
    QTRY_VERIFY(second.value > 0);
    QCOMPARE(first.value.load(), 0);
}

void TestClient::the_periodic_call_needs_no_server_that_speaks()
{
    ScriptedServer server;
    WatchedClient client(server);
    Count calls;
    client.add_periodic(0, AFunction::bind<&Count::up>(&calls));
    client.start();
    // The first comes before the loop waits for the server.
    QTRY_VERIFY(calls.value >= 2);
    QCOMPARE(client.times_connected.load(), 1);
    QCOMPARE(client.times_disconnected.load(), 0);
}

void TestClient::a_stream_may_be_reset_from_inside()
{
    class ResettingClient : public WatchedClient
    {
    public:
        using WatchedClient::WatchedClient;
        ~ResettingClient() override { stop(); }

    protected:
        void report_clip_created(AString const &clip_id) override
        {
            WatchedClient::report_clip_created(clip_id);
            reset_input();
        }
    };
    ScriptedServer server;
    ResettingClient client(server);
    client.start();
    QTRY_VERIFY(client.isConnected());
    QTRY_COMPARE(server.connections_open(), 1);
    // What came in the same read is dropped with the rest of the stream.
    server.say(clip_created("a") + clip_created("b"));
    QTRY_COMPARE(client.clips(), QStringList({QStringLiteral("a")}));
    server.say(clip_created("c"));
    QTRY_COMPARE(client.clips(), QStringList({QStringLiteral("a"), QStringLiteral("c")}));
    QCOMPARE(client.times_disconnected.load(), 0);
}

void TestClient::eight_threads_sending_at_once_arrive_whole()
{
    constexpr int threads = 8;
    constexpr int each = 50;
    ScriptedServer server;
    server.answer_with(ScriptedServer::ok_to);
    WatchedClient client(server);
    client.start();
    QTRY_VERIFY(client.isConnected());
    Answers answers;
    auto const text_of = [](int thread, int i) {
        // Around the size at which a message leaves in more than one write.
        return QStringLiteral("%1/%2 ").arg(thread).arg(i)
            + QString(i * 97 % 4000, QLatin1Char(char('a' + thread)));
    };
    std::vector<std::thread> senders;
    for (int thread = 0; thread < threads; ++thread) {
        senders.emplace_back([&, thread] {
            for (int i = 0; i < each; ++i)
                client.cmd_log(AString::l1("file"), unsigned(i), AString::l1("client"),
                    AString(text_of(thread, i)), answers.ok(), answers.error());
        });
    }
    for (std::thread &sender : senders)
        sender.join();
    QTRY_COMPARE(answers.oks(), threads * each);
    QCOMPARE(answers.errors(), QStringList());

    QSet<QByteArray> texts;
    QSet<QByteArray> xids;
    for (QByteArray const &command : server.commands()) {
        bool error = false;
        XMLTree const tree
            = XMLParse(AString::from_utf8(command.constData(), command.size()), &error);
        QVERIFY(!error);
        texts.insert(QString(
            tree.get_subnode(AString::l1("log")).get_subnode(AString::l1("LogText")).get_content())
                         .toUtf8());
        xids.insert(ScriptedServer::xid(command));
    }
    QCOMPARE(xids.size(), threads * each);
    for (int thread = 0; thread < threads; ++thread) {
        for (int i = 0; i < each; ++i)
            QVERIFY(texts.contains(text_of(thread, i).toUtf8()));
    }
}

void TestClient::senders_survive_a_server_that_goes_and_comes()
{
    constexpr int threads = 4;
    constexpr int each = 300;
    ScriptedServer server;
    server.answer_with(ScriptedServer::ok_to);
    WatchedClient client(server);
    client.start();
    QTRY_VERIFY(client.isConnected());
    Answers answers;
    std::atomic<int> sent{0};
    std::vector<std::thread> senders;
    for (int thread = 0; thread < threads; ++thread) {
        senders.emplace_back([&] {
            for (int i = 0; i < each; ++i) {
                client.cmd_sync(answers.ok(), answers.error());
                ++sent;
            }
        });
    }
    for (int part = 1; part <= 3; ++part) {
        QTRY_VERIFY(sent >= part * threads * each / 4);
        server.hang_up();
    }
    for (std::thread &sender : senders)
        sender.join();
    // Each command is answered once, by the server or by the loss of the connection.
    QTRY_COMPARE(answers.oks() + int(answers.errors().size()), threads * each);
    QTRY_COMPARE(client.outstanding_commands(), 0U);
    QCOMPARE(QSet<QString>(answers.errors().cbegin(), answers.errors().cend()),
        answers.errors().isEmpty() ? QSet<QString>() : QSet<QString>{Answers::failing_all()});
}

void TestClient::a_partial_write_ends_in_a_new_connection_data()
{
    QTest::addColumn<int>("text_size");
    for (int const size : {6000, 10000, 20000, 100000, 1000000})
        QTest::addRow("%d bytes", size) << size;
}

void TestClient::a_partial_write_ends_in_a_new_connection()
{
    QFETCH(int, text_size);
    ScriptedServer server;
    server.set_receive_buffer(1);
    WatchedClient client(server);
    client.start();
    QTRY_COMPARE(client.times_connected.load(), 1);
    QTRY_COMPARE(server.connections_open(), 1);
    server.set_reading(false);
    // No command may be sent on the connection that follows before it is waited for.
    server.refuse_connections();
    // A small buffer that nobody empties, and a limit to the wait for room in it, so that the
    // socket takes part of a write.
    int const descriptor = SocketProbe::descriptor_to(server.address(), ScriptedServer::port);
    QVERIFY(SocketProbe::set_send_buffer(descriptor, 1));
    QVERIFY(SocketProbe::set_send_timeout(descriptor, 50));

    Answers answers;
    AString const text(QString(text_size, QLatin1Char('x')));
    int sent = 0;
    while (answers.errors().isEmpty() && client.times_disconnected == 0) {
        client.cmd_log(
            AString::l1("file"), 1, AString::l1("client"), text, answers.ok(), answers.error());
        ++sent;
    }
    server.set_reading(true);
    server.restart();
    QTRY_COMPARE(client.times_connected.load(), 2);
    QCOMPARE(answers.errors(), QStringList(sent, Answers::failing_all()));

    server.answer_with(ScriptedServer::ok_to);
    client.cmd_sync(answers.ok(), answers.error());
    QTRY_COMPARE(answers.oks(), 1);
}

void TestClient::a_failed_write_fails_what_follows_at_once()
{
    /// Writes from the loop, which so cannot close the connection meanwhile, until something fails.
    class WritingClient : public Client
    {
    public:
        explicit WritingClient(ScriptedServer const &of)
            : Client(of.ipaddr())
            , server(of)
        {
        }
        ~WritingClient() override { stop(); }

        Answers answers;
        std::atomic<bool> was_up{false};
        std::atomic<int> errors_missing{-1};

    private:
        void connected() override
        {
            if (errors_missing >= 0)
                return;
            int const socket = SocketProbe::descriptor_to(server.address(), ScriptedServer::port);
            SocketProbe::set_send_buffer(socket, 1);
            SocketProbe::set_send_timeout(socket, 50);
            AString const text(QString(10000, QLatin1Char('x')));
            int commands = 0;
            for (; commands < 20 && answers.errors().isEmpty(); ++commands)
                cmd_debug_label(text, answers.ok(), answers.error());
            cmd_sync(answers.ok(), answers.error());
            was_up = isConnected();
            errors_missing = commands + 1 - int(answers.errors().size());
        }

        ScriptedServer const &server;
    };
    ScriptedServer server;
    server.set_receive_buffer(1);
    server.set_reading(false);
    WritingClient client(server);
    client.run_forever_in_own_thread(0);
    QTRY_VERIFY(client.errors_missing >= 0);
    QCOMPARE(client.errors_missing.load(), 0);
    QVERIFY(client.was_up);
}

void TestClient::the_rest_of_a_message_never_begins_a_connection()
{
    /// Loses its connection behind the first block of a message.
    class TornClient : public Client
    {
    public:
        explicit TornClient(ScriptedServer &of)
            : Client(of.ipaddr())
            , server(of)
        {
        }
        ~TornClient() override { stop(); }
        void connected() override { ++times_connected; }

        std::atomic<int> times_connected{0};
        bool tear = false;

    protected:
        void send(void const *data, unsigned long long size) override
        {
            Client::send(data, size);
            if (!std::exchange(tear, false))
                return;
            server.hang_up();
            ScriptedServer::wait_for([this] { return times_connected == 2; });
        }

    private:
        ScriptedServer &server;
    };
    ScriptedServer server;
    server.answer_with(ScriptedServer::ok_to);
    TornClient client(server);
    client.run_forever_in_own_thread(0);
    QTRY_COMPARE(client.times_connected.load(), 1);
    QTRY_COMPARE(server.connections_open(), 1);

    Answers torn;
    client.tear = true;
    client.cmd_debug_label(AString(QString(5000, QLatin1Char('x'))), torn.ok(), torn.error());
    QCOMPARE(client.times_connected.load(), 2);
    QCOMPARE(torn.errors(), QStringList{Answers::failing_all()});

    Answers whole;
    AString const xid = client.cmd_sync(whole.ok(), whole.error());
    QTRY_COMPARE(whole.oks(), 1);
    QCOMPARE(server.received(),
        "<cmd>\r\n<xid>" + QString(xid).toUtf8() + "</xid>\r\n<sync />\r\n</cmd>");
    QCOMPARE(torn.oks(), 0);
    QCOMPARE(whole.errors(), QStringList());
}

using RunLoop = void (Client::*)();
Q_DECLARE_METATYPE(RunLoop)

void TestClient::the_loop_runs_on_the_callers_thread_data()
{
    QTest::addColumn<RunLoop>("run");
    QTest::newRow("run_forever") << &Client::run_forever;
    QTest::newRow("run_forever_ownthread") << &Client::run_forever_ownthread;
}

void TestClient::the_loop_runs_on_the_callers_thread()
{
    QFETCH(RunLoop, run);
    ScriptedServer server;
    static std::atomic<std::thread::id> loop;
    std::thread runner;
    {
        WatchedClient client(server);
        client.on_connected = AFunction([] { loop = std::this_thread::get_id(); });
        runner = std::thread([&] { (client.*run)(); });
        QTRY_COMPARE(client.times_connected.load(), 1);
        QVERIFY(loop.load() == runner.get_id());
        // It serves the connection like any other loop, and finds it again.
        server.answer_with(ScriptedServer::ok_to);
        Answers answers;
        client.cmd_sync(answers.ok(), answers.error());
        QTRY_COMPARE(answers.oks(), 1);
        server.hang_up();
        QTRY_COMPARE(client.times_connected.load(), 2);
    }
    runner.join();
}

void TestClient::a_second_own_thread_asserts()
{
    ScriptedServer server;
    WatchedClient client(server);
    AssertLog asserts;
    client.start();
    QCOMPARE(asserts.take(), QStringList());
    client.start();
    QCOMPARE(asserts.take(), QStringList({QStringLiteral("!in_own_thread")}));
    QTRY_COMPARE(client.times_connected.load(), 1);
    QTRY_COMPARE(server.connections_open(), 1);
    // A second loop would dial again when the connection goes.
    server.hang_up();
    QTRY_COMPARE(client.times_connected.load(), 2);
    QTRY_COMPARE(server.connections_made(), 2);
}

void TestClient::destruction_ends_the_loop_data()
{
    QTest::addColumn<QString>("state");
    QTest::newRow("not started") << "not started";
    QTest::newRow("just started") << "just started";
    QTest::newRow("between two attempts") << "no server";
    QTest::newRow("connected and idle") << "connected";
    QTest::newRow("in a write that waits") << "writing";
}

void TestClient::destruction_ends_the_loop()
{
    QFETCH(QString, state);
    ScriptedServer server;
    static WatchedClient *writer;
    {
        WatchedClient client(server);
        writer = &client;
        if (state == QLatin1String("no server"))
            server.kill();
        if (state == QLatin1String("writing")) {
            server.set_reading(false);
            client.on_connected = AFunction([] {
                AString const text(QString(1000000, QLatin1Char('x')));
                for (;;) {
                    Answers lost;
                    writer->cmd_log(AString::l1("file"), 1, AString::l1("client"), text, lost.ok(),
                        lost.error());
                    if (!lost.errors().isEmpty())
                        return;
                }
            });
        }
        if (state != QLatin1String("not started"))
            client.start();
        if (state == QLatin1String("connected"))
            QTRY_VERIFY(client.isConnected());
        if (state == QLatin1String("writing"))
            QTRY_VERIFY(SocketProbe::is_full(
                SocketProbe::descriptor_to(server.address(), ScriptedServer::port)));
    }
    if (state == QLatin1String("connected"))
        QTRY_COMPARE(server.connections_open(), 0);
}

void TestClient::destruction_forgets_commands_in_silence()
{
    ScriptedServer server;
    Answers answers;
    {
        WatchedClient client(server);
        client.start();
        QTRY_VERIFY(client.isConnected());
        client.cmd_sync(answers.ok(), answers.error());
        QTRY_COMPARE(server.commands().size(), 1);
    }
    QCOMPARE(answers.errors(), QStringList());
    QCOMPARE(answers.oks(), 0);
}

QTEST_GUILESS_MAIN(TestClient)
#include "tst_client.moc"
