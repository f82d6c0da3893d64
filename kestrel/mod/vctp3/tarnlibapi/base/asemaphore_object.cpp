// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/base/asemaphore_object.h"

#include "kestrel/mod/vctp3/tarnlibapi/base/sanitizer_order_p.h"

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
    tell_of_take(&semaphore);
}

bool ASemaphoreObject::tryAcquire(int permits)
{
    return tryAcquire(permits, 0);
}

bool ASemaphoreObject::tryAcquire(int permits, int milliseconds)
{
    if (!semaphore.tryAcquire(permits, milliseconds))
        return false;
    tell_of_take(&semaphore);
    return true;
}

void ASemaphoreObject::release(int permits)
{
    tell_of_give(&semaphore);
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
