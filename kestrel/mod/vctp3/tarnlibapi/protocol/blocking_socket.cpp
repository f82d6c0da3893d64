// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/protocol/blocking_socket_p.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>

namespace VCTP3 {

namespace {

constexpr int slice_ms = 1000;

/// The call again for as long as a signal handler breaks it off.
template <typename Call> auto uninterrupted(Call call)
{
    for (;;) {
        auto const result = call();
        if (result >= 0 || errno != EINTR)
            return result;
    }
}

} // namespace

WakeUp::WakeUp()
    : handle(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))
{
}

WakeUp::~WakeUp()
{
    if (handle >= 0)
        ::close(handle);
}

void WakeUp::set()
{
    flag = true;
    // Never read, so the handle stays readable and ends later waits too.
    if (handle >= 0)
        ::eventfd_write(handle, 1);
}

void WakeUp::wait(int milliseconds) const
{
    pollfd entry{handle, POLLIN, 0};
    if (!is_set())
        ::poll(&entry, 1, milliseconds);
}

BlockingSocket::BlockingSocket(int descriptor)
    : handle(descriptor)
{
}

BlockingSocket::~BlockingSocket()
{
    ::close(handle);
}

std::shared_ptr<BlockingSocket> BlockingSocket::connect(
    unsigned int ipaddr, unsigned short port, WakeUp const &wake)
{
    int const descriptor = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (descriptor < 0)
        return {};
    std::shared_ptr<BlockingSocket> result(new BlockingSocket(descriptor));
    if (!result->connect_to(ipaddr, port, wake))
        return {};
    ::fcntl(descriptor, F_SETFL, ::fcntl(descriptor, F_GETFL) & ~O_NONBLOCK);
    return result;
}

bool BlockingSocket::connect_to(unsigned int ipaddr, unsigned short port, WakeUp const &wake)
{
    sockaddr_in server{};
    server.sin_family = AF_INET;
    server.sin_addr.s_addr = htonl(ipaddr);
    server.sin_port = htons(port);
    if (::connect(handle, reinterpret_cast<sockaddr *>(&server), sizeof server) == 0)
        return true;
    // A connect that waits in the kernel could not be woken, and an absent host takes minutes.
    return (errno == EINPROGRESS || errno == EINTR) && finish_connect(wake);
}

bool BlockingSocket::finish_connect(WakeUp const &wake)
{
    while (!wake.is_set()) {
        pollfd entries[] = {{handle, POLLOUT, 0}, {wake.handle, POLLIN, 0}};
        int const ready = uninterrupted([&] { return ::poll(entries, 2, slice_ms); });
        if (ready < 0)
            return false;
        if (entries[0].revents == 0)
            continue;
        int error = 0;
        socklen_t length = sizeof error;
        return ::getsockopt(handle, SOL_SOCKET, SO_ERROR, &error, &length) == 0 && error == 0;
    }
    return false;
}

void BlockingSocket::set_no_delay()
{
    int const on = 1;
    ::setsockopt(handle, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
}

void BlockingSocket::shutdown()
{
    ::shutdown(handle, SHUT_RDWR);
}

long long BlockingSocket::send(void const *data, unsigned long long size)
{
    // Without the flag a server that has gone would end the process by a signal.
    return uninterrupted([&] { return ::send(handle, data, size, MSG_NOSIGNAL); });
}

BlockingSocket::Readable BlockingSocket::wait_readable(int milliseconds, WakeUp const &wake)
{
    pollfd entries[] = {{handle, POLLIN, 0}, {wake.handle, POLLIN, 0}};
    int const ready = ::poll(entries, 2, milliseconds);
    if (ready < 0)
        return errno == EINTR ? Readable::timeout : Readable::failed;
    return entries[0].revents != 0 && !wake.is_set() ? Readable::yes : Readable::timeout;
}

long long BlockingSocket::receive(void *buffer, unsigned long long size)
{
    return uninterrupted([&] { return ::recv(handle, buffer, size, 0); });
}

} // namespace VCTP3
