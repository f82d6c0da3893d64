// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/aprotect.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/areference.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/api_qt.h"

#include <QByteArray>
#include <QPointer>
#include <array>
#include <atomic>
#include <deque>

class ATimer;
class CFChannelConfig;
class CFModel;
class GlintAudioLevels;
class GlintChannelMonitor;
class GlintHealth;
class GlintOutputMonitor;
class GlintTimecode;
class GlintWorker;
class AlertModel;
class LightStoreDBObject;
class LightStoreManager;
class USModel;

/// One server, and all that an application needs of it: the whole protocol, a connection that
/// comes back by itself, and every subscription renewed on each connection.
///
/// The server is fixed by `set_server`. From then on the hub tries to connect every 200 ms while
/// there is no connection, without an end and without a growing pause.
/// Thread: the main one, on which it lives; commands may be sent from any.
class TARN_EXPORT Glint : public VCTP3::APIQt
{
    Q_OBJECT

public:
    /// How many channels have a counter of those who want list and chase reports. A server has 40:
    /// from there on a request goes out without a channel's letter, and means nothing to it.
    static constexpr unsigned int listplay_count = 80;
    static constexpr unsigned int channel_count = 40;

    /// \a local: whether the server is on this machine, so that the hub's models are those of the
    /// machine, which one hub at a time may have. A second such hub is an assertion; it sees the
    /// first one's models for as long as that lives. Connects to nothing by itself.
    explicit Glint(bool local, QObject *parent = nullptr);
    /// The same with the name of the server, which is remembered as by `set_server`; it is local
    /// when it is the name of this computer.
    explicit Glint(QString const &server, QObject *parent = nullptr);
    /// A narrow text would pass for a bool.
    explicit Glint(char const *server, QObject *parent = nullptr) = delete;
    ~Glint() override;

    /// The server by name; the one that is set already changes nothing. Starts nothing itself: a
    /// connection to another server stays until it drops, and the next one goes to this name.
    void set_server(QString const &server);
    /// The server by address; the one that is set already changes nothing. Connects at once while
    /// there is no connection. Otherwise the one there is stays until it drops, but nobody outside
    /// hears of its socket any more.
    void set_server(QHostAddress const &server);
    /// The server on this machine.
    void set_server_localhost();

    /// Whether what is sent reaches the socket by way of the event loop, as it does from the start
    /// on. Without it the socket is written at once, and commands belong on the hub's thread.
    void enable_threading(bool on = true) { threading = on; }

    /// \name Reports for all of the server, on this connection and on each later one
    /// @{
    void require_melt_notification();
    void require_export_notification();
    /// @}

    /// What the server has to say about its health; made at the first call, and from then on
    /// registered on each connection. Any thread.
    AlertModel *get_alert_model();

    /// \name List and chase reports of a channel
    /// Each request is taken back by one unrequest. A channel counts both kinds together, so the
    /// one who leaves last unregisters only the kind it leaves. To take back what nobody requested
    /// changes nothing; a channel from `listplay_count` on is an assertion and changes nothing.
    /// @{
    void request_listplay_notification(VCTP3::Channel channel);
    void request_chaseplay_notification(VCTP3::Channel channel);
    void unrequest_listplay_notification(VCTP3::Channel channel);
    void unrequest_chaseplay_notification(VCTP3::Channel channel);
    /// @}

    /// \name The live state of a channel and of an output
    /// @{
    /// A number of `channel_count` or above is an assertion and gives the first one.
    GlintChannelMonitor *get_channel_monitor(unsigned int i) const;
    GlintOutputMonitor *get_output_monitor(unsigned int i) const;
    /// Null for a channel of `channel_count` or above.
    GlintChannelMonitor *toMonitor(VCTP3::Channel channel) const
    {
        auto const i = static_cast<unsigned int>(channel);
        return i < channel_count ? channel_monitors[i] : nullptr;
    }
    /// @}

    /// \name What the server keeps
    /// The first two are null once they have gone with another hub of this machine.
    /// @{
    /// The server's configuration.
    CFModel *get_cf_model() const;
    /// The server's user dictionary.
    USModel *get_us_model() const;
    /// What the configuration means in channels, angles and outputs.
    CFChannelConfig *get_channel_config() const { return channel_config; }
    /// @}

    /// How the connection and the event loop are doing.
    GlintHealth *get_health() const { return health; }

    /// The database of that name. An assertion, and null, while there is no manager of stores.
    AReference<LightStoreDBObject> lightstore(QString const &name);

Q_SIGNALS:
    /// Bytes on their way to the socket.
    void indirect_send(QByteArray const &bytes);

public Q_SLOTS:
    void slot_indirect_send(QByteArray const &bytes);
    /// Renews on a new connection what was wanted on the last one: reports for all of the server,
    /// list and chase reports, reports of channels.
    void slot_connected();
    /// Connects, if a server is set and the socket is unconnected.
    void stay_connected();
    /// \name Delivery of what the workers have decoded
    /// One channel of each kind at a time, so that other events have their turn in between; the
    /// rest follows in later passes of the event loop. Channels without a listener, of their
    /// monitor or of the hub's own signals at field rate, share a pass.
    /// @{
    void process_timecode();
    void process_ltc();
    void process_audio_levels();
    /// @}
    /// \name Reports on their way to the channels' monitors
    /// A channel of `channel_count` or above is passed over. Levels are the numbers in a text,
    /// brought to 16.
    /// @{
    void got_report_channel_status(
        VCTP3::Channel channel, VCTP3::ChannelStatus status, AOption<AString> const &clip);
    void got_report_channel_clipid(VCTP3::Channel channel, AString const &clip);
    void got_report_channel_speed(VCTP3::Channel channel, int speed);
    void got_report_channel_timecode(VCTP3::Channel channel, unsigned int position,
        VCTP3::Timecode const &display, VCTP3::Timecode const &input);
    void got_report_channel_info(
        VCTP3::Channel channel, VCTP3::ChannelInformation const &information);
    void got_report_channel_peak(VCTP3::Channel channel, AString const &levels);
    void got_report_channel_aux_audio_status(
        VCTP3::Channel channel, VCTP3::ChannelStatus status, AOption<AString> const &clip);
    void got_report_channel_aux_audio_clipid(VCTP3::Channel channel, AString const &clip);
    void got_report_channel_aux_audio_speed(VCTP3::Channel channel, int speed);
    void got_report_channel_aux_audio_timecode(VCTP3::Channel channel, unsigned int position);
    void got_report_channel_aux_audio_info(
        VCTP3::Channel channel, VCTP3::ChannelInformation const &information);
    void got_report_channel_aux_audio_peak(VCTP3::Channel channel, AString const &levels);
    /// @}

protected:
    /// Any thread.
    void send(void const *data, unsigned long long size) override;
    /// Takes the reports that come at field rate, for the workers: timecodes, LTC and levels.
    bool parse_intercept(XMLTree const &message) override;
    /// Notes listeners of the reports at field rate; a subclass that overrides it calls this.
    void connectNotify(QMetaMethod const &signal) override;

private:
    friend class GlintHealth;

    AString last_drop_reason() const;
    void make_workers();
    GlintWorker *decoder_for(XMLTree const &message) const;
    bool is_heard(VCTP3::Channel channel, VCTP3::ChannelReportType report) const;
    void send_work();
    void make_models(bool local);
    void make_monitors();
    void process_disconnected_signals();
    void connect_reports();
    void register_alerts();
    void register_listplay(VCTP3::Channel channel);
    void register_chaseplay(VCTP3::Channel channel);
    unsigned int *listplay_users(VCTP3::Channel channel);
    bool leave_listplay(VCTP3::Channel channel);
    void renew_listplay();

    bool server_name_set = false;
    QString server_name;
    bool server_address_set = false;
    QHostAddress server_address;
    bool melt_required = false;
    bool export_required = false;
    std::array<unsigned int, listplay_count> rq_listplay{};
    std::atomic<bool> threading{true};
    /// The stream of each block of bytes that is on its way.
    AProtect<std::deque<unsigned int>> streams_to_send;
    LightStoreManager *lightstore_manager = nullptr;
    std::atomic<AlertModel *> alert_model{nullptr};
    GlintTimecode *timecode_worker = nullptr;
    GlintAudioLevels *levels_worker = nullptr;
    ATimer *timecode_timer = nullptr;
    ATimer *levels_timer = nullptr;
    std::array<GlintChannelMonitor *, channel_count> channel_monitors{};
    std::array<GlintOutputMonitor *, channel_count> output_monitors{};
    /// Of this connection; the workers' results carry it, so that those of an older one fall away.
    unsigned long long connection_count = 0;
    /// The connection on which alerts were registered last.
    unsigned long long alerts_connection = 0;
    QPointer<CFModel> cf_model;
    QPointer<USModel> us_model;
    CFChannelConfig *channel_config = nullptr;
    GlintHealth *health = nullptr;
    bool send_work_posted = false;
    /// Somebody has connected to a signal of the reports that come at field rate.
    std::atomic<bool> field_rate_is_watched{false};
};
