// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_document_p.h"

#include <cstdint>
#include <string_view>
#include <vector>

/// A message while it is read: its elements in document order and the text that they keep. Used
/// again for the next message, so that scratch memory is asked for once.
class XMLDraft
{
public:
    static constexpr std::uint32_t none = 0xffffffffu;
    /// Code points that may be written behind what is kept.
    static constexpr std::size_t slack = 8;

    XMLDraft() = default;
    ~XMLDraft() { XMLDocument::free(memory); }
    XMLDraft(XMLDraft const &) = delete;
    XMLDraft &operator=(XMLDraft const &) = delete;

    /// Forgets all. The next message has \a source_length bytes or code points, and so keeps no
    /// more of them.
    void clear(std::size_t source_length);

    /// Opens an element inside the open one. \a known: its name if that is registered.
    XMLNode &push(XMLNameEntry const *known)
    {
        if (count == capacity)
            grow();
        XMLNode &node = nodes[count];
        node.kind = XMLElement::Parsed;
        node.named = true;
        node.hint = known ? known->hint : 0;
        node.index = count;
        node.end = open;
        node.attributes = 0;
        node.text = {0, 0};
        node.name = known;
        open = count++;
        return node;
    }
    /// The same with a name that is looked up, and kept if it is not registered.
    XMLNode &push(std::string_view name);
    /// Closes the open element.
    void pop()
    {
        XMLNode &node = nodes[open];
        open = node.end;
        node.end = count;
    }
    bool has_open() const { return open != none; }
    XMLNode &top() { return nodes[open]; }
    bool top_has_children() const { return open + 1 != count; }
    /// Whether the open element has that name.
    template <typename Unit> bool top_is(std::basic_string_view<Unit> name) const
    {
        XMLNode const &node = nodes[open];
        auto const equal = [](auto a, Unit b) { return AChar(unit(a)) == AChar(unit(b)); };
        if (node.named) {
            std::string const &own = node.name->bytes;
            return std::equal(own.begin(), own.end(), name.begin(), name.end(), equal);
        }
        AChar const *const own = kept.data() + node.unnamed.start;
        return std::equal(own, own + node.unnamed.length, name.begin(), name.end(), equal);
    }

    void add_attribute(std::u32string_view name, std::u32string_view value);

    /// Room for the rest of the message, and for `slack` more.
    AChar *room() { return kept.data() + kept_count; }
    std::uint32_t kept_so_far() const { return kept_count; }
    void keep_to(AChar const *end) { kept_count = static_cast<std::uint32_t>(end - kept.data()); }
    XMLSlice kept_from(std::uint32_t start) const { return {start, kept_count - start}; }
    template <typename Unit> XMLSlice keep(std::basic_string_view<Unit> text)
    {
        std::uint32_t const start = kept_count;
        AChar *to = room();
        for (Unit const c : text)
            *to++ = AChar(unit(c));
        keep_to(to);
        return kept_from(start);
    }

    /// The tree of the first element, which is closed.
    XMLTree finish();

private:
    static char32_t unit(char c) { return static_cast<unsigned char>(c); }
    static char32_t unit(char32_t c) { return c; }
    static char32_t unit(AChar c) { return c.ord(); }
    void grow();

    void *memory = nullptr; // becomes the document
    XMLNode *nodes = nullptr;
    std::uint32_t count = 0;
    std::uint32_t capacity = 0;
    std::uint32_t open = none;
    std::uint32_t kept_count = 0;
    std::vector<AChar> kept; // the first kept_count
    std::vector<XMLAttribute> attributes;
};
