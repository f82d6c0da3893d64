// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/base/asemaphore_object.h"

ASemaphoreObject::ASemaphoreObject(QObject *parent)
    : ASemaphoreObject(0, parent)
{
}

ASemaphoreObject::ASemaphoreObject(int permits, QObject *parent)
    : QObject(parent)
    , semaphore(permits)
{
    connect(this, &ASemaphoreObject::sig_avail, this, &ASemaphoreObject::slot_avail,
        Qt::QueuedConnection);
}

void ASemaphoreObject::acquire(int permits)
{
    semaphore.acquire(permits);
}

bool ASemaphoreObject::tryAcquire(int permits)
{
    return semaphore.tryAcquire(permits);
}

bool ASemaphoreObject::tryAcquire(int permits, int milliseconds)
{
    return semaphore.tryAcquire(permits, milliseconds);
}

void ASemaphoreObject::release(int permits)
{
    semaphore.release(permits);
    announce_available();
}

int ASemaphoreObject::available() const
{
    return semaphore.available();
}

void ASemaphoreObject::announce_available()
{
    if (semaphore.available() > 0)
        Q_EMIT sig_avail();
}

void ASemaphoreObject::slot_avail()
{
    int const permits = semaphore.available();
    if (permits > 0)
        Q_EMIT available(permits);
}
