// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/base/atomic.h"

#include "kestrel/mod/vctp3/tarnlibapi/base/aassert.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/portable_mutex.h"

using std::uintptr_t;

namespace Atomic {
namespace {

bool aligned32(void const *at)
{
    auto const p = at;
    return A_ASSERT_TEXT(
        uintptr_t(p) % sizeof(std::uint32_t) == 0, "uintptr_t(p) % sizeof(uint32_t) == 0");
}

bool aligned64(void const *at)
{
    auto const p = at;
    return A_ASSERT_TEXT(
        uintptr_t(p) % sizeof(std::uint64_t) == 0, "uintptr_t(p) % sizeof(uint64_t) == 0");
}

bool aligned128(void const *p)
{
    return A_ASSERT(uintptr_t(p) % sizeof(uint128) == 0);
}

/// Made at first use and never destroyed: objects that end after it may still count.
PortableMutex &mutex64()
{
    static PortableMutex &mutex = *new PortableMutex;
    return mutex;
}

/// Runs \a step on the variable under the mutex and returns what it returns.
template <typename T, typename Step> auto locked64(T *p, Step step) -> decltype(step(*p))
{
    if (!aligned64(p))
        return {};
    PortableMutex const &mutex = mutex64();
    // The first take after a thread died inside fails once; each step is one store, so nothing
    // is ever half changed.
    while (!mutex.take()) { }
    auto const result = step(*p);
    mutex.release();
    return result;
}

} // namespace

std::uint32_t incr32(std::uint32_t *p)
{
    return add32(p, 1);
}

std::uint32_t decr32(std::uint32_t *p)
{
    return sub32(p, 1);
}

std::uint32_t add32(std::uint32_t *p, std::uint32_t amount)
{
    return aligned32(p) ? __atomic_add_fetch(p, amount, __ATOMIC_SEQ_CST) : 0;
}

std::uint32_t sub32(std::uint32_t *p, std::uint32_t amount)
{
    return aligned32(p) ? __atomic_sub_fetch(p, amount, __ATOMIC_SEQ_CST) : 0;
}

bool cas32(std::uint32_t *p, std::uint32_t expected, std::uint32_t wanted)
{
    return aligned32(p)
        && __atomic_compare_exchange_n(
            p, &expected, wanted, false, __ATOMIC_SEQ_CST, __ATOMIC_SEQ_CST);
}

std::uint32_t set32(std::uint32_t *p, std::uint32_t value)
{
    return aligned32(p) ? __atomic_exchange_n(p, value, __ATOMIC_SEQ_CST) : 0;
}

std::uint64_t incr64(std::uint64_t *p)
{
    return add64(p, 1);
}

std::uint64_t decr64(std::uint64_t *p)
{
    return sub64(p, 1);
}

std::uint64_t add64(std::uint64_t *p, std::uint64_t amount)
{
    return locked64(p, [amount](std::uint64_t &v) { return v += amount; });
}

std::uint64_t sub64(std::uint64_t *p, std::uint64_t amount)
{
    return locked64(p, [amount](std::uint64_t &v) { return v -= amount; });
}

bool cas64(std::uint64_t *p, std::uint64_t expected, std::uint64_t wanted)
{
    return locked64(p, [=](std::uint64_t &v) {
        bool const same = v == expected;
        if (same)
            v = wanted;
        return same;
    });
}

std::uint64_t get64(std::uint64_t const *p)
{
    return locked64(p, [](std::uint64_t const &v) { return v; });
}

std::uint64_t set64(std::uint64_t *p, std::uint64_t value)
{
    return locked64(p, [value](std::uint64_t &v) {
        std::uint64_t const before = v;
        v = value;
        return before;
    });
}

bool cas128(uint128 *p, uint128 expected, uint128 wanted)
{
    return aligned128(p) && __sync_bool_compare_and_swap(p, expected, wanted);
}

uint128 get128(uint128 *p)
{
    // Exchanging 0 for 0 reads all 16 bytes at once and never changes them.
    return aligned128(p) ? __sync_val_compare_and_swap(p, uint128(0), uint128(0)) : 0;
}

uint128 set128(uint128 *p, uint128 value)
{
    if (!aligned128(p))
        return 0;
    uint128 seen = get128(p);
    for (;;) {
        uint128 const before = __sync_val_compare_and_swap(p, seen, value);
        if (before == seen)
            return before;
        seen = before;
    }
}

void *addptr(void **p, std::ptrdiff_t bytes)
{
    // The builtin counts in bytes for every pointer type.
    return aligned64(p) ? __atomic_add_fetch(p, bytes, __ATOMIC_SEQ_CST) : nullptr;
}

void *subptr(void **p, std::ptrdiff_t bytes)
{
    return aligned64(p) ? __atomic_sub_fetch(p, bytes, __ATOMIC_SEQ_CST) : nullptr;
}

} // namespace Atomic

std::uint32_t AtomicUnsigned::operator/=(std::uint32_t x) noexcept
{
    if (!A_ASSERT(x != 0))
        return get();
    return change([x](std::uint32_t v) { return v / x; });
}

void AtomicUnsigned::set_bit(unsigned int bit) noexcept
{
    if (A_ASSERT(bit < 32))
        *this |= 1u << bit;
}

void AtomicUnsigned::clear_bit(unsigned int bit) noexcept
{
    if (A_ASSERT(bit < 32))
        and_not(1u << bit);
}

bool AtomicUnsigned::get_bit(unsigned int bit) const noexcept
{
    return A_ASSERT(bit < 32) && (get() >> bit & 1u) != 0;
}
