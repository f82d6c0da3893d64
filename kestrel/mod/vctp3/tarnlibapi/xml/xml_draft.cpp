// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_draft_p.h"

#include "kestrel/mod/vctp3/tarnlibapi/base/astring_builder_p.h"

#include <algorithm>

namespace {

/// Messages have an element in about as many bytes as this, or in more.
constexpr std::size_t bytes_per_node = 28;

} // namespace

void XMLDraft::clear(std::size_t source_length)
{
    count = 0;
    open = none;
    kept_count = 0;
    attributes.clear();
    if (kept.size() < source_length + slack)
        kept.resize(source_length + slack);
    auto const expected = static_cast<std::uint32_t>(source_length / bytes_per_node + 4);
    if (expected > capacity) {
        XMLDocument::free(memory);
        memory = XMLDocument::allocate(expected);
        nodes = XMLDocument::nodes_in(memory);
        capacity = expected;
    }
}

void XMLDraft::grow()
{
    std::uint32_t const larger = capacity * 2;
    void *const moved = XMLDocument::allocate(larger);
    std::copy_n(nodes, count, XMLDocument::nodes_in(moved));
    XMLDocument::free(memory);
    memory = moved;
    nodes = XMLDocument::nodes_in(memory);
    capacity = larger;
}

XMLNode &XMLDraft::push(std::string_view name)
{
    XMLNameEntry const *const known = XMLVocabulary::find(name);
    XMLNode &node = push(known);
    if (!known) {
        node.named = false;
        node.unnamed = keep(name);
    }
    return node;
}

void XMLDraft::add_attribute(std::u32string_view name, std::u32string_view value)
{
    XMLSlice const kept_name = keep(name);
    attributes.push_back({open, kept_name, keep(value)});
    if (top().attributes == 0)
        top().attributes = static_cast<std::uint32_t>(attributes.size());
}

XMLTree XMLDraft::finish()
{
    AStringBuilder builder(kept_count);
    builder.append(kept.data(), kept_count);
    void *const finished = std::exchange(memory, nullptr);
    nodes = nullptr;
    capacity = 0;
    return XMLDocument::make(finished, count, attributes, builder.take_storage());
}
