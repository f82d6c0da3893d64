// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/glint/glint.h"
#include "ATarnLib/glint/glint_channel_monitor.h"
#include "ATarnLib/glint/glint_levels_p.h"

using VCTP3::Channel;
using VCTP3::ChannelInformation;
using VCTP3::ChannelStatus;
using VCTP3::Timecode;

/// Told once for each report, so that no monitor has to look whether a report is meant for it.
void Glint::connect_reports()
{
    connect(this, &Glint::report_channel_status, this, &Glint::got_report_channel_status);
    connect(this, &Glint::report_channel_clipid, this, &Glint::got_report_channel_clipid);
    connect(this, &Glint::report_channel_speed, this, &Glint::got_report_channel_speed);
    connect(this, &Glint::report_channel_timecode, this, &Glint::got_report_channel_timecode);
    connect(this, &Glint::report_channel_info, this, &Glint::got_report_channel_info);
    connect(this, &Glint::report_channel_peak, this, &Glint::got_report_channel_peak);
    connect(this, &Glint::report_channel_aux_audio_status, this,
        &Glint::got_report_channel_aux_audio_status);
    connect(this, &Glint::report_channel_aux_audio_clipid, this,
        &Glint::got_report_channel_aux_audio_clipid);
    connect(this, &Glint::report_channel_aux_audio_speed, this,
        &Glint::got_report_channel_aux_audio_speed);
    connect(this, &Glint::report_channel_aux_audio_timecode, this,
        &Glint::got_report_channel_aux_audio_timecode);
    connect(this, &Glint::report_channel_aux_audio_info, this,
        &Glint::got_report_channel_aux_audio_info);
    connect(this, &Glint::report_channel_aux_audio_peak, this,
        &Glint::got_report_channel_aux_audio_peak);
}

void Glint::got_report_channel_status(
    Channel channel, ChannelStatus status, AOption<AString> const &clip)
{
    if (GlintChannelMonitor *monitor = toMonitor(channel))
        monitor->glint_status(status, clip);
}

void Glint::got_report_channel_clipid(Channel channel, AString const &clip)
{
    if (GlintChannelMonitor *monitor = toMonitor(channel))
        monitor->glint_clipid(clip);
}

void Glint::got_report_channel_speed(Channel channel, int speed)
{
    if (GlintChannelMonitor *monitor = toMonitor(channel))
        monitor->glint_speed(speed);
}

void Glint::got_report_channel_timecode(
    Channel channel, unsigned int position, Timecode const &display, Timecode const &input)
{
    if (GlintChannelMonitor *monitor = toMonitor(channel))
        monitor->glint_timecode(position, display, input);
}

void Glint::got_report_channel_info(Channel channel, ChannelInformation const &information)
{
    if (GlintChannelMonitor *monitor = toMonitor(channel))
        monitor->glint_info(information);
}

void Glint::got_report_channel_peak(Channel channel, AString const &levels)
{
    if (GlintChannelMonitor *monitor = toMonitor(channel))
        monitor->glint_peak(GlintLevels::parse(levels));
}

void Glint::got_report_channel_aux_audio_status(
    Channel channel, ChannelStatus status, AOption<AString> const &clip)
{
    if (GlintChannelMonitor *monitor = toMonitor(channel))
        monitor->glint_aux_audio_status(status, clip);
}

void Glint::got_report_channel_aux_audio_clipid(Channel channel, AString const &clip)
{
    if (GlintChannelMonitor *monitor = toMonitor(channel))
        monitor->glint_aux_audio_clipid(clip);
}

void Glint::got_report_channel_aux_audio_speed(Channel channel, int speed)
{
    if (GlintChannelMonitor *monitor = toMonitor(channel))
        monitor->glint_aux_audio_speed(speed);
}

void Glint::got_report_channel_aux_audio_timecode(Channel channel, unsigned int position)
{
    if (GlintChannelMonitor *monitor = toMonitor(channel))
        monitor->glint_aux_audio_timecode(position);
}

void Glint::got_report_channel_aux_audio_info(
    Channel channel, ChannelInformation const &information)
{
    if (GlintChannelMonitor *monitor = toMonitor(channel))
        monitor->glint_aux_audio_info(information);
}

void Glint::got_report_channel_aux_audio_peak(Channel channel, AString const &levels)
{
    if (GlintChannelMonitor *monitor = toMonitor(channel))
        monitor->glint_aux_audio_peak(GlintLevels::parse(levels));
}
