// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/astring.h"

#include <QString>

namespace VCTP3 {

/// The host name of this machine, at most 1024 characters, by which a server on the same machine
/// is recognised. Read at the first call and kept; "windoze" if the platform cannot tell it.
/// Thread: any.
TARN_EXPORT AString getcomputername_as();
TARN_EXPORT QString getcomputername_qs();

} // namespace VCTP3
