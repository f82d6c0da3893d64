// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/tarn_export.h"

#include <climits>
#include <condition_variable>
#include <mutex>

/// A semaphore that counts up to a maximum.
/// Thread: any.
class TARN_EXPORT CountingSemaphore
{
public:
    /// The time of a wait without limit.
    static constexpr unsigned int infinite = UINT_MAX;

    /// \a initial permits are there to take at once. A \a maximum of 0 or below \a initial is an
    /// assertion; such a semaphore can be neither given nor taken.
    CountingSemaphore(unsigned int initial, unsigned int maximum);
    ~CountingSemaphore();
    CountingSemaphore(CountingSemaphore const &) = delete;
    CountingSemaphore &operator=(CountingSemaphore const &) = delete;

    /// Adds \a count permits, or none: false when they are 0 or would pass the maximum.
    bool semGive(unsigned int count = 1);
    /// Takes one permit. False when none came within \a milliseconds; 0 only looks, `infinite`
    /// has no limit. Signals that interrupt the wait do not shorten it.
    bool semTake(unsigned int milliseconds = infinite);
    /// Takes one permit \a count times, each without a limit.
    void semTakeN(unsigned int count);

private:
    bool wait(std::unique_lock<std::mutex> &lock, unsigned int milliseconds);

    unsigned int const maximum; // 0: could not be made
    std::mutex mutex;
    std::condition_variable given;
    unsigned int permits; // guarded by mutex
};

/// A semaphore that is given or not.
/// Thread: any.
class TARN_EXPORT BinarySemaphore : public CountingSemaphore
{
public:
    explicit BinarySemaphore(bool initial);

    /// Giving it again while it is given changes nothing.
    void semGive();
};
