// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/astring.h"
#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_parse.h"
#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_tree.h"
#include "tests/support/astring_print.h"

/// A tree from its text; null if the text is malformed.
inline XMLTree tree_of(char const *text)
{
    bool error = false;
    return XMLParse(AString::from_utf8(text), &error);
}

/// The same tree put together by hand, so that nothing of it lies in a parsed message.
inline XMLTree rebuilt(XMLTree const &tree)
{
    if (!tree.has_subnodes())
        return XMLTree(tree.get_tag(), tree.get_content());
    XMLTree result(tree.get_tag());
    for (XMLTree const &child : tree.children())
        result.add_subnode(rebuilt(child));
    return result;
}

/// A tree as one line of text.
inline AString line_of(XMLTree const &tree)
{
    return tree.flatten(XMLTree::FlattenCompact);
}

inline AString l1(char const *text)
{
    return AString::l1(text);
}
