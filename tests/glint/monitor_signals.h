// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ATarnLib/glint/glint_output_monitor.h"

#include <functional>
#include <vector>

/// A signal of a monitor and the report that it needs, of the channel itself or of an output's.
template <typename Monitor> struct MonitorSignal
{
    char const *name;
    char const *report;
    QMetaMethod const &(*method)();
    /// Calls \a heard at each emission, as long as \a receiver lives.
    std::function<QMetaObject::Connection(
        Monitor *monitor, QObject *receiver, std::function<void()> const &heard)>
        connect;
};

/// All of them, for tests that go through them.
namespace MonitorSignals {

template <typename Monitor, typename Signal>
MonitorSignal<Monitor> row(
    char const *name, char const *report, QMetaMethod const &(*method)(), Signal signal)
{
    return {name, report, method,
        [signal](Monitor *monitor, QObject *receiver, std::function<void()> const &heard) {
            return QObject::connect(monitor, signal, receiver, [heard] { heard(); });
        }};
}

/// Those of an output, which a channel has too.
template <typename M> std::vector<MonitorSignal<M>> of_both()
{
    return {
        row<M>("status", "status", &M::sig_status, &M::report_status),
        row<M>("clipid", "clipid", &M::sig_clipid, &M::report_clipid),
        row<M>("speed", "speed", &M::sig_speed, &M::report_speed),
        row<M>("timecodes", "timecode", &M::sig_timecodes, &M::report_timecodes),
        row<M>("clip_position", "timecode", &M::sig_clip_position, &M::report_clip_position),
        row<M>("aux_position", "aux_audio_timecode", &M::sig_aux_position, &M::report_aux_position),
        row<M>(
            "display_timecode", "timecode", &M::sig_display_timecode, &M::report_display_timecode),
        row<M>("input_timecode", "timecode", &M::sig_input_timecode, &M::report_input_timecode),
        row<M>("information", "info", &M::sig_information, &M::report_information),
        row<M>("playback_mode", "info", &M::sig_playback_mode, &M::report_playback_mode),
    };
}

inline std::vector<MonitorSignal<GlintOutputMonitor>> const &of_output()
{
    static auto const table = of_both<GlintOutputMonitor>();
    return table;
}

inline std::vector<MonitorSignal<GlintChannelMonitor>> const &of_channel()
{
    using M = GlintChannelMonitor;
    static auto const table = [] {
        auto all = of_both<M>();
        all.insert(all.end(),
            {
                row<M>("peak", "peak", &M::sig_peak, &M::report_peak),
                row<M>("aux_status", "aux_audio_status", &M::sig_aux_status, &M::report_aux_status),
                row<M>("aux_clipid", "aux_audio_clipid", &M::sig_aux_clipid, &M::report_aux_clipid),
                row<M>("aux_speed", "aux_audio_speed", &M::sig_aux_speed, &M::report_aux_speed),
                row<M>("aux_information", "aux_audio_info", &M::sig_aux_information,
                    &M::report_aux_information),
                row<M>("aux_peak", "aux_audio_peak", &M::sig_aux_peak, &M::report_aux_peak),
                row<M>("peak_hold", "peak", &M::sig_peak_hold, &M::report_peak_hold),
                row<M>("aux_peak_hold", "aux_audio_peak", &M::sig_aux_peak_hold,
                    &M::report_aux_peak_hold),
            });
        return all;
    }();
    return table;
}

} // namespace MonitorSignals
