// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/base/hrtime.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/hrtimeout.h"
#include "tests/support/assert_log.h"
#include "tests/support/virtual_time.h"

#include <QTest>
#include <climits>
#include <memory>

Q_DECLARE_METATYPE(HRTime)

namespace {

/// Odd, so that a division which cuts off shows.
constexpr long long frequency = 3579545;

HRTime bad()
{
    return HRTime();
}
HRTime point(long long ticks)
{
    return HRTime(true, ticks);
}
HRTime duration(long long ticks)
{
    return HRTime(false, ticks);
}

bool same(HRTime const &a, HRTime const &b)
{
    return a.is_actual_time() == b.is_actual_time() && a == b;
}

char const *const needs_point = "other.is_actual_time()";
char const *const needs_duration = "other.is_duration()";

} // namespace

class TestHRTime : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();

    void frequency_is_read_once();
    void default_is_the_bad_time();
    void now_is_the_counter();
    void sums_and_differences_data();
    void sums_and_differences();
    void scaling_data();
    void scaling();
    void division_by_zero_is_an_assertion();
    void ratio_data();
    void ratio();
    void order_data();
    void order();
    void equality_data();
    void equality();
    void units_data();
    void units();
    void results_stop_at_the_end_of_64_bits_data();
    void results_stop_at_the_end_of_64_bits();
    void text_data();
    void text();
    void timeout_expires_after_its_deadline();
    void bad_timeout_has_expired();

private:
    std::unique_ptr<VirtualTime> time;
};

void TestHRTime::initTestCase()
{
    time = std::make_unique<VirtualTime>(frequency);
    HRTime const first;
    QVERIFY(first.is_badtime());
}

void TestHRTime::cleanupTestCase()
{
    time.reset();
}

void TestHRTime::frequency_is_read_once()
{
    VirtualTime const other(1000);
    QVERIFY(same(HRTime::seconds(1), duration(frequency)));
}

void TestHRTime::default_is_the_bad_time()
{
    QVERIFY(HRTime().is_badtime());
    QVERIFY(HRTime().is_actual_time());
    QVERIFY(!HRTime().is_duration());
    QVERIFY(point(0).is_badtime());
    QVERIFY(HRTime::badtime().is_badtime());
    QVERIFY(&HRTime::badtime() == &HRTime::badtime());
    QVERIFY(!point(1).is_badtime());
    QVERIFY(!point(-1).is_badtime());
    QVERIFY(!duration(0).is_badtime());
    QVERIFY(duration(0).is_duration());
    QVERIFY(!duration(0).is_actual_time());
}

void TestHRTime::now_is_the_counter()
{
    time->set_extra_ticks(1234);
    QVERIFY(same(HRTime::now(), point(1234)));
    time->advance_ms(2000);
    QVERIFY(same(HRTime::now(), point(1234 + 2 * frequency)));
}

void TestHRTime::sums_and_differences_data()
{
    QTest::addColumn<HRTime>("a");
    QTest::addColumn<HRTime>("b");
    QTest::addColumn<HRTime>("sum");
    QTest::addColumn<HRTime>("difference");
    QTest::newRow("point, point") << point(70) << point(30) << bad() << duration(40);
    QTest::newRow("point, later point") << point(30) << point(70) << bad() << duration(-40);
    QTest::newRow("point, same point") << point(30) << point(30) << bad() << duration(0);
    QTest::newRow("point, duration") << point(70) << duration(30) << point(100) << point(40);
    QTest::newRow("duration, point") << duration(70) << point(30) << point(100) << bad();
    QTest::newRow("duration, duration")
        << duration(70) << duration(30) << duration(100) << duration(40);
    QTest::newRow("point back to tick 0") << point(30) << duration(-30) << bad() << point(60);
    QTest::newRow("bad, bad") << bad() << bad() << bad() << bad();
    QTest::newRow("bad, point") << bad() << point(30) << bad() << bad();
    QTest::newRow("point, bad") << point(30) << bad() << bad() << bad();
    QTest::newRow("bad, duration") << bad() << duration(30) << bad() << bad();
    QTest::newRow("duration, bad") << duration(30) << bad() << bad() << bad();
}

void TestHRTime::sums_and_differences()
{
    QFETCH(HRTime, a);
    QFETCH(HRTime, b);
    QFETCH(HRTime, sum);
    QFETCH(HRTime, difference);
    AssertLog log;
    QVERIFY(same(a + b, sum));
    QVERIFY(same(a - b, difference));
    HRTime changed = a;
    QVERIFY(same(changed += b, sum));
    QVERIFY(same(changed, sum));
    changed = a;
    QVERIFY(same(changed -= b, difference));
    QVERIFY(same(changed, difference));
    QVERIFY(log.take().isEmpty());
}

void TestHRTime::scaling_data()
{
    QTest::addColumn<HRTime>("a");
    QTest::addColumn<long long>("n");
    QTest::addColumn<HRTime>("product");
    QTest::addColumn<HRTime>("quotient");
    QTest::newRow("duration") << duration(70) << 3ll << duration(210) << duration(23);
    QTest::newRow("negative duration") << duration(-70) << 3ll << duration(-210) << duration(-23);
    QTest::newRow("by a negative") << duration(70) << -3ll << duration(-210) << duration(-23);
    QTest::newRow("by one") << duration(70) << 1ll << duration(70) << duration(70);
    QTest::newRow("point") << point(70) << 3ll << bad() << bad();
    QTest::newRow("bad") << bad() << 3ll << bad() << bad();
}

void TestHRTime::scaling()
{
    QFETCH(HRTime, a);
    QFETCH(long long, n);
    QFETCH(HRTime, product);
    QFETCH(HRTime, quotient);
    QVERIFY(same(a * n, product));
    QVERIFY(same(a / n, quotient));
    HRTime changed = a;
    QVERIFY(same(changed *= n, product));
    QVERIFY(same(changed, product));
    changed = a;
    QVERIFY(same(changed /= n, quotient));
    QVERIFY(same(changed, quotient));
}

void TestHRTime::division_by_zero_is_an_assertion()
{
    AssertLog log;
    QVERIFY((duration(70) / 0).is_badtime());
    QCOMPARE(log.take().size(), 1);
    QCOMPARE(duration(70) / duration(0), 0ll);
    QCOMPARE(log.take().size(), 1);
}

void TestHRTime::ratio_data()
{
    QTest::addColumn<HRTime>("a");
    QTest::addColumn<HRTime>("b");
    QTest::addColumn<long long>("times");
    QTest::newRow("cut off") << duration(70) << duration(30) << 2ll;
    QTest::newRow("cut off towards 0") << duration(-70) << duration(30) << -2ll;
    QTest::newRow("less than once") << duration(29) << duration(30) << 0ll;
    QTest::newRow("points") << point(70) << point(30) << 0ll;
    QTest::newRow("point") << point(70) << duration(30) << 0ll;
    QTest::newRow("by a point") << duration(70) << point(30) << 0ll;
    QTest::newRow("bad") << bad() << bad() << 0ll;
}

void TestHRTime::ratio()
{
    QFETCH(HRTime, a);
    QFETCH(HRTime, b);
    AssertLog log;
    QTEST(a / b, "times");
    QVERIFY(log.take().isEmpty());
}

void TestHRTime::order_data()
{
    QTest::addColumn<HRTime>("a");
    QTest::addColumn<HRTime>("b");
    QTest::addColumn<bool>("less");
    QTest::addColumn<bool>("greater");
    QTest::addColumn<QString>("asserted");
    QTest::addColumn<QString>("asserted_back");
    QString const nothing;
    QTest::newRow("bad, bad") << bad() << bad() << false << false << nothing << nothing;
    QTest::newRow("bad, point") << bad() << point(-5) << true << false << nothing << nothing;
    QTest::newRow("point, bad") << point(-5) << bad() << false << true << nothing << nothing;
    QTest::newRow("bad, duration") << bad() << duration(-5) << true << false << nothing << nothing;
    QTest::newRow("duration, bad") << duration(-5) << bad() << false << true << nothing << nothing;
    QTest::newRow("points") << point(1) << point(2) << true << false << nothing << nothing;
    QTest::newRow("points back") << point(2) << point(1) << false << true << nothing << nothing;
    QTest::newRow("same points") << point(2) << point(2) << false << false << nothing << nothing;
    QTest::newRow("durations") << duration(-2) << duration(1) << true << false << nothing
                               << nothing;
    QTest::newRow("same durations")
        << duration(0) << duration(0) << false << false << nothing << nothing;
    QTest::newRow("point, duration")
        << point(1) << duration(2) << false << true << QString::fromLatin1(needs_point)
        << QString::fromLatin1(needs_duration);
    QTest::newRow("duration, point")
        << duration(2) << point(1) << true << false << QString::fromLatin1(needs_duration)
        << QString::fromLatin1(needs_point);
}

void TestHRTime::order()
{
    QFETCH(HRTime, a);
    QFETCH(HRTime, b);
    QFETCH(bool, less);
    QFETCH(bool, greater);
    QFETCH(QString, asserted);
    AssertLog log;
    QFETCH(QString, asserted_back);
    QStringList const texts = asserted.isEmpty() ? QStringList() : QStringList(asserted);
    QStringList const texts_back
        = asserted_back.isEmpty() ? QStringList() : QStringList(asserted_back);
    QCOMPARE(a < b, less);
    QCOMPARE(log.take(), texts);
    QCOMPARE(a > b, greater);
    QCOMPARE(log.take(), texts_back);
    QCOMPARE(a <= b, !greater);
    QCOMPARE(log.take(), texts_back);
    QCOMPARE(a >= b, !less);
    QCOMPARE(log.take(), texts);
}

void TestHRTime::equality_data()
{
    QTest::addColumn<HRTime>("a");
    QTest::addColumn<HRTime>("b");
    QTest::addColumn<bool>("equal");
    QTest::addColumn<QString>("asserted");
    QString const nothing;
    QTest::newRow("bad, bad") << bad() << point(0) << true << nothing;
    QTest::newRow("bad, the one bad time") << bad() << HRTime::badtime() << true << nothing;
    QTest::newRow("bad, point") << bad() << point(1) << false << nothing;
    QTest::newRow("duration of 0, bad") << duration(0) << bad() << false << nothing;
    QTest::newRow("points") << point(3) << point(3) << true << nothing;
    QTest::newRow("other points") << point(3) << point(4) << false << nothing;
    QTest::newRow("durations") << duration(3) << duration(3) << true << nothing;
    QTest::newRow("other durations") << duration(3) << duration(-3) << false << nothing;
    QTest::newRow("point, duration")
        << point(3) << duration(3) << false << QString::fromLatin1(needs_point);
    QTest::newRow("duration, point")
        << duration(3) << point(3) << false << QString::fromLatin1(needs_duration);
}

void TestHRTime::equality()
{
    QFETCH(HRTime, a);
    QFETCH(HRTime, b);
    QFETCH(bool, equal);
    QFETCH(QString, asserted);
    AssertLog log;
    QCOMPARE(a == b, equal);
    QCOMPARE(log.take(), asserted.isEmpty() ? QStringList() : QStringList(asserted));
    QCOMPARE(a != b, !equal);
    QCOMPARE(log.take().size(), asserted.isEmpty() ? 0 : 1);
}

void TestHRTime::units_data()
{
    QTest::addColumn<HRTime>("unit");
    QTest::addColumn<long long>("ticks");
    QTest::newRow("seconds") << HRTime::seconds(3) << 3 * frequency;
    QTest::newRow("negative seconds") << HRTime::seconds(-3) << -3 * frequency;
    QTest::newRow("minutes") << HRTime::minutes(3) << 180 * frequency;
    QTest::newRow("hours") << HRTime::hours(3) << 10800 * frequency;
    QTest::newRow("days") << HRTime::days(3) << 259200 * frequency;
    QTest::newRow("milliseconds") << HRTime::mseconds(1500) << frequency + frequency / 2;
    QTest::newRow("two and a half seconds") << HRTime::useconds(2500000) << 8948862ll;
    QTest::newRow("one microsecond") << HRTime::useconds(1) << 3ll;
    QTest::newRow("a microsecond ago") << HRTime::useconds(-1) << -3ll;
    QTest::newRow("less than a tick is cut") << HRTime::useconds(0) << 0ll;
    QTest::newRow("a century in microseconds")
        << HRTime::useconds(3155760000000001ll) << 3155760000ll * frequency + 3;
}

void TestHRTime::units()
{
    QFETCH(HRTime, unit);
    QFETCH(long long, ticks);
    QVERIFY(same(unit, duration(ticks)));
}

void TestHRTime::results_stop_at_the_end_of_64_bits_data()
{
    QTest::addColumn<HRTime>("result");
    QTest::addColumn<HRTime>("stopped");
    QTest::newRow("sum") << duration(LLONG_MAX) + duration(1) << duration(LLONG_MAX);
    QTest::newRow("negative sum") << duration(LLONG_MIN) + duration(-1) << duration(LLONG_MIN);
    QTest::newRow("deadline") << point(5) + duration(LLONG_MAX) << point(LLONG_MAX);
    QTest::newRow("difference") << duration(LLONG_MIN) - duration(1) << duration(LLONG_MIN);
    QTest::newRow("difference up") << duration(LLONG_MAX) - duration(-1) << duration(LLONG_MAX);
    QTest::newRow("product") << duration(LLONG_MAX) * 2 << duration(LLONG_MAX);
    QTest::newRow("negative product") << duration(LLONG_MAX) * -2 << duration(LLONG_MIN);
    QTest::newRow("quotient") << duration(LLONG_MIN) / -1 << duration(LLONG_MAX);
    QTest::newRow("days") << HRTime::days(LLONG_MAX) << duration(LLONG_MAX);
    QTest::newRow("days ago") << HRTime::days(LLONG_MIN) << duration(LLONG_MIN);
}

void TestHRTime::results_stop_at_the_end_of_64_bits()
{
    QFETCH(HRTime, result);
    QFETCH(HRTime, stopped);
    QVERIFY(same(result, stopped));
}

void TestHRTime::text_data()
{
    QTest::addColumn<HRTime>("value");
    QTest::addColumn<QString>("printed");
    auto const row = [](char const *name, HRTime const &value, char const *printed) {
        QTest::newRow(name) << value << QString::fromLatin1(printed);
    };
    row("bad", bad(), "<bad time>");
    row("nothing", duration(0), "0.000");
    row("under a millisecond", HRTime::useconds(999), "0.000");
    row("under a second", HRTime::mseconds(42) + duration(1), "0.042");
    row("nearly a second", HRTime::useconds(999500), "0.999");
    row("a second and a half", HRTime::mseconds(1500) + duration(1), "1.500");
    row("59 seconds", HRTime::seconds(59), "59.000");
    row("a minute", HRTime::seconds(60), "1:00.000");
    row("90 seconds", HRTime::seconds(90), "1:30.000");
    row("ten minutes and five", HRTime::seconds(605), "10:05.000");
    row("an hour", HRTime::hours(1), "1:00:00.000");
    row("the last second of a day", HRTime::seconds(86399), "23:59:59.000");
    row("a day", HRTime::days(1), "1+00:00:00.000");
    row("a day and an hour", HRTime::hours(25), "1+01:00:00.000");
    row("a day and a second", HRTime::seconds(86401), "1+00:00:01.000");
    row("many days", HRTime::days(12345), "12345+00:00:00.000");
    row("negative", HRTime::seconds(-90), "-1:30.000");
    row("a tick ago", duration(-1), "-0.000");
    row("point", point(90 * frequency), "1:30.000");
    row("the most negative", duration(LLONG_MIN), "-29822782+06:31:28.113");
}

void TestHRTime::text()
{
    QFETCH(HRTime, value);
    QFETCH(QString, printed);
    QCOMPARE(QString::fromStdString(value.to_string()), printed);
    QCOMPARE(QString(value.to_astring()), printed);
}

void TestHRTime::timeout_expires_after_its_deadline()
{
    time->set_extra_ticks(1);
    HRTimeout const timeout(HRTime::now() + HRTime::mseconds(10));
    QVERIFY(!timeout.timeout_expired());
    time->advance_ms(10);
    QVERIFY(!timeout.timeout_expired());
    time->set_extra_ticks(2);
    QVERIFY(timeout.timeout_expired());
}

void TestHRTime::bad_timeout_has_expired()
{
    QVERIFY(HRTimeout(HRTime()).timeout_expired());
}

QTEST_GUILESS_MAIN(TestHRTime)
#include "tst_hrtime.moc"
