// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/base/atomic_vqueue.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/atomic_vqueue_p.h"
#include "tests/support/assert_log.h"

#include <QTest>
#include <atomic>
#include <map>
#include <set>
#include <thread>
#include <vector>

using AtomicVQueueNodes::free_node;
using AtomicVQueueNodes::node_t;
using AtomicVQueueNodes::take_node;

namespace {

struct Item
{
    int producer;
    int number;
};

} // namespace

class TestAtomicVQueue : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void empty_queue_gives_null_at_once();
    void first_in_is_first_out();
    void size_counts_what_is_queued();
    void clear_drops_everything();
    void queued_null_counts_as_an_element();
    void queues_do_not_mix();
    void producers_and_consumers_lose_nothing_and_keep_order_data();
    void producers_and_consumers_lose_nothing_and_keep_order();
    void nodes_are_used_again_with_their_version();
    void nodes_of_an_ended_thread_are_used_again();
    void a_thread_that_only_takes_feeds_one_that_only_adds();
    void a_thread_that_ends_in_the_middle_loses_nothing();
    void a_free_node_with_a_successor_is_an_assertion();
    void freeing_null_is_an_assertion();
};

void TestAtomicVQueue::empty_queue_gives_null_at_once()
{
    AtomicVQueue queue;
    QVERIFY(queue.dequeue() == nullptr);
    QVERIFY(queue.empty());
    QCOMPARE(queue.size(), 0u);
}

void TestAtomicVQueue::first_in_is_first_out()
{
    AtomicVQueue queue;
    std::vector<int> values(1000);
    for (int round = 0; round < 3; ++round) {
        for (int &value : values)
            queue.enqueue(&value);
        for (int &value : values)
            QVERIFY(queue.dequeue() == &value);
        QVERIFY(queue.dequeue() == nullptr);
    }
}

void TestAtomicVQueue::size_counts_what_is_queued()
{
    AtomicVQueue queue;
    int value = 0;
    queue.enqueue(&value);
    queue.enqueue(&value);
    QCOMPARE(queue.size(), 2u);
    QVERIFY(!queue.empty());
    queue.dequeue();
    QCOMPARE(queue.size(), 1u);
}

void TestAtomicVQueue::clear_drops_everything()
{
    AtomicVQueue queue;
    int value = 0;
    for (int i = 0; i < 100; ++i)
        queue.enqueue(&value);
    queue.clear();
    QVERIFY(queue.empty());
    QVERIFY(queue.dequeue() == nullptr);
    queue.enqueue(&value);
    QVERIFY(queue.dequeue() == &value);
}

void TestAtomicVQueue::queued_null_counts_as_an_element()
{
    AtomicVQueue queue;
    int value = 0;
    queue.enqueue(nullptr);
    queue.enqueue(&value);
    QCOMPARE(queue.size(), 2u);
    QVERIFY(queue.dequeue() == nullptr);
    QVERIFY(queue.dequeue() == &value);
}

void TestAtomicVQueue::queues_do_not_mix()
{
    AtomicVQueue first;
    AtomicVQueue second;
    int a = 0;
    int b = 0;
    first.enqueue(&a);
    second.enqueue(&b);
    QVERIFY(first.dequeue() == &a);
    QVERIFY(first.dequeue() == nullptr);
    QVERIFY(second.dequeue() == &b);
}

void TestAtomicVQueue::producers_and_consumers_lose_nothing_and_keep_order_data()
{
    QTest::addColumn<int>("producers");
    QTest::addColumn<int>("consumers");
    QTest::newRow("1 to 1") << 1 << 1;
    QTest::newRow("4 to 1") << 4 << 1;
    QTest::newRow("1 to 4") << 1 << 4;
    QTest::newRow("4 to 4") << 4 << 4;
}

void TestAtomicVQueue::producers_and_consumers_lose_nothing_and_keep_order()
{
    QFETCH(int, producers);
    QFETCH(int, consumers);
    constexpr int per_producer = 20000;
    AtomicVQueue queue;
    std::vector<std::vector<Item>> items(static_cast<std::size_t>(producers));
    std::vector<std::vector<Item *>> taken(static_cast<std::size_t>(consumers));
    std::atomic<int> left{producers * per_producer};
    std::vector<std::thread> threads;
    for (int producer = 0; producer < producers; ++producer) {
        threads.emplace_back([&, producer] {
            auto &own = items[static_cast<std::size_t>(producer)];
            own.reserve(per_producer);
            for (int number = 0; number < per_producer; ++number) {
                own.push_back({producer, number});
                queue.enqueue(&own.back());
            }
        });
    }
    for (auto &own : taken) {
        threads.emplace_back([&] {
            while (left > 0) {
                if (auto *item = static_cast<Item *>(queue.dequeue())) {
                    own.push_back(item);
                    --left;
                } else {
                    std::this_thread::yield();
                }
            }
        });
    }
    for (std::thread &thread : threads)
        thread.join();

    std::set<Item *> all;
    for (auto const &own : taken) {
        std::map<int, int> last;
        for (Item *item : own) {
            QVERIFY(all.insert(item).second);
            auto const before = last.find(item->producer);
            QVERIFY(before == last.end() || before->second < item->number);
            last[item->producer] = item->number;
        }
    }
    QCOMPARE(all.size(), static_cast<std::size_t>(producers * per_producer));
    QVERIFY(queue.empty());
}

void TestAtomicVQueue::nodes_are_used_again_with_their_version()
{
    node_t *node = take_node();
    QVERIFY(node->next.ptr() == nullptr);
    node->next = node;
    std::uint64_t const version = node->next.version();
    free_node(node);
    node_t *again = take_node();
    QVERIFY(again == node);
    QVERIFY(again->next.ptr() == nullptr);
    QVERIFY(again->next.version() > version);
    free_node(again);
}

void TestAtomicVQueue::nodes_of_an_ended_thread_are_used_again()
{
    std::set<node_t *> seen;
    auto const use_some = [&seen] {
        std::vector<node_t *> nodes;
        for (int i = 0; i < 10; ++i)
            nodes.push_back(take_node());
        for (node_t *node : nodes) {
            seen.insert(node);
            free_node(node);
        }
    };
    std::thread(use_some).join();
    std::size_t const first = seen.size();
    for (int i = 0; i < 20; ++i)
        std::thread(use_some).join();
    // Two batches are the most that can lie in front of those that the first thread left.
    QVERIFY(seen.size() <= first + 64);
}

void TestAtomicVQueue::a_thread_that_only_takes_feeds_one_that_only_adds()
{
    // Each round waits for the other thread, which on a busy machine takes some milliseconds.
    constexpr int rounds = 1500;
    std::set<node_t *> seen;
    AtomicVQueue to_taker;
    AtomicVQueue to_adder;
    std::thread taker([&] {
        for (int i = 0; i < rounds;) {
            if (auto *node = static_cast<node_t *>(to_taker.dequeue())) {
                free_node(node);
                to_adder.enqueue(&to_adder);
                ++i;
            } else {
                std::this_thread::yield();
            }
        }
    });
    for (int i = 0; i < rounds; ++i) {
        node_t *node = take_node();
        seen.insert(node);
        to_taker.enqueue(node);
        while (!to_adder.dequeue())
            std::this_thread::yield();
    }
    taker.join();
    // What the taker frees comes back, but for what lies in the two threads' stores.
    QVERIFY(seen.size() < 300);
}

void TestAtomicVQueue::a_thread_that_ends_in_the_middle_loses_nothing()
{
    AtomicVQueue queue;
    int value = 0;
    std::thread([&] {
        // Destroyed after the thread's own store of nodes, as it is made before.
        thread_local struct Late
        {
            AtomicVQueue *queue = nullptr;
            int *value = nullptr;
            ~Late()
            {
                queue->enqueue(value);
                queue->dequeue();
            }
        } late;
        late.queue = &queue;
        late.value = &value;
        queue.enqueue(&value);
        queue.enqueue(&value);
    }).join();
    QCOMPARE(queue.size(), 2u);
    QVERIFY(queue.dequeue() == &value);
    QVERIFY(queue.dequeue() == &value);
    QVERIFY(queue.dequeue() == nullptr);
}

void TestAtomicVQueue::a_free_node_with_a_successor_is_an_assertion()
{
    AssertLog log;
    AtomicVQueue queue;
    int value = 0;
    node_t *node = take_node();
    free_node(node);
    node->next = &value;
    queue.enqueue(&value);
    QCOMPARE(log.take(), QStringList{QStringLiteral("node->next == 0")});
    QCOMPARE(queue.size(), 1u);
    QVERIFY(queue.dequeue() == &value);
    QVERIFY(queue.dequeue() == nullptr);
}

void TestAtomicVQueue::freeing_null_is_an_assertion()
{
    AssertLog log;
    free_node(nullptr);
    QCOMPARE(log.take(), QStringList{QStringLiteral("n != 0")});
}

QTEST_GUILESS_MAIN(TestAtomicVQueue)
#include "tst_atomic_vqueue.moc"
