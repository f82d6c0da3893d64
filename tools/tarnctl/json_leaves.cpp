// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnctl/json_leaves.h"

namespace TarnCtl {

JsonValue json_of(AString const &value)
{
    return JsonValue::text(QString(value));
}

JsonValue json_of(bool value)
{
    return JsonValue::boolean(value);
}

JsonValue json_of(unsigned char value)
{
    return json_of(static_cast<unsigned int>(value));
}

JsonValue json_of(unsigned short value)
{
    return json_of(static_cast<unsigned int>(value));
}

JsonValue json_of(unsigned int value)
{
    return JsonValue::number(QString::number(value));
}

JsonValue json_of(int value)
{
    return JsonValue::number(QString::number(value));
}

JsonValue json_of(unsigned long long value)
{
    return JsonValue::text(QString::number(value));
}

JsonValue json_of_speed(int value)
{
    // As many digits as the wire carries.
    return json_of(AString::from_speed(value, 15));
}

} // namespace TarnCtl
