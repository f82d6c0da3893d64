// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/support/loopback_address.h"

#include <QByteArray>
#include <QHostAddress>
#include <QList>

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

/// A far end that says what it is told, on a thread and an address of its own, so that a test can
/// block while the far end goes on. It knows messages only by their closing tag. Who is connected
/// when it is told something is meant by it, whether it has taken the connection yet or not.
/// Thread: any.
class ScriptedServer
{
public:
    static constexpr quint16 port = 8913;
    /// What to say to one command; runs on the server's thread.
    using Answer = std::function<QByteArray(QByteArray const &command)>;

    /// Listens from the start.
    explicit ScriptedServer(QHostAddress const &at = LoopbackAddress::unique());
    ~ScriptedServer();
    ScriptedServer(ScriptedServer const &) = delete;
    ScriptedServer &operator=(ScriptedServer const &) = delete;

    QHostAddress address() const { return host; }
    unsigned int ipaddr() const { return host.toIPv4Address(); }

    /// The command's `<xid>`.
    static QByteArray xid(QByteArray const &command);
    /// A reply to a command, with \a body as the reply element.
    static QByteArray reply(QByteArray const &command, QByteArray const &body);
    static QByteArray ok_to(QByteArray const &command) { return reply(command, "<ok/>"); }

    /// Answers each command that comes from now on; null stays silent.
    void answer_with(Answer const &with);
    /// Sends to all connections, as fast as they take it.
    void say(QByteArray const &bytes);
    /// Sends a byte at a time to the newest connection, each when the far end's \a descriptor, one
    /// of this process, holds nothing more to read. Blocks until all are read.
    void say_bytewise(QByteArray const &bytes, int descriptor);
    /// Stops or goes on taking what clients send.
    void set_reading(bool on);
    /// The kernel's receive buffer of connections made from now on, in bytes.
    void set_receive_buffer(int bytes);

    /// These return when it is done. `kill` also lets nobody in until `restart`, and
    /// `refuse_connections` does that alone.
    void hang_up();
    void kill();
    void refuse_connections();
    void restart();

    int connections_made() const;
    int connections_open() const;
    /// Whole commands in the order of arrival, of all connections.
    QList<QByteArray> commands() const;
    /// All bytes that the newest connection has sent.
    QByteArray received() const;
    /// Bytes that went to the kernel, of all connections.
    qint64 bytes_sent() const;
    /// Those of them that have reached the far end's kernel, with the one connection there is.
    qint64 bytes_delivered() const;

    /// Blocks until \a state is true; false if that takes more than `patience_ms`.
    static bool wait_for(std::function<bool()> const &state);
    /// Blocks until there is something to send and from now on nobody takes any of it for 200 ms.
    bool wait_until_stalled();

private:
    struct Connection
    {
        int descriptor;
        QByteArray received;
        qsizetype cut = 0; // commands have been taken out of `received` up to here
        QByteArray to_send;
        qsizetype sent = 0;
    };
    using Lock = std::unique_lock<std::mutex>;

    // These run on the server's thread.
    void run();
    int wait_for_events(Lock &lock);
    void serve(Connection &connection, short events, Lock &lock);
    void read_some(Connection &connection, Lock &lock);
    void answer_commands(Connection &connection, Lock &lock);
    void write_some(Connection &connection);
    bool listen();
    void stop_listening();
    void close_all();

    void on_thread(std::function<void()> const &task);
    /// Takes the connections that are made: to their clients they are open.
    void accept_waiting();
    void wake_thread() const;

    QHostAddress const host;
    int const wake;
    mutable std::mutex mutex; // guards all below
    std::condition_variable tasks_done;
    std::vector<std::function<void()>> tasks;
    int listener = -1;
    bool ending = false;
    bool reading = true;
    bool stalled = false;
    int receive_buffer = 0;
    int made = 0;
    qint64 sent_in_all = 0;
    Answer answer;
    QList<QByteArray> all_commands;
    QByteArray newest_received;
    std::deque<Connection> connections; // newest last; one that is served stays where it is
    std::thread thread;
};
