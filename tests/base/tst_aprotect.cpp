// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/base/aprotect.h"

#include <QTest>
#include <list>
#include <thread>
#include <vector>

class TestAProtect : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void holds_the_value_it_is_given();
    void copies_share_one_value();
    void two_made_apart_share_nothing();
    void a_thread_locks_again_what_it_holds();
    void only_one_thread_at_a_time_is_inside();
    void an_abandoned_lock_opens_again();
};

void TestAProtect::holds_the_value_it_is_given()
{
    AProtect<std::list<int>> const protect(std::list<int>{1, 2});
    AProtect<std::list<int>>::Lock list(protect);
    QCOMPARE(list->size(), std::size_t(2));
    QCOMPARE((*list).back(), 2);
}

void TestAProtect::copies_share_one_value()
{
    AProtect<int> const first(1);
    AProtect<int> const copy(first);
    *AProtect<int>::Lock(copy) = 7;
    QCOMPARE(*AProtect<int>::Lock(first), 7);
}

void TestAProtect::two_made_apart_share_nothing()
{
    AProtect<int> const first;
    AProtect<int> const second;
    *AProtect<int>::Lock(first) = 7;
    QCOMPARE(*AProtect<int>::Lock(second), 0);
}

void TestAProtect::a_thread_locks_again_what_it_holds()
{
    AProtect<int> const protect(1);
    AProtect<int>::Lock outer(protect);
    {
        AProtect<int>::Lock inner(protect);
        ++*inner;
    }
    QCOMPARE(*outer, 2);
}

void TestAProtect::only_one_thread_at_a_time_is_inside()
{
    AProtect<std::vector<int>> const protect;
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([protect] {
            for (int round = 0; round < 5000; ++round)
                AProtect<std::vector<int>>::Lock(protect)->push_back(round);
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    QCOMPARE(AProtect<std::vector<int>>::Lock(protect)->size(), std::size_t(20000));
}

void TestAProtect::an_abandoned_lock_opens_again()
{
    AProtect<int> const protect(1);
    std::thread([&] {
        // Never unlocked: what a thread leaves behind that ends inside.
        alignas(AProtect<int>::Lock) static char place[sizeof(AProtect<int>::Lock)];
        ++**new (place) AProtect<int>::Lock(protect);
    }).join();
    QCOMPARE(*AProtect<int>::Lock(protect), 2);
}

QTEST_GUILESS_MAIN(TestAProtect)
#include "tst_aprotect.moc"
