// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/timecode/atimecode.h"
#include "tests/support/shown_timecode.h"
#include "tests/timecode/standard_numbers.h"

#include <QTest>
#include <climits>

using namespace Corvane;

namespace {

VideoFrequency const hz60 = VideoFrequency::v60;
VideoFrequency const hz59_94 = VideoFrequency::v59_94;
VideoFrequency const hz50 = VideoFrequency::v50;
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

} // namespace

class TestATimecodeArithmetic : public QObject
{
    Q_OBJECT

private Q_SLOTS:
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
    void wrapping_keeps_speed_and_flag();
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
    void sides_of_other_rates_count_by_their_own_days();
};

void TestATimecodeArithmetic::arithmetic_with_undefined_is_undefined()
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

void TestATimecodeArithmetic::sum_keeps_the_rate_of_the_left_side()
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

void TestATimecodeArithmetic::difference_stops_at_0()
{
    QCOMPARE((fields(5) - fields(7)).get_nfields(), 0u);
    QVERIFY((fields(5) - fields(7)).is_defined());
    QCOMPARE((fields(5) - 7u).get_nfields(), 0u);
    QCOMPARE((fields(7) - 7u).get_nfields(), 0u);
    ATimecode t = fields(5);
    QCOMPARE(t.subtract(7u, false).get_nfields(), 0u);
}

void TestATimecodeArithmetic::increment_goes_one_field_on()
{
    ATimecode t(hz60, 59, 1);
    QCOMPARE((t++).get_seconds(), 0u);
    QCOMPARE(t.get_seconds(), 1u);
    QCOMPARE((++t).get_nfields(), 61u);
    QVERIFY(t.get_f2());
}

void TestATimecodeArithmetic::adding_with_wrap_comes_back_into_the_day_data()
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

void TestATimecodeArithmetic::adding_with_wrap_comes_back_into_the_day()
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

void TestATimecodeArithmetic::subtracting_with_wrap_goes_on_from_the_end_of_the_day_data()
{
    QTest::addColumn<unsigned>("a");
    QTest::addColumn<unsigned>("b");
    QTest::addColumn<unsigned>("difference");
    QTest::newRow("within") << 7u << 5u << 2u;
    QTest::newRow("to midnight") << 7u << 7u << 0u;
    QTest::newRow("below midnight") << 7u << 8u << day25 - 1;
    QTest::newRow("a day more") << 7u << day25 + 5 << 2u;
    QTest::newRow("a day more, to midnight") << 7u << day25 + 7 << 0u;
    QTest::newRow("days, below midnight") << 7u << 3 * day25 + 8 << day25 - 1;
    // What is not below the count is taken away without wrapping.
    QTest::newRow("no wrap") << day25 + 7 << 5u << day25 + 2;
    QTest::newRow("both beyond the day") << day25 + 7 << 2 * day25 + 8 << day25 - 1;
}

void TestATimecodeArithmetic::subtracting_with_wrap_goes_on_from_the_end_of_the_day()
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

void TestATimecodeArithmetic::wrap24_takes_the_days_off()
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

void TestATimecodeArithmetic::get24_is_a_wrapped_copy()
{
    ATimecode const t = fields(day25 + 7);
    QCOMPARE(t.get24().get_nfields(), 7u);
    QCOMPARE(t.get_nfields(), day25 + 7);
    QCOMPARE(fields(day25).get24().get_nfields(), 0u);
    QCOMPARE(fields(day25 - 1).get24().get_nfields(), day25 - 1);
}

void TestATimecodeArithmetic::wrapping_keeps_speed_and_flag()
{
    ATimecode t;
    t.set(hz59_94, flag(2), 5184000 + 7, 3);
    for (ATimecode const &wrapped :
        {t.get24(), ATimecode(t).wrap24(), ATimecode::add24(t, 0u), ATimecode::add24(t, fields(0)),
            ATimecode::sub24(t, 5184000u), ATimecode(t).subtract(2 * 5184000u, true)}) {
        QCOMPARE(wrapped.get_nfields(), 7u);
        QCOMPARE(wrapped.get_ssm_speed(), 3u);
        QCOMPARE(number(wrapped.get_std()), 2);
        QCOMPARE(number(wrapped.get_df()), 2);
    }
}

void TestATimecodeArithmetic::t24_is_one_day_at_a_speed_of_1()
{
    ATimecode const day = ATimecode(hz59_94, flag(1), 300, 3).t24();
    QCOMPARE(day.get_nfields(), 5178816u);
    QCOMPARE(day.get_ssm_speed(), 1u);
    QVERIFY(day.is_df());
    QCOMPARE(ATimecode(hz59_94, flag(2), 300, 3).t24().get_nfields(), 5184000u);
    QCOMPARE(shown(day), QStringLiteral("1+0:0:0:0 F1"));
}

void TestATimecodeArithmetic::comparison_is_by_the_count_alone()
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

void TestATimecodeArithmetic::undefined_is_greater_than_all_others()
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

void TestATimecodeArithmetic::cmp24_takes_the_shorter_way_data()
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
    QTest::newRow("highest") << UINT_MAX << UINT_MAX % day25 - 1 << 1;
    QTest::newRow("before the highest") << UINT_MAX % day25 - 1 << UINT_MAX << -1;
}

void TestATimecodeArithmetic::cmp24_takes_the_shorter_way()
{
    QFETCH(unsigned, a);
    QFETCH(unsigned, b);
    QFETCH(int, expected);
    QCOMPARE(fields(a).cmp24(fields(b)), expected);
    QCOMPARE(ATimecode::cmp24(fields(a), fields(b)), expected);
    // The day is that of the left side.
    QCOMPARE(fields(a).cmp24(ATimecode(hz59_94, b, 1)), expected);
}

void TestATimecodeArithmetic::cmp24_with_undefined_is_cmp()
{
    QCOMPARE(ATimecode().cmp24(fields(5)), 1);
    QCOMPARE(fields(5).cmp24(ATimecode()), -1);
    QCOMPARE(ATimecode().cmp24(ATimecode()), 0);
}

void TestATimecodeArithmetic::range_has_its_start_and_not_its_end()
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

void TestATimecodeArithmetic::range24_may_cross_midnight_data()
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

void TestATimecodeArithmetic::range24_may_cross_midnight()
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

void TestATimecodeArithmetic::range24_needs_the_first_day_and_defined_arguments()
{
    QVERIFY(fields(day25 - 1).is_inrange24(fields(0), fields(day25 - 1)) == false);
    QVERIFY(fields(5).is_inrange24(fields(0), fields(10)));
    QVERIFY(!fields(day25 + 5).is_inrange24(fields(0), fields(10)));
    // Later than the start of a range that crosses midnight, but not of its first day.
    QVERIFY(fields(day25 - 1).is_inrange24(fields(day25 - 5), fields(8)));
    QVERIFY(!fields(day25).is_inrange24(fields(day25 - 5), fields(8)));
    QVERIFY(!fields(day25 + 1).is_inrange24(fields(day25 - 5), fields(8)));
    QVERIFY(!ATimecode().is_inrange24(fields(0), fields(10)));
    QVERIFY(!fields(5).is_inrange24(ATimecode(), fields(10)));
    QVERIFY(!fields(5).is_inrange24(fields(0), ATimecode()));
}

void TestATimecodeArithmetic::sides_of_other_rates_count_by_their_own_days()
{
    unsigned int const day59_94 = 5178816;
    // The start loses its days by its own rate; that the end crosses midnight is told by it too.
    ATimecode const start(hz59_94, flag(1), day59_94 + day25 - 2, 1);
    QVERIFY(fields(day25 - 1).is_inrange24(start, fields(5)));
    QVERIFY(!fields(0).is_inrange24(start, fields(5)));
    ATimecode const late(hz59_94, flag(1), day59_94 - 2, 1);
    QVERIFY(fields(2).is_inrange24(late, fields(5)));
    QVERIFY(!fields(3).is_inrange24(late, fields(5)));
    // This one must be within its own day.
    QVERIFY(!fields(day25).is_inrange24(late, fields(5)));
    QVERIFY(ATimecode(hz59_94, flag(1), day25 + 1, 1).is_inrange24(fields(5), fields(7)) == false);
    // What is taken away is brought into the day of the left side.
    ATimecode t = fields(5);
    QCOMPARE(t.subtract(ATimecode(hz59_94, flag(1), day59_94 + 1, 1), true).get_nfields(),
        5 + day25 - (day59_94 + 1) % day25);
    t = ATimecode(hz59_94, flag(1), 5, 1);
    QCOMPARE(t.subtract(fields(day25 + 7), true).get_nfields(), day59_94 + 5 - (day25 + 7));
    QCOMPARE(number(t.get_std()), 2);
}

QTEST_GUILESS_MAIN(TestATimecodeArithmetic)
#include "tst_atimecode_arithmetic.moc"
