// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/protocol/field_reader_p.h"

#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_document_p.h"

#include <algorithm>
#include <bitset>

namespace VCTP3 {

namespace {

/// The process-wide string of a parsed element's tag; null where the parser did not know it.
AString const *known_name(XMLTree const &tree)
{
    XMLNode const *node = XMLAccess::node(tree);
    return node && node->named ? &node->name->text : nullptr;
}

} // namespace

FieldReader::FieldReader(XMLTree const &parent, AString const &tag, AString *reason)
    : error(reason)
    , element(find_element(parent, tag, reason))
{
    if (element)
        look_at_children();
}

FieldReader::FieldReader(XMLTree const &message, AString *reason)
    : error(reason)
    , element(&message)
{
    look_at_children();
}

void FieldReader::look_at_children()
{
    AString const *const own = known_name(*element);
    if (!own)
        return;
    std::bitset<1024> seen;
    for (XMLTree const &child : element->children()) {
        AString const *const name = known_name(child);
        if (!name || name == own || count == children.size())
            return;
        std::size_t const hint = XMLAccess::node(child)->hint % seen.size();
        all_differ = all_differ && !seen.test(hint);
        seen.set(hint);
        children[count++] = {name, &child};
    }
    indexed = true;
}

/// Where a child of that name stands, or `count`. Fields are asked for in the order in which they
/// are written, so the one behind the last that was found is the likely one.
unsigned int FieldReader::find(AString const *name) const
{
    for (unsigned int i = next; i < count; ++i)
        if (children[i].name == name)
            return i;
    for (unsigned int i = 0; i < next; ++i)
        if (children[i].name == name)
            return i;
    return count;
}

XMLTree const *FieldReader::only_child(AString const &name) const
{
    if (!indexed)
        return nullptr;
    unsigned int const at = find(&name);
    if (at == count)
        return nullptr;
    if (!all_differ
        && std::count_if(children.begin(), children.begin() + count,
               [&name](Child const &child) { return child.name == &name; })
            != 1)
        return nullptr;
    next = at + 1;
    return children[at].tree;
}

bool FieldReader::there(AString const &name) const
{
    if (!element)
        return false;
    if (!indexed)
        return element->has_subnodes(name);
    return find(&name) != count;
}

} // namespace VCTP3
