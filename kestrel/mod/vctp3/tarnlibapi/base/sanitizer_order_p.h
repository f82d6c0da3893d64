// SPDX-License-Identifier: Apache-2.0
#pragma once

#if defined(__SANITIZE_THREAD__)
extern "C" {
void __tsan_acquire(void *address);
void __tsan_release(void *address);
}
#endif

/// \name What the thread sanitizer cannot see
/// The toolkit's semaphores, recursive mutexes, read-write locks and ends of threads work inside a
/// library that the sanitizer does not look into. It has to be told that who takes \a what sees all
/// that was done before it was given. Without the sanitizer these are nothing.
/// @{
inline void tell_of_take([[maybe_unused]] void *what)
{
#if defined(__SANITIZE_THREAD__)
    __tsan_acquire(what);
#endif
}

inline void tell_of_give([[maybe_unused]] void *what)
{
#if defined(__SANITIZE_THREAD__)
    __tsan_release(what);
#endif
}

/// For a lock that is held longer than this lives.
class TellOfLock
{
public:
    explicit TellOfLock(void *lock)
        : held(lock)
    {
        tell_of_take(held);
    }
    ~TellOfLock() { tell_of_give(held); }
    TellOfLock(TellOfLock const &) = delete;
    TellOfLock &operator=(TellOfLock const &) = delete;

private:
    void *const held;
};
/// @}
