// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ATarnLib/glint/glint_channel_monitor.h"

#include <QPointer>

/// The live state of one output: that of the channel which the configuration gives it, and the
/// defaults while that changes. It rides on the channel's monitor, which it connects to signal by
/// signal for as long as its own signal has a listener; so a report is registered only while
/// somebody is at the end of it. An output that has lost its channel has the status `nochannel`,
/// one that never had a channel the default.
/// Thread: the hub's, on which signals are emitted. Slots may be connected and disconnected from
/// any.
class TARN_EXPORT GlintOutputMonitor : public QObject
{
    Q_OBJECT

public:
    using Timecodes = GlintChannelMonitor::Timecodes;
    /// Takes note of whether a signal has listeners, and emits its value if asked to.
    using UpdateMethod = void (GlintOutputMonitor::*)(bool emit_now);

    /// An output of \a owner, which becomes its parent.
    GlintOutputMonitor(Glint *owner, unsigned int number);

    unsigned int output() const { return output_number; }
    /// The channel that it shows; null without one.
    GlintChannelMonitor *channel_monitor() const { return source; }

    /// Shows another channel. Its listeners get the defaults first if they had one before, and the
    /// new channel's values from the event loop. Null: no channel.
    void set_channel_monitor(GlintChannelMonitor *monitor);
    /// Sets all values to their defaults.
    void clear_all();
    /// Emits all values, those with a listener.
    void emit_all();

    /// \name The signals as the toolkit knows them
    /// @{
    static QMetaMethod const &sig_status() { return meta_method(Signal::status); }
    static QMetaMethod const &sig_clipid() { return meta_method(Signal::clipid); }
    static QMetaMethod const &sig_speed() { return meta_method(Signal::speed); }
    static QMetaMethod const &sig_timecodes() { return meta_method(Signal::timecodes); }
    static QMetaMethod const &sig_clip_position() { return meta_method(Signal::clip_position); }
    static QMetaMethod const &sig_aux_position() { return meta_method(Signal::aux_position); }
    static QMetaMethod const &sig_display_timecode()
    {
        return meta_method(Signal::display_timecode);
    }
    static QMetaMethod const &sig_input_timecode() { return meta_method(Signal::input_timecode); }
    static QMetaMethod const &sig_information() { return meta_method(Signal::information); }
    static QMetaMethod const &sig_playback_mode() { return meta_method(Signal::playback_mode); }
    /// @}

    /// \name Noting whether a signal has listeners
    /// What changes connects or disconnects the channel's signal. With \a emit_now the value is
    /// emitted if there is a listener.
    /// @{
    void update_sig_status(bool emit_now) { update_sig(Signal::status, emit_now); }
    void update_sig_clipid(bool emit_now) { update_sig(Signal::clipid, emit_now); }
    void update_sig_speed(bool emit_now) { update_sig(Signal::speed, emit_now); }
    void update_sig_timecodes(bool emit_now) { update_sig(Signal::timecodes, emit_now); }
    void update_sig_clip_position(bool emit_now) { update_sig(Signal::clip_position, emit_now); }
    void update_sig_aux_position(bool emit_now) { update_sig(Signal::aux_position, emit_now); }
    void update_sig_display_timecode(bool emit_now)
    {
        update_sig(Signal::display_timecode, emit_now);
    }
    void update_sig_input_timecode(bool emit_now) { update_sig(Signal::input_timecode, emit_now); }
    void update_sig_information(bool emit_now) { update_sig(Signal::information, emit_now); }
    void update_sig_playback_mode(bool emit_now) { update_sig(Signal::playback_mode, emit_now); }
    /// @}

    /// \name Connecting the channel's signal, or disconnecting it
    /// @{
    void manage_connect_status(bool on);
    void manage_connect_clipid(bool on);
    void manage_connect_speed(bool on);
    void manage_connect_timecodes(bool on);
    void manage_connect_clip_position(bool on);
    void manage_connect_aux_position(bool on);
    void manage_connect_display_timecode(bool on);
    void manage_connect_input_timecode(bool on);
    void manage_connect_information(bool on);
    void manage_connect_playback_mode(bool on);
    /// @}

    /// \name Emitting the value that is held, if its signal has a listener
    /// @{
    void emit_status();
    void emit_clipid();
    void emit_speed();
    void emit_timecodes();
    void emit_clip_position();
    void emit_aux_position();
    void emit_display_timecode();
    void emit_input_timecode();
    void emit_information();
    void emit_playback_mode();
    /// @}

public Q_SLOTS:
    /// Asks the configuration for the channel.
    void cf_changed();
    /// Looks at all signals that have lost a listener since the last time.
    void process_disconnected_signals();
    /// \name News of the channel
    /// @{
    void ch_status(VCTP3::ChannelStatus value);
    void ch_clipid(QString const &value);
    void ch_speed(int value);
    void ch_timecodes(unsigned int clip_position, Corvane::ATimecode const &display,
        Corvane::ATimecode const &input);
    void ch_timecodes2(Timecodes const &value);
    void ch_clip_position(unsigned int value);
    void ch_aux_position(unsigned int value);
    void ch_display_timecode(Corvane::ATimecode const &value);
    void ch_input_timecode(Corvane::ATimecode const &value);
    void ch_information(VCTP3::ChannelInformation const &value);
    void ch_playback_mode(AOption<VCTP3::Playback> const &value);
    /// @}

Q_SIGNALS:
    void report_status(VCTP3::ChannelStatus status);
    void report_clipid(QString const &clipid);
    void report_speed(int speed);
    void report_timecodes(unsigned int clip_position, Corvane::ATimecode const &display,
        Corvane::ATimecode const &input);
    void report_clip_position(unsigned int clip_position);
    void report_aux_position(unsigned int clip_position);
    void report_display_timecode(Corvane::ATimecode const &timecode);
    void report_input_timecode(Corvane::ATimecode const &timecode);
    void report_information(VCTP3::ChannelInformation const &information);
    void report_playback_mode(AOption<VCTP3::Playback> const &mode);

    /// Internal.
    void relay_connect_disconnect_notify2(bool connect, UpdateMethod const &method);

protected:
    void connectNotify(QMetaMethod const &signal) override;
    void disconnectNotify(QMetaMethod const &signal) override;

private:
    /// In the order in which a new source is connected.
    enum class Signal
    {
        status,
        clipid,
        speed,
        timecodes,
        clip_position,
        aux_position,
        display_timecode,
        input_timecode,
        information,
        playback_mode,
    };
    static constexpr std::size_t signal_count = 10;
    struct Row;

    static Row const (&rows())[signal_count];
    static QMetaMethod const &meta_method(Signal signal);
    void connect_relay();
    void connect_disconnect_notify(bool connect, QMetaMethod const &signal);
    void connect_disconnect_notify2(bool connect, UpdateMethod const &method);
    void update_sig(Signal signal, bool emit_now);
    bool has_listener(Signal signal) const { return sig[static_cast<std::size_t>(signal)]; }
    template <typename From, typename To> void manage_connect(bool on, From from, To to);

    Glint *const hub;
    unsigned int const output_number;
    QPointer<GlintChannelMonitor> source; // an application may give it that of another hub
    std::bitset<signal_count> sig; // the signal has a listener

    VCTP3::ChannelStatus status = GlintChannelMonitor::default_status();
    QString clipid;
    int speed = GlintChannelMonitor::default_speed();
    Timecodes timecodes;
    unsigned int clip_position = GlintChannelMonitor::default_clip_position();
    unsigned int aux_position = GlintChannelMonitor::default_aux_position();
    Corvane::ATimecode display_timecode;
    Corvane::ATimecode input_timecode;
    VCTP3::ChannelInformation information;
    AOption<VCTP3::Playback> playback_mode;

    GlintListeners<GlintOutputMonitor> listeners{this};
};
