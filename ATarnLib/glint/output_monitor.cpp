// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/glint/output_monitor.h"

#include "ATarnLib/glint/cf_channel_config.h"
#include "ATarnLib/glint/channel_monitor.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/aassert.h"

#include <algorithm>

OutputMonitor::OutputMonitor(unsigned int output, CFChannelConfig *channel_config,
    ChannelMonitor *const *monitors, unsigned int count, QObject *parent)
    : ASignalMonitor(parent)
    , output_number(output)
    , config(channel_config)
{
    setObjectName(QStringLiteral("OutputMonitor%1").arg(output));
    if (A_ASSERT_TEXT(count == channel_count, "count == countof(chmon)")
        && A_ASSERT(monitors != nullptr))
        std::copy_n(monitors, count, chmon.begin());
    if (A_ASSERT(channel_config != nullptr))
        connect(channel_config, &CFChannelConfig::changed, this, &OutputMonitor::cf_changed);
    for (Signal const &signal : all_signals())
        add_sig_monitor(signal.signature.constData(), SLOT(sig_attach(QByteArray)),
            SLOT(sig_detach(QByteArray)));
    cf_changed();
}

std::array<OutputMonitor::Signal, 16> const &OutputMonitor::all_signals()
{
    auto const of = [](QMetaMethod const &method) { return Signal{norm(method), method}; };
    static std::array<Signal, 16> const table = {{
        of(QMetaMethod::fromSignal(&OutputMonitor::sig_status)),
        of(QMetaMethod::fromSignal(&OutputMonitor::sig_clipid)),
        of(QMetaMethod::fromSignal(&OutputMonitor::sig_speed)),
        of(QMetaMethod::fromSignal(&OutputMonitor::sig_timecodes)),
        of(QMetaMethod::fromSignal(&OutputMonitor::sig_clip_position)),
        of(QMetaMethod::fromSignal(&OutputMonitor::sig_channel_information)),
        of(QMetaMethod::fromSignal(&OutputMonitor::sig_peak)),
        of(QMetaMethod::fromSignal(&OutputMonitor::sig_aux_status)),
        of(QMetaMethod::fromSignal(&OutputMonitor::sig_aux_clipid)),
        of(QMetaMethod::fromSignal(&OutputMonitor::sig_aux_speed)),
        of(QMetaMethod::fromSignal(&OutputMonitor::sig_aux_position)),
        of(QMetaMethod::fromSignal(&OutputMonitor::sig_aux_information)),
        of(QMetaMethod::fromSignal(&OutputMonitor::sig_aux_peak)),
        of(QMetaMethod::fromSignal(&OutputMonitor::sig_display_timecode)),
        of(QMetaMethod::fromSignal(&OutputMonitor::sig_input_timecode)),
        of(QMetaMethod::fromSignal(&OutputMonitor::sig_playback_mode)),
    }};
    return table;
}

void OutputMonitor::cf_changed()
{
    auto const feed
        = config ? config->GetOutputSource(output_number) : AOption<ChannelCF::OutputSource>();
    ChannelMonitor *const next
        = feed && feed->channel < channel_count ? chmon[feed->channel].data() : nullptr;
    if (next == source)
        return;
    for (ChannelMonitor *monitor : chmon)
        for (Signal const &signal : all_signals())
            if (monitor)
                disconnect(
                    monitor, signal.signature.constData(), this, signal.signature.constData());
    source = next;
    for (Signal const &signal : all_signals())
        if (isSignalConnected(signal.method))
            sig_attach(signal.signature);
}

void OutputMonitor::sig_attach(QByteArray const &signature)
{
    // Once, however many listeners there are here. The channel's monitor must hear of each, so that
    // each gets the present value.
    sig_detach(signature);
    if (source)
        connect(source, signature.constData(), this, signature.constData());
}

void OutputMonitor::sig_detach(QByteArray const &signature)
{
    if (source)
        disconnect(source, signature.constData(), this, signature.constData());
}
