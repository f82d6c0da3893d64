// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ATarnLib/timecode/video_standard.h"

// The numbers are what counts, so tests say numbers and not names. They also compare numbers: to
// print a value that differs QCOMPARE would take `Corvane::toString`, whose text it cannot use.

template <typename Enum> int number(Enum value)
{
    return static_cast<int>(value);
}

inline Corvane::VideoFrequency frequency(int n)
{
    return static_cast<Corvane::VideoFrequency>(n);
}
inline Corvane::VideoResolution resolution(int n)
{
    return static_cast<Corvane::VideoResolution>(n);
}
inline Corvane::VideoStandard standard(int n)
{
    return static_cast<Corvane::VideoStandard>(n);
}
inline Corvane::DropframeFlag flag(int n)
{
    return static_cast<Corvane::DropframeFlag>(n);
}
