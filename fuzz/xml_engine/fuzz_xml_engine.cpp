// SPDX-License-Identifier: Apache-2.0
// Any stream in any pieces: the engine must give the messages, and the errors, of the literal
// rules. The first byte says how large the buffer and the pieces are.
#include "fuzz/expect.h"
#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_name.h"
#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_parse_engine.h"
#include "tests/xml/literal_xml.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size);

namespace {

void compare(XMLParseEngine &engine, LiteralXml::Engine &literal)
{
    for (;;) {
        std::optional<LiteralXml::Element> const element = literal.get_xml();
        XMLTree const tree = engine.get_xml();
        FUZZ_EXPECT(engine.has_error() == literal.error);
        FUZZ_EXPECT(engine.available_buffer_space() == literal.size - literal.held.size());
        FUZZ_EXPECT(tree.is_null() == !element);
        if (!element)
            return;
        FUZZ_EXPECT(LiteralXml::same(tree, *element));
    }
}

} // namespace

int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size)
{
    static XMLName const names[]
        = {XMLName("a"), XMLName("reply"), XMLName("LongerNameThan16Bytes")};
    static_cast<void>(names);
    if (size == 0)
        return 0;
    std::size_t const buffer = data[0] & 1 ? 65536 : 64;
    std::size_t const piece = 1 + (data[0] >> 1);
    std::string_view stream(reinterpret_cast<char const *>(data + 1), size - 1);

    LiteralXml::Engine literal(buffer, {"a", "reply"});
    XMLParseEngine engine(buffer);
    engine.config_tag("a");
    engine.config_tag("reply");
    while (!stream.empty()) {
        std::string_view const next = stream.substr(0, piece);
        unsigned long long const taken = engine.input_bytes(next.size(), next.data());
        FUZZ_EXPECT(taken == literal.input(next));
        compare(engine, literal);
        if (taken == 0)
            break;
        stream.remove_prefix(taken);
    }
    engine.reset();
    FUZZ_EXPECT(!engine.has_error() && engine.get_xml().is_null());
    return 0;
}
