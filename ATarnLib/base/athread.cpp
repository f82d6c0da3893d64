// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/base/athread.h"

#include "kestrel/mod/vctp3/tarnlibapi/base/sanitizer_order_p.h"

AThread::AThread(QObject *parent)
    : QThread(parent)
{
}

AThread::~AThread()
{
    end();
}

void AThread::end()
{
    quit();
    wait();
    tell_of_take(this);
}

void AThread::run()
{
    QThread::run();
    tell_of_give(this);
}
