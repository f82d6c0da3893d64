// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/base/astring_format.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/collection_xml_p.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/element_builder_p.h"

namespace VCTP3 {

bool check_count(XMLTree const &element, Word item, unsigned int capacity, AString *error)
{
    if (element.count_subnodes(word(item)) <= capacity)
        return true;
    // "%u" is no placeholder here and stays in the text.
    return fail_reading(error,
        AString::l1("Tag %1 contains %u subelements. The maximum is %2.")
            .arg(element.get_tag())
            .arg(capacity));
}

void ElementBuilder::add_flag(Word field, bool raised)
{
    if (raised)
        append(XMLTree(word(field)));
}

void ElementBuilder::append(XMLTree const &field)
{
    fields.push_back(field);
}

} // namespace VCTP3
