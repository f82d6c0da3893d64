// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/base/athread.h"

AThread::AThread(QObject *parent)
    : QThread(parent)
{
}

AThread::~AThread()
{
    quit();
    wait();
}
