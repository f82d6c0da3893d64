// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/glint/glint_output_monitor.h"

using Corvane::ATimecode;
using VCTP3::ChannelInformation;
using VCTP3::ChannelStatus;
using VCTP3::Playback;

template <typename From, typename To>
void GlintOutputMonitor::manage_connect(bool on, From from, To to)
{
    if (!source)
        return;
    if (on)
        connect(source, from, this, to, Qt::UniqueConnection);
    else
        disconnect(source, from, this, to);
}

void GlintOutputMonitor::clear_all()
{
    using Monitor = GlintChannelMonitor;
    status = Monitor::default_status();
    clipid = Monitor::default_clipid();
    speed = Monitor::default_speed();
    timecodes = Monitor::default_timecodes();
    clip_position = Monitor::default_clip_position();
    aux_position = Monitor::default_aux_position();
    display_timecode = Monitor::default_display_timecode();
    input_timecode = Monitor::default_input_timecode();
    information = Monitor::default_information();
    playback_mode = Monitor::default_playback_mode();
}

void GlintOutputMonitor::manage_connect_status(bool on)
{
    manage_connect(on, &GlintChannelMonitor::report_status, &GlintOutputMonitor::ch_status);
}

void GlintOutputMonitor::manage_connect_clipid(bool on)
{
    manage_connect(on, &GlintChannelMonitor::report_clipid, &GlintOutputMonitor::ch_clipid);
}

void GlintOutputMonitor::manage_connect_speed(bool on)
{
    manage_connect(on, &GlintChannelMonitor::report_speed, &GlintOutputMonitor::ch_speed);
}

void GlintOutputMonitor::manage_connect_timecodes(bool on)
{
    manage_connect(on, &GlintChannelMonitor::report_timecodes, &GlintOutputMonitor::ch_timecodes);
}

void GlintOutputMonitor::manage_connect_clip_position(bool on)
{
    manage_connect(
        on, &GlintChannelMonitor::report_clip_position, &GlintOutputMonitor::ch_clip_position);
}

void GlintOutputMonitor::manage_connect_aux_position(bool on)
{
    manage_connect(
        on, &GlintChannelMonitor::report_aux_position, &GlintOutputMonitor::ch_aux_position);
}

void GlintOutputMonitor::manage_connect_display_timecode(bool on)
{
    manage_connect(on, &GlintChannelMonitor::report_display_timecode,
        &GlintOutputMonitor::ch_display_timecode);
}

void GlintOutputMonitor::manage_connect_input_timecode(bool on)
{
    manage_connect(
        on, &GlintChannelMonitor::report_input_timecode, &GlintOutputMonitor::ch_input_timecode);
}

void GlintOutputMonitor::manage_connect_information(bool on)
{
    manage_connect(
        on, &GlintChannelMonitor::report_information, &GlintOutputMonitor::ch_information);
}

void GlintOutputMonitor::manage_connect_playback_mode(bool on)
{
    manage_connect(
        on, &GlintChannelMonitor::report_playback_mode, &GlintOutputMonitor::ch_playback_mode);
}

void GlintOutputMonitor::emit_status()
{
    if (has_listener(Signal::status))
        Q_EMIT report_status(status);
}

void GlintOutputMonitor::emit_clipid()
{
    if (has_listener(Signal::clipid))
        Q_EMIT report_clipid(clipid);
}

void GlintOutputMonitor::emit_speed()
{
    if (has_listener(Signal::speed))
        Q_EMIT report_speed(speed);
}

void GlintOutputMonitor::emit_timecodes()
{
    if (has_listener(Signal::timecodes))
        Q_EMIT report_timecodes(timecodes.clip_position, timecodes.display, timecodes.input);
}

void GlintOutputMonitor::emit_clip_position()
{
    if (has_listener(Signal::clip_position))
        Q_EMIT report_clip_position(clip_position);
}

void GlintOutputMonitor::emit_aux_position()
{
    if (has_listener(Signal::aux_position))
        Q_EMIT report_aux_position(aux_position);
}

void GlintOutputMonitor::emit_display_timecode()
{
    if (has_listener(Signal::display_timecode))
        Q_EMIT report_display_timecode(display_timecode);
}

void GlintOutputMonitor::emit_input_timecode()
{
    if (has_listener(Signal::input_timecode))
        Q_EMIT report_input_timecode(input_timecode);
}

void GlintOutputMonitor::emit_information()
{
    if (has_listener(Signal::information))
        Q_EMIT report_information(information);
}

void GlintOutputMonitor::emit_playback_mode()
{
    if (has_listener(Signal::playback_mode))
        Q_EMIT report_playback_mode(playback_mode);
}

void GlintOutputMonitor::ch_status(ChannelStatus value)
{
    status = value;
    emit_status();
}

void GlintOutputMonitor::ch_clipid(QString const &value)
{
    clipid = value;
    emit_clipid();
}

void GlintOutputMonitor::ch_speed(int value)
{
    speed = value;
    emit_speed();
}

void GlintOutputMonitor::ch_timecodes(
    unsigned int position, ATimecode const &display, ATimecode const &input)
{
    ch_timecodes2({position, display, input});
}

void GlintOutputMonitor::ch_timecodes2(Timecodes const &value)
{
    timecodes = value;
    emit_timecodes();
}

void GlintOutputMonitor::ch_clip_position(unsigned int value)
{
    clip_position = value;
    emit_clip_position();
}

void GlintOutputMonitor::ch_aux_position(unsigned int value)
{
    aux_position = value;
    emit_aux_position();
}

void GlintOutputMonitor::ch_display_timecode(ATimecode const &value)
{
    display_timecode = value;
    emit_display_timecode();
}

void GlintOutputMonitor::ch_input_timecode(ATimecode const &value)
{
    input_timecode = value;
    emit_input_timecode();
}

void GlintOutputMonitor::ch_information(ChannelInformation const &value)
{
    information = value;
    emit_information();
}

void GlintOutputMonitor::ch_playback_mode(AOption<Playback> const &value)
{
    playback_mode = value;
    emit_playback_mode();
}
