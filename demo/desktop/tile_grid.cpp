// SPDX-License-Identifier: Apache-2.0
#include "demo/desktop/tile_grid.h"

#include <algorithm>
#include <cmath>

TileGrid::TileGrid(double shape, QWidget *parent)
    : QWidget(parent)
    , tile_shape(shape)
    , grid(new QGridLayout(this))
{
    grid->setContentsMargins(8, 4, 8, 8);
    grid->setSpacing(6);
}

void TileGrid::set_tiles(QList<QWidget *> const &widgets)
{
    qDeleteAll(shown);
    shown = widgets;
    columns_shown = 0;
    arrange();
}

int TileGrid::best_columns() const
{
    int const count = int(shown.size());
    int best = 1;
    double best_misfit = 1e9;
    for (int columns = 1; columns <= count; ++columns) {
        int const rows = (count + columns - 1) / columns;
        double const wide = double(width()) / columns;
        double const high = std::max(1.0, double(height()) / rows);
        double const empty = double(rows * columns - count) / count;
        double const misfit = std::abs(std::log(wide / high / tile_shape)) + empty;
        if (misfit < best_misfit) {
            best = columns;
            best_misfit = misfit;
        }
    }
    return best;
}

void TileGrid::arrange()
{
    int const columns = best_columns();
    if (columns == columns_shown || shown.isEmpty())
        return;
    int const rows = (int(shown.size()) + columns - 1) / columns;
    for (int i = 0; i < std::max<int>(grid->columnCount(), columns); ++i)
        grid->setColumnStretch(i, i < columns ? 1 : 0);
    for (int i = 0; i < std::max<int>(grid->rowCount(), rows); ++i)
        grid->setRowStretch(i, i < rows ? 1 : 0);
    for (int i = 0; i < shown.size(); ++i)
        grid->addWidget(shown[i], i / columns, i % columns);
    columns_shown = columns;
}

void TileGrid::resizeEvent(QResizeEvent *)
{
    arrange();
}
