// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/tarn_export.h"

/// The one road for a caller's faults: a text, the source file's name and a line go to a handler,
/// and execution goes on with a harmless result. Nothing here stops the program.
/// Thread: any; a handler must be callable from any thread.
namespace AAssert {

using AssertHandler = void (*)(char const *text, char const *file, int line);

/// Replaces the handler and returns the one before. Null restores the default, which writes
/// "ASSERT: <text> (<file>:<line>)" to the toolkit's debug output.
TARN_EXPORT AssertHandler set_handler(AssertHandler handler);

/// Reports a failed condition. Always false, so that it can end a condition.
TARN_EXPORT bool failed(char const *text, char const *file, int line);

} // namespace AAssert

/// Yields the truth value of the condition: `if (!A_ASSERT(count <= 40)) return;`
#define A_ASSERT(condition)                                                                        \
    (static_cast<bool>(condition) || AAssert::failed(#condition, __FILE_NAME__, __LINE__))

/// The same where the reported text differs from the expression that is tested.
#define A_ASSERT_TEXT(condition, text)                                                             \
    (static_cast<bool>(condition) || AAssert::failed(text, __FILE_NAME__, __LINE__))
