// SPDX-License-Identifier: Apache-2.0
#include "sim/vesk/vesk_log.h"

void VeskLog::add(AString const &line)
{
    if (kept.size() == capacity)
        kept.pop_front();
    kept.push_back(line);
}
