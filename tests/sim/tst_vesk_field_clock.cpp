// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/base/clock.h"
#include "sim/vesk/vesk_field_clock.h"
#include "sim/vesk/vesk_field_timer.h"
#include "tests/support/patience.h"

#include <QTest>

#include <algorithm>
#include <numeric>
#include <utility>

using VCTP3::VideoStandard;

namespace {

/// Time that goes on when the test says so.
class HandClock : public AClock::Source
{
public:
    HandClock() { AClock::set_source(this); }
    ~HandClock() override { AClock::set_source(nullptr); }
    long long monotonic_ms() override { return now; }
    long long wall_ms() override { return now; }

    long long now = 5000;
};

} // namespace

class TestVeskFieldClock : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void runs_at_the_rate_of_its_standard_data();
    void runs_at_the_rate_of_its_standard();
    void takes_an_unknown_rate_for_59_94();
    void begins_each_field_when_the_one_before_is_over();
    void starts_at_ten_in_the_morning();
    void wraps_timecodes_at_midnight();
    void passes_the_fields_of_real_time();
    void passes_parts_of_fields();
    void makes_up_for_late_timer_events();
    void makes_up_for_no_more_fields_in_one_go_when_it_passes_parts();
};

void TestVeskFieldClock::runs_at_the_rate_of_its_standard_data()
{
    QTest::addColumn<VideoStandard>("standard");
    QTest::addColumn<unsigned int>("nominal");
    QTest::addColumn<quint64>("in_1001_seconds");
    QTest::addColumn<unsigned int>("per_day");
    QTest::newRow("50") << VideoStandard::v1080_50i << 50U << quint64(50050) << 4320000U;
    QTest::newRow("59.94") << VideoStandard::v1080_59_94i << 60U << quint64(60000) << 5178816U;
    QTest::newRow("60") << VideoStandard::v4K_60p << 60U << quint64(60060) << 5184000U;
    QTest::newRow("525") << VideoStandard::v525_59_94i << 60U << quint64(60000) << 5178816U;
    QTest::newRow("625") << VideoStandard::v625_50i << 50U << quint64(50050) << 4320000U;
}

void TestVeskFieldClock::runs_at_the_rate_of_its_standard()
{
    QFETCH(VideoStandard, standard);
    QVERIFY(VeskFieldClock::has_rate(standard));
    VeskFieldClock const clock(standard);
    QTEST(clock.fields_per_second(), "nominal");
    QTEST(clock.fields_within(1001000), "in_1001_seconds");
    QTEST(clock.fields_per_day(), "per_day");
    QCOMPARE(clock.standard(), standard);
}

void TestVeskFieldClock::takes_an_unknown_rate_for_59_94()
{
    QVERIFY(!VeskFieldClock::has_rate(VideoStandard::v1080_25p));
    QVERIFY(VeskFieldClock(VideoStandard::v1080_25p).standard() == VideoStandard::v1080_59_94i);
}

void TestVeskFieldClock::begins_each_field_when_the_one_before_is_over()
{
    for (VideoStandard standard : {VideoStandard::v1080_50i, VideoStandard::v1080_59_94i}) {
        VeskFieldClock const clock(standard);
        for (quint64 field = 1; field < 1000; ++field) {
            quint64 const begin = clock.begin_of(field);
            QCOMPARE(clock.fields_within(begin), field);
            QCOMPARE(clock.fields_within(begin - 1), field - 1);
        }
    }
}

void TestVeskFieldClock::starts_at_ten_in_the_morning()
{
    VeskFieldClock clock(VideoStandard::v1080_50i);
    QCOMPARE(clock.time_of_day().position, 10 * 60 * 60 * 50);
    clock.advance();
    QCOMPARE(clock.now(), quint64(1));
    QCOMPARE(clock.time_of_day().position, 10 * 60 * 60 * 50 + 1);
    QVERIFY(clock.time_of_day().valid);
    QVERIFY(clock.time_of_day().dfflag == VCTP3::DropFrameFlag::ndf);
    QVERIFY(VeskFieldClock(VideoStandard::v1080_59_94i).time_of_day().dfflag
        == VCTP3::DropFrameFlag::df);
}

void TestVeskFieldClock::wraps_timecodes_at_midnight()
{
    VeskFieldClock const clock(VideoStandard::v1080_59_94i);
    QCOMPARE(clock.timecode(5178815).position, 5178815);
    QCOMPARE(clock.timecode(5178816).position, 0);
}

void TestVeskFieldClock::passes_the_fields_of_real_time()
{
    HandClock hand;
    VeskFieldClock const clock(VideoStandard::v1080_50i);
    int fields = 0;
    VeskFieldTimer timer(&clock, [&fields] { ++fields; });
    timer.start();
    hand.now += 20;
    QTRY_COMPARE(fields, 1);
    hand.now += 30;
    QTRY_COMPARE(fields, 2);
    hand.now += 10;
    QTRY_COMPARE(fields, 3);
}

void TestVeskFieldClock::passes_parts_of_fields()
{
    HandClock hand;
    VeskFieldClock const clock(VideoStandard::v1080_50i);
    int parts = 0;
    VeskFieldTimer timer(
        &clock, [&parts] { ++parts; }, 3);
    timer.start();
    // Thirds of 20 ms begin at 6.7, 13.3, 20, 26.7 and so on.
    for (auto const &[ms, passed] : {std::pair(7, 1), {6, 1}, {1, 2}, {6, 3}, {7, 4}}) {
        hand.now += ms;
        QTRY_COMPARE(parts, passed);
    }
}

void TestVeskFieldClock::makes_up_for_late_timer_events()
{
    HandClock hand;
    VeskFieldClock const clock(VideoStandard::v1080_59_94i);
    quint64 fields = 0;
    quint64 most = 0;
    quint64 in_this_go = 0;
    VeskFieldTimer timer(&clock, [&] {
        ++fields;
        most = std::max(most, ++in_this_go);
    });
    QTimer between;
    QObject::connect(&between, &QTimer::timeout, &between, [&in_this_go] { in_this_go = 0; });
    between.start(0);
    timer.start();
    hand.now += 10010;
    QTRY_COMPARE(fields, quint64(600));
    QVERIFY(most >= 30);
    timer.stop();
}

void TestVeskFieldClock::makes_up_for_no_more_fields_in_one_go_when_it_passes_parts()
{
    HandClock hand;
    VeskFieldClock const clock(VideoStandard::v1080_50i);
    QList<int> goes{0};
    VeskFieldTimer timer(
        &clock, [&goes] { ++goes.last(); }, 4);
    QTimer between;
    QObject::connect(&between, &QTimer::timeout, &between, [&goes] { goes.append(0); });
    between.start(0);
    timer.start();
    hand.now += 1000;
    QTRY_COMPARE(std::accumulate(goes.cbegin(), goes.cend(), 0), 200);
    QCOMPARE(*std::max_element(goes.cbegin(), goes.cend()), 120);
}

QTEST_GUILESS_MAIN(TestVeskFieldClock)
#include "tst_vesk_field_clock.moc"
