// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tools/tarnctl/json_value.h"

#include <QObject>
#include <QStringList>

#include <functional>
#include <span>
#include <vector>

class GlintChannelMonitor;
class GlintOutputMonitor;

namespace TarnCtl {

using ValueSink = std::function<void(JsonValue const &)>;

/// A signal of a monitor and what it carries.
template <typename Monitor> struct MonitorSignal
{
    /// Without the "report_" in front.
    char const *name;
    /// Connects \a sink while \a context lives.
    void (*listen)(Monitor *monitor, QObject *context, ValueSink const &sink);
    /// Emits the value that is held.
    void (Monitor::*repeat)();
    /// What it tells, for people; empty where the name says it.
    char const *text;
};

using ChannelSignal = MonitorSignal<GlintChannelMonitor>;
using OutputSignal = MonitorSignal<GlintOutputMonitor>;

/// All signals of a channel's monitor.
std::span<ChannelSignal const> channel_signals();
/// Those of an output's, but for the timecodes in one, each of which has a signal of its own.
std::span<OutputSignal const> output_signals();

QStringList signal_names();
/// Of names such as "status,speed", each once. On failure: false, the name that is none and all
/// that there are in *error.
bool read_signals(QString const &text, std::vector<ChannelSignal const *> *wanted, QString *error);

} // namespace TarnCtl
