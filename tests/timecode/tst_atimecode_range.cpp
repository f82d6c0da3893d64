// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/timecode/atimecode_range.h"

#include <QTest>
#include <climits>

using namespace Corvane;

namespace {

constexpr unsigned int day = 2160000;

ATimecode fields(unsigned int n)
{
    return ATimecode(VideoFrequency::v25, n, 1);
}

ATimecodeRange range(unsigned int start, unsigned int duration)
{
    return ATimecodeRange(fields(start), duration);
}

constexpr unsigned int none = UINT_MAX;

/// The count, or `none` while undefined.
unsigned int count(ATimecode const &t)
{
    return t.is_defined() ? t.get_nfields() : none;
}

} // namespace

class TestATimecodeRange : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void default_is_undefined_and_empty()
    {
        ATimecodeRange const r;
        QVERIFY(r.is_undefined());
        QCOMPARE(r.get_duration(), 0u);
        QVERIFY(!r.nonzero_range());
        QVERIFY(r.get_last().is_undefined());
        QVERIFY(r.get_next().is_undefined());
        QVERIFY(!r.contains(fields(0)));
    }

    void in_out_lasts_up_to_the_next()
    {
        ATimecodeRange const r = ATimecodeRange::in_out(fields(10), fields(15));
        QCOMPARE(count(r.get_start()), 10u);
        QCOMPARE(r.get_duration(), 5u);
        QCOMPARE(ATimecodeRange::in_out(fields(15), fields(10)).get_duration(), 0u);
        QCOMPARE(ATimecodeRange::in_out(fields(15), ATimecode()).get_duration(), 0u);
        QCOMPARE(count(ATimecodeRange::in_out(fields(15), ATimecode())), 15u);
        QVERIFY(ATimecodeRange::in_out(ATimecode(), fields(5)).is_undefined());
    }

    void start_duration_takes_the_count()
    {
        QCOMPARE(ATimecodeRange::start_duration(fields(10), fields(7)).get_duration(), 7u);
        ATimecode undefined;
        undefined.set_nfields(9);
        QCOMPARE(ATimecodeRange::start_duration(fields(10), undefined).get_duration(), 0u);
    }

    void parts_are_set_by_themselves()
    {
        ATimecodeRange r = range(10, 5);
        r.set_start(fields(20));
        QCOMPARE(count(r), 20u);
        QCOMPARE(r.get_duration(), 5u);
        r.set_duration(8);
        QCOMPARE(count(r.get_next()), 28u);
        r.set_min_duration(7);
        QCOMPARE(r.get_duration(), 8u);
        r.set_min_duration(9);
        QCOMPARE(r.get_duration(), 9u);
    }

    void last_is_inside_and_next_beyond()
    {
        QCOMPARE(count(range(10, 5).get_last()), 14u);
        QCOMPARE(count(range(10, 5).get_next()), 15u);
        QCOMPARE(count(range(10, 1).get_last()), 10u);
        QCOMPARE(count(range(10, 0).get_last()), none);
        QCOMPARE(count(range(10, 0).get_next()), 10u);
    }

    void forms_of_24_hours_stay_within_the_day()
    {
        ATimecodeRange const r = range(2 * day - 2, 5);
        QCOMPARE(count(r.get_start24()), day - 2);
        QCOMPARE(count(r.get_last24()), 2u);
        QCOMPARE(count(r.get_next24()), 3u);
        QCOMPARE(count(range(5, 0).get_last24()), none);
    }

    void nonzero_is_defined_with_a_field()
    {
        QVERIFY(range(10, 1).nonzero_range());
        QVERIFY(!range(10, 0).nonzero_range());
        QVERIFY(!ATimecodeRange(ATimecode(), 5).nonzero_range());
    }

    void contains_from_start_to_last()
    {
        ATimecodeRange const r = range(10, 5);
        QVERIFY(!r.contains(fields(9)));
        QVERIFY(r.contains(fields(10)));
        QVERIFY(r.contains(fields(14)));
        QVERIFY(!r.contains(fields(15)));
        QVERIFY(!r.contains(ATimecode()));
        QVERIFY(!range(10, 0).contains(fields(10)));
        QVERIFY(!ATimecodeRange(ATimecode(), 5).contains(fields(10)));
    }

    void contains24_by_the_time_of_day_data()
    {
        QTest::addColumn<unsigned>("start");
        QTest::addColumn<unsigned>("duration");
        QTest::addColumn<QList<unsigned>>("inside");
        QTest::addColumn<QList<unsigned>>("outside");
        using List = QList<unsigned>;
        QTest::newRow("within") << 10u << 5u << List{10, 14, day + 10, 3 * day + 14}
                                << List{9, 15, day + 15};
        QTest::newRow("a field") << 10u << 1u << List{10, day + 10} << List{9, 11, day - 1};
        QTest::newRow("across midnight")
            << day - 2 << 5u << List{day - 2, day - 1, 0, 2, day + 2} << List{3, day - 3, day + 3};
        QTest::newRow("start beyond the day") << 2 * day + 10 << 5u << List{10, 14} << List{9, 15};
        QTest::newRow("up to midnight")
            << day - 2 << 2u << List{day - 2, day - 1} << List{0, day - 3};
        QTest::newRow("a day less a field") << 10u << day - 1 << List{10, 0, 8} << List{9};
        QTest::newRow("a day") << 10u << day << List{0, 9, 10, 11, day - 1} << List{};
        QTest::newRow("nothing") << 10u << 0u << List{} << List{9, 10, 11};
    }
    void contains24_by_the_time_of_day()
    {
        QFETCH(unsigned, start);
        QFETCH(unsigned, duration);
        QFETCH(QList<unsigned>, inside);
        QFETCH(QList<unsigned>, outside);
        ATimecodeRange const r = range(start, duration);
        for (unsigned int n : inside)
            QVERIFY2(r.contains24(fields(n)), qPrintable(QString::number(n)));
        for (unsigned int n : outside)
            QVERIFY2(!r.contains24(fields(n)), qPrintable(QString::number(n)));
        QVERIFY(!r.contains24(ATimecode()));
        QVERIFY(!ATimecodeRange(ATimecode(), duration).contains24(fields(start)));
    }

    void clips_to_the_ends()
    {
        ATimecodeRange const r = range(10, 5);
        QCOMPARE(count(r.clip_to_range(fields(9))), 10u);
        QCOMPARE(count(r.clip_to_range(fields(10))), 10u);
        QCOMPARE(count(r.clip_to_range(fields(12))), 12u);
        QCOMPARE(count(r.clip_to_range(fields(14))), 14u);
        QCOMPARE(count(r.clip_to_range(fields(99))), 14u);
        // Undefined is greater than all others.
        QCOMPARE(count(r.clip_to_range(ATimecode())), 14u);
        QCOMPARE(count(range(10, 0).clip_to_range(fields(10))), none);
        QCOMPARE(count(ATimecodeRange(ATimecode(), 5).clip_to_range(fields(10))), none);
    }

    void clips_to_the_nearer_end_around_the_clock_data()
    {
        QTest::addColumn<unsigned>("start");
        QTest::addColumn<unsigned>("duration");
        QTest::addColumn<unsigned>("t");
        QTest::addColumn<unsigned>("expected");
        QTest::newRow("inside") << 10u << 5u << 12u << 12u;
        QTest::newRow("inside, a day later") << 10u << 5u << day + 12 << day + 12;
        QTest::newRow("before") << 10u << 5u << 9u << 10u;
        QTest::newRow("beyond") << 10u << 5u << 16u << 14u;
        QTest::newRow("before, around midnight") << 10u << 5u << day - 9 << 10u;
        QTest::newRow("beyond, around midnight") << day - 20 << 5u << 3u << day - 16;
        // Start 10 and last 14: as far from both at half a day from 12.
        QTest::newRow("tie") << 10u << 5u << day / 2 + 12 << 10u;
        QTest::newRow("nearer to the last") << 10u << 5u << day / 2 + 11 << 14u;
        QTest::newRow("start is taken into the day") << day + 10 << 5u << 9u << 10u;
        QTest::newRow("last is not") << day - 2 << 5u << 4u << day + 2;
        QTest::newRow("beyond, a day later") << 10u << 5u << day + 16 << 10u;
        QTest::newRow("just beyond, at midnight") << day - 5 << 5u << day << day - 1;
        QTest::newRow("undefined") << 10u << 5u << none << 10u;
        QTest::newRow("nothing") << 10u << 0u << 10u << none;
    }
    void clips_to_the_nearer_end_around_the_clock()
    {
        QFETCH(unsigned, start);
        QFETCH(unsigned, duration);
        QFETCH(unsigned, t);
        QFETCH(unsigned, expected);
        ATimecode const time = t == none ? ATimecode() : fields(t);
        QCOMPARE(count(range(start, duration).clip_to_range24(time)), expected);
        QCOMPARE(count(ATimecodeRange(ATimecode(), duration).clip_to_range24(time)), none);
    }
};

QTEST_GUILESS_MAIN(TestATimecodeRange)
#include "tst_atimecode_range.moc"
