// SPDX-License-Identifier: Apache-2.0
// The lock-free queue under the load that the other queues get.
#include "kestrel/mod/vctp3/tarnlibapi/base/atomic_vqueue.h"
#include "queue_load.hpp"

namespace {

struct Tarn
{
    void push(void *item) { queue.enqueue(item); }
    void *pop() { return queue.dequeue(); }
    AtomicVQueue queue;
};

} // namespace

BENCHMARK(wl::queue_pairs<Tarn>)->Threads(1)->Threads(2)->Threads(4)->UseRealTime();
BENCHMARK(wl::queue_prod_cons<Tarn>)->Threads(2)->Threads(4)->UseRealTime();
