// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <atomic>
#include <cstdint>
#include <utility>

/// The count inside a value that is shared through `ARef`. It starts at 1, for its maker.
/// Thread: any.
class ASharedCount
{
public:
    /// Takes one reference unless the count has already fallen to 0; false then.
    bool take() noexcept
    {
        std::uint32_t seen = count.load(std::memory_order_relaxed);
        while (seen != 0) {
            if (count.compare_exchange_weak(seen, seen + 1, std::memory_order_relaxed))
                return true;
        }
        return false;
    }

    /// Gives one reference back. True when it was the last: the caller then destroys the value.
    bool release() noexcept { return count.fetch_sub(1, std::memory_order_acq_rel) == 1; }

    /// Whether the caller's reference is the only one, so that it may change the value.
    bool unique() const noexcept { return count.load(std::memory_order_acquire) == 1; }

private:
    std::atomic<std::uint32_t> count{1};
};

/// A counting pointer. `T` has `bool take_reference()`, which fails when the count is 0, and
/// `void release_reference()`, which destroys the value with the last reference.
/// One `ARef` object belongs to one thread at a time; copies may live in any thread.
template <typename T> class ARef
{
public:
    ARef() noexcept = default;
    ARef(ARef const &other) noexcept
        : pointer(other.pointer && other.pointer->take_reference() ? other.pointer : nullptr)
    {
    }
    ARef(ARef &&other) noexcept
        : pointer(std::exchange(other.pointer, nullptr))
    {
    }
    ~ARef() { drop(); }
    ARef &operator=(ARef const &other) noexcept
    {
        ARef(other).swap(*this);
        return *this;
    }
    ARef &operator=(ARef &&other) noexcept
    {
        ARef(std::move(other)).swap(*this);
        return *this;
    }

    /// Makes a pointer that takes over a reference which the caller holds.
    static ARef adopt(T *value) noexcept
    {
        ARef result;
        result.pointer = value;
        return result;
    }

    void swap(ARef &other) noexcept { std::swap(pointer, other.pointer); }
    void reset() noexcept
    {
        drop();
        pointer = nullptr;
    }

    T *get() const noexcept { return pointer; }
    T *operator->() const noexcept { return pointer; }
    T &operator*() const noexcept { return *pointer; }
    explicit operator bool() const noexcept { return pointer != nullptr; }

private:
    void drop() noexcept
    {
        if (pointer)
            pointer->release_reference();
    }

    T *pointer = nullptr;
};
