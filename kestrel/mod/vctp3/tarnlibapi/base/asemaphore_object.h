// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/tarn_export.h"

#include <QObject>
#include <QSemaphore>

/// A semaphore that also tells an event loop when there is something to take.
/// Thread: any; `available` the signal comes on the object's own.
class TARN_EXPORT ASemaphoreObject : public QObject
{
    Q_OBJECT

public:
    explicit ASemaphoreObject(QObject *parent = nullptr);
    /// Begins with \a permits, 0 or more.
    explicit ASemaphoreObject(int permits, QObject *parent = nullptr);

    /// Takes \a permits, waiting for them without a limit.
    void acquire(int permits = 1);
    /// Takes \a permits if they are there.
    bool tryAcquire(int permits = 1);
    /// Takes \a permits if they come within \a milliseconds; negative: without a limit.
    bool tryAcquire(int permits, int milliseconds);
    /// Gives \a permits, and announces what can be taken then.
    void release(int permits = 1);
    int available() const;
    /// Announces now what can be taken.
    void announce_available();

Q_SIGNALS:
    /// Permits were there on the announcing thread; on its way to `slot_avail`.
    void sig_avail();
    /// Permits are there; \a permits is how many were seen, 1 or more.
    void available(int permits);

public Q_SLOTS:
    /// Looks again, as the permits may be gone by now, and emits `available` if not.
    void slot_avail();

private:
    QSemaphore semaphore;
};
