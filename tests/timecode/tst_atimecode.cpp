// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/timecode/atimecode.h"
#include "tests/support/assert_log.h"
#include "tests/support/astring_make.h"
#include "tests/support/astring_print.h"
#include "tests/support/shown_timecode.h"
#include "tests/timecode/standard_numbers.h"

#include <QTest>
#include <climits>
#include <type_traits>

using namespace Corvane;

// A value that owns nothing: whatever is done to it allocates nothing.
static_assert(std::is_trivially_copyable_v<ATimecode>);

namespace {

VideoFrequency const hz59_94 = VideoFrequency::v59_94;
VideoFrequency const hz50 = VideoFrequency::v50;
VideoFrequency const hz29_97 = VideoFrequency::v29_97;
VideoFrequency const hz25 = VideoFrequency::v25;

ATimecode fields(unsigned int n)
{
    return ATimecode(hz25, n, 1);
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

void TestATimecode::components_of_undefined_are_0()
{
    ATimecode t;
    t.set_nfields(123456);
    QCOMPARE(shown(t), QStringLiteral("0+0:0:0:0 F1"));
}

QTEST_GUILESS_MAIN(TestATimecode)
#include "tst_atimecode.moc"
