// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/base/portable_mutex.h"
#include "tests/support/two_threads.h"

#include <QTest>
#include <atomic>
#include <memory>
#include <thread>

namespace {

/// Whether this thread holds the mutex: only an owner may give it back.
bool held_by_me(PortableMutex const &mutex)
{
    if (!mutex.release())
        return false;
    mutex.take();
    return true;
}

/// Runs in a thread of its own and ends with it.
template <typename Work> void in_a_thread_that_ends(Work work)
{
    std::thread thread(work);
    thread.join();
}

} // namespace

class TestPortableMutex : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void is_taken_and_given_back()
    {
        PortableMutex const mutex;
        QVERIFY(!mutex.is_null());
        QVERIFY(mutex.take());
        QVERIFY(mutex.release());
        QVERIFY(!mutex.release());
    }

    void is_recursive()
    {
        PortableMutex const mutex;
        QVERIFY(mutex.take() && mutex.take() && mutex.take());
        QVERIFY(mutex.release() && mutex.release() && mutex.release());
        QVERIFY(!mutex.release());
    }

    void a_null_handle_is_never_taken()
    {
        PortableMutex const null = PortableMutex::null();
        QVERIFY(null.is_null());
        QVERIFY(!null.take() && !null.release());
    }

    void copies_are_handles_of_one_mutex()
    {
        PortableMutex const mutex;
        PortableMutex const copy = mutex;
        QVERIFY(mutex.take());
        QVERIFY(held_by_me(copy));
        QVERIFY(copy.release());
        QVERIFY(!held_by_me(mutex));
    }

    void guards_against_the_other_thread()
    {
        PortableMutex const mutex;
        int count = 0;
        in_two_threads([&](int) {
            for (int i = 0; i < 10000; ++i) {
                mutex.take();
                ++count;
                mutex.release();
            }
        });
        QCOMPARE(count, 20000);
    }

    void only_the_owner_gives_it_back()
    {
        PortableMutex const mutex;
        mutex.take();
        bool released = true;
        in_a_thread_that_ends([&] { released = mutex.release(); });
        QVERIFY(!released);
        QVERIFY(mutex.release());
    }

    void an_abandoned_mutex_fails_once_and_works_again()
    {
        PortableMutex const mutex;
        in_a_thread_that_ends([&] { mutex.take(); });
        QVERIFY(!mutex.take());
        QVERIFY(!held_by_me(mutex));
        QVERIFY(mutex.take());
        bool released_elsewhere = true;
        in_a_thread_that_ends([&] { released_elsewhere = mutex.release(); });
        QVERIFY(!released_elsewhere);
        QVERIFY(mutex.release());
        in_a_thread_that_ends([&] {
            mutex.take();
            mutex.take();
        });
        QVERIFY(!mutex.take());
        QVERIFY(mutex.take() && mutex.release());
    }

    void a_thread_that_waits_sees_the_abandonment()
    {
        PortableMutex const mutex;
        std::atomic<bool> owned{false};
        bool taken = true;
        std::thread owner([&] {
            mutex.take();
            owned = true;
            // Ends while it owns the mutex.
        });
        std::thread waiter([&] {
            while (!owned)
                std::this_thread::yield();
            taken = mutex.take();
        });
        owner.join();
        waiter.join();
        QVERIFY(!taken);
        QVERIFY(mutex.take() && mutex.release());
    }

    // --- PortableMutexLock ---
    void a_lock_holds_for_its_scope()
    {
        PortableMutex mutex;
        {
            PortableMutexLock const lock(mutex);
            QVERIFY(lock.ok());
            QVERIFY(held_by_me(mutex));
        }
        QVERIFY(!held_by_me(mutex));
        {
            PortableMutexLock const lock(&mutex);
            QVERIFY(lock.ok() && held_by_me(mutex));
        }
        QVERIFY(!held_by_me(mutex));
    }

    void a_lock_of_nothing_is_not_ok()
    {
        PortableMutex null = PortableMutex::null();
        QVERIFY(!PortableMutexLock().ok());
        QVERIFY(!PortableMutexLock(null).ok());
        QVERIFY(!PortableMutexLock(static_cast<PortableMutex *>(nullptr)).ok());
        PortableMutexLock lock;
        lock.clear();
        PortableMutexLock const copy = lock;
        QVERIFY(!copy.ok());
    }

    void a_lock_of_an_abandoned_mutex_is_not_ok()
    {
        PortableMutex mutex;
        in_a_thread_that_ends([&] { mutex.take(); });
        QVERIFY(!PortableMutexLock(mutex).ok());
        QVERIFY(PortableMutexLock(mutex).ok());
        QVERIFY(!held_by_me(mutex));
    }

    void the_last_copy_gives_it_back()
    {
        PortableMutex mutex;
        auto first = std::make_unique<PortableMutexLock>(mutex);
        auto second = std::make_unique<PortableMutexLock>(*first);
        auto third = std::make_unique<PortableMutexLock>(*second);
        QVERIFY(third->ok());
        first.reset();
        third.reset();
        QVERIFY(held_by_me(mutex));
        QVERIFY(second->ok());
        second.reset();
        QVERIFY(!held_by_me(mutex));
    }

    void clear_gives_it_back_for_all_copies()
    {
        PortableMutex mutex;
        PortableMutexLock first(mutex);
        PortableMutexLock second = first;
        PortableMutexLock const third = second;
        second.clear();
        QVERIFY(!first.ok() && !second.ok() && !third.ok());
        QVERIFY(!held_by_me(mutex));
        first.clear();
        QVERIFY(!mutex.release());
    }

    void assignment_moves_from_lock_to_lock()
    {
        PortableMutex one, two;
        PortableMutexLock lock(one);
        PortableMutexLock const other(two);
        PortableMutexLock const &same = lock;
        lock = same;
        QVERIFY(lock.ok() && held_by_me(one));
        lock = other;
        QVERIFY(lock.ok() && !held_by_me(one) && held_by_me(two));
        lock = PortableMutexLock();
        QVERIFY(!lock.ok() && other.ok() && held_by_me(two));
    }

    void a_lock_keeps_its_mutex_alive()
    {
        PortableMutexLock lock;
        {
            PortableMutex mutex;
            lock = PortableMutexLock(mutex);
        }
        QVERIFY(lock.ok());
        lock.clear();
        QVERIFY(!lock.ok());
    }
};

QTEST_GUILESS_MAIN(TestPortableMutex)
#include "tst_portable_mutex.moc"
