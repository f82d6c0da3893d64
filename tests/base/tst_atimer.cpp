// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/base/atimer.h"
#include "tests/support/patience.h"

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTest>
#include <thread>

class TestATimer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void constructors_set_what_they_say();
    void ten_starts_of_a_zero_shot_give_one_timeout_data();
    void ten_starts_of_a_zero_shot_give_one_timeout();
    void a_start_after_the_shot_gives_another();
    void a_pending_zero_shot_keeps_its_place();
    void a_repeating_timer_starts_over();
    void a_long_shot_starts_over();
    void a_pending_shot_takes_another_interval_data();
    void a_pending_shot_takes_another_interval();
    void start_with_an_interval_sets_it();
    void a_negative_interval_keeps_the_one_set();
    void start_from_another_thread_only_relays();
    void relay_start_needs_no_interval();
    void start_from_another_thread_carries_the_interval();
    void starts_from_many_threads_give_one_timeout();
};

void TestATimer::constructors_set_what_they_say()
{
    QObject parent;
    ATimer const plain(&parent);
    QVERIFY(plain.parent() == &parent);
    QVERIFY(!plain.isSingleShot());
    ATimer const shot(true, &parent);
    QVERIFY(shot.parent() == &parent);
    QVERIFY(shot.isSingleShot());
    QCOMPARE(shot.interval(), 0);
    ATimer const repeating(false);
    QVERIFY(!repeating.isSingleShot());
    QCOMPARE(repeating.interval(), 0);
}

void TestATimer::ten_starts_of_a_zero_shot_give_one_timeout_data()
{
    QTest::addColumn<bool>("with_interval");
    QTest::newRow("start()") << false;
    QTest::newRow("start(0)") << true;
}

void TestATimer::ten_starts_of_a_zero_shot_give_one_timeout()
{
    QFETCH(bool, with_interval);
    ATimer timer(true);
    QSignalSpy fired(&timer, &QTimer::timeout);
    for (int i = 0; i < 10; ++i) {
        if (with_interval)
            timer.start(0);
        else
            timer.start();
    }
    QTRY_COMPARE(fired.count(), 1);
    QVERIFY(!timer.isActive());
    QCoreApplication::processEvents();
    QCOMPARE(fired.count(), 1);
}

void TestATimer::a_start_after_the_shot_gives_another()
{
    ATimer timer(true);
    QSignalSpy fired(&timer, &QTimer::timeout);
    timer.start();
    QTRY_COMPARE(fired.count(), 1);
    timer.start();
    QTRY_COMPARE(fired.count(), 2);
}

void TestATimer::a_pending_zero_shot_keeps_its_place()
{
    QStringList order;
    ATimer first(true);
    ATimer second(true);
    connect(&first, &QTimer::timeout, this, [&] { order.append(QStringLiteral("first")); });
    connect(&second, &QTimer::timeout, this, [&] { order.append(QStringLiteral("second")); });
    first.start();
    second.start();
    first.start();
    first.start(0);
    QTRY_COMPARE(order, (QStringList{QStringLiteral("first"), QStringLiteral("second")}));
}

void TestATimer::a_repeating_timer_starts_over()
{
    QStringList order;
    ATimer first(false);
    ATimer second(true);
    connect(&first, &QTimer::timeout, this, [&] {
        order.append(QStringLiteral("first"));
        first.stop();
    });
    connect(&second, &QTimer::timeout, this, [&] { order.append(QStringLiteral("second")); });
    first.start();
    second.start();
    first.start();
    QTRY_COMPARE(order, (QStringList{QStringLiteral("second"), QStringLiteral("first")}));
}

void TestATimer::a_long_shot_starts_over()
{
    ATimer timer(true);
    timer.setTimerType(Qt::PreciseTimer);
    timer.start(100000);
    QTRY_VERIFY(timer.remainingTime() < 99990);
    QElapsedTimer since;
    since.start();
    timer.start();
    // Read before the time that has passed, which may be long on a busy machine.
    int const remaining = timer.remainingTime();
    QVERIFY(remaining + since.elapsed() >= 99995);
}

void TestATimer::a_pending_shot_takes_another_interval_data()
{
    QTest::addColumn<int>("interval");
    QTest::addColumn<int>("then");
    QTest::newRow("zero shot made long") << 0 << 100000;
    QTest::newRow("long shot made zero") << 100000 << 0;
}

void TestATimer::a_pending_shot_takes_another_interval()
{
    QFETCH(int, interval);
    QFETCH(int, then);
    ATimer timer(true);
    timer.start(interval);
    timer.start(then);
    QVERIFY(timer.isActive());
    QCOMPARE(timer.interval(), then);
}

void TestATimer::start_with_an_interval_sets_it()
{
    ATimer timer;
    timer.start(100000);
    QVERIFY(timer.isActive());
    QCOMPARE(timer.interval(), 100000);
}

void TestATimer::a_negative_interval_keeps_the_one_set()
{
    ATimer timer;
    timer.setInterval(100000);
    timer.start(-5);
    QVERIFY(timer.isActive());
    QCOMPARE(timer.interval(), 100000);
}

void TestATimer::start_from_another_thread_only_relays()
{
    ATimer timer(true);
    QSignalSpy relayed(&timer, &ATimer::relay_start);
    QSignalSpy fired(&timer, &QTimer::timeout);
    std::thread([&] { timer.start(); }).join();
    QCOMPARE(relayed.count(), 1);
    QVERIFY(!timer.isActive());
    QTRY_COMPARE(fired.count(), 1);
    timer.start();
    QCOMPARE(relayed.count(), 1);
}

void TestATimer::relay_start_needs_no_interval()
{
    QVERIFY(ATimer::staticMetaObject.indexOfSignal("relay_start()") >= 0);
    ATimer timer;
    timer.setInterval(100000);
    Q_EMIT timer.relay_start();
    QVERIFY(!timer.isActive());
    QTRY_VERIFY(timer.isActive());
    QCOMPARE(timer.interval(), 100000);
}

void TestATimer::start_from_another_thread_carries_the_interval()
{
    ATimer timer;
    std::thread([&] { timer.start(100000); }).join();
    QVERIFY(!timer.isActive());
    QTRY_VERIFY(timer.isActive());
    QCOMPARE(timer.interval(), 100000);
}

void TestATimer::starts_from_many_threads_give_one_timeout()
{
    ATimer timer(true);
    QSignalSpy fired(&timer, &QTimer::timeout);
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([&] { timer.start(); });
    for (std::thread &thread : threads)
        thread.join();
    QTRY_COMPARE(fired.count(), 1);
    QCoreApplication::processEvents();
    QCOMPARE(fired.count(), 1);
}

QTEST_GUILESS_MAIN(TestATimer)
#include "tst_atimer.moc"
