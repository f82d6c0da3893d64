// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/glint/glint.h"
#include "ATarnLib/glint/glint_channel_monitor.h"

#include <utility>

using Corvane::ATimecode;
using VCTP3::ChannelInformation;
using VCTP3::ChannelReportType;
using VCTP3::ChannelStatus;
using VCTP3::Timecode;

namespace {

/// Levels in the form in which they are shown. One list of the thread serves all monitors, whose
/// parts are at hand then; whoever comes while it is in use, from a slot that runs an event loop of
/// its own, makes one.
class LevelList
{
public:
    explicit LevelList(std::vector<unsigned int> const &levels)
        : list(std::exchange(shared_is_in_use, true) ? &own : &shared)
    {
        list->assign(levels.begin(), levels.end());
    }
    ~LevelList() { shared_is_in_use = list == &own; }
    LevelList(LevelList const &) = delete;
    LevelList &operator=(LevelList const &) = delete;

    std::list<unsigned int> const &get() const { return *list; }

private:
    static thread_local std::list<unsigned int> shared;
    static thread_local bool shared_is_in_use;

    std::list<unsigned int> own;
    std::list<unsigned int> *const list;
};

thread_local std::list<unsigned int> LevelList::shared;
thread_local bool LevelList::shared_is_in_use = false;

} // namespace

/// What is kept for long must not pin the message it came with.
void GlintChannelMonitor::ClipID::set(AString const &text)
{
    if (text == wire)
        return;
    wire = text.deep_copy(32);
    is_shown = false;
}

QString const &GlintChannelMonitor::ClipID::show()
{
    if (!std::exchange(is_shown, true))
        shown = QString(wire);
    return shown;
}

void GlintChannelMonitor::glint_status(ChannelStatus value, AOption<AString> const &clip)
{
    status = value;
    emit_status();
    if (clip)
        glint_clipid(*clip);
}

void GlintChannelMonitor::glint_clipid(AString const &clip)
{
    clipid.set(clip);
    emit_clipid();
}

void GlintChannelMonitor::glint_speed(int value)
{
    speed = value;
    emit_speed();
}

void GlintChannelMonitor::glint_timecode(
    unsigned int position, Timecode const &display, Timecode const &input)
{
    timecodes = {position, ATimecode(display, 1), ATimecode(input, 1)};
    clip_position = position;
    display_timecode = timecodes.display;
    input_timecode = timecodes.input;
    emit_timecodes();
    emit_clip_position();
    emit_display_timecode();
    emit_input_timecode();
}

void GlintChannelMonitor::glint_info(ChannelInformation const &value)
{
    information = value;
    emit_information();
    emit_playback_mode();
}

void GlintChannelMonitor::glint_peak(std::span<unsigned int const> levels)
{
    peak.assign(levels.begin(), levels.end());
    emit_peak();
}

void GlintChannelMonitor::glint_aux_audio_status(ChannelStatus value, AOption<AString> const &clip)
{
    aux_status = value;
    emit_aux_status();
    if (clip)
        glint_aux_audio_clipid(*clip);
}

void GlintChannelMonitor::glint_aux_audio_clipid(AString const &clip)
{
    aux_clipid.set(clip);
    emit_aux_clipid();
}

void GlintChannelMonitor::glint_aux_audio_speed(int value)
{
    aux_speed = value;
    emit_aux_speed();
}

void GlintChannelMonitor::glint_aux_audio_timecode(unsigned int position)
{
    aux_position = position;
    emit_aux_position();
}

void GlintChannelMonitor::glint_aux_audio_info(ChannelInformation const &value)
{
    aux_information = value;
    emit_aux_information();
}

void GlintChannelMonitor::glint_aux_audio_peak(std::span<unsigned int const> levels)
{
    aux_peak.assign(levels.begin(), levels.end());
    emit_aux_peak();
}

void GlintChannelMonitor::glint_peak_hold(std::span<unsigned int const> levels)
{
    peak_hold.assign(levels.begin(), levels.end());
    emit_peak_hold();
}

void GlintChannelMonitor::glint_aux_peak_hold(std::span<unsigned int const> levels)
{
    aux_peak_hold.assign(levels.begin(), levels.end());
    emit_aux_peak_hold();
}

void GlintChannelMonitor::glint_connected()
{
    for (std::size_t i = 0; i < report_count; ++i)
        if (reg[i])
            hub->cmd_channel_report_register(channel_number, static_cast<ChannelReportType>(i));
}

void GlintChannelMonitor::emit_status()
{
    if (has_listener(Signal::status))
        Q_EMIT report_status(status);
}

void GlintChannelMonitor::emit_clipid()
{
    if (has_listener(Signal::clipid))
        Q_EMIT report_clipid(clipid.show());
}

void GlintChannelMonitor::emit_speed()
{
    if (has_listener(Signal::speed))
        Q_EMIT report_speed(speed);
}

void GlintChannelMonitor::emit_timecodes()
{
    if (has_listener(Signal::timecodes))
        Q_EMIT report_timecodes(timecodes.clip_position, timecodes.display, timecodes.input);
}

void GlintChannelMonitor::emit_clip_position()
{
    if (has_listener(Signal::clip_position))
        Q_EMIT report_clip_position(clip_position);
}

void GlintChannelMonitor::emit_display_timecode()
{
    if (has_listener(Signal::display_timecode))
        Q_EMIT report_display_timecode(display_timecode);
}

void GlintChannelMonitor::emit_input_timecode()
{
    if (has_listener(Signal::input_timecode))
        Q_EMIT report_input_timecode(input_timecode);
}

void GlintChannelMonitor::emit_information()
{
    if (has_listener(Signal::information))
        Q_EMIT report_information(information);
}

void GlintChannelMonitor::emit_playback_mode()
{
    if (has_listener(Signal::playback_mode))
        Q_EMIT report_playback_mode(playback_mode);
}

void GlintChannelMonitor::emit_peak()
{
    if (has_listener(Signal::peak))
        Q_EMIT report_peak(LevelList(peak).get());
}

void GlintChannelMonitor::emit_aux_status()
{
    if (has_listener(Signal::aux_status))
        Q_EMIT report_aux_status(aux_status);
}

void GlintChannelMonitor::emit_aux_clipid()
{
    if (has_listener(Signal::aux_clipid))
        Q_EMIT report_aux_clipid(aux_clipid.show());
}

void GlintChannelMonitor::emit_aux_speed()
{
    if (has_listener(Signal::aux_speed))
        Q_EMIT report_aux_speed(aux_speed);
}

void GlintChannelMonitor::emit_aux_position()
{
    if (has_listener(Signal::aux_position))
        Q_EMIT report_aux_position(aux_position);
}

void GlintChannelMonitor::emit_aux_information()
{
    if (has_listener(Signal::aux_information))
        Q_EMIT report_aux_information(aux_information);
}

void GlintChannelMonitor::emit_aux_peak()
{
    if (has_listener(Signal::aux_peak))
        Q_EMIT report_aux_peak(LevelList(aux_peak).get());
}

void GlintChannelMonitor::emit_peak_hold()
{
    if (has_listener(Signal::peak_hold))
        Q_EMIT report_peak_hold(LevelList(peak_hold).get());
}

void GlintChannelMonitor::emit_aux_peak_hold()
{
    if (has_listener(Signal::aux_peak_hold))
        Q_EMIT report_aux_peak_hold(LevelList(aux_peak_hold).get());
}
