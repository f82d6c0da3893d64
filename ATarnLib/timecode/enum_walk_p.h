// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/astring.h"

namespace Corvane {

template <typename Enum> bool walk_to_next(Enum *value, Enum last)
{
    if (!isValid(*value) || *value == last)
        return false;
    *value = static_cast<Enum>(static_cast<int>(*value) + 1);
    return true;
}

/// The first value whose text is \a text.
template <typename Enum> Enum find_by_text(AString const &text)
{
    Enum value{};
    getfirst(&value);
    do {
        if (toString(value) == text)
            return value;
    } while (getnext(&value));
    return Enum::invalid;
}

/// The row of a value in a table whose row 0 is that of the invalid value.
template <typename Row, unsigned int size, typename Enum>
constexpr Row const &row_of(Row const (&table)[size], Enum value)
{
    return table[isValid(value) ? static_cast<unsigned int>(value) : 0];
}

} // namespace Corvane
