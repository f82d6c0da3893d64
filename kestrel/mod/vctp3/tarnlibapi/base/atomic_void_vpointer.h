// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <bit>
#include <cstdint>

/// A pointer with a version that grows with every change, so that a compare-and-swap notices a
/// pointer that went away and came back. Both words change together.
/// Thread: any, without a lock.
class alignas(16) AtomicVoidVPointer
{
public:
    /// What it holds at one moment.
    struct X
    {
        void *ptr = nullptr;
        std::uint64_t version = 0;

        bool operator==(X const &other) const = default;
    };

    /// Null, at version 0.
    AtomicVoidVPointer() = default;
    AtomicVoidVPointer(AtomicVoidVPointer const &) = delete;
    AtomicVoidVPointer &operator=(AtomicVoidVPointer const &) = delete;

    /// One of the words; the other may be newer by the time it is asked for.
    void *ptr() const { return __atomic_load_n(&words.ptr, __ATOMIC_ACQUIRE); }
    std::uint64_t version() const { return __atomic_load_n(&words.version, __ATOMIC_ACQUIRE); }

    /// Both words as they stood at one moment.
    X getX() const;
    /// Sets both words as given.
    void setX(X const &value);
    /// Null at version 0: back to the beginning, when nobody can still hold an older value.
    void clearX() { setX(X()); }

    /// Sets the pointer and advances the version if both words are \a expected. On failure:
    /// false, and nothing has changed.
    bool casv(X const &expected, void *desired);
    /// The same if the pointer alone is \a expected, at any version.
    bool cas(void *expected, void *desired);
    /// Sets the pointer and advances the version.
    AtomicVoidVPointer &operator=(void *desired);

    bool operator==(AtomicVoidVPointer const &other) const { return getX() == other.getX(); }
    bool operator==(X const &other) const { return getX() == other; }

    /// Both words, each read by itself and the version first: a `casv` with the result succeeds
    /// only if they belonged together and still do. Cheaper than `getX`.
    X peek() const;
    /// Sets the pointer and advances the version with two plain stores. Only for the one thread
    /// that may change it now; a late `casv` of another still fails.
    void set_by_owner(void *desired);

private:
    // The builtin wants one integer where the readers of a single word want two.
    __extension__ typedef unsigned __int128 Both;
    typedef Both BothView __attribute__((may_alias));

    static Both both(X const &value) { return std::bit_cast<Both>(value); }
    BothView *whole() const { return reinterpret_cast<BothView *>(&words); }

    mutable X words; // reading both at once counts as writing
};

inline AtomicVoidVPointer::X AtomicVoidVPointer::getX() const
{
    // A swap of 0 for 0 is the one way to read 16 bytes at once.
    return std::bit_cast<X>(__sync_val_compare_and_swap(whole(), Both(0), Both(0)));
}

inline void AtomicVoidVPointer::setX(X const &value)
{
    while (!__sync_bool_compare_and_swap(whole(), both(peek()), both(value))) { }
}

inline bool AtomicVoidVPointer::casv(X const &expected, void *desired)
{
    return __sync_bool_compare_and_swap(
        whole(), both(expected), both(X{desired, expected.version + 1}));
}

inline bool AtomicVoidVPointer::cas(void *expected, void *desired)
{
    for (;;) {
        X const now = getX();
        if (now.ptr != expected)
            return false;
        if (casv(now, desired))
            return true;
    }
}

inline AtomicVoidVPointer &AtomicVoidVPointer::operator=(void *desired)
{
    while (!casv(peek(), desired)) { }
    return *this;
}

inline AtomicVoidVPointer::X AtomicVoidVPointer::peek() const
{
    X now;
    now.version = version();
    now.ptr = ptr();
    return now;
}

inline void AtomicVoidVPointer::set_by_owner(void *desired)
{
    // The version first: who reads in between gets a pair that never was, and its swap fails.
    std::uint64_t const next_version = __atomic_load_n(&words.version, __ATOMIC_RELAXED) + 1;
    __atomic_store_n(&words.version, next_version, __ATOMIC_RELEASE);
    __atomic_store_n(&words.ptr, desired, __ATOMIC_RELEASE);
}
