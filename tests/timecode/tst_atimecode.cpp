// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/timecode/atimecode.h"
#include "tests/support/assert_log.h"
#include "tests/support/astring_make.h"
#include "tests/support/astring_print.h"
#include "tests/timecode/standard_numbers.h"

#include <QTest>
#include <climits>
#include <type_traits>

using namespace Corvane;

// A value that owns nothing: whatever is done to it allocates nothing.
static_assert(std::is_trivially_copyable_v<ATimecode>);

namespace {

VideoFrequency const hz60 = VideoFrequency::v60;
VideoFrequency const hz59_94 = VideoFrequency::v59_94;
VideoFrequency const hz50 = VideoFrequency::v50;
VideoFrequency const hz29_97 = VideoFrequency::v29_97;
VideoFrequency const hz25 = VideoFrequency::v25;

ATimecode fields(unsigned int n)
{
    return ATimecode(hz25, n, 1);
}

ATimecode clock(unsigned int hours, unsigned int minutes)
{
    return ATimecode(hz25, hours, minutes, 0, 0, false);
}

constexpr unsigned int day25 = 2160000;

/// "1+02:03:04:05 F2", by its components.
QString shown(ATimecode const &t)
{
    return QStringLiteral("%1+%2:%3:%4:%5 F%6")
        .arg(t.get_days())
        .arg(t.get_hours())
        .arg(t.get_minutes())
        .arg(t.get_seconds())
        .arg(t.get_frames())
        .arg(t.get_f2() ? 2 : 1);
}

} // namespace

class TestATimecode : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void default_is_undefined();
    void invalid_frequency_or_flag_gives_undefined();
    void default_flag_is_that_of_the_frequency();
    void count_of_source_fields_is_divided_by_the_speed();
    void speed_of_0_is_an_assertion_and_gives_undefined();
    void set_stores_the_count_unchanged();
    void set_nfields_leaves_the_rest();
    void components_give_a_count_data();
    void components_give_a_count();
    void breakdown_at_59_94_is_exact_data();
    void breakdown_at_59_94_is_exact();
    void breakdown_at_29_97_keeps_the_offset_of_59_94_data();
    void breakdown_at_29_97_keeps_the_offset_of_59_94();
    void breakdown_looks_at_the_flag_alone();
    void flag_changes_only_where_there_is_dropframe();
    void changing_the_flag_breaks_down_anew();
    void f2_is_the_lowest_bit_where_a_frame_is_two_fields();
    void forcing_a_field_stays_within_the_frame();
    void forcing_f2_counts_on_where_a_field_is_a_frame();
    void forcing_f2_counts_on_while_undefined();
    void arithmetic_with_undefined_is_undefined();
    void sum_keeps_the_rate_of_the_left_side();
    void difference_stops_at_0();
    void increment_goes_one_field_on();
    void adding_with_wrap_comes_back_into_the_day_data();
    void adding_with_wrap_comes_back_into_the_day();
    void subtracting_with_wrap_goes_on_from_the_end_of_the_day_data();
    void subtracting_with_wrap_goes_on_from_the_end_of_the_day();
    void wrap24_takes_the_days_off();
    void get24_is_a_wrapped_copy();
    void t24_is_one_day_at_a_speed_of_1();
    void comparison_is_by_the_count_alone();
    void undefined_is_greater_than_all_others();
    void cmp24_takes_the_shorter_way_data();
    void cmp24_takes_the_shorter_way();
    void cmp24_with_undefined_is_cmp();
    void range_has_its_start_and_not_its_end();
    void range24_may_cross_midnight_data();
    void range24_may_cross_midnight();
    void range24_needs_the_first_day_and_defined_arguments();
    void components_of_undefined_are_0();
};

void TestATimecode::default_is_undefined()
{
    ATimecode const t;
    QVERIFY(t.is_undefined());
    QVERIFY(!t.is_defined());
    QVERIFY(!t.is_df());
    QVERIFY(!t.is_ndf());
    QCOMPARE(number(t.get_std()), 0);
    QCOMPARE(number(t.get_df()), 0);
    QCOMPARE(t.get_nfields(), 0u);
    QCOMPARE(t.get_ssm_speed(), 1u);
}

void TestATimecode::invalid_frequency_or_flag_gives_undefined()
{
    for (int n : {-1, 0, 11}) {
        QVERIFY(ATimecode(frequency(n), 5, 1).is_undefined());
        QVERIFY(ATimecode(frequency(n), flag(1), 5, 1).is_undefined());
        QVERIFY(ATimecode(frequency(n), 1, 2, 3, 4, false).is_undefined());
        QVERIFY(ATimecode(frequency(n), flag(2), 1, 2, 3, 4, false).is_undefined());
        QVERIFY(ATimecode(frequency(n), "1:2:3:4"_a).is_undefined());
        QVERIFY(ATimecode(frequency(n), flag(2), "1:2:3:4"_a).is_undefined());
        ATimecode t = fields(7);
        t.set(frequency(n), 5, 1);
        QVERIFY(t.is_undefined());
        t = fields(7);
        t.set(frequency(n), flag(1), 5, 1);
        QVERIFY(t.is_undefined());
        QCOMPARE(t.get_nfields(), 0u);
    }
    for (int n : {-1, 0, 3}) {
        for (int f : {2, 8}) {
            QVERIFY(ATimecode(frequency(f), flag(n), 5, 1).is_undefined());
            QVERIFY(ATimecode(frequency(f), flag(n), 1, 2, 3, 4, false).is_undefined());
            QVERIFY(ATimecode(frequency(f), flag(n), "1:2:3:4"_a).is_undefined());
            ATimecode t = fields(7);
            t.set(frequency(f), flag(n), 5, 1);
            QVERIFY(t.is_undefined());
        }
    }
}

void TestATimecode::default_flag_is_that_of_the_frequency()
{
    for (int n = 1; n <= 10; ++n) {
        bool const dropframe = n == 2 || n == 7;
        ATimecode t(frequency(n), 5, 1);
        QCOMPARE(t.is_df(), dropframe);
        QCOMPARE(t.is_ndf(), !dropframe);
        QCOMPARE(ATimecode(frequency(n), 1, 2, 3, 4, false).is_df(), dropframe);
        QCOMPARE(ATimecode(frequency(n), "1:2:3:4"_a).is_df(), dropframe);
        t.set(frequency(n), 5, 1);
        QCOMPARE(t.is_df(), dropframe);
        QCOMPARE(number(t.get_std()), n);
    }
}

void TestATimecode::count_of_source_fields_is_divided_by_the_speed()
{
    ATimecode const t(hz50, 301, 3);
    QCOMPARE(t.get_nfields(), 100u);
    QCOMPARE(t.get_ssm_speed(), 3u);
    QCOMPARE(ATimecode(hz59_94, flag(2), UINT_MAX, 2).get_nfields(), UINT_MAX / 2);
    QCOMPARE(ATimecode(hz50, UINT_MAX, 1).get_nfields(), UINT_MAX);
}

void TestATimecode::speed_of_0_is_an_assertion_and_gives_undefined()
{
    AssertLog log;
    QVERIFY(ATimecode(hz50, 300, 0).is_undefined());
    QVERIFY(ATimecode(hz59_94, flag(1), 300, 0).is_undefined());
    QCOMPARE(log.take().size(), 2);
}

void TestATimecode::set_stores_the_count_unchanged()
{
    ATimecode t;
    t.set(hz50, 301, 3);
    QCOMPARE(t.get_nfields(), 301u);
    QCOMPARE(t.get_ssm_speed(), 3u);
    t.set(hz59_94, flag(2), 302, 8);
    QCOMPARE(t.get_nfields(), 302u);
    QVERIFY(t.is_ndf());
    t.set_undefined();
    QVERIFY(t.is_undefined());
}

void TestATimecode::set_nfields_leaves_the_rest()
{
    ATimecode t(hz59_94, flag(2), 3, 3);
    QCOMPARE(shown(t), QStringLiteral("0+0:0:0:0 F2"));
    t.set_nfields(3600);
    QCOMPARE(shown(t), QStringLiteral("0+0:1:0:0 F1"));
    QVERIFY(t.is_ndf());
    QCOMPARE(number(t.get_std()), 2);
    QCOMPARE(t.get_ssm_speed(), 3u);
    t.set_ssm_speed(4);
    QCOMPARE(t.get_ssm_speed(), 4u);
    QCOMPARE(t.get_nfields(), 3600u);
    ATimecode none;
    none.set_nfields(7);
    QVERIFY(none.is_undefined());
    QCOMPARE(none.get_nfields(), 7u);
}

void TestATimecode::components_give_a_count_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("flag_value"); // 0: the default one
    QTest::addColumn<QList<unsigned>>("at");
    QTest::addColumn<bool>("f2");
    QTest::addColumn<unsigned>("count");
    auto const row = [](int value, int flag_value, QList<unsigned> const &at, bool f2,
                         unsigned count) {
        QTest::addRow("%d %d %u:%u:%u:%u %d", value, flag_value, at[0], at[1], at[2], at[3], f2)
            << value << flag_value << at << f2 << count;
    };
    row(2, 0, {0, 1, 0, 2}, false, 3600);
    row(2, 0, {0, 0, 59, 29}, true, 3599);
    row(2, 0, {0, 10, 0, 0}, false, 35964);
    row(2, 0, {1, 0, 0, 0}, false, 215784);
    row(2, 2, {0, 1, 0, 2}, false, 3604);
    row(7, 0, {0, 1, 0, 4}, false, 1802);
    row(7, 2, {0, 1, 0, 4}, true, 1804);
    row(8, 0, {1, 2, 3, 4}, true, 93079);
    row(3, 1, {0, 1, 0, 0}, true, 3001);
    row(1, 0, {23, 59, 59, 29}, true, 5183999);
}

void TestATimecode::components_give_a_count()
{
    QFETCH(int, value);
    QFETCH(int, flag_value);
    QFETCH(QList<unsigned>, at);
    QFETCH(bool, f2);
    QFETCH(unsigned, count);
    VideoFrequency const f = frequency(value);
    ATimecode const t = flag_value == 0
        ? ATimecode(f, at[0], at[1], at[2], at[3], f2)
        : ATimecode(f, flag(flag_value), at[0], at[1], at[2], at[3], f2);
    QCOMPARE(t.get_nfields(), count);
    QCOMPARE(t.get_ssm_speed(), 1u);
}

void TestATimecode::breakdown_at_59_94_is_exact_data()
{
    QTest::addColumn<unsigned>("count");
    QTest::addColumn<QString>("expected");
    auto const row = [](unsigned count, char const *expected) {
        QTest::addRow("%u", count) << count << QString::fromLatin1(expected);
    };
    row(0, "0+0:0:0:0 F1");
    row(3599, "0+0:0:59:29 F2");
    row(3600, "0+0:1:0:2 F1");
    row(7195, "0+0:1:59:29 F2");
    row(7196, "0+0:2:0:2 F1");
    row(35963, "0+0:9:59:29 F2");
    row(35964, "0+0:10:0:0 F1");
    row(35967, "0+0:10:0:1 F2");
    row(215784, "0+1:0:0:0 F1");
    row(5178815, "0+23:59:59:29 F2");
    row(5178816, "1+0:0:0:0 F1");
    row(UINT_MAX, "829+8:0:42:19 F2");
}

void TestATimecode::breakdown_at_59_94_is_exact()
{
    QFETCH(unsigned, count);
    QFETCH(QString, expected);
    QCOMPARE(shown(ATimecode(hz59_94, count, 1)), expected);
}

void TestATimecode::breakdown_at_29_97_keeps_the_offset_of_59_94_data()
{
    QTest::addColumn<unsigned>("count");
    QTest::addColumn<QString>("expected");
    auto const row = [](unsigned count, char const *expected) {
        QTest::addRow("%u", count) << count << QString::fromLatin1(expected);
    };
    row(1799, "0+0:0:59:29 F1");
    row(1800, "0+0:0:60:0 F1");
    row(1801, "0+0:0:60:1 F1");
    row(1802, "0+0:1:0:4 F1");
    row(3599, "0+0:1:60:1 F1");
    row(3600, "0+0:2:0:4 F1");
    row(17981, "0+0:9:59:29 F1");
    row(17982, "0+0:10:0:0 F1");
    row(107892, "0+1:0:0:0 F1");
    row(2589408, "1+0:0:0:0 F1");
}

void TestATimecode::breakdown_at_29_97_keeps_the_offset_of_59_94()
{
    QFETCH(unsigned, count);
    QFETCH(QString, expected);
    QCOMPARE(shown(ATimecode(hz29_97, count, 1)), expected);
}

void TestATimecode::breakdown_looks_at_the_flag_alone()
{
    // 50 Hz has no dropframe: the flag stays all the same, and 4 fields are counted as left out.
    ATimecode t(hz50, flag(1), 3000, 1);
    QVERIFY(t.is_df());
    QCOMPARE(shown(t), QStringLiteral("0+0:0:60:0 F1"));
    t.set_nfields(3003);
    QCOMPARE(shown(t), QStringLiteral("0+0:0:60:1 F2"));
    t.set_nfields(3004);
    QCOMPARE(shown(t), QStringLiteral("0+0:1:0:2 F1"));
    QCOMPARE(t.toString(4), "00.01.00.02"_a);
    // From components and from a count it stays; text is read as non-dropframe.
    QVERIFY(ATimecode(hz50, flag(1), 0, 1, 0, 0, false).is_df());
    t.set(hz50, flag(1), 3000, 1);
    QVERIFY(t.is_df());
    QVERIFY(ATimecode(hz50, flag(1), "0:1:0:0"_a).is_ndf());
}

void TestATimecode::flag_changes_only_where_there_is_dropframe()
{
    for (int n = 1; n <= 10; ++n) {
        bool const may = n == 2 || n == 7;
        ATimecode t(frequency(n), flag(2), 5, 1);
        t.set_df();
        QCOMPARE(t.is_df(), may);
        t.set_ndf();
        QVERIFY(t.is_ndf());
        t.set_df(flag(1));
        QCOMPARE(t.is_df(), may);
        t.set_df(flag(2));
        QVERIFY(t.is_ndf());
        t = ATimecode(frequency(n), flag(1), 5, 1);
        t.set_ndf();
        QCOMPARE(t.is_df(), !may);
        t.set_df(flag(2));
        QCOMPARE(t.is_df(), !may);
    }
    ATimecode t(hz59_94, 5, 1);
    for (int n : {-1, 0, 3}) {
        t.set_df(flag(n));
        QVERIFY(t.is_df());
    }
    ATimecode none;
    none.set_df();
    QCOMPARE(number(none.get_df()), 0);
}

void TestATimecode::changing_the_flag_breaks_down_anew()
{
    ATimecode t(hz59_94, 3600, 1);
    QCOMPARE(shown(t), QStringLiteral("0+0:1:0:2 F1"));
    t.set_ndf();
    QCOMPARE(shown(t), QStringLiteral("0+0:1:0:0 F1"));
    t.set_df();
    QCOMPARE(shown(t), QStringLiteral("0+0:1:0:2 F1"));
}

void TestATimecode::f2_is_the_lowest_bit_where_a_frame_is_two_fields()
{
    for (int n = 1; n <= 10; ++n) {
        for (unsigned int count : {0u, 1u, 24u, 25u, 3600u, 3601u, UINT_MAX}) {
            ATimecode const t(frequency(n), count, 1);
            bool const expected = n <= 5 && count % 2 != 0;
            QCOMPARE(t.get_f2(), expected);
            t.get_days();
            QCOMPARE(t.get_f2(), expected);
        }
    }
    QVERIFY(!ATimecode().get_f2());
}

void TestATimecode::forcing_a_field_stays_within_the_frame()
{
    for (bool broken_down : {false, true}) {
        ATimecode t(hz59_94, 3601, 1);
        auto const look = [&t, broken_down] { return broken_down ? t.get_frames() : 2u; };
        QCOMPARE(look(), 2u);
        t.force_f2();
        QCOMPARE(t.get_nfields(), 3601u);
        t.force_f1();
        QCOMPARE(t.get_nfields(), 3600u);
        QVERIFY(!t.get_f2());
        QCOMPARE(look(), 2u);
        t.force_f1();
        QCOMPARE(t.get_nfields(), 3600u);
        t.force_f2();
        QCOMPARE(t.get_nfields(), 3601u);
        QVERIFY(t.get_f2());
        t.force_field(false);
        QCOMPARE(t.get_nfields(), 3600u);
        t.force_field(true);
        t.force_field(true);
        QCOMPARE(t.get_nfields(), 3601u);
        QCOMPARE(shown(t), QStringLiteral("0+0:1:0:2 F2"));
    }
}

void TestATimecode::forcing_f2_counts_on_where_a_field_is_a_frame()
{
    for (bool broken_down : {false, true}) {
        ATimecode t = fields(10);
        if (broken_down)
            QCOMPARE(t.get_frames(), 10u);
        t.force_f2();
        t.force_f2();
        QCOMPARE(t.get_nfields(), 12u);
        QVERIFY(!t.get_f2());
        t.force_f1();
        QCOMPARE(t.get_nfields(), 12u);
        // What was broken down before stays, as the count is taken to be in the same frame.
        QCOMPARE(t.get_frames(), broken_down ? 10u : 12u);
    }
}

void TestATimecode::forcing_f2_counts_on_while_undefined()
{
    for (bool broken_down : {false, true}) {
        ATimecode t;
        if (broken_down)
            QCOMPARE(t.get_frames(), 0u);
        t.force_f2();
        t.force_f2();
        QCOMPARE(t.get_nfields(), 2u);
        t.force_f1();
        QCOMPARE(t.get_nfields(), 2u);
        QVERIFY(t.is_undefined());
        QVERIFY(!t.get_f2());
    }
}

void TestATimecode::arithmetic_with_undefined_is_undefined()
{
    ATimecode const none;
    ATimecode const some = fields(7);
    QVERIFY((none + some).is_undefined());
    QVERIFY((some + none).is_undefined());
    QVERIFY((none + 5u).is_undefined());
    QVERIFY((none - some).is_undefined());
    QVERIFY((some - none).is_undefined());
    QVERIFY((none - 5u).is_undefined());
    QVERIFY(ATimecode::add24(some, none).is_undefined());
    QVERIFY(ATimecode::sub24(some, none).is_undefined());
    QVERIFY(ATimecode::sub24(none, 9u).is_undefined());
    QVERIFY(none.t24().is_undefined());
    QVERIFY(none.get24().is_undefined());
    ATimecode t;
    QVERIFY((++t).is_undefined());
    QCOMPARE(t.get_nfields(), 0u);
    QVERIFY(t.wrap24().is_undefined());
}

void TestATimecode::sum_keeps_the_rate_of_the_left_side()
{
    ATimecode const left(hz59_94, flag(2), 30, 3);
    ATimecode const right(hz25, 5, 1);
    for (ATimecode const &t : {left + right, left - right, left + 5u, left - 5u}) {
        QCOMPARE(number(t.get_std()), 2);
        QVERIFY(t.is_ndf());
        QCOMPARE(t.get_ssm_speed(), 3u);
    }
    QCOMPARE((left + right).get_nfields(), 15u);
    QCOMPARE((left - right).get_nfields(), 5u);
    QCOMPARE((left + UINT_MAX).get_nfields(), 9u);
    ATimecode t = left;
    t += right;
    t += 1u;
    t -= right;
    t -= 2u;
    QCOMPARE(t.get_nfields(), 9u);
    t += t;
    QCOMPARE(t.get_nfields(), 18u);
}

void TestATimecode::difference_stops_at_0()
{
    QCOMPARE((fields(5) - fields(7)).get_nfields(), 0u);
    QVERIFY((fields(5) - fields(7)).is_defined());
    QCOMPARE((fields(5) - 7u).get_nfields(), 0u);
    QCOMPARE((fields(7) - 7u).get_nfields(), 0u);
    ATimecode t = fields(5);
    QCOMPARE(t.subtract(7u, false).get_nfields(), 0u);
}

void TestATimecode::increment_goes_one_field_on()
{
    ATimecode t(hz60, 59, 1);
    QCOMPARE((t++).get_seconds(), 0u);
    QCOMPARE(t.get_seconds(), 1u);
    QCOMPARE((++t).get_nfields(), 61u);
    QVERIFY(t.get_f2());
}

void TestATimecode::adding_with_wrap_comes_back_into_the_day_data()
{
    QTest::addColumn<unsigned>("a");
    QTest::addColumn<unsigned>("b");
    QTest::addColumn<unsigned>("sum");
    QTest::newRow("within") << 5u << 7u << 12u;
    QTest::newRow("last field") << day25 - 1 << 0u << day25 - 1;
    QTest::newRow("midnight") << day25 - 1 << 1u << 0u;
    QTest::newRow("beyond") << day25 - 1 << 8u << 7u;
    QTest::newRow("days") << 3 * day25 + 1 << 2 * day25 + 2 << 3u;
}

void TestATimecode::adding_with_wrap_comes_back_into_the_day()
{
    QFETCH(unsigned, a);
    QFETCH(unsigned, b);
    QFETCH(unsigned, sum);
    QCOMPARE(ATimecode::add24(fields(a), b).get_nfields(), sum);
    QCOMPARE(ATimecode::add24(fields(a), fields(b)).get_nfields(), sum);
    QCOMPARE(fields(a).add24(b).get_nfields(), sum);
    QCOMPARE(fields(a).add24(fields(b)).get_nfields(), sum);
    QCOMPARE(fields(a).add(b, true).get_nfields(), sum);
    QCOMPARE(fields(a).add(fields(b), false).get_nfields(), a + b);
}

void TestATimecode::subtracting_with_wrap_goes_on_from_the_end_of_the_day_data()
{
    QTest::addColumn<unsigned>("a");
    QTest::addColumn<unsigned>("b");
    QTest::addColumn<unsigned>("difference");
    QTest::newRow("within") << 7u << 5u << 2u;
    QTest::newRow("to midnight") << 7u << 7u << 0u;
    QTest::newRow("below midnight") << 7u << 8u << day25 - 1;
    QTest::newRow("a day more") << 7u << day25 + 5 << 2u;
    QTest::newRow("days, below midnight") << 7u << 3 * day25 + 8 << day25 - 1;
    // What is not below the count is taken away without wrapping.
    QTest::newRow("no wrap") << day25 + 7 << 5u << day25 + 2;
    QTest::newRow("both beyond the day") << day25 + 7 << 2 * day25 + 8 << day25 - 1;
}

void TestATimecode::subtracting_with_wrap_goes_on_from_the_end_of_the_day()
{
    QFETCH(unsigned, a);
    QFETCH(unsigned, b);
    QFETCH(unsigned, difference);
    QCOMPARE(ATimecode::sub24(fields(a), b).get_nfields(), difference);
    QCOMPARE(ATimecode::sub24(fields(a), fields(b)).get_nfields(), difference);
    QCOMPARE(fields(a).sub24(b).get_nfields(), difference);
    QCOMPARE(fields(a).sub24(fields(b)).get_nfields(), difference);
    QCOMPARE(fields(a).subtract(b, true).get_nfields(), difference);
    QCOMPARE(fields(a).subtract(fields(b), true).get_nfields(), difference);
}

void TestATimecode::wrap24_takes_the_days_off()
{
    for (int f = 1; f <= 10; ++f) {
        for (int d = 1; d <= 2; ++d) {
            ATimecode t(frequency(f), flag(d), 0, 1);
            unsigned int const day = t.get_fields_per_day();
            for (unsigned int n : {0u, 1u, 1799u, 1800u, 1801u, 3000u, 3599u, 3600u, day - 1}) {
                for (unsigned int days : {0u, 1u, 3u}) {
                    t.set_nfields(n + days * day);
                    t.wrap24();
                    QCOMPARE(t.get_nfields(), n);
                    QCOMPARE(number(t.get_df()), d);
                }
            }
        }
    }
}

void TestATimecode::get24_is_a_wrapped_copy()
{
    ATimecode const t = fields(day25 + 7);
    QCOMPARE(t.get24().get_nfields(), 7u);
    QCOMPARE(t.get_nfields(), day25 + 7);
    QCOMPARE(fields(day25).get24().get_nfields(), 0u);
    QCOMPARE(fields(day25 - 1).get24().get_nfields(), day25 - 1);
}

void TestATimecode::t24_is_one_day_at_a_speed_of_1()
{
    ATimecode const day = ATimecode(hz59_94, flag(1), 300, 3).t24();
    QCOMPARE(day.get_nfields(), 5178816u);
    QCOMPARE(day.get_ssm_speed(), 1u);
    QVERIFY(day.is_df());
    QCOMPARE(ATimecode(hz59_94, flag(2), 300, 3).t24().get_nfields(), 5184000u);
    QCOMPARE(shown(day), QStringLiteral("1+0:0:0:0 F1"));
}

void TestATimecode::comparison_is_by_the_count_alone()
{
    ATimecode const a = fields(5);
    ATimecode const b(hz59_94, flag(2), 15, 3);
    ATimecode const c(hz50, 6, 1);
    QVERIFY(a == b && !(a != b) && a <= b && a >= b && !(a < b) && !(a > b));
    QVERIFY(a < c && a <= c && a != c && !(a == c) && !(a > c) && !(a >= c));
    QVERIFY(c > a && c >= a);
    QCOMPARE(a.cmp(b), 0);
    QCOMPARE(a.cmp(c), -1);
    QCOMPARE(c.cmp(a), 1);
    QCOMPARE(ATimecode::cmp(fields(0), fields(UINT_MAX)), -1);
}

void TestATimecode::undefined_is_greater_than_all_others()
{
    ATimecode const none;
    ATimecode other;
    other.set_nfields(9);
    ATimecode const some = fields(UINT_MAX);
    QCOMPARE(none.cmp(some), 1);
    QCOMPARE(some.cmp(none), -1);
    QCOMPARE(none.cmp(other), 0);
    QVERIFY(none == other && none != some);
    QVERIFY(!(none < some) && none >= some && none > some && !(none <= some));
    QVERIFY(some < none && some <= none && !(some > none) && !(some >= none));
    QVERIFY(!(none < other) && none <= other && none >= other);
}

void TestATimecode::cmp24_takes_the_shorter_way_data()
{
    QTest::addColumn<unsigned>("a");
    QTest::addColumn<unsigned>("b");
    QTest::addColumn<int>("expected");
    unsigned int const half = day25 / 2;
    QTest::newRow("equal") << 5u << 5u << 0;
    QTest::newRow("a day apart") << 5u << day25 + 5 << 0;
    QTest::newRow("later") << 6u << 5u << 1;
    QTest::newRow("earlier") << 5u << 6u << -1;
    QTest::newRow("around midnight")
        << clock(23, 59).get_nfields() << clock(0, 1).get_nfields() << -1;
    QTest::newRow("around midnight, back")
        << clock(0, 1).get_nfields() << clock(23, 59).get_nfields() << 1;
    QTest::newRow("half a day later") << half << 0u << 1;
    QTest::newRow("half a day earlier") << 0u << half << 1;
    QTest::newRow("more than half") << half + 1 << 0u << -1;
    QTest::newRow("less than half") << half - 1 << 0u << 1;
    QTest::newRow("beyond the day") << 3 * day25 + 1 << day25 - 1 << 1;
}

void TestATimecode::cmp24_takes_the_shorter_way()
{
    QFETCH(unsigned, a);
    QFETCH(unsigned, b);
    QFETCH(int, expected);
    QCOMPARE(fields(a).cmp24(fields(b)), expected);
    QCOMPARE(ATimecode::cmp24(fields(a), fields(b)), expected);
    // The day is that of the left side.
    QCOMPARE(fields(a).cmp24(ATimecode(hz59_94, b, 1)), expected);
}

void TestATimecode::cmp24_with_undefined_is_cmp()
{
    QCOMPARE(ATimecode().cmp24(fields(5)), 1);
    QCOMPARE(fields(5).cmp24(ATimecode()), -1);
    QCOMPARE(ATimecode().cmp24(ATimecode()), 0);
}

void TestATimecode::range_has_its_start_and_not_its_end()
{
    ATimecode const start = fields(10);
    QVERIFY(!fields(9).is_inrange(start, fields(5)));
    QVERIFY(fields(10).is_inrange(start, fields(5)));
    QVERIFY(fields(14).is_inrange(start, fields(5)));
    QVERIFY(!fields(15).is_inrange(start, fields(5)));
    QVERIFY(!fields(10).is_inrange(start, fields(0)));
    QVERIFY(!ATimecode().is_inrange(start, fields(5)));
    QVERIFY(!fields(10).is_inrange(ATimecode(), fields(5)));
    QVERIFY(!fields(10).is_inrange(start, ATimecode()));
    QVERIFY(fields(day25 + 1).is_inrange(fields(day25 - 1), fields(5)));
}

void TestATimecode::range24_may_cross_midnight_data()
{
    QTest::addColumn<unsigned>("start");
    QTest::addColumn<unsigned>("duration");
    QTest::addColumn<QList<unsigned>>("inside");
    QTest::addColumn<QList<unsigned>>("outside");
    QTest::newRow("within the day")
        << 10u << 5u << QList<unsigned>{10, 14} << QList<unsigned>{0, 9, 15, day25 - 1};
    QTest::newRow("up to midnight") << day25 - 5 << 5u << QList<unsigned>{day25 - 5, day25 - 1}
                                    << QList<unsigned>{0, day25 - 6};
    QTest::newRow("across midnight")
        << day25 - 5 << 8u << QList<unsigned>{day25 - 5, day25 - 1, 0, 2}
        << QList<unsigned>{3, day25 - 6};
    QTest::newRow("days are taken off")
        << 2 * day25 + 10 << day25 + 5 << QList<unsigned>{10, 14} << QList<unsigned>{9, 15};
    QTest::newRow("a day is nothing")
        << 10u << day25 << QList<unsigned>{} << QList<unsigned>{0, 9, 10, 11};
}

void TestATimecode::range24_may_cross_midnight()
{
    QFETCH(unsigned, start);
    QFETCH(unsigned, duration);
    QFETCH(QList<unsigned>, inside);
    QFETCH(QList<unsigned>, outside);
    for (unsigned int n : inside)
        QVERIFY2(
            fields(n).is_inrange24(fields(start), fields(duration)), qPrintable(shown(fields(n))));
    for (unsigned int n : outside)
        QVERIFY2(
            !fields(n).is_inrange24(fields(start), fields(duration)), qPrintable(shown(fields(n))));
}

void TestATimecode::range24_needs_the_first_day_and_defined_arguments()
{
    QVERIFY(fields(day25 - 1).is_inrange24(fields(0), fields(day25 - 1)) == false);
    QVERIFY(fields(5).is_inrange24(fields(0), fields(10)));
    QVERIFY(!fields(day25 + 5).is_inrange24(fields(0), fields(10)));
    QVERIFY(!ATimecode().is_inrange24(fields(0), fields(10)));
    QVERIFY(!fields(5).is_inrange24(ATimecode(), fields(10)));
    QVERIFY(!fields(5).is_inrange24(fields(0), ATimecode()));
}

void TestATimecode::components_of_undefined_are_0()
{
    ATimecode t;
    t.set_nfields(123456);
    QCOMPARE(shown(t), QStringLiteral("0+0:0:0:0 F1"));
}

QTEST_GUILESS_MAIN(TestATimecode)
#include "tst_atimecode.moc"
