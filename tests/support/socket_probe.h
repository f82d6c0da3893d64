// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QHostAddress>

#include <netinet/in.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/time.h>

/// Looks at sockets of this process from outside of what owns them.
namespace SocketProbe {

/// The descriptor whose connection leads to that address; -1 if there is none.
inline int descriptor_to(QHostAddress const &address, quint16 port)
{
    rlimit limit{};
    ::getrlimit(RLIMIT_NOFILE, &limit);
    int const end = int(qMin<rlim_t>(limit.rlim_cur, 1024));
    for (int descriptor = 0; descriptor < end; ++descriptor) {
        sockaddr_in peer{};
        socklen_t length = sizeof peer;
        if (::getpeername(descriptor, reinterpret_cast<sockaddr *>(&peer), &length) == 0
            && peer.sin_family == AF_INET && ntohl(peer.sin_addr.s_addr) == address.toIPv4Address()
            && ntohs(peer.sin_port) == port)
            return descriptor;
    }
    return -1;
}

/// The value of an integer option; -1 if it cannot be read.
inline int option(int descriptor, int level, int name)
{
    int value = -1;
    socklen_t length = sizeof value;
    return ::getsockopt(descriptor, level, name, &value, &length) == 0 ? value : -1;
}

/// Bytes that have arrived and that nobody has read.
inline int unread_bytes(int descriptor)
{
    int count = 0;
    return ::ioctl(descriptor, FIONREAD, &count) == 0 ? count : 0;
}

/// Whether a write may have to wait for room.
inline bool is_full(int descriptor)
{
    pollfd entry{descriptor, POLLOUT, 0};
    return descriptor >= 0 && ::poll(&entry, 1, 0) == 0;
}

/// What a write may leave in the kernel; it takes at least some 4 KiB.
inline bool set_send_buffer(int descriptor, int bytes)
{
    return ::setsockopt(descriptor, SOL_SOCKET, SO_SNDBUF, &bytes, sizeof bytes) == 0;
}

/// How long a write waits for room before it returns with what it has placed.
inline bool set_send_timeout(int descriptor, int milliseconds)
{
    timeval const limit{milliseconds / 1000, milliseconds % 1000 * 1000};
    return ::setsockopt(descriptor, SOL_SOCKET, SO_SNDTIMEO, &limit, sizeof limit) == 0;
}

} // namespace SocketProbe
