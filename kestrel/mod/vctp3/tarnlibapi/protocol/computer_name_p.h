// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/astring.h"

#include <cstddef>

namespace VCTP3 {

/// As `gethostname`: fills the buffer with a text that ends with a zero byte; 0 on success.
using HostNameCall = int (*)(char *buffer, std::size_t size);

/// What `platform` tells, or "windoze" where that is nothing.
TARN_AUTOTEST_EXPORT AString read_computer_name(HostNameCall platform);

} // namespace VCTP3
