// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/base/atomic_vqueue.h"

#include "kestrel/mod/vctp3/tarnlibapi/base/aassert.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/atomic_vqueue_p.h"

#include <thread>
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
/// time. Without constructor and destructor, which would cost a test at each access; those are
/// the closer's.
struct ThreadCache
{
    Chain current;
    Chain spare;
    unsigned int room; // of current; 0 before the thread's first node and after its end
};

/// In the block that every thread has from its start, as the general form is a call each time.
[[gnu::tls_model("initial-exec")]] constinit thread_local ThreadCache thread_cache{};

void hand_over(Chain *chain)
{
    if (chain->length)
        free_list().push(*chain);
    *chain = Chain();
}

/// Opens the thread's cache, and gives back what is in it when the thread ends.
struct CacheCloser
{
    CacheCloser() { thread_cache.room = batch; }
    ~CacheCloser()
    {
        hand_over(&thread_cache.current);
        hand_over(&thread_cache.spare);
        thread_cache.room = 0;
    }
    void touch() { }
};

thread_local CacheCloser cache_closer;

[[gnu::noinline]] node_t *refill_and_take()
{
    cache_closer.touch();
    std::swap(thread_cache.current, thread_cache.spare);
    if (!thread_cache.current.length)
        thread_cache.current = free_list().pop(thread_cache.room ? batch : 1);
    return thread_cache.current.length ? thread_cache.current.pop() : new node_t;
}

[[gnu::noinline]] void make_room_and_give(node_t *node)
{
    cache_closer.touch();
    if (thread_cache.current.length == batch) {
        hand_over(&thread_cache.spare);
        std::swap(thread_cache.current, thread_cache.spare);
    }
    thread_cache.current.push(node);
    if (!thread_cache.room)
        hand_over(&thread_cache.current);
}

} // namespace

node_t *take_node()
{
    return thread_cache.current.length ? thread_cache.current.pop() : refill_and_take();
}

void free_node(node_t *n)
{
    if (!A_ASSERT(n != 0))
        return;
    n->next.set_by_owner(nullptr);
    if (thread_cache.current.length < thread_cache.room)
        thread_cache.current.push(n);
    else
        make_room_and_give(n);
}

} // namespace AtomicVQueueNodes

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
    if (!A_ASSERT_TEXT(node->next.ptr() == nullptr, "node->next == 0"))
        node->next.set_by_owner(nullptr);
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
            return;
        }
        back_off();
    }
}

void *AtomicVQueue::dequeue()
{
    BackOff back_off;
    for (;;) {
        AtomicVoidVPointer::X const first = head.peek();
        bool const none = tail.version() == first.version;
        void *next = node_of(first)->next.ptr();
        if (head.version() != first.version)
            continue;
        if (none)
            return nullptr;
        // Read before the swap: after it another thread may take the node and use it again.
        void *data = static_cast<node_t *>(next)->data.load(std::memory_order_relaxed);
        if (head.casv(first, next)) {
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
    // The head first: it may be outrun by the tail, never the other way round.
    std::uint64_t const taken = head.version();
    return static_cast<unsigned int>(tail.version() - taken);
}
