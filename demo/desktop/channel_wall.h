// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "demo/desktop/configured_wall.h"

#include <Tarn/ChannelSet>

class ChannelTile;

/// A tile for each channel that the server's configuration has, and which of them are selected.
/// One tile has the cursor; the gang are the selected ones.
class ChannelWall : public ConfiguredWall
{
    Q_OBJECT

public:
    ChannelWall(Glint *hub, QWidget *parent);

    QList<ChannelTile *> const &tiles() const { return all; }
    VCTP3::ChannelSet selection() const;

public Q_SLOTS:
    /// Moves the cursor and selects that channel alone. Beyond an edge nothing happens.
    void move_cursor(int columns, int rows);
    /// Moves the cursor and takes the channel into the gang.
    void extend_to(int columns, int rows);
    void select_all();
    void select_one();

Q_SIGNALS:
    void selection_changed();

private:
    void follow_configuration() final;
    void make_tiles(std::vector<unsigned int> const &channels);
    void tile_clicked(VCTP3::Channel channel, Qt::KeyboardModifiers modifiers);
    bool step_cursor(int columns, int rows);
    void select(ChannelTile *only);

    QList<ChannelTile *> all;
    int cursor = 0;
};
