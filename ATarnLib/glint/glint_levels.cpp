// SPDX-License-Identifier: Apache-2.0
#include "ATarnLib/glint/glint_levels_p.h"

#include <algorithm>
#include <span>

namespace {

/// Reads what a server writes, digits and nothing else, too few to overflow.
bool plain_level(std::span<AChar const> text, unsigned int *out)
{
    if (text.empty() || text.size() > 9)
        return false;
    unsigned int value = 0;
    for (AChar digit : text) {
        if (!digit.is_digit())
            return false;
        value = value * 10 + (digit.ord() - U'0');
    }
    *out = value;
    return true;
}

/// Where the next blank stands, or the end of the text, which lies at \a run if it lies in one.
unsigned long long end_of_level(AString const &text, AChar const *run, unsigned long long at)
{
    unsigned long long const length = text.length();
    if (run)
        return static_cast<unsigned long long>(
            std::find(run + at, run + length, AString::blank) - run);
    long long const blank = text.find(AString::blank, static_cast<long long>(at));
    return blank < 0 ? length : static_cast<unsigned long long>(blank);
}

} // namespace

std::array<unsigned int, GlintLevels::count> GlintLevels::parse(AString const &text)
{
    std::array<unsigned int, count> levels{};
    std::size_t found = 0;
    unsigned long long const length = text.length();
    AChar const *run = nullptr;
    bool const in_one_run = text.linear_access(text.get_first_position(), &run) == length;
    for (unsigned long long at = 0; at < length && found < count;) {
        unsigned long long const end = end_of_level(text, in_one_run ? run : nullptr, at);
        if ((in_one_run && plain_level({run + at, end - at}, &levels[found]))
            || text.mid(at, end - at).to_uint32_t(&levels[found]))
            ++found;
        at = end + 1;
    }
    return levels;
}
