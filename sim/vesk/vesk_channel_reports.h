// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_tree.h"
#include "sim/vesk/vesk_channel.h"
#include "sim/vesk/vesk_field_clock.h"

#include <array>

/// What a channel shows of itself, made from its present state.
namespace VeskChannelReports {

/// Audio tracks of a channel; a report of levels has 16 values, the rest of them 0.
constexpr unsigned int audio_tracks = 8;

/// Levels in decibels above silence, from 0 to 100, shifted by the layer's gain. They follow from
/// the clip and the position alone, so that the same picture always sounds the same.
using Levels = std::array<unsigned int, 16>;
Levels levels(VeskLayer const &layer);
/// As decimal texts with blanks between them.
AString levels_text(Levels const &levels);

/// The timecode of the picture: the clip's, or the house's when the input is shown; not valid when
/// there is no picture.
VCTP3::Timecode display_timecode(VeskLayer const &layer, VeskFieldClock const &clock);

VCTP3::ChannelInformation information(VeskChannel const &channel, VCTP3::Layer layer);

/// The report element of \a group; null for lists and chases, which channels do not play.
XMLTree report(
    VeskChannel const &channel, VCTP3::ChannelReportType group, VeskFieldClock const &clock);

} // namespace VeskChannelReports
