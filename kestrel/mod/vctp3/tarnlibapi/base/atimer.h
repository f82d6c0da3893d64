// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/tarn_export.h"

#include <QTimer>

/// A timer that any thread may start, and whose pending zero-interval shot is not started over: a
/// burst of requests gives one `timeout`.
/// The starting functions hide those of `QTimer`, which are not virtual; call them through this
/// class.
/// Thread: that of the timer, but for `start`.
class TARN_EXPORT ATimer : public QTimer
{
    Q_OBJECT

public:
    explicit ATimer(QObject *parent = nullptr);
    /// Single shot or not, with interval 0.
    explicit ATimer(bool single_shot, QObject *parent = nullptr);

public Q_SLOTS:
    /// Starts with the interval that is set. Does nothing while a single shot of interval 0 is
    /// pending. From another thread: done soon, on the timer's own.
    void start();
    /// Sets the interval and starts; a negative one means the interval that is set. Does nothing
    /// while a single shot of interval 0 is pending and \a milliseconds is 0.
    void start(int milliseconds);

Q_SIGNALS:
    /// A start from another thread, on its way to the timer's own. Negative: the interval stays.
    void relay_start(int milliseconds = -1);

private:
    void connect_relay();
    bool on_own_thread() const;
    bool zero_shot_pending() const;
};
