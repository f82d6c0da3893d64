// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/aoption.h"

#include <QObject>
#include <QTcpSocket>

class VeskStation;

/// Carries the bytes of one connection between its socket and the station.
/// Thread: the server's.
class VeskConnection : public QObject
{
    Q_OBJECT

public:
    /// A client that leaves so many bytes unread is given up.
    static constexpr qint64 most_unread = 64 * 1024 * 1024;

    /// Takes \a socket over. \a station must outlive this object.
    VeskConnection(QTcpSocket *socket, VeskStation *station, QObject *parent);

    quint64 number() const { return id; }
    /// Writes what waits for this connection.
    void write_waiting();
    /// Closes when so many more bytes have been sent; never if there is none.
    void close_after(AOption<quint64> const &bytes);
    /// Ends it at once, whatever waits. \a reason goes to the trace.
    void drop(char const *reason);

Q_SIGNALS:
    /// Something was received, so that anything may wait for any connection.
    void sig_received();
    /// The connection has ended, by either side.
    void sig_ended(quint64 number);

private:
    void read();
    void write_step();
    void write(qint64 most);
    void finish();
    void ended();

    QTcpSocket *tcp;
    VeskStation *served;
    quint64 id;
    QByteArray waiting;
    AOption<quint64> left_to_send;
    bool step_to_come = false;
    bool closing = false;
    bool has_ended = false;
};
