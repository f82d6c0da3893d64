// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/base/aflywheel.h"
#include "tests/support/virtual_time.h"

#include <QTest>
#include <climits>

/// 50 ms are 3 ticks of 1/60 second, 100 ms are 6, 1000 ms are 60.
class TestAFlyWheel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void without_a_value_it_shows_zero();
    void before_a_run_is_believed_the_newest_value_shows();
    void a_believed_run_runs_on_by_itself_data();
    void a_believed_run_runs_on_by_itself();
    void a_run_is_believed_at_exactly_its_sequence_time_data();
    void a_run_is_believed_at_exactly_its_sequence_time();
    void a_jump_starts_the_run_over_data();
    void a_jump_starts_the_run_over();
    void a_single_outlier_does_not_disturb_the_flywheel();
    void extrapolation_ends_after_the_flywheel_time_data();
    void extrapolation_ends_after_the_flywheel_time();
    void distance_is_rounded_and_limited_data();
    void distance_is_rounded_and_limited();
    void value_is_limited_but_raw_value_is_not();
    void limits_begin_open();
    void crossed_limits_give_the_upper_one();
    void flywheel_longer_carries_through_a_gap();
    void flywheel_longer_holds_back_a_new_run_until_its_time();
    void flywheel_longer_does_nothing_once_the_time_has_run_out();
    void flywheel_keeps_the_speed_of_its_run();
    void clear_forgets_values_and_keeps_settings();
    void times_can_be_told();

private:
    static void believe(AFlyWheel *wheel, VirtualTime *time, int step_each_50_ms);
};

/// A run from 1000 that has just been believed; returns at its last value.
void TestAFlyWheel::believe(AFlyWheel *wheel, VirtualTime *time, int step_each_50_ms)
{
    int value = 1000;
    wheel->set_value(value);
    for (int i = 0; i < 4; ++i) {
        time->advance_ms(50);
        value += step_each_50_ms;
        wheel->set_value(value);
    }
}

void TestAFlyWheel::without_a_value_it_shows_zero()
{
    VirtualTime time;
    AFlyWheel const wheel;
    QCOMPARE(wheel.get_value(), 0);
    QCOMPARE(wheel.get_raw_value(), 0);
}

void TestAFlyWheel::before_a_run_is_believed_the_newest_value_shows()
{
    VirtualTime time;
    AFlyWheel wheel;
    wheel.set_value(500);
    QCOMPARE(wheel.get_value(), 500);
    time.advance_ms(50);
    QCOMPARE(wheel.get_value(), 500);
    wheel.set_value(497);
    QCOMPARE(wheel.get_value(), 497);
    time.advance_ms(50);
    QCOMPARE(wheel.get_value(), 497);
}

void TestAFlyWheel::a_believed_run_runs_on_by_itself_data()
{
    QTest::addColumn<int>("speed");
    QTest::addColumn<int>("step");
    QTest::addColumn<int>("at_last");
    QTest::addColumn<int>("after_100_ms");
    // Half of a step is added before the cut towards 0, so a count-down comes one step late.
    QTest::newRow("down, as it begins") << 0 << -3 << 988 << 983;
    QTest::newRow("down") << -65536 << -3 << 988 << 983;
    QTest::newRow("up") << 65536 << 3 << 1012 << 1018;
    QTest::newRow("two up") << 131072 << 6 << 1024 << 1036;
}

void TestAFlyWheel::a_believed_run_runs_on_by_itself()
{
    QFETCH(int, speed);
    QFETCH(int, step);
    VirtualTime time;
    AFlyWheel wheel;
    if (speed == 65536)
        wheel.set_count_up();
    else if (speed == -65536)
        wheel.set_count_down();
    else if (speed != 0)
        wheel.set_count_speed(speed);
    believe(&wheel, &time, step);
    QTEST(wheel.get_value(), "at_last");
    time.advance_ms(100);
    QTEST(wheel.get_value(), "after_100_ms");
}

void TestAFlyWheel::a_run_is_believed_at_exactly_its_sequence_time_data()
{
    QTest::addColumn<int>("run_ms");
    QTest::addColumn<bool>("believed");
    // 10 ticks are 166.67 ms, and elapsed time is cut to whole ticks.
    QTest::newRow("9 ticks") << 166 << false;
    QTest::newRow("10 ticks") << 167 << true;
}

void TestAFlyWheel::a_run_is_believed_at_exactly_its_sequence_time()
{
    QFETCH(int, run_ms);
    QFETCH(bool, believed);
    VirtualTime time;
    AFlyWheel wheel;
    wheel.set_count_up();
    wheel.set_value(0);
    time.advance_ms(run_ms);
    wheel.set_value(10);
    time.advance_ms(100);
    QCOMPARE(wheel.get_value(), believed ? 16 : 10);
}

void TestAFlyWheel::a_jump_starts_the_run_over_data()
{
    QTest::addColumn<int>("second");
    QTest::addColumn<bool>("believed");
    QTest::newRow("as expected") << 112 << true;
    QTest::newRow("19 above") << 131 << true;
    QTest::newRow("20 above") << 132 << false;
    QTest::newRow("19 below") << 93 << true;
    QTest::newRow("20 below") << 92 << false;
}

void TestAFlyWheel::a_jump_starts_the_run_over()
{
    QFETCH(int, second);
    QFETCH(bool, believed);
    VirtualTime time;
    AFlyWheel wheel;
    wheel.set_count_up();
    wheel.set_value(100);
    time.advance_ms(200);
    wheel.set_value(second);
    time.advance_ms(50);
    QCOMPARE(wheel.get_value(), believed ? second + 3 : second);
}

void TestAFlyWheel::a_single_outlier_does_not_disturb_the_flywheel()
{
    VirtualTime time;
    AFlyWheel wheel;
    wheel.set_count_up();
    believe(&wheel, &time, 3);
    time.advance_ms(50);
    wheel.set_value(50);
    QCOMPARE(wheel.get_value(), 1015);
    time.advance_ms(50);
    wheel.set_value(1018);
    QCOMPARE(wheel.get_value(), 1018);
}

void TestAFlyWheel::extrapolation_ends_after_the_flywheel_time_data()
{
    QTest::addColumn<int>("age_ms");
    QTest::addColumn<int>("shown");
    QTest::newRow("60 ticks") << 1016 << 1072;
    QTest::newRow("61 ticks: the newest value") << 1017 << 1012;
}

void TestAFlyWheel::extrapolation_ends_after_the_flywheel_time()
{
    QFETCH(int, age_ms);
    VirtualTime time;
    AFlyWheel wheel;
    wheel.set_count_up();
    believe(&wheel, &time, 3);
    time.advance_ms(age_ms);
    QTEST(wheel.get_value(), "shown");
}

void TestAFlyWheel::distance_is_rounded_and_limited_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("speed");
    QTest::addColumn<int>("ms");
    QTest::addColumn<int>("shown");
    QTest::newRow("no time") << 5 << 65536 << 0 << 5;
    QTest::newRow("a third of a step") << 0 << 21846 << 17 << 0;
    QTest::newRow("half a step") << 0 << 32768 << 17 << 1;
    QTest::newRow("a step and a half") << 0 << 32768 << 50 << 2;
    QTest::newRow("one step down is cut to none") << 0 << -65536 << 17 << 0;
    QTest::newRow("two steps down") << 0 << -65536 << 34 << -1;
    QTest::newRow("standing") << 9 << 0 << 1000 << 9;
    QTest::newRow("value past the top") << INT_MAX << 65536 << 1000 << INT_MAX;
    QTest::newRow("value past the bottom") << INT_MIN << -65536 << 1000 << INT_MIN;
    QTest::newRow("distance past the top") << -1 << INT_MAX << 2000000 << INT_MAX - 1;
    QTest::newRow("distance past the bottom") << 1 << INT_MIN << 2000000 << INT_MIN + 1;
}

void TestAFlyWheel::distance_is_rounded_and_limited()
{
    QFETCH(int, value);
    QFETCH(int, speed);
    QFETCH(int, ms);
    VirtualTime time;
    AFlyWheel wheel(0, UINT_MAX);
    wheel.set_count_speed(speed);
    wheel.set_value(value);
    time.advance_ms(ms);
    QTEST(wheel.get_raw_value(), "shown");
}

void TestAFlyWheel::value_is_limited_but_raw_value_is_not()
{
    VirtualTime time;
    AFlyWheel wheel;
    wheel.set_min_value(100);
    wheel.set_max_value(200);
    QCOMPARE(wheel.get_min_value(), 100);
    QCOMPARE(wheel.get_max_value(), 200);
    QCOMPARE(wheel.get_value(), 100);
    wheel.set_value(300);
    QCOMPARE(wheel.get_value(), 200);
    QCOMPARE(wheel.get_raw_value(), 300);
    wheel.set_value(150);
    QCOMPARE(wheel.get_value(), 150);
}

void TestAFlyWheel::limits_begin_open()
{
    AFlyWheel const wheel;
    QCOMPARE(wheel.get_min_value(), INT_MIN);
    QCOMPARE(wheel.get_max_value(), INT_MAX);
}

void TestAFlyWheel::crossed_limits_give_the_upper_one()
{
    AFlyWheel wheel;
    wheel.set_min_value(10);
    wheel.set_max_value(-10);
    QCOMPARE(wheel.get_value(), -10);
}

void TestAFlyWheel::flywheel_longer_carries_through_a_gap()
{
    VirtualTime time;
    AFlyWheel wheel;
    wheel.set_count_up();
    believe(&wheel, &time, 3);
    time.advance_ms(1000);
    wheel.flywheel_longer();
    time.advance_ms(1000);
    QCOMPARE(wheel.get_value(), 1012 + 120);
    wheel.flywheel_longer();
    time.advance_ms(1000);
    QCOMPARE(wheel.get_value(), 1012 + 180);
    time.advance_ms(17);
    // The run was given up with the gap, so there is no value to fall back on.
    QCOMPARE(wheel.get_value(), 0);
}

void TestAFlyWheel::flywheel_longer_holds_back_a_new_run_until_its_time()
{
    VirtualTime time;
    AFlyWheel wheel;
    wheel.set_count_up();
    believe(&wheel, &time, 3);
    wheel.flywheel_longer();
    // A run of other values is believed only when the hold has run out.
    for (int ms = 0; ms <= 1000; ms += 50) {
        wheel.set_value(5000 + ms * 60 / 1000);
        QCOMPARE(wheel.get_value(), 1012 + ms * 60 / 1000);
        time.advance_ms(50);
    }
    wheel.set_value(5063);
    time.advance_ms(50);
    QCOMPARE(wheel.get_value(), 5066);
}

void TestAFlyWheel::flywheel_longer_does_nothing_once_the_time_has_run_out()
{
    VirtualTime time;
    AFlyWheel wheel;
    wheel.flywheel_longer();
    QCOMPARE(wheel.get_value(), 0);
    wheel.set_count_up();
    believe(&wheel, &time, 3);
    time.advance_ms(1100);
    wheel.flywheel_longer();
    QCOMPARE(wheel.get_value(), 1012);
}

void TestAFlyWheel::flywheel_keeps_the_speed_of_its_run()
{
    VirtualTime time;
    AFlyWheel wheel;
    wheel.set_count_up();
    believe(&wheel, &time, 3);
    wheel.set_count_down();
    time.advance_ms(100);
    QCOMPARE(wheel.get_value(), 1018);
}

void TestAFlyWheel::clear_forgets_values_and_keeps_settings()
{
    VirtualTime time;
    AFlyWheel wheel;
    wheel.set_count_up();
    wheel.set_max_value(1005);
    believe(&wheel, &time, 3);
    wheel.flywheel_longer();
    wheel.clear();
    QCOMPARE(wheel.get_raw_value(), 0);
    believe(&wheel, &time, 3);
    time.advance_ms(50);
    QCOMPARE(wheel.get_raw_value(), 1015);
    QCOMPARE(wheel.get_value(), 1005);
}

void TestAFlyWheel::times_can_be_told()
{
    VirtualTime time;
    AFlyWheel wheel(3, 6);
    wheel.set_count_up();
    wheel.set_value(100);
    time.advance_ms(50);
    wheel.set_value(103);
    time.advance_ms(100);
    QCOMPARE(wheel.get_value(), 109);
    time.advance_ms(17);
    QCOMPARE(wheel.get_value(), 103);
}

QTEST_GUILESS_MAIN(TestAFlyWheel)
#include "tst_aflywheel.moc"
