// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/base/atomic_vqueue.h"

#include "kestrel/mod/vctp3/tarnlibapi/base/aassert.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/atomic_vqueue_p.h"

#include <thread>

using AtomicVQueueNodes::free_node;
using AtomicVQueueNodes::node_t;
using AtomicVQueueNodes::take_node;

namespace {

/// Stands aside for a while after a lost swap, longer each time: the winner is on the same line.
class BackOff
{
public:
    void operator()()
    {
        if (pauses > longest) {
            std::this_thread::yield();
            return;
        }
        for (unsigned int i = 0; i < pauses; ++i)
            pause();
        pauses *= 2;
    }

private:
    static void pause()
    {
#if defined(__x86_64__)
        __builtin_ia32_pause();
#elif defined(__aarch64__)
        asm volatile("yield");
#endif
    }

    static constexpr unsigned int longest = 64;
    unsigned int pauses = 1;
};

node_t *node_of(AtomicVoidVPointer::X const &x)
{
    return static_cast<node_t *>(x.ptr);
}

} // namespace

AtomicVQueue::AtomicVQueue()
{
    node_t *dummy = take_node();
    head = dummy;
    tail = dummy;
}

AtomicVQueue::~AtomicVQueue()
{
    clear();
    free_node(node_of(head.getX()));
}

void AtomicVQueue::enqueue(void *data)
{
    node_t *node = take_node();
    A_ASSERT_TEXT(node->next.ptr() == nullptr, "node->next == 0");
    node->data.store(data, std::memory_order_relaxed);
    BackOff back_off;
    for (;;) {
        AtomicVoidVPointer::X const last = tail.peek();
        AtomicVoidVPointer::X const next = node_of(last)->next.peek();
        if (tail.version() != last.version)
            continue;
        if (next.ptr) {
            tail.casv(last, next.ptr);
            continue;
        }
        if (node_of(last)->next.casv(next, node)) {
            tail.casv(last, node);
            break;
        }
        back_off();
    }
    ++count;
}

void *AtomicVQueue::dequeue()
{
    // Who has taken one from the count finds an element: it was linked before it was counted.
    if (size() == 0 || !count.decrease_by(1, 0))
        return nullptr;
    BackOff back_off;
    for (;;) {
        AtomicVoidVPointer::X const first = head.peek();
        AtomicVoidVPointer::X const last = tail.peek();
        AtomicVoidVPointer::X const next = node_of(first)->next.peek();
        if (head.version() != first.version)
            continue;
        if (first.ptr == last.ptr) {
            if (next.ptr)
                tail.casv(last, next.ptr);
            continue;
        }
        // Read before the swap: after it another thread may take the node and use it again.
        void *data = node_of(next)->data.load(std::memory_order_relaxed);
        if (head.casv(first, next.ptr)) {
            free_node(node_of(first));
            return data;
        }
        back_off();
    }
}

void AtomicVQueue::clear()
{
    while (size() != 0)
        dequeue();
}

unsigned int AtomicVQueue::size() const
{
    return count;
}
