// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/afunction.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/alist.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/astring.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/astring_list.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/tarn_export.h"

#include <cstddef>
#include <iterator>
#include <map>
#include <utility>

struct XMLElement;
struct XMLNode;
struct XMLValue;
class XMLChildren;

/// One element of the message dialect: a tag, the text of a leaf, attributes and child elements.
/// A value: copies are cheap and independent of each other, whatever the depth of the tree.
///
/// A tree that was parsed shares one block of memory with all parts of its message; reading it
/// by `get_subnode`, `children`, `get_tag` and `get_content` allocates nothing. Text cut from it
/// shares one store per message, so who keeps a field for long keeps `text.deep_copy(32)`.
/// References that a const tree gives stay valid while that tree lives and is not changed.
/// Thread: copies may be used in different threads; one object by many readers or one writer.
class TARN_EXPORT XMLTree
{
public:
    using Attributes = std::map<AString, AString>;

    /// Layout of written text.
    enum FlattenStyle
    {
        /// No line breaks.
        FlattenCompact = 0,
        /// CR LF before every child and before the closing tag of an element with children.
        FlattenLines = 1,
        /// As `FlattenLines`, and every line begins with 4 blanks for each level of nesting.
        FlattenIndented = 2,
    };
    static constexpr FlattenStyle default_flatten_style = FlattenLines;

    /// The null tree: no element, or one that could not be parsed.
    XMLTree() noexcept = default;
    explicit XMLTree(AString const &tag);
    XMLTree(AString const &tag, AString const &content);
    /// The number in decimal.
    XMLTree(AString const &tag, unsigned int number);
    XMLTree(AString const &tag, long long number);
    XMLTree(AString const &tag, unsigned long long number);
    XMLTree(AString const &tag, XMLTree const &sub);
    XMLTree(AString const &tag, AList<XMLTree> const &subs);

    XMLTree(XMLTree const &other) noexcept;
    XMLTree(XMLTree &&other) noexcept
        : element(std::exchange(other.element, nullptr))
    {
    }
    ~XMLTree()
    {
        if (element)
            release();
    }
    XMLTree &operator=(XMLTree const &other) noexcept
    {
        XMLTree(other).swap(*this);
        return *this;
    }
    XMLTree &operator=(XMLTree &&other) noexcept
    {
        XMLTree(std::move(other)).swap(*this);
        return *this;
    }
    void swap(XMLTree &other) noexcept { std::swap(element, other.element); }

    bool is_null() const;
    AString get_tag() const;
    /// Empty for a parsed element with children.
    AString get_content() const;
    bool has_tag(AString const &tag) const;
    /// The same with a Latin-1 text.
    bool has_tag_z(char const *tag) const;

    /// Ordered by name. The changing form stays valid until the tree is changed or assigned.
    Attributes const &attr() const;
    Attributes &attr();

    /// All children in document order. A parsed tree makes this list at the first call and keeps
    /// it; `children` walks without one.
    AList<XMLTree> const &get_subnodes() const;
    /// A new list of the children with that tag, in order.
    AList<XMLTree> get_subnodes(AString const &tag) const;
    /// The children as a range: `for (XMLTree const &child : tree.children())`.
    XMLChildren children() const;
    bool has_subnodes() const;
    bool has_subnodes(AString const &tag) const;
    unsigned int count_subnodes() const;
    /// The number of children with that tag. The first one is copied to \a first if that is given;
    /// without a match \a first stays as it is.
    unsigned int count_subnodes(AString const &tag, XMLTree *first = nullptr) const;
    /// The first child with that tag, or one shared null tree.
    XMLTree const &get_subnode(AString const &tag) const;
    /// The first child with that tag for changing, or null. Valid until this tree is changed or
    /// copied: a copy shares the child, and sees what is changed through an older pointer.
    XMLTree *get_modifiable_subnode(AString const &tag);

    void add_subnode(XMLTree const &sub);
    XMLTree &operator+=(XMLTree const &sub);
    void add_subnodes(AList<XMLTree> const &subs);
    /// Returns how many children went.
    unsigned int remove_subnodes(AString const &tag);
    /// Replaces the content and drops all children.
    void set_content(AString const &text);
    /// Gives the first child with the tag of \a sub its content and children; the attributes of
    /// that child stay. Without such a child \a sub is appended.
    void set_subnode(XMLTree const &sub);
    void set_subnode(AString const &tag, AString const &content);
    void set_subnode(AString const &tag, AList<XMLTree> const &subs);

    /// The element as text. With \a short_empty an element that has neither children nor content
    /// is written as one tag. A null tree is an assertion and gives no text.
    AString flatten(FlattenStyle style = default_flatten_style, bool short_empty = true) const;
    /// The same in pieces that need not be joined.
    AStringList flatten_base(
        FlattenStyle style = default_flatten_style, bool short_empty = true) const;
    /// Hands the same to \a sink as UTF-8, in blocks of at most 512 bytes that hold whole
    /// characters. A code point that cannot be encoded is left out.
    void send_utf8(AFunction2<char const *, unsigned long long> const &sink,
        FlattenStyle style = default_flatten_style, bool short_empty = true) const;

    /// Whether both stand for the same element, attributes and order of children included.
    friend TARN_EXPORT bool operator==(XMLTree const &a, XMLTree const &b);

private:
    friend struct XMLAccess;

    static XMLTree const &get_null();
    void retain() const noexcept;
    void release() noexcept;
    /// The element as a value of this object alone, for changing.
    XMLValue &own();

    XMLElement const *element = nullptr;
};

/// The children of one element, for reading. Valid while the tree lives and is not changed.
class TARN_EXPORT XMLChildren
{
public:
    class TARN_EXPORT const_iterator
    {
    public:
        using iterator_category = std::forward_iterator_tag;
        using value_type = XMLTree;
        using difference_type = std::ptrdiff_t;
        using pointer = XMLTree const *;
        using reference = XMLTree const &;

        const_iterator() = default;
        XMLTree const &operator*() const { return node ? parsed() : *place; }
        XMLTree const *operator->() const { return &**this; }
        const_iterator &operator++()
        {
            if (node)
                next_parsed();
            else
                ++place;
            return *this;
        }
        const_iterator operator++(int)
        {
            const_iterator before = *this;
            ++*this;
            return before;
        }
        friend bool operator==(const_iterator const &a, const_iterator const &b)
        {
            return a.node == b.node && a.place == b.place;
        }

    private:
        friend class XMLTree;
        XMLTree const &parsed() const;
        void next_parsed();

        /// Of a parsed element: the child, null behind the last one, and the element.
        XMLNode const *node = nullptr;
        XMLNode const *parent = nullptr;
        /// Of any other.
        AList<XMLTree>::const_iterator place;
    };
    using iterator = const_iterator;

    const_iterator begin() const { return first; }
    const_iterator end() const { return {}; }

private:
    friend class XMLTree;
    const_iterator first;
};
