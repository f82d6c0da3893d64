// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/tarn_export.h"

#include <QAbstractSocket>
#include <QObject>
#include <QString>

#include <memory>

class Glint;

/// How a hub is doing: its connection, what has passed and what waits, what was lost, and whether
/// the event loop keeps up. For a page that shows it, and for whoever collects such numbers.
///
/// Numbers are of now when they are read. `changed` comes at once with the state of the
/// connection, and for all else at most once a second.
/// Thread: the hub's.
class TARN_EXPORT GlintHealth : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QAbstractSocket::SocketState state READ state NOTIFY changed)
    Q_PROPERTY(qint64 state_since_ms READ state_since_ms NOTIFY changed)
    Q_PROPERTY(quint64 connect_attempts READ connect_attempts NOTIFY changed)
    Q_PROPERTY(quint64 reconnections READ reconnections NOTIFY changed)
    Q_PROPERTY(QString last_error READ last_error NOTIFY changed)
    Q_PROPERTY(quint64 calls_outstanding READ calls_outstanding NOTIFY changed)
    Q_PROPERTY(quint64 blocks_to_send READ blocks_to_send NOTIFY changed)
    Q_PROPERTY(quint64 input_bytes_waiting READ input_bytes_waiting NOTIFY changed)
    Q_PROPERTY(quint64 messages_to_decode READ messages_to_decode NOTIFY changed)
    Q_PROPERTY(quint64 results_to_deliver READ results_to_deliver NOTIFY changed)
    Q_PROPERTY(quint64 messages_received READ messages_received NOTIFY changed)
    Q_PROPERTY(quint64 bytes_received READ bytes_received NOTIFY changed)
    Q_PROPERTY(quint64 messages_sent READ messages_sent NOTIFY changed)
    Q_PROPERTY(quint64 bytes_sent READ bytes_sent NOTIFY changed)
    Q_PROPERTY(quint64 reports_coalesced READ reports_coalesced NOTIFY changed)
    Q_PROPERTY(quint64 messages_dropped READ messages_dropped NOTIFY changed)
    Q_PROPERTY(QString last_drop_reason READ last_drop_reason NOTIFY changed)
    Q_PROPERTY(qint64 longest_stall_ms READ longest_stall_ms NOTIFY changed)
    Q_PROPERTY(qint64 round_trip_us READ round_trip_us NOTIFY changed)

public:
    /// A hub stall shorter than this is not seen.
    static constexpr int beat_ms = 25;

    /// Of \a of, which becomes its parent.
    explicit GlintHealth(Glint *of);
    ~GlintHealth() override;

    /// \name Connection
    /// @{
    QAbstractSocket::SocketState state() const;
    /// When that state began: milliseconds since 1970-01-01 00:00 UTC.
    qint64 state_since_ms() const;
    /// How often a connection was begun, and how many were made after the first.
    quint64 connect_attempts() const;
    quint64 reconnections() const;
    /// Why the last connection could not be made or has ended; empty if nothing went wrong yet.
    QString last_error() const;
    /// @}

    /// \name What waits
    /// @{
    /// Commands without their last reply.
    quint64 calls_outstanding() const;
    /// Blocks of bytes on their way to the socket.
    quint64 blocks_to_send() const;
    /// Bytes received that are not yet handled as messages.
    quint64 input_bytes_waiting() const;
    /// Reports that the workers have not decoded yet.
    quint64 messages_to_decode() const;
    /// Decoded results that have not been delivered yet.
    quint64 results_to_deliver() const;
    /// @}

    /// \name What has passed since the hub was made
    /// @{
    quint64 messages_received() const;
    quint64 bytes_received() const;
    quint64 messages_sent() const;
    quint64 bytes_sent() const;
    /// Results that were overtaken by newer ones before they could be delivered.
    quint64 reports_coalesced() const;
    /// Messages that were not understood, and what was wrong with the last one.
    quint64 messages_dropped() const;
    QString last_drop_reason() const;
    /// @}

    /// The longest time for which the event loop did nothing for this object, beyond `beat_ms`.
    qint64 longest_stall_ms() const;
    void reset_longest_stall();

    /// Asks the server for a sign of life every so often while there is a connection; 0, the
    /// default, asks never, and a negative interval is 0. A question without an answer is not
    /// asked again.
    void set_probe_interval(int milliseconds);
    int probe_interval() const;
    /// How long the last answered question took, through the event loop, the server and the
    /// parser, in microseconds; -1 without an answer on this connection.
    qint64 round_trip_us() const;

Q_SIGNALS:
    void changed();

private Q_SLOTS:
    void note_state(QAbstractSocket::SocketState now);
    void beat();
    void look();
    void probe();
    void probe_answered();
    void probe_failed();

private:
    struct Private;
    std::unique_ptr<Private> const d;
};
