// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/channelcf/config_channel.h"

#include "kestrel/mod/vctp3/tarnlibapi/base/aassert.h"

#include <algorithm>
#include <functional>

namespace ChannelCF {

namespace {

void append(
    OutputSet const &outputs, std::vector<std::uint32_t> *primary, std::vector<std::uint32_t> *all)
{
    if (outputs.empty())
        return;
    primary->push_back(outputs.list().front());
    all->insert(all->end(), outputs.list().begin(), outputs.list().end());
}

} // namespace

OutputSet::OutputSet(std::initializer_list<std::uint32_t> several)
{
    for (std::uint32_t output : several)
        insert(output);
}

void OutputSet::insert(std::uint32_t output)
{
    auto const place = std::lower_bound(outputs.begin(), outputs.end(), output);
    if (place == outputs.end() || *place != output)
        outputs.insert(place, output);
}

void ConfigChannel::finish()
{
    if (!A_ASSERT(!finished))
        return;
    for (ConfigAngle const &angle : angles) {
        append(angle.outputs, &primary_outputs, &all_outputs);
        append(angle.keys, &primary_keys, &all_keys);
    }
    auto const not_above = std::adjacent_find(
        primary_outputs.begin(), primary_outputs.end(), std::greater_equal<>());
    A_ASSERT(not_above == primary_outputs.end());
    first_output = primary_outputs.empty() ? 0 : primary_outputs.front();
    angle_count = angles.size();
    finished = true;
}

} // namespace ChannelCF
