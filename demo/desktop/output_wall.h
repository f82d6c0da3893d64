// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "demo/desktop/tile_grid.h"

#include <Tarn/CFChannelConfig>
#include <Tarn/Glint>

#include <QTimer>

/// A tile for each output that a channel feeds.
class OutputWall : public TileGrid
{
    Q_OBJECT

public:
    OutputWall(Glint *hub, CFChannelConfig *config, QWidget *parent);

private:
    void follow_configuration();

    Glint *const hub;
    CFChannelConfig *const config;
    QTimer configuration_settled;
    QList<ChannelCF::OutputSource> sources;
};
