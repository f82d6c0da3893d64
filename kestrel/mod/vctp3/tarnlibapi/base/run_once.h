// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/aassert.h"

/// Runs a function while it is constructed: start-up work of a translation unit, as in
/// `static RunOnce const setup(&register_types);`.
/// Thread: the function runs on the one that constructs it.
class RunOnce
{
public:
    /// A null function is an assertion, and nothing runs.
    explicit RunOnce(void (*run_function)(void))
    {
        if (A_ASSERT(run_function != 0))
            run_function();
    }
};
