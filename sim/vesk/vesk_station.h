// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "sim/vesk/vesk_answer.h"
#include "sim/vesk/vesk_counters.h"
#include "sim/vesk/vesk_faults.h"
#include "sim/vesk/vesk_outbox.h"
#include "sim/vesk/vesk_reader.h"
#include "sim/vesk/vesk_session.h"

#include <functional>
#include <map>
#include <memory>
#include <vector>

/// The whole server but its sockets: whoever carries the bytes opens a connection, feeds what it
/// received and writes what is waiting.
/// Thread: the server's.
class VeskStation final : private VeskReporter
{
public:
    /// Gets every message both ways ('<' received, '>' sent) and every line of the log (' ').
    using Trace = std::function<void(quint64 connection, char way, QByteArray const &text)>;

    VeskStation(VCTP3::VideoStandard standard, VeskBoard board);
    ~VeskStation() override;

    VeskWorld &world() { return *kept; }
    VeskFaults &faults() { return present_faults; }
    VeskCounters &counters() { return counted; }
    void set_trace(Trace const &sink) { trace = sink; }

    /// The number of a new connection.
    quint64 open();
    /// Does and answers the commands that are whole now. False when the stream is broken.
    bool feed(quint64 connection, char const *data, std::size_t size);
    /// The connection is gone, and with it what it alone held.
    void close(quint64 connection);
    /// What waits to be written on a connection; nothing for one that is gone.
    QByteArray take_output(quint64 connection);
    /// Bytes waiting, those held back by a fault too.
    qint64 output_size(quint64 connection) const;
    /// Sends given bytes to every connection.
    void say(QByteArray const &bytes);
    /// What the faults held back goes out.
    void release_all();

    /// A line for the trace.
    void note(quint64 connection, char const *line) const;

    /// Lets one field pass.
    void advance_field();
    /// Sends what channels of a storm report, of one of so many parts of the field.
    void send_storm(unsigned int part, unsigned int parts);
    /// Sends what the world has told since the last time. To be called behind every change of the
    /// world that neither `feed`, `close` nor `advance_field` made.
    void send_reports();

    /// All connections are closed; the world goes on as after a restart of the machine, or begins
    /// anew without clips.
    void restart();
    void begin_anew(VCTP3::VideoStandard standard, VeskBoard board);

private:
    struct Client
    {
        Client(VeskWorld *world, VeskFaults const *faults);
        VeskReader reader;
        VeskSession session;
        VeskOutbox outbox;
    };
    struct Told
    {
        enum class To
        {
            group,
            one,
            all
        } to;
        VCTP3::ReportType group;
        quint64 connection;
        XMLTree report;
    };

    VeskReporter *reporter() { return this; }
    void report(VCTP3::ReportType group, XMLTree const &report) override;
    void report_to(quint64 connection, XMLTree const &report) override;
    void report_to_all(XMLTree const &report) override;

    void receive(quint64 connection, Client &client, XMLTree const &message);
    bool do_command(
        VeskSession &session, VeskAnswer &answer, XMLTree const &command, AString *error);
    void send_answer(quint64 connection, Client &client, VeskAnswer const &answer);
    void send_told(Told const &told);
    void send_channel_report(VCTP3::Channel channel, VCTP3::ChannelReportType group);
    template <typename Wants> void send_to(Wants const &wants, XMLTree const &report);
    void close_all();

    VeskFaults present_faults;
    VeskCounters counted;
    Trace trace;
    std::unique_ptr<VeskWorld> kept;
    quint64 last_connection = 0;
    std::map<quint64, std::unique_ptr<Client>> clients;
    std::vector<Told> pending;
};
