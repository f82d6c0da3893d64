// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnctl/session.h"

#include "ATarnLib/glint/glint.h"
#include "tools/tarnctl/output.h"

#include <QCoreApplication>

#include <chrono>
#include <cstdio>
#include <utility>

namespace TarnCtl {
namespace {

constexpr std::chrono::milliseconds redial_pause{200};

/// A hub that shows all it receives: reports at field rate do not come to the parser and its hook.
class SeenHub : public Glint
{
public:
    using Hook = AFunction1<XMLTree const &>;

    explicit SeenHub(Hook const &seen)
        : Glint(false)
        , hook(seen)
    {
    }

protected:
    bool parse_intercept(XMLTree const &message) override
    {
        bool const taken = Glint::parse_intercept(message);
        if (taken)
            hook(message);
        return taken;
    }

private:
    Hook const hook;
};

} // namespace

Session::Session(Settings const &given, bool with_hub, QObject *parent)
    : QObject(parent)
    , settings(given)
{
    using Hook = AFunction1<XMLTree const &>;
    if (with_hub) {
        auto hub = std::make_unique<SeenHub>(Hook::bind<&Session::received>(this));
        own_hub = hub.get();
        connection = std::move(hub);
    } else {
        connection = std::make_unique<VCTP3::APIQt>();
    }
    clock.setSingleShot(true);
    connect(&clock, &QTimer::timeout, this, [this] {
        complain(QStringLiteral("%1 did not answer in time").arg(settings.server));
        finish(ExitCode::TimedOut);
    });
    connection->set_send_debug_hook(Hook::bind<&Session::sent>(this));
    connection->set_receive_debug_hook(Hook::bind<&Session::received>(this));
    connect(connection.get(), &VCTP3::APIQt::stateChanged, this, &Session::state_changed);
    connect(connection.get(), &VCTP3::APIQt::connected, this, &Session::connected);
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
    if (own_hub)
        dial_by_hub(address);
    else if (address.isNull())
        connection->connect_to_server(settings.server);
    else
        connection->connect_to_server(address);
}

/// It goes on from there by itself.
void Session::dial_by_hub(QHostAddress const &address)
{
    if (address.isNull())
        own_hub->set_server(settings.server);
    else
        own_hub->set_server(address);
    own_hub->stay_connected();
}

/// What the library fails for a lost connection comes behind its end.
bool Session::is_server_error() const
{
    return server_error && connection->is_connected();
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

void Session::connected()
{
    if (was_connected)
        complain(QStringLiteral("connected to %1 again").arg(settings.server));
    was_connected = true;
    is_connected = true;
    Q_EMIT sig_connected();
}

void Session::lost()
{
    bool const again = reconnecting && was_connected;
    if (again) {
        if (std::exchange(is_connected, false))
            complain(QStringLiteral("the connection to %1 was lost, dialling again")
                         .arg(settings.server));
        if (!own_hub)
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
