// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "sim/vesk/vesk_sim.h"
#include "sim/vesk/vesk_world.h"

/// For a server with the demo event, at 50 fields a second.
inline VeskSimOptions demo_options()
{
    VeskSimOptions options;
    options.demo = true;
    options.standard = VCTP3::VideoStandard::v1080_50i;
    return options;
}

/// Sets up the first two quads of its board.
inline void set_board(VeskSim *server, char const *first, char const *second)
{
    server->with_world([&](VeskWorld &world) {
        world.configuration.set(AString::l1("ChannelConfigurationSet0"), AString::l1(first));
        world.configuration.set(AString::l1("ChannelConfigurationSet1"), AString::l1(second));
    });
}
