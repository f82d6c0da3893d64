// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QHostAddress>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstddef>
#include <cstring>

/// A loopback address that no other test on this machine uses at the same time. The protocol's
/// ports are fixed, so each test server listens on an address of its own.
class LoopbackAddress
{
public:
    /// The next free address from 127.1.0.1 up, held until the process ends.
    static QHostAddress unique()
    {
        static quint32 next = 0x7F010001U + (quint32(::getpid()) * 61U) % 0xF00000U;
        for (;; ++next) {
            if ((next & 0xFFU) != 0 && (next & 0xFFU) != 255 && reserve(next))
                return QHostAddress(next++);
        }
    }

private:
    // An abstract socket name is a reservation that the kernel drops with the process.
    static bool reserve(quint32 address)
    {
        QByteArray const name = "tarn-test-" + QByteArray::number(address, 16);
        sockaddr_un un{};
        un.sun_family = AF_UNIX;
        std::memcpy(un.sun_path + 1, name.constData(), std::size_t(name.size()));
        int const fd = ::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0);
        auto const length
            = socklen_t(offsetof(sockaddr_un, sun_path) + 1U + std::size_t(name.size()));
        if (::bind(fd, reinterpret_cast<sockaddr *>(&un), length) == 0)
            return true;
        ::close(fd);
        return false;
    }
};
