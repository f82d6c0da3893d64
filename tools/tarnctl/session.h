// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tools/tarnctl/command_line.h"
#include "tools/tarnctl/exit_code.h"

#include <QAbstractSocket>
#include <QHostAddress>
#include <QObject>
#include <QTimer>

#include <memory>

class Glint;
class XMLTree;
namespace VCTP3 {
class APIQt;
}

namespace TarnCtl {

/// The connection of one run of the program. It dials, waits no longer than it was told, and ends
/// the event loop with the code of what happened first.
/// Thread: that of the event loop.
class Session : public QObject
{
    Q_OBJECT

public:
    /// With \a with_hub the connection is that of a hub, which dials by itself.
    explicit Session(Settings const &settings, bool with_hub, QObject *parent = nullptr);
    ~Session() override;

    VCTP3::APIQt &api() { return *connection; }
    /// Only of a session that was made with one.
    Glint &hub() { return *own_hub; }
    /// As it was typed.
    QString const &server() const { return settings.server; }
    /// Dials and starts the clock. Without a connection in time the program ends.
    void open();
    /// Stops the clock: what follows may take as long as it will.
    void set_patient() { clock.stop(); }
    /// From now on a lost connection is dialled again in place of ending the program, which is
    /// said on standard error.
    void set_reconnect() { reconnecting = true; }
    /// Whether the message that is being delivered is an `error` of the server, and not one that
    /// the library made because the connection was lost.
    bool is_server_error() const;

    /// Ends the event loop. Only the first call counts.
    void finish(ExitCode code);
    bool is_over() const { return over; }

Q_SIGNALS:
    /// Also after each reconnection.
    void sig_connected();

private:
    void sent(XMLTree const &message);
    void received(XMLTree const &message);
    void note(char const *direction, XMLTree const &message) const;
    void state_changed(QAbstractSocket::SocketState state);
    void connected();
    void lost();
    void dial();
    void dial_by_hub(QHostAddress const &address);

    Settings const settings;
    QTimer clock;
    bool was_connected = false;
    bool is_connected = false;
    bool reconnecting = false;
    bool server_error = false;
    bool over = false;
    Glint *own_hub = nullptr;
    /// Last, so that its hooks find the rest alive.
    std::unique_ptr<VCTP3::APIQt> connection;
};

} // namespace TarnCtl
