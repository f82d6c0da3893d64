// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/protocol/leaf_xml_p.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/record_xml.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/words_p.h"

#include <list>

/// Reading and writing of elements that hold any number of one kind of element. Children of any
/// other tag are passed over.
namespace VCTP3 {

/// "Tag ... contains %u subelements. The maximum is ...", for an element with that many items.
TARN_AUTOTEST_EXPORT bool check_count(
    XMLTree const &element, Word item, unsigned int capacity, AString *error);

/// Reads each item in order and hands it to \a add; the first bad one ends it with false.
template <typename Item, typename Add>
bool read_items(XMLTree const &element, Word item, AString *error, Add const &add)
{
    for (XMLTree const &child : element.children()) {
        if (!child.has_tag(word(item)))
            continue;
        Item value{};
        if (!read_element(child, word(item), &value, error))
            return false;
        add(value);
    }
    return true;
}

template <typename Set>
bool read_set(XMLTree const &parent, AString const &tag, Word item, Set *out, AString *error)
{
    XMLTree const *element = find_element(parent, tag, error);
    Set value;
    if (!element
        || !read_items<typename Set::value_type>(
            *element, item, error, [&value](auto const &one) { value.add_to_set(one); }))
        return false;
    *out = value;
    return true;
}

template <typename Vector>
bool read_vector(XMLTree const &parent, AString const &tag, Word item, Vector *out, AString *error)
{
    XMLTree const *element = find_element(parent, tag, error);
    if (!element || !check_count(*element, item, Vector::max_size, error))
        return false;
    Vector value;
    if (!read_items<typename Vector::value_type>(
            *element, item, error, [&value](auto const &one) { value.push_back(one); }))
        return false;
    *out = std::move(value);
    return true;
}

template <typename T>
bool read_list(
    XMLTree const &parent, AString const &tag, Word item, std::list<T> *out, AString *error)
{
    XMLTree const *element = find_element(parent, tag, error);
    std::list<T> value;
    if (!element || !read_items<T>(*element, item, error, [&value](auto const &one) {
            value.push_back(one);
        }))
        return false;
    *out = std::move(value);
    return true;
}

template <typename Items> XMLTree write_items(AString const &tag, Word item, Items const &items)
{
    AList<XMLTree> children;
    for (auto const &one : items)
        children.push_back(write_element(word(item), one));
    return XMLTree(tag, children);
}

} // namespace VCTP3
