// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/protocol/leaf_xml.h"

#include "kestrel/mod/vctp3/tarnlibapi/base/astring_format.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/leaf_xml_p.h"
#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_document_p.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <span>
#include <string_view>

namespace VCTP3 {

namespace {

/// The text of a parsed leaf where it lies, so that no string has to be made of it. Empty for any
/// other element, and for the few that lie across two runs.
std::span<AChar const> text_in_place(XMLTree const &element)
{
    XMLNode const *node = XMLAccess::node(element);
    AChar const *run = node ? node->document()->run(node->text) : nullptr;
    return run ? std::span(run, node->text.length) : std::span<AChar const>();
}

/// Reads what a server writes, digits and nothing else. They are few enough that the number cannot
/// overflow.
bool plain_number(std::span<AChar const> text, unsigned long long *out)
{
    if (text.empty() || text.size() > 18)
        return false;
    unsigned long long value = 0;
    for (AChar digit : text) {
        if (!digit.is_digit())
            return false;
        value = value * 10 + (digit.ord() - U'0');
    }
    *out = value;
    return true;
}

bool is_text(std::span<AChar const> text, std::u32string_view expected)
{
    return std::equal(text.begin(), text.end(), expected.begin(), expected.end(),
        [](AChar a, char32_t b) { return a.ord() == b; });
}

bool bad_value(AString *error, XMLTree const &element, AString const &text)
{
    return fail_reading(
        error, AString::l1("Tag %1 contains invalid value '%2'").arg(element.get_tag()).arg(text));
}

template <typename T>
bool read_number(XMLTree const &parent, AString const &tag, bool (AString::*convert)(T *) const,
    T *out, AString *error)
{
    XMLTree const *element = find_element(parent, tag, error);
    if (!element)
        return false;
    unsigned long long plain = 0;
    if (plain_number(text_in_place(*element), &plain)
        && plain <= static_cast<unsigned long long>(std::numeric_limits<T>::max())) {
        *out = static_cast<T>(plain);
        return true;
    }
    AString const text = element->get_content().despace();
    return (text.*convert)(out) || bad_value(error, *element, text);
}

EnumString const &boolean_names()
{
    static constexpr EnumString::ByLatin1 rows[] = {{0, "false"}, {1, "true"}};
    static EnumString const table(rows, std::size(rows), -1, AString());
    return table;
}

} // namespace

bool fail_reading(AString *error, AString const &text)
{
    if (error)
        *error = text;
    return false;
}

XMLTree const *find_element(XMLTree const &parent, AString const &tag, AString *error)
{
    XMLNode const *node = XMLAccess::node(parent);
    if (node && node->named && &node->name->text == &tag)
        return &parent; // the caller has found it, by a word of the protocol
    if (parent.has_tag(tag))
        return &parent;
    XMLTree const *found = nullptr;
    for (XMLTree const &child : parent.children()) {
        if (!child.has_tag(tag))
            continue;
        if (found) {
            fail_reading(error,
                AString::l1("More than one tag '%1' found within '%2'")
                    .arg(tag)
                    .arg(parent.get_tag()));
            return nullptr;
        }
        found = &child;
    }
    if (!found)
        fail_reading(
            error, AString::l1("Tag '%1' not found within '%2'").arg(tag).arg(parent.get_tag()));
    return found;
}

bool read_element(XMLTree const &parent, AString const &tag, AString *out, AString *error)
{
    XMLTree const *element = find_element(parent, tag, error);
    if (!element)
        return false;
    *out = element->get_content();
    return true;
}

bool read_element(XMLTree const &parent, AString const &tag, int *out, AString *error)
{
    return read_number(parent, tag, &AString::to_int, out, error);
}

bool read_element(XMLTree const &parent, AString const &tag, unsigned int *out, AString *error)
{
    return read_number(parent, tag, &AString::to_unsigned, out, error);
}

bool read_element(XMLTree const &parent, AString const &tag, unsigned short *out, AString *error)
{
    return read_number(parent, tag, &AString::to_unsigned_short, out, error);
}

bool read_element(XMLTree const &parent, AString const &tag, unsigned char *out, AString *error)
{
    return read_number(parent, tag, &AString::to_uint8_t, out, error);
}

bool read_element(
    XMLTree const &parent, AString const &tag, unsigned long long *out, AString *error)
{
    return read_number(parent, tag, &AString::to_unsigned_long_long, out, error);
}

bool read_element(XMLTree const &parent, AString const &tag, bool *out, AString *error)
{
    XMLTree const *element = find_element(parent, tag, error);
    if (!element)
        return false;
    auto const plain = text_in_place(*element);
    if (is_text(plain, U"true") || is_text(plain, U"false")) {
        *out = plain.size() == 4;
        return true;
    }
    AString const text = element->get_content().despace();
    int named = 0;
    long long number = 0;
    unsigned long long large = 0;
    if (boolean_names().valid_name(text, &named))
        *out = named != 0;
    else if (text.to_long_long(&number))
        *out = number != 0;
    else if (text.to_unsigned_long_long(&large))
        *out = large != 0;
    else
        return fail_reading(error,
            AString::l1("Tag %1 contains invalid %3 value '%2'")
                .arg(element->get_tag())
                .arg(text)
                .arg(AString::l1("boolean")));
    return true;
}

bool read_speed(XMLTree const &parent, AString const &tag, int *out, AString *error)
{
    return read_number(parent, tag, &AString::to_speed, out, error);
}

bool read_enum_value(XMLTree const &parent, AString const &tag, EnumString const &names,
    char const *type, int *out, AString *error)
{
    XMLTree const *element = find_element(parent, tag, error);
    if (!element)
        return false;
    AString const content = element->get_content();
    // Names have no space in them, and servers write none around them.
    if (names.valid_name(content, out) || names.valid_name(content.despace(), out))
        return true;
    // Servers' logs know this text by the tag around the element and by the name of the type.
    return fail_reading(error,
        AString::l1("Tag %1 contains invalid value '%2'")
            .arg(parent.get_tag())
            .arg(AString::l1(type)));
}

XMLTree write_element(AString const &tag, AString const &value)
{
    return XMLTree(tag, value);
}

XMLTree write_element(AString const &tag, int value)
{
    return XMLTree(tag, static_cast<long long>(value));
}

XMLTree write_element(AString const &tag, unsigned int value)
{
    return XMLTree(tag, value);
}

XMLTree write_element(AString const &tag, unsigned short value)
{
    return XMLTree(tag, static_cast<unsigned int>(value));
}

XMLTree write_element(AString const &tag, unsigned char value)
{
    return XMLTree(tag, static_cast<unsigned int>(value));
}

XMLTree write_element(AString const &tag, unsigned long long value)
{
    return XMLTree(tag, value);
}

XMLTree write_element(AString const &tag, bool value)
{
    return XMLTree(tag, boolean_names().to_name(value ? 1 : 0));
}

XMLTree write_speed(AString const &tag, int value)
{
    return XMLTree(tag, AString::from_speed(value, speed_precision));
}

} // namespace VCTP3
