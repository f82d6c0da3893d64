// SPDX-License-Identifier: Apache-2.0
#include "sim/vesk/vesk_connection.h"

#include "sim/vesk/vesk_station.h"

#include <algorithm>
#include <utility>

VeskConnection::VeskConnection(QTcpSocket *socket, VeskStation *station, QObject *parent)
    : QObject(parent)
    , tcp(socket)
    , served(station)
    , id(station->open())
{
    tcp->setParent(this);
    tcp->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    connect(tcp, &QTcpSocket::readyRead, this, &VeskConnection::read);
    connect(tcp, &QTcpSocket::disconnected, this, &VeskConnection::ended);
}

void VeskConnection::read()
{
    while (!closing && !has_ended && tcp->bytesAvailable() > 0) {
        QByteArray const bytes = tcp->read(VeskReader::longest_message);
        if (!served->feed(id, bytes.constData(), static_cast<std::size_t>(bytes.size()))) {
            drop("closed, since a message is malformed or too long");
            return;
        }
    }
    Q_EMIT sig_received();
}

void VeskConnection::write_waiting()
{
    if (closing || has_ended)
        return;
    waiting += served->take_output(id);
    if (waiting.size() + tcp->bytesToWrite() + served->output_size(id) > most_unread) {
        drop("closed, since it does not read");
        return;
    }
    if (!served->faults().split_writes)
        write(waiting.size());
    else if (!step_to_come)
        write_step();
}

void VeskConnection::write_step()
{
    step_to_come = false;
    if (closing || has_ended)
        return;
    write(served->faults().split_writes ? 1 : waiting.size());
    tcp->flush();
    if (waiting.isEmpty())
        return;
    step_to_come = true;
    QMetaObject::invokeMethod(this, &VeskConnection::write_step, Qt::QueuedConnection);
}

void VeskConnection::write(qint64 most)
{
    qint64 size = std::min<qint64>(most, waiting.size());
    if (left_to_send) {
        size = std::min(size, static_cast<qint64>(*left_to_send));
        left_to_send = *left_to_send - static_cast<quint64>(size);
    }
    // Given away whole it is neither copied nor cut into several writes.
    if (size == waiting.size())
        tcp->write(std::exchange(waiting, {}));
    else
        tcp->write(waiting.constData(), size);
    waiting.remove(0, size);
    served->counters().bytes_sent += static_cast<quint64>(size);
    if (left_to_send && *left_to_send == 0)
        finish();
}

void VeskConnection::close_after(AOption<quint64> const &bytes)
{
    left_to_send = bytes;
    if (left_to_send && *left_to_send == 0)
        finish();
}

void VeskConnection::finish()
{
    closing = true;
    waiting.clear();
    served->note(id, "closed on purpose");
    tcp->disconnectFromHost();
}

void VeskConnection::drop(char const *reason)
{
    if (has_ended)
        return;
    served->note(id, reason);
    tcp->abort();
    ended();
}

void VeskConnection::ended()
{
    if (has_ended)
        return;
    has_ended = true;
    served->close(id);
    Q_EMIT sig_ended(id);
}
