// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/astring.h"

#include <array>
#include <cstddef>

/// The audio levels of one report.
struct GlintLevels
{
    static constexpr std::size_t count = 16;

    /// Numbers between blanks. What is no number is left out, what lacks is 0, and more than 16
    /// are cut off.
    static std::array<unsigned int, count> parse(AString const &text);
};
