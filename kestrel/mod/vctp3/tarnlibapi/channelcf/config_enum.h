// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/astring.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/tarn_export.h"

namespace ChannelCF {

/// What a group of outputs of a video board is set up as. An enumerator is the name on the wire,
/// with "v" before a digit.
enum class ConfigEnum : int
{
    absent = 0,
    VVVV = 1,
    VKVV = 2,
    VVVK = 3,
    VKVK = 4,
    SSM4 = 5,
    SSM3 = 6,
    SSM2 = 7,
    SSM6 = 8,
    SSM8 = 9,
    ISO2 = 10,
    ISO3 = 11,
    ISO4 = 12,
    ISO4_2P_VK = 13,
    ISO4_2P_VK_2 = 14,
    ISO1_2P = 15,
    ISO2_2P = 16,
    ISO3_2P = 17,
    ISO4_2P = 18,
    V2V2 = 19,
    ISO5 = 20,
    ISO6 = 21,
    ISO7 = 22,
    ISO8 = 23,
    C444_ISO_9 = 24,
    C444_ISO_10 = 25,
    C444_ISO_11 = 26,
    C444_ISO_12 = 27,
    v3D_ISO3 = 28,
    v3D_ISO2 = 29,
    DUAL_SSM3 = 30,
    TRI_SSM2 = 31,
    DUAL_VK = 32,
    TRIPLE_VK_VV = 33,
    TRIPLE_VK_VK = 34,
    QUAD_VK = 35,
    V = 36,
    V_V = 37,
    VK = 38,
    VV = 39,
    V_V_V = 40,
    VK_V = 41,
    VV_V = 42,
    VVV = 43,
    SSM2_V = 44,
    SSM3v2 = 45,
    C2_VV = 46,
    C2_VK = 47,
    C2_ISO2 = 48,
    C4_VK_VV = 49,
    C4_VK_VK = 50,
    C4_V_V_VK = 51,
    C4_ISO2_ISO2 = 52,
    C4_ISO2_ISO2_2 = 53,
    C4_ISO2_VK = 54,
    C4_V_V_ISO2 = 55,
    C4_VK_ISO2 = 56,
    C42_ISO_5 = 57,
    C42_ISO_6 = 58,
    C42_3VK = 59,
    C44_4SSM2 = 60,
    C444_5VK_VV = 61,
    C444_5VK_VK = 62,
    C444_6VK = 63,
    C444_5SSM2_VV = 64,
    C444_3SSM3_VVV = 65,
    M2_V_V = 66,
    M2_VK = 67,
    M2_ISO2 = 68,
    ZEPHYRX_VVVV_IN = 69,
    ZEPHYRX_VV_QUAD = 70,
    ZEPHYRX_8IN_4OUT = 71,
    ZEPHYRX_12IN = 72,
    ZEPHYRX_16IN = 73,
    ZEPHYRX_SSM3_ISO5 = 74,
    ZEPHYRX_SSM6_ISO2 = 75,
    ZEPHYRX_SSM3_ISO6 = 76,
    ZEPHYRX_SSM6_ISO3 = 77
};

/// The number of values above, which have no gap.
constexpr unsigned int config_enum_count = 78;

/// Whether \a value is one of the values above.
constexpr bool isValid(ConfigEnum value)
{
    return static_cast<unsigned int>(value) < config_enum_count;
}

/// The name on the wire; "????" for a value that is none of the above.
TARN_EXPORT AString ConfigEnumStr(ConfigEnum value);
/// Exact, case-sensitive. An unknown name gives -1, which names no configuration.
TARN_EXPORT ConfigEnum vctp3_to_config(AString const &name);

} // namespace ChannelCF
