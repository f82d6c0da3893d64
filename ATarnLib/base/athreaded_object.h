// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ATarnLib/base/athread.h"

#include <QObject>

/// An object that lives on a thread of its own. It has no parent, as a parent would have to live
/// there too.
/// Thread: made on any; from then on its slots run on its own. It is deleted by `deleteLater`, or
/// by hand once the thread no longer runs.
class TARN_EXPORT AThreadedObject : public QObject
{
    Q_OBJECT

public:
    AThreadedObject();
    /// Leaves the thread to `deleteLater` on the thread that made this object, whose event loop
    /// ends it then.
    ~AThreadedObject() override;

    /// Starts the thread with the priority of the calling one.
    void start_thread();
    /// The thread it lives on. Null, after an assertion, when it was moved to a thread that is no
    /// `AThread`.
    AThread *thread() const;

public Q_SLOTS:
    /// The first thing that runs on the own thread, where timers and sockets are made.
    virtual void threaded_init();

private:
    AThread *const own_thread;
};
