// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/channelcf/cf_rate.h"

#include "kestrel/mod/vctp3/tarnlibapi/base/aassert.h"

#include <algorithm>
#include <iterator>

namespace {

struct CompressionRate
{
    unsigned int hd;
    unsigned int sd;
};

constexpr CompressionRate compression_rates[] = {
    {25, 15},
    {30, 20},
    {35, 25},
    {40, 30},
    {50, 35},
    {60, 40},
    {70, 45},
    {80, 50},
    {90, 55},
    {100, 60},
    {110, 65},
    {120, 70},
    {130, 75},
    {140, 80},
    {150, 90},
    {160, 100},
    {170, 110},
    {180, 120},
    {190, 130},
    {200, 140},
};

CompressionRate const &rate(unsigned int q_index)
{
    bool const known = A_ASSERT_TEXT(
        q_index < std::size(compression_rates), "q_index < countof(compression_rates)");
    return known ? compression_rates[q_index] : std::rbegin(compression_rates)[0];
}

/// A rate at 60 frames a second for another number of frames, to the nearest step of five.
unsigned int scaled(unsigned int rate_at_60, unsigned int frames)
{
    unsigned int const fives = (rate_at_60 * frames / 60 * 2 + 5) / 10;
    return std::clamp(fives * 5, 15u, 200u);
}

} // namespace

unsigned int CFRate::hd60_rate(unsigned int q_index)
{
    return rate(q_index).hd;
}

unsigned int CFRate::hd50_rate(unsigned int q_index)
{
    return scaled(rate(q_index).hd, 50);
}

unsigned int CFRate::hd48_rate(unsigned int q_index)
{
    return scaled(rate(q_index).hd, 48);
}

unsigned int CFRate::sd60_rate(unsigned int q_index)
{
    return rate(q_index).sd;
}

unsigned int CFRate::sd50_rate(unsigned int q_index)
{
    return scaled(rate(q_index).sd, 50);
}
