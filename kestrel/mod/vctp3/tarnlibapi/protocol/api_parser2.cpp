// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/protocol/api_parser2.h"

#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_parse_engine.h"

#include <algorithm>

namespace VCTP3 {

APIParser2::APIParser2()
    : engine(std::make_unique<XMLParseEngine>(input_buffer_size))
{
    engine->config_tag("reply");
    engine->config_tag("report");
}

APIParser2::~APIParser2() = default;

void APIParser2::input_bytes(unsigned long long count, void const *data)
{
    if (failed)
        return;
    unsigned int const begun_in = stream;
    auto const *bytes = static_cast<char const *>(data);
    while (count > 0) {
        unsigned long long const room = engine->available_buffer_space();
        unsigned long long const taken
            = room > 0 ? engine->input_bytes(std::min(count, room), bytes) : 0;
        if (taken == 0) {
            failed = true;
            return;
        }
        bytes += taken;
        count -= taken;
        if (!parse_available(begun_in))
            return;
    }
}

bool APIParser2::parse_available(unsigned int begun_in)
{
    for (;;) {
        XMLTree const message = engine->get_xml();
        if (engine->has_error()) {
            failed = true;
            return false;
        }
        if (message.is_null())
            return true;
        parse(message);
        if (stream != begun_in)
            return false;
    }
}

void APIParser2::reset_input()
{
    ++stream;
    failed = false;
    engine->reset();
}

} // namespace VCTP3
