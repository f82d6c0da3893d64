// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_tree.h"
#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_vocabulary_p.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <span>
#include <type_traits>
#include <vector>

using AStringStorageRef = ARef<AStringInternalStorageStruct>;

/// What an XMLTree points at: a node of a parsed message or a value of its own.
struct XMLElement
{
    enum Kind : std::uint8_t
    {
        Parsed,
        Built
    };
    Kind kind;
};

/// Part of the text of a message, in code points.
struct XMLSlice
{
    std::uint32_t start;
    std::uint32_t length;
};

struct XMLDocument;

/// An element of a parsed message. Nodes lie in document order, so the descendants of a node are
/// those between it and its end. They are plain memory that moves while a message is read, and do
/// not change after that.
struct XMLNode : XMLElement
{
    XMLDocument *document() const;
    /// The tree that `get_subnode` refers to. It holds no reference and is never destroyed.
    XMLTree const &tree() const
    {
        return *std::launder(reinterpret_cast<XMLTree const *>(&handle));
    }
    bool has_children() const { return end != index + 1; }
    XMLNode const *first_child() const { return has_children() ? this + 1 : nullptr; }
    /// Null when \a child is the last one of this node.
    XMLNode const *child_behind(XMLNode const *child) const
    {
        return child->end == end ? nullptr : this + (child->end - index);
    }
    bool has_tag(AString const &tag) const;
    AString tag() const;
    AString content() const;
    XMLNode const *find_child(AString const &tag) const;

    bool named; // which form the name has
    std::uint16_t hint; // tells most names apart; 0 for those that are not registered
    std::uint32_t index;
    std::uint32_t end; // index behind the last descendant; of an open element: its parent
    std::uint32_t attributes; // 1 + place of the first one in the document, 0 for none
    XMLSlice text; // of the content
    union
    {
        XMLNameEntry const *name;
        XMLSlice unnamed;
    };
    alignas(XMLTree) std::byte handle[sizeof(XMLTree)];
};
static_assert(std::is_trivially_copyable_v<XMLNode>);

/// An attribute of a parsed message.
struct XMLAttribute
{
    std::uint32_t node;
    XMLSlice name;
    XMLSlice value;
};

/// One parsed message: a block with its nodes behind this header, and one store with its text.
///
/// Two counts keep it. Trees that point at a node hold the whole document; with the last of them
/// the lists go that const access has made. What these lists hold are values that are filled from
/// their node later; such a value holds only the block. So lists that refer back to the block do
/// not keep each other alive, and a copy of such a list outlives the trees.
struct XMLDocument
{
    /// Memory for a document with room for \a nodes behind it.
    static void *allocate(std::uint32_t nodes);
    static void free(void *memory) { ::operator delete(memory); }
    static XMLNode *nodes_in(void *memory)
    {
        return reinterpret_cast<XMLNode *>(static_cast<std::byte *>(memory) + header_size());
    }
    /// Makes a document of such memory, whose nodes are there, with one tree on the first.
    static XMLTree make(void *memory, std::uint32_t nodes, std::span<XMLAttribute const> attributes,
        AStringStorageRef text);

    void hold() { trees.fetch_add(1, std::memory_order_relaxed); }
    void release();
    void hold_block() { blocks.fetch_add(1, std::memory_order_relaxed); }
    void release_block();

    AString slice(XMLSlice at) const { return AString(text, at.start, at.length); }
    /// The code points of a slice, for as long as the document; null for none, and where they do
    /// not lie in one run.
    AChar const *run(XMLSlice at) const;
    AList<XMLTree> const &subnodes(XMLNode const &node);
    XMLTree::Attributes const &attributes_of(XMLNode const &node);
    XMLTree::Attributes make_attributes(XMLNode const &node) const;

private:
    /// Made when asked for, one for each node.
    struct Members
    {
        std::atomic<AList<XMLTree> *> subnodes{nullptr};
        std::atomic<XMLTree::Attributes *> attributes{nullptr};
    };

    static constexpr std::size_t header_size();
    XMLDocument(std::uint32_t nodes, std::span<XMLAttribute const> found, AStringStorageRef store);
    ~XMLDocument() = default;
    Members &members_of(XMLNode const &node);
    void drop_members();

    std::atomic<std::uint32_t> trees{1};
    std::atomic<std::uint32_t> blocks{1}; // one of them for all trees together
    std::uint32_t const node_count;
    AStringStorageRef const text;
    std::unique_ptr<std::vector<XMLAttribute> const> const attributes; // null for none
    std::atomic<Members *> members{nullptr}; // an array of node_count; made under the lazy mutex
};

/// A tree that is not, or no longer, part of a parsed message.
struct XMLValue : XMLElement
{
    XMLValue();
    /// With the fields of \a node, the children on their nodes.
    explicit XMLValue(XMLNode const &node);
    XMLValue(XMLValue const &other);
    XMLValue &operator=(XMLValue const &) = delete;
    ~XMLValue();

    /// A value that takes children and attributes from \a node when they are asked for, and until
    /// then keeps the block.
    static XMLTree later(XMLNode const &node);

    /// The fields that may still be waiting in a message.
    AList<XMLTree> const &children() const;
    XMLTree::Attributes const &attributes() const;
    AList<XMLTree> &children_for_change();
    XMLTree::Attributes &attributes_for_change();

    void release() noexcept;

    mutable std::atomic<std::uint32_t> count{1};
    bool null = false;
    /// A changing reference to the attributes is out: copies no longer share this value.
    bool attributes_lent = false;
    AString tag;
    AString content;

private:
    void fill() const;

    mutable std::atomic<XMLNode const *> origin{nullptr};
    mutable AList<XMLTree> subnodes;
    mutable std::unique_ptr<XMLTree::Attributes> attribute_map;
    XMLValue *next_dead = nullptr;
};

/// Looks behind a tree.
struct XMLAccess
{
    static XMLTree adopt(XMLElement const *element)
    {
        XMLTree tree;
        tree.element = element;
        return tree;
    }
    /// Makes a tree on \a element in \a memory, without a reference.
    static void place(std::byte *memory, XMLElement const *element)
    {
        (new (memory) XMLTree)->element = element;
    }
    static XMLNode const *node(XMLTree const &tree)
    {
        return tree.element && tree.element->kind == XMLElement::Parsed
            ? static_cast<XMLNode const *>(tree.element)
            : nullptr;
    }
    /// Where a tree's element lies, without a look at it.
    static void const *memory(XMLTree const &tree) { return tree.element; }
    /// Null for a default-constructed tree too.
    static XMLValue const *value(XMLTree const &tree)
    {
        return tree.element && tree.element->kind == XMLElement::Built
            ? static_cast<XMLValue const *>(tree.element)
            : nullptr;
    }
};

constexpr std::size_t XMLDocument::header_size()
{
    static_assert(sizeof(XMLDocument) % alignof(XMLNode) == 0);
    return sizeof(XMLDocument);
}

inline AChar const *XMLDocument::run(XMLSlice at) const
{
    if (at.length == 0)
        return nullptr;
    std::uint32_t index = 0;
    AStringChunk const *chunk = text->chunk_at(at.start, &index);
    return at.length <= chunk->used - index ? chunk->text() + index : nullptr;
}

inline XMLDocument *XMLNode::document() const
{
    // The document itself is never const; nodes are, since they do not change.
    return reinterpret_cast<XMLDocument *>(const_cast<XMLNode *>(this - index)) - 1;
}
