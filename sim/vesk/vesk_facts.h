// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/astring.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/enums.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/records.h"
#include "sim/vesk/vesk_reporter.h"

#include <array>

class VeskFieldClock;

/// What the machine tells of itself: name, version, formats, temperature, timecode input
/// and the keys that the program outputs show.
/// Thread: the server's.
class VeskFacts
{
public:
    /// \a clock must outlive this object.
    VeskFacts(VeskReporter *reporter, VeskFieldClock const *clock);

    AString computer_name() const;
    AString version() const;
    AString version_path() const;
    VCTP3::CompressionInfo compression(unsigned int field_bytes) const;
    /// From input to output, in fields.
    unsigned int io_latency() const { return latency; }
    /// Nobody is told.
    void set_io_latency(unsigned int fields) { latency = fields; }

    /// Tenths of a degree Celsius; it wanders a little with time.
    unsigned int temperature() const;

    AString pgm_dbkey(VCTP3::PGMChannel channel) const;
    /// Tells every connection.
    void set_pgm_dbkey(VCTP3::PGMChannel channel, AString const &key);

    /// The reports that tell the present values, as those registered get them.
    XMLTree temperature_report() const;
    XMLTree ltc_report() const;

    /// A field has passed: the timecode input is told with each, the temperature when it changes.
    void advance_field();

private:
    VeskReporter *told;
    VeskFieldClock const *field_clock;
    std::array<AString, 4> pgm_dbkeys;
    unsigned int told_temperature;
    unsigned int latency = 6;
};

/// The pictures of a video standard: the rate of its fields or frames and the raster.
VCTP3::VideoRate vesk_video_rate(VCTP3::VideoStandard standard);
VCTP3::VideoResolution vesk_video_resolution(VCTP3::VideoStandard standard);
