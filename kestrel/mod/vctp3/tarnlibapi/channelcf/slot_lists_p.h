// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/aassert.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <vector>

namespace ChannelCF {

/// The outputs of the largest configuration.
constexpr unsigned int max_outputs = 36;

/// Outputs of every slot of a configuration, a byte each and slot behind slot, so that the lists of
/// all configurations stay in the processor's cache.
class SlotLists
{
public:
    /// The next slot. More outputs than a configuration can have: an assertion, and they are left
    /// out.
    void add(std::vector<std::uint32_t> const &list)
    {
        unsigned int end = ends[++slot_count];
        for (std::uint32_t output : list) {
            if (A_ASSERT(end < max_outputs) && A_ASSERT(output < max_outputs))
                outputs[end++] = static_cast<std::uint8_t>(output);
        }
        std::fill(ends.begin() + slot_count, ends.end(), static_cast<std::uint8_t>(end));
    }

    /// Empty behind the last slot.
    unsigned int size(unsigned int slot) const
    {
        return slot < max_outputs ? ends[slot + 1] - ends[slot] : 0;
    }
    /// \a i: below the size of that slot.
    std::uint32_t at(unsigned int slot, unsigned int i) const { return outputs[ends[slot] + i]; }

private:
    unsigned int slot_count = 0;
    std::array<std::uint8_t, max_outputs + 1> ends{}; ///< of the list before the slot
    std::array<std::uint8_t, max_outputs> outputs{};
};

} // namespace ChannelCF
