// SPDX-License-Identifier: Apache-2.0
#include "sim/vesk/vesk_server.h"

#include "sim/vesk/vesk_connection.h"
#include "sim/vesk/vesk_demo_event.h"
#include "sim/vesk/vesk_storm.h"

#include <algorithm>
#include <utility>
#include <vector>

VeskServer::VeskServer(QHostAddress const &address, VeskSimOptions const &options)
    : listened(address)
    , wanted(options)
    , served(options.standard, options.board)
{
    if (options.trace)
        served.set_trace([line = options.trace](quint64 number, char way, QByteArray const &text) {
            QByteArray const who = number ? "#" + QByteArray::number(number) : QByteArray("server");
            line(who + ' ' + way + ' ' + text);
        });
    connect(&tcp, &QTcpServer::newConnection, this, &VeskServer::accept);
    fill();
    use_timer(options.real_time);
}

VeskServer::~VeskServer()
{
    drop_connections();
}

bool VeskServer::listen(QString *error)
{
    if (tcp.isListening() || tcp.listen(listened, port))
        return true;
    *error = tcp.errorString();
    return false;
}

void VeskServer::accept()
{
    while (QTcpSocket *socket = tcp.nextPendingConnection()) {
        auto *connection = new VeskConnection(socket, &served, this);
        connections[connection->number()] = connection;
        connect(connection, &VeskConnection::sig_received, this, &VeskServer::write_waiting);
        connect(connection, &VeskConnection::sig_ended, this, &VeskServer::forget);
        if (close_limit)
            connection->close_after(*close_limit);
    }
}

void VeskServer::accept_waiting()
{
    while (tcp.isListening() && tcp.waitForNewConnection(0)) { }
}

void VeskServer::forget(quint64 number)
{
    auto found = connections.find(number);
    if (found == connections.end())
        return;
    found->second->deleteLater();
    connections.erase(found);
    write_waiting();
}

void VeskServer::write_waiting()
{
    // A write may end a connection, and that end may report to others.
    std::vector<quint64> numbers;
    for (auto const &[number, connection] : connections)
        numbers.push_back(number);
    for (quint64 number : numbers) {
        auto found = connections.find(number);
        if (found != connections.end())
            found->second->write_waiting();
    }
}

void VeskServer::drop_connections()
{
    while (!connections.empty())
        connections.begin()->second->drop("dropped");
}

void VeskServer::close_after(AOption<quint64> const &bytes)
{
    close_limit = bytes;
    auto const open = connections;
    for (auto const &[number, connection] : open)
        connection->close_after(bytes);
}

void VeskServer::advance(unsigned int fields)
{
    for (unsigned int part = 0; part < fields * parts_of_field(); ++part)
        pass_part();
}

void VeskServer::pass_part()
{
    if (next_part == 0)
        served.advance_field();
    if (wanted.storm)
        served.send_storm(next_part, parts_of_field());
    if (wanted.passed)
        wanted.passed(served.world().clock.now(), next_part);
    next_part = (next_part + 1) % parts_of_field();
    write_waiting();
}

unsigned int VeskServer::parts_of_field() const
{
    return wanted.storm ? std::clamp(wanted.storm_parts, 1U, VeskStorm::most_parts) : 1;
}

void VeskServer::set_real_time(bool on)
{
    wanted.real_time = on;
    use_timer(on);
}

void VeskServer::use_timer(bool on)
{
    timer.reset();
    if (!on)
        return;
    timer = std::make_unique<VeskFieldTimer>(
        &served.world().clock, [this] { pass_part(); }, parts_of_field());
    timer->start();
}

void VeskServer::restart(VeskState state)
{
    timer.reset();
    drop_connections();
    next_part = 0;
    if (state == VeskState::keep) {
        served.restart();
    } else {
        served.begin_anew(wanted.standard, wanted.board);
        fill();
    }
    use_timer(wanted.real_time);
}

void VeskServer::fill()
{
    if (wanted.demo)
        vesk_fill_demo_event(&served.world());
    served.world().storm = wanted.storm;
    served.send_reports();
}
