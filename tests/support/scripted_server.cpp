// SPDX-License-Identifier: Apache-2.0
#include "tests/support/scripted_server.h"

#include "tests/support/patience.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>

namespace {

constexpr int stall_ms = 200;
constexpr qsizetype most_per_write = 65536;

/// A listening descriptor; -1 if the address is taken.
int listen_on(QHostAddress const &address, int receive_buffer)
{
    sockaddr_in own{};
    own.sin_family = AF_INET;
    own.sin_addr.s_addr = htonl(address.toIPv4Address());
    own.sin_port = htons(ScriptedServer::port);
    int const descriptor = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    int const on = 1;
    ::setsockopt(descriptor, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
    if (receive_buffer > 0)
        ::setsockopt(descriptor, SOL_SOCKET, SO_RCVBUF, &receive_buffer, sizeof receive_buffer);
    if (::bind(descriptor, reinterpret_cast<sockaddr *>(&own), sizeof own) == 0
        && ::listen(descriptor, 64) == 0)
        return descriptor;
    ::close(descriptor);
    return -1;
}

} // namespace

ScriptedServer::ScriptedServer(QHostAddress const &at)
    : host(at)
    , wake(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))
{
    if (!listen())
        qFatal("The test's server cannot listen on its address");
    thread = std::thread([this] { run(); });
}

ScriptedServer::~ScriptedServer()
{
    {
        Lock lock(mutex);
        ending = true;
    }
    wake_thread();
    thread.join();
    close_all();
    stop_listening();
    ::close(wake);
}

QByteArray ScriptedServer::xid(QByteArray const &command)
{
    qsizetype const from = command.indexOf("<xid>") + 5;
    return command.mid(from, command.indexOf("</xid>") - from);
}

QByteArray ScriptedServer::reply(QByteArray const &command, QByteArray const &body)
{
    return "<reply><xid>" + xid(command) + "</xid>" + body + "</reply>";
}

void ScriptedServer::answer_with(Answer const &with)
{
    Lock lock(mutex);
    answer = with;
}

void ScriptedServer::say(QByteArray const &bytes)
{
    {
        Lock lock(mutex);
        accept_waiting();
        for (Connection &connection : connections)
            connection.to_send.append(bytes.constData(), bytes.size());
        stalled = false;
    }
    wake_thread();
}

void ScriptedServer::say_bytewise(QByteArray const &bytes, int descriptor)
{
    int own = -1;
    {
        Lock lock(mutex);
        accept_waiting();
        if (connections.empty())
            return;
        own = connections.back().descriptor;
    }
    wake_thread();
    for (char const byte : bytes) {
        if (::send(own, &byte, 1, MSG_NOSIGNAL) != 1)
            return;
        int unread = 0;
        while (::ioctl(descriptor, FIONREAD, &unread) == 0 && unread > 0)
            std::this_thread::yield();
    }
}

void ScriptedServer::set_reading(bool on)
{
    on_thread([this, on] { reading = on; });
}

void ScriptedServer::set_receive_buffer(int bytes)
{
    on_thread([this, bytes] {
        // Connections inherit it, and only from the start does it bound the window.
        receive_buffer = bytes;
        stop_listening();
        listen();
    });
}

void ScriptedServer::hang_up()
{
    on_thread([this] { close_all(); });
}

void ScriptedServer::kill()
{
    on_thread([this] {
        stop_listening();
        close_all();
    });
}

void ScriptedServer::refuse_connections()
{
    on_thread([this] { stop_listening(); });
}

void ScriptedServer::restart()
{
    on_thread([this] { listen(); });
}

int ScriptedServer::connections_made() const
{
    Lock lock(mutex);
    return made;
}

int ScriptedServer::connections_open() const
{
    Lock lock(mutex);
    return int(connections.size());
}

QList<QByteArray> ScriptedServer::commands() const
{
    Lock lock(mutex);
    return all_commands;
}

QByteArray ScriptedServer::received() const
{
    Lock lock(mutex);
    return newest_received;
}

qint64 ScriptedServer::bytes_sent() const
{
    Lock lock(mutex);
    return sent_in_all;
}

qint64 ScriptedServer::bytes_delivered() const
{
    Lock lock(mutex);
    int on_the_way = 0;
    if (!connections.empty())
        ::ioctl(connections.back().descriptor, TIOCOUTQ, &on_the_way);
    return sent_in_all - on_the_way;
}

bool ScriptedServer::wait_for(std::function<bool()> const &state)
{
    auto const deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(patience_ms);
    while (!state()) {
        if (std::chrono::steady_clock::now() > deadline)
            return false;
        ::poll(nullptr, 0, 1);
    }
    return true;
}

bool ScriptedServer::wait_until_stalled()
{
    {
        Lock lock(mutex);
        stalled = false;
    }
    wake_thread();
    return wait_for([this] {
        Lock lock(mutex);
        return stalled;
    });
}

void ScriptedServer::run()
{
    Lock lock(mutex);
    while (!ending) {
        if (wait_for_events(lock) < 0)
            return;
        accept_waiting();
        for (auto const &task : tasks)
            task();
        tasks.clear();
        tasks_done.notify_all();
    }
}

int ScriptedServer::wait_for_events(Lock &lock)
{
    bool sending = false;
    std::vector<pollfd> entries{{wake, POLLIN, 0}, {listener, POLLIN, 0}};
    for (Connection const &connection : connections) {
        bool const has_more = connection.sent < connection.to_send.size();
        sending = sending || has_more;
        int const events = (reading ? POLLIN : 0) | (has_more ? POLLOUT : 0);
        entries.push_back({connection.descriptor, short(events), 0});
    }
    lock.unlock();
    int const ready = ::poll(entries.data(), entries.size(), sending ? stall_ms : -1);
    lock.lock();
    if (ready < 0)
        return errno == EINTR ? 0 : -1;
    stalled = ready == 0;
    if (entries[0].revents != 0) {
        eventfd_t count = 0;
        ::eventfd_read(wake, &count);
    }
    // Those taken meanwhile have their turn in the next pass.
    for (std::size_t i = entries.size() - 2; i-- > 0;)
        serve(connections[i], entries[i + 2].revents, lock);
    auto const gone = std::remove_if(connections.begin(), connections.end(),
        [](Connection const &connection) { return connection.descriptor < 0; });
    connections.erase(gone, connections.end());
    return ready;
}

void ScriptedServer::serve(Connection &connection, short events, Lock &lock)
{
    if (events & POLLIN)
        read_some(connection, lock);
    else if (events & (POLLHUP | POLLERR)) {
        ::close(connection.descriptor);
        connection.descriptor = -1;
    }
    if (connection.descriptor >= 0 && (events & POLLOUT))
        write_some(connection);
}

void ScriptedServer::read_some(Connection &connection, Lock &lock)
{
    char bytes[65536];
    ssize_t const count = ::recv(connection.descriptor, bytes, sizeof bytes, MSG_DONTWAIT);
    if (count > 0) {
        connection.received.append(bytes, count);
        if (&connection == &connections.back())
            newest_received = connection.received;
        answer_commands(connection, lock);
    } else if (count == 0 || errno != EAGAIN) {
        ::close(connection.descriptor);
        connection.descriptor = -1;
    }
}

void ScriptedServer::answer_commands(Connection &connection, Lock &lock)
{
    for (;;) {
        qsizetype const end = connection.received.indexOf("</cmd>", connection.cut);
        if (end < 0)
            return;
        QByteArray const command
            = connection.received.mid(connection.cut, end + 6 - connection.cut);
        connection.cut = end + 6;
        all_commands.append(command);
        if (!answer)
            continue;
        // The test may hold a lock that the answer takes, and ask for something here meanwhile.
        Answer const with = answer;
        lock.unlock();
        QByteArray const bytes = with(command);
        lock.lock();
        connection.to_send += bytes;
    }
}

void ScriptedServer::write_some(Connection &connection)
{
    qsizetype const left = connection.to_send.size() - connection.sent;
    ssize_t const count
        = ::send(connection.descriptor, connection.to_send.constData() + connection.sent,
            std::size_t(std::min(left, most_per_write)), MSG_NOSIGNAL | MSG_DONTWAIT);
    if (count < 0)
        return;
    sent_in_all += count;
    connection.sent += count;
    if (connection.sent == connection.to_send.size()) {
        connection.to_send.clear();
        connection.sent = 0;
    }
}

bool ScriptedServer::listen()
{
    if (listener < 0)
        listener = listen_on(host, receive_buffer);
    return listener >= 0;
}

void ScriptedServer::stop_listening()
{
    if (listener >= 0)
        ::close(listener);
    listener = -1;
}

void ScriptedServer::close_all()
{
    for (Connection const &connection : connections)
        ::close(connection.descriptor);
    connections.clear();
}

void ScriptedServer::on_thread(std::function<void()> const &task)
{
    Lock lock(mutex);
    tasks.push_back(task);
    wake_thread();
    tasks_done.wait(lock, [this] { return tasks.empty(); });
}

void ScriptedServer::accept_waiting()
{
    for (;;) {
        int const descriptor = ::accept4(listener, nullptr, nullptr, SOCK_CLOEXEC);
        if (descriptor < 0)
            return;
        int const on = 1;
        ::setsockopt(descriptor, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
        ++made;
        newest_received.clear();
        connections.push_back({descriptor, {}, 0, {}, 0});
    }
}

void ScriptedServer::wake_thread() const
{
    ::eventfd_write(wake, 1);
}
