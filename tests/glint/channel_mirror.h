// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ATarnLib/glint/channel_monitor.h"
#include "ATarnLib/glint/glint_channel_monitor.h"
#include "sim/vesk/vesk_channel_reports.h"
#include "sim/vesk/vesk_world.h"

#include <QString>

#include <algorithm>
#include <vector>

/// What a layer of a channel shows.
struct LayerShown
{
    VCTP3::ChannelStatus status = VCTP3::ChannelStatus::idle;
    QString clip;
    int speed = 0;
    unsigned int position = 0;
    VCTP3::ChannelInformation information;
    std::vector<unsigned int> levels;

    friend bool operator==(LayerShown const &, LayerShown const &) = default;

    /// With the highest level alone.
    LayerShown with_highest() const
    {
        LayerShown result = *this;
        result.levels = {*std::max_element(levels.begin(), levels.end())};
        return result;
    }
};

/// What a channel shows by its twelve reports.
struct ChannelShown
{
    LayerShown normal;
    LayerShown aux;
    QString display;
    QString input;

    friend bool operator==(ChannelShown const &, ChannelShown const &) = default;

    /// As the server's world has it.
    static ChannelShown of(VeskWorld const &world, VCTP3::Channel name)
    {
        VeskChannel const &channel = world.channels.at(name);
        return {of_layer(channel, VCTP3::Layer::normal), of_layer(channel, VCTP3::Layer::bed),
            text(VeskChannelReports::display_timecode(channel.normal(), world.clock)),
            text(world.clock.time_of_day())};
    }
    static QString text(Corvane::ATimecode const &timecode)
    {
        return QString(timecode.toString(4));
    }
    /// The differences to what another one shows, for the line of a failure.
    QString against(ChannelShown const &other) const
    {
        QString result = compare(normal, other.normal, "") + compare(aux, other.aux, "aux ");
        if (display != other.display)
            result += QStringLiteral("display %1, %2; ").arg(display, other.display);
        if (input != other.input)
            result += QStringLiteral("input %1, %2; ").arg(input, other.input);
        return result;
    }

private:
    static QString text(VCTP3::Timecode const &wire) { return text(Corvane::ATimecode(wire, 1)); }
    static LayerShown of_layer(VeskChannel const &channel, VCTP3::Layer which)
    {
        VeskLayer const &layer = channel.layer(which);
        auto const levels = VeskChannelReports::levels(layer);
        return {layer.status(), layer.clip() ? QString(layer.clip()->id()) : QString(),
            layer.speed(), layer.position(), VeskChannelReports::information(channel, which),
            {levels.begin(), levels.end()}};
    }
    static QString compare(LayerShown const &a, LayerShown const &b, char const *which)
    {
        QString const layer = QString::fromLatin1(which);
        QString result;
        if (a.status != b.status)
            result
                += layer + QStringLiteral("status %1, %2; ").arg(int(a.status)).arg(int(b.status));
        if (a.clip != b.clip)
            result += layer + QStringLiteral("clip %1, %2; ").arg(a.clip, b.clip);
        if (a.speed != b.speed)
            result += layer + QStringLiteral("speed %1, %2; ").arg(a.speed).arg(b.speed);
        if (a.position != b.position)
            result += layer + QStringLiteral("position %1, %2; ").arg(a.position).arg(b.position);
        if (!(a.information == b.information))
            result += layer + QStringLiteral("information; ");
        if (a.levels != b.levels)
            result += layer + QStringLiteral("levels; ");
        return result;
    }
};

/// Listens to all that a channel's monitor tells, and keeps what it told last.
class ChannelMirror : public QObject
{
public:
    explicit ChannelMirror(GlintChannelMonitor *monitor)
    {
        using M = GlintChannelMonitor;
        using Levels = std::list<unsigned int>;
        using VCTP3::ChannelInformation;
        keep(monitor, &M::report_status, &values.normal.status);
        keep(monitor, &M::report_clipid, &values.normal.clip);
        keep(monitor, &M::report_speed, &values.normal.speed);
        keep(monitor, &M::report_clip_position, &values.normal.position);
        keep(monitor, &M::report_information, &values.normal.information);
        keep(monitor, &M::report_aux_status, &values.aux.status);
        keep(monitor, &M::report_aux_clipid, &values.aux.clip);
        keep(monitor, &M::report_aux_speed, &values.aux.speed);
        keep(monitor, &M::report_aux_position, &values.aux.position);
        keep(monitor, &M::report_aux_information, &values.aux.information);
        connect(monitor, &M::report_peak, this,
            [this](Levels const &all) { values.normal.levels.assign(all.begin(), all.end()); });
        connect(monitor, &M::report_aux_peak, this,
            [this](Levels const &all) { values.aux.levels.assign(all.begin(), all.end()); });
        connect(monitor, &M::report_display_timecode, this,
            [this](Corvane::ATimecode const &now) { values.display = ChannelShown::text(now); });
        connect(monitor, &M::report_input_timecode, this,
            [this](Corvane::ATimecode const &now) { values.input = ChannelShown::text(now); });
    }

    ChannelShown const &shown() const { return values; }

private:
    template <typename Signal, typename Value>
    void keep(GlintChannelMonitor *monitor, Signal signal, Value *kept)
    {
        connect(monitor, signal, this, [kept](Value const &told) { *kept = told; });
    }

    ChannelShown values;
};

/// The same of a monitor that an application has made: the first layer, and the highest level.
class OwnMirror : public QObject
{
public:
    OwnMirror(Glint *hub, VCTP3::Channel channel)
    {
        using M = ChannelMonitor;
        monitor.config(hub, channel);
        keep(&M::sig_status, &values.status);
        keep(&M::sig_clipid, &values.clip);
        keep(&M::sig_speed, &values.speed);
        keep(&M::sig_clip_position, &values.position);
        keep(&M::sig_channel_information, &values.information);
        connect(
            &monitor, &M::sig_peak, this, [this](unsigned int level) { values.levels = {level}; });
    }

    LayerShown const &shown() const { return values; }

private:
    template <typename Signal, typename Value> void keep(Signal signal, Value *kept)
    {
        connect(&monitor, signal, this, [kept](Value const &told) { *kept = told; });
    }

    ChannelMonitor monitor;
    LayerShown values;
};
