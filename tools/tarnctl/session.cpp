// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnctl/session.h"

#include "kestrel/mod/vctp3/tarnlibapi/protocol/api_qt.h"
#include "tools/tarnctl/output.h"

#include <QCoreApplication>
#include <QHostAddress>

#include <chrono>
#include <cstdio>

namespace TarnCtl {
namespace {

constexpr std::chrono::milliseconds redial_pause{200};

} // namespace

Session::Session(Settings const &given, QObject *parent)
    : QObject(parent)
    , settings(given)
    , connection(std::make_unique<VCTP3::APIQt>())
{
    clock.setSingleShot(true);
    connect(&clock, &QTimer::timeout, this, [this] {
        complain(QStringLiteral("%1 did not answer in time").arg(settings.server));
        finish(ExitCode::TimedOut);
    });
    using Hook = AFunction1<XMLTree const &>;
    connection->set_send_debug_hook(Hook::bind<&Session::sent>(this));
    connection->set_receive_debug_hook(Hook::bind<&Session::received>(this));
    connect(connection.get(), &VCTP3::APIQt::stateChanged, this, &Session::state_changed);
    connect(connection.get(), &VCTP3::APIQt::connected, this, [this] {
        was_connected = true;
        Q_EMIT sig_connected();
    });
}

Session::~Session() = default;

void Session::open()
{
    clock.start(settings.timeout_ms);
    dial();
}

void Session::dial()
{
    QHostAddress const address(settings.server);
    if (address.isNull())
        connection->connect_to_server(settings.server);
    else
        connection->connect_to_server(address);
}

void Session::finish(ExitCode code)
{
    if (over)
        return;
    over = true;
    clock.stop();
    QCoreApplication::exit(int(code));
}

void Session::state_changed(QAbstractSocket::SocketState state)
{
    if (state == QAbstractSocket::UnconnectedState && !over)
        lost();
}

void Session::lost()
{
    bool const again = reconnecting && was_connected;
    if (again) {
        QTimer::singleShot(redial_pause, this, &Session::dial);
        return;
    }
    QString const what = was_connected ? QStringLiteral("the connection to %1 was lost")
                                       : QStringLiteral("no connection to %1");
    complain(what.arg(settings.server));
    finish(ExitCode::NoConnection);
}

void Session::sent(XMLTree const &message)
{
    if (settings.trace)
        note("->", message);
}

void Session::received(XMLTree const &message)
{
    if (settings.trace)
        note("<-", message);
    server_error = message.has_tag_z("reply") && message.has_subnodes(AString::l1("error"));
}

void Session::note(char const *direction, XMLTree const &message) const
{
    QString const text = visible(message.flatten(XMLTree::FlattenCompact));
    std::fprintf(stderr, "%s %s\n", direction, text.toUtf8().constData());
}

} // namespace TarnCtl
