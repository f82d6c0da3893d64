// SPDX-License-Identifier: Apache-2.0
#include "demo/desktop/output_wall.h"

#include "demo/desktop/output_tile.h"

#include <Tarn/CFChannelConfig>

#include <algorithm>

namespace {

constexpr TileLimits tile_limits{2, OutputTile::least_size, {560, 280}};
constexpr unsigned int most_outputs = 40;

} // namespace

OutputWall::OutputWall(Glint *server, QWidget *parent)
    : ConfiguredWall(server, tile_limits, parent)
{
    follow_configuration();
}

void OutputWall::follow_configuration()
{
    CFChannelConfig const *config = hub->get_channel_config();
    QList<unsigned int> outputs;
    for (unsigned int output = 0; output < most_outputs; ++output)
        if (config->GetOutputSource(output))
            outputs.append(output);
    bool const same = std::equal(outputs.begin(), outputs.end(), all.begin(), all.end(),
        [](unsigned int output, OutputTile *tile) { return tile->output() == output; });
    if (!same)
        make_tiles(outputs);
    for (OutputTile *tile : all)
        tile->show_source(*config->GetOutputSource(tile->output()));
}

void OutputWall::make_tiles(QList<unsigned int> const &outputs)
{
    all.clear();
    QList<QWidget *> widgets;
    for (unsigned int output : outputs) {
        all.append(new OutputTile(hub, output, this));
        widgets.append(all.last());
    }
    set_tiles(widgets);
}
