// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/base/aelapsed_timer.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/clock.h"
#include "tests/support/patience.h"
#include "tests/support/virtual_time.h"

#include <QDateTime>
#include <QTest>
#include <climits>
#include <set>

class TestClock : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void platform_clock_runs_forward();
    void platform_wall_clock_is_the_time_of_day();
    void platform_counter_counts_nanoseconds();
    void platform_random_values_differ();
    void below_stays_below_its_limit_data();
    void below_stays_below_its_limit();
    void sources_are_replaced_and_restored();
    void elapsed_timer_begins_invalid();
    void elapsed_timer_counts_since_its_start();
    void elapsed_timer_ends_at_invalidate();
};

void TestClock::platform_clock_runs_forward()
{
    long long const before = AClock::monotonic_ms();
    QTRY_VERIFY(AClock::monotonic_ms() > before);
}

void TestClock::platform_wall_clock_is_the_time_of_day()
{
    auto const agrees = [] {
        long long const before = QDateTime::currentMSecsSinceEpoch();
        long long const now = AClock::wall_ms();
        return now >= before && now <= QDateTime::currentMSecsSinceEpoch();
    };
    // Once it may be set in between.
    QTRY_VERIFY(agrees());
}

void TestClock::platform_counter_counts_nanoseconds()
{
    QCOMPARE(ACounter::frequency(), 1000000000ll);
    long long const before = ACounter::ticks();
    QTRY_VERIFY(ACounter::ticks() > before);
    QVERIFY(ACounter::ticks() / 1000000 <= AClock::monotonic_ms());
}

void TestClock::platform_random_values_differ()
{
    std::set<unsigned int> values;
    for (int i = 0; i < 100; ++i)
        values.insert(ARandom::value());
    QVERIFY(values.size() > 90);
}

void TestClock::below_stays_below_its_limit_data()
{
    QTest::addColumn<unsigned int>("drawn");
    QTest::addColumn<unsigned int>("limit");
    QTest::addColumn<unsigned int>("result");
    QTest::newRow("no limit") << 77u << 0u << 0u;
    QTest::newRow("one") << UINT_MAX << 1u << 0u;
    QTest::newRow("lowest of ten") << 0u << 10u << 0u;
    QTest::newRow("middle of ten") << 0x80000000u << 10u << 5u;
    QTest::newRow("highest of ten") << UINT_MAX << 10u << 9u;
    QTest::newRow("whole range") << UINT_MAX << UINT_MAX << UINT_MAX - 1;
}

void TestClock::below_stays_below_its_limit()
{
    QFETCH(unsigned int, drawn);
    QFETCH(unsigned int, limit);
    FixedRandom random;
    random.set_next(drawn);
    QTEST(ARandom::below(limit), "result");
}

void TestClock::sources_are_replaced_and_restored()
{
    {
        VirtualTime time(1000);
        FixedRandom random;
        time.set_wall_start_ms(50);
        time.advance_ms(3);
        QCOMPARE(AClock::monotonic_ms(), 3ll);
        QCOMPARE(AClock::wall_ms(), 53ll);
        QCOMPARE(ACounter::ticks(), 3ll);
        QCOMPARE(ACounter::frequency(), 1000ll);
        QCOMPARE(ARandom::value(), 0u);
        QCOMPARE(ARandom::value(), 1u);
    }
    QVERIFY(AClock::wall_ms() > 1000000);
    QCOMPARE(ACounter::frequency(), 1000000000ll);
    QVERIFY(AClock::set_source(nullptr) == nullptr);
    QVERIFY(ARandom::set_source(nullptr) == nullptr);
    QVERIFY(ACounter::set_source(nullptr) == nullptr);
}

void TestClock::elapsed_timer_begins_invalid()
{
    AElapsedTimer const timer;
    QVERIFY(!timer.is_valid());
    QCOMPARE(timer.elapsed_ms(), 0ll);
}

void TestClock::elapsed_timer_counts_since_its_start()
{
    VirtualTime time;
    AElapsedTimer timer;
    time.advance_ms(100);
    timer.start();
    QVERIFY(timer.is_valid());
    QCOMPARE(timer.elapsed_ms(), 0ll);
    time.advance_ms(7);
    QCOMPARE(timer.elapsed_ms(), 7ll);
    timer.start();
    QCOMPARE(timer.elapsed_ms(), 0ll);
}

void TestClock::elapsed_timer_ends_at_invalidate()
{
    VirtualTime time;
    AElapsedTimer timer;
    timer.start();
    time.advance_ms(7);
    timer.invalidate();
    QVERIFY(!timer.is_valid());
    QCOMPARE(timer.elapsed_ms(), 0ll);
}

QTEST_GUILESS_MAIN(TestClock)
#include "tst_clock.moc"
