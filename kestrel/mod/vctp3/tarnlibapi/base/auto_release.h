// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/afunction.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/tarn_export.h"

#include <atomic>
#include <cstdint>

/// Runs a function once, when the last copy goes or is released.
/// Thread: any; one object may be copied, assigned and released by several threads at once. The
/// function runs in the thread that gives up the last copy.
class TARN_EXPORT AutoRelease
{
public:
    AutoRelease() noexcept = default;
    explicit AutoRelease(AFunction const &function);
    AutoRelease(AutoRelease const &other);
    AutoRelease &operator=(AutoRelease const &other);
    ~AutoRelease();

    /// Gives up this copy: it is empty from here on.
    void release();
    bool empty() const { return held.load(std::memory_order_acquire) == 0; }

private:
    class Holder;

    Holder *share() const;
    void replace(Holder *holder);

    // The holder's address. Its lowest bit is set while a thread takes a reference from here, so
    // that nobody can give the last one back in between.
    mutable std::atomic<std::uintptr_t> held{0};
};
