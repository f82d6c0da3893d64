// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/tarn_export.h"

/// The compression rates that the steps of a quality setting stand for. A q_index of 20 or more is
/// an assertion, and the best quality holds.
/// Thread: any.
class TARN_EXPORT CFRate
{
public:
    /// \name High definition at 60, 50 and 48 frames a second: 15 to 200, in steps of five
    /// @{
    static unsigned int hd60_rate(unsigned int q_index);
    static unsigned int hd50_rate(unsigned int q_index);
    static unsigned int hd48_rate(unsigned int q_index);
    /// @}
    /// \name Standard definition at 60 and 50 frames a second: 15 to 140, in steps of five
    /// @{
    static unsigned int sd60_rate(unsigned int q_index);
    static unsigned int sd50_rate(unsigned int q_index);
    /// @}
};
