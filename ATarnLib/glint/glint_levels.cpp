// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/glint/glint_levels_p.h"

std::array<unsigned int, GlintLevels::count> GlintLevels::parse(AString const &text)
{
    std::array<unsigned int, count> levels{};
    std::size_t found = 0;
    long long const length = static_cast<long long>(text.length());
    for (long long at = 0; at < length && found < count;) {
        long long end = text.find(AChar(' '), at);
        if (end < 0)
            end = length;
        AString const part = text.mid(
            static_cast<unsigned long long>(at), static_cast<unsigned long long>(end - at));
        if (part.to_uint32_t(&levels[found]))
            ++found;
        at = end + 1;
    }
    return levels;
}
