// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/clock.h"

/// How long something has lasted: `QElapsedTimer` on the library's own clock, so that it runs in
/// virtual time too.
/// Thread: a value without a lock.
class AElapsedTimer
{
public:
    /// Starts, or starts over.
    void start()
    {
        started_ms = AClock::monotonic_ms();
        valid = true;
    }
    void invalidate() { valid = false; }
    /// False until `start`, and after `invalidate`.
    bool is_valid() const { return valid; }
    /// Milliseconds since `start`; 0 while not valid.
    long long elapsed_ms() const { return valid ? AClock::monotonic_ms() - started_ms : 0; }

private:
    bool valid = false;
    long long started_ms = 0;
};
