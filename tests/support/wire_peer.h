// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/support/patience.h"

#include <QByteArray>
#include <QByteArrayList>
#include <QElapsedTimer>
#include <QHostAddress>
#include <QTcpSocket>

#include <functional>

/// A client of the protocol that is made of text alone: it shares no code with the library, so
/// that a test of the far end does not believe what the library believes. It blocks; the far end
/// runs on another thread.
class WirePeer
{
public:
    /// Connects, and waits until it is connected or refused.
    explicit WirePeer(QHostAddress const &address, quint16 port = 8913)
    {
        socket.connectToHost(address, port);
        socket.waitForConnected(patience_ms);
        socket.setSocketOption(QAbstractSocket::LowDelayOption, 1);
    }

    bool is_connected() const { return socket.state() == QAbstractSocket::ConnectedState; }
    /// Sends bytes as they are.
    void send(QByteArray const &bytes)
    {
        socket.write(bytes);
        while (socket.bytesToWrite() > 0 && socket.waitForBytesWritten(patience_ms)) { }
    }
    /// Sends a command element with an id of its own, which it returns.
    QByteArray command(QByteArray const &element)
    {
        QByteArray const xid = QByteArray::number(++last_xid);
        send("<cmd><xid>" + xid + "</xid>" + element + "</cmd>");
        return xid;
    }
    /// Sends a command and waits for its replies up to the last one: their elements as text. Short
    /// of the last one when the connection ends or nothing comes.
    QByteArrayList call(QByteArray const &element) { return replies_to(command(element)); }
    QByteArrayList replies_to(QByteArray const &xid)
    {
        QByteArrayList result;
        wait_for([&] {
            result += take_replies(xid);
            return !result.isEmpty() && is_final(result.last());
        });
        return result;
    }
    /// The elements of the reports so far, and forgets them. What the far end sent before it
    /// answered a `call` is there.
    QByteArrayList take_reports()
    {
        receive();
        return std::exchange(reports, {});
    }
    /// The reports of everything done before now: there is nothing to come behind the answer.
    QByteArrayList sync_reports()
    {
        call("<sync/>");
        return take_reports();
    }
    /// Waits until so many reports are there, and takes all.
    QByteArrayList wait_for_reports(qsizetype count)
    {
        wait_for([&] { return reports.size() >= count; });
        return std::exchange(reports, {});
    }
    /// True once the other side has closed.
    bool wait_for_end()
    {
        return is_connected() ? socket.waitForDisconnected(patience_ms)
                              : socket.state() == QAbstractSocket::UnconnectedState;
    }
    /// Ids in the order in which replies came, the replies taken since.
    QByteArrayList const &order_of_replies() const { return order; }
    /// Everything received, as it came.
    QByteArray const &received() const { return all; }

    /// Reads until \a done or the time is up; returns whether it was done.
    bool wait_for(std::function<bool()> const &done)
    {
        QElapsedTimer timer;
        timer.start();
        for (receive(); !done(); receive()) {
            if (timer.elapsed() > patience_ms || !is_connected())
                return done();
            socket.waitForReadyRead(20);
        }
        return true;
    }

    QTcpSocket socket;

private:
    void receive()
    {
        socket.waitForReadyRead(0);
        QByteArray const bytes = socket.readAll();
        all += bytes;
        buffer += bytes;
        while (take_message("reply") || take_message("report")) { }
    }
    /// Takes the first message, if it is whole and has that root.
    bool take_message(QByteArray const &root)
    {
        QByteArray const open = "<" + root + ">";
        QByteArray const close = "</" + root + ">";
        qsizetype const end = buffer.indexOf(close);
        if (!buffer.startsWith(open) || end < 0)
            return false;
        QByteArray const inside = buffer.mid(open.size(), end - open.size());
        buffer.remove(0, end + close.size());
        if (root == "report") {
            reports += inside;
            return true;
        }
        qsizetype const id_end = inside.indexOf("</xid>");
        order += inside.mid(5, id_end - 5);
        replies.append({order.last(), inside.mid(id_end + 6)});
        return true;
    }
    QByteArrayList take_replies(QByteArray const &xid)
    {
        QByteArrayList taken;
        for (qsizetype at = 0; at < replies.size();) {
            if (replies[at].first != xid) {
                ++at;
                continue;
            }
            taken += replies.takeAt(at).second;
        }
        return taken;
    }
    static bool is_final(QByteArray const &element)
    {
        static char const *const streamed[] = {"clipid", "directory_name", "configuration_item",
            "melt_item", "melt_flags", "listid", "chaseid", "list_element", "chase_element",
            "metadata", "volatile_file_info"};
        for (char const *name : streamed)
            if (element.startsWith("<" + QByteArray(name) + ">"))
                return false;
        return true;
    }

    int last_xid = 0;
    QByteArray buffer;
    QByteArray all;
    QByteArrayList reports;
    QByteArrayList order;
    QList<QPair<QByteArray, QByteArray>> replies;
};
