// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_document_p.h"

#include <cstdint>
#include <string_view>
#include <vector>

/// A message while it is read: its elements in document order and the text that they keep. Used
/// again for the next message, so that its memory is asked for once.
class XMLDraft
{
public:
    static constexpr std::uint32_t none = 0xffffffffu;

    void clear()
    {
        nodes.clear();
        attributes.clear();
        text.clear();
        open = none;
    }

    /// Opens an element inside the open one. \a name stands at \a position of what is read.
    void push(std::string_view name, std::size_t position)
    {
        XMLNodeDraft &node = nodes.emplace_back();
        node.name = XMLVocabulary::find(name);
        if (!node.name)
            node.tag = keep(name);
        node.source
            = {static_cast<std::uint32_t>(position), static_cast<std::uint32_t>(name.size())};
        node.end = open;
        open = static_cast<std::uint32_t>(nodes.size() - 1);
    }
    /// Closes the open element.
    void pop()
    {
        XMLNodeDraft &node = nodes[open];
        open = node.end;
        node.end = static_cast<std::uint32_t>(nodes.size());
    }
    bool has_open() const { return open != none; }
    XMLNodeDraft &top() { return nodes[open]; }
    bool top_has_children() const { return open + 1 != nodes.size(); }

    template <typename Unit> XMLSlice keep(std::basic_string_view<Unit> kept)
    {
        XMLSlice const slice{
            static_cast<std::uint32_t>(text.size()), static_cast<std::uint32_t>(kept.size())};
        text.insert(text.end(), kept.begin(), kept.end());
        return slice;
    }

    /// The tree of the first element, which is closed.
    XMLTree finish();

    std::vector<XMLNodeDraft> nodes;
    std::vector<XMLAttribute> attributes;
    std::vector<char32_t> text;

private:
    std::uint32_t open = none;
};
