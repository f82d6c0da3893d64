// SPDX-License-Identifier: Apache-2.0
#include "demo/desktop/channel_wall.h"

#include "demo/desktop/channel_tile.h"

#include <Tarn/CFChannelConfig>

#include <algorithm>

namespace {

constexpr TileLimits tile_limits{1.25, ChannelTile::least_size, {560, 480}};

} // namespace

ChannelWall::ChannelWall(Glint *server, QWidget *parent)
    : ConfiguredWall(server, tile_limits, parent)
{
    follow_configuration();
}

void ChannelWall::follow_configuration()
{
    std::vector<unsigned int> channels = hub->get_channel_config()->AllUserChannels();
    std::erase_if(channels, [](unsigned int channel) { return channel >= Glint::channel_count; });
    bool const same = std::equal(channels.begin(), channels.end(), all.begin(), all.end(),
        [](unsigned int channel, ChannelTile *tile) {
            return tile->channel() == VCTP3::Channel(channel);
        });
    if (!same)
        make_tiles(channels);
    for (ChannelTile *tile : all)
        tile->show_configuration();
}

void ChannelWall::make_tiles(std::vector<unsigned int> const &channels)
{
    all.clear();
    QList<QWidget *> widgets;
    for (unsigned int channel : channels) {
        auto *tile = new ChannelTile(hub, VCTP3::Channel(channel), this);
        connect(tile, &ChannelTile::clicked, this, &ChannelWall::tile_clicked);
        all.append(tile);
        widgets.append(tile);
    }
    cursor = 0;
    set_tiles(widgets);
    select_one();
}

VCTP3::ChannelSet ChannelWall::selection() const
{
    VCTP3::ChannelSet set;
    for (ChannelTile const *tile : all)
        if (tile->is_selected())
            set.add_to_set(tile->channel());
    return set;
}

bool ChannelWall::step_cursor(int columns, int rows)
{
    int const next = cursor + columns + rows * this->columns();
    if (next < 0 || next >= all.size())
        return false;
    cursor = next;
    ensureWidgetVisible(all[cursor]);
    return true;
}

void ChannelWall::move_cursor(int columns, int rows)
{
    if (step_cursor(columns, rows))
        select_one();
}

void ChannelWall::extend_to(int columns, int rows)
{
    if (!step_cursor(columns, rows))
        return;
    all[cursor]->set_selected(true);
    Q_EMIT selection_changed();
}

void ChannelWall::select_all()
{
    for (ChannelTile *tile : all)
        tile->set_selected(true);
    Q_EMIT selection_changed();
}

void ChannelWall::select_one()
{
    if (cursor < all.size())
        select(all[cursor]);
}

void ChannelWall::select(ChannelTile *only)
{
    for (ChannelTile *tile : all)
        tile->set_selected(tile == only);
    Q_EMIT selection_changed();
}

void ChannelWall::tile_clicked(VCTP3::Channel channel, Qt::KeyboardModifiers modifiers)
{
    auto const found = std::find_if(all.begin(), all.end(),
        [channel](ChannelTile const *tile) { return tile->channel() == channel; });
    if (found == all.end())
        return;
    cursor = int(found - all.begin());
    if (!(modifiers & Qt::ControlModifier)) {
        select(*found);
        return;
    }
    (*found)->set_selected(!(*found)->is_selected());
    Q_EMIT selection_changed();
}
