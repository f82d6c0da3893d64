// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_parse.h"
#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_reader_p.h"

XMLTree XMLReader::read_utf8(std::string_view bytes)
{
    if (bytes.size() >= 4 && bytes.size() < XMLDraft::none && bytes.front() == '<'
        && bytes.back() == '>') {
        draft.clear(bytes.size());
        if (xml_read_plain(bytes, draft, memory))
            return draft.finish();
    }
    return read(AString::from_utf8(bytes.data(), bytes.size()));
}

XMLTree XMLReader::read(AString const &text)
{
    if (text.length() >= XMLDraft::none)
        return {};
    code_points.clear();
    code_points.reserve(text.length());
    for (AChar const c : text)
        code_points.push_back(c.ord());
    draft.clear(code_points.size());
    if (!XMLTextReader({code_points.data(), code_points.size()}, draft).read())
        return {};
    return draft.finish();
}

XMLTree XMLParse(AString const &text, bool *error)
{
    XMLTree tree = XMLReader().read(text);
    if (tree.is_null() && error)
        *error = true;
    return tree;
}
