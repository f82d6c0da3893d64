// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/base/aassert.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/atomic_vqueue_p.h"

#include <utility>

namespace AtomicVQueueNodes {
namespace {

/// Nodes linked by `free_link`.
struct Chain
{
    node_t *first = nullptr;
    node_t *last = nullptr;
    unsigned int length = 0;

    void push(node_t *node)
    {
        node->free_link.store(first, std::memory_order_relaxed);
        first = node;
        if (length++ == 0)
            last = node;
    }
    node_t *pop()
    {
        node_t *node = first;
        first = node->free_link.load(std::memory_order_relaxed);
        --length;
        return node;
    }
};

/// How many nodes move between a thread and the free list at once.
constexpr unsigned int batch = 32;

/// The process-wide free list: a stack of nodes.
class FreeList
{
public:
    void push(Chain const &chain)
    {
        AtomicVoidVPointer::X old;
        do {
            old = top.peek();
            chain.last->free_link.store(static_cast<node_t *>(old.ptr), std::memory_order_relaxed);
        } while (!top.casv(old, chain.first));
    }

    /// Up to \a most nodes; none when it is empty.
    Chain pop(unsigned int most)
    {
        for (;;) {
            AtomicVoidVPointer::X const old = top.peek();
            // The links may be changing under this walk. They always lead to nodes, as nodes are
            // never given back, and the swap only succeeds if nothing has changed.
            Chain chain;
            node_t *rest = static_cast<node_t *>(old.ptr);
            chain.first = rest;
            while (rest && chain.length < most) {
                chain.last = rest;
                ++chain.length;
                rest = rest->free_link.load(std::memory_order_acquire);
            }
            if (!chain.first || top.casv(old, rest))
                return chain;
        }
    }

private:
    AtomicVoidVPointer top;
};

FreeList &free_list()
{
    // Never destroyed: queues may live until the very end of the process.
    static FreeList *const list = new FreeList;
    return *list;
}

/// A thread's own store in front of the free list, as most threads take about as many nodes as
/// they give. Two chains, so that a thread at the edge of one does not go to the free list each
/// time.
class ThreadCache
{
public:
    ~ThreadCache()
    {
        hand_over(&current);
        hand_over(&spare);
        closed = true;
    }

    node_t *take()
    {
        if (!current.length) {
            std::swap(current, spare);
            if (!current.length)
                current = free_list().pop(closed ? 1 : batch);
        }
        return current.length ? current.pop() : nullptr;
    }

    void give(node_t *node)
    {
        current.push(node);
        if (closed) {
            hand_over(&current);
        } else if (current.length == batch) {
            std::swap(current, spare);
            hand_over(&current);
        }
    }

private:
    static void hand_over(Chain *chain)
    {
        if (chain->length)
            free_list().push(*chain);
        *chain = Chain();
    }

    Chain current;
    Chain spare;
    bool closed = false; // the thread is ending: nothing may stay here any more
};

thread_local ThreadCache thread_cache;

} // namespace

node_t *take_node()
{
    node_t *node = thread_cache.take();
    return node ? node : new node_t;
}

void free_node(node_t *n)
{
    if (!A_ASSERT(n != 0))
        return;
    n->next.set_by_owner(nullptr);
    thread_cache.give(n);
}

} // namespace AtomicVQueueNodes
