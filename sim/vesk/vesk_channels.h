// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_tree.h"
#include "sim/vesk/vesk_channel.h"
#include "sim/vesk/vesk_field_clock.h"

#include <vector>

/// The 40 channels of a server.
/// Thread: the server's.
class VeskChannels
{
public:
    static constexpr unsigned int count = 40;

    /// Both must outlive this object.
    VeskChannels(VeskClips *store, VeskFieldClock const *clock);

    VeskChannel &at(VCTP3::Channel name) { return channels[static_cast<unsigned int>(name)]; }
    VeskChannel const &at(VCTP3::Channel name) const
    {
        return channels[static_cast<unsigned int>(name)];
    }
    std::vector<VeskChannel> &all() { return channels; }
    std::vector<VeskChannel> const &all() const { return channels; }

    /// Gives the channel to a connection. True if another connection held it.
    bool steal(VCTP3::Channel name, VeskOwner const &owner);
    /// Gives back all channels of \a connection.
    void unsteal(quint64 connection);
    /// \a clip has other attributes or another name now.
    void clip_edited(VeskClip const &clip);
    void connection_ended(quint64 connection) { unsteal(connection); }
    /// All channels idle and nobody's.
    void restart();

    /// One field on all channels.
    void advance_field();

    /// The `ChannelReportType` bits of what changed on a channel since the last call: what is to
    /// be reported behind a command or a field.
    unsigned int take_changes(VCTP3::Channel name) { return at(name).take_changes(); }
    /// The channel as it stands, as a report of \a group; null for lists and chases.
    XMLTree report(VCTP3::Channel name, VCTP3::ChannelReportType group) const;

private:
    VeskFieldClock const *house;
    std::vector<VeskChannel> channels;
};
