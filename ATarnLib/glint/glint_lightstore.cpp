// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/glint/glint.h"

#include "kestrel/mod/vctp3/tarnlibapi/base/areusable_ref_object.h"

/// What a reference needs to know of a database; there is none before there is a manager.
class LightStoreDBObject : public AReusableRefObject
{
};

AReference<LightStoreDBObject> Glint::lightstore(QString const &)
{
    A_ASSERT(lightstore_manager != nullptr);
    return nullptr;
}
