// SPDX-License-Identifier: Apache-2.0
#include "demo/desktop/tile_grid.h"

#include "demo/desktop/desk_style.h"

#include <QScrollBar>

#include <algorithm>
#include <cmath>

namespace {

constexpr QMargins margins(8, 4, 8, 8);
constexpr int gap = 6;

/// What is left for each of \a count tiles beside each other.
int share(int room, int count)
{
    return (room + gap) / count - gap;
}

} // namespace

TileGrid::TileGrid(TileLimits const &tile_limits, QWidget *parent)
    : QScrollArea(parent)
    , limits(tile_limits)
    , field(new QWidget)
    , hint(DeskStyle::label(viewport(), "hint", 18))
{
    setFrameShape(NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    // The keys belong to the transport.
    setFocusPolicy(Qt::NoFocus);
    setWidget(field);
    hint->setAlignment(Qt::AlignCenter);
    DeskStyle::set_text_colour(hint, DeskStyle::quiet);
}

void TileGrid::set_hint(QString const &text)
{
    hint->setText(text);
}

void TileGrid::set_tiles(QList<QWidget *> const &widgets)
{
    qDeleteAll(shown);
    shown = widgets;
    for (QWidget *tile : shown) {
        tile->setParent(field);
        tile->show();
    }
    arrange();
}

TileGrid::Arrangement TileGrid::arrangement(int columns, QSize const &room) const
{
    QSize const inside = room.shrunkBy(margins);
    int const rows = (int(shown.size()) + columns - 1) / columns;
    QSize const tile = QSize(share(inside.width(), columns), share(inside.height(), rows))
                           .boundedTo(limits.most)
                           .expandedTo(limits.least);
    QSize const tiles(columns * (tile.width() + gap) - gap, rows * (tile.height() + gap) - gap);
    return {columns, rows, tile, tiles.grownBy(margins)};
}

TileGrid::Arrangement TileGrid::best_arrangement(QSize const &room) const
{
    double const count = double(shown.size());
    Arrangement best;
    double best_misfit = 1e9;
    for (int columns = 1; columns <= shown.size(); ++columns) {
        Arrangement const one = arrangement(columns, room);
        if (one.all.width() > room.width() && columns > 1)
            break;
        double const shape = double(one.tile.width()) / one.tile.height();
        double const empty = (one.rows * columns - count) / count;
        double const hidden
            = std::max(0.0, one.all.height() / std::max(1.0, double(room.height())) - 1);
        double const misfit = std::abs(std::log(shape / limits.shape)) + empty + 10 * hidden;
        if (misfit <= best_misfit) {
            best = one;
            best_misfit = misfit;
        }
    }
    return best;
}

void TileGrid::arrange()
{
    QSize const room = maximumViewportSize();
    now = best_arrangement(room);
    if (now.all.height() > room.height())
        now = best_arrangement(room - QSize(verticalScrollBar()->sizeHint().width(), 0));
    for (int i = 0; i < shown.size(); ++i) {
        QPoint const place(i % now.columns * (now.tile.width() + gap),
            i / now.columns * (now.tile.height() + gap));
        shown[i]->setGeometry({place + QPoint(margins.left(), margins.top()), now.tile});
    }
    field->resize(now.all);
    hint->setGeometry(viewport()->rect());
    hint->setVisible(shown.isEmpty());
}

void TileGrid::resizeEvent(QResizeEvent *event)
{
    QScrollArea::resizeEvent(event);
    arrange();
}
