// SPDX-License-Identifier: Apache-2.0
#include "demo/desktop/output_wall.h"

#include "demo/desktop/output_tile.h"

namespace {

constexpr double shape = 2;
constexpr unsigned int most_outputs = 40;

} // namespace

OutputWall::OutputWall(Glint *server, CFChannelConfig *channel_config, QWidget *parent)
    : TileGrid(shape, parent)
    , hub(server)
    , config(channel_config)
{
    configuration_settled.setSingleShot(true);
    configuration_settled.setInterval(0);
    connect(config, &CFChannelConfig::changed, &configuration_settled, qOverload<>(&QTimer::start));
    connect(&configuration_settled, &QTimer::timeout, this, &OutputWall::follow_configuration);
    follow_configuration();
}

void OutputWall::follow_configuration()
{
    QList<ChannelCF::OutputSource> now;
    QList<unsigned int> outputs;
    for (unsigned int output = 0; output < most_outputs; ++output) {
        AOption<ChannelCF::OutputSource> const source = config->GetOutputSource(output);
        if (!source || source->channel >= Glint::channel_count)
            continue;
        now.append(*source);
        outputs.append(output);
    }
    if (now == sources)
        return;
    sources = now;
    QList<QWidget *> tiles;
    for (int i = 0; i < now.size(); ++i)
        tiles.append(new OutputTile(hub, outputs[i], now[i], this));
    set_tiles(tiles);
}
