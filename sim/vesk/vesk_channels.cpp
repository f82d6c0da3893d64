// SPDX-License-Identifier: Apache-2.0
#include "sim/vesk/vesk_channels.h"

#include "sim/vesk/vesk_channel_reports.h"

VeskChannels::VeskChannels(VeskClips *store, VeskFieldClock const *clock)
    : house(clock)
{
    channels.reserve(count);
    for (unsigned int number = 0; number < count; ++number)
        channels.emplace_back(static_cast<VCTP3::Channel>(number), store);
}

bool VeskChannels::steal(VCTP3::Channel name, VeskOwner const &owner)
{
    quint64 const before = at(name).owner().connection;
    at(name).set_owner(owner);
    return before != 0 && before != owner.connection;
}

void VeskChannels::unsteal(quint64 connection)
{
    for (VeskChannel &channel : channels) {
        if (channel.owner().connection == connection)
            channel.set_owner(VeskOwner());
    }
}

void VeskChannels::clip_edited(VeskClip const &clip)
{
    for (VeskChannel &channel : channels)
        channel.clip_edited(clip);
}

void VeskChannels::restart()
{
    for (VeskChannel &channel : channels)
        channel.reset();
}

void VeskChannels::advance_field()
{
    for (VeskChannel &channel : channels)
        channel.record_field();
    for (VeskChannel &channel : channels)
        channel.advance_field();
}

XMLTree VeskChannels::report(VCTP3::Channel name, VCTP3::ChannelReportType group) const
{
    return VeskChannelReports::report(at(name), group, *house);
}
