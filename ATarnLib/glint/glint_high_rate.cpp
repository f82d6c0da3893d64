// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/glint/glint.h"
#include "ATarnLib/glint/glint_audio_levels.h"
#include "ATarnLib/glint/glint_channel_monitor.h"
#include "ATarnLib/glint/glint_timecode.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/atimer.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/words_p.h"

using VCTP3::Word;
using VCTP3::word;

namespace {

/// Messages for a worker after which it begins while the hub is still reading others.
constexpr std::size_t most_held = 256;

bool has_levels(XMLTree const &report)
{
    return report.has_tag(word(Word::channel_peak))
        || report.has_tag(word(Word::channel_aux_audio_peak));
}

bool has_timecode(XMLTree const &report)
{
    return report.has_tag(word(Word::channel_timecode))
        || report.has_tag(word(Word::channel_aux_audio_timecode))
        || report.has_tag(word(Word::ltc_timecode));
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
    if (!message.has_tag(word(Word::report)))
        return false;
    auto child = message.children().begin();
    if (child == XMLChildren::const_iterator())
        return false;
    XMLTree const &report = *child;
    GlintWorker *worker = nullptr;
    if (has_levels(report))
        worker = levels_worker;
    else if (has_timecode(report))
        worker = timecode_worker;
    if (!worker || ++child != XMLChildren::const_iterator())
        return false;
    worker->hold_work(connection_count, message);
    if (worker->held_work() >= most_held)
        worker->send_work();
    else if (!std::exchange(send_work_posted, true))
        QMetaObject::invokeMethod(this, &Glint::send_work, Qt::QueuedConnection);
    return true;
}

/// What one pass over the received messages has found goes to the workers together.
void Glint::send_work()
{
    send_work_posted = false;
    timecode_worker->send_work();
    levels_worker->send_work();
}

void Glint::process_timecode()
{
    bool delivered = false;
    GlintTimecodeResult result;
    if (timecode_worker->take_timecode(connection_count, &result)) {
        delivered = true;
        do_report_channel_timecode(result.channel, result.position, result.display, result.input);
    }
    if (timecode_worker->take_aux_position(connection_count, &result)) {
        delivered = true;
        do_report_channel_aux_audio_timecode(result.channel, result.position);
    }
    if (delivered)
        timecode_timer->start();
}

void Glint::process_ltc()
{
    VCTP3::Timecode value;
    if (timecode_worker->take_ltc(connection_count, &value))
        do_report_ltc_timecode(value);
}

void Glint::process_audio_levels()
{
    bool delivered = false;
    GlintAudioLevelsResult result;
    if (levels_worker->take_levels(connection_count, &result)) {
        delivered = true;
        do_report_channel_peak(result.channel, result.levels);
        if (GlintChannelMonitor *monitor = toMonitor(result.channel))
            monitor->glint_peak_hold(level_list(result.hold));
    }
    if (levels_worker->take_aux_levels(connection_count, &result)) {
        delivered = true;
        do_report_channel_aux_audio_peak(result.channel, result.levels);
        if (GlintChannelMonitor *monitor = toMonitor(result.channel))
            monitor->glint_aux_peak_hold(level_list(result.hold));
    }
    if (delivered)
        levels_timer->start();
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
