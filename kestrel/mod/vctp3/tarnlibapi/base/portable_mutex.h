// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/tarn_export.h"

#include <memory>

/// A handle of a recursive mutex. Copies are handles of the same mutex, which lives as long as
/// any of them. `PortableMutex()` makes a mutex; `PortableMutex::null()` is a handle of none.
/// Thread: any; a thread that takes n times gives back n times.
class TARN_EXPORT PortableMutex
{
public:
    PortableMutex();
    static PortableMutex null();

    bool is_null() const { return !handle; }
    /// Waits without a limit. False, and not taken: for a null handle, and once after a thread
    /// ended while it held the mutex; what the mutex guards may then be half changed. The call
    /// after that takes it again.
    bool take() const;
    /// Gives one take back. False when the calling thread does not hold the mutex.
    bool release() const;

private:
    friend class PortableMutexLock;
    struct Handle;

    explicit PortableMutex(std::shared_ptr<Handle> h)
        : handle(std::move(h))
    {
    }

    std::shared_ptr<Handle> handle;
};

/// Holds one take of a mutex. Copies share it: the mutex is given back when the last copy goes,
/// or at `clear` of any copy. A lock and its copies stay in the thread that made the first.
class TARN_EXPORT PortableMutexLock
{
public:
    /// Holds nothing.
    PortableMutexLock() = default;
    explicit PortableMutexLock(PortableMutex &mutex);
    /// Null holds nothing.
    explicit PortableMutexLock(PortableMutex *mutex);
    PortableMutexLock(PortableMutexLock const &other);
    ~PortableMutexLock();
    PortableMutexLock &operator=(PortableMutexLock const &other);

    /// Whether the mutex is held; false also when taking it failed.
    bool ok() const { return taken.handle != nullptr; }
    /// Gives the mutex back now: this lock and all its copies hold nothing from here on.
    void clear();

private:
    void join(PortableMutexLock const &other);
    void leave();

    // The copies of a lock form a ring, so that none of them needs the heap.
    PortableMutex taken = PortableMutex::null();
    mutable PortableMutexLock const *next = this;
    mutable PortableMutexLock const *previous = this;
};
