// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ATarnLib/glint/asignal_monitor.h"
#include "ATarnLib/timecode/atimecode.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/aoption.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/records.h"

#include <QPointer>
#include <QString>

#include <array>

class CFChannelConfig;
class ChannelMonitor;

/// The live state of one output as an object of the application: the signals of the channel that
/// the configuration gives it, out of twelve. It connects to the channel's monitor only while its
/// own signal is listened to, and anew for each listener, so that each gets the present value.
///
/// `GlintOutputMonitor` does the same for those who need no object of their own.
/// Thread: the hub's.
class TARN_EXPORT OutputMonitor : public ASignalMonitor
{
    Q_OBJECT

public:
    static constexpr unsigned int channel_count = 12;

    /// \a monitors: of the channels from the first on, \a count of them; they may go first. Any
    /// other count than `channel_count`, and no monitors or no configuration at all, is an
    /// assertion, and the output shows nothing, as when the configuration has gone.
    OutputMonitor(unsigned int output, CFChannelConfig *channel_config,
        ChannelMonitor *const *monitors, unsigned int count, QObject *parent = nullptr);

public Q_SLOTS:
    /// Asks the configuration for the channel.
    void cf_changed();
    /// Connects that signal of the channel to the one here of the same name, or disconnects it.
    void sig_attach(QByteArray const &signature);
    void sig_detach(QByteArray const &signature);

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
    struct Signal
    {
        QByteArray signature;
        QMetaMethod method;
    };

    static std::array<Signal, 16> const &all_signals();

    unsigned int const output_number;
    QPointer<CFChannelConfig> const config;
    std::array<QPointer<ChannelMonitor>, channel_count> chmon;
    QPointer<ChannelMonitor> source;
};
