// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/afunction.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/tarn_export.h"

#include <pthread.h>

namespace VCTP3 {

/// The thread of a `Client`: a small stack, and a priority that is tried and not insisted on.
/// Thread: its owner's.
class TARN_AUTOTEST_EXPORT ClientThread
{
public:
    ClientThread() = default;
    ClientThread(ClientThread const &) = delete;
    ClientThread &operator=(ClientThread const &) = delete;
    /// The thread must have been joined.
    ~ClientThread() = default;

    /// \a priority: see `Client::run_forever_in_own_thread`. False if there is no thread to be had.
    bool start(int priority, AFunction const &run);
    /// Waits for the thread to end, if it was started.
    void join();

    static void pause_ms(int milliseconds);

private:
    struct Start;
    static void *entry(void *start);

    pthread_t thread{};
    bool started = false;
};

} // namespace VCTP3
