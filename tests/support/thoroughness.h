// SPDX-License-Identifier: Apache-2.0
#pragma once

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
inline constexpr bool sanitized = true;
#else
inline constexpr bool sanitized = false;
#endif

/// Of a walk over all values one in so many is looked at. A sanitizer watches what lines do, for
/// which few values are enough, and makes each ten times as dear; without one all are. Nothing in a
/// timecode or a table repeats by 13.
inline constexpr unsigned int one_in = sanitized ? 13 : 1;
