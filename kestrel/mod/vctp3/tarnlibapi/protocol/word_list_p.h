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
            names.push_back(&XMLName(text.data()).text()); // each is a literal, so a NUL follows
    }

    AString const &operator[](unsigned int index) const { return *names[index]; }

private:
    std::vector<AString const *> names; // as long as the process
};

} // namespace VCTP3
