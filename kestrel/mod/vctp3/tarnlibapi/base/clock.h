// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/tarn_export.h"

/// The seams through which the library meets time and chance: whatever asks for the time, for a
/// random number or for the high-resolution counter asks here, so that a test can replace each of
/// them and run in virtual time. A source that is set must outlive its use; it is called from any
/// thread.
/// Thread: any. Sources are replaced while no other thread works, as at the start of a test.

/// Time of day and time since some fixed moment.
namespace AClock {

class TARN_EXPORT Source
{
public:
    virtual ~Source();
    /// Milliseconds since a moment that stays the same for the process; never goes back.
    virtual long long monotonic_ms() = 0;
    /// Milliseconds since 1970-01-01 00:00 UTC; goes back when the machine's clock is set.
    virtual long long wall_ms() = 0;
};

/// Replaces the source and returns the one before, null for the platform's. Null restores that.
TARN_EXPORT Source *set_source(Source *source);
TARN_EXPORT long long monotonic_ms();
TARN_EXPORT long long wall_ms();

} // namespace AClock

/// Random numbers that need not be secret: transaction ids, waiting times.
namespace ARandom {

class TARN_EXPORT Source
{
public:
    virtual ~Source();
    /// Any of the 2^32 values, each as likely.
    virtual unsigned int value() = 0;
};

/// Replaces the source and returns the one before, null for the platform's. Null restores that.
TARN_EXPORT Source *set_source(Source *source);
TARN_EXPORT unsigned int value();
/// A value from 0 to \a limit - 1; 0 for a \a limit of 0.
TARN_EXPORT unsigned int below(unsigned int limit);

} // namespace ARandom

/// The counter behind `HRTime`.
namespace ACounter {

class TARN_EXPORT Source
{
public:
    virtual ~Source();
    /// Ticks since a moment that stays the same for the process; never goes back.
    virtual long long ticks() = 0;
    /// Ticks in a second; 0 while there is no counter.
    virtual long long frequency() = 0;
};

/// Replaces the source and returns the one before, null for the platform's. Null restores that.
TARN_EXPORT Source *set_source(Source *source);
TARN_EXPORT long long ticks();
TARN_EXPORT long long frequency();

} // namespace ACounter
