// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/glint/cf_channel_config.h"

#include "ATarnLib/config/cf_model.h"
#include "ATarnLib/glint/us_model.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/aassert.h"

#include <QDebug>

#include <algorithm>
#include <climits>

namespace {

using namespace ChannelCF;

constexpr BoardType board_type = BoardType::Tamarind;
constexpr unsigned int quads = 8;
constexpr unsigned int most_user_channels = 40; // that have a name

bool is_plain(ConfigAngle const &angle)
{
    return !angle.is_3d && !angle.is_4k && angle.phases == 1 && angle.keys.empty();
}

bool is_iso(ConfigChannel const &channel)
{
    return channel.angle_count > 1
        && std::all_of(channel.angles.begin(), channel.angles.end(), is_plain);
}

} // namespace

CFChannelConfig::CFChannelConfig(CFModel *cf_model, USModel *us_model, QObject *parent)
    : QObject(parent)
{
    cf_list.resize(quads);
    if (A_ASSERT(cf_model != nullptr))
        use_items(cf_model);
    if (A_ASSERT(us_model != nullptr))
        use_keys(us_model);
}

void CFChannelConfig::use_items(CFModel *cf_model)
{
    for (unsigned int quad = 0; quad < quads; ++quad) {
        CFItemModel *const item
            = cf_model->get_item(QStringLiteral("ChannelConfigurationSet%1").arg(quad));
        connect(item, qOverload<>(&CFItemModel::changed), this, &CFChannelConfig::changed,
            Qt::DirectConnection);
        cf_list[quad] = item;
    }
}

void CFChannelConfig::use_keys(USModel *us_model)
{
    count_item = us_model->get_item(QStringLiteral("cf.orchard.0.channel_count"));
    connect(
        count_item, &USItemModel::changed, this, &CFChannelConfig::changed, Qt::DirectConnection);
    connect(us_model->get_item(QStringLiteral("cf.orchard.type")), &USItemModel::changed, this,
        &CFChannelConfig::board_type_changed, Qt::DirectConnection);
}

// --- The board ---

QStringList CFChannelConfig::cf_value_list() const
{
    QStringList texts;
    for (CFItemModel const *item : cf_list)
        texts.append(item ? item->get() : QString());
    return texts;
}

ChannelConfigSpec CFChannelConfig::spec() const
{
    std::vector<ConfigEnum> configs;
    for (QString const &text : cf_value_list())
        configs.push_back(vctp3_to_config(text));
    return {board_type, configs};
}

CFChannelConfig::ConfigEnum CFChannelConfig::get(unsigned int icf) const
{
    if (!A_ASSERT(icf < cf_list.size()))
        return ConfigEnum::absent;
    CFItemModel const *const item = cf_list[icf];
    if (!item || item->allowed_values().isEmpty())
        return ConfigEnum::absent;
    return vctp3_to_config(item->get());
}

bool CFChannelConfig::have_cf() const
{
    return std::all_of(cf_list.begin(), cf_list.end(),
        [](CFItemModel const *item) { return item && item->have_cf(); });
}

bool CFChannelConfig::have_cf(unsigned int icf) const
{
    return A_ASSERT(icf < cf_list.size()) && cf_list[icf] && cf_list[icf]->have_cf();
}

bool CFChannelConfig::present(unsigned int icf) const
{
    return present(get(icf));
}

unsigned int CFChannelConfig::channel_count() const
{
    bool is_number = false;
    unsigned int const told = count_item ? count_item->get().toUInt(&is_number) : 0;
    return is_number && told <= most_user_channels ? told : GetMaxUserChannels(spec());
}

bool CFChannelConfig::have_3D() const
{
    return track_count_3D() != 0;
}

/// The entries of quads that a configuration before them covers mean nothing.
unsigned int CFChannelConfig::track_count_3D() const
{
    unsigned int tracks = 0;
    for (unsigned int quad = 0; quad < quads;) {
        Config const *config = FindConfig(board_type, get(quad));
        tracks += track_count_3D(get(quad));
        quad += config ? config->width : 1;
    }
    return tracks;
}

void CFChannelConfig::debug_out() const
{
    for (CFItemModel const *item : cf_list)
        if (item)
            qDebug("%s: %s", qUtf8Printable(item->get_name()), qUtf8Printable(item->get()));
}

// --- One configuration ---

bool CFChannelConfig::present(ConfigEnum cf)
{
    return isValid(cf) && cf != ConfigEnum::absent;
}

unsigned int CFChannelConfig::channel_count(ConfigEnum cf)
{
    constexpr unsigned int most = 32;
    if (cf == ConfigEnum::absent)
        return 0;
    Config const *config = FindConfig(board_type, cf);
    if (!config)
        return UINT_MAX;
    bool const one_for_each_output = config->slot_count == config->width * 4;
    if (one_for_each_output && config->width <= 3)
        return config->width;
    return std::min(config->slot_count, most);
}

bool CFChannelConfig::is3D(ConfigEnum cf)
{
    return track_count_3D(cf) != 0;
}

bool CFChannelConfig::isISO(ConfigEnum cf)
{
    Config const *config = FindConfig(board_type, cf);
    return config && std::any_of(config->channels.begin(), config->channels.end(), is_iso);
}

unsigned int CFChannelConfig::track_count_3D(ConfigEnum cf)
{
    Config const *config = FindConfig(board_type, cf);
    if (!config)
        return 0;
    auto tracks = std::ptrdiff_t(0);
    for (ConfigChannel const &channel : config->channels)
        tracks += std::count_if(channel.angles.begin(), channel.angles.end(),
            [](ConfigAngle const &angle) { return angle.is_3d; });
    return static_cast<unsigned int>(tracks);
}

// --- User channels and outputs ---

bool CFChannelConfig::is4K(unsigned int user_channel) const
{
    return Is4K(spec(), user_channel);
}

bool CFChannelConfig::isUserChannel(unsigned int user_channel) const
{
    return IsUserChannel(spec(), user_channel);
}

std::uint64_t CFChannelConfig::get_angle_count(unsigned int user_channel) const
{
    return AngleCount(spec(), user_channel);
}

CFChannelConfig::Outputs CFChannelConfig::AllOutputs(unsigned int user_channel, bool key) const
{
    return FindAllOutputs(spec(), user_channel, key);
}

CFChannelConfig::Outputs CFChannelConfig::PrimaryAngleOutputs(
    unsigned int user_channel, bool key) const
{
    return FindPrimaryAngleOutputs(spec(), user_channel, key);
}

AOption<OutputSource> CFChannelConfig::GetOutputSource(unsigned int output) const
{
    return ChannelCF::GetOutputSource(spec(), output);
}

std::vector<unsigned int> CFChannelConfig::AllUserChannels() const
{
    ChannelConfigSpec const board = spec();
    std::vector<unsigned int> channels;
    for (unsigned int user_channel = 0; user_channel < most_user_channels; ++user_channel) {
        if (IsUserChannel(board, user_channel))
            channels.push_back(user_channel);
    }
    return channels;
}

AOption<unsigned int> CFChannelConfig::find_key(unsigned int user_channel) const
{
    Outputs const keys = PrimaryAngleOutputs(user_channel, true);
    return keys.empty() ? AOption<unsigned int>() : AOption<unsigned int>(keys.front());
}
