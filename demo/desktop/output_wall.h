// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "demo/desktop/configured_wall.h"

class OutputTile;

/// A tile for each output that a channel feeds.
class OutputWall : public ConfiguredWall
{
    Q_OBJECT

public:
    OutputWall(Glint *hub, QWidget *parent);

private:
    void follow_configuration() final;
    void make_tiles(QList<unsigned int> const &outputs);

    QList<OutputTile *> all;
};
