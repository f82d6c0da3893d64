// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>

#include <functional>
#include <vector>

/// The signals of a `ChannelMonitor` or an `OutputMonitor`, which are the same, and the report that
/// each needs, for tests that go through all of them.
template <typename Monitor> struct OwnSignals
{
    struct Signal
    {
        char const *name; // as the toolkit normalizes it, with the code letter
        char const *report;
        std::function<QMetaObject::Connection(Monitor *, QObject *)> connect;
    };

    static std::vector<Signal> const &all()
    {
        auto const of = [](auto signal) {
            return [signal](Monitor *monitor, QObject *receiver) {
                return QObject::connect(monitor, signal, receiver, [] {});
            };
        };
        static std::vector<Signal> const table = {
            {"2sig_status(VCTP3::ChannelStatus)", "status", of(&Monitor::sig_status)},
            {"2sig_clipid(QString)", "clipid", of(&Monitor::sig_clipid)},
            {"2sig_speed(int)", "speed", of(&Monitor::sig_speed)},
            {"2sig_timecodes(uint,Corvane::ATimecode,Corvane::ATimecode)", "timecode",
                of(&Monitor::sig_timecodes)},
            {"2sig_clip_position(uint)", "timecode", of(&Monitor::sig_clip_position)},
            {"2sig_channel_information(VCTP3::ChannelInformation)", "info",
                of(&Monitor::sig_channel_information)},
            {"2sig_peak(uint)", "peak", of(&Monitor::sig_peak)},
            {"2sig_aux_status(VCTP3::ChannelStatus)", "aux_audio_status",
                of(&Monitor::sig_aux_status)},
            {"2sig_aux_clipid(QString)", "aux_audio_clipid", of(&Monitor::sig_aux_clipid)},
            {"2sig_aux_speed(int)", "aux_audio_speed", of(&Monitor::sig_aux_speed)},
            {"2sig_aux_position(uint)", "aux_audio_timecode", of(&Monitor::sig_aux_position)},
            {"2sig_aux_information(VCTP3::ChannelInformation)", "aux_audio_info",
                of(&Monitor::sig_aux_information)},
            {"2sig_aux_peak(uint)", "aux_audio_peak", of(&Monitor::sig_aux_peak)},
            {"2sig_display_timecode(Corvane::ATimecode)", "timecode",
                of(&Monitor::sig_display_timecode)},
            {"2sig_input_timecode(Corvane::ATimecode)", "timecode",
                of(&Monitor::sig_input_timecode)},
            {"2sig_playback_mode(AOption<VCTP3::Playback>)", "info",
                of(&Monitor::sig_playback_mode)},
        };
        return table;
    }
};
