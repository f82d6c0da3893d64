// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/tarn_export.h"

#include <atomic>
#include <cstdint>

/// Base of counted objects without a toolkit parent. The count starts at 0: who makes the object
/// takes the first reference. The object deletes itself when the last one is given back.
/// Thread: any; a new reference is taken only by one who holds one or made the object.
class TARN_EXPORT AReferenced
{
public:
    AReferenced() = default;
    AReferenced(AReferenced const &) = delete;
    AReferenced &operator=(AReferenced const &) = delete;
    virtual ~AReferenced();

    /// False, and nothing taken, when the count is at its 32-bit maximum.
    bool add_reference();
    /// Calls `full_release` when the count reaches 0. At 0 already: an assertion only.
    void release_reference();
    std::uint32_t reference_count() const { return references.load(std::memory_order_acquire); }
    /// Deletes the object, whatever the count; a kept pool may do otherwise.
    virtual void full_release();

private:
    std::atomic<std::uint32_t> references{0};
};
