// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/aoption.h"
#include "kestrel/mod/vctp3/tarnlibapi/channelcf/board_config.h"
#include "kestrel/mod/vctp3/tarnlibapi/channelcf/channel_config_spec.h"

#include <memory>

namespace ChannelCF {

/// What drives an output.
struct OutputSource
{
    OutputSource() = default;
    OutputSource(unsigned int user_channel, unsigned int position, bool is_key)
        : channel(user_channel)
        , angle(position)
        , key(is_key)
    {
    }

    friend bool operator==(OutputSource const &a, OutputSource const &b) = default;

    std::uint32_t channel = 0;
    /// The position among all outputs, or all keys, of the channel: each output of a
    /// super-slow-motion angle has its own.
    std::uint32_t angle = 0;
    bool key = false;
};

/// All that is known of one kind of board. The lookups are those of channel_lookups.h.
/// Thread: never changes once constructed, so any.
class TARN_EXPORT BoardConfigInfo
{
public:
    virtual ~BoardConfigInfo();
    virtual std::uint64_t AngleCount(
        ChannelConfigSpec const &spec, unsigned int user_channel) const = 0;
    virtual std::uint32_t LocateAngle(
        ChannelConfigSpec const &spec, unsigned int user_channel, unsigned int angle) const = 0;
    virtual std::vector<std::uint32_t> FindPrimaryAngleOutputs(
        ChannelConfigSpec const &spec, unsigned int user_channel, bool key) const = 0;
    virtual std::vector<std::uint32_t> FindAllOutputs(
        ChannelConfigSpec const &spec, unsigned int user_channel, bool key) const = 0;
    virtual bool Is4K(ChannelConfigSpec const &spec, unsigned int user_channel) const = 0;
    virtual AOption<OutputSource> GetOutputSource(
        ChannelConfigSpec const &spec, unsigned int output) const = 0;
    virtual std::uint32_t GetMaxUserChannels(ChannelConfigSpec const &spec) const = 0;

    BoardConfigInfo(BoardConfigInfo const &) = delete;
    BoardConfigInfo &operator=(BoardConfigInfo const &) = delete;

    /// The configuration of that name; null if the board has none.
    Config const *find_config(ConfigEnum value) const;
    /// What drives an output of that configuration, both counted from 0 within it.
    AOption<OutputSource> find_source(ConfigEnum value, unsigned int output) const;

protected:
    BoardConfigInfo();

    /// Finishes a configuration and takes it, with the sources of the outputs of its first
    /// \a walked slots. An output that a channel drives already: an assertion, and that one stays.
    /// No configuration, a value that names none and an output beyond the board: an assertion, and
    /// it is left out.
    void add(ConfigEnum value, std::unique_ptr<Config> config, std::size_t walked);

    /// A configuration, laid out for lookups.
    struct Row;
    /// The configuration of a user channel, and the user channel and output that it starts at.
    struct Place;
    Row const &row_of(ConfigEnum value) const;

private:
    // By number; the last one is that of all values that name no configuration, and stays empty.
    std::unique_ptr<Row[]> rows;
};

/// The lookups that differ only in how a \a Board finds the place of a user channel. It is asked
/// without a virtual call, which would take a good part of the time that an angle takes.
template <typename Board> class TARN_EXPORT BoardLookups : public BoardConfigInfo
{
public:
    std::uint64_t AngleCount(
        ChannelConfigSpec const &spec, unsigned int user_channel) const override;
    std::uint32_t LocateAngle(ChannelConfigSpec const &spec, unsigned int user_channel,
        unsigned int angle) const override;
    std::vector<std::uint32_t> FindPrimaryAngleOutputs(
        ChannelConfigSpec const &spec, unsigned int user_channel, bool key) const override;
    std::vector<std::uint32_t> FindAllOutputs(
        ChannelConfigSpec const &spec, unsigned int user_channel, bool key) const override;

private:
    Board const &board() const { return static_cast<Board const &>(*this); }
};

/// Boards whose user channels are numbered by outputs, quad after quad.
class TARN_EXPORT TamarindConfigInfo : public BoardLookups<TamarindConfigInfo>
{
public:
    TamarindConfigInfo();
    ~TamarindConfigInfo() override;
    bool Is4K(ChannelConfigSpec const &spec, unsigned int user_channel) const override;
    AOption<OutputSource> GetOutputSource(
        ChannelConfigSpec const &spec, unsigned int output) const override;
    std::uint32_t GetMaxUserChannels(ChannelConfigSpec const &spec) const override;

private:
    friend class BoardLookups<TamarindConfigInfo>;

    Place find(ChannelConfigSpec const &spec, unsigned int user_channel) const;
};

/// Boards of one to three user channels, whose only configuration is the first entry of a spec.
class TARN_EXPORT QuinceConfigInfo : public BoardLookups<QuinceConfigInfo>
{
public:
    ~QuinceConfigInfo() override;
    /// Never.
    bool Is4K(ChannelConfigSpec const &spec, unsigned int user_channel) const override;
    AOption<OutputSource> GetOutputSource(
        ChannelConfigSpec const &spec, unsigned int output) const override;
    /// Does not read the spec.
    std::uint32_t GetMaxUserChannels(ChannelConfigSpec const &spec) const override;

protected:
    explicit QuinceConfigInfo(std::uint32_t user_channels);

private:
    friend class BoardLookups<QuinceConfigInfo>;

    Place find(ChannelConfigSpec const &spec, unsigned int user_channel) const;

    std::uint32_t user_channels;
};

class TARN_EXPORT QuinceConfigInfo1 : public QuinceConfigInfo
{
public:
    QuinceConfigInfo1()
        : QuinceConfigInfo(1)
    {
    }
};

class TARN_EXPORT QuinceConfigInfo2 : public QuinceConfigInfo
{
public:
    QuinceConfigInfo2()
        : QuinceConfigInfo(2)
    {
    }
};

class TARN_EXPORT QuinceConfigInfo3 : public QuinceConfigInfo
{
public:
    QuinceConfigInfo3()
        : QuinceConfigInfo(3)
    {
    }
};

} // namespace ChannelCF
