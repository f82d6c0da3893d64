// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QGridLayout>
#include <QWidget>

/// Tiles of one size, in as many columns as make them come nearest to a shape.
class TileGrid : public QWidget
{
    Q_OBJECT

public:
    /// \a shape: width to height.
    TileGrid(double shape, QWidget *parent);

    int columns() const { return columns_shown; }

protected:
    /// Deletes the old ones.
    void set_tiles(QList<QWidget *> const &widgets);
    void resizeEvent(QResizeEvent *event) override;

private:
    void arrange();
    int best_columns() const;

    double const tile_shape;
    QGridLayout *const grid;
    QList<QWidget *> shown;
    int columns_shown = 0;
};
