// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ATarnLib/glint/glint_listeners.h"
#include "ATarnLib/timecode/atimecode.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/aoption.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/records.h"

#include <QMetaMethod>
#include <QObject>
#include <QString>

#include <bitset>
#include <list>
#include <span>
#include <vector>

class Glint;

/// The live state of one channel, as a user interface connects to it. Connecting a slot is all
/// there is to do: while a signal has a listener, the report that it needs is registered with the
/// server, and each new listener gets the present value from the event loop. Some ten seconds
/// after the last listener has gone the report is unregistered.
///
/// Values stay as they were while there is no connection.
/// Thread: the hub's, on which signals are emitted. Slots may be connected and disconnected from
/// any.
class TARN_EXPORT GlintChannelMonitor : public QObject
{
    Q_OBJECT

public:
    /// The timecodes of one report.
    struct Timecodes
    {
        unsigned int clip_position = 0;
        Corvane::ATimecode display;
        Corvane::ATimecode input;
    };
    /// Takes note of whether a signal has listeners, and emits its value if asked to.
    using UpdateMethod = void (GlintChannelMonitor::*)(bool emit_now);

    /// A channel of \a owner, which becomes its parent.
    GlintChannelMonitor(Glint *owner, unsigned int number);

    VCTP3::Channel channel() const { return channel_number; }

    /// \name What is shown before the server has told
    /// @{
    static VCTP3::ChannelStatus default_status() { return VCTP3::ChannelStatus::idle; }
    static QString default_clipid() { return QString(); }
    static int default_speed() { return 0; }
    static Timecodes default_timecodes() { return Timecodes(); }
    static unsigned int default_clip_position() { return 0; }
    static VCTP3::ChannelInformation default_information() { return {}; }
    static std::list<unsigned int> default_peak() { return {}; }
    static Corvane::ATimecode default_display_timecode() { return {}; }
    static Corvane::ATimecode default_input_timecode() { return {}; }
    static AOption<VCTP3::Playback> default_playback_mode() { return {}; }
    static VCTP3::ChannelStatus default_aux_status() { return default_status(); }
    static QString default_aux_clipid() { return default_clipid(); }
    static int default_aux_speed() { return default_speed(); }
    static unsigned int default_aux_position() { return default_clip_position(); }
    static VCTP3::ChannelInformation default_aux_information() { return default_information(); }
    static std::list<unsigned int> default_aux_peak() { return default_peak(); }
    /// @}

    /// \name The signals as the toolkit knows them
    /// @{
    static QMetaMethod const &sig_status() { return meta_method(Signal::status); }
    static QMetaMethod const &sig_clipid() { return meta_method(Signal::clipid); }
    static QMetaMethod const &sig_speed() { return meta_method(Signal::speed); }
    static QMetaMethod const &sig_timecodes() { return meta_method(Signal::timecodes); }
    static QMetaMethod const &sig_clip_position() { return meta_method(Signal::clip_position); }
    static QMetaMethod const &sig_display_timecode()
    {
        return meta_method(Signal::display_timecode);
    }
    static QMetaMethod const &sig_input_timecode() { return meta_method(Signal::input_timecode); }
    static QMetaMethod const &sig_information() { return meta_method(Signal::information); }
    static QMetaMethod const &sig_playback_mode() { return meta_method(Signal::playback_mode); }
    static QMetaMethod const &sig_peak() { return meta_method(Signal::peak); }
    static QMetaMethod const &sig_aux_status() { return meta_method(Signal::aux_status); }
    static QMetaMethod const &sig_aux_clipid() { return meta_method(Signal::aux_clipid); }
    static QMetaMethod const &sig_aux_speed() { return meta_method(Signal::aux_speed); }
    static QMetaMethod const &sig_aux_position() { return meta_method(Signal::aux_position); }
    static QMetaMethod const &sig_aux_information() { return meta_method(Signal::aux_information); }
    static QMetaMethod const &sig_aux_peak() { return meta_method(Signal::aux_peak); }
    static QMetaMethod const &sig_peak_hold() { return meta_method(Signal::peak_hold); }
    static QMetaMethod const &sig_aux_peak_hold() { return meta_method(Signal::aux_peak_hold); }
    /// @}

    /// \name Noting whether a signal has listeners
    /// What changes goes on to the report that the signal needs. With \a emit_now the value is
    /// emitted if there is a listener.
    /// @{
    void update_sig_status(bool emit_now) { update_sig(Signal::status, emit_now); }
    void update_sig_clipid(bool emit_now) { update_sig(Signal::clipid, emit_now); }
    void update_sig_speed(bool emit_now) { update_sig(Signal::speed, emit_now); }
    void update_sig_timecodes(bool emit_now) { update_sig(Signal::timecodes, emit_now); }
    void update_sig_clip_position(bool emit_now) { update_sig(Signal::clip_position, emit_now); }
    void update_sig_display_timecode(bool emit_now)
    {
        update_sig(Signal::display_timecode, emit_now);
    }
    void update_sig_input_timecode(bool emit_now) { update_sig(Signal::input_timecode, emit_now); }
    void update_sig_information(bool emit_now) { update_sig(Signal::information, emit_now); }
    void update_sig_playback_mode(bool emit_now) { update_sig(Signal::playback_mode, emit_now); }
    void update_sig_peak(bool emit_now) { update_sig(Signal::peak, emit_now); }
    void update_sig_aux_status(bool emit_now) { update_sig(Signal::aux_status, emit_now); }
    void update_sig_aux_clipid(bool emit_now) { update_sig(Signal::aux_clipid, emit_now); }
    void update_sig_aux_speed(bool emit_now) { update_sig(Signal::aux_speed, emit_now); }
    void update_sig_aux_position(bool emit_now) { update_sig(Signal::aux_position, emit_now); }
    void update_sig_aux_information(bool emit_now)
    {
        update_sig(Signal::aux_information, emit_now);
    }
    void update_sig_aux_peak(bool emit_now) { update_sig(Signal::aux_peak, emit_now); }
    void update_sig_peak_hold(bool emit_now) { update_sig(Signal::peak_hold, emit_now); }
    void update_sig_aux_peak_hold(bool emit_now) { update_sig(Signal::aux_peak_hold, emit_now); }
    /// @}

    /// \name Registering a report while one of its signals has a listener
    /// While there is no connection the wish is kept for the next one.
    /// @{
    void update_reg_status() { update_reg(VCTP3::ChannelReportType::status); }
    void update_reg_clipid() { update_reg(VCTP3::ChannelReportType::clipid); }
    void update_reg_speed() { update_reg(VCTP3::ChannelReportType::speed); }
    void update_reg_timecode() { update_reg(VCTP3::ChannelReportType::timecode); }
    void update_reg_info() { update_reg(VCTP3::ChannelReportType::info); }
    void update_reg_peak() { update_reg(VCTP3::ChannelReportType::peak); }
    void update_reg_aux_audio_status() { update_reg(VCTP3::ChannelReportType::aux_audio_status); }
    void update_reg_aux_audio_clipid() { update_reg(VCTP3::ChannelReportType::aux_audio_clipid); }
    void update_reg_aux_audio_speed() { update_reg(VCTP3::ChannelReportType::aux_audio_speed); }
    void update_reg_aux_audio_timecode()
    {
        update_reg(VCTP3::ChannelReportType::aux_audio_timecode);
    }
    void update_reg_aux_audio_info() { update_reg(VCTP3::ChannelReportType::aux_audio_info); }
    void update_reg_aux_audio_peak() { update_reg(VCTP3::ChannelReportType::aux_audio_peak); }
    /// @}

    /// \name Emitting the value that is held, if its signal has a listener
    /// @{
    void emit_status();
    void emit_clipid();
    void emit_speed();
    void emit_timecodes();
    void emit_clip_position();
    void emit_display_timecode();
    void emit_input_timecode();
    void emit_information();
    void emit_playback_mode();
    void emit_peak();
    void emit_aux_status();
    void emit_aux_clipid();
    void emit_aux_speed();
    void emit_aux_position();
    void emit_aux_information();
    void emit_aux_peak();
    void emit_peak_hold();
    void emit_aux_peak_hold();
    /// @}

    /// \name News from the server, told by the hub
    /// @{
    void glint_status(VCTP3::ChannelStatus value, AOption<AString> const &clip);
    void glint_clipid(AString const &clip);
    /// 16.16.
    void glint_speed(int value);
    void glint_timecode(
        unsigned int position, VCTP3::Timecode const &display, VCTP3::Timecode const &input);
    /// The playback mode is emitted beside the information, and stays the default: it is not
    /// taken from there.
    void glint_info(VCTP3::ChannelInformation const &value);
    void glint_peak(std::span<unsigned int const> levels);
    void glint_aux_audio_status(VCTP3::ChannelStatus value, AOption<AString> const &clip);
    void glint_aux_audio_clipid(AString const &clip);
    void glint_aux_audio_speed(int value);
    void glint_aux_audio_timecode(unsigned int position);
    void glint_aux_audio_info(VCTP3::ChannelInformation const &value);
    void glint_aux_audio_peak(std::span<unsigned int const> levels);
    /// The highest level of each track since the last delivery of levels.
    void glint_peak_hold(std::span<unsigned int const> levels);
    void glint_aux_peak_hold(std::span<unsigned int const> levels);
    /// Registers on a new connection what is listened to.
    void glint_connected();
    /// Whether a signal has a listener, or had one a moment ago, that needs this report.
    bool is_listened_to(VCTP3::ChannelReportType report) const
    {
        return reg[static_cast<std::size_t>(report)];
    }
    /// @}

public Q_SLOTS:
    /// Looks at all signals that have lost a listener since the last time.
    void process_disconnected_signals();

Q_SIGNALS:
    void report_status(VCTP3::ChannelStatus status);
    void report_clipid(QString const &clipid);
    void report_speed(int speed);
    void report_timecodes(unsigned int clip_position, Corvane::ATimecode const &display,
        Corvane::ATimecode const &input);
    void report_clip_position(unsigned int clip_position);
    void report_display_timecode(Corvane::ATimecode const &timecode);
    void report_input_timecode(Corvane::ATimecode const &timecode);
    void report_information(VCTP3::ChannelInformation const &information);
    void report_playback_mode(AOption<VCTP3::Playback> const &mode);
    void report_peak(std::list<unsigned int> const &levels);
    void report_aux_status(VCTP3::ChannelStatus status);
    void report_aux_clipid(QString const &clipid);
    void report_aux_speed(int speed);
    void report_aux_position(unsigned int clip_position);
    void report_aux_information(VCTP3::ChannelInformation const &information);
    void report_aux_peak(std::list<unsigned int> const &levels);
    void report_peak_hold(std::list<unsigned int> const &levels);
    void report_aux_peak_hold(std::list<unsigned int> const &levels);

    /// Internal.
    void relay_connect_disconnect_notify2(bool connect, UpdateMethod const &method);

protected:
    void connectNotify(QMetaMethod const &signal) override;
    void disconnectNotify(QMetaMethod const &signal) override;

private:
    /// In the order in which a signal is looked for.
    enum class Signal
    {
        status,
        clipid,
        speed,
        timecodes,
        clip_position,
        display_timecode,
        input_timecode,
        information,
        playback_mode,
        peak,
        aux_status,
        aux_clipid,
        aux_speed,
        aux_position,
        aux_information,
        aux_peak,
        peak_hold,
        aux_peak_hold,
    };
    static constexpr std::size_t signal_count = 18;
    static constexpr std::size_t report_count = 12;
    struct Row;

    static Row const (&rows())[signal_count];
    static QMetaMethod const &meta_method(Signal signal);
    void connect_relay();
    void connect_disconnect_notify(bool connect, QMetaMethod const &signal);
    void connect_disconnect_notify2(bool connect, UpdateMethod const &method);
    void update_sig(Signal signal, bool emit_now);
    void update_reg(VCTP3::ChannelReportType report);
    bool is_needed(VCTP3::ChannelReportType report) const;
    bool has_listener(Signal signal) const { return sig[static_cast<std::size_t>(signal)]; }

    /// A clip's name as it came, and as it is shown if somebody looks; most reports repeat it.
    class ClipID
    {
    public:
        void set(AString const &text);
        QString const &show();

    private:
        AString wire;
        QString shown;
        bool is_shown = true;
    };

    Glint *const hub;
    VCTP3::Channel const channel_number;
    std::bitset<report_count> reg; // the report is registered
    std::bitset<signal_count> sig; // the signal has a listener

    VCTP3::ChannelStatus status = default_status();
    ClipID clipid;
    int speed = default_speed();
    Timecodes timecodes;
    unsigned int clip_position = default_clip_position();
    VCTP3::ChannelInformation information;
    std::vector<unsigned int> peak;
    VCTP3::ChannelStatus aux_status = default_aux_status();
    ClipID aux_clipid;
    int aux_speed = default_aux_speed();
    unsigned int aux_position = default_aux_position();
    VCTP3::ChannelInformation aux_information;
    std::vector<unsigned int> aux_peak;
    Corvane::ATimecode display_timecode;
    Corvane::ATimecode input_timecode;
    AOption<VCTP3::Playback> playback_mode;
    std::vector<unsigned int> peak_hold;
    std::vector<unsigned int> aux_peak_hold;

    GlintListeners<GlintChannelMonitor> listeners{this};
};
