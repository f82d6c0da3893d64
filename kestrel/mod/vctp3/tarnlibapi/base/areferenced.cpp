// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/base/areferenced.h"

#include "kestrel/mod/vctp3/tarnlibapi/base/aassert.h"

AReferenced::~AReferenced() = default;

bool AReferenced::add_reference()
{
    std::uint32_t seen = references.load(std::memory_order_relaxed);
    while (seen != UINT32_MAX) {
        if (references.compare_exchange_weak(seen, seen + 1, std::memory_order_relaxed))
            return true;
    }
    return false;
}

void AReferenced::release_reference()
{
    std::uint32_t seen = references.load(std::memory_order_relaxed);
    do {
        if (!A_ASSERT_TEXT(seen != 0, "count != 0"))
            return;
    } while (!references.compare_exchange_weak(
        seen, seen - 1, std::memory_order_acq_rel, std::memory_order_relaxed));
    if (seen == 1)
        full_release();
}

void AReferenced::full_release()
{
    delete this;
}
