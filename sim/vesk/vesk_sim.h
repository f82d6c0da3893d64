// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/aoption.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/astring.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/records.h"
#include "sim/vesk/vesk_configuration.h"
#include "sim/vesk/vesk_counters.h"
#include "sim/vesk/vesk_sim_options.h"

#include <QByteArray>
#include <QHostAddress>
#include <QString>

#include <functional>
#include <memory>
#include <vector>

class VeskServer;
struct VeskWorld;

/// What one channel is doing.
struct VeskChannelState
{
    VCTP3::ChannelStatus status = VCTP3::ChannelStatus::idle;
    /// Empty while nothing is loaded.
    AString clip;
    unsigned int position = 0;
    /// 16.16.
    int speed = 0;
    VCTP3::ChannelInformation information;
};

/// A simulated server inside this process, on a thread of its own and on the protocol's port. It
/// answers as a server does, and misbehaves when told to.
///
/// Every call is done on the server's thread and returns when it is done, so that a client may
/// block in the same process. Time stands still unless `advance` lets fields pass or the options
/// ask for real time.
/// Thread: any. An application object must live as long as this one.
class VeskSim
{
public:
    /// Starts listening on \a address.
    explicit VeskSim(QHostAddress const &address, VeskSimOptions const &options = {});
    /// Closes all connections.
    ~VeskSim();
    VeskSim(VeskSim const &) = delete;
    VeskSim &operator=(VeskSim const &) = delete;

    bool is_listening() const;
    /// Why it does not listen; empty if it does.
    QString listen_error() const;
    QHostAddress address() const;
    quint16 port() const;

    /// Lets so many fields pass, the reports of each behind one another.
    void advance(unsigned int fields);
    void set_real_time(bool on);

    // --- faults; they stay until they are taken back or `clear_faults` ---
    /// New connections are refused, those that are open stay. A restart ends it too.
    void refuse_connections(bool on);
    /// Commands are done, but nothing is answered or reported.
    void stay_silent(bool on);
    /// Each connection that is open, or opened later, is closed when so many more bytes were sent.
    void close_after(quint64 bytes);
    /// Every byte is written by itself.
    void split_writes(bool on);
    /// Replies wait for so many fields.
    void delay_replies(unsigned int fields);
    /// The answers to so many commands are gathered and sent in an order that \a seed gives;
    /// what is left at the next field goes then.
    void reorder_replies(unsigned int window, quint32 seed);
    /// The named command is not done and answered with an error.
    void fail_command(
        char const *name, char const *text, VCTP3::ErrorCode code = VCTP3::ErrorCode::general);
    /// Ends all of the above; what was held back is sent.
    void clear_faults();
    /// Sends given bytes to every connection.
    void say(QByteArray const &bytes);
    /// Sends a report element to those who registered for \a group.
    void report(VCTP3::ReportType group, XMLTree const &report);
    /// Ends all connections at once; the server goes on listening.
    void drop_connections();
    /// Ends all connections and listens no more; the state stays until the restart.
    void stop();
    /// Ends all connections and listens anew.
    void restart(VeskState state);

    // --- what it has seen and what it holds ---
    VeskCounters counters() const;
    /// Fields since the start.
    quint64 fields() const;
    VeskChannelState channel_state(
        VCTP3::Channel channel, VCTP3::Layer layer = VCTP3::Layer::normal) const;
    /// None for an unknown id.
    AOption<VCTP3::ClipInfo> clip(AString const &id) const;
    std::vector<AString> clip_ids() const;
    AOption<VeskSetting> setting(AString const &name) const;
    AOption<AString> dictionary_value(AString const &key) const;
    /// By the full key.
    AOption<AString> metadata_value(AString const &database, AString const &key) const;
    AOption<std::vector<VCTP3::ListElement>> list(AString const &id) const;
    AOption<std::vector<VCTP3::ChaseElement>> chase(AString const &id) const;
    std::vector<AString> log() const;

    /// Runs a function on the server's thread and waits for it: for whatever the calls above do
    /// not offer. What it changes is reported.
    void with_world(std::function<void(VeskWorld &)> const &function);

private:
    void run(std::function<void(VeskServer &)> const &function) const;

    struct Private;
    std::unique_ptr<Private> d;
};
