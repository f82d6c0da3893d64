// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/tarn_export.h"

#include <QThread>

/// A thread with an event loop that ends before the object does.
/// Thread: as `QThread`.
class TARN_EXPORT AThread : public QThread
{
    Q_OBJECT

public:
    explicit AThread(QObject *parent = nullptr);
    /// As `end`.
    ~AThread() override;

    /// Ends the event loop and waits, without a limit, until the thread is done. Not from the
    /// thread itself.
    void end();

protected:
    void run() override;
};
