// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/glint/glint.h"
#include "ATarnLib/glint/glint_audio_levels.h"
#include "ATarnLib/glint/glint_channel_monitor.h"
#include "ATarnLib/glint/glint_timecode.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/atimer.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/report_ahead_p.h"

#include <QMetaMethod>
#include <algorithm>
#include <array>

using VCTP3::ChannelReportType;

namespace {

/// Messages for a worker after which it begins while the hub is still reading others.
constexpr std::size_t most_held = 256;

/// Delivers one channel of each kind; while nobody has heard, the next channels share the pass.
/// Each callable delivers a channel, sets \a heard if it was, and is false when there is none.
template <typename Normal, typename Aux>
void make_pass(bool const &heard, Normal const &normal, Aux const &aux)
{
    bool found = true;
    for (unsigned int i = 0; i < Glint::channel_count && found && !heard; ++i) {
        found = normal();
        // What comes next is taken only now: a slot may have run an event loop meanwhile.
        found |= aux();
    }
}

} // namespace

void Glint::make_workers()
{
    timecode_worker = new GlintTimecode;
    levels_worker = new GlintAudioLevels;
    timecode_timer = new ATimer(true, this);
    levels_timer = new ATimer(true, this);
    // The timers are started from the workers' threads, and see to that themselves.
    connect(timecode_worker, &GlintTimecode::timecode_available, timecode_timer,
        qOverload<>(&ATimer::start), Qt::DirectConnection);
    connect(timecode_timer, &ATimer::timeout, this, &Glint::process_timecode);
    connect(timecode_worker, &GlintTimecode::ltc_available, this, &Glint::process_ltc);
    connect(levels_worker, &GlintAudioLevels::audio_levels_available, levels_timer,
        qOverload<>(&ATimer::start), Qt::DirectConnection);
    connect(levels_timer, &ATimer::timeout, this, &Glint::process_audio_levels);
}

bool Glint::parse_intercept(XMLTree const &message)
{
    GlintWorker *const worker = is_read_ahead() ? nullptr : decoder_for(message);
    if (!worker)
        return false;
    worker->hold_work(connection_count, message);
    if (worker->held_work() >= most_held)
        worker->send_work();
    else if (!std::exchange(send_work_posted, true))
        QMetaObject::invokeMethod(this, &Glint::send_work, Qt::QueuedConnection);
    return true;
}

/// Null for what the parser reads.
GlintWorker *Glint::decoder_for(XMLTree const &message) const
{
    switch (VCTP3::decoder_of(message)) {
    case VCTP3::ReportDecoder::timecodes:
        return timecode_worker;
    case VCTP3::ReportDecoder::levels:
        return levels_worker;
    case VCTP3::ReportDecoder::parser:
        break;
    }
    return nullptr;
}

/// What one pass over the received messages has found goes to the workers together.
void Glint::send_work()
{
    send_work_posted = false;
    timecode_worker->send_work();
    levels_worker->send_work();
}

/// Whoever connects to what comes at field rate gets each channel on a pass of its own.
void Glint::connectNotify(QMetaMethod const &signal)
{
    static std::array const watched{QMetaMethod::fromSignal(&Glint::report_channel_timecode),
        QMetaMethod::fromSignal(&Glint::report_channel_aux_audio_timecode),
        QMetaMethod::fromSignal(&Glint::report_channel_peak),
        QMetaMethod::fromSignal(&Glint::report_channel_aux_audio_peak)};
    if (std::find(watched.begin(), watched.end(), signal) != watched.end())
        field_rate_is_watched = true;
}

bool Glint::is_heard(VCTP3::Channel channel, ChannelReportType report) const
{
    GlintChannelMonitor const *const monitor = toMonitor(channel);
    return field_rate_is_watched || (monitor && monitor->is_listened_to(report));
}

/// A channel that nobody listens to is not worth a pass: its values are put down, and the next
/// channel follows. A slot may run an event loop of its own, and so the next pass is asked for
/// before each of them.
void Glint::process_timecode()
{
    GlintTimecodeResult result;
    bool heard = false;
    auto const timecode = [&] {
        if (!timecode_worker->take_timecode(connection_count, &result))
            return false;
        timecode_timer->start();
        do_report_channel_timecode(result.channel, result.position, result.display, result.input);
        heard |= is_heard(result.channel, ChannelReportType::timecode);
        return true;
    };
    auto const aux_position = [&] {
        if (!timecode_worker->take_aux_position(connection_count, &result))
            return false;
        timecode_timer->start();
        do_report_channel_aux_audio_timecode(result.channel, result.position);
        heard |= is_heard(result.channel, ChannelReportType::aux_audio_timecode);
        return true;
    };
    make_pass(heard, timecode, aux_position);
}

void Glint::process_ltc()
{
    VCTP3::Timecode value;
    if (timecode_worker->take_ltc(connection_count, &value))
        do_report_ltc_timecode(value);
}

void Glint::process_audio_levels()
{
    GlintAudioLevelsResult result;
    bool heard = false;
    auto const levels = [&] {
        if (!levels_worker->take_levels(connection_count, &result))
            return false;
        levels_timer->start();
        do_report_channel_peak(result.channel, result.levels);
        if (GlintChannelMonitor *monitor = toMonitor(result.channel))
            monitor->glint_peak_hold(result.hold);
        heard |= is_heard(result.channel, ChannelReportType::peak);
        return true;
    };
    auto const aux_levels = [&] {
        if (!levels_worker->take_aux_levels(connection_count, &result))
            return false;
        levels_timer->start();
        do_report_channel_aux_audio_peak(result.channel, result.levels);
        if (GlintChannelMonitor *monitor = toMonitor(result.channel))
            monitor->glint_aux_peak_hold(result.hold);
        heard |= is_heard(result.channel, ChannelReportType::aux_audio_peak);
        return true;
    };
    make_pass(heard, levels, aux_levels);
}

/// Of the parser or of a worker, whichever dropped last.
AString Glint::last_drop_reason() const
{
    Traffic const passed = traffic();
    AString reason = passed.last_drop_reason;
    long long at_ticks = passed.last_drop_ticks;
    for (GlintWorker const *worker : {static_cast<GlintWorker const *>(timecode_worker),
             static_cast<GlintWorker const *>(levels_worker)}) {
        if (worker->dropped() == 0 || (!reason.empty() && worker->last_drop_ticks() < at_ticks))
            continue;
        reason = worker->last_drop_reason();
        at_ticks = worker->last_drop_ticks();
    }
    return reason;
}
