// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/channelcf/config_channel.h"

namespace ChannelCF {

/// What one configuration name means: its channels, whose outputs are counted from 0 within the
/// configuration. A builder adds the channels in its own order and ends with `finish`.
/// Thread: its builder's until `finish`; after that it does not change, and any may read it.
class TARN_EXPORT Config
{
public:
    virtual ~Config() = 0;
    Config(Config const &) = delete;
    Config &operator=(Config const &) = delete;

    /// Finishes the channels, then moves each to the slot with the number of its first output,
    /// unless the order is to be kept. Gaps become empty slots. An assertion, and nothing changes,
    /// when finished already; an assertion for each channel whose slot is taken or passed, which
    /// then gets the next one.
    virtual void finish();

    bool finished = false;
    std::vector<ConfigChannel> channels; ///< once finished, by slot
    bool keep_order = false;
    std::uint32_t width; ///< in quads of outputs; 0 where a configuration is the whole board
    std::uint32_t slot_count; ///< of user channels that the configuration takes up

protected:
    Config(std::uint32_t quads, std::uint32_t offered);

private:
    void renumber();
};

/// A configuration of a Tamarind board: as many slots as outputs, unless its builder says
/// otherwise.
class TARN_EXPORT ConfigTamarind : public Config
{
protected:
    explicit ConfigTamarind(std::uint32_t quads)
        : Config(quads, quads * 4)
    {
    }
};

/// By the number of its outputs.
template <std::uint32_t outputs> class ConfigTamarindOf : public ConfigTamarind
{
public:
    ConfigTamarindOf()
        : ConfigTamarind(outputs / 4)
    {
    }
};

using ConfigTamarind4 = ConfigTamarindOf<4>;
using ConfigTamarind8 = ConfigTamarindOf<8>;
using ConfigTamarind12 = ConfigTamarindOf<12>;
using ConfigTamarind20 = ConfigTamarindOf<20>;
using ConfigTamarind28 = ConfigTamarindOf<28>;
using ConfigTamarind36 = ConfigTamarindOf<36>;

/// A configuration of a Quince board.
class TARN_EXPORT ConfigQuince : public Config
{
public:
    ConfigQuince()
        : Config(0, 0)
    {
    }
};

} // namespace ChannelCF
