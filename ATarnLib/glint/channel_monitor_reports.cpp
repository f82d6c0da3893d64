// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/glint/channel_monitor.h"
#include "ATarnLib/glint/glint.h"
#include "ATarnLib/glint/glint_levels_p.h"

#include <algorithm>

using Corvane::ATimecode;
using VCTP3::Channel;
using VCTP3::ChannelInformation;
using VCTP3::ChannelStatus;
using VCTP3::Timecode;

namespace {

unsigned int highest(AString const &levels)
{
    auto const numbers = GlintLevels::parse(levels);
    return *std::max_element(numbers.begin(), numbers.end());
}

} // namespace

/// A report of this channel; what was still being decoded when the connection went may come behind
/// its end, and the display stays blank.
bool ChannelMonitor::takes(Channel of) const
{
    return channel_is(of) && !lost;
}

void ChannelMonitor::report_channel_status(
    Channel of, ChannelStatus value, AOption<AString> const &clip)
{
    if (!takes(of))
        return;
    status = value;
    Q_EMIT sig_status(status);
    if (clip)
        report_channel_clipid(of, *clip);
}

void ChannelMonitor::report_channel_clipid(Channel of, AString const &clip)
{
    if (!takes(of))
        return;
    clipid = QString(clip);
    Q_EMIT sig_clipid(clipid);
}

void ChannelMonitor::report_channel_speed(Channel of, int value)
{
    if (!takes(of))
        return;
    speed = value;
    Q_EMIT sig_speed(speed);
}

void ChannelMonitor::report_channel_timecode(
    Channel of, unsigned int position, Timecode const &display, Timecode const &input)
{
    if (!takes(of))
        return;
    set_timecodes(position, ATimecode(display, 1), ATimecode(input, 1));
}

void ChannelMonitor::report_channel_info(Channel of, ChannelInformation const &value)
{
    if (!takes(of))
        return;
    information = value;
    emit_channel_information();
}

void ChannelMonitor::report_channel_peak(Channel of, AString const &levels)
{
    if (!takes(of))
        return;
    peak = highest(levels);
    Q_EMIT sig_peak(peak);
}

void ChannelMonitor::report_channel_aux_audio_status(
    Channel of, ChannelStatus value, AOption<AString> const &clip)
{
    if (!takes(of))
        return;
    aux_status = value;
    Q_EMIT sig_aux_status(aux_status);
    if (clip)
        report_channel_aux_audio_clipid(of, *clip);
}

void ChannelMonitor::report_channel_aux_audio_clipid(Channel of, AString const &clip)
{
    if (!takes(of))
        return;
    aux_clipid = QString(clip);
    Q_EMIT sig_aux_clipid(aux_clipid);
}

void ChannelMonitor::report_channel_aux_audio_speed(Channel of, int value)
{
    if (!takes(of))
        return;
    aux_speed = value;
    Q_EMIT sig_aux_speed(aux_speed);
}

void ChannelMonitor::report_channel_aux_audio_timecode(Channel of, unsigned int position)
{
    if (!takes(of))
        return;
    aux_position = position;
    Q_EMIT sig_aux_position(aux_position);
}

void ChannelMonitor::report_channel_aux_audio_info(Channel of, ChannelInformation const &value)
{
    if (!takes(of))
        return;
    aux_information = value;
    Q_EMIT sig_aux_information(aux_information);
}

void ChannelMonitor::report_channel_aux_audio_peak(Channel of, AString const &levels)
{
    if (!takes(of))
        return;
    aux_peak = highest(levels);
    Q_EMIT sig_aux_peak(aux_peak);
}

void ChannelMonitor::clear_all_values()
{
    status = aux_status = ChannelStatus::idle;
    clipid = aux_clipid = QString();
    speed = aux_speed = 0;
    information = aux_information = ChannelInformation();
    peak = aux_peak = 0;
    aux_position = 0;
    Q_EMIT sig_status(status);
    Q_EMIT sig_clipid(clipid);
    Q_EMIT sig_speed(speed);
    set_timecodes(0, ATimecode(), ATimecode());
    emit_channel_information();
    Q_EMIT sig_peak(peak);
    Q_EMIT sig_aux_status(aux_status);
    Q_EMIT sig_aux_clipid(aux_clipid);
    Q_EMIT sig_aux_speed(aux_speed);
    Q_EMIT sig_aux_position(aux_position);
    Q_EMIT sig_aux_information(aux_information);
    Q_EMIT sig_aux_peak(aux_peak);
}

void ChannelMonitor::reemit_timecode()
{
    Q_EMIT sig_clip_position(clip_position);
    Q_EMIT sig_display_timecode(display_timecode);
    Q_EMIT sig_input_timecode(input_timecode);
}

void ChannelMonitor::set_timecodes(
    unsigned int position, ATimecode const &display, ATimecode const &input)
{
    clip_position = position;
    display_timecode = display;
    input_timecode = input;
    Q_EMIT sig_timecodes(clip_position, display_timecode, input_timecode);
    reemit_timecode();
}

void ChannelMonitor::emit_channel_information()
{
    Q_EMIT sig_channel_information(information);
    AOption<VCTP3::Playback> mode;
    if (information.has_playback)
        mode = information.playback;
    Q_EMIT sig_playback_mode(mode);
}
