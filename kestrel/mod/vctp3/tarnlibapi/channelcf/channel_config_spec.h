// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/channelcf/config_enum.h"

#include <array>
#include <initializer_list>
#include <vector>

namespace ChannelCF {

/// The kind of a video board. Any other value is an unknown board, of which nothing is known.
enum class BoardType : int
{
    Tamarind = 1,
    QuinceConfigInfo1 = 2,
    QuinceConfigInfo2 = 3,
    QuinceConfigInfo3 = 4
};

/// What a board is set up as: its kind, and a configuration for each quad of four outputs. Entry q
/// stands for the outputs 4q to 4q + 3. A configuration that spans several quads stands at its
/// first one; the entries of the others are not to be filled.
/// Thread: copies may be used in any thread; one object may be read by many.
class TARN_EXPORT ChannelConfigSpec
{
public:
    /// A name that is unknown stands as `vctp3_to_config` reads it.
    ChannelConfigSpec(BoardType board, std::initializer_list<AString> names);
    ChannelConfigSpec(BoardType board, std::initializer_list<ConfigEnum> configs);
    ChannelConfigSpec(BoardType board, std::vector<ConfigEnum> const &configs);

    BoardType board() const { return board_type; }
    /// The entry of quad \a index; absent beyond the last.
    ConfigEnum get_cf(unsigned int index) const
    {
        if (index < first.size())
            return first[index];
        return index - first.size() < more.size() ? more[index - first.size()] : ConfigEnum::absent;
    }

private:
    void fill(ConfigEnum const *configs, std::size_t count);

    BoardType board_type;
    // A lookup takes a copy: for the quads of every board known so far that allocates nothing.
    std::array<ConfigEnum, 12> first{};
    std::vector<ConfigEnum> more;
};

} // namespace ChannelCF
