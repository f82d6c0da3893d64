// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_tree.h"
#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_document_p.h"

#include <QVarLengthArray>

namespace {

XMLNode const *node_of(XMLTree const &tree)
{
    return XMLAccess::node(tree);
}
XMLValue const *value_of(XMLTree const &tree)
{
    return XMLAccess::value(tree);
}

} // namespace

XMLTree::XMLTree(AString const &tag)
{
    own().tag = tag.deep_copy();
    own().null = false;
}

XMLTree::XMLTree(AString const &tag, AString const &content)
    : XMLTree(tag)
{
    own().content = content.deep_copy();
}

XMLTree::XMLTree(AString const &tag, unsigned int number)
    : XMLTree(tag, static_cast<unsigned long long>(number))
{
}

XMLTree::XMLTree(AString const &tag, long long number)
    : XMLTree(tag)
{
    own().content = AString::from_long_long(number);
}

XMLTree::XMLTree(AString const &tag, unsigned long long number)
    : XMLTree(tag)
{
    own().content = AString::from_unsigned_long_long(number);
}

XMLTree::XMLTree(AString const &tag, XMLTree const &sub)
    : XMLTree(tag)
{
    add_subnode(sub);
}

XMLTree::XMLTree(AString const &tag, AList<XMLTree> const &subs)
    : XMLTree(tag)
{
    own().children_for_change() = subs;
}

XMLTree::XMLTree(XMLTree const &other) noexcept
    : element(other.element)
{
    if (XMLValue const *value = value_of(other); value && value->attributes_lent)
        element = new XMLValue(*value);
    else if (element)
        retain();
}

void XMLTree::retain() const noexcept
{
    if (XMLNode const *node = node_of(*this))
        node->document()->hold();
    else
        value_of(*this)->count.fetch_add(1, std::memory_order_relaxed);
}

void XMLTree::release() noexcept
{
    if (XMLNode const *node = node_of(*this))
        node->document()->release();
    else
        const_cast<XMLValue *>(value_of(*this))->release();
    element = nullptr;
}

XMLValue &XMLTree::own()
{
    XMLValue const *value = value_of(*this);
    if (!value || value->count.load(std::memory_order_acquire) != 1) {
        XMLNode const *const node = node_of(*this);
        XMLValue *const made
            = node ? new XMLValue(*node) : (value ? new XMLValue(*value) : new XMLValue);
        made->null = !node && (!value || value->null);
        XMLAccess::adopt(made).swap(*this);
        value = made;
    }
    return const_cast<XMLValue &>(*value);
}

// --- reading ---

bool XMLTree::is_null() const
{
    XMLValue const *const value = value_of(*this);
    return !element || (value && value->null);
}

AString XMLTree::get_tag() const
{
    if (XMLNode const *node = node_of(*this))
        return node->tag();
    return element ? value_of(*this)->tag : AString();
}

AString XMLTree::get_content() const
{
    if (XMLNode const *node = node_of(*this))
        return node->content();
    return element ? value_of(*this)->content : AString();
}

bool XMLTree::has_tag(AString const &tag) const
{
    if (XMLNode const *node = node_of(*this))
        return node->has_tag(tag);
    return element ? value_of(*this)->tag == tag : tag.empty();
}

bool XMLTree::has_tag_z(char const *tag) const
{
    return get_tag().equal_z(tag);
}

XMLTree::Attributes const &XMLTree::attr() const
{
    static Attributes const none;
    if (XMLNode const *node = node_of(*this))
        return node->document()->attributes_of(*node);
    return element ? value_of(*this)->attributes() : none;
}

AList<XMLTree> const &XMLTree::get_subnodes() const
{
    static AList<XMLTree> const none;
    if (XMLNode const *node = node_of(*this))
        return node->document()->subnodes(*node);
    return element ? value_of(*this)->children() : none;
}

XMLChildren XMLTree::children() const
{
    XMLChildren range;
    if (XMLNode const *node = node_of(*this)) {
        range.first.node = node->first_child();
        range.first.parent = node;
    } else if (element) {
        range.first.place = value_of(*this)->children().const_begin();
    }
    return range;
}

AList<XMLTree> XMLTree::get_subnodes(AString const &tag) const
{
    AList<XMLTree> found;
    for (XMLTree const &child : children()) {
        if (child.has_tag(tag))
            found.push_back(child);
    }
    return found;
}

bool XMLTree::has_subnodes() const
{
    if (XMLNode const *node = node_of(*this))
        return node->has_children();
    return element && !value_of(*this)->children().empty();
}

bool XMLTree::has_subnodes(AString const &tag) const
{
    return &get_subnode(tag) != &get_null();
}

unsigned int XMLTree::count_subnodes() const
{
    if (!node_of(*this))
        return get_subnodes().size();
    unsigned int count = 0;
    for (auto child = children().begin(); child != XMLChildren::const_iterator(); ++child)
        ++count;
    return count;
}

unsigned int XMLTree::count_subnodes(AString const &tag, XMLTree *first) const
{
    XMLTree found; // \a first may be this tree
    unsigned int count = 0;
    for (XMLTree const &child : children()) {
        if (child.has_tag(tag) && ++count == 1 && first)
            found = child;
    }
    if (count != 0 && first)
        first->swap(found);
    return count;
}

XMLTree const &XMLTree::get_null()
{
    static XMLTree const null;
    return null;
}

XMLTree const &XMLTree::get_subnode(AString const &tag) const
{
    if (XMLNode const *node = node_of(*this)) {
        XMLNode const *const child = node->find_child(tag);
        return child ? child->tree() : get_null();
    }
    if (element) {
        for (XMLTree const &child : value_of(*this)->children().const_ref()) {
            if (child.has_tag(tag))
                return child;
        }
    }
    return get_null();
}

XMLTree const &XMLChildren::const_iterator::parsed() const
{
    return node->tree();
}

void XMLChildren::const_iterator::next_parsed()
{
    node = parent->child_behind(node);
}

namespace {

/// Whether two elements agree in all but their children, and in the number of these.
bool same_fields(XMLTree const &a, XMLTree const &b)
{
    return a.is_null() == b.is_null() && a.get_tag() == b.get_tag()
        && a.get_content() == b.get_content() && a.attr() == b.attr()
        && a.count_subnodes() == b.count_subnodes();
}

} // namespace

bool operator==(XMLTree const &a, XMLTree const &b)
{
    using Place = XMLChildren::const_iterator;
    if (a.element == b.element)
        return true;
    if (!same_fields(a, b))
        return false;
    QVarLengthArray<std::pair<Place, Place>, 16> open;
    open.append({a.children().begin(), b.children().begin()});
    while (!open.isEmpty()) {
        auto &[left, right] = open.back();
        if (left == Place()) {
            open.pop_back();
            continue;
        }
        XMLTree const &x = *left++;
        XMLTree const &y = *right++;
        if (!same_fields(x, y))
            return false;
        if (x.has_subnodes())
            open.append({x.children().begin(), y.children().begin()});
    }
    return true;
}

// --- changing ---

XMLTree::Attributes &XMLTree::attr()
{
    XMLValue &value = own();
    value.attributes_lent = true;
    return value.attributes_for_change();
}

XMLTree *XMLTree::get_modifiable_subnode(AString const &tag)
{
    if (!has_subnodes(tag))
        return nullptr;
    for (XMLTree &child : own().children_for_change()) {
        if (child.has_tag(tag))
            return &child;
    }
    return nullptr;
}

void XMLTree::add_subnode(XMLTree const &sub)
{
    XMLTree copy(sub); // it may be this tree or a part of it
    own().children_for_change().push_back(std::move(copy));
}

XMLTree &XMLTree::operator+=(XMLTree const &sub)
{
    add_subnode(sub);
    return *this;
}

void XMLTree::add_subnodes(AList<XMLTree> const &subs)
{
    AList<XMLTree> const copy(subs);
    own().children_for_change().append(copy);
}

unsigned int XMLTree::remove_subnodes(AString const &tag)
{
    if (!has_subnodes(tag))
        return 0;
    AString const wanted(tag);
    return own().children_for_change().remove_matches(
        [&wanted](XMLTree const &child) { return child.has_tag(wanted); });
}

void XMLTree::set_content(AString const &text)
{
    XMLValue &value = own();
    value.content = text.deep_copy();
    value.children_for_change().clear();
}

void XMLTree::set_subnode(XMLTree const &sub)
{
    XMLTree copy(sub); // it may be a part of this tree
    XMLTree *const child = get_modifiable_subnode(copy.get_tag());
    if (!child) {
        add_subnode(copy);
        return;
    }
    XMLValue &value = child->own();
    value.content = copy.get_content();
    value.children_for_change() = copy.own().children_for_change();
}

void XMLTree::set_subnode(AString const &tag, AString const &content)
{
    set_subnode(XMLTree(tag, content));
}

void XMLTree::set_subnode(AString const &tag, AList<XMLTree> const &subs)
{
    set_subnode(XMLTree(tag, subs));
}
