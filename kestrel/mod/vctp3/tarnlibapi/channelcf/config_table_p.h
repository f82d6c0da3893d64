// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/channelcf/config_enum.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <initializer_list>

/// The configurations of the Tamarind boards, a row each, as compile-time data.
namespace ChannelCF::ConfigTable {

enum class AngleKind : std::uint8_t
{
    unused, ///< no more channels in this row
    none, ///< a channel without angles
    plain,
    vk,
    stereo,
    ssm,
    uhd,
    uhd_vk,
    uhd_ssm
};

/// A channel: its angles in order, each of `per_angle` consecutive outputs, counted within the
/// configuration. Of a picture with a key the output of the picture stands first.
struct ChannelRow
{
    AngleKind kind = AngleKind::unused;
    bool each_alone = false; ///< every angle is a channel of its own
    std::uint8_t per_angle = 1;
    std::uint8_t count = 0; ///< of outputs
    std::array<std::uint8_t, 18> outputs{};
};

constexpr std::uint8_t all = 0; ///< slots: four for each quad
constexpr bool sorted = false; ///< a channel has the number of its first output
constexpr bool kept = true; ///< channels are numbered as they stand in the row

struct ConfigRow
{
    ConfigEnum value;
    char const *name;
    std::uint8_t width; ///< in quads
    std::uint8_t slot_count;
    bool keep_order;
    std::array<ChannelRow, 5> channels;
};

// --- one angle ---
constexpr ChannelRow angle(AngleKind kind, std::initializer_list<int> outputs)
{
    ChannelRow row{kind, false, static_cast<std::uint8_t>(outputs.size()), 0, {}};
    for (int output : outputs)
        row.outputs.at(row.count++) = static_cast<std::uint8_t>(output);
    return row;
}
constexpr ChannelRow v(int output)
{
    return angle(AngleKind::plain, {output});
}
constexpr ChannelRow vk(int picture, int key)
{
    return angle(AngleKind::vk, {picture, key});
}
constexpr ChannelRow stereo(int left, int right)
{
    return angle(AngleKind::stereo, {left, right});
}
template <typename... Output> constexpr ChannelRow ssm(Output... outputs)
{
    return angle(AngleKind::ssm, {outputs...});
}
constexpr ChannelRow uhd(int output)
{
    return angle(AngleKind::uhd, {output});
}
constexpr ChannelRow uhd_vk(int picture, int key)
{
    return angle(AngleKind::uhd_vk, {picture, key});
}
template <typename... Output> constexpr ChannelRow uhd_ssm(Output... outputs)
{
    return angle(AngleKind::uhd_ssm, {outputs...});
}

// --- several angles, or none ---
/// Angles of \a per_angle outputs each, taken in order.
constexpr ChannelRow by(int per_angle, AngleKind kind, std::initializer_list<int> outputs)
{
    ChannelRow row = angle(kind, outputs);
    row.per_angle = static_cast<std::uint8_t>(per_angle);
    return row;
}
/// A plain angle of each output.
template <typename... Output> constexpr ChannelRow iso(Output... outputs)
{
    return by(1, AngleKind::plain, {outputs...});
}
/// A channel `v` of each output.
template <typename... Output> constexpr ChannelRow each_v(Output... outputs)
{
    ChannelRow row = iso(outputs...);
    row.each_alone = true;
    return row;
}
/// One channel of the angles that are given, which are of one kind.
template <typename... Angle> constexpr ChannelRow angles(ChannelRow first, Angle... more)
{
    for (ChannelRow const &next : {more...}) {
        for (unsigned int i = 0; i < next.count; ++i)
            first.outputs.at(first.count++) = next.outputs[i];
    }
    return first;
}
constexpr ChannelRow empty()
{
    return angle(AngleKind::none, {});
}

// clang-format off
using C = ConfigEnum;

// value, name, width, slot count, order, channels in building order
inline constexpr ConfigRow rows[] = {
    {C::VVVV, "VVVV", 1, all, sorted, {v(0), v(1), v(2), v(3)}},
    {C::VKVV, "VKVV", 1, all, sorted, {vk(0, 2), v(1), v(3)}},
    {C::VVVK, "VVVK", 1, all, sorted, {v(0), vk(1, 3), v(2)}},
    {C::VKVK, "VKVK", 1, all, sorted, {vk(0, 2), vk(1, 3)}},
    {C::SSM4, "SSM4", 1, all, sorted, {ssm(0, 1, 2, 3)}},
    {C::SSM3, "SSM3", 1, all, sorted, {ssm(0, 1, 2), v(3)}},
    {C::SSM2, "SSM2", 1, all, sorted, {ssm(0, 1), v(2), v(3)}},
    {C::SSM6, "SSM6", 2, all, sorted, {ssm(0, 1, 2, 3, 4, 5)}},
    {C::SSM8, "SSM8", 2, all, sorted, {ssm(0, 1, 2, 3, 4, 5, 6, 7)}},
    {C::ISO2, "ISO2", 1, all, sorted, {iso(0, 1), v(2), v(3)}},
    {C::ISO3, "ISO3", 1, all, sorted, {iso(0, 1, 2), v(3)}},
    {C::ISO4, "ISO4", 1, all, sorted, {iso(0, 1, 2, 3)}},
    {C::ISO4_2P_VK, "ISO4_2P_VK", 2, all, sorted, {iso(0, 1, 2, 3), vk(4, 5)}},
    {C::ISO4_2P_VK_2, "ISO4_2P_VK_2", 2, all, sorted, {vk(0, 1), v(2), v(3), iso(4, 5, 6, 7)}},
    {C::ISO1_2P, "ISO1_2P", 2, 6, sorted, {v(0), v(4), v(5)}},
    {C::ISO2_2P, "ISO2_2P", 2, 6, sorted, {iso(0, 1), v(4), v(5)}},
    {C::ISO3_2P, "ISO3_2P", 2, 6, sorted, {iso(0, 1, 2), v(4), v(5)}},
    {C::ISO4_2P, "ISO4_2P", 2, 6, sorted, {iso(0, 1, 2, 3), v(4), v(5)}},
    {C::V2V2, "V2V2", 1, all, sorted, {stereo(0, 2), stereo(1, 3)}},
    {C::ISO5, "ISO5", 2, all, sorted, {iso(0, 1, 2, 3, 4), v(5)}},
    {C::ISO6, "ISO6", 2, all, sorted, {iso(0, 1, 2, 3, 4, 5)}},
    {C::ISO7, "ISO7", 2, all, sorted, {iso(0, 1, 2, 3, 4, 5, 6), v(7)}},
    {C::ISO8, "ISO8", 2, all, sorted, {iso(0, 1, 2, 3, 4, 5, 6, 7)}},
    {C::C444_ISO_9, "C444_ISO_9", 3, all, sorted,
        {iso(0, 1, 2, 3, 4, 5, 6, 7, 8), v(9), v(10), v(11)}},
    {C::C444_ISO_10, "C444_ISO_10", 3, all, sorted,
        {iso(0, 1, 2, 3, 4, 5, 6, 7, 8, 9), v(10), v(11)}},
    {C::C444_ISO_11, "C444_ISO_11", 3, all, sorted,
        {iso(0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10), v(11)}},
    {C::C444_ISO_12, "C444_ISO_12", 3, all, sorted,
        {iso(0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11)}},
    {C::v3D_ISO3, "3D_ISO3", 2, all, sorted,
        {angles(stereo(0, 2), stereo(1, 3), stereo(4, 6)), stereo(5, 7)}},
    {C::v3D_ISO2, "3D_ISO2", 2, all, sorted,
        {angles(stereo(0, 2), stereo(1, 3)), stereo(4, 6), stereo(5, 7)}},
    {C::DUAL_SSM3, "DUAL_SSM3", 2, all, sorted, {angles(ssm(0, 1, 2), ssm(3, 4, 5))}},
    {C::TRI_SSM2, "TRI_SSM2", 2, all, sorted, {angles(ssm(0, 1), ssm(2, 3), ssm(4, 5))}},
    {C::DUAL_VK, "DUAL_VK", 1, all, sorted, {angles(vk(0, 2), vk(1, 3))}},
    {C::TRIPLE_VK_VV, "TRIPLE_VK_VV", 2, all, sorted,
        {angles(vk(0, 2), vk(1, 3), vk(4, 6)), v(5), v(7)}},
    {C::TRIPLE_VK_VK, "TRIPLE_VK_VK", 2, all, sorted,
        {angles(vk(0, 2), vk(1, 3), vk(4, 6)), vk(5, 7)}},
    {C::QUAD_VK, "QUAD_VK", 2, all, sorted, {angles(vk(0, 2), vk(1, 3), vk(4, 6), vk(5, 7))}},
    {C::V, "V", 1, all, sorted, {uhd(0)}},
    {C::V_V, "V_V", 2, all, kept, {uhd(0), uhd(1)}},
    {C::VK, "VK", 2, all, sorted, {uhd_vk(0, 1)}},
    {C::VV, "VV", 2, all, sorted, {angles(uhd(0), uhd(1))}},
    {C::V_V_V, "V_V_V", 3, all, kept, {uhd(0), uhd(1), uhd(2)}},
    {C::VK_V, "VK_V", 3, all, kept, {uhd_vk(0, 1), empty(), uhd(2)}},
    {C::VV_V, "VV_V", 3, all, kept, {angles(uhd(0), uhd(1)), empty(), uhd(2)}},
    {C::VVV, "VVV", 3, all, kept, {angles(uhd(0), uhd(1), uhd(2)), empty()}},
    {C::SSM2_V, "SSM2_V", 3, all, kept, {uhd_ssm(0, 1), empty(), uhd(2)}},
    {C::SSM3v2, "SSM3v2", 3, all, kept, {uhd_ssm(0, 1, 2), empty()}},
    {C::C2_VV, "C2_VV", 1, 2, sorted, {v(0), v(1)}},
    {C::C2_VK, "C2_VK", 1, 2, sorted, {vk(0, 1)}},
    {C::C2_ISO2, "C2_ISO2", 1, 2, sorted, {iso(0, 1)}},
    {C::C4_VK_VV, "C4_VK_VV", 1, all, sorted, {vk(0, 1), v(2), v(3)}},
    {C::C4_VK_VK, "C4_VK_VK", 1, all, sorted, {vk(0, 1), vk(2, 3)}},
    {C::C4_V_V_VK, "C4_V_V_VK", 1, all, sorted, {v(0), v(1), vk(2, 3)}},
    {C::C4_ISO2_ISO2, "C4_ISO2_ISO2", 1, all, sorted, {iso(0, 2), iso(1, 3)}},
    {C::C4_ISO2_ISO2_2, "C4_ISO2_ISO2_2", 1, all, sorted, {iso(0, 1), iso(2, 3)}},
    {C::C4_ISO2_VK, "C4_ISO2_VK", 1, all, sorted, {iso(0, 1), vk(2, 3)}},
    {C::C4_V_V_ISO2, "C4_V_V_ISO2", 1, all, sorted, {v(0), v(1), iso(2, 3)}},
    {C::C4_VK_ISO2, "C4_VK_ISO2", 1, all, sorted, {vk(0, 1), iso(2, 3)}},
    {C::C42_ISO_5, "C42_ISO_5", 2, 6, sorted, {iso(0, 1, 2, 3, 4), v(5)}},
    {C::C42_ISO_6, "C42_ISO_6", 2, 6, sorted, {iso(0, 1, 2, 3, 4, 5)}},
    {C::C42_3VK, "C42_3VK", 2, 6, sorted, {angles(vk(0, 2), vk(1, 3), vk(4, 5))}},
    {C::C44_4SSM2, "C44_4SSM2", 2, all, sorted,
        {angles(ssm(0, 1), ssm(2, 3), ssm(4, 5), ssm(6, 7))}},
    {C::C444_5VK_VV, "C444_5VK_VV", 3, all, sorted,
        {angles(vk(0, 2), vk(1, 3), vk(4, 6), vk(5, 7), vk(8, 10)), v(9), v(11)}},
    {C::C444_5VK_VK, "C444_5VK_VK", 3, all, sorted,
        {angles(vk(0, 2), vk(1, 3), vk(4, 6), vk(5, 7), vk(8, 10)), vk(9, 11)}},
    {C::C444_6VK, "C444_6VK", 3, all, sorted,
        {angles(vk(0, 2), vk(1, 3), vk(4, 6), vk(5, 7), vk(8, 10), vk(9, 11))}},
    {C::C444_5SSM2_VV, "C444_5SSM2_VV", 3, all, sorted,
        {angles(ssm(0, 1), ssm(2, 3), ssm(4, 5), ssm(6, 7), ssm(8, 9)), v(10), v(11)}},
    {C::C444_3SSM3_VVV, "C444_3SSM3_VVV", 3, all, sorted,
        {angles(ssm(0, 1, 2), ssm(3, 4, 5), ssm(6, 7, 8)), v(9), v(10), v(11)}},
    {C::M2_V_V, "M2_V_V", 1, 2, kept, {uhd(0), uhd(1)}},
    {C::M2_VK, "M2_VK", 1, 2, kept, {uhd_vk(0, 1), empty()}},
    {C::M2_ISO2, "M2_ISO2", 1, 2, kept, {iso(0, 1), empty()}},
    {C::ZEPHYRX_VVVV_IN, "ZEPHYRX_VVVV_IN", 1, all, sorted, {v(0), v(1), v(2), v(3)}},
    {C::ZEPHYRX_VV_QUAD, "ZEPHYRX_VV_QUAD", 1, all, kept, {v(0), v(1), empty()}},
    // From here on the first four of every eight outputs belong to the channel of many angles, and
    // the next four stand alone.
    {C::ZEPHYRX_8IN_4OUT, "ZEPHYRX_8IN_4OUT", 3, all, sorted,
        {iso(0, 1, 2, 3, 8, 9, 10, 11),
         each_v(4, 5, 6, 7)}},
    {C::ZEPHYRX_12IN, "ZEPHYRX_12IN", 5, all, sorted,
        {iso(0, 1, 2, 3, 8, 9, 10, 11, 16, 17, 18, 19),
         each_v(4, 5, 6, 7, 12, 13, 14, 15)}},
    {C::ZEPHYRX_16IN, "ZEPHYRX_16IN", 7, all, sorted,
        {iso(0, 1, 2, 3, 8, 9, 10, 11, 16, 17, 18, 19, 24, 25, 26, 27),
         each_v(4, 5, 6, 7, 12, 13, 14, 15, 20, 21, 22, 23)}},
    {C::ZEPHYRX_SSM3_ISO5, "ZEPHYRX_SSM3_ISO5", 7, all, sorted,
        {by(3, AngleKind::ssm, {0, 1, 2, 3, 8, 9, 10, 11, 16, 17, 18, 19, 24, 25, 26}),
         each_v(4, 5, 6, 7, 12, 13, 14, 15, 20, 21, 22, 23), v(27)}},
    // The digits in the next three names are not the sizes of the groups: 3, 6 and 3 are right.
    {C::ZEPHYRX_SSM6_ISO2, "ZEPHYRX_SSM6_ISO2", 5, all, sorted,
        {by(3, AngleKind::ssm, {0, 1, 2, 3, 8, 9, 10, 11, 16, 17, 18, 19}),
         each_v(4, 5, 6, 7, 12, 13, 14, 15)}},
    {C::ZEPHYRX_SSM3_ISO6, "ZEPHYRX_SSM3_ISO6", 9, all, sorted,
        {by(6, AngleKind::ssm,
             {0, 1, 2, 3, 8, 9, 10, 11, 16, 17, 18, 19, 24, 25, 26, 27, 32, 33}),
         each_v(4, 5, 6, 7, 12, 13, 14, 15, 20, 21, 22, 23, 28, 29, 30, 31), v(34), v(35)}},
    {C::ZEPHYRX_SSM6_ISO3, "ZEPHYRX_SSM6_ISO3", 9, all, sorted,
        {by(3, AngleKind::ssm,
             {0, 1, 2, 3, 8, 9, 10, 11, 16, 17, 18, 19, 24, 25, 26, 27, 32, 33}),
         each_v(4, 5, 6, 7, 12, 13, 14, 15, 20, 21, 22, 23, 28, 29, 30, 31), v(34), v(35)}},
};
// clang-format on

/// The row of a value stands where its number says, since "absent" has none.
constexpr bool in_order()
{
    unsigned int value = 1;
    return std::all_of(std::begin(rows), std::end(rows),
        [&](ConfigRow const &row) { return row.value == static_cast<ConfigEnum>(value++); });
}
static_assert(std::size(rows) == config_enum_count - 1 && in_order());

} // namespace ChannelCF::ConfigTable
