// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/timecode/atimecode.h"

#include "kestrel/mod/vctp3/tarnlibapi/base/aassert.h"

#include <algorithm>

namespace Corvane {

namespace {

DropframeFlag flag_of(VCTP3::SmallTimecode const &wire, VideoFrequency frequency)
{
    return wire.has_dfflag && hasDropframe(frequency) ? toDropframeFlag(wire.dfflag)
                                                      : defaultDropframeFlag(frequency);
}

unsigned int low_bits(unsigned char byte)
{
    return byte & 0x7fu;
}

/// Two decimal digits in a byte, each in the low half of one of the two.
unsigned char join(unsigned char units, unsigned char tens)
{
    return static_cast<unsigned char>((tens & 0xfu) << 4 | (units & 0xfu));
}

} // namespace

ATimecode::ATimecode(
    VideoFrequency frequency, VCTP3::SmallTimecode const &wire, unsigned int ssm_speed)
{
    if (wire.has_position)
        set(frequency, flag_of(wire, frequency), static_cast<unsigned int>(wire.position),
            ssm_speed);
}

ATimecode::ATimecode(
    VCTP3::VideoRate rate, VCTP3::SmallTimecode const &wire, unsigned int ssm_speed)
    : ATimecode(toVideoFrequency(rate), wire, ssm_speed)
{
}

ATimecode::ATimecode(
    VCTP3::VideoStandard standard, VCTP3::SmallTimecode const &wire, unsigned int ssm_speed)
    : ATimecode(toVideoFrequency(standard), wire, ssm_speed)
{
}

ATimecode::ATimecode(VCTP3::Timecode const &wire, unsigned int default_ssm_speed)
{
    if (!wire.valid || !wire.has_std || !wire.has_position)
        return;
    if (!wire.has_ssm_speed && !A_ASSERT(default_ssm_speed != 0))
        return;
    unsigned int const ssm_speed = wire.has_ssm_speed ? wire.ssm_speed : default_ssm_speed;
    if (ssm_speed == 0)
        return;
    VideoFrequency const by_standard = toVideoFrequency(wire.std);
    DropframeFlag const flag
        = wire.has_dfflag ? toDropframeFlag(wire.dfflag) : defaultDropframeFlag(by_standard);
    *this = ATimecode(by_standard, flag, static_cast<unsigned int>(wire.position), ssm_speed);
}

VCTP3::Timecode ATimecode::to_vctp3(VideoResolution resolution) const
{
    VCTP3::Timecode wire;
    if (!defined)
        return wire;
    wire.valid = true;
    wire.set_std(Corvane::to_vctp3(toVideoStandard(resolution, field_rate)));
    wire.set_position(static_cast<int>(count));
    if (hasDropframe(field_rate))
        wire.set_dfflag(Corvane::to_vctp3(dfflag));
    return wire;
}

VCTP3::Timecode ATimecode::to_vctp3(VCTP3::VideoStandard standard) const
{
    VideoResolution const resolution = toVideoResolution(toVideoStandard(standard));
    return isValid(resolution) ? to_vctp3(resolution) : VCTP3::Timecode();
}

ATimecode ATimecode::from_sony(
    VideoFrequency frequency, std::span<unsigned char const, 4> const &bytes)
{
    DropframeFlag flag = defaultDropframeFlag(frequency);
    if (hasDropframe(frequency))
        flag = (bytes[3] & 0x40u) != 0 ? DropframeFlag::df : DropframeFlag::ndf;
    bool const sixty = toVideoRoughFrequency(frequency) == VideoRoughFrequency::v60;
    bool const f2 = (bytes[sixty ? 2 : 0] & 0x80u) != 0;
    return ATimecode(
        frequency, flag, low_bits(bytes[0]), bytes[1], low_bits(bytes[2]), bytes[3] & ~0x40u, f2);
}

ATimecode ATimecode::from_tc64(
    VideoFrequency frequency, std::span<unsigned char const, 8> const &bytes)
{
    if (std::all_of(bytes.begin(), bytes.end(), [](unsigned char byte) { return byte == 0xffu; }))
        return {};
    unsigned char const joined[4] = {join(bytes[0], bytes[1]), join(bytes[2], bytes[3]),
        join(bytes[4], bytes[5]), join(bytes[6], bytes[7])};
    return from_sony(frequency, joined);
}

} // namespace Corvane
