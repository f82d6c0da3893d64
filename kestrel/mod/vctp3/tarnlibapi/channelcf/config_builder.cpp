// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/channelcf/config_builder_p.h"

#include "kestrel/mod/vctp3/tarnlibapi/base/aassert.h"
#include "kestrel/mod/vctp3/tarnlibapi/channelcf/config_table_p.h"

namespace ChannelCF {

namespace {

using ConfigTable::AngleKind;
using ConfigTable::ChannelRow;
using ConfigTable::ConfigRow;

bool is_4k(AngleKind kind)
{
    return kind == AngleKind::uhd || kind == AngleKind::uhd_vk || kind == AngleKind::uhd_ssm;
}

bool has_key(AngleKind kind)
{
    return kind == AngleKind::vk || kind == AngleKind::uhd_vk;
}

bool has_phases(AngleKind kind)
{
    return kind == AngleKind::ssm || kind == AngleKind::uhd_ssm;
}

ConfigAngle build_angle(ChannelRow const &row, unsigned int from, bool first)
{
    ConfigAngle angle;
    angle.is_3d = row.kind == AngleKind::stereo;
    angle.is_4k = is_4k(row.kind);
    angle.phases = has_phases(row.kind) ? row.per_angle : 1;
    for (unsigned int i = from; i < from + row.per_angle; ++i)
        (has_key(row.kind) && i > from ? angle.keys : angle.outputs).insert(row.outputs[i]);
    if (!angle.is_4k)
        angle.video_primary = {row.outputs[from]};
    if (!angle.is_4k && !angle.is_3d && first)
        angle.first_angle = angle.video_primary;
    return angle;
}

void build_channels(ChannelRow const &row, std::vector<ConfigChannel> *channels)
{
    if (row.kind == AngleKind::unused)
        return;
    if (!row.each_alone)
        channels->emplace_back();
    for (unsigned int i = 0; i < row.count; i += row.per_angle) {
        if (row.each_alone)
            channels->emplace_back();
        channels->back().angles.push_back(build_angle(row, i, i == 0 || row.each_alone));
    }
}

std::unique_ptr<Config> of_width(unsigned int width)
{
    switch (width) {
    case 1:
        return std::make_unique<ConfigTamarind4>();
    case 2:
        return std::make_unique<ConfigTamarind8>();
    case 3:
        return std::make_unique<ConfigTamarind12>();
    case 5:
        return std::make_unique<ConfigTamarind20>();
    case 7:
        return std::make_unique<ConfigTamarind28>();
    default:
        return std::make_unique<ConfigTamarind36>();
    }
}

bool names_a_configuration(ConfigEnum value)
{
    return A_ASSERT_TEXT(
        isValid(value) && value != ConfigEnum::absent, "value > 0 && value < config_enum_count");
}

} // namespace

std::unique_ptr<Config> build_tamarind(ConfigEnum value)
{
    if (!names_a_configuration(value))
        return nullptr;
    ConfigRow const &row = ConfigTable::rows[static_cast<int>(value) - 1];
    std::unique_ptr<Config> config = of_width(row.width);
    if (row.slot_count != ConfigTable::all)
        config->slot_count = row.slot_count;
    config->keep_order = row.keep_order;
    for (ChannelRow const &channel : row.channels)
        build_channels(channel, &config->channels);
    return config;
}

std::unique_ptr<Config> build_quince(ConfigEnum value)
{
    if (!names_a_configuration(value))
        return nullptr;
    bool const early = value <= ConfigEnum::QUAD_VK;
    bool const of_two = value >= ConfigEnum::M2_V_V && value <= ConfigEnum::M2_ISO2;
    if (!early && !of_two)
        return nullptr;
    auto config = std::make_unique<ConfigQuince>();
    build_channels(ConfigTable::vk(0, 1), &config->channels);
    return config;
}

} // namespace ChannelCF
