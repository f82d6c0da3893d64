// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ATarnLib/glint/glint_output_monitor.h"

#include <functional>
#include <vector>

/// The signals of an output's monitor and the report that each needs of its channel, for tests
/// that go through all of them.
namespace OutputSignals {

struct Signal
{
    char const *name;
    char const *report;
    QMetaMethod const &(*method)();
    /// Calls \a heard at each emission, as long as \a receiver lives.
    std::function<QMetaObject::Connection(
        GlintOutputMonitor *monitor, QObject *receiver, std::function<void()> const &heard)>
        connect;
};

inline std::vector<Signal> const &all()
{
    using Monitor = GlintOutputMonitor;
    auto const of = [](auto signal) {
        return [signal](Monitor *monitor, QObject *receiver, std::function<void()> const &heard) {
            return QObject::connect(monitor, signal, receiver, [heard] { heard(); });
        };
    };
    static std::vector<Signal> const table = {
        {"status", "status", &Monitor::sig_status, of(&Monitor::report_status)},
        {"clipid", "clipid", &Monitor::sig_clipid, of(&Monitor::report_clipid)},
        {"speed", "speed", &Monitor::sig_speed, of(&Monitor::report_speed)},
        {"timecodes", "timecode", &Monitor::sig_timecodes, of(&Monitor::report_timecodes)},
        {"clip_position", "timecode", &Monitor::sig_clip_position,
            of(&Monitor::report_clip_position)},
        {"aux_position", "aux_audio_timecode", &Monitor::sig_aux_position,
            of(&Monitor::report_aux_position)},
        {"display_timecode", "timecode", &Monitor::sig_display_timecode,
            of(&Monitor::report_display_timecode)},
        {"input_timecode", "timecode", &Monitor::sig_input_timecode,
            of(&Monitor::report_input_timecode)},
        {"information", "info", &Monitor::sig_information, of(&Monitor::report_information)},
        {"playback_mode", "info", &Monitor::sig_playback_mode, of(&Monitor::report_playback_mode)},
    };
    return table;
}

} // namespace OutputSignals
