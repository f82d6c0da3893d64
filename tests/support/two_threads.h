// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <atomic>
#include <thread>

/// Runs `work(0)` in this thread and `work(1)` in another, begun together, and waits for both.
template <typename Work> void in_two_threads(Work work)
{
    std::atomic<int> ready{0};
    auto const body = [&](int which) {
        ++ready;
        while (ready < 2)
            std::this_thread::yield();
        work(which);
    };
    std::thread other(body, 1);
    body(0);
    other.join();
}
