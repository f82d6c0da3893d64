// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

/// "1+2:3:4:5 F2", by the components of a timecode of either type.
template <typename AnyTimecode> QString shown(AnyTimecode const &t)
{
    return QStringLiteral("%1+%2:%3:%4:%5 F%6")
        .arg(t.get_days())
        .arg(t.get_hours())
        .arg(t.get_minutes())
        .arg(t.get_seconds())
        .arg(t.get_frames())
        .arg(t.get_f2() ? 2 : 1);
}
