// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/base/asemaphore_object.h"
#include "tests/support/patience.h"

#include <QSignalSpy>
#include <QTest>
#include <thread>

class TestASemaphoreObject : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void begins_with_the_permits_told();
    void acquire_and_release_count();
    void try_acquire_takes_all_or_nothing();
    void try_acquire_times_out();
    void release_announces_through_the_event_loop();
    void permits_taken_before_the_loop_are_not_announced();
    void announce_tells_only_what_can_be_taken();
    void release_from_another_thread_is_announced_on_the_own();
    void acquire_waits_for_another_thread();
    void who_takes_a_permit_sees_what_was_done_before_it_was_given_data();
    void who_takes_a_permit_sees_what_was_done_before_it_was_given();

private:
    static int permits(ASemaphoreObject const &semaphore) { return semaphore.available(); }
    static auto announced() { return qOverload<int>(&ASemaphoreObject::available); }
};

void TestASemaphoreObject::begins_with_the_permits_told()
{
    QObject parent;
    QCOMPARE(permits(ASemaphoreObject()), 0);
    QCOMPARE(permits(ASemaphoreObject(3)), 3);
    ASemaphoreObject const owned(2, &parent);
    QVERIFY(owned.parent() == &parent);
    QCOMPARE(owned.available(), 2);
}

void TestASemaphoreObject::acquire_and_release_count()
{
    ASemaphoreObject semaphore(3);
    semaphore.acquire(2);
    QCOMPARE(permits(semaphore), 1);
    semaphore.acquire();
    QCOMPARE(permits(semaphore), 0);
    semaphore.release(4);
    QCOMPARE(permits(semaphore), 4);
}

void TestASemaphoreObject::try_acquire_takes_all_or_nothing()
{
    ASemaphoreObject semaphore(2);
    QVERIFY(!semaphore.tryAcquire(3));
    QCOMPARE(permits(semaphore), 2);
    QVERIFY(semaphore.tryAcquire(2));
    QVERIFY(!semaphore.tryAcquire());
}

void TestASemaphoreObject::try_acquire_times_out()
{
    ASemaphoreObject semaphore(1);
    QVERIFY(!semaphore.tryAcquire(2, 10));
    QVERIFY(semaphore.tryAcquire(1, 10));
}

void TestASemaphoreObject::release_announces_through_the_event_loop()
{
    ASemaphoreObject semaphore;
    QSignalSpy sent(&semaphore, &ASemaphoreObject::sig_avail);
    QSignalSpy told(&semaphore, announced());
    semaphore.release(2);
    QCOMPARE(sent.count(), 1);
    QCOMPARE(told.count(), 0);
    QCoreApplication::sendPostedEvents();
    QCOMPARE(told.count(), 1);
    QCOMPARE(told.at(0).at(0).toInt(), 2);
    QCOMPARE(permits(semaphore), 2);
}

void TestASemaphoreObject::permits_taken_before_the_loop_are_not_announced()
{
    ASemaphoreObject semaphore;
    QSignalSpy told(&semaphore, announced());
    semaphore.release();
    semaphore.acquire();
    QCoreApplication::sendPostedEvents();
    QCOMPARE(told.count(), 0);
}

void TestASemaphoreObject::announce_tells_only_what_can_be_taken()
{
    ASemaphoreObject empty;
    QSignalSpy nothing(&empty, &ASemaphoreObject::sig_avail);
    empty.announce_available();
    QCOMPARE(nothing.count(), 0);

    ASemaphoreObject full(1);
    QSignalSpy told(&full, announced());
    full.announce_available();
    QCoreApplication::sendPostedEvents();
    QCOMPARE(told.count(), 1);
}

void TestASemaphoreObject::release_from_another_thread_is_announced_on_the_own()
{
    ASemaphoreObject semaphore;
    std::thread::id seen_on;
    connect(&semaphore, announced(), &semaphore, [&] { seen_on = std::this_thread::get_id(); });
    std::thread([&] { semaphore.release(); }).join();
    QTRY_VERIFY(seen_on == std::this_thread::get_id());
}

void TestASemaphoreObject::acquire_waits_for_another_thread()
{
    ASemaphoreObject semaphore;
    std::thread giver([&] { semaphore.release(2); });
    semaphore.acquire(2);
    QCOMPARE(permits(semaphore), 0);
    giver.join();
}

void TestASemaphoreObject::who_takes_a_permit_sees_what_was_done_before_it_was_given_data()
{
    QTest::addColumn<int>("milliseconds");
    QTest::newRow("acquire") << -1;
    QTest::newRow("tryAcquire") << 0;
    QTest::newRow("tryAcquire with a limit") << patience_ms;
}

void TestASemaphoreObject::who_takes_a_permit_sees_what_was_done_before_it_was_given()
{
    QFETCH(int, milliseconds);
    ASemaphoreObject there;
    ASemaphoreObject back;
    auto const take = [milliseconds](ASemaphoreObject &semaphore) {
        if (milliseconds < 0)
            semaphore.acquire();
        else if (milliseconds > 0)
            QVERIFY(semaphore.tryAcquire(1, milliseconds));
        else
            while (!semaphore.tryAcquire())
                std::this_thread::yield();
    };
    int passed = 0; // between the threads, by nothing but the permits
    std::thread other([&] {
        for (int i = 0; i < 100; ++i) {
            take(there);
            ++passed;
            back.release();
        }
    });
    for (int i = 0; i < 100; ++i) {
        ++passed;
        there.release();
        take(back);
    }
    other.join();
    QCOMPARE(passed, 200);
}

QTEST_GUILESS_MAIN(TestASemaphoreObject)
#include "tst_asemaphore_object.moc"
