// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_tree.h"
#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_vocabulary_p.h"

#include <atomic>
#include <cstdint>
#include <memory>
#include <span>
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

    explicit XMLElement(Kind of)
        : kind(of)
    {
    }
    Kind const kind;
};

/// Part of the text of a message, in code points.
struct XMLSlice
{
    std::uint32_t start = 0;
    std::uint32_t length = 0;
};

/// What a reader notes about an element before the message's memory is made.
struct XMLNodeDraft
{
    XMLNameEntry const *name = nullptr;
    XMLSlice tag; // where the name is not registered
    XMLSlice content;
    XMLSlice source; // where the name stands in what is read
    std::uint32_t end = 0; // while the element is open: the one around it
    std::uint32_t attributes = 0; // 1 + place of the first one, 0 for none
};

struct XMLDocument;

/// An element of a parsed message. Nodes lie in document order, so the descendants of a node are
/// those between it and its end.
struct XMLNode : XMLElement
{
    XMLNode(XMLNodeDraft const &draft, std::uint32_t at);

    XMLDocument *document() const;
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

    std::uint32_t const index;
    std::uint32_t const end; // index behind the last descendant
    std::uint32_t const attributes; // 1 + place of the first one in the document, 0 for none
    XMLSlice const text; // of the content
    XMLNameEntry const *const name; // null: then the tag is unnamed
    XMLSlice const unnamed;
    /// The tree that `get_subnode` refers to. It holds no reference and is never destroyed.
    union
    {
        XMLTree self;
    };
    ~XMLNode() = delete;
};

/// An attribute of a parsed message.
struct XMLAttribute
{
    std::uint32_t node = 0;
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
    /// Makes a document with one tree on its first node.
    static XMLTree make(std::span<XMLNodeDraft const> drafts, std::vector<XMLAttribute> attributes,
        AStringStorageRef text);

    void hold() { trees.fetch_add(1, std::memory_order_relaxed); }
    void release();
    void hold_block() { blocks.fetch_add(1, std::memory_order_relaxed); }
    void release_block();

    XMLNode const *nodes() const { return reinterpret_cast<XMLNode const *>(this + 1); }
    AString slice(XMLSlice at) const { return AString(text, at.start, at.length); }
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

    XMLDocument(std::uint32_t nodes, std::vector<XMLAttribute> found, AStringStorageRef store);
    ~XMLDocument() = default;
    Members &members_of(XMLNode const &node);
    void drop_members();

    std::atomic<std::uint32_t> trees{1};
    std::atomic<std::uint32_t> blocks{1}; // one of them for all trees together
    std::uint32_t const node_count;
    AStringStorageRef const text;
    std::vector<XMLAttribute> const attributes;
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
    static XMLNode const *node(XMLTree const &tree)
    {
        return tree.element && tree.element->kind == XMLElement::Parsed
            ? static_cast<XMLNode const *>(tree.element)
            : nullptr;
    }
    /// Null for a default-constructed tree too.
    static XMLValue const *value(XMLTree const &tree)
    {
        return tree.element && tree.element->kind == XMLElement::Built
            ? static_cast<XMLValue const *>(tree.element)
            : nullptr;
    }
};

inline XMLDocument *XMLNode::document() const
{
    // The document itself is never const; nodes are, since they do not change.
    return reinterpret_cast<XMLDocument *>(const_cast<XMLNode *>(this - index)) - 1;
}
