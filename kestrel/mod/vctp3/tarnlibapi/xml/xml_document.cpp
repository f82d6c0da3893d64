// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_document_p.h"

#include <algorithm>
#include <mutex>
#include <new>

namespace {

/// Guards the making of members that const access asks for: subnodes and attributes of documents
/// and of values that wait for their node. A leaf lock, held only while they are made.
constinit std::mutex lazy_mutex;

XMLTree hold(XMLNode const &node)
{
    node.document()->hold();
    return XMLAccess::adopt(&node);
}

} // namespace

// --- XMLNode ---

AString XMLNode::tag() const
{
    return named ? name->text : document()->slice(unnamed);
}

AString XMLNode::content() const
{
    return text.length == 0 ? AString() : document()->slice(text);
}

bool XMLNode::has_tag(AString const &tag) const
{
    if (named)
        return name->text == tag;
    return unnamed.length == tag.length() && document()->slice(unnamed) == tag;
}

XMLNode const *XMLNode::find_child(AString const &tag) const
{
    XMLNode const *child = first_child();
    while (child && !child->has_tag(tag))
        child = child_behind(child);
    return child;
}

// --- XMLDocument ---

XMLDocument::XMLDocument(
    std::uint32_t nodes, std::span<XMLAttribute const> found, AStringStorageRef store)
    : node_count(nodes)
    , text(std::move(store))
    , attributes(found.empty()
              ? nullptr
              : std::make_unique<std::vector<XMLAttribute> const>(found.begin(), found.end()))
{
}

void *XMLDocument::allocate(std::uint32_t nodes)
{
    return ::operator new(header_size() + nodes * sizeof(XMLNode));
}

XMLTree XMLDocument::make(void *memory, std::uint32_t nodes,
    std::span<XMLAttribute const> attributes, AStringStorageRef text)
{
    new (memory) XMLDocument(nodes, attributes, std::move(text));
    XMLNode *const node = nodes_in(memory);
    for (std::uint32_t i = 0; i < nodes; ++i)
        XMLAccess::place(node[i].handle, node + i);
    return XMLAccess::adopt(node);
}

void XMLDocument::release()
{
    if (trees.fetch_sub(1, std::memory_order_acq_rel) == 1) {
        drop_members();
        release_block();
    }
}

void XMLDocument::release_block()
{
    if (blocks.fetch_sub(1, std::memory_order_acq_rel) == 1) {
        this->~XMLDocument();
        free(this);
    }
}

void XMLDocument::drop_members()
{
    Members *const array = members.exchange(nullptr, std::memory_order_acquire);
    if (!array)
        return;
    for (std::uint32_t i = 0; i < node_count; ++i) {
        delete array[i].subnodes.load(std::memory_order_relaxed);
        delete array[i].attributes.load(std::memory_order_relaxed);
    }
    delete[] array;
}

/// The caller holds the lazy mutex.
XMLDocument::Members &XMLDocument::members_of(XMLNode const &node)
{
    Members *array = members.load(std::memory_order_relaxed);
    if (!array) {
        array = new Members[node_count];
        members.store(array, std::memory_order_release);
    }
    return array[node.index];
}

AList<XMLTree> const &XMLDocument::subnodes(XMLNode const &node)
{
    static AList<XMLTree> const none;
    if (!node.has_children())
        return none;
    if (Members const *array = members.load(std::memory_order_acquire)) {
        if (auto const *list = array[node.index].subnodes.load(std::memory_order_acquire))
            return *list;
    }
    std::lock_guard const lock(lazy_mutex);
    Members &own = members_of(node);
    if (!own.subnodes.load(std::memory_order_relaxed)) {
        auto *const list = new AList<XMLTree>;
        for (XMLNode const *child = node.first_child(); child; child = node.child_behind(child))
            list->push_back(XMLValue::later(*child));
        own.subnodes.store(list, std::memory_order_release);
    }
    return *own.subnodes.load(std::memory_order_relaxed);
}

XMLTree::Attributes const &XMLDocument::attributes_of(XMLNode const &node)
{
    static XMLTree::Attributes const none;
    if (node.attributes == 0)
        return none;
    if (Members const *array = members.load(std::memory_order_acquire)) {
        if (auto const *map = array[node.index].attributes.load(std::memory_order_acquire))
            return *map;
    }
    std::lock_guard const lock(lazy_mutex);
    Members &own = members_of(node);
    if (!own.attributes.load(std::memory_order_relaxed)) {
        own.attributes.store(
            new XMLTree::Attributes(make_attributes(node)), std::memory_order_release);
    }
    return *own.attributes.load(std::memory_order_relaxed);
}

XMLTree::Attributes XMLDocument::make_attributes(XMLNode const &node) const
{
    XMLTree::Attributes map;
    if (node.attributes == 0)
        return map;
    for (std::size_t i = node.attributes - 1;
         i < attributes->size() && (*attributes)[i].node == node.index; ++i)
        map[slice((*attributes)[i].name)] = slice((*attributes)[i].value);
    return map;
}

// --- XMLValue ---

XMLValue::XMLValue()
    : XMLElement{Built}
{
}

XMLValue::XMLValue(XMLNode const &node)
    : XMLElement{Built}
    , tag(node.tag())
    , content(node.content())
{
    for (XMLNode const *child = node.first_child(); child; child = node.child_behind(child))
        subnodes.push_back(hold(*child));
    if (node.attributes != 0)
        attribute_map
            = std::make_unique<XMLTree::Attributes>(node.document()->make_attributes(node));
}

XMLValue::XMLValue(XMLValue const &other)
    : XMLElement{Built}
    , null(other.null)
    , tag(other.tag)
    , content(other.content)
    , subnodes(other.children())
{
    if (!other.attributes().empty())
        attribute_map = std::make_unique<XMLTree::Attributes>(other.attributes());
}

XMLValue::~XMLValue()
{
    if (XMLNode const *node = origin.load(std::memory_order_relaxed))
        node->document()->release_block();
}

XMLTree XMLValue::later(XMLNode const &node)
{
    auto *const value = new XMLValue;
    value->tag = node.tag();
    value->content = node.content();
    if (node.has_children() || node.attributes != 0) {
        node.document()->hold_block();
        value->origin.store(&node, std::memory_order_relaxed);
    }
    return XMLAccess::adopt(value);
}

void XMLValue::fill() const
{
    XMLNode const *node = nullptr;
    {
        std::lock_guard const lock(lazy_mutex);
        node = origin.load(std::memory_order_relaxed);
        if (!node)
            return;
        for (XMLNode const *child = node->first_child(); child; child = node->child_behind(child))
            subnodes.push_back(later(*child));
        if (node->attributes != 0)
            attribute_map
                = std::make_unique<XMLTree::Attributes>(node->document()->make_attributes(*node));
        origin.store(nullptr, std::memory_order_release);
    }
    node->document()->release_block();
}

AList<XMLTree> const &XMLValue::children() const
{
    if (origin.load(std::memory_order_acquire))
        fill();
    return subnodes;
}

XMLTree::Attributes const &XMLValue::attributes() const
{
    static XMLTree::Attributes const none;
    if (origin.load(std::memory_order_acquire))
        fill();
    return attribute_map ? *attribute_map : none;
}

AList<XMLTree> &XMLValue::children_for_change()
{
    children();
    return subnodes;
}

XMLTree::Attributes &XMLValue::attributes_for_change()
{
    attributes();
    if (!attribute_map)
        attribute_map = std::make_unique<XMLTree::Attributes>();
    return *attribute_map;
}

void XMLValue::release() noexcept
{
    if (count.fetch_sub(1, std::memory_order_acq_rel) != 1)
        return;
    // Deleting a value releases its children, which comes back here. They are put on a list that
    // the outermost call works off, so that the stack does not grow with the depth of the tree.
    static thread_local XMLValue *dead = nullptr;
    static thread_local bool working = false;
    next_dead = dead;
    dead = this;
    if (working)
        return;
    working = true;
    while (dead) {
        XMLValue *const value = dead;
        dead = value->next_dead;
        delete value;
    }
    working = false;
}
