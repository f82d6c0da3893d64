// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/base/areusable_ref_object.h"

#include "kestrel/mod/vctp3/tarnlibapi/base/aassert.h"

#include <climits>

AReusableRefObject::AReusableRefObject(QObject *parent)
    : QObject(parent)
{
}

AReusableRefObject::~AReusableRefObject() = default;

bool AReusableRefObject::add_reference()
{
    unsigned int count = references.load();
    do {
        if (count == UINT_MAX)
            return false;
    } while (!references.compare_exchange_weak(count, count + 1));
    return true;
}

void AReusableRefObject::release_reference()
{
    unsigned int count = references.load();
    do {
        if (!A_ASSERT(count != 0))
            return;
    } while (!references.compare_exchange_weak(count, count - 1));
    // The caller's lock keeps the object from being revived and deleted before it has told.
    if (count == 1)
        Q_EMIT zero_references(this);
}

bool AReusableRefObject::releasable() const
{
    return references.load() == 0;
}
