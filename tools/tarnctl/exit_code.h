// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace TarnCtl {

/// What the program ends with.
enum class ExitCode
{
    Done = 0,
    ServerError = 1,
    Usage = 2,
    NoConnection = 3,
    TimedOut = 4,
    NoOutput = 5
};

} // namespace TarnCtl
