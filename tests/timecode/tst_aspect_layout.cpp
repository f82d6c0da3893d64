// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/timecode/aspect_layout.h"
#include "tests/support/assert_log.h"
#include "tests/support/patience.h"

#include <QSignalSpy>
#include <QTest>
#include <climits>

namespace {

/// Counts how often it is placed.
class PlacedItem : public QLayoutItem
{
public:
    explicit PlacedItem(int *gone = nullptr)
        : gone_count(gone)
    {
    }
    ~PlacedItem() override
    {
        if (gone_count)
            ++*gone_count;
    }
    QSize sizeHint() const override { return {40, 30}; }
    QSize minimumSize() const override { return {4, 3}; }
    QSize maximumSize() const override { return {4000, 3000}; }
    Qt::Orientations expandingDirections() const override { return {}; }
    void setGeometry(QRect const &rect) override
    {
        placed = rect;
        ++placings;
    }
    QRect geometry() const override { return placed; }
    bool isEmpty() const override { return false; }

    QRect placed;
    int placings = 0;

private:
    int *gone_count;
};

} // namespace

class TestAspectLayout : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void size_is_the_fitted_one_after_the_closing_step_data();
    void size_is_the_fitted_one_after_the_closing_step();
    void narrower_than_the_room_becomes_the_room_and_a_pixel();
    void position_follows_the_flags_data();
    void position_follows_the_flags();
    void centre_is_the_default();
    void margins_are_shared_out_by_the_flags_data();
    void margins_are_shared_out_by_the_flags();
    void margins_of_any_size_leave_a_size();
    void nothing_happens_where_nothing_changes();
    void each_change_lays_out_again();
    void ratio_of_0_becomes_1();
    void item_that_comes_later_is_placed_in_the_same_rectangle();
    void holds_one_item();
    void second_item_is_an_assertion_and_replaces_the_first();
    void hints_are_those_of_the_item_with_margins();
    void widget_has_the_layout_without_margins();
    void widget_places_its_child_by_its_flags_data();
    void widget_places_its_child_by_its_flags();
    void child_of_a_widget_is_placed();
};

void TestAspectLayout::size_is_the_fitted_one_after_the_closing_step_data()
{
    QTest::addColumn<QSize>("available");
    QTest::addColumn<QSize>("extra");
    QTest::addColumn<QSize>("aspect");
    QTest::addColumn<QSize>("size");
    QTest::newRow("exact") << QSize(160, 90) << QSize() << QSize(16, 9) << QSize(160, 90);
    // Fits with a height of 90, which becomes the whole one.
    QTest::newRow("too high") << QSize(160, 100) << QSize() << QSize(16, 9) << QSize(160, 100);
    // Fits with a width of 160, which becomes the whole one and a pixel.
    QTest::newRow("too wide") << QSize(200, 90) << QSize() << QSize(16, 9) << QSize(201, 90);
    // 100 * 9 / 16 is 56 and a rest that is cut off.
    QTest::newRow("cut off") << QSize(100, 56) << QSize() << QSize(16, 9) << QSize(101, 56);
    QTest::newRow("extra") << QSize(170, 95) << QSize(10, 5) << QSize(16, 9) << QSize(170, 95);
    QTest::newRow("extra, too wide")
        << QSize(210, 95) << QSize(10, 5) << QSize(16, 9) << QSize(211, 95);
    QTest::newRow("only extra") << QSize(10, 5) << QSize(10, 5) << QSize(16, 9) << QSize(10, 5);
    QTest::newRow("less than extra") << QSize(6, 3) << QSize(10, 5) << QSize(16, 9) << QSize(10, 5);
    QTest::newRow("nothing") << QSize(0, 0) << QSize() << QSize(16, 9) << QSize(0, 0);
    QTest::newRow("no width") << QSize(0, 9) << QSize() << QSize(16, 9) << QSize(0, 9);
    QTest::newRow("no height") << QSize(9, 0) << QSize() << QSize(16, 9) << QSize(10, 0);
    QTest::newRow("large") << QSize(7680, 4320) << QSize() << QSize(3840000, 2160000)
                           << QSize(7680, 4320);
    QTest::newRow("negative extra")
        << QSize(160, 90) << QSize(-1, -9) << QSize(16, 9) << QSize(160, 90);
    QTest::newRow("negative ratio")
        << QSize(160, 90) << QSize() << QSize(-16, -9) << QSize(161, 90);
    // Sizes that no widget has are brought into its range first.
    constexpr int most = QWIDGETSIZE_MAX;
    QTest::newRow("more than a widget has")
        << QSize(INT_MAX, INT_MAX) << QSize() << QSize(16, 9) << QSize(most, most);
    QTest::newRow("less than nothing")
        << QSize(INT_MIN, INT_MIN) << QSize() << QSize(16, 9) << QSize(0, 0);
    QTest::newRow("less than nothing, beside extra")
        << QSize(INT_MIN, INT_MIN) << QSize(10, 5) << QSize(16, 9) << QSize(10, 5);
    QTest::newRow("more extra than a widget has")
        << QSize(160, 90) << QSize(INT_MAX, INT_MAX) << QSize(16, 9) << QSize(most, most);
    QTest::newRow("least extra") << QSize(160, 90) << QSize(INT_MIN, INT_MIN) << QSize(16, 9)
                                 << QSize(160, 90);
}

void TestAspectLayout::size_is_the_fitted_one_after_the_closing_step()
{
    QFETCH(QSize, available);
    QFETCH(QSize, extra);
    QFETCH(QSize, aspect);
    QFETCH(QSize, size);
    AspectLayout layout;
    layout.setContentsMargins(0, 0, 0, 0);
    layout.set_aspect(extra, aspect);
    QCOMPARE(layout.item_size(available), size);
}

void TestAspectLayout::narrower_than_the_room_becomes_the_room_and_a_pixel()
{
    AspectLayout layout;
    layout.setContentsMargins(0, 0, 0, 0);
    layout.set_aspect(QSize(), QSize(16, 9));
    for (int w = 0; w <= 40; ++w) {
        for (int h = 0; h <= 40; ++h) {
            bool const narrower = h * 16 < w * 9;
            QCOMPARE(layout.item_size(QSize(w, h)), QSize(narrower ? w + 1 : w, h));
        }
    }
}

void TestAspectLayout::position_follows_the_flags_data()
{
    QTest::addColumn<int>("flags");
    QTest::addColumn<QSize>("room");
    QTest::addColumn<QPoint>("at");
    QTest::newRow("left, top") << int(Qt::AlignLeft | Qt::AlignTop) << QSize(160, 90)
                               << QPoint(0, 0);
    QTest::newRow("right, bottom")
        << int(Qt::AlignRight | Qt::AlignBottom) << QSize(160, 90) << QPoint(0, 0);
    QTest::newRow("centre") << int(Qt::AlignCenter) << QSize(160, 90) << QPoint(0, 0);
    // One pixel wider than the room: no place is before its begin.
    QTest::newRow("right, wider") << int(Qt::AlignRight) << QSize(200, 90) << QPoint(0, 0);
    QTest::newRow("centre, wider") << int(Qt::AlignHCenter) << QSize(201, 90) << QPoint(0, 0);
    QTest::newRow("right, less than extra")
        << int(Qt::AlignRight | Qt::AlignBottom) << QSize(3, 2) << QPoint(0, 0);
}

void TestAspectLayout::position_follows_the_flags()
{
    QFETCH(int, flags);
    QFETCH(QSize, room);
    QFETCH(QPoint, at);
    AspectLayout layout;
    layout.setContentsMargins(0, 0, 0, 0);
    auto *item = new PlacedItem;
    layout.addItem(item);
    layout.set_aspect(QSize(8, 8), QSize(16, 9));
    layout.set_alignment(Qt::Alignment(flags));
    QPoint const corner(11, 12);
    layout.setGeometry(QRect(corner, room));
    QCOMPARE(item->placed.topLeft(), corner + at);
    QCOMPARE(item->placed.size(), layout.item_size(room));
}

void TestAspectLayout::centre_is_the_default()
{
    AspectLayout layout;
    auto *item = new PlacedItem;
    layout.addItem(item);
    layout.setGeometry(QRect(0, 0, 90, 90));
    int const placings = item->placings;
    layout.set_alignment(Qt::Alignment(132));
    QCOMPARE(item->placings, placings);
    layout.set_alignment(Qt::AlignLeft);
    QCOMPARE(item->placings, placings + 1);
}

void TestAspectLayout::margins_of_any_size_leave_a_size()
{
    AspectLayout layout;
    layout.set_aspect(QSize(), QSize(1, 1));
    layout.setContentsMargins(INT_MAX, INT_MAX, INT_MAX, INT_MAX);
    QCOMPARE(layout.item_size(QSize(INT_MAX, INT_MAX)), QSize(0, 0));
    QCOMPARE(layout.item_size(QSize(160, 90)), QSize(0, 0));
    // The toolkit takes negative ones for those of the style.
    layout.setContentsMargins(INT_MIN, INT_MIN, INT_MIN, INT_MIN);
    QCOMPARE(layout.item_size(QSize(0, 0)), QSize(0, 0));
}

void TestAspectLayout::margins_are_shared_out_by_the_flags_data()
{
    QTest::addColumn<int>("flags");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QRect>("placed");
    QSize const exact(164, 96);
    QTest::newRow("left, top") << int(Qt::AlignLeft | Qt::AlignTop) << exact
                               << QRect(10, 20, 160, 90);
    QTest::newRow("right, bottom")
        << int(Qt::AlignRight | Qt::AlignBottom) << exact << QRect(14, 26, 160, 90);
    QTest::newRow("centre") << int(Qt::AlignCenter) << exact << QRect(12, 23, 160, 90);
    QTest::newRow("none: centre") << 0 << exact << QRect(12, 23, 160, 90);
    QTest::newRow("left") << int(Qt::AlignLeft) << exact << QRect(10, 23, 160, 90);
    QTest::newRow("bottom") << int(Qt::AlignBottom) << exact << QRect(12, 26, 160, 90);
    // The pixel that an item gets beyond its room comes out of the margins.
    QTest::newRow("right, wider") << int(Qt::AlignRight | Qt::AlignTop) << QSize(204, 96)
                                  << QRect(13, 20, 201, 90);
    // Half of 205 less half of 202.
    QTest::newRow("centre, odd") << int(Qt::AlignHCenter | Qt::AlignTop) << QSize(205, 96)
                                 << QRect(11, 20, 202, 90);
    // Half of 204 less half of 201, not half of what lies between.
    QTest::newRow("centre, odd item")
        << int(Qt::AlignCenter) << QSize(204, 96) << QRect(12, 23, 201, 90);
}

void TestAspectLayout::margins_are_shared_out_by_the_flags()
{
    QFETCH(int, flags);
    QFETCH(QSize, size);
    QFETCH(QRect, placed);
    AspectLayout layout;
    auto *item = new PlacedItem;
    layout.addItem(item);
    layout.setContentsMargins(1, 2, 3, 4);
    layout.set_aspect(QSize(), QSize(16, 9));
    layout.set_alignment(Qt::Alignment(flags));
    layout.setGeometry(QRect(QPoint(10, 20), size));
    QCOMPARE(item->placed, placed);
}

void TestAspectLayout::nothing_happens_where_nothing_changes()
{
    AspectLayout layout;
    auto *item = new PlacedItem;
    layout.addItem(item);
    layout.set_aspect(QSize(1, 2), QSize(16, 9));
    layout.setGeometry(QRect(0, 0, 90, 90));
    QCOMPARE(item->placings, 1);
    layout.setGeometry(QRect(0, 0, 90, 90));
    layout.set_aspect(QSize(1, 2), QSize(16, 9));
    layout.set_alignment(Qt::AlignHCenter | Qt::AlignVCenter);
    QCOMPARE(item->placings, 1);
    QCOMPARE(layout.geometry(), QRect(0, 0, 90, 90));
}

void TestAspectLayout::each_change_lays_out_again()
{
    AspectLayout layout;
    auto *item = new PlacedItem;
    layout.addItem(item);
    layout.setContentsMargins(0, 0, 0, 0);
    layout.setGeometry(QRect(0, 0, 90, 90));
    QCOMPARE(item->placed.size(), QSize(90, 90));
    layout.set_aspect(QSize(0, 0), QSize(1, 2));
    QCOMPARE(item->placings, 2);
    QCOMPARE(item->placed.size(), QSize(91, 90));
    layout.set_aspect(QSize(90, 90), QSize(1, 2));
    QCOMPARE(item->placings, 3);
    QCOMPARE(item->placed.size(), QSize(90, 90));
    layout.set_alignment(Qt::AlignRight);
    QCOMPARE(item->placings, 4);
    layout.setGeometry(QRect(0, 0, 90, 91));
    QCOMPARE(item->placings, 5);
    QCOMPARE(layout.geometry(), QRect(0, 0, 90, 91));
}

void TestAspectLayout::ratio_of_0_becomes_1()
{
    AspectLayout layout;
    layout.setContentsMargins(0, 0, 0, 0);
    layout.set_aspect(QSize(), QSize(0, 9));
    QCOMPARE(layout.item_size(QSize(2, 9)), QSize(3, 9));
    QCOMPARE(layout.item_size(QSize(1, 9)), QSize(1, 9));
    layout.set_aspect(QSize(), QSize(0, 0));
    QCOMPARE(layout.item_size(QSize(10, 9)), QSize(11, 9));
    QCOMPARE(layout.item_size(QSize(9, 9)), QSize(9, 9));
}

void TestAspectLayout::item_that_comes_later_is_placed_in_the_same_rectangle()
{
    AspectLayout layout;
    layout.setGeometry(QRect(0, 0, 90, 90));
    auto *item = new PlacedItem;
    layout.addItem(item);
    layout.setGeometry(QRect(0, 0, 90, 90));
    QCOMPARE(item->placings, 1);
}

void TestAspectLayout::holds_one_item()
{
    int gone = 0;
    {
        AspectLayout layout;
        QCOMPARE(layout.count(), 0);
        QVERIFY(!layout.itemAt(0));
        QVERIFY(!layout.takeAt(0));
        auto *item = new PlacedItem(&gone);
        layout.addItem(item);
        QCOMPARE(layout.count(), 1);
        QCOMPARE(layout.itemAt(0), item);
        for (int n : {-1, 1}) {
            QVERIFY(!layout.itemAt(n));
            QVERIFY(!layout.takeAt(n));
        }
        QCOMPARE(layout.takeAt(0), item);
        QCOMPARE(layout.count(), 0);
        layout.setGeometry(QRect(0, 0, 9, 9));
        QCOMPARE(item->placings, 0);
        layout.addItem(item);
    }
    QCOMPARE(gone, 1);
}

void TestAspectLayout::second_item_is_an_assertion_and_replaces_the_first()
{
    AssertLog log;
    int gone = 0;
    AspectLayout layout;
    layout.addItem(new PlacedItem(&gone));
    QCOMPARE(log.take().size(), 0);
    auto *second = new PlacedItem;
    layout.addItem(second);
    QCOMPARE(log.take().size(), 1);
    QCOMPARE(gone, 1);
    QCOMPARE(layout.itemAt(0), second);
}

void TestAspectLayout::hints_are_those_of_the_item_with_margins()
{
    AspectLayout layout;
    layout.setContentsMargins(1, 2, 3, 4);
    QCOMPARE(layout.sizeHint(), QSize(4, 6));
    layout.addItem(new PlacedItem);
    QCOMPARE(layout.sizeHint(), QSize(44, 36));
    QCOMPARE(layout.minimumSize(), QSize(8, 9));
}

void TestAspectLayout::widget_has_the_layout_without_margins()
{
    QWidget parent;
    AspectWidget widget(&parent, QSize(160, 90), QSize(16, 9), Qt::AlignLeft | Qt::AlignTop);
    QCOMPARE(widget.parentWidget(), &parent);
    QCOMPARE(widget.layout(), widget.aspect_layout());
    QCOMPARE(widget.layout()->contentsMargins(), QMargins());
    QCOMPARE(widget.minimumSize(), QSize(160, 90));
    QCOMPARE(widget.aspect_layout()->item_size(QSize(200, 90)), QSize(201, 90));
}

void TestAspectLayout::widget_places_its_child_by_its_flags_data()
{
    QTest::addColumn<int>("flags");
    QTest::addColumn<QPoint>("at");
    QTest::newRow("left, top") << int(Qt::AlignLeft | Qt::AlignTop) << QPoint(0, 0);
    QTest::newRow("right, bottom") << int(Qt::AlignRight | Qt::AlignBottom) << QPoint(4, 6);
    QTest::newRow("unless told") << -1 << QPoint(2, 3);
}

void TestAspectLayout::widget_places_its_child_by_its_flags()
{
    QFETCH(int, flags);
    QFETCH(QPoint, at);
    QSize const ratio(16, 9);
    AspectWidget const widget = flags < 0
        ? AspectWidget(nullptr, QSize(), ratio)
        : AspectWidget(nullptr, QSize(), ratio, Qt::Alignment(flags));
    auto *item = new PlacedItem;
    widget.layout()->addItem(item);
    // Only margins leave room to stand elsewhere.
    widget.layout()->setContentsMargins(1, 2, 3, 4);
    widget.layout()->setGeometry(QRect(0, 0, 164, 96));
    QCOMPARE(item->placed, QRect(at, QSize(160, 90)));
}

void TestAspectLayout::child_of_a_widget_is_placed()
{
    AspectWidget widget(nullptr, QSize(16, 9), QSize(16, 9));
    auto *child = new QWidget;
    widget.layout()->addWidget(child);
    QCOMPARE(child->parentWidget(), &widget);
    widget.resize(320, 90);
    widget.show();
    QVERIFY(QTest::qWaitForWindowExposed(&widget, patience_ms));
    QCOMPARE(child->geometry(), QRect(0, 0, 321, 90));
    widget.resize(160, 190);
    QTRY_COMPARE(child->geometry(), QRect(0, 0, 160, 190));
    delete child;
    QCOMPARE(widget.layout()->count(), 0);
}

QTEST_MAIN(TestAspectLayout)
#include "tst_aspect_layout.moc"
