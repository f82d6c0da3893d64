// SPDX-License-Identifier: Apache-2.0
#include "sim/vesk/vesk_facts.h"

#include "sim/vesk/reports.h"
#include "sim/vesk/vesk_field_clock.h"

#include <vector>

namespace {

/// A standard's name in its parts: "1080_59_94i" is "1080", "59_94" and "i"; "4K_60p" is "4K", "60"
/// and "p".
struct StandardName
{
    explicit StandardName(VCTP3::VideoStandard standard)
    {
        AString const name = VCTP3::VideoStandard_to_string(standard);
        auto const lines_end = static_cast<unsigned long long>(name.find(AString::l1("_"), 0));
        lines = name.left(lines_end);
        rate = name.remove_front(lines_end + 1);
        for (char const *letters : {"psf", "p", "i"})
            if (rate.has_suffix(AString::l1(letters))) {
                scanning = AString::l1(letters);
                rate = rate.remove_suffix(scanning);
                return;
            }
    }
    AString lines;
    AString rate;
    AString scanning;
};

} // namespace

VCTP3::VideoRate vesk_video_rate(VCTP3::VideoStandard standard)
{
    auto rate = VCTP3::VideoRate::v59_94;
    VCTP3::string_to_VideoRate(StandardName(standard).rate, &rate);
    return rate;
}

VCTP3::VideoResolution vesk_video_resolution(VCTP3::VideoStandard standard)
{
    StandardName const name(standard);
    auto resolution = VCTP3::VideoResolution::v1080i;
    // "4K" is the only raster that is not named with its scanning.
    if (!VCTP3::string_to_VideoResolution(name.lines + name.scanning, &resolution))
        VCTP3::string_to_VideoResolution(name.lines, &resolution);
    return resolution;
}

VeskFacts::VeskFacts(VeskReporter *reporter, VeskFieldClock const *clock)
    : told(reporter)
    , field_clock(clock)
    , told_temperature(temperature())
{
}

AString VeskFacts::computer_name() const
{
    return AString::l1("vesk-sim");
}

AString VeskFacts::version() const
{
    return AString::l1("1000");
}

AString VeskFacts::version_path() const
{
    return AString::l1("sim/vesk");
}

VCTP3::CompressionInfo VeskFacts::compression(unsigned int field_bytes) const
{
    VCTP3::CompressionInfo info;
    info.compression_y_size = field_bytes / 2;
    info.compression_c_size = field_bytes / 2;
    info.compression_k_size = 0;
    info.audio_track_count = 8;
    info.compression_v_symbol = AString::l1("avci");
    info.compression_k_symbol = AString::l1("none");
    info.compression_a_symbol = AString::l1("pcm24");
    info.set_v_framebased(false);
    info.set_k_framebased(false);
    info.set_a_framebased(false);
    return info;
}

unsigned int VeskFacts::temperature() const
{
    // Up and down between 41.0 and 41.9 degrees, a tenth in five seconds.
    quint64 const step = field_clock->now() / (field_clock->fields_per_second() * 5U) % 18;
    return 410 + static_cast<unsigned int>(step < 9 ? step : 18 - step);
}

AString VeskFacts::pgm_dbkey(VCTP3::PGMChannel channel) const
{
    return pgm_dbkeys[static_cast<std::size_t>(channel)];
}

void VeskFacts::set_pgm_dbkey(VCTP3::PGMChannel channel, AString const &key)
{
    pgm_dbkeys[static_cast<std::size_t>(channel)] = key;
    told->report_to_all(VeskReports::pgm_dbkey(channel, key));
}

XMLTree VeskFacts::temperature_report() const
{
    return VeskReports::temperature(temperature());
}

XMLTree VeskFacts::ltc_report() const
{
    return VeskReports::ltc_timecode(field_clock->time_of_day());
}

void VeskFacts::advance_field()
{
    told->report(VCTP3::ReportType::ltc_input, ltc_report());
    if (temperature() == told_temperature)
        return;
    told_temperature = temperature();
    told->report(VCTP3::ReportType::temperature, temperature_report());
}
