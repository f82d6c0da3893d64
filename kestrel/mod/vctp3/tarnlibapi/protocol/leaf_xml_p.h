// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/protocol/enum_string.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/leaf_xml.h"

namespace VCTP3 {

/// Digits behind the point that a written speed has at most.
constexpr unsigned int speed_precision = 15;

/// Stores the reason; always false, so that it can end a reader.
bool fail_reading(AString *error, AString const &text);

/// The value of an enumeration by the name in the element.
TARN_AUTOTEST_EXPORT bool read_enum_value(XMLTree const &parent, AString const &tag,
    EnumString const &names, char const *type, int *out, AString *error);

template <typename Enum>
bool read_enum(XMLTree const &parent, AString const &tag, EnumString const &names, char const *type,
    Enum *out, AString *error)
{
    int value = 0;
    if (!read_enum_value(parent, tag, names, type, &value, error))
        return false;
    *out = static_cast<Enum>(value);
    return true;
}

} // namespace VCTP3
