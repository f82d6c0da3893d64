// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/support/patience.h"

#include <QCoreApplication>
#include <QProcess>
#include <QProcessEnvironment>
#include <QString>

#include <arpa/inet.h>
#include <net/if.h>
#include <netinet/in.h>
#include <sched.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstring>

/// A network that belongs to one process: nobody else listens on its fixed ports, and it has an
/// address that is not the loopback. A slot that needs one runs its own program again in it:
///
///     if (!OwnNetwork::is_inside()) {
///         QCOMPARE(OwnNetwork::run("this_slot"), QString());
///         return;
///     }
///
/// It takes the right to make a network namespace, or a user namespace in which one can be made.
namespace OwnNetwork {

/// Of this machine, and not a loopback address.
inline constexpr char const *other_address = "192.0.2.1";
inline constexpr char const *inside_mark = "TARN_TEST_OWN_NETWORK";

/// Whether this process has been started by `run`.
inline bool is_inside()
{
    return qEnvironmentVariableIsSet(inside_mark);
}

/// Gives the calling process, which must have a single thread, an empty network with its loopback
/// up. Between fork and exec: a new program would lack the rights.
inline bool enter()
{
    if (::unshare(CLONE_NEWNET) != 0 && ::unshare(CLONE_NEWUSER | CLONE_NEWNET) != 0)
        return false;
    int const descriptor = ::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    ifreq up{};
    std::strcpy(up.ifr_name, "lo");
    up.ifr_flags = IFF_UP | IFF_RUNNING;
    ifreq second{};
    std::strcpy(second.ifr_name, "lo:1");
    auto *const address = reinterpret_cast<sockaddr_in *>(&second.ifr_addr);
    address->sin_family = AF_INET;
    address->sin_addr.s_addr = ::inet_addr(other_address);
    bool const done = ::ioctl(descriptor, SIOCSIFFLAGS, &up) == 0
        && ::ioctl(descriptor, SIOCSIFADDR, &second) == 0;
    ::close(descriptor);
    return done;
}

/// Runs \a slot of this test program in a network of its own; empty if it has passed there, and
/// what it has said if not.
inline QString run(char const *slot)
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QString::fromLatin1(inside_mark), QStringLiteral("1"));
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.setChildProcessModifier([] {
        if (!enter())
            ::_exit(EXIT_FAILURE);
    });
    process.start(QCoreApplication::applicationFilePath(), {QString::fromLatin1(slot)});
    if (!process.waitForFinished(3 * patience_ms))
        return QStringLiteral("The slot has not ended: ") + process.errorString();
    QString const said = QString::fromUtf8(process.readAll());
    bool const ran = said.contains(QStringLiteral("::%1()").arg(QLatin1String(slot)));
    if (process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0 && ran)
        return {};
    return said.isEmpty() ? QStringLiteral("There is no right to make a network") : said;
}

} // namespace OwnNetwork
