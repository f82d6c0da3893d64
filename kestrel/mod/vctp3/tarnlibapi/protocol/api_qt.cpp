// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/protocol/api_qt.h"

#include "kestrel/mod/vctp3/tarnlibapi/base/clock.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/api_qt_impl_p.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/callback_group_helper.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/report_ahead_p.h"

#include <QTcpSocket>
#include <algorithm>

namespace VCTP3 {

namespace {

constexpr quint16 server_port = 8913;
constexpr unsigned long long longest_message = 65536;
/// What the socket holds while the parser wants nothing; the rest stays with the kernel, whose
/// window then closes.
constexpr qint64 read_buffer_size = 256 * 1024;
/// Bytes of one entry of the parser's queue.
constexpr qint64 longest_read = 64 * 1024;

} // namespace

APIQt::APIQt(QObject *parent)
    : QObject(parent)
    , impl(std::make_unique<APIQtImpl>(this))
    , parser(std::make_unique<XMLParseEngine2>(longest_message))
    , socket(new QTcpSocket(this))
{
    parser->config_tag("reply");
    parser->config_tag("report");
    parser->config_preparation([reader = std::make_shared<ReportReader>()](
                                   XMLTree const &message) { return reader->read(message); });
    socket->setReadBufferSize(read_buffer_size);

    connect_socket();
    connect(parser.get(), &XMLParseEngine2::parse_result_available, this, &APIQt::slot_xmlReady);
    connect(parser.get(), &XMLParseEngine2::input_wanted_again, this, &APIQt::slot_readyRead);
}

APIQt::~APIQt()
{
    // What listens may be a part of a subclass, which is gone by now.
    socket->disconnect();
    CallbackGroupHelper::Mute const mute;
    impl->fail_all_pending_commands();
}

void APIQt::connect_to_server(QHostAddress const &server)
{
    has_host = false;
    has_address = true;
    address = server;
    begin_stream();
    socket->connectToHost(address, server_port, QIODevice::ReadWrite);
}

void APIQt::connect_to_server(QString const &server)
{
    has_address = false;
    has_host = true;
    host = server;
    begin_stream();
    socket->connectToHost(host, server_port, QIODevice::ReadWrite, QAbstractSocket::AnyIPProtocol);
}

void APIQt::disconnect_from_server()
{
    begin_stream();
    socket->disconnectFromHost();
    // Bytes that the parser has not wanted yet belong to the stream that ends here.
    if (socket->bytesAvailable() > 0)
        socket->skip(socket->bytesAvailable());
}

void APIQt::reconnect()
{
    if (has_host)
        connect_to_server(QString(host));
    else if (has_address)
        connect_to_server(QHostAddress(address));
}

bool APIQt::is_connected() const
{
    return socket->state() == QAbstractSocket::ConnectedState;
}

bool APIQt::is_localhost() const
{
    return is_connected() && socket->peerAddress().isLoopback();
}

APIQt::Traffic APIQt::traffic() const
{
    Traffic result = total_traffic;
    result.messages_sent = impl->messages_sent();
    return result;
}

unsigned int APIQt::outstanding_commands() const
{
    return impl->outstanding_commands();
}

unsigned long long APIQt::input_waiting() const
{
    return parser->waiting_bytes() + static_cast<unsigned long long>(socket->bytesAvailable());
}

void APIQt::fail_all_pending_commands()
{
    impl->fail_all_pending_commands();
}

void APIQt::set_send_debug_hook(AFunction1<XMLTree const &> const &hook)
{
    impl->set_send_debug_hook(hook);
}

void APIQt::set_receive_debug_hook(AFunction1<XMLTree const &> const &hook)
{
    impl->set_receive_debug_hook(hook);
}

void APIQt::send(void const *data, unsigned long long size)
{
    if (size == 0)
        return;
    if (is_connected()) {
        total_traffic.bytes_sent += size;
        socket->write(static_cast<char const *>(data), static_cast<qint64>(size));
    } else {
        fail_all_pending_commands();
    }
}

bool APIQt::parse_intercept(XMLTree const &)
{
    return false;
}

QAbstractSocket::SocketState APIQt::socket_state() const
{
    return socket->state();
}

void APIQt::disconnect_socket_receivers()
{
    socket->disconnect();
    connect_socket();
}

unsigned int APIQt::stream_of_message() const
{
    return impl->stream_of_message();
}

unsigned int APIQt::present_stream() const
{
    return impl->present_stream();
}

void APIQt::connect_socket()
{
    connect(socket, &QTcpSocket::stateChanged, this, &APIQt::slot_stateChanged);
    connect(socket, &QTcpSocket::readyRead, this, &APIQt::slot_readyRead);
    connect(socket, &QTcpSocket::errorOccurred, this, &APIQt::keep_socket_error);
    connect(socket, &QTcpSocket::connected, this, &APIQt::connected);
    connect(socket, &QTcpSocket::disconnected, this, &APIQt::disconnected);
    connect(socket, &QTcpSocket::stateChanged, this, &APIQt::stateChanged);
}

void APIQt::slot_stateChanged(QAbstractSocket::SocketState state)
{
    if (state == QAbstractSocket::ConnectedState)
        socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    else
        fail_all_pending_commands();
}

void APIQt::slot_readyRead()
{
    // What stays in the socket here is read at `input_wanted_again`.
    while (socket->bytesAvailable() > 0 && parser->input_wanted()) {
        QByteArray const bytes = socket->read(std::min(socket->bytesAvailable(), longest_read));
        if (bytes.isEmpty()) {
            keep_socket_error();
            disconnect_from_server();
            return;
        }
        total_traffic.bytes_received += static_cast<unsigned long long>(bytes.size());
        parser->input_bytes(bytes);
    }
    // Not from inside, since the socket tells of nothing more until this returns, and a slot of
    // what is ready may run an event loop of its own.
    QMetaObject::invokeMethod(this, &APIQt::slot_xmlReady, Qt::QueuedConnection);
}

void APIQt::slot_xmlReady()
{
    while (!parser->parse_error()) {
        XMLParseEngine2::Message message;
        if (!parser->take_message(&message))
            return;
        ++total_traffic.messages_received;
        handle(message.tree, static_cast<ReportAhead const *>(message.prepared.get()));
        parser->give_back(std::move(message));
    }
    last_error_text = QStringLiteral("The server has sent what is no message, or one too long");
    disconnect_from_server();
}

void APIQt::handle(XMLTree const &message, ReportAhead const *ahead)
{
    read_ahead = ahead != nullptr;
    bool const intercepted = parse_intercept(message);
    read_ahead = false;
    if (intercepted || impl->deliver_ahead(ahead))
        return;
    impl->parse(message);
    if (impl->parsed_ok())
        return;
    ++total_traffic.messages_dropped;
    total_traffic.last_drop_reason = impl->parse_error_text().deep_copy(32);
    total_traffic.last_drop_ticks = ACounter::ticks();
}

void APIQt::keep_socket_error()
{
    last_error_text = socket->errorString();
}

/// Nothing of the stream before reaches a caller behind this. The number goes first: a message that
/// another thread has begun under the old one is lost, and so its command must be among those that
/// fail here.
void APIQt::begin_stream()
{
    impl->begin_stream();
    fail_all_pending_commands();
    parser->reset();
    impl->reset_input();
}

} // namespace VCTP3
