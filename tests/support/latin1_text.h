// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

/// Short for what a test compares with.
inline QString text(char const *latin1)
{
    return QString::fromLatin1(latin1);
}
