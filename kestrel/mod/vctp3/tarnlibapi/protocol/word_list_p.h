// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_name.h"

#include <cstddef>
#include <string_view>
#include <vector>

namespace VCTP3 {

/// Names that are known to the parsers from its making on.
class WordList
{
public:
    template <std::size_t count> explicit WordList(std::string_view const (&texts)[count])
    {
        names.reserve(count);
        for (std::string_view text : texts)
            names.emplace_back(text.data()); // each is a literal, so a NUL follows
    }

    AString const &operator[](unsigned int index) const { return names[index].text(); }

private:
    std::vector<XMLName> names;
};

} // namespace VCTP3
