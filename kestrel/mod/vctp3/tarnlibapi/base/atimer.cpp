// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/base/atimer.h"

#include <QThread>

ATimer::ATimer(QObject *parent)
    : QTimer(parent)
{
    connect_relay();
}

ATimer::ATimer(bool single_shot, QObject *parent)
    : QTimer(parent)
{
    setSingleShot(single_shot);
    setInterval(0);
    connect_relay();
}

void ATimer::start()
{
    start(-1);
}

void ATimer::start(int milliseconds)
{
    if (!on_own_thread()) {
        Q_EMIT relay_start(milliseconds);
        return;
    }
    if (milliseconds <= 0 && zero_shot_pending())
        return;
    if (milliseconds < 0)
        QTimer::start();
    else
        QTimer::start(milliseconds);
}

void ATimer::connect_relay()
{
    connect(this, &ATimer::relay_start, this, qOverload<int>(&ATimer::start), Qt::QueuedConnection);
}

bool ATimer::on_own_thread() const
{
    return QThread::currentThread() == thread();
}

bool ATimer::zero_shot_pending() const
{
    return isSingleShot() && isActive() && interval() == 0;
}
