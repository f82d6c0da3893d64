// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/base/athreaded_object.h"

#include "kestrel/mod/vctp3/tarnlibapi/base/aassert.h"

AThreadedObject::AThreadedObject()
    : own_thread(new AThread)
{
    moveToThread(own_thread);
    connect(own_thread, &QThread::started, this, &AThreadedObject::threaded_init);
}

AThreadedObject::~AThreadedObject()
{
    own_thread->deleteLater();
}

void AThreadedObject::start_thread()
{
    own_thread->start(QThread::InheritPriority);
}

AThread *AThreadedObject::thread() const
{
    AThread *t = qobject_cast<AThread *>(QObject::thread());
    A_ASSERT(t != nullptr);
    return t;
}

void AThreadedObject::threaded_init() { }
