// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/atomic_void_vpointer.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/tarn_export.h"

#include <atomic>

/// The nodes of all queues. A free node keeps the version of its `next`, so a thread that still
/// holds it from before cannot take it for what it was.
namespace AtomicVQueueNodes {

/// On a cache line of its own, as neighbours are in the hands of different threads.
struct alignas(64) node_t
{
    AtomicVoidVPointer next;
    std::atomic<void *> data{nullptr};
    std::atomic<node_t *> free_link{nullptr};
};

/// A node with a null `next`, from the free list or new.
TARN_AUTOTEST_EXPORT node_t *take_node();
/// Back to the free list. Null is an assertion.
TARN_AUTOTEST_EXPORT void free_node(node_t *n);

} // namespace AtomicVQueueNodes
