// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/base/portable_mutex.h"

#include <cerrno>
#include <pthread.h>

struct PortableMutex::Handle
{
    Handle()
    {
        pthread_mutexattr_t attributes;
        pthread_mutexattr_init(&attributes);
        pthread_mutexattr_settype(&attributes, PTHREAD_MUTEX_RECURSIVE);
        // Robust, so that a thread that ends while it holds the mutex does not block the others.
        pthread_mutexattr_setrobust(&attributes, PTHREAD_MUTEX_ROBUST);
        pthread_mutex_init(&mutex, &attributes);
        pthread_mutexattr_destroy(&attributes);
    }
    Handle(Handle const &) = delete;
    Handle &operator=(Handle const &) = delete;
    ~Handle() { pthread_mutex_destroy(&mutex); }

    pthread_mutex_t mutex;
};

PortableMutex::PortableMutex()
    : handle(std::make_shared<Handle>())
{
}

PortableMutex PortableMutex::null()
{
    return PortableMutex(std::shared_ptr<Handle>());
}

bool PortableMutex::take() const
{
    if (!handle)
        return false;
    int const result = pthread_mutex_lock(&handle->mutex);
    if (result == EOWNERDEAD) {
        // Without this the mutex would be unusable for ever.
        pthread_mutex_consistent(&handle->mutex);
        pthread_mutex_unlock(&handle->mutex);
    }
    return result == 0;
}

bool PortableMutex::release() const
{
    return handle && pthread_mutex_unlock(&handle->mutex) == 0;
}

PortableMutexLock::PortableMutexLock(PortableMutex &mutex)
    : PortableMutexLock(&mutex)
{
}

PortableMutexLock::PortableMutexLock(PortableMutex *mutex)
{
    if (mutex && mutex->take())
        taken = *mutex;
}

PortableMutexLock::PortableMutexLock(PortableMutexLock const &other)
{
    join(other);
}

PortableMutexLock::~PortableMutexLock()
{
    leave();
}

PortableMutexLock &PortableMutexLock::operator=(PortableMutexLock const &other)
{
    if (this != &other) {
        leave();
        join(other);
    }
    return *this;
}

void PortableMutexLock::clear()
{
    PortableMutex const held = taken;
    for (PortableMutexLock *lock = this;;) {
        PortableMutexLock *following = const_cast<PortableMutexLock *>(lock->next);
        lock->taken = PortableMutex::null();
        lock->next = lock->previous = lock;
        if (following == this)
            break;
        lock = following;
    }
    held.release();
}

void PortableMutexLock::join(PortableMutexLock const &other)
{
    taken = other.taken;
    if (!ok())
        return;
    next = other.next;
    previous = &other;
    next->previous = this;
    previous->next = this;
}

void PortableMutexLock::leave()
{
    if (next == this)
        taken.release();
    next->previous = previous;
    previous->next = next;
    next = previous = this;
    taken = PortableMutex::null();
}
