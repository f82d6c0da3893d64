// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/channelcf/board_config.h"
#include "kestrel/mod/vctp3/tarnlibapi/channelcf/config_enum.h"

#include <memory>

namespace ChannelCF {

/// \name The configuration of a name, not finished yet
/// Null where the board has none of that name. Absent and no value at all: an assertion, and null.
/// @{
TARN_AUTOTEST_EXPORT std::unique_ptr<Config> build_tamarind(ConfigEnum value);
TARN_AUTOTEST_EXPORT std::unique_ptr<Config> build_quince(ConfigEnum value);
/// @}

} // namespace ChannelCF
