// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/base/semaphores.h"
#include "tests/support/assert_log.h"
#include "tests/support/patience.h"

#include <QElapsedTimer>
#include <QFile>
#include <QTest>
#include <algorithm>
#include <array>
#include <atomic>
#include <pthread.h>
#include <signal.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

/// Whether a thread of this process, 0 for none yet, waits for something.
bool sleeps(pid_t id)
{
    QFile file(QStringLiteral("/proc/self/task/%1/stat").arg(id));
    if (id == 0 || !file.open(QIODevice::ReadOnly))
        return false;
    QByteArray const text = file.readAll();
    return text.mid(text.lastIndexOf(')')).startsWith(") S");
}

} // namespace

class TestSemaphores : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void takes_exactly_the_initial_permits_data();
    void takes_exactly_the_initial_permits();
    void bad_limits_are_an_assertion_data();
    void bad_limits_are_an_assertion();
    void a_semaphore_without_handle_is_never_given_nor_taken();
    void giving_past_the_maximum_gives_nothing_data();
    void giving_past_the_maximum_gives_nothing();
    void a_take_times_out_without_an_assertion();
    void a_wait_without_limit_ends_with_a_give();
    void take_n_waits_for_each_permit();
    void one_give_of_many_wakes_as_many();
    void signals_neither_end_nor_stretch_a_wait();
    void binary_begins_as_told_data();
    void binary_begins_as_told();
    void binary_given_twice_is_given_once();
};

void TestSemaphores::takes_exactly_the_initial_permits_data()
{
    QTest::addColumn<unsigned int>("initial");
    QTest::addColumn<unsigned int>("maximum");
    QTest::newRow("none of one") << 0u << 1u;
    QTest::newRow("one of one") << 1u << 1u;
    QTest::newRow("three of five") << 3u << 5u;
    QTest::newRow("largest maximum") << 2u << UINT_MAX;
}

void TestSemaphores::takes_exactly_the_initial_permits()
{
    QFETCH(unsigned int, initial);
    QFETCH(unsigned int, maximum);
    AssertLog log;
    CountingSemaphore semaphore(initial, maximum);
    for (unsigned int i = 0; i < initial; ++i)
        QVERIFY(semaphore.semTake(0));
    QVERIFY(!semaphore.semTake(0));
    QVERIFY(log.take().isEmpty());
}

void TestSemaphores::bad_limits_are_an_assertion_data()
{
    QTest::addColumn<unsigned int>("initial");
    QTest::addColumn<unsigned int>("maximum");
    QTest::newRow("maximum of none") << 0u << 0u;
    QTest::newRow("more than the maximum") << 3u << 2u;
}

void TestSemaphores::bad_limits_are_an_assertion()
{
    QFETCH(unsigned int, initial);
    QFETCH(unsigned int, maximum);
    AssertLog log;
    CountingSemaphore const semaphore(initial, maximum);
    QCOMPARE(log.take(), QStringList{QStringLiteral("sem != INVALID_HANDLE_VALUE")});
}

void TestSemaphores::a_semaphore_without_handle_is_never_given_nor_taken()
{
    AssertLog log;
    CountingSemaphore semaphore(3, 2);
    log.take();
    QVERIFY(!semaphore.semGive());
    QVERIFY(!semaphore.semTake(0));
    QVERIFY(!semaphore.semTake(1000000));
    QVERIFY(log.take().isEmpty());
    QVERIFY(!semaphore.semTake(CountingSemaphore::infinite));
    QCOMPARE(log.take(), QStringList{QStringLiteral("time != INFINITE")});
}

void TestSemaphores::giving_past_the_maximum_gives_nothing_data()
{
    QTest::addColumn<unsigned int>("initial");
    QTest::addColumn<unsigned int>("count");
    QTest::addColumn<bool>("accepted");
    QTest::addColumn<unsigned int>("permits");
    QTest::newRow("nothing") << 1u << 0u << false << 1u;
    QTest::newRow("up to the maximum") << 1u << 3u << true << 4u;
    QTest::newRow("one past it") << 1u << 4u << false << 1u;
    QTest::newRow("when full") << 4u << 1u << false << 4u;
    QTest::newRow("sum past 32 bits") << 3u << UINT_MAX << false << 3u;
}

void TestSemaphores::giving_past_the_maximum_gives_nothing()
{
    QFETCH(unsigned int, initial);
    QFETCH(unsigned int, count);
    QFETCH(unsigned int, permits);
    AssertLog log;
    CountingSemaphore semaphore(initial, 4);
    QTEST(semaphore.semGive(count), "accepted");
    unsigned int taken = 0;
    while (semaphore.semTake(0))
        ++taken;
    QCOMPARE(taken, permits);
    QVERIFY(log.take().isEmpty());
}

void TestSemaphores::a_take_times_out_without_an_assertion()
{
    AssertLog log;
    CountingSemaphore semaphore(0, 1);
    QElapsedTimer timer;
    timer.start();
    QVERIFY(!semaphore.semTake(20));
    QVERIFY(timer.nsecsElapsed() >= 20000000);
    QVERIFY(log.take().isEmpty());
}

void TestSemaphores::a_wait_without_limit_ends_with_a_give()
{
    CountingSemaphore asked(0, 1);
    CountingSemaphore answered(0, 1);
    std::thread other([&] {
        asked.semTake();
        answered.semGive();
    });
    QVERIFY(asked.semGive());
    QVERIFY(answered.semTake(CountingSemaphore::infinite));
    other.join();
}

void TestSemaphores::take_n_waits_for_each_permit()
{
    CountingSemaphore semaphore(1, 10);
    CountingSemaphore progress(0, 10);
    std::atomic<bool> done{false};
    std::thread taker([&] {
        progress.semGive();
        semaphore.semTakeN(3);
        done = true;
        progress.semGive();
    });
    progress.semTake();
    QVERIFY(semaphore.semGive());
    QVERIFY(!done);
    QVERIFY(semaphore.semGive());
    progress.semTake();
    QVERIFY(done);
    taker.join();
    QVERIFY(!semaphore.semTake(0));
}

void TestSemaphores::one_give_of_many_wakes_as_many()
{
    constexpr unsigned int count = 4;
    CountingSemaphore semaphore(0, 2 * count);
    std::array<std::atomic<pid_t>, count> ids{};
    std::atomic<unsigned int> taken{0};
    std::vector<std::thread> takers;
    for (std::atomic<pid_t> &id : ids) {
        takers.emplace_back([&] {
            id = ::gettid();
            taken += semaphore.semTake();
        });
    }
    bool const asleep = QTest::qWaitFor(
        [&ids] { return std::all_of(ids.begin(), ids.end(), &sleeps); }, patience_ms);
    bool const given = semaphore.semGive(count);
    bool const woken = QTest::qWaitFor([&taken] { return taken == count; }, patience_ms);
    // Whoever sleeps still must not be left behind.
    for (unsigned int i = 0; i < count && taken < count; ++i)
        semaphore.semGive(1);
    for (std::thread &taker : takers)
        taker.join();
    QVERIFY(asleep && given && woken);
    QVERIFY(!semaphore.semTake(0));
}

void TestSemaphores::signals_neither_end_nor_stretch_a_wait()
{
    struct sigaction action
    {
    };
    struct sigaction previous
    {
    };
    action.sa_handler = [](int) {};
    // Without SA_RESTART, so that system calls do come back with EINTR.
    sigaction(SIGUSR1, &action, &previous);

    CountingSemaphore semaphore(0, 1);
    std::atomic<bool> taken{true};
    std::atomic<bool> ended{false};
    std::atomic<long long> waited_ms{0};
    std::thread taker([&] {
        QElapsedTimer timer;
        timer.start();
        taken = semaphore.semTake(100);
        waited_ms = timer.elapsed();
        ended = true;
    });
    while (!ended) {
        pthread_kill(taker.native_handle(), SIGUSR1);
        std::this_thread::yield();
    }
    taker.join();
    sigaction(SIGUSR1, &previous, nullptr);
    QVERIFY(!taken);
    QVERIFY(waited_ms >= 100);
    // A wait that began anew at each signal would last for as long as they come.
    QVERIFY(waited_ms < patience_ms);
}

void TestSemaphores::binary_begins_as_told_data()
{
    QTest::addColumn<bool>("initial");
    QTest::newRow("given") << true;
    QTest::newRow("not given") << false;
}

void TestSemaphores::binary_begins_as_told()
{
    QFETCH(bool, initial);
    BinarySemaphore semaphore(initial);
    QCOMPARE(semaphore.semTake(0), initial);
    QVERIFY(!semaphore.semTake(0));
}

void TestSemaphores::binary_given_twice_is_given_once()
{
    AssertLog log;
    BinarySemaphore semaphore(false);
    semaphore.semGive();
    semaphore.semGive();
    QVERIFY(semaphore.semTake(0));
    QVERIFY(!semaphore.semTake(0));
    QVERIFY(log.take().isEmpty());
}

QTEST_GUILESS_MAIN(TestSemaphores)
#include "tst_semaphores.moc"
