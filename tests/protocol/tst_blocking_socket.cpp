// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/protocol/blocking_socket_p.h"
#include "tests/support/patience.h"
#include "tests/support/scripted_server.h"
#include "tests/support/socket_probe.h"

#include <QElapsedTimer>
#include <QTest>

#include <atomic>
#include <netinet/tcp.h>
#include <thread>

using VCTP3::BlockingSocket;
using VCTP3::WakeUp;

class TestBlockingSocket : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void carries_bytes_both_ways();
    void nobody_there_gives_null();
    void a_set_wake_up_ends_each_wait();
    void a_wake_up_from_another_thread_ends_a_wait();
    void no_delay_is_set_on_the_descriptor();
    void a_quiet_line_times_out();
    void a_write_to_a_closed_peer_fails_without_a_signal();
    void shutdown_frees_a_write_that_waits();
    void the_descriptor_lives_as_long_as_a_holder();

private:
    std::shared_ptr<BlockingSocket> connect_to(ScriptedServer const &server)
    {
        return BlockingSocket::connect(server.ipaddr(), ScriptedServer::port, awake);
    }
    int descriptor(ScriptedServer const &server)
    {
        return SocketProbe::descriptor_to(server.address(), ScriptedServer::port);
    }

    WakeUp awake; // never set
};

void TestBlockingSocket::carries_bytes_both_ways()
{
    ScriptedServer server;
    server.answer_with([](QByteArray const &command) { return command.toUpper(); });
    auto const socket = connect_to(server);
    QVERIFY(socket);
    QCOMPARE(socket->send("<cmd></cmd>", 11), 11LL);
    QCOMPARE(socket->wait_readable(patience_ms, awake), BlockingSocket::Readable::yes);
    char bytes[100];
    QCOMPARE(socket->receive(bytes, sizeof bytes), 11LL);
    QCOMPARE(QByteArray(bytes, 11), QByteArray("<CMD></CMD>"));

    server.hang_up();
    QCOMPARE(socket->wait_readable(patience_ms, awake), BlockingSocket::Readable::yes);
    QCOMPARE(socket->receive(bytes, sizeof bytes), 0LL);
}

void TestBlockingSocket::nobody_there_gives_null()
{
    ScriptedServer server;
    server.kill();
    QVERIFY(!connect_to(server));
}

void TestBlockingSocket::a_set_wake_up_ends_each_wait()
{
    ScriptedServer server;
    auto const socket = connect_to(server);
    WakeUp wake;
    QVERIFY(!wake.is_set());
    wake.set();
    QVERIFY(wake.is_set());
    // Each of these would block for more than the time-out of this test.
    wake.wait(1000000);
    QCOMPARE(socket->wait_readable(1000000, wake), BlockingSocket::Readable::timeout);
    QCOMPARE(socket->wait_readable(1000000, wake), BlockingSocket::Readable::timeout);
    // An address for documentation, where nobody answers.
    QVERIFY(!BlockingSocket::connect(0xC0000201U, ScriptedServer::port, wake));
}

void TestBlockingSocket::a_wake_up_from_another_thread_ends_a_wait()
{
    ScriptedServer server;
    auto const socket = connect_to(server);
    WakeUp wake;
    std::atomic<bool> waiting{false};
    std::thread waiter([&] {
        waiting = true;
        socket->wait_readable(1000000, wake);
    });
    QVERIFY(ScriptedServer::wait_for([&] { return waiting.load(); }));
    wake.set();
    waiter.join();
}

void TestBlockingSocket::no_delay_is_set_on_the_descriptor()
{
    ScriptedServer server;
    auto const socket = connect_to(server);
    QCOMPARE(SocketProbe::option(descriptor(server), IPPROTO_TCP, TCP_NODELAY), 0);
    socket->set_no_delay();
    QCOMPARE(SocketProbe::option(descriptor(server), IPPROTO_TCP, TCP_NODELAY), 1);
}

void TestBlockingSocket::a_quiet_line_times_out()
{
    ScriptedServer server;
    auto const socket = connect_to(server);
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(socket->wait_readable(50, awake), BlockingSocket::Readable::timeout);
    QVERIFY(timer.elapsed() >= 49);
}

void TestBlockingSocket::a_write_to_a_closed_peer_fails_without_a_signal()
{
    ScriptedServer server;
    auto const socket = connect_to(server);
    QVERIFY(ScriptedServer::wait_for([&] { return server.connections_open() == 1; }));
    server.hang_up();
    // The first write may still be taken; the answer to it makes the next one fail.
    QVERIFY(ScriptedServer::wait_for([&] { return socket->send("x", 1) < 1; }));
}

void TestBlockingSocket::shutdown_frees_a_write_that_waits()
{
    ScriptedServer server;
    auto const socket = connect_to(server);
    QVERIFY(ScriptedServer::wait_for([&] { return server.connections_open() == 1; }));
    server.set_reading(false);
    QByteArray const flood(1 << 20, 'x');
    std::thread writer([&] {
        while (socket->send(flood.constData(), std::size_t(flood.size())) > 0) { }
    });
    // Ends a write that waits as well as one that is still to come.
    socket->shutdown();
    writer.join();
}

void TestBlockingSocket::the_descriptor_lives_as_long_as_a_holder()
{
    ScriptedServer server;
    auto first = connect_to(server);
    auto second = first;
    first.reset();
    QVERIFY(descriptor(server) >= 0);
    second.reset();
    QCOMPARE(descriptor(server), -1);
}

QTEST_GUILESS_MAIN(TestBlockingSocket)
#include "tst_blocking_socket.moc"
