// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/tarn_export.h"

#include <atomic>
#include <cstddef>
#include <cstdint>

/// Atomic operations on plain variables of the width that the name says. The variable must be
/// aligned to its width: otherwise an assertion, and nothing is changed and 0 or false returned.
///
/// The 64-bit operations go through one process-wide mutex and are atomic against each other
/// only: read a variable that they change by `get64`, not directly.
/// Thread: any.
namespace Atomic {

__extension__ using uint128 = unsigned __int128;

/// These return the new value.
TARN_EXPORT std::uint32_t incr32(std::uint32_t *p);
TARN_EXPORT std::uint32_t decr32(std::uint32_t *p);
TARN_EXPORT std::uint32_t add32(std::uint32_t *p, std::uint32_t amount);
TARN_EXPORT std::uint32_t sub32(std::uint32_t *p, std::uint32_t amount);
/// Stores \a wanted if the variable holds \a expected; whether it did.
TARN_EXPORT bool cas32(std::uint32_t *p, std::uint32_t expected, std::uint32_t wanted);
/// Returns the value before.
TARN_EXPORT std::uint32_t set32(std::uint32_t *p, std::uint32_t value);

TARN_EXPORT std::uint64_t incr64(std::uint64_t *p);
TARN_EXPORT std::uint64_t decr64(std::uint64_t *p);
TARN_EXPORT std::uint64_t add64(std::uint64_t *p, std::uint64_t amount);
TARN_EXPORT std::uint64_t sub64(std::uint64_t *p, std::uint64_t amount);
TARN_EXPORT bool cas64(std::uint64_t *p, std::uint64_t expected, std::uint64_t wanted);
TARN_EXPORT std::uint64_t get64(std::uint64_t const *p);
TARN_EXPORT std::uint64_t set64(std::uint64_t *p, std::uint64_t value);

/// 128-bit operations are lock-free loops of compare-and-swap, so even `get128` needs memory
/// that may be written.
TARN_EXPORT bool cas128(uint128 *p, uint128 expected, uint128 wanted);
TARN_EXPORT uint128 get128(uint128 *p);
TARN_EXPORT uint128 set128(uint128 *p, uint128 value);

/// Move a pointer by \a bytes and return the new one.
TARN_EXPORT void *addptr(void **p, std::ptrdiff_t bytes);
TARN_EXPORT void *subptr(void **p, std::ptrdiff_t bytes);

} // namespace Atomic

/// An unsigned 32-bit value that is changed atomically. Operators return the new value, the
/// postfix ones the old.
/// Thread: any.
class AtomicUnsigned
{
public:
    AtomicUnsigned(std::uint32_t initial = 0) noexcept
        : value(initial)
    {
    }
    AtomicUnsigned(AtomicUnsigned const &other) noexcept
        : value(other.get())
    {
    }
    AtomicUnsigned &operator=(AtomicUnsigned const &other) noexcept { return *this = other.get(); }
    AtomicUnsigned &operator=(std::uint32_t x) noexcept
    {
        value.store(x);
        return *this;
    }

    std::uint32_t get() const noexcept { return value.load(); }
    operator std::uint32_t() const noexcept { return get(); }
    void clear() noexcept { value.store(0); }
    /// Stores \a wanted if the value is \a expected; whether it was.
    bool cas(std::uint32_t expected, std::uint32_t wanted) noexcept
    {
        return value.compare_exchange_strong(expected, wanted);
    }

    std::uint32_t operator++() noexcept { return add(1); }
    std::uint32_t operator--() noexcept { return add(UINT32_MAX); }
    std::uint32_t operator++(int) noexcept { return add(1) - 1; }
    std::uint32_t operator--(int) noexcept { return add(UINT32_MAX) + 1; }
    std::uint32_t operator*=(std::uint32_t x) noexcept
    {
        return change([x](std::uint32_t v) { return v * x; });
    }
    /// Division by 0: an assertion, and the value stays.
    TARN_EXPORT std::uint32_t operator/=(std::uint32_t x) noexcept;
    std::uint32_t operator&=(std::uint32_t x) noexcept
    {
        return change([x](std::uint32_t v) { return v & x; });
    }
    std::uint32_t operator|=(std::uint32_t x) noexcept
    {
        return change([x](std::uint32_t v) { return v | x; });
    }
    std::uint32_t operator^=(std::uint32_t x) noexcept
    {
        return change([x](std::uint32_t v) { return v ^ x; });
    }
    /// Clears the bits that are set in \a x.
    std::uint32_t and_not(std::uint32_t x) noexcept { return *this &= ~x; }

    /// \a bit: 0 to 31. Outside: an assertion, and nothing changes; `get_bit` gives false.
    TARN_EXPORT void set_bit(unsigned int bit) noexcept;
    TARN_EXPORT void clear_bit(unsigned int bit) noexcept;
    TARN_EXPORT bool get_bit(unsigned int bit) const noexcept;

    /// Raise or lower the value to \a x; whether that changed it.
    bool Max(std::uint32_t x) noexcept
    {
        return change_if([x](std::uint32_t v) { return v < x; }, [x](std::uint32_t) { return x; });
    }
    bool Min(std::uint32_t x) noexcept
    {
        return change_if([x](std::uint32_t v) { return v > x; }, [x](std::uint32_t) { return x; });
    }

    /// Add or take 1 unless the value has reached \a limit; whether that changed it.
    bool increase(std::uint32_t limit) noexcept { return increase_by(1, limit); }
    bool decrease(std::uint32_t limit) noexcept { return decrease_by(1, limit); }
    /// Add or take \a amount as a whole, or nothing where that would pass \a limit or where the
    /// amount is 0; whether it changed the value.
    bool increase_by(std::uint32_t amount, std::uint32_t limit) noexcept
    {
        return amount != 0
            && change_if([=](std::uint32_t v) { return v < limit && limit - v >= amount; },
                [=](std::uint32_t v) { return v + amount; });
    }
    bool decrease_by(std::uint32_t amount, std::uint32_t limit) noexcept
    {
        return amount != 0
            && change_if([=](std::uint32_t v) { return v > limit && v - limit >= amount; },
                [=](std::uint32_t v) { return v - amount; });
    }

private:
    std::uint32_t add(std::uint32_t x) noexcept
    {
        return change([x](std::uint32_t v) { return v + x; });
    }
    template <typename Step> std::uint32_t change(Step step) noexcept
    {
        for (;;) {
            std::uint32_t const before = get();
            std::uint32_t const after = step(before);
            if (cas(before, after))
                return after;
        }
    }
    template <typename Test, typename Step> bool change_if(Test test, Step step) noexcept
    {
        for (;;) {
            std::uint32_t const before = get();
            if (!test(before))
                return false;
            if (cas(before, step(before)))
                return true;
        }
    }

    std::atomic<std::uint32_t> value;
};
