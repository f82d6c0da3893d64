// SPDX-License-Identifier: Apache-2.0
#include "demo/desktop/channel_wall.h"

#include "demo/desktop/channel_tile.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double tile_shape = 1.25; // width to height, as near as it goes

/// How many columns make the tiles of an area come nearest to their shape.
int best_columns(int tiles, QSize const &area)
{
    int best = 1;
    double best_misfit = 1e9;
    for (int columns = 1; columns <= tiles; ++columns) {
        int const rows = (tiles + columns - 1) / columns;
        double const shape
            = double(area.width()) / columns / std::max(1.0, double(area.height()) / rows);
        double const empty = double(rows * columns - tiles) / tiles;
        double const misfit = std::abs(std::log(shape / tile_shape)) + empty;
        if (misfit < best_misfit) {
            best = columns;
            best_misfit = misfit;
        }
    }
    return best;
}

} // namespace

ChannelWall::ChannelWall(Glint *server, CFChannelConfig *channel_config, QWidget *parent)
    : QWidget(parent)
    , hub(server)
    , config(channel_config)
    , grid(new QGridLayout(this))
{
    grid->setContentsMargins(8, 4, 8, 8);
    grid->setSpacing(6);
    // The items of a board change one after the other; one look at all of them is enough.
    configuration_settled.setSingleShot(true);
    configuration_settled.setInterval(0);
    connect(config, &CFChannelConfig::changed, &configuration_settled, qOverload<>(&QTimer::start));
    connect(&configuration_settled, &QTimer::timeout, this, &ChannelWall::follow_configuration);
    follow_configuration();
}

void ChannelWall::follow_configuration()
{
    std::vector<unsigned int> channels = config->AllUserChannels();
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
    qDeleteAll(all);
    all.clear();
    for (unsigned int channel : channels) {
        auto *tile = new ChannelTile(hub, config, VCTP3::Channel(channel), this);
        connect(tile, &ChannelTile::clicked, this, &ChannelWall::tile_clicked);
        all.append(tile);
    }
    cursor = 0;
    columns_shown = 0;
    arrange();
    select_one();
}

void ChannelWall::arrange()
{
    int const columns = best_columns(int(all.size()), size());
    if (columns == columns_shown || all.isEmpty())
        return;
    for (int i = 0; i < std::max<int>(grid->columnCount(), columns); ++i)
        grid->setColumnStretch(i, i < columns ? 1 : 0);
    int const rows = (int(all.size()) + columns - 1) / columns;
    for (int i = 0; i < std::max<int>(grid->rowCount(), rows); ++i)
        grid->setRowStretch(i, i < rows ? 1 : 0);
    for (int i = 0; i < all.size(); ++i)
        grid->addWidget(all[i], i / columns, i % columns);
    columns_shown = columns;
}

void ChannelWall::resizeEvent(QResizeEvent *)
{
    arrange();
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
    int const next = cursor + columns + rows * columns_shown;
    if (next < 0 || next >= all.size())
        return false;
    cursor = next;
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
