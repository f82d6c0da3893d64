// SPDX-License-Identifier: Apache-2.0
#include "sim/vesk/vesk_board.h"

#include <initializer_list>

namespace {

std::vector<AString> texts(std::initializer_list<char const *> list)
{
    std::vector<AString> result;
    for (char const *text : list)
        result.push_back(AString::l1(text));
    return result;
}

VeskBoardFacts hd_board()
{
    return {AString::l1("tamarind"), 8,
        texts({"absent", "VVVV", "VKVV", "VVVK", "VKVK", "SSM4", "SSM3", "SSM2", "SSM6", "SSM8",
            "ISO2", "ISO3", "ISO4", "ISO4_2P_VK", "ISO4_2P_VK_2", "ISO1_2P", "ISO2_2P", "ISO3_2P",
            "ISO4_2P", "V2V2", "ISO5", "ISO6", "ISO7", "ISO8", "C444_ISO_9", "C444_ISO_10",
            "C444_ISO_11", "C444_ISO_12", "3D_ISO3", "3D_ISO2", "DUAL_SSM3", "TRI_SSM2", "DUAL_VK",
            "TRIPLE_VK_VV", "TRIPLE_VK_VK", "QUAD_VK", "C2_VV", "C2_VK", "C2_ISO2", "C4_VK_VV",
            "C4_VK_VK", "C4_V_V_VK", "C4_ISO2_ISO2", "C4_ISO2_ISO2_2", "C4_ISO2_VK", "C4_V_V_ISO2",
            "C4_VK_ISO2", "C42_ISO_5", "C42_ISO_6", "C42_3VK", "C44_4SSM2", "C444_5VK_VV",
            "C444_5VK_VK", "C444_6VK", "C444_5SSM2_VV", "C444_3SSM3_VVV"}),
        texts({"VVVV", "VVVV"})};
}

VeskBoardFacts uhd_board()
{
    return {AString::l1("tamarind4k"), 2,
        texts({"absent", "V", "V_V", "VK", "VV", "V_V_V", "VK_V", "VV_V", "VVV", "SSM2_V", "SSM3v2",
            "M2_V_V", "M2_VK", "M2_ISO2"}),
        texts({"V_V"})};
}

VeskBoardFacts zephyrx_board()
{
    return {AString::l1("zephyrx"), 4,
        texts({"absent", "ZEPHYRX_VVVV_IN", "ZEPHYRX_VV_QUAD", "ZEPHYRX_8IN_4OUT", "ZEPHYRX_12IN",
            "ZEPHYRX_16IN", "ZEPHYRX_SSM3_ISO5", "ZEPHYRX_SSM6_ISO2", "ZEPHYRX_SSM3_ISO6",
            "ZEPHYRX_SSM6_ISO3"}),
        texts({"ZEPHYRX_VVVV_IN"})};
}

} // namespace

VeskBoardFacts vesk_board_facts(VeskBoard board)
{
    switch (board) {
    case VeskBoard::uhd:
        return uhd_board();
    case VeskBoard::zephyrx:
        return zephyrx_board();
    case VeskBoard::hd:
        break;
    }
    return hd_board();
}
