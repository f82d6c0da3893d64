// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QLabel>
#include <QScrollArea>

/// What tiles may look like. Sizes in points.
struct TileLimits
{
    double shape; ///< width to height that they come nearest to
    QSize least;
    QSize most;
};

/// Tiles of one size, in as many columns as make them come nearest to a shape. Where not all of
/// them have room at their least size the grid scrolls; what they cannot use stays empty.
class TileGrid : public QScrollArea
{
    Q_OBJECT

public:
    TileGrid(TileLimits const &limits, QWidget *parent);

    int columns() const { return now.columns; }
    /// What to say while there is no tile.
    void set_hint(QString const &text);

protected:
    /// Deletes the old ones.
    void set_tiles(QList<QWidget *> const &widgets);
    void resizeEvent(QResizeEvent *event) override;

private:
    struct Arrangement
    {
        int columns = 1;
        int rows = 0;
        QSize tile;
        QSize all; ///< with gaps and margins
    };

    Arrangement arrangement(int columns, QSize const &room) const;
    Arrangement best_arrangement(QSize const &room) const;
    void arrange();

    TileLimits const limits;
    QWidget *const field;
    QLabel *const hint;
    QList<QWidget *> shown;
    Arrangement now;
};
