// SPDX-License-Identifier: Apache-2.0
#pragma once

/// Three-way comparison by `<`: -1, 0 or 1. For `bool`, false sorts before true.
/// Thread: any.
template <typename T> constexpr int ACompare(T const &a, T const &b)
{
    return a < b ? -1 : b < a ? 1 : 0;
}
