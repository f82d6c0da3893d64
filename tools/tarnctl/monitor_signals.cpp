// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnctl/monitor_signals.h"

#include "ATarnLib/glint/glint_output_monitor.h"
#include "tools/tarnctl/json_records.h"

#include <algorithm>

namespace TarnCtl {
namespace {

// What a signal carries, by its types. A bare int is a speed.

JsonValue value_of(VCTP3::ChannelStatus status)
{
    return json_of(status);
}

JsonValue value_of(QString const &text)
{
    return JsonValue::text(text);
}

JsonValue value_of(int speed)
{
    return json_of_speed(speed);
}

JsonValue value_of(unsigned int number)
{
    return json_of(number);
}

JsonValue value_of(Corvane::ATimecode const &timecode)
{
    return json_of(timecode.toString(4));
}

JsonValue value_of(VCTP3::ChannelInformation const &information)
{
    return json_of(information);
}

JsonValue value_of(AOption<VCTP3::Playback> const &mode)
{
    return mode.has_value() ? json_of(*mode) : JsonValue();
}

JsonValue value_of(std::list<unsigned int> const &levels)
{
    JsonValue array = JsonValue::array();
    for (unsigned int const level : levels)
        array.append(json_of(level));
    return array;
}

JsonValue value_of(
    unsigned int clip_position, Corvane::ATimecode const &display, Corvane::ATimecode const &input)
{
    JsonValue record = JsonValue::object();
    record.add("clip_position", value_of(clip_position));
    record.add("display", value_of(display));
    record.add("input", value_of(input));
    return record;
}

template <auto signal, typename Monitor>
void listen(Monitor *monitor, QObject *context, ValueSink const &sink)
{
    QObject::connect(monitor, signal, context,
        [sink](auto const &...values) -> void { sink(value_of(values...)); });
}

template <auto signal, typename Monitor>
constexpr MonitorSignal<Monitor> row(
    char const *name, void (Monitor::*repeat)(), char const *text = "")
{
    return {name, &listen<signal, Monitor>, repeat, text};
}

using OnChannel = GlintChannelMonitor;
constexpr ChannelSignal of_channel[] = {
    row<&OnChannel::report_status>("status", &OnChannel::emit_status, "what it does"),
    row<&OnChannel::report_clipid>("clipid", &OnChannel::emit_clipid, "what is loaded"),
    row<&OnChannel::report_speed>("speed", &OnChannel::emit_speed, "as a factor"),
    row<&OnChannel::report_timecodes>(
        "timecodes", &OnChannel::emit_timecodes, "the next three in one"),
    row<&OnChannel::report_clip_position>(
        "clip_position", &OnChannel::emit_clip_position, "in fields"),
    row<&OnChannel::report_display_timecode>(
        "display_timecode", &OnChannel::emit_display_timecode, "that of the picture"),
    row<&OnChannel::report_input_timecode>(
        "input_timecode", &OnChannel::emit_input_timecode, "that of the input"),
    row<&OnChannel::report_information>(
        "information", &OnChannel::emit_information, "what is loaded and how it is set"),
    row<&OnChannel::report_playback_mode>("playback_mode", &OnChannel::emit_playback_mode,
        "always none: the server tells it in the information"),
    row<&OnChannel::report_peak>("peak", &OnChannel::emit_peak, "the level of each audio track"),
    row<&OnChannel::report_aux_status>(
        "aux_status", &OnChannel::emit_aux_status, "from here on of the auxiliary audio"),
    row<&OnChannel::report_aux_clipid>("aux_clipid", &OnChannel::emit_aux_clipid),
    row<&OnChannel::report_aux_speed>("aux_speed", &OnChannel::emit_aux_speed),
    row<&OnChannel::report_aux_position>("aux_position", &OnChannel::emit_aux_position),
    row<&OnChannel::report_aux_information>("aux_information", &OnChannel::emit_aux_information),
    row<&OnChannel::report_aux_peak>("aux_peak", &OnChannel::emit_aux_peak),
    row<&OnChannel::report_peak_hold>("peak_hold", &OnChannel::emit_peak_hold,
        "the highest levels of each track since the last delivery"),
    row<&OnChannel::report_aux_peak_hold>(
        "aux_peak_hold", &OnChannel::emit_aux_peak_hold, "the same of the auxiliary audio"),
};

using OnOutput = GlintOutputMonitor;
constexpr OutputSignal of_output[] = {
    row<&OnOutput::report_status>("status", &OnOutput::emit_status),
    row<&OnOutput::report_clipid>("clipid", &OnOutput::emit_clipid),
    row<&OnOutput::report_speed>("speed", &OnOutput::emit_speed),
    row<&OnOutput::report_clip_position>("clip_position", &OnOutput::emit_clip_position),
    row<&OnOutput::report_display_timecode>("display_timecode", &OnOutput::emit_display_timecode),
    row<&OnOutput::report_input_timecode>("input_timecode", &OnOutput::emit_input_timecode),
    row<&OnOutput::report_aux_position>("aux_position", &OnOutput::emit_aux_position),
    row<&OnOutput::report_information>("information", &OnOutput::emit_information),
    row<&OnOutput::report_playback_mode>("playback_mode", &OnOutput::emit_playback_mode),
};

/// Null for an unknown name.
ChannelSignal const *find_signal(QString const &name)
{
    for (ChannelSignal const &signal : of_channel) {
        if (name == QLatin1String(signal.name))
            return &signal;
    }
    return nullptr;
}

} // namespace

std::span<ChannelSignal const> channel_signals()
{
    return of_channel;
}

std::span<OutputSignal const> output_signals()
{
    return of_output;
}

QStringList signal_names()
{
    QStringList names;
    for (ChannelSignal const &signal : of_channel)
        names << QLatin1String(signal.name);
    return names;
}

bool read_signals(QString const &text, std::vector<ChannelSignal const *> *wanted, QString *error)
{
    std::vector<ChannelSignal const *> found;
    for (QString const &name : text.split(u',')) {
        ChannelSignal const *const signal = find_signal(name);
        if (!signal) {
            *error = QStringLiteral("no signal '%1': expected one of %2")
                         .arg(name, signal_names().join(QStringLiteral(", ")));
            return false;
        }
        if (std::find(found.begin(), found.end(), signal) == found.end())
            found.push_back(signal);
    }
    *wanted = found;
    return true;
}

} // namespace TarnCtl
