// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/tarn_export.h"

#include <cstdint>
#include <initializer_list>
#include <vector>

namespace ChannelCF {

/// Outputs of a board or of a configuration, each once and ascending.
/// Thread: a value; one object belongs to one thread at a time, copies to any.
class TARN_EXPORT OutputSet
{
public:
    OutputSet() = default;
    OutputSet(std::initializer_list<std::uint32_t> outputs);

    void insert(std::uint32_t output);
    bool empty() const { return outputs.empty(); }
    std::vector<std::uint32_t> const &list() const { return outputs; }

    friend bool operator==(OutputSet const &a, OutputSet const &b) = default;

private:
    std::vector<std::uint32_t> outputs;
};

/// One angle of a channel.
struct ConfigAngle
{
    bool is_3d = false;
    /// The number of outputs of a super-slow-motion angle; 1 for any other.
    std::uint32_t phases = 1;
    bool is_4k = false;
    OutputSet outputs;
    OutputSet keys; ///< outputs that carry the key signal
    OutputSet video_primary; ///< the output that shows the picture
    OutputSet first_angle; ///< set only on the first angle of a channel
};

/// One slot for a user channel. A slot without angles is empty: all counts are 0.
struct TARN_EXPORT ConfigChannel
{
    /// Fills all that follows from the angles. An assertion, and nothing changes, when finished
    /// already; an assertion, but no more, when the first outputs do not rise from angle to angle.
    void finish();

    bool finished = false;
    std::uint32_t first_output = 0; ///< of the first angle
    std::uint64_t angle_count = 0;
    std::vector<std::uint32_t> primary_outputs; ///< of each angle with outputs the first one
    std::vector<std::uint32_t> primary_keys; ///< of each angle with keys the first one
    std::vector<std::uint32_t> all_outputs; ///< angle after angle
    std::vector<std::uint32_t> all_keys; ///< angle after angle
    std::vector<ConfigAngle> angles;
};

} // namespace ChannelCF
