// SPDX-License-Identifier: Apache-2.0
#include "demo/desktop/channel_tile.h"
#include "demo/desktop/tile_grid.h"
#include "tests/support/patience.h"

#include <QScrollBar>
#include <QTest>

namespace {

constexpr TileLimits tile_limits{1.25, ChannelTile::least_size, {560, 480}};

/// Plain tiles in a grid of some size.
class Grid : public TileGrid
{
public:
    Grid(QSize const &size, int count)
        : TileGrid(tile_limits, nullptr)
    {
        resize(size);
        show();
        put(count);
    }

    void put(int count)
    {
        tiles.clear();
        for (int i = 0; i < count; ++i)
            tiles.append(new QWidget);
        set_tiles(tiles);
    }
    bool scrolls() const { return verticalScrollBar()->maximum() > 0; }

    QList<QWidget *> tiles;
};

} // namespace

/// Tiles side by side.
class TestTileGrid : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void tiles_are_of_one_size_and_in_rows_data();
    void tiles_are_of_one_size_and_in_rows();
    void forty_tiles_fit_into_a_small_window();
    void what_does_not_fit_is_reached_by_scrolling();
    void few_tiles_do_not_grow_without_end();
    void rows_are_filled_where_they_can_be();
    void the_hint_stands_where_no_tile_does();
};

void TestTileGrid::tiles_are_of_one_size_and_in_rows_data()
{
    QTest::addColumn<QSize>("size");
    for (QSize const &size : {QSize(1024, 464), QSize(1280, 620), QSize(1920, 980),
             QSize(3840, 2040), QSize(400, 2000), QSize(100, 30), QSize(1, 1)})
        QTest::addRow("%dx%d", size.width(), size.height()) << size;
}

void TestTileGrid::tiles_are_of_one_size_and_in_rows()
{
    QFETCH(QSize, size);
    Grid grid(size, 0);
    for (int count = 1; count <= 40; ++count) {
        grid.put(count);
        QSize const one = grid.tiles[0]->size();
        QVERIFY(one.width() >= tile_limits.least.width());
        QVERIFY(one.height() >= tile_limits.least.height());
        QCOMPARE(one.boundedTo(tile_limits.most), one);
        for (int i = 0; i < count; ++i) {
            QRect const place = grid.tiles[i]->geometry();
            QCOMPARE(place.size(), one);
            QVERIFY(grid.widget()->rect().contains(place));
            if (i % grid.columns() > 0)
                QCOMPARE(place.topLeft(), grid.tiles[i - 1]->geometry().topRight() + QPoint(7, 0));
            else if (i > 0)
                QCOMPARE(place.topLeft(),
                    grid.tiles[i - grid.columns()]->geometry().bottomLeft() + QPoint(0, 7));
        }
        // Nothing lies beyond the right edge, save a single column of the least size.
        if (grid.columns() > 1)
            QVERIFY(grid.widget()->width() <= grid.viewport()->width());
    }
}

void TestTileGrid::forty_tiles_fit_into_a_small_window()
{
    // What a window of 1280x720 leaves for them.
    Grid grid(QSize(1280, 620), 40);
    QVERIFY(!grid.scrolls());
    QCOMPARE(grid.columns(), 8);
}

void TestTileGrid::what_does_not_fit_is_reached_by_scrolling()
{
    Grid grid(QSize(1024, 464), 40);
    QVERIFY(grid.scrolls());
    QVERIFY(grid.widget()->width() <= grid.viewport()->width());
    grid.ensureWidgetVisible(grid.tiles.last());
    QCOMPARE(grid.tiles.last()->visibleRegion().boundingRect(), grid.tiles.last()->rect());
    grid.resize(1920, 980);
    QTRY_VERIFY(!grid.scrolls());
}

void TestTileGrid::few_tiles_do_not_grow_without_end()
{
    Grid grid(QSize(1920, 980), 1);
    QCOMPARE(grid.tiles[0]->size(), tile_limits.most);
    grid.put(2);
    QCOMPARE(grid.columns(), 2);
    QCOMPARE(grid.tiles[1]->size(), tile_limits.most);
}

void TestTileGrid::rows_are_filled_where_they_can_be()
{
    Grid grid(QSize(1280, 620), 8);
    QCOMPARE(grid.columns(), 4);
    grid.put(4);
    QCOMPARE(4 % grid.columns(), 0);
}

void TestTileGrid::the_hint_stands_where_no_tile_does()
{
    Grid grid(QSize(800, 600), 0);
    grid.set_hint(QStringLiteral("nothing yet"));
    auto *hint = grid.findChild<QLabel *>(QStringLiteral("hint"));
    QCOMPARE(hint->text(), QStringLiteral("nothing yet"));
    QVERIFY(hint->isVisible());
    QCOMPARE(hint->geometry(), grid.viewport()->rect());
    grid.put(1);
    QVERIFY(!hint->isVisible());
    grid.put(0);
    QVERIFY(hint->isVisible());
}

QTEST_MAIN(TestTileGrid)
#include "tst_tile_grid.moc"
