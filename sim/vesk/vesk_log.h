// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/astring.h"

#include <cstddef>
#include <deque>

/// The last lines that clients sent to be logged.
/// Thread: the server's.
class VeskLog
{
public:
    static constexpr std::size_t capacity = 1000;

    /// Drops the oldest line when full.
    void add(AString const &line);
    std::deque<AString> const &lines() const { return kept; }

private:
    std::deque<AString> kept;
};
