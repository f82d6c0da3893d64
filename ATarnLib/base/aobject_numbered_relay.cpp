// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/base/aobject_numbered_relay.h"

void AObjectNumberedRelay::slot()
{
    Q_EMIT sig(number);
}

void AObjectNumberedRelay::slot(unsigned int n)
{
    if (n == number)
        Q_EMIT sig();
}
