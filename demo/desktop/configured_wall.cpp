// SPDX-License-Identifier: Apache-2.0
#include "demo/desktop/configured_wall.h"

#include <Tarn/CFChannelConfig>

ConfiguredWall::ConfiguredWall(Glint *server, TileLimits const &tiles, QWidget *parent)
    : TileGrid(tiles, parent)
    , hub(server)
{
    // The items of a board change one after the other; one look at all of them is enough.
    configuration_settled.setSingleShot(true);
    configuration_settled.setInterval(0);
    connect(hub->get_channel_config(), &CFChannelConfig::changed, &configuration_settled,
        qOverload<>(&QTimer::start));
    connect(&configuration_settled, &QTimer::timeout, this, [this] { follow_configuration(); });
}
