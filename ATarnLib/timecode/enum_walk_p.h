// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/astring.h"

namespace Corvane {

/// The valid values of an enumeration follow each other.
template <typename Enum> bool walk_to_next(Enum *value)
{
    if (!isValid(*value))
        return false;
    auto const next = static_cast<Enum>(static_cast<int>(*value) + 1);
    if (!isValid(next))
        return false;
    *value = next;
    return true;
}

/// The protocol counts from 0 what counts from 1 here. \a is_valid: of the protocol's value.
template <typename Enum, typename Wire> Enum from_wire(Wire value, bool (*is_valid)(int))
{
    int const number = static_cast<int>(value);
    return is_valid(number) ? static_cast<Enum>(number + 1) : Enum::invalid;
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
