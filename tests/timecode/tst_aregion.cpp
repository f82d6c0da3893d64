// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/timecode/aregion.h"
#include "tests/support/assert_log.h"
#include "tests/timecode/standard_numbers.h"

#include <QTest>
#include <climits>
#include <cstring>
#include <vector>

using namespace Corvane;

namespace QTest {

template <> inline char *toString(ASize const &size)
{
    return qstrdup(qPrintable(QStringLiteral("%1 x %2").arg(size.w).arg(size.h)));
}
template <> inline char *toString(APoint const &point)
{
    return qstrdup(qPrintable(QStringLiteral("(%1, %2)").arg(point.x).arg(point.y)));
}
template <> inline char *toString(ARegion const &r)
{
    return qstrdup(qPrintable(
        QStringLiteral("%1 x %2 at (%3, %4)").arg(r.w()).arg(r.h()).arg(r.x()).arg(r.y())));
}

} // namespace QTest

namespace {

struct SomePicture
{
    ASize get_size() const { return {40, 30}; }
};

/// How often each pixel of a 12 by 12 board is in one of the regions.
std::vector<int> painted(QList<ARegion> const &regions)
{
    std::vector<int> board(144);
    for (ARegion const &r : regions) {
        for (int y = r.y(); y < r.next_y(); ++y) {
            for (int x = r.x(); x < r.next_x(); ++x)
                ++board[static_cast<std::size_t>(y * 12 + x)];
        }
    }
    return board;
}

} // namespace

class TestARegion : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void defaults_are_all_zeros();
    void sizes_come_from_the_resolution_table_data();
    void sizes_come_from_the_resolution_table();
    void resolution_of_a_size_is_the_first_that_fits_data();
    void resolution_of_a_size_is_the_first_that_fits();
    void area_is_counted_in_64_bits();
    void empty_is_without_width_or_height();
    void pixel_number_counts_line_by_line();
    void pixel_outside_is_an_assertion_and_gives_0();
    void sizes_multiply_and_divide_by_components();
    void division_by_0_is_an_assertion();
    void reducing_stops_at_0();
    void fields_of_a_size_data();
    void fields_of_a_size();
    void points_move_and_add();
    void sums_beyond_32_bits_wrap();
    void regions_are_made_from_all_forms();
    void edges_and_corners();
    void second_half_gets_the_extra_pixel();
    void quarters_are_halves_taken_in_turn();
    void removing_lines_stops_at_0();
    void whole_frames_and_fields_stand_at_0();
    void intersection_is_the_overlap_data();
    void intersection_is_the_overlap();
    void contains_what_the_intersection_equals();
    void difference_covers_exactly_the_rest();
    void difference_without_overlap_is_the_region();
};

void TestARegion::defaults_are_all_zeros()
{
    QCOMPARE(ASize(), ASize(0, 0));
    QCOMPARE(APoint(), APoint(0, 0));
    QCOMPARE(ARegion(), ARegion(0, 0, 0u, 0u));
}

void TestARegion::sizes_come_from_the_resolution_table_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("standard_value"); // one that has the resolution
    QTest::addColumn<int>("w");
    QTest::addColumn<int>("frame_h");
    QTest::addColumn<int>("field_h");
    QTest::newRow("4K") << 1 << 1 << 3840 << 2160 << 2160;
    QTest::newRow("1080p") << 2 << 16 << 1920 << 1080 << 1080;
    QTest::newRow("1080i") << 3 << 18 << 1920 << 1080 << 540;
    QTest::newRow("1080psf") << 4 << 17 << 1920 << 1080 << 540;
    QTest::newRow("720p") << 5 << 24 << 1280 << 720 << 720;
    QTest::newRow("625i") << 6 << 25 << 720 << 576 << 288;
    QTest::newRow("525i") << 7 << 26 << 720 << 486 << 243;
    QTest::newRow("invalid") << 0 << 27 << 0 << 0 << 0;
}

void TestARegion::sizes_come_from_the_resolution_table()
{
    QFETCH(int, value);
    QFETCH(int, standard_value);
    QFETCH(int, w);
    QFETCH(int, frame_h);
    QFETCH(int, field_h);
    ASize const frame{unsigned(w), unsigned(frame_h)};
    ASize const field{unsigned(w), unsigned(field_h)};
    QCOMPARE(ASize::frame_size(resolution(value)), frame);
    QCOMPARE(ASize::frame_size(standard(standard_value)), frame);
    QCOMPARE(ASize::field_size(resolution(value)), field);
    QCOMPARE(ASize::field_size(standard(standard_value)), field);
    QCOMPARE(ARegion::frame_region(standard(standard_value)), ARegion(frame));
    QCOMPARE(ARegion::field_region(standard(standard_value)), ARegion(field));
}

void TestARegion::resolution_of_a_size_is_the_first_that_fits_data()
{
    QTest::addColumn<int>("w");
    QTest::addColumn<int>("h");
    QTest::addColumn<int>("value");
    QTest::newRow("525i") << 720 << 486 << 7;
    QTest::newRow("625i") << 720 << 576 << 6;
    QTest::newRow("1080: p, never i or psf") << 1920 << 1080 << 2;
    QTest::newRow("720p") << 1280 << 720 << 5;
    QTest::newRow("4K") << 3840 << 2160 << 1;
    QTest::newRow("a field") << 1920 << 540 << 0;
    QTest::newRow("nothing") << 0 << 0 << 0;
}

void TestARegion::resolution_of_a_size_is_the_first_that_fits()
{
    QFETCH(int, w);
    QFETCH(int, h);
    QFETCH(int, value);
    QCOMPARE(number(ASize(unsigned(w), unsigned(h)).toVideoResolution()), value);
}

void TestARegion::area_is_counted_in_64_bits()
{
    QCOMPARE(ASize(1920, 1080).area(), 2073600ull);
    QCOMPARE(ASize(UINT_MAX, UINT_MAX).pixel_count(), 18446744065119617025ull);
}

void TestARegion::empty_is_without_width_or_height()
{
    QVERIFY(ASize(0, 5).is_empty());
    QVERIFY(ASize(5, 0).is_empty());
    QVERIFY(!ASize(1, 1).is_empty());
    QVERIFY(ARegion(3, 3, 0u, 5u).is_empty());
}

void TestARegion::pixel_number_counts_line_by_line()
{
    QCOMPARE(ASize(720, 486).pixel_number(0, 0), 0ull);
    QCOMPARE(ASize(720, 486).pixel_number(7, 2), 1447ull);
    QCOMPARE(ASize(720, 486).pixel_number(719, 485), 349919ull);
}

void TestARegion::pixel_outside_is_an_assertion_and_gives_0()
{
    AssertLog log;
    int const outside[][2] = {{-1, 0}, {0, -1}, {720, 0}, {0, 486}, {INT_MIN, INT_MAX}};
    for (auto const &at : outside) {
        QCOMPARE(ASize(720, 486).pixel_number(at[0], at[1]), 0ull);
        QCOMPARE(log.take().size(), 1);
    }
    QCOMPARE(ASize().pixel_number(0, 0), 0ull);
    QCOMPARE(log.take().size(), 1);
}

void TestARegion::sizes_multiply_and_divide_by_components()
{
    QCOMPARE(ASize(3, 4) * ASize(5, 6), ASize(15, 24));
    QCOMPARE(ASize(3, 4) * 5u, ASize(15, 20));
    QCOMPARE(ASize(15, 20) / 4u, ASize(3, 5));
    QCOMPARE(ASize(3, 9).intersect(ASize(7, 4)), ASize(3, 4));
}

void TestARegion::division_by_0_is_an_assertion()
{
    AssertLog log;
    QCOMPARE(ASize(15, 20) / 0u, ASize());
    QCOMPARE(log.take().size(), 1);
}

void TestARegion::reducing_stops_at_0()
{
    QCOMPARE(ASize(15, 20).reduce_w(14), ASize(1, 20));
    QCOMPARE(ASize(15, 20).reduce_w(16), ASize(0, 20));
    QCOMPARE(ASize(15, 20).reduce_h(20), ASize(15, 0));
    QCOMPARE(ASize(15, 20).reduce_h(UINT_MAX), ASize(15, 0));
}

void TestARegion::fields_of_a_size_data()
{
    QTest::addColumn<int>("w");
    QTest::addColumn<int>("h");
    QTest::addColumn<int>("value"); // -1: none given
    QTest::addColumn<int>("field1");
    QTest::addColumn<int>("field2");
    QTest::newRow("625i") << 720 << 576 << 6 << 288 << 288;
    QTest::newRow("625i, odd") << 720 << 577 << 6 << 288 << 289;
    QTest::newRow("525i, odd") << 720 << 487 << 7 << 244 << 243;
    QTest::newRow("1080i, odd") << 1920 << 1081 << 3 << 541 << 540;
    QTest::newRow("1080psf") << 1920 << 1080 << 4 << 540 << 540;
    QTest::newRow("4K") << 3840 << 2160 << 1 << 2160 << 2160;
    QTest::newRow("1080p") << 1920 << 1081 << 2 << 1081 << 1081;
    QTest::newRow("720p") << 1280 << 720 << 5 << 720 << 720;
    QTest::newRow("invalid, odd") << 10 << 11 << 0 << 6 << 5;
    QTest::newRow("highest") << 1 << -1 << 7 << INT_MIN << INT_MAX;
    QTest::newRow("by its size, 525i") << 720 << 486 << -1 << 243 << 243;
    QTest::newRow("by its size, 1080: progressive") << 1920 << 1080 << -1 << 1080 << 1080;
    QTest::newRow("by its size, none") << 10 << 11 << -1 << 6 << 5;
}

void TestARegion::fields_of_a_size()
{
    QFETCH(int, w);
    QFETCH(int, h);
    QFETCH(int, value);
    QFETCH(int, field1);
    QFETCH(int, field2);
    ASize const size{unsigned(w), unsigned(h)};
    ASize const first{unsigned(w), unsigned(field1)};
    ASize const second{unsigned(w), unsigned(field2)};
    if (value < 0) {
        QCOMPARE(size.deinterlace_field1(), first);
        QCOMPARE(size.deinterlace_field2(), second);
        return;
    }
    QCOMPARE(size.deinterlace_field1(resolution(value)), first);
    QCOMPARE(size.deinterlace_field2(resolution(value)), second);
    for (int n = 0; n <= 26; ++n) {
        if (toVideoResolution(standard(n)) != resolution(value))
            continue;
        QCOMPARE(size.deinterlace_field1(standard(n)), first);
        QCOMPARE(size.deinterlace_field2(standard(n)), second);
    }
    QCOMPARE(size.deinterlace_top().h + size.deinterlace_bottom().h, size.h);
    QVERIFY(size.deinterlace_top().h - size.deinterlace_bottom().h <= 1);
}

void TestARegion::points_move_and_add()
{
    APoint const p(3, -4);
    QCOMPARE(p.move(1, 2), APoint(4, -2));
    QCOMPARE(p.move_x(-5), APoint(-2, -4));
    QCOMPARE(p.move_y(5), APoint(3, 1));
    QCOMPARE(p.moveto_x(9), APoint(9, -4));
    QCOMPARE(p.moveto_y(9), APoint(3, 9));
    QCOMPARE(p + APoint(1, 1), APoint(4, -3));
    QCOMPARE(p + ASize(10, 20), APoint(13, 16));
    QCOMPARE(p - APoint(1, 1), APoint(2, -5));
    QCOMPARE(p - ASize(10, 20), APoint(-7, -24));
    QVERIFY(!(p == APoint(3, 4)) && !(p == APoint(4, -4)));
    QCOMPARE(APoint(ARegion(7, 8, 1u, 1u)), APoint(7, 8));
}

void TestARegion::sums_beyond_32_bits_wrap()
{
    QCOMPARE(APoint(INT_MAX, INT_MIN).move(1, -1), APoint(INT_MIN, INT_MAX));
    QCOMPARE(APoint(0, 0) - APoint(INT_MIN, 0), APoint(INT_MIN, 0));
    QCOMPARE(ARegion(INT_MAX, 0, 2u, 2u).last_x(), INT_MIN);
    QCOMPARE(ARegion(0, 0, 0u, 0u).last_x(), -1);
}

void TestARegion::regions_are_made_from_all_forms()
{
    ARegion const expected(1, 2, 3u, 4u);
    QCOMPARE(ARegion(APoint(1, 2), ASize(3, 4)), expected);
    QCOMPARE(ARegion(APoint(1, 2), 3, 4), expected);
    QCOMPARE(ARegion(1, 2, ASize(3, 4)), expected);
    QCOMPARE(ARegion(ASize(3, 4)), ARegion(0, 0, 3u, 4u));
    QCOMPARE(ARegion(SomePicture()), ARegion(0, 0, 40u, 30u));
    QCOMPARE(ARegion(30, 20, 20u, 20u).intersect(SomePicture()), ARegion(30, 20, 10u, 10u));
    QCOMPARE(expected.size(), ASize(3, 4));
    QCOMPARE(expected.pixel_count(), 12ull);
    QVERIFY(!(expected == ARegion(1, 2, 3u, 5u)) && !(expected == ARegion(1, 3, 3u, 4u)));
}

void TestARegion::edges_and_corners()
{
    ARegion const r(10, 20, 5u, 7u);
    QCOMPARE(r.last_x(), 14);
    QCOMPARE(r.last_y(), 26);
    QCOMPARE(r.next_x(), 15);
    QCOMPARE(r.next_y(), 27);
    QCOMPARE(r.pt_ul(), APoint(10, 20));
    QCOMPARE(r.pt_ur(), APoint(14, 20));
    QCOMPARE(r.pt_ll(), APoint(10, 26));
    QCOMPARE(r.pt_lr(), APoint(14, 26));
}

void TestARegion::second_half_gets_the_extra_pixel()
{
    ARegion const r(10, 20, 5u, 7u);
    QCOMPARE(r.left_half(), ARegion(10, 20, 2u, 7u));
    QCOMPARE(r.right_half(), ARegion(12, 20, 3u, 7u));
    QCOMPARE(r.top_half(), ARegion(10, 20, 5u, 3u));
    QCOMPARE(r.bottom_half(), ARegion(10, 23, 5u, 4u));
}

void TestARegion::quarters_are_halves_taken_in_turn()
{
    ARegion const r(10, 20, 5u, 7u);
    QCOMPARE(r.ul_quarter(), ARegion(10, 20, 2u, 3u));
    QCOMPARE(r.ur_quarter(), ARegion(12, 20, 3u, 3u));
    QCOMPARE(r.ll_quarter(), ARegion(10, 23, 2u, 4u));
    QCOMPARE(r.lr_quarter(), ARegion(12, 23, 3u, 4u));
}

void TestARegion::removing_lines_stops_at_0()
{
    ARegion const r(10, 20, 5u, 7u);
    QCOMPARE(r.remove_top(2), ARegion(10, 22, 5u, 5u));
    QCOMPARE(r.remove_top(9), ARegion(10, 27, 5u, 0u));
    QCOMPARE(r.remove_bottom(2), ARegion(10, 20, 5u, 5u));
    QCOMPARE(r.remove_bottom(9), ARegion(10, 20, 5u, 0u));
}

void TestARegion::whole_frames_and_fields_stand_at_0()
{
    QCOMPARE(ARegion::frame_region(resolution(3)), ARegion(0, 0, 1920u, 1080u));
    QCOMPARE(ARegion::field_region(resolution(3)), ARegion(0, 0, 1920u, 540u));
    QCOMPARE(ARegion::frame_region(resolution(0)), ARegion());
}

void TestARegion::intersection_is_the_overlap_data()
{
    QTest::addColumn<ARegion>("a");
    QTest::addColumn<ARegion>("b");
    QTest::addColumn<ARegion>("overlap");
    QTest::newRow("corner") << ARegion(0, 0, 4u, 4u) << ARegion(2, 3, 4u, 4u)
                            << ARegion(2, 3, 2u, 1u);
    QTest::newRow("inside") << ARegion(0, 0, 9u, 9u) << ARegion(2, 3, 4u, 4u)
                            << ARegion(2, 3, 4u, 4u);
    QTest::newRow("negative") << ARegion(-5, -5, 9u, 9u) << ARegion(0, 0, 9u, 9u)
                              << ARegion(0, 0, 4u, 4u);
    QTest::newRow("beside") << ARegion(3, 3, 4u, 4u) << ARegion(7, 3, 4u, 4u)
                            << ARegion(0, 0, 0u, 0u);
    QTest::newRow("below") << ARegion(3, 3, 4u, 4u) << ARegion(3, 7, 4u, 4u)
                           << ARegion(0, 0, 0u, 0u);
    QTest::newRow("empty") << ARegion(3, 3, 4u, 4u) << ARegion(4, 4, 0u, 2u)
                           << ARegion(0, 0, 0u, 0u);
    QTest::newRow("far") << ARegion(INT_MIN, 0, unsigned(INT_MAX), 1u)
                         << ARegion(INT_MAX, 0, 1u, 1u) << ARegion(0, 0, 0u, 0u);
}

void TestARegion::intersection_is_the_overlap()
{
    QFETCH(ARegion, a);
    QFETCH(ARegion, b);
    QFETCH(ARegion, overlap);
    QCOMPARE(a.intersect(b), overlap);
    QCOMPARE(b.intersect(a), overlap);
}

void TestARegion::contains_what_the_intersection_equals()
{
    ARegion const r(10, 10, 10u, 10u);
    QVERIFY(r.contains(r));
    QVERIFY(r.contains(ARegion(12, 12, 8u, 8u)));
    QVERIFY(!r.contains(ARegion(12, 12, 9u, 8u)));
    QVERIFY(!r.contains(ARegion(9, 12, 2u, 2u)));
    QVERIFY(!r.contains(ARegion(12, 12, 0u, 0u)));
    QVERIFY(r.contains(ARegion()));
}

void TestARegion::difference_covers_exactly_the_rest()
{
    ARegion const r(3, 4, 5u, 4u);
    std::vector<int> const whole = painted({r});
    for (int x = 0; x <= 9; ++x) {
        for (int y = 0; y <= 9; ++y) {
            for (unsigned w = 0; w <= unsigned(12 - x); ++w) {
                for (unsigned h = 0; h <= unsigned(12 - y); ++h) {
                    ARegion const hole(x, y, w, h);
                    QList<ARegion> const rest = r - hole;
                    QVERIFY(rest.size() <= 4);
                    std::vector<int> const board = painted(rest);
                    std::vector<int> const taken = painted({r.intersect(hole)});
                    for (std::size_t i = 0; i < board.size(); ++i) {
                        if (board[i] != whole[i] - taken[i])
                            QFAIL(qPrintable(QStringLiteral("hole %1").arg(
                                QString::fromLatin1(QTest::toString(hole)))));
                    }
                }
            }
        }
    }
    QVERIFY((r - r).isEmpty());
    QCOMPARE((r - ARegion(5, 5, 1u, 1u)).size(), 4);
}

void TestARegion::difference_without_overlap_is_the_region()
{
    ARegion const r(3, 4, 5u, 4u);
    QCOMPARE(r - ARegion(8, 4, 5u, 4u), QList<ARegion>{r});
    QCOMPARE(r - ARegion(), QList<ARegion>{r});
    ARegion const empty(3, 4, 0u, 4u);
    QCOMPARE(empty - r, QList<ARegion>{empty});
}

QTEST_GUILESS_MAIN(TestARegion)
#include "tst_aregion.moc"
