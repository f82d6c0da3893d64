// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/timecode/atimecode.h"
#include "tests/timecode/standard_numbers.h"

#include <QTest>

using namespace Corvane;

class TestTimecodeRates : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void figures_data();
    void figures();
    void invalid_frequency_or_flag_gives_dropframe_59_94_and_no_day();
    void frame_is_two_fields_outside_6_to_10();
    void numfields_sums_the_units();
    void numfields_adds_f2_at_every_frequency();
    void numfields_of_an_invalid_frequency_or_flag_is_0();
};

void TestTimecodeRates::figures_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<QList<int>>("flags");
    QTest::addColumn<QList<unsigned>>("expected");
    auto const row = [](int value, char const *flags, QList<int> const &values,
                         QList<unsigned> const &expected) {
        QTest::addRow("%d, %s", value, flags) << value << values << expected;
    };
    QList<int> const any{0, 1, 2, 3, -1};
    row(1, "any", any, {60, 3600, 36000, 216000, 5184000});
    row(2, "df", {1}, {60, 3596, 35964, 215784, 5178816});
    row(2, "ndf", {2}, {60, 3600, 36000, 216000, 5184000});
    row(3, "any", any, {50, 3000, 30000, 180000, 4320000});
    row(4, "any", any, {48, 2880, 28800, 172800, 4147200});
    row(5, "any", any, {48, 2880, 28800, 172800, 4147200});
    row(6, "any", any, {30, 1800, 18000, 108000, 2592000});
    row(7, "df", {1}, {30, 1798, 17982, 107892, 2589408});
    row(7, "ndf", {2}, {30, 1800, 18000, 108000, 2592000});
    row(8, "any", any, {25, 1500, 15000, 90000, 2160000});
    row(9, "any", any, {24, 1440, 14400, 86400, 2073600});
    row(10, "any", any, {24, 1440, 14400, 86400, 2073600});
}

void TestTimecodeRates::figures()
{
    QFETCH(int, value);
    QFETCH(QList<int>, flags);
    QFETCH(QList<unsigned>, expected);
    VideoFrequency const f = frequency(value);
    for (int n : flags) {
        QCOMPARE(timecode_fields_per_second(f, flag(n)), expected[0]);
        QCOMPARE(timecode_fields_per_minute(f, flag(n)), expected[1]);
        QCOMPARE(timecode_fields_per_10minutes(f, flag(n)), expected[2]);
        QCOMPARE(timecode_fields_per_hour(f, flag(n)), expected[3]);
        QCOMPARE(timecode_fields_per_day(f, flag(n)), expected[4]);
        ATimecode const t(f, flag(n), 0, 1);
        if (t.is_undefined())
            continue;
        QCOMPARE(t.get_fields_per_second(), expected[0]);
        QCOMPARE(t.get_fields_per_minute(), expected[1]);
        QCOMPARE(t.get_fields_per_10minutes(), expected[2]);
        QCOMPARE(t.get_fields_per_hour(), expected[3]);
        QCOMPARE(t.get_fields_per_day(), expected[4]);
    }
    if (flags.contains(number(defaultDropframeFlag(f)))) {
        QCOMPARE(timecode_fields_per_second(f), expected[0]);
        QCOMPARE(timecode_fields_per_minute(f), expected[1]);
        QCOMPARE(timecode_fields_per_10minutes(f), expected[2]);
        QCOMPARE(timecode_fields_per_hour(f), expected[3]);
        QCOMPARE(timecode_fields_per_day(f), expected[4]);
    }
}

void TestTimecodeRates::invalid_frequency_or_flag_gives_dropframe_59_94_and_no_day()
{
    int const pairs[][2] = {{0, 1}, {0, 0}, {11, 2}, {-1, 1}, {2, 0}, {2, 3}, {7, 0}, {7, -1}};
    for (auto const &pair : pairs) {
        VideoFrequency const f = frequency(pair[0]);
        DropframeFlag const d = flag(pair[1]);
        QCOMPARE(timecode_fields_per_second(f, d), 60u);
        QCOMPARE(timecode_fields_per_minute(f, d), 3596u);
        QCOMPARE(timecode_fields_per_10minutes(f, d), 35964u);
        QCOMPARE(timecode_fields_per_hour(f, d), 215784u);
        QCOMPARE(timecode_fields_per_day(f, d), 0u);
    }
    QCOMPARE(timecode_fields_per_minute(frequency(0)), 3596u);
    QCOMPARE(timecode_fields_per_day(frequency(0)), 0u);
    QCOMPARE(ATimecode().get_fields_per_hour(), 215784u);
    QCOMPARE(ATimecode().get_fields_per_day(), 0u);
}

void TestTimecodeRates::frame_is_two_fields_outside_6_to_10()
{
    for (int n = -1; n <= 12; ++n)
        QCOMPARE(timecode_fields_per_frame(frequency(n)), n >= 6 && n <= 10 ? 1u : 2u);
}

void TestTimecodeRates::numfields_sums_the_units()
{
    QCOMPARE(timecode_numfields(frequency(2), 1, 2, 34, 5, 6, true),
        5178816u + 2 * 215784 + 3 * 35964 + 4 * 3596 + 5 * 60 + 6 * 2 + 1);
    QCOMPARE(timecode_numfields(frequency(2), flag(2), 1, 2, 34, 5, 6, false),
        5184000u + 2 * 216000 + 34 * 3600 + 5 * 60 + 6 * 2);
    // A flag does not count where there is no dropframe, not even an invalid one.
    QCOMPARE(timecode_numfields(frequency(8), flag(0), 0, 0, 1, 0, 3, false), 1503u);
    QCOMPARE(timecode_numfields(frequency(8), flag(1), 0, 0, 1, 0, 3, false), 1503u);
}

void TestTimecodeRates::numfields_adds_f2_at_every_frequency()
{
    for (int n = 1; n <= 10; ++n)
        QCOMPARE(timecode_numfields(frequency(n), 0, 0, 0, 0, 0, true), 1u);
}

void TestTimecodeRates::numfields_of_an_invalid_frequency_or_flag_is_0()
{
    for (int n : {-1, 0, 11})
        QCOMPARE(timecode_numfields(frequency(n), 1, 2, 3, 4, 5, true), 0u);
    for (int n : {-1, 0, 3}) {
        QCOMPARE(timecode_numfields(frequency(2), flag(n), 1, 2, 3, 4, 5, true), 0u);
        QCOMPARE(timecode_numfields(frequency(7), flag(n), 1, 2, 3, 4, 5, true), 0u);
    }
}

QTEST_GUILESS_MAIN(TestTimecodeRates)
#include "tst_timecode_rates.moc"
