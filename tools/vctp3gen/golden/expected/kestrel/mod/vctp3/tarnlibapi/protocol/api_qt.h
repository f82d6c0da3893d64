// SPDX-License-Identifier: Apache-2.0
// Made by vctp3gen from api_qt.h.in, commands.tbl and reports.tbl; do not edit.
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/aoption.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/callback_groups.h"
#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_tree.h"

#include <QAbstractSocket>
#include <QHostAddress>
#include <QObject>
#include <QString>

#include <memory>

class QTcpSocket;
class XMLParseEngine2;

namespace VCTP3 {

class APIQtImpl;
struct ReportAhead;

/// The protocol for applications: a socket to one server, parsing on a thread of its own, answers
/// as signals of callback groups, and reports as signals of this object.
///
/// A command goes with a group, whose signals then tell its answers, or without. A command that is
/// sent while there is no connection fails with it. Each change of the socket's state but the one
/// to connected fails what is in flight, so nothing outlives its connection. There is no retry:
/// the owner calls `reconnect` when it wants one.
///
/// While the owner's thread is blocked or slow, what the server sends waits with the kernel: this
/// side holds a few MiB at most, and loses nothing.
///
/// From a slot of its own signals, or of its socket's, it is deleted by `deleteLater`.
/// Thread: its owner's. Every signal is emitted there; commands are sent from there.
class TARN_EXPORT APIQt : public QObject
{
    Q_OBJECT

public:
    explicit APIQt(QObject *parent = nullptr);
    /// Every command in flight is dropped; no signal comes of it.
    ~APIQt() override;

    /// Starts a connection to port 8913. Commands in flight fail first.
    void connect_to_server(QHostAddress const &server);
    /// The same by name, over any version of the internet protocol.
    void connect_to_server(QString const &server);
    void disconnect_from_server();
    /// Connects again to the last name or address; does nothing if there was none.
    void reconnect();
    bool is_connected() const;
    /// Whether the connected peer is the IPv4 or IPv6 loopback address; false while not connected.
    bool is_localhost() const;

    /// What has passed since this object was made.
    struct Traffic
    {
        unsigned long long messages_received = 0;
        unsigned long long bytes_received = 0;
        /// Commands, those too that found no connection.
        unsigned long long messages_sent = 0;
        /// Written to the socket.
        unsigned long long bytes_sent = 0;
        /// Received messages that were not understood, what was wrong with the last one, and when
        /// that was by `ACounter`.
        unsigned long long messages_dropped = 0;
        AString last_drop_reason;
        long long last_drop_ticks = 0;
    };
    Traffic traffic() const;
    /// How many commands await their last reply. From any thread.
    unsigned int outstanding_commands() const;
    /// Bytes that have been received and not yet been handled as messages.
    unsigned long long input_waiting() const;
    /// Why the last connection could not be made or has ended; empty if nothing went wrong yet.
    QString last_error() const { return last_error_text; }

    /// Ends every command in flight by the error signal of its group.
    void fail_all_pending_commands();
    /// Called with each message before it is written. A null callable ends that.
    void set_send_debug_hook(AFunction1<XMLTree const &> const &hook);
    /// Called with each message before it is parsed. A null callable ends that.
    void set_receive_debug_hook(AFunction1<XMLTree const &> const &hook);

    // Driving
    /// Answer: ok.
    void cmd_stop(CallbackGroup_set1 const &group);
    void cmd_stop();
    /// Sends OtherCar Offset? Rate? Quiet!. Answer: ok.
    void cmd_drive(Car const &other_car, bool has_offset, int const &offset, bool has_rate,
        Rate const &rate, bool has_quiet, bool const &quiet, CallbackGroup_set1 const &group);
    void cmd_drive(Car const &other_car, bool has_offset, int const &offset, bool has_rate,
        Rate const &rate, bool has_quiet, bool const &quiet);
    void cmd_drive(Car const &other_car, CallbackGroup_set1 const &group);
    void cmd_drive(Car const &other_car);
    void cmd_drive(Car const &other_car, int const &offset, CallbackGroup_set1 const &group);
    void cmd_drive(Car const &other_car, int const &offset);
    void cmd_drive(Car const &other_car, int const &offset, Rate const &rate,
        CallbackGroup_set1 const &group);
    void cmd_drive(Car const &other_car, int const &offset, Rate const &rate);
    void cmd_drive(Car const &other_car, int const &offset, Rate const &rate, bool const &quiet,
        CallbackGroup_set1 const &group);
    void cmd_drive(Car const &other_car, int const &offset, Rate const &rate, bool const &quiet);

    // Asking
    /// Sends Count. Answer: car* ok.
    void cmd_cars(unsigned int const &count, CallbackGroup_set2 const &group);
    void cmd_cars(unsigned int const &count);
    /// Sends SideSet Speed?. Answer: road.
    void cmd_get_road(SideSet const &side_set, bool has_speed, int const &speed,
        CallbackGroup_set3 const &group);
    void cmd_get_road(SideSet const &side_set, bool has_speed, int const &speed);
    void cmd_get_road(SideSet const &side_set, CallbackGroup_set3 const &group);
    void cmd_get_road(SideSet const &side_set);
    void cmd_get_road(SideSet const &side_set, int const &speed, CallbackGroup_set3 const &group);
    void cmd_get_road(SideSet const &side_set, int const &speed);

Q_SIGNALS:
    void connected();
    void disconnected();
    void stateChanged(QAbstractSocket::SocketState state);

    void report_passed(Side side, AString const &name, AOption<int> const &speed);
    void report_lamp(Side side, bool open);
    void report_names(std::list<AString> const &names);

protected:
    /// Writes to the socket. While not connected the bytes are lost and all pending commands fail.
    /// The socket belongs to the owner's thread: a subclass that lets other threads send commands
    /// overrides this and hands the bytes over.
    virtual void send(void const *data, unsigned long long size);
    /// Sees every message before it is parsed, and keeps it from that by returning true.
    virtual bool parse_intercept(XMLTree const &message);
    /// Whether the message that `parse_intercept` is given has been read on the parser's thread: a
    /// report other than those at field rate, with all its fields.
    bool is_read_ahead() const { return read_ahead; }

    // Each emits the signal of its report; to override one is to act before or instead of that.
    virtual void do_report_passed(Side side, AString const &name, AOption<int> const &speed);
    virtual void do_report_lamp(Side side, bool open);
    virtual void do_report_names(std::list<AString> const &names);

    QAbstractSocket::SocketState socket_state() const;
    /// Removes every connection of the socket's signals but those of this object.
    void disconnect_socket_receivers();
    /// The stream to which the message belongs that `send` was given a part of; call it there, on
    /// any thread. For a subclass that writes later: what is left of a message when its stream is
    /// gone must be lost, since no stream may begin with it.
    unsigned int stream_of_message() const;
    /// The stream to the server that is the present one, from any thread.
    unsigned int present_stream() const;

private Q_SLOTS:
    void slot_stateChanged(QAbstractSocket::SocketState state);
    void slot_readyRead();
    void slot_xmlReady();

private:
    friend class APIQtImpl;

    void connect_socket();
    void begin_stream();
    void keep_socket_error();
    void handle(XMLTree const &message, ReportAhead const *ahead);

    std::unique_ptr<APIQtImpl> impl;
    std::unique_ptr<XMLParseEngine2> parser;
    bool has_host = false;
    QString host;
    bool has_address = false;
    QHostAddress address;
    QTcpSocket *socket = nullptr; // child of this object
    Traffic total_traffic;
    bool read_ahead = false; // the message that is being intercepted
    QString last_error_text;
};

} // namespace VCTP3
