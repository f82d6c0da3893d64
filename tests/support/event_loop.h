// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/support/patience.h"

#include <QCoreApplication>
#include <QTest>
#include <QTimer>
#include <QTimerEvent>

/// The event loop in the hands of a test.
namespace EventLoop {

/// Waits until what is queued now has run.
inline void turn()
{
    bool done = false;
    QObject context;
    QMetaObject::invokeMethod(
        &context, [&done] { done = true; }, Qt::QueuedConnection);
    QTRY_VERIFY(done);
}

/// What happens when the time of \a timer has passed, now.
inline void fire(QTimer *timer)
{
    QTimerEvent event(timer->timerId());
    QCoreApplication::sendEvent(timer, &event);
}

} // namespace EventLoop
