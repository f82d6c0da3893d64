// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/tarn_export.h"
#include "kestrel/mod/vctp3/tarnlibapi/channelcf/channel_lookups.h"

#include <QObject>
#include <QPointer>
#include <QStringList>

class CFItemModel;
class CFModel;
class USItemModel;
class USModel;

/// What the configuration of a server's board means in user channels, angles and outputs. The
/// board is set up by eight items, one for each quad of four outputs; what was typed into them
/// counts already. User channels and outputs count from 0.
/// Thread: any; signals come from the thread of the change.
class TARN_EXPORT CFChannelConfig : public QObject
{
    Q_OBJECT

public:
    using ConfigEnum = ChannelCF::ConfigEnum;
    using Outputs = std::vector<std::uint32_t>;

    /// On the thread of both models. An item of a model that has gone counts as not arrived.
    CFChannelConfig(CFModel *cf_model, USModel *us_model, QObject *parent);

    /// \name The board
    /// @{
    /// The texts of the eight items; an item that has not arrived is empty.
    QStringList cf_value_list() const;
    /// What these make of a Tamarind board. A text that names no configuration is none.
    ChannelCF::ChannelConfigSpec spec() const;
    /// The configuration of a quad: absent until the server has told which it allows, and -1 for a
    /// text that names none. From 8 on: an assertion, and absent.
    ConfigEnum get(unsigned int icf) const;
    /// Whether all eight items have arrived.
    bool have_cf() const;
    /// Whether that of a quad has. From 8 on: an assertion, and false.
    bool have_cf(unsigned int icf) const;
    /// Whether a quad has a configuration.
    bool present(unsigned int icf) const;
    /// The number that the server gives for the board; without one from 0 to 40, how many user
    /// channels the items make.
    unsigned int channel_count() const;
    /// Whether any configuration has angles of a left and a right output.
    bool have_3D() const;
    /// How many such angles there are.
    unsigned int track_count_3D() const;
    /// Writes the eight texts to the debug output.
    void debug_out() const;
    /// @}

    /// \name One configuration
    /// @{
    /// Whether it is one at all: neither absent nor unknown.
    static bool present(ConfigEnum cf);
    /// The user channels of those that stand for 2 or 6 channels and of those of more than three
    /// quads, the largest of which have 32. Of all others the number of their quads, as it has
    /// always been. 0 for absent; UINT_MAX for an unknown value.
    static unsigned int channel_count(ConfigEnum cf);
    static bool is3D(ConfigEnum cf);
    /// Whether a channel records several plain angles.
    static bool isISO(ConfigEnum cf);
    static unsigned int track_count_3D(ConfigEnum cf);
    /// @}

    /// \name User channels and outputs
    /// As the functions of channel_lookups.h.
    /// @{
    bool is4K(unsigned int user_channel) const;
    bool isUserChannel(unsigned int user_channel) const;
    std::uint64_t get_angle_count(unsigned int user_channel) const;
    Outputs AllOutputs(unsigned int user_channel, bool key) const;
    Outputs PrimaryAngleOutputs(unsigned int user_channel, bool key) const;
    AOption<ChannelCF::OutputSource> GetOutputSource(unsigned int output) const;
    /// Every user channel that there is, ascending.
    std::vector<unsigned int> AllUserChannels() const;
    /// The output that carries the key of a user channel, of several the first; absent without.
    AOption<unsigned int> find_key(unsigned int user_channel) const;
    /// @}

Q_SIGNALS:
    /// The configuration, or the number of channels, has changed; once for each item.
    void changed();
    void board_type_changed(QString const &type);

private:
    void use_items(CFModel *cf_model);
    void use_keys(USModel *us_model);

    QList<QPointer<CFItemModel>> cf_list;
    QPointer<USItemModel> count_item;
};
