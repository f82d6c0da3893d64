// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/atomic_void_vpointer.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/tarn_export.h"

/// A first-in, first-out queue of pointers without a lock. It owns none of what they point at. The
/// memory of its nodes serves all queues of the process and is never given back.
/// Thread: any, but for construction and destruction.
class TARN_EXPORT AtomicVQueue
{
public:
    AtomicVQueue();
    /// Drops what is still queued.
    ~AtomicVQueue();
    AtomicVQueue(AtomicVQueue const &) = delete;
    AtomicVQueue &operator=(AtomicVQueue const &) = delete;

    /// A null pointer may be queued, but looks like an empty queue to who takes it.
    void enqueue(void *data);
    /// The oldest pointer; null when there is none.
    void *dequeue();
    /// Drops what is queued.
    void clear();
    /// How many are queued; with other threads at work, how many there were.
    unsigned int size() const;
    bool empty() const { return size() == 0; }

private:
    // Those who add and those who take do not share a cache line. head points at a dummy, whose
    // successor is the oldest element. The version of the tail counts what was added and that of
    // the head what was taken, so that a count of its own would be two more atomic steps for what
    // is known already.
    alignas(64) AtomicVoidVPointer head;
    alignas(64) AtomicVoidVPointer tail;
};
