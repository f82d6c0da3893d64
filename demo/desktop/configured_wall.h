// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "demo/desktop/tile_grid.h"

#include <Tarn/Glint>

#include <QTimer>

/// Tiles of what a server's configuration has.
class ConfiguredWall : public TileGrid
{
    Q_OBJECT

protected:
    ConfiguredWall(Glint *server, TileLimits const &tiles, QWidget *parent);

    /// Shows what the configuration has now; called after each change.
    virtual void follow_configuration() = 0;

    Glint *const hub;

private:
    QTimer configuration_settled;
};
