// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/channelcf/channel_lookups.h"

#include <QStringList>

/// Blanks between the names: "VKVV VVVV".
inline ChannelCF::ChannelConfigSpec spec_of(
    QString const &names, ChannelCF::BoardType board = ChannelCF::BoardType::Tamarind)
{
    std::vector<ChannelCF::ConfigEnum> configs;
    for (QString const &name : names.split(QLatin1Char(' '), Qt::SkipEmptyParts))
        configs.push_back(ChannelCF::vctp3_to_config(AString(name)));
    return {board, configs};
}

using Outputs = std::vector<std::uint32_t>;
