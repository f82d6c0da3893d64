// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ATarnLib/glint/asignal_monitor.h"
#include "ATarnLib/timecode/atimecode.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/aoption.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/atomic.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/records.h"

#include <QPointer>
#include <QString>

#include <bitset>

class Glint;

/// The live state of one channel as an object of the application, which gives it a hub and a
/// channel, in either order. A report is registered while one of its signals is listened to; what
/// the server says to that is the new listener's first value. When the connection is lost all
/// values go back to their defaults, so that a display goes blank.
///
/// `GlintChannelMonitor` does the same for those who need no object of their own. A registration is
/// the connection's: when one object gives a report up, with its last listener or at its own end,
/// that ends for every other object of the channel and for the hub's own. So a channel is best
/// shown by one of them. Thread: the hub's; `timecode_use_add` and `timecode_use_remove` may be
/// called from any.
class TARN_EXPORT ChannelMonitor : public ASignalMonitor
{
    Q_OBJECT

public:
    explicit ChannelMonitor(QObject *parent = nullptr);
    /// Unregisters what it has registered, listened to or not.
    ~ChannelMonitor() override;

    /// \name What to show
    /// Each may be called again with the same, which changes nothing; with another one it is an
    /// assertion and changes nothing, even when the hub has gone.
    /// @{
    void config(Glint *hub, VCTP3::Channel channel);
    void config_api(Glint *hub);
    void config_channel(VCTP3::Channel channel);
    /// @}
    /// Whether it has been given that channel.
    bool channel_is(VCTP3::Channel channel) const;

    /// \name Timecodes without a listener
    /// The first use registers the report of timecodes, on the hub's thread; the last one to go
    /// unregisters nothing. To remove a use where there is none changes nothing.
    /// @{
    void timecode_use_add();
    void timecode_use_remove();
    /// @}

    /// \name Whether a report is needed: one of its signals is listened to, or it is used
    /// @{
    bool has_receiver_status() const { return has_receiver(VCTP3::ChannelReportType::status); }
    bool has_receiver_clipid() const { return has_receiver(VCTP3::ChannelReportType::clipid); }
    bool has_receiver_speed() const { return has_receiver(VCTP3::ChannelReportType::speed); }
    bool has_receiver_timecode() const { return has_receiver(VCTP3::ChannelReportType::timecode); }
    bool has_receiver_info() const { return has_receiver(VCTP3::ChannelReportType::info); }
    bool has_receiver_peak() const { return has_receiver(VCTP3::ChannelReportType::peak); }
    bool has_receiver_aux_audio_status() const
    {
        return has_receiver(VCTP3::ChannelReportType::aux_audio_status);
    }
    bool has_receiver_aux_audio_clipid() const
    {
        return has_receiver(VCTP3::ChannelReportType::aux_audio_clipid);
    }
    bool has_receiver_aux_audio_speed() const
    {
        return has_receiver(VCTP3::ChannelReportType::aux_audio_speed);
    }
    bool has_receiver_aux_audio_timecode() const
    {
        return has_receiver(VCTP3::ChannelReportType::aux_audio_timecode);
    }
    bool has_receiver_aux_audio_info() const
    {
        return has_receiver(VCTP3::ChannelReportType::aux_audio_info);
    }
    bool has_receiver_aux_audio_peak() const
    {
        return has_receiver(VCTP3::ChannelReportType::aux_audio_peak);
    }
    /// @}
    /// \name Whether a signal, by name, needs that report
    /// @{
    static bool is_sig_status(QByteArray const &signature)
    {
        return needs(signature, VCTP3::ChannelReportType::status);
    }
    static bool is_sig_clipid(QByteArray const &signature)
    {
        return needs(signature, VCTP3::ChannelReportType::clipid);
    }
    static bool is_sig_speed(QByteArray const &signature)
    {
        return needs(signature, VCTP3::ChannelReportType::speed);
    }
    static bool is_sig_timecode(QByteArray const &signature)
    {
        return needs(signature, VCTP3::ChannelReportType::timecode);
    }
    static bool is_sig_info(QByteArray const &signature)
    {
        return needs(signature, VCTP3::ChannelReportType::info);
    }
    static bool is_sig_peak(QByteArray const &signature)
    {
        return needs(signature, VCTP3::ChannelReportType::peak);
    }
    static bool is_sig_aux_audio_status(QByteArray const &signature)
    {
        return needs(signature, VCTP3::ChannelReportType::aux_audio_status);
    }
    static bool is_sig_aux_audio_clipid(QByteArray const &signature)
    {
        return needs(signature, VCTP3::ChannelReportType::aux_audio_clipid);
    }
    static bool is_sig_aux_audio_speed(QByteArray const &signature)
    {
        return needs(signature, VCTP3::ChannelReportType::aux_audio_speed);
    }
    static bool is_sig_aux_audio_timecode(QByteArray const &signature)
    {
        return needs(signature, VCTP3::ChannelReportType::aux_audio_timecode);
    }
    static bool is_sig_aux_audio_info(QByteArray const &signature)
    {
        return needs(signature, VCTP3::ChannelReportType::aux_audio_info);
    }
    static bool is_sig_aux_audio_peak(QByteArray const &signature)
    {
        return needs(signature, VCTP3::ChannelReportType::aux_audio_peak);
    }
    /// @}

public Q_SLOTS:
    /// Registers on a new connection what is listened to.
    void connected();
    /// Sets every value to its default.
    void disconnected();
    void clear_all_values();
    /// Emits the clip's position, the display's timecode and the input's as they are.
    void reemit_timecode();

    /// \name Registering a report, while there is a connection
    /// Timecodes are emitted as they are while there is none.
    /// @{
    void register_status() { register_report(VCTP3::ChannelReportType::status); }
    void register_clipid() { register_report(VCTP3::ChannelReportType::clipid); }
    void register_speed() { register_report(VCTP3::ChannelReportType::speed); }
    void register_timecode();
    void register_info() { register_report(VCTP3::ChannelReportType::info); }
    void register_peak() { register_report(VCTP3::ChannelReportType::peak); }
    void register_aux_audio_status()
    {
        register_report(VCTP3::ChannelReportType::aux_audio_status);
    }
    void register_aux_audio_clipid()
    {
        register_report(VCTP3::ChannelReportType::aux_audio_clipid);
    }
    void register_aux_audio_speed() { register_report(VCTP3::ChannelReportType::aux_audio_speed); }
    void register_aux_audio_timecode()
    {
        register_report(VCTP3::ChannelReportType::aux_audio_timecode);
    }
    void register_aux_audio_info() { register_report(VCTP3::ChannelReportType::aux_audio_info); }
    void register_aux_audio_peak() { register_report(VCTP3::ChannelReportType::aux_audio_peak); }
    /// @}
    /// \name Unregistering a report that is no longer needed
    /// @{
    void unregister_status() { unregister_report(VCTP3::ChannelReportType::status); }
    void unregister_clipid() { unregister_report(VCTP3::ChannelReportType::clipid); }
    void unregister_speed() { unregister_report(VCTP3::ChannelReportType::speed); }
    void unregister_timecode() { unregister_report(VCTP3::ChannelReportType::timecode); }
    void unregister_info() { unregister_report(VCTP3::ChannelReportType::info); }
    void unregister_peak() { unregister_report(VCTP3::ChannelReportType::peak); }
    void unregister_aux_audio_status()
    {
        unregister_report(VCTP3::ChannelReportType::aux_audio_status);
    }
    void unregister_aux_audio_clipid()
    {
        unregister_report(VCTP3::ChannelReportType::aux_audio_clipid);
    }
    void unregister_aux_audio_speed()
    {
        unregister_report(VCTP3::ChannelReportType::aux_audio_speed);
    }
    void unregister_aux_audio_timecode()
    {
        unregister_report(VCTP3::ChannelReportType::aux_audio_timecode);
    }
    void unregister_aux_audio_info()
    {
        unregister_report(VCTP3::ChannelReportType::aux_audio_info);
    }
    void unregister_aux_audio_peak()
    {
        unregister_report(VCTP3::ChannelReportType::aux_audio_peak);
    }
    /// @}

    /// \name Reports; those of other channels, and of a connection that was lost, are passed over
    /// @{
    void report_channel_status(
        VCTP3::Channel of, VCTP3::ChannelStatus value, AOption<AString> const &clip);
    void report_channel_clipid(VCTP3::Channel of, AString const &clip);
    void report_channel_speed(VCTP3::Channel of, int value);
    void report_channel_timecode(VCTP3::Channel of, unsigned int position,
        VCTP3::Timecode const &display, VCTP3::Timecode const &input);
    void report_channel_info(VCTP3::Channel of, VCTP3::ChannelInformation const &value);
    void report_channel_peak(VCTP3::Channel of, AString const &levels);
    void report_channel_aux_audio_status(
        VCTP3::Channel of, VCTP3::ChannelStatus value, AOption<AString> const &clip);
    void report_channel_aux_audio_clipid(VCTP3::Channel of, AString const &clip);
    void report_channel_aux_audio_speed(VCTP3::Channel of, int value);
    void report_channel_aux_audio_timecode(VCTP3::Channel of, unsigned int position);
    void report_channel_aux_audio_info(VCTP3::Channel of, VCTP3::ChannelInformation const &value);
    void report_channel_aux_audio_peak(VCTP3::Channel of, AString const &levels);
    /// @}

Q_SIGNALS:
    void sig_status(VCTP3::ChannelStatus status);
    void sig_clipid(QString const &clipid);
    /// 16.16.
    void sig_speed(int speed);
    void sig_timecodes(unsigned int clip_position, Corvane::ATimecode const &display,
        Corvane::ATimecode const &input);
    void sig_clip_position(unsigned int clip_position);
    void sig_channel_information(VCTP3::ChannelInformation const &information);
    /// The highest of the levels.
    void sig_peak(unsigned int level);
    void sig_aux_status(VCTP3::ChannelStatus status);
    void sig_aux_clipid(QString const &clipid);
    void sig_aux_speed(int speed);
    void sig_aux_position(unsigned int clip_position);
    void sig_aux_information(VCTP3::ChannelInformation const &information);
    void sig_aux_peak(unsigned int level);
    void sig_display_timecode(Corvane::ATimecode const &timecode);
    void sig_input_timecode(Corvane::ATimecode const &timecode);
    /// That of the information; absent when it has none.
    void sig_playback_mode(AOption<VCTP3::Playback> const &mode);

private:
    struct Row;

    static Row const (&rows())[16];
    static bool needs(QByteArray const &signature, VCTP3::ChannelReportType report);
    void check_config_done();
    void connect_api();
    void add_monitors();
    bool takes(VCTP3::Channel of) const;
    bool has_receiver(VCTP3::ChannelReportType report) const;
    void register_report(VCTP3::ChannelReportType report);
    void unregister_report(VCTP3::ChannelReportType report);
    void give_up(VCTP3::ChannelReportType report);
    void set_timecodes(
        unsigned int position, Corvane::ATimecode const &display, Corvane::ATimecode const &input);
    void emit_channel_information();

    QPointer<Glint> api;
    bool has_api = false; // has been given one
    AOption<VCTP3::Channel> channel;
    AtomicUnsigned timecode_uses;
    bool lost = false; // the connection, and there is no other yet
    std::bitset<12> registered; // by this object, on the present connection

    VCTP3::ChannelStatus status = VCTP3::ChannelStatus::idle;
    QString clipid;
    int speed = 0;
    unsigned int clip_position = 0;
    Corvane::ATimecode display_timecode;
    Corvane::ATimecode input_timecode;
    VCTP3::ChannelInformation information;
    unsigned int peak = 0;
    VCTP3::ChannelStatus aux_status = VCTP3::ChannelStatus::idle;
    QString aux_clipid;
    int aux_speed = 0;
    unsigned int aux_position = 0;
    VCTP3::ChannelInformation aux_information;
    unsigned int aux_peak = 0;
};
