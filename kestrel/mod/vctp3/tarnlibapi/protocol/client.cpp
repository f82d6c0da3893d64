// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/protocol/client.h"

#include "kestrel/mod/vctp3/tarnlibapi/base/aassert.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/aprotect.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/hrtime.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/blocking_socket_p.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/client_thread_p.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/write_all_p.h"

#include <atomic>

namespace VCTP3 {

namespace {

constexpr unsigned short server_port = 8913;
constexpr int redial_ms = 100;
constexpr int read_wait_ms = 1000;
constexpr unsigned int read_size = 2048;
constexpr unsigned int most_outstanding = 4;

} // namespace

struct Client::Private
{
    using Socket = AProtect<std::shared_ptr<BlockingSocket>>;

    struct Periodic
    {
        unsigned int seconds = 0;
        AFunction call;
    };

    std::shared_ptr<BlockingSocket> current_socket() const { return *Socket::Lock(socket); }

    std::atomic<unsigned int> ipaddr{localhost()};
    std::atomic<bool> connected{false};
    std::atomic<bool> send_failed{false};
    std::atomic<bool> in_own_thread{false};
    std::atomic<unsigned int> loops{0}; // running now, on any thread
    WakeUp quit;
    Socket socket; // null while not connected
    AProtect<Periodic> periodic;
    HRTime last_periodic; // of the loop's thread
    ClientThread thread;
};

Client::Client()
    : Client(localhost())
{
}

Client::Client(unsigned int ipaddr)
    : d(std::make_unique<Private>())
{
    d->ipaddr = ipaddr;
}

Client::~Client()
{
    stop();
}

void Client::stop()
{
    {
        // With the lock held no connection appears behind this.
        Private::Socket::Lock socket(d->socket);
        d->quit.set();
        if (*socket)
            (*socket)->shutdown();
    }
    while (d->in_own_thread || d->loops > 0)
        ClientThread::pause_ms(1);
    d->thread.join();
}

void Client::set_ipaddr(unsigned int ipaddr)
{
    d->ipaddr = ipaddr;
}

void Client::add_periodic(unsigned int seconds, AFunction const &call)
{
    AProtect<Private::Periodic>::Lock periodic(d->periodic);
    *periodic = {seconds, call};
}

bool Client::isConnected() const
{
    return d->connected;
}

void Client::connected() { }

void Client::disconnected() { }

void Client::run_forever()
{
    ++d->loops;
    while (!d->quit.is_set()) {
        d->quit.wait(redial_ms);
        perform_connect();
        while (d->connected && !d->quit.is_set())
            run_once();
    }
    --d->loops;
}

void Client::run_forever_ownthread()
{
    // The loop counts until all is done here: whoever waits for the count then frees this object.
    ++d->loops;
    run_forever();
    d->in_own_thread = false;
    --d->loops;
}

void Client::run_forever_in_own_thread(int priority)
{
    if (!A_ASSERT_TEXT(!d->in_own_thread.exchange(true), "!in_own_thread"))
        return;
    if (!d->thread.start(priority, AFunction::bind<&Client::run_forever_ownthread>(this)))
        d->in_own_thread = false;
}

void Client::perform_connect()
{
    if (d->connected)
        return;
    auto const fresh = BlockingSocket::connect(d->ipaddr, server_port, d->quit);
    if (!fresh)
        return;
    fresh->set_no_delay();
    {
        Private::Socket::Lock socket(d->socket);
        if (d->quit.is_set())
            return;
        *socket = fresh;
        begin_stream();
        d->send_failed = false;
        d->connected = true;
    }
    d->last_periodic = HRTime::now();
    connected();
}

void Client::run_once()
{
    if (!d->connected)
        return;
    if (!d->send_failed) {
        if (!run_periodic())
            return;
        switch (d->current_socket()->wait_readable(read_wait_ms, d->quit)) {
        case BlockingSocket::Readable::timeout:
            return;
        case BlockingSocket::Readable::yes:
            if (receive())
                return;
            break;
        case BlockingSocket::Readable::failed:
            break;
        }
    }
    close_connection();
}

bool Client::run_periodic()
{
    Private::Periodic const periodic = *AProtect<Private::Periodic>::Lock(d->periodic);
    if (periodic.call.is_null() || outstanding_commands() >= most_outstanding)
        return true;
    HRTime const now = HRTime::now();
    if (now - d->last_periodic < HRTime::seconds(periodic.seconds))
        return true;
    d->last_periodic = now;
    periodic.call();
    return d->connected;
}

bool Client::receive()
{
    char bytes[read_size];
    long long const count = d->current_socket()->receive(bytes, sizeof bytes);
    if (count < 1)
        return false;
    input_bytes(static_cast<unsigned long long>(count), bytes);
    return !input_failed();
}

void Client::close_connection()
{
    {
        Private::Socket::Lock socket(d->socket);
        // Another thread may be waiting in a write, and holds the socket until that returns.
        (*socket)->shutdown();
        socket->reset();
        d->connected = false;
    }
    fail_all_pending_commands();
    reset_input();
    disconnected();
}

void Client::send(void const *data, unsigned long long size)
{
    std::shared_ptr<BlockingSocket> socket;
    {
        // With the lock held no other connection takes this one's place in between.
        Private::Socket::Lock current(d->socket);
        if (!belongs_to_stream())
            return;
        socket = *current;
    }
    if (d->send_failed || !socket) {
        fail_all_pending_commands();
        return;
    }
    auto const write
        = [&](char const *from, unsigned long long count) { return socket->send(from, count); };
    if (write_all(write, static_cast<char const *>(data), size))
        return;
    // A write that fails late says nothing about the connection that has followed.
    Private::Socket::Lock current(d->socket);
    if (*current == socket)
        d->send_failed = true;
}

} // namespace VCTP3
