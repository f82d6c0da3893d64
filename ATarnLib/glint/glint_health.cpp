// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/glint/glint_health.h"

#include "ATarnLib/glint/glint.h"
#include "ATarnLib/glint/glint_audio_levels.h"
#include "ATarnLib/glint/glint_timecode.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/atimer.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/clock.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/hrtime.h"

#include <QMetaProperty>
#include <QVariant>

#include <vector>

namespace {

constexpr int look_ms = 1000;

} // namespace

struct GlintHealth::Private
{
    explicit Private(Glint *of)
        : hub(of)
    {
    }

    Glint *const hub;
    QAbstractSocket::SocketState state = QAbstractSocket::UnconnectedState;
    qint64 since_ms = AClock::wall_ms();
    quint64 attempts = 0;
    quint64 connections = 0;
    qint64 last_beat_ms = AClock::monotonic_ms();
    qint64 longest_stall_ms = 0;
    ATimer *probe_timer = nullptr;
    VCTP3::CallbackGroup_set1 probe_group;
    bool probe_in_flight = false;
    HRTime probe_sent;
    qint64 round_trip_us = -1;
    std::vector<QVariant> seen; // the properties as they were when `changed` came last
};

GlintHealth::GlintHealth(Glint *of)
    : QObject(of)
    , d(std::make_unique<Private>(of))
{
    connect(of, &Glint::stateChanged, this, &GlintHealth::note_state);
    connect(
        &d->probe_group, &VCTP3::CallbackGroup_set1::sig_ok, this, &GlintHealth::probe_answered);
    connect(
        &d->probe_group, &VCTP3::CallbackGroup_set1::sig_error, this, &GlintHealth::probe_failed);
    d->probe_timer = new ATimer(this);
    connect(d->probe_timer, &ATimer::timeout, this, &GlintHealth::probe);

    auto *beat_timer = new ATimer(this);
    beat_timer->setTimerType(Qt::PreciseTimer);
    connect(beat_timer, &ATimer::timeout, this, &GlintHealth::beat);
    beat_timer->start(beat_ms);
    auto *look_timer = new ATimer(this);
    connect(look_timer, &ATimer::timeout, this, &GlintHealth::look);
    look_timer->start(look_ms);
}

GlintHealth::~GlintHealth() = default;

QAbstractSocket::SocketState GlintHealth::state() const
{
    return d->state;
}

qint64 GlintHealth::state_since_ms() const
{
    return d->since_ms;
}

quint64 GlintHealth::connect_attempts() const
{
    return d->attempts;
}

quint64 GlintHealth::reconnections() const
{
    return d->connections > 0 ? d->connections - 1 : 0;
}

QString GlintHealth::last_error() const
{
    return d->hub->last_error();
}

quint64 GlintHealth::calls_outstanding() const
{
    return d->hub->outstanding_commands();
}

quint64 GlintHealth::blocks_to_send() const
{
    return AProtect<std::deque<unsigned int>>::Lock(d->hub->streams_to_send)->size();
}

quint64 GlintHealth::input_bytes_waiting() const
{
    return d->hub->input_waiting();
}

quint64 GlintHealth::messages_to_decode() const
{
    quint64 count = 0;
    for (GlintWorker const *worker : {static_cast<GlintWorker const *>(d->hub->timecode_worker),
             static_cast<GlintWorker const *>(d->hub->levels_worker)})
        count += worker->held_work() + worker->work_waiting();
    return count;
}

quint64 GlintHealth::results_to_deliver() const
{
    return d->hub->timecode_worker->waiting() + d->hub->levels_worker->waiting();
}

quint64 GlintHealth::messages_received() const
{
    return d->hub->traffic().messages_received;
}

quint64 GlintHealth::bytes_received() const
{
    return d->hub->traffic().bytes_received;
}

quint64 GlintHealth::messages_sent() const
{
    return d->hub->traffic().messages_sent;
}

quint64 GlintHealth::bytes_sent() const
{
    return d->hub->traffic().bytes_sent;
}

quint64 GlintHealth::reports_coalesced() const
{
    return d->hub->timecode_worker->overtaken() + d->hub->levels_worker->overtaken();
}

quint64 GlintHealth::messages_dropped() const
{
    return d->hub->traffic().messages_dropped + d->hub->timecode_worker->dropped()
        + d->hub->levels_worker->dropped();
}

QString GlintHealth::last_drop_reason() const
{
    return QString(d->hub->last_drop_reason());
}

qint64 GlintHealth::longest_stall_ms() const
{
    return d->longest_stall_ms;
}

void GlintHealth::reset_longest_stall()
{
    d->longest_stall_ms = 0;
}

void GlintHealth::set_probe_interval(int milliseconds)
{
    d->probe_timer->setInterval(std::max(milliseconds, 0));
    if (milliseconds > 0)
        d->probe_timer->start();
    else
        d->probe_timer->stop();
}

int GlintHealth::probe_interval() const
{
    return d->probe_timer->isActive() ? d->probe_timer->interval() : 0;
}

qint64 GlintHealth::round_trip_us() const
{
    return d->round_trip_us;
}

void GlintHealth::note_state(QAbstractSocket::SocketState now)
{
    d->state = now;
    d->since_ms = AClock::wall_ms();
    d->attempts += now == QAbstractSocket::HostLookupState;
    d->connections += now == QAbstractSocket::ConnectedState;
    if (now != QAbstractSocket::ConnectedState)
        d->round_trip_us = -1;
    Q_EMIT changed();
}

void GlintHealth::beat()
{
    qint64 const now = AClock::monotonic_ms();
    d->longest_stall_ms = std::max(d->longest_stall_ms, now - d->last_beat_ms - beat_ms);
    d->last_beat_ms = now;
}

void GlintHealth::look()
{
    std::vector<QVariant> present;
    QMetaObject const &meta = staticMetaObject;
    for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i)
        present.push_back(meta.property(i).read(this));
    if (present == d->seen)
        return;
    d->seen.swap(present);
    Q_EMIT changed();
}

void GlintHealth::probe()
{
    if (d->probe_in_flight || !d->hub->is_connected())
        return;
    d->probe_in_flight = true;
    d->probe_sent = HRTime::now();
    d->hub->cmd_sync(d->probe_group);
}

void GlintHealth::probe_answered()
{
    d->probe_in_flight = false;
    d->round_trip_us = (HRTime::now() - d->probe_sent) / HRTime::useconds(1);
}

void GlintHealth::probe_failed()
{
    d->probe_in_flight = false;
    d->round_trip_us = -1;
}
