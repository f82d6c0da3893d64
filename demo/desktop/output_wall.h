// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "demo/desktop/tile_grid.h"

#include <Tarn/Glint>

#include <QTimer>

class OutputTile;

/// A tile for each output that a channel feeds.
class OutputWall : public TileGrid
{
    Q_OBJECT

public:
    OutputWall(Glint *hub, QWidget *parent);

private:
    void follow_configuration();
    void make_tiles(QList<unsigned int> const &outputs);

    Glint *const hub;
    QTimer configuration_settled;
    QList<OutputTile *> all;
};
