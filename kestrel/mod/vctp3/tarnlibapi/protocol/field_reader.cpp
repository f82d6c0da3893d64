// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/protocol/field_reader_p.h"

#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_document_p.h"

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
    for (XMLTree const &child : element->children()) {
        AString const *const name = known_name(child);
        if (!name || name == own || count == children.size())
            return;
        children[count++] = {name, &child};
    }
    indexed = true;
}

XMLTree const *FieldReader::only_child(Word tag) const
{
    if (!indexed)
        return nullptr;
    AString const *const name = &word(tag);
    XMLTree const *found = nullptr;
    for (unsigned int i = 0; i < count; ++i) {
        if (children[i].name != name)
            continue;
        if (found)
            return nullptr;
        found = children[i].tree;
    }
    return found;
}

bool FieldReader::there(Word tag) const
{
    if (!element)
        return false;
    if (!indexed)
        return element->has_subnodes(word(tag));
    AString const *const name = &word(tag);
    for (unsigned int i = 0; i < count; ++i) {
        if (children[i].name == name)
            return true;
    }
    return false;
}

} // namespace VCTP3
