// SPDX-License-Identifier: Apache-2.0
#include "sim/vesk/vesk_motion.h"

#include <QTest>

#include <limits>

namespace {

constexpr int one = VeskMotion::normal_speed;

VeskMotion motion(double field, double speed)
{
    VeskMotion at;
    at.position = static_cast<long long>(field * one);
    at.speed = static_cast<int>(speed * one);
    return at;
}

QList<unsigned int> fields(
    VeskMotion at, int count, VeskRange const &range, void (VeskMotion::*step)(VeskRange const &))
{
    QList<unsigned int> seen;
    for (int field = 0; field < count; ++field) {
        (at.*step)(range);
        seen.append(at.field());
    }
    return seen;
}

} // namespace

class TestVeskMotion : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void goes_to_the_nearest_field_of_the_range();
    void stands_on_the_last_field_past_an_end_data();
    void stands_on_the_last_field_past_an_end();
    void shows_the_last_field_for_its_whole_time();
    void goes_round_data();
    void goes_round();
    void turns_round_data();
    void turns_round();
    void keeps_still_when_turning_in_one_field();
    void turns_at_the_highest_speeds();
};

void TestVeskMotion::goes_to_the_nearest_field_of_the_range()
{
    VeskMotion at = motion(3.5, 1);
    at.go_to(-5, {2, 10});
    QCOMPARE(at.field(), 2U);
    at.go_to(10, {2, 10});
    QCOMPARE(at.field(), 9U);
    at.go_to(4, {2, 10});
    QCOMPARE(at.position, 4LL * one);
    at.go_to(4, {0, 0});
    QCOMPARE(at.field(), 0U);
}

void TestVeskMotion::stands_on_the_last_field_past_an_end_data()
{
    QTest::addColumn<double>("from");
    QTest::addColumn<double>("speed");
    QTest::addColumn<bool>("past");
    QTest::addColumn<double>("to");
    QTest::newRow("inside") << 4.0 << 1.0 << false << 5.0;
    QTest::newRow("half speed") << 4.0 << 0.5 << false << 4.5;
    QTest::newRow("backwards") << 4.0 << -2.5 << false << 1.5;
    QTest::newRow("past the end") << 9.0 << 1.0 << true << 9.0;
    QTest::newRow("far past the end") << 2.0 << 1000.0 << true << 9.0;
    QTest::newRow("onto the start") << 1.0 << -1.0 << false << 0.0;
    QTest::newRow("past the start") << 0.0 << -0.25 << true << 0.0;
}

void TestVeskMotion::stands_on_the_last_field_past_an_end()
{
    QFETCH(double, from);
    QFETCH(double, speed);
    VeskMotion at = motion(from, speed);
    QTEST(at.step({0, 10}), "past");
    QTEST(double(at.position) / one, "to");
}

void TestVeskMotion::shows_the_last_field_for_its_whole_time()
{
    VeskMotion at = motion(9, 0.25);
    QVERIFY(!at.step({0, 10}));
    QVERIFY(!at.step({0, 10}));
    QVERIFY(!at.step({0, 10}));
    QVERIFY(at.step({0, 10}));
}

void TestVeskMotion::goes_round_data()
{
    using Fields = QList<unsigned int>;
    QTest::addColumn<double>("from");
    QTest::addColumn<double>("speed");
    QTest::addColumn<Fields>("seen");
    QTest::newRow("forwards") << 5.0 << 1.0 << Fields{6, 3, 4, 5, 6, 3};
    QTest::newRow("backwards") << 4.0 << -1.0 << Fields{3, 6, 5, 4, 3, 6};
    QTest::newRow("2.5 times") << 3.0 << 2.5 << Fields{5, 4, 6, 5, 3, 6};
    QTest::newRow("half back") << 3.0 << -0.5 << Fields{6, 6, 5, 5, 4, 4};
    QTest::newRow("more than the range") << 3.0 << 9.0 << Fields{4, 5, 6, 3, 4, 5};
    QTest::newRow("into it from before") << 1.0 << 1.0 << Fields{2, 3, 4, 5, 6, 3};
    QTest::newRow("into it from behind") << 9.0 << -1.0 << Fields{8, 7, 6, 5, 4, 3};
    QTest::newRow("behind it") << 8.0 << 1.0 << Fields{5, 6, 3, 4, 5, 6};
    QTest::newRow("before it") << 1.0 << -1.0 << Fields{4, 3, 6, 5, 4, 3};
}

void TestVeskMotion::goes_round()
{
    QFETCH(double, from);
    QFETCH(double, speed);
    QTEST(fields(motion(from, speed), 6, {3, 7}, &VeskMotion::step_round), "seen");
}

void TestVeskMotion::turns_round_data()
{
    using Fields = QList<unsigned int>;
    QTest::addColumn<double>("from");
    QTest::addColumn<double>("speed");
    QTest::addColumn<Fields>("seen");
    QTest::newRow("forwards") << 4.0 << 1.0 << Fields{5, 6, 5, 4, 3, 4, 5};
    QTest::newRow("backwards") << 4.0 << -1.0 << Fields{3, 4, 5, 6, 5, 4, 3};
    QTest::newRow("2.5 times") << 3.0 << 2.5 << Fields{5, 4, 4, 5, 3, 6, 3};
    QTest::newRow("more than the range") << 3.0 << 7.0 << Fields{4, 5, 6, 5, 4, 3, 4};
    QTest::newRow("into it from before") << 1.0 << 1.0 << Fields{2, 3, 4, 5, 6, 5, 4};
    QTest::newRow("into it from behind") << 9.0 << -1.0 << Fields{8, 7, 6, 5, 4, 3, 4};
}

void TestVeskMotion::turns_round()
{
    QFETCH(double, from);
    QFETCH(double, speed);
    QTEST(fields(motion(from, speed), 7, {3, 7}, &VeskMotion::step_to_and_fro), "seen");
}

void TestVeskMotion::keeps_still_when_turning_in_one_field()
{
    VeskMotion at = motion(3, 2.5);
    at.step_to_and_fro({3, 4});
    QCOMPARE(at.position, 3LL * one);
    at.step_to_and_fro({3, 4});
    QCOMPARE(at.position, 3LL * one);
}

void TestVeskMotion::turns_at_the_highest_speeds()
{
    VeskMotion at;
    at.speed = -std::numeric_limits<int>::max();
    for (int field = 0; field < 100; ++field) {
        at.step_to_and_fro({0, 2});
        QVERIFY(at.field() < 2);
    }
}

QTEST_GUILESS_MAIN(TestVeskMotion)
#include "tst_vesk_motion.moc"
