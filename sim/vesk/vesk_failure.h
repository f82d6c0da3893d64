// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/astring_format.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/enums.h"

/// Why the model would not do what it was told, as the client hears it.
struct VeskFailure
{
    AString text;
    VCTP3::ErrorCode code = VCTP3::ErrorCode::general;
};

/// Fills in \a failure and gives false, so that a function can end with it.
inline bool vesk_fail(
    VeskFailure *failure, AString const &text, VCTP3::ErrorCode code = VCTP3::ErrorCode::general)
{
    failure->text = text;
    failure->code = code;
    return false;
}

/// There is no clip \a id.
inline bool vesk_fail_no_clip(VeskFailure *failure, AString const &id)
{
    return vesk_fail(
        failure, AString::l1("There is no clip \"%1\"").arg(id), VCTP3::ErrorCode::clipnotfound);
}
