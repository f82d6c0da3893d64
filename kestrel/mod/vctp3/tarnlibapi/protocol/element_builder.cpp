// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/base/astring_format.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/collection_xml_p.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/command_tree_p.h"

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

CommandTree::CommandTree(AString const &transaction, Word command)
    : ElementBuilder(word(command))
    , xid(transaction)
{
}

XMLTree CommandTree::take() const
{
    AList<XMLTree> parts;
    parts.push_back(XMLTree(word(Word::xid), xid));
    parts.push_back(ElementBuilder::take());
    return XMLTree(word(Word::cmd), parts);
}

} // namespace VCTP3
