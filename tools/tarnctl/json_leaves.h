// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/astring.h"
#include "tools/tarnctl/json_value.h"

namespace TarnCtl {

/// \name Leaves of the protocol as JSON
/// @{
JsonValue json_of(AString const &value);
JsonValue json_of(bool value);
JsonValue json_of(unsigned char value);
JsonValue json_of(unsigned short value);
JsonValue json_of(unsigned int value);
JsonValue json_of(int value);
/// A text: readers of JSON hold numbers with 53 bits only.
JsonValue json_of(unsigned long long value);
/// A text in wire form, such as "0.5X".
JsonValue json_of_speed(int value);
/// @}

} // namespace TarnCtl
