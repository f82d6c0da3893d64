// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/base/timecode.h"
#include "tests/support/assert_log.h"
#include "tests/support/astring_make.h"
#include "tests/support/astring_print.h"
#include "tests/support/shown_timecode.h"
#include "tests/support/thoroughness.h"

#include <QTest>
#include <climits>

namespace {

Timecode::Rate rate(int n)
{
    return static_cast<Timecode::Rate>(n);
}

bool shows(Timecode const &t, unsigned int days, unsigned int hours, unsigned int minutes,
    unsigned int seconds, unsigned int fields)
{
    return t.get_days() == days && t.get_hours() == hours && t.get_minutes() == minutes
        && t.get_seconds() == seconds && t.get_frames() == fields / 2
        && t.get_f2() == (fields % 2 != 0);
}

QString where(Timecode const &t)
{
    return QStringLiteral("%1: %2").arg(t.get_nfields()).arg(shown(t));
}

} // namespace

class TestTimecode : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void default_is_undefined_at_rate_1();
    void figures_data();
    void figures();
    void rate_outside_is_an_assertion_and_gives_dropframe_rate_1();
    void made_at_a_rate_outside_it_is_undefined();
    void dropframe_is_kept_only_where_the_rate_has_it();
    void breakdown_of_each_field_of_a_day_data();
    void breakdown_of_each_field_of_a_day();
    void breakdown_in_dropframe_data();
    void breakdown_in_dropframe();
    void breakdown_of_the_last_count_data();
    void breakdown_of_the_last_count();
    void components_give_a_count_data();
    void components_give_a_count();
    void breakdown_of_each_dropframe_field_of_a_day_data();
    void breakdown_of_each_dropframe_field_of_a_day();
    void rate_3_breaks_down_by_50_though_it_has_48();
    void day_of_rate_7_is_that_of_rate_6_but_not_in_the_breakdown();
    void to_fields_counts_two_fields_a_frame();
    void to_fields_gives_the_count_back_at_59_94_dropframe();
    void setting_nfields_does_nothing_while_undefined();
    void wrap24_takes_the_table_day_off();
    void sums_keep_the_left_rate();
    void subtracting_without_wrap_goes_below_0();
    void subtracting_with_wrap_data();
    void subtracting_with_wrap();
    void subtracting_undefined_gives_undefined();
    void compares_definedness_then_rate_then_count();
    void text_data();
    void text();
    void text_of_undefined_is_an_assertion();
};

void TestTimecode::default_is_undefined_at_rate_1()
{
    Timecode const t;
    QVERIFY(!t.is_defined());
    QCOMPARE(int(t.get_rate()), 1);
    QVERIFY(!t.get_dropframe());
    QCOMPARE(t.get_nfields(), 0u);
    QCOMPARE(shown(t), QStringLiteral("0+0:0:0:0 F1"));
    Timecode other(rate(4), 5);
    other.set_undefined();
    QVERIFY(other == Timecode());
}

void TestTimecode::figures_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<bool>("dropframe");
    QTest::addColumn<QList<unsigned>>("expected");
    auto const row = [](int value, bool dropframe, QList<unsigned> const &expected) {
        QTest::addRow("%d %s", value, dropframe ? "df" : "ndf") << value << dropframe << expected;
    };
    for (bool any : {false, true}) {
        row(0, any, {60, 3600, 36000, 216000, 5184000});
        row(2, any, {50, 3000, 30000, 180000, 4320000});
        row(3, any, {48, 2880, 28800, 172800, 4320000});
        row(4, any, {30, 1800, 18000, 108000, 2592000});
        row(6, any, {25, 1500, 15000, 90000, 2160000});
        row(7, any, {24, 1440, 14400, 86400, 2160000});
    }
    row(1, false, {60, 3600, 36000, 216000, 5184000});
    row(1, true, {60, 3596, 35964, 215784, 5178816});
    row(5, false, {30, 1800, 18000, 108000, 2592000});
    row(5, true, {30, 1798, 17982, 107892, 2589408});
}

void TestTimecode::figures()
{
    QFETCH(int, value);
    QFETCH(bool, dropframe);
    QFETCH(QList<unsigned>, expected);
    QCOMPARE(Timecode::fields_per_second(rate(value), dropframe), expected[0]);
    QCOMPARE(Timecode::fields_per_minute(rate(value), dropframe), expected[1]);
    QCOMPARE(Timecode::fields_per_10minutes(rate(value), dropframe), expected[2]);
    QCOMPARE(Timecode::fields_per_hour(rate(value), dropframe), expected[3]);
    QCOMPARE(Timecode::fields_per_day(rate(value), dropframe), expected[4]);
}

void TestTimecode::rate_outside_is_an_assertion_and_gives_dropframe_rate_1()
{
    AssertLog log;
    for (int n : {-1, 8}) {
        for (bool dropframe : {false, true}) {
            QCOMPARE(Timecode::fields_per_second(rate(n), dropframe), 60u);
            QCOMPARE(Timecode::fields_per_minute(rate(n), dropframe), 3596u);
            QCOMPARE(Timecode::fields_per_10minutes(rate(n), dropframe), 35964u);
            QCOMPARE(Timecode::fields_per_hour(rate(n), dropframe), 215784u);
            QCOMPARE(Timecode::fields_per_day(rate(n), dropframe), 5178816u);
            QCOMPARE(log.take().size(), 5);
        }
    }
}

void TestTimecode::made_at_a_rate_outside_it_is_undefined()
{
    AssertLog log;
    QVERIFY(!Timecode(rate(8), 5).is_defined());
    QVERIFY(Timecode(rate(-1), true, 5) == Timecode());
    QVERIFY(Timecode(rate(8), 1, 2, 3, 4, false) == Timecode());
    QVERIFY(Timecode(rate(8), true, 1, 2, 3, 4, false) == Timecode());
    QCOMPARE(log.take().size(), 4);
}

void TestTimecode::dropframe_is_kept_only_where_the_rate_has_it()
{
    for (int n = 0; n <= 7; ++n) {
        bool const may = n == 1 || n == 5;
        QCOMPARE(Timecode(rate(n), 5).get_dropframe(), may);
        QCOMPARE(Timecode(rate(n), true, 5).get_dropframe(), may);
        QVERIFY(!Timecode(rate(n), false, 5).get_dropframe());
    }
}

void TestTimecode::breakdown_of_each_field_of_a_day_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<unsigned>("second");
    QTest::newRow("60") << 0 << 60u;
    QTest::newRow("59.94 ndf") << 1 << 60u;
    QTest::newRow("50") << 2 << 50u;
    QTest::newRow("48") << 3 << 50u;
    QTest::newRow("30") << 4 << 30u;
    QTest::newRow("29.97 ndf") << 5 << 30u;
    QTest::newRow("25") << 6 << 25u;
    QTest::newRow("24") << 7 << 24u;
}

void TestTimecode::breakdown_of_each_field_of_a_day()
{
    QFETCH(int, value);
    QFETCH(unsigned, second);
    Timecode t(rate(value), false, 0);
    unsigned int n = 0;
    for (unsigned int whole = 0; whole < 24 * 3600 + 60; ++whole) {
        for (unsigned int fields = 0; fields < second; ++fields, ++n) {
            if (n % one_in != 0)
                continue;
            t.set_nfields(n);
            if (!shows(t, whole / 86400, whole / 3600 % 24, whole / 60 % 60, whole % 60, fields))
                QFAIL(qPrintable(where(t)));
        }
    }
}

void TestTimecode::breakdown_in_dropframe_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<unsigned>("count");
    QTest::addColumn<QString>("expected");
    auto const row = [](int value, unsigned count, char const *expected) {
        QTest::addRow("%d, %u", value, count) << value << count << QString::fromLatin1(expected);
    };
    row(1, 3599, "0+0:0:59:29 F2");
    row(1, 3600, "0+0:1:0:2 F1");
    row(1, 7195, "0+0:1:59:29 F2");
    row(1, 7196, "0+0:2:0:2 F1");
    row(1, 35964, "0+0:10:0:0 F1");
    row(1, 215784, "0+1:0:0:0 F1");
    row(1, 5178816, "1+0:0:0:0 F1");
    row(1, UINT_MAX, "829+8:0:42:19 F2");
    row(5, 1799, "0+0:0:59:14 F2");
    row(5, 1800, "0+0:1:0:2 F1");
    row(5, 3595, "0+0:1:59:14 F2");
    row(5, 3596, "0+0:1:60:0 F1");
    row(5, 3597, "0+0:1:60:0 F2");
    row(5, 3598, "0+0:2:0:2 F1");
    row(5, 17981, "0+0:9:60:0 F2");
    row(5, 17982, "0+0:10:0:0 F1");
    row(5, 107892, "0+1:0:0:0 F1");
    row(5, 2589408, "1+0:0:0:0 F1");
}

void TestTimecode::breakdown_of_the_last_count_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<bool>("dropframe");
    QTest::addColumn<QString>("expected");
    QTest::newRow("60") << 0 << false << QStringLiteral("828+12:6:28:7 F2");
    QTest::newRow("59.94 ndf") << 1 << false << QStringLiteral("828+12:6:28:7 F2");
    QTest::newRow("59.94 df") << 1 << true << QStringLiteral("829+8:0:42:19 F2");
    QTest::newRow("50") << 2 << false << QStringLiteral("994+4:55:45:22 F2");
    QTest::newRow("48") << 3 << false << QStringLiteral("994+4:55:45:22 F2");
    QTest::newRow("30") << 4 << false << QStringLiteral("1657+0:12:56:7 F2");
    QTest::newRow("29.97 ndf") << 5 << false << QStringLiteral("1657+0:12:56:7 F2");
    QTest::newRow("29.97 df") << 5 << true << QStringLiteral("1658+16:1:25:6 F2");
    QTest::newRow("25") << 6 << false << QStringLiteral("1988+9:51:31:10 F1");
    QTest::newRow("24") << 7 << false << QStringLiteral("2071+6:16:10:7 F2");
}

void TestTimecode::breakdown_of_the_last_count()
{
    QFETCH(int, value);
    QFETCH(bool, dropframe);
    QFETCH(QString, expected);
    QCOMPARE(shown(Timecode(rate(value), dropframe, UINT_MAX)), expected);
}

void TestTimecode::components_give_a_count_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<bool>("dropframe");
    QTest::addColumn<bool>("f2");
    QTest::addColumn<unsigned>("count"); // of 1:12:3:4
    auto const row = [](int value, bool dropframe, bool f2, unsigned count) {
        QTest::addRow("%d %s F%d", value, dropframe ? "df" : "ndf", f2 ? 2 : 1)
            << value << dropframe << f2 << count;
    };
    row(0, false, false, 259388);
    row(0, true, true, 259389);
    row(1, false, true, 259389);
    row(1, true, false, 215784 + 35964 + 2 * 3596 + 3 * 60 + 8);
    row(2, false, true, 216159);
    row(3, false, false, 172800 + 28800 + 2 * 2880 + 3 * 48 + 8);
    row(4, false, true, 108000 + 12 * 1800 + 3 * 30 + 9);
    row(5, false, false, 108000 + 12 * 1800 + 3 * 30 + 8);
    row(5, true, true, 107892 + 17982 + 2 * 1798 + 3 * 30 + 9);
    // A frame is two fields at every rate, and a field counts as one.
    row(6, true, true, 90000 + 12 * 1500 + 3 * 25 + 9);
    row(7, false, false, 86400 + 12 * 1440 + 3 * 24 + 8);
}

void TestTimecode::components_give_a_count()
{
    QFETCH(int, value);
    QFETCH(bool, dropframe);
    QFETCH(bool, f2);
    QFETCH(unsigned, count);
    Timecode const t(rate(value), dropframe, 1, 12, 3, 4, f2);
    QVERIFY(t.is_defined());
    QCOMPARE(t.get_nfields(), count);
    QCOMPARE(t.get_dropframe(), dropframe && (value == 1 || value == 5));
    // Without a flag, dropframe wherever the rate has it.
    QVERIFY(Timecode(rate(value), 1, 12, 3, 4, f2) == Timecode(rate(value), true, 1, 12, 3, 4, f2));
    QCOMPARE(Timecode(rate(value), 1, 12, 3, 4, f2).get_dropframe(), value == 1 || value == 5);
}

void TestTimecode::breakdown_in_dropframe()
{
    QFETCH(int, value);
    QFETCH(unsigned, count);
    QFETCH(QString, expected);
    QCOMPARE(shown(Timecode(rate(value), count)), expected);
}

void TestTimecode::breakdown_of_each_dropframe_field_of_a_day_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<unsigned>("second");
    QTest::newRow("59.94") << 1 << 60u;
    QTest::newRow("29.97") << 5 << 30u;
}

void TestTimecode::breakdown_of_each_dropframe_field_of_a_day()
{
    QFETCH(int, value);
    QFETCH(unsigned, second);
    Timecode t(rate(value), 0);
    unsigned int n = 0;
    // The first minute of ten has all its fields, the others begin at field 4 and last a minute's
    // figure.
    for (unsigned int minute = 0; minute < 24 * 60 + 10; ++minute) {
        bool const whole = minute % 10 == 0;
        unsigned int const begin = whole ? 0 : 4;
        unsigned int const lasts
            = whole ? 60 * second : Timecode::fields_per_minute(rate(value), true);
        for (unsigned int field = begin; field < begin + lasts; ++field, ++n) {
            if (n % one_in != 0)
                continue;
            t.set_nfields(n);
            if (!shows(t, minute / 1440, minute / 60 % 24, minute % 60, field / second,
                    field % second))
                QFAIL(qPrintable(where(t)));
        }
    }
    QCOMPARE(n % Timecode::fields_per_10minutes(rate(value), true), 0u);
}

void TestTimecode::rate_3_breaks_down_by_50_though_it_has_48()
{
    QCOMPARE(shown(Timecode(rate(3), 48)), QStringLiteral("0+0:0:0:24 F1"));
    QCOMPARE(shown(Timecode(rate(3), 50)), QStringLiteral("0+0:0:1:0 F1"));
    QCOMPARE(Timecode::to_fields(rate(3), false, false, 0, 0, 1, 0), 48u);
}

void TestTimecode::day_of_rate_7_is_that_of_rate_6_but_not_in_the_breakdown()
{
    QCOMPARE(shown(Timecode(rate(7), 2073600)), QStringLiteral("1+0:0:0:0 F1"));
    Timecode t(rate(7), 2073600);
    t.wrap24();
    QCOMPARE(t.get_nfields(), 2073600u);
    t.set_nfields(2160001);
    t.wrap24();
    QCOMPARE(t.get_nfields(), 1u);
}

void TestTimecode::to_fields_counts_two_fields_a_frame()
{
    QCOMPARE(Timecode::to_fields(rate(6), false, true, 1, 23, 4, 5),
        90000u + 2 * 15000 + 3 * 1500 + 4 * 25 + 2 * 5 + 1);
    QCOMPARE(Timecode::to_fields(rate(1), true, false, 0, 1, 0, 2), 3600u);
    QCOMPARE(Timecode::to_fields(rate(1), false, false, 0, 1, 0, 2), 3604u);
}

void TestTimecode::to_fields_gives_the_count_back_at_59_94_dropframe()
{
    Timecode t(rate(1), 0);
    for (unsigned int n = 0; n < 5178816; n += one_in) {
        t.set_nfields(n);
        if (Timecode::to_fields(rate(1), true, t.get_f2(), t.get_hours(), t.get_minutes(),
                t.get_seconds(), t.get_frames())
            != n)
            QFAIL(qPrintable(where(t)));
    }
}

void TestTimecode::setting_nfields_does_nothing_while_undefined()
{
    Timecode t;
    t.set_nfields(5);
    QCOMPARE(t.get_nfields(), 0u);
    t = Timecode(rate(0), 120);
    QCOMPARE(t.get_seconds(), 2u);
    t.set_nfields(120);
    QCOMPARE(t.get_seconds(), 2u);
    t.cache_invalidate();
    QCOMPARE(t.get_seconds(), 2u);
    t.set_nfields(180);
    QCOMPARE(t.get_seconds(), 3u);
}

void TestTimecode::wrap24_takes_the_table_day_off()
{
    for (int n = 0; n <= 7; ++n) {
        unsigned int const day = Timecode::fields_per_day(rate(n), true);
        Timecode t(rate(n), 2 * day + 77);
        t.wrap24();
        QCOMPARE(t.get_nfields(), 77u);
        t.set_nfields(day - 1);
        t.wrap24();
        QCOMPARE(t.get_nfields(), day - 1);
    }
    Timecode none;
    none.wrap24();
    QVERIFY(!none.is_defined());
}

void TestTimecode::sums_keep_the_left_rate()
{
    Timecode const a(rate(5), 10);
    Timecode const b(rate(0), 7);
    QCOMPARE((a + b).get_nfields(), 17u);
    QCOMPARE(int((a + b).get_rate()), 5);
    QCOMPARE((a + 3u).get_nfields(), 13u);
    QCOMPARE((a + UINT_MAX).get_nfields(), 9u);
    Timecode t = a;
    t += b;
    QCOMPARE((t++).get_nfields(), 17u);
    QCOMPARE((++t).get_nfields(), 19u);
    t += t;
    QCOMPARE(t.get_nfields(), 38u);
    QVERIFY(!(a + Timecode()).is_defined());
    QVERIFY(!(Timecode() + a).is_defined());
    QVERIFY(Timecode() + 5u == Timecode());
}

void TestTimecode::subtracting_without_wrap_goes_below_0()
{
    Timecode t(rate(6), 5);
    t.subtract(7u, false);
    QCOMPARE(t.get_nfields(), UINT_MAX - 1);
    t = Timecode(rate(6), 2160007);
    t.subtract(Timecode(rate(0), 2), false);
    QCOMPARE(t.get_nfields(), 2160005u);
}

void TestTimecode::subtracting_with_wrap_data()
{
    QTest::addColumn<unsigned>("a");
    QTest::addColumn<unsigned>("n");
    QTest::addColumn<unsigned>("expected");
    unsigned int const day = 2160000;
    QTest::newRow("within") << 7u << 5u << 2u;
    QTest::newRow("to midnight") << 7u << 7u << 0u;
    QTest::newRow("below midnight") << 5u << 7u << day - 2;
    QTest::newRow("count beyond the day") << day + 7 << 5u << 2u;
    QTest::newRow("both beyond the day") << day + 7 << day + 5 << 2u;
    QTest::newRow("more than a day") << 5u << 2 * day + 7 << day - 2;
    QTest::newRow("a day") << 5u << day << 5u;
    QTest::newRow("a day more, to midnight") << 7u << day + 7 << 0u;
}

void TestTimecode::subtracting_with_wrap()
{
    QFETCH(unsigned, a);
    QFETCH(unsigned, n);
    QFETCH(unsigned, expected);
    Timecode t(rate(6), a);
    t.subtract(n, true);
    QCOMPARE(t.get_nfields(), expected);
    t = Timecode(rate(6), a);
    t.subtract(Timecode(rate(0), n), true);
    QCOMPARE(t.get_nfields(), expected);
}

void TestTimecode::subtracting_undefined_gives_undefined()
{
    Timecode t(rate(6), 5);
    t.subtract(Timecode(), true);
    QVERIFY(t == Timecode());
    t.subtract(7u, false);
    QVERIFY(t == Timecode());
}

void TestTimecode::compares_definedness_then_rate_then_count()
{
    Timecode const none;
    Timecode const low(rate(0), 9);
    Timecode const high(rate(2), 5);
    QVERIFY(none == Timecode());
    QVERIFY(none < low && none <= low && low > none && low >= none && none != low);
    QVERIFY(low < high && !(high < low) && low != high);
    QVERIFY(Timecode(rate(0), 5) != high);
    QVERIFY(Timecode(rate(0), 8) < low && Timecode(rate(0), 9) == low);
    QVERIFY(low <= Timecode(rate(0), 9) && low >= Timecode(rate(0), 9));
    // The flag plays no part.
    QVERIFY(Timecode(rate(1), true, 5) == Timecode(rate(1), false, 5));
}

void TestTimecode::text_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<bool>("dropframe");
    QTest::addColumn<unsigned>("count");
    QTest::addColumn<unsigned>("parts");
    QTest::addColumn<QString>("expected");
    auto const row
        = [](int value, bool dropframe, unsigned count, unsigned parts, char const *expected) {
              QTest::addRow("%d %d %u %u", value, dropframe, count, parts)
                  << value << dropframe << count << parts << QString::fromLatin1(expected);
          };
    row(2, false, 0, 0, "");
    // The field alone is no component.
    row(2, false, 1, 0, "");
    row(2, false, 2, 0, "01");
    row(2, false, 0, 1, "00");
    row(2, false, 1, 4, "00:00:00:00");
    row(2, false, 50, 0, "01.00");
    row(2, false, 180000 + 2 * 3000 + 3 * 50 + 8, 4, "01.02.03.04");
    row(2, false, 4320000, 0, "1+00.00.00.00");
    row(2, false, 0, 9, "0+00.00.00.00");
    row(1, true, 3600, 4, "00,01,00,02");
    row(1, true, 3601, 4, "00;01;00;02");
    row(1, false, 3601, 4, "00:01:00:00");
    row(5, true, 1801, 4, "00;01;00;02");
}

void TestTimecode::text()
{
    QFETCH(int, value);
    QFETCH(bool, dropframe);
    QFETCH(unsigned, count);
    QFETCH(unsigned, parts);
    QFETCH(QString, expected);
    Timecode const t(rate(value), dropframe, count);
    QCOMPARE(t.to_astring(parts), AString(expected));
    QCOMPARE(t.to_string(parts), expected.toStdString());
}

void TestTimecode::text_of_undefined_is_an_assertion()
{
    AssertLog log;
    QVERIFY(Timecode().to_astring(4).empty());
    QCOMPARE(Timecode().to_string(4), std::string());
    QCOMPARE(log.take().size(), 2);
}

QTEST_GUILESS_MAIN(TestTimecode)
#include "tst_timecode.moc"
