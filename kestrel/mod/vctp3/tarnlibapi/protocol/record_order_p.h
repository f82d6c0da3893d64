// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/astring.h"

/// Comparison of two records, a field at a time. The forms of four arguments are for a field with
/// a presence flag, whose value does not count while it is absent.
namespace VCTP3 {

template <typename T> bool same(T const &a, T const &b)
{
    return a == b;
}

template <typename T> bool same(bool has_a, T const &a, bool has_b, T const &b)
{
    return has_a == has_b && (!has_a || a == b);
}

inline int compare(AString const &a, AString const &b)
{
    return a.compare(b);
}

template <typename T> int compare(T const &a, T const &b)
{
    if (a < b)
        return -1;
    return b < a ? 1 : 0;
}

template <typename T> int compare(bool has_a, T const &a, bool has_b, T const &b)
{
    if (has_a != has_b)
        return has_b ? -1 : 1;
    return has_a ? compare(a, b) : 0;
}

} // namespace VCTP3
