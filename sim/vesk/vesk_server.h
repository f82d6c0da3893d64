// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "sim/vesk/vesk_field_timer.h"
#include "sim/vesk/vesk_sim_options.h"
#include "sim/vesk/vesk_station.h"

#include <QHostAddress>
#include <QObject>
#include <QTcpServer>

#include <map>
#include <memory>

class VeskConnection;

/// A station on the network: listens, keeps its connections and lets the fields pass.
/// Thread: the one that it was made on.
class VeskServer : public QObject
{
    Q_OBJECT

public:
    /// Clients look for the server on this port and no other.
    static constexpr quint16 port = 8913;

    VeskServer(QHostAddress const &address, VeskSimOptions const &options);
    ~VeskServer() override;

    /// False, and the reason in \a error, when the address cannot be had.
    bool listen(QString *error);
    /// New connections are refused; those that are open stay.
    void stop_listening() { tcp.close(); }
    bool is_listening() const { return tcp.isListening(); }

    VeskStation &station() { return served; }
    /// Takes the connections that are made and wait to be taken. To be called before each use of
    /// it, as to their clients they are open.
    void accept_waiting();
    /// Sends what the station has for its connections. To be called behind each use of it.
    void write_waiting();
    void drop_connections();
    /// Each connection that is open, or opened later, closes when so many more bytes were sent.
    void close_after(AOption<quint64> const &bytes);

    void advance(unsigned int fields);
    void set_real_time(bool on);
    /// All connections are closed; the world stays or goes.
    void restart(VeskState state);

private:
    void accept();
    void forget(quint64 number);
    void fill();
    void pass_part();
    unsigned int parts_of_field() const;
    void use_timer(bool on);

    QHostAddress listened;
    VeskSimOptions wanted;
    VeskStation served;
    QTcpServer tcp;
    std::map<quint64, VeskConnection *> connections;
    std::unique_ptr<VeskFieldTimer> timer;
    unsigned int next_part = 0; // of the present field
    AOption<quint64> close_limit;
};
