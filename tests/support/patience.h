// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QTest>

/// How long a test waits for what has to come. A wait ends with its condition, so only what hangs
/// meets this limit; a machine that is busy or stands still for some seconds does not.
inline constexpr int patience_ms = 30000;

// The toolkit's own limit for these is 5 seconds, with no way to set another for all of them.
#undef QTRY_VERIFY
#define QTRY_VERIFY(condition) QTRY_VERIFY_WITH_TIMEOUT(condition, patience_ms)
#undef QTRY_COMPARE
#define QTRY_COMPARE(actual, expected) QTRY_COMPARE_WITH_TIMEOUT(actual, expected, patience_ms)
