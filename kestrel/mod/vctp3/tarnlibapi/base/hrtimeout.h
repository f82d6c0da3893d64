// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/hrtime.h"

/// A deadline: `HRTimeout const timeout(HRTime::now() + HRTime::seconds(5));`
/// Thread: a value without a lock.
class HRTimeout
{
public:
    /// \a moment is a point in time; a bad one has expired at once.
    explicit HRTimeout(HRTime const &moment)
        : deadline(moment)
    {
    }

    /// The deadline has passed.
    bool timeout_expired() const { return deadline < HRTime::now(); }

private:
    HRTime deadline;
};
