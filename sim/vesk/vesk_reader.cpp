// SPDX-License-Identifier: Apache-2.0
#include "sim/vesk/vesk_reader.h"

VeskReader::VeskReader()
    : engine(longest_message)
{
    engine.config_tag("cmd");
}

bool VeskReader::feed(
    char const *data, std::size_t size, std::function<void(XMLTree const &)> const &message)
{
    while (size > 0) {
        auto const taken = engine.input_bytes(size, data);
        for (XMLTree tree = engine.get_xml(); !tree.is_null(); tree = engine.get_xml())
            message(tree);
        // A full buffer without a whole message in it will never hold one.
        if (engine.has_error() || taken == 0 || engine.available_buffer_space() == 0)
            return false;
        data += taken;
        size -= taken;
    }
    return true;
}
