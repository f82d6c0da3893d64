// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/astring.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/astring_list.h"
#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_tree.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// The rules of the dialect one after the other, on strings, with no thought of speed. What the
/// parser makes of a text is held against this in tests and fuzzers.
namespace LiteralXml {

struct Element
{
    AString tag;
    std::map<AString, AString> attributes;
    AString content;
    std::vector<Element> children;
};

struct Token
{
    enum Kind
    {
        End,
        Bad,
        Open,
        Close,
        SelfClosing
    };
    Kind kind = Bad;
    long long begin = 0;
    long long end = 0;
    AString tag;
    std::map<AString, AString> attributes;
};

inline bool is_ascii_letter(AChar c)
{
    return (c.ord() >= 'A' && c.ord() <= 'Z') || (c.ord() >= 'a' && c.ord() <= 'z');
}

inline bool is_tag_name(AString const &name)
{
    if (!is_ascii_letter(name.firstchar()))
        return false;
    for (AChar const c : name) {
        if (!is_ascii_letter(c) && !c.is_digit() && c != AChar(U'_'))
            return false;
    }
    return true;
}

/// A token without its place: `Bad`, or a kind with tag and attributes.
inline Token read_inside(AString inside)
{
    Token token;
    inside = inside.despace();
    if (inside.empty())
        return token;
    bool const closing = inside.firstchar() == AChar(U'/');
    bool const self_closing = inside.lastchar() == AChar(U'/');
    if (closing && self_closing)
        return token;
    if (closing)
        inside = inside.remove_front(1).despace_front();
    if (self_closing)
        inside = inside.remove_end(1).despace_end();
    if (inside.empty())
        return token;
    AStringList pieces = inside.split_any(AString::l1(" \t\n\r\v\f"), false);
    if (pieces.empty())
        return token;
    token.tag = pieces.pop_front();
    if (!is_tag_name(token.tag))
        return token;
    while (!pieces.empty()) {
        AStringList parts = pieces.pop_front().split(AString::l1("="), true);
        if (parts.size() != 2)
            return token;
        AString const name = parts.pop_front();
        AString const value = parts.pop_front();
        AString const quote = AString::l1("\"");
        token.attributes[name] = value.remove_prefix(quote).remove_suffix(quote);
    }
    token.kind = closing ? Token::Close : self_closing ? Token::SelfClosing : Token::Open;
    return token;
}

inline Token read_token(AString const &text, long long position)
{
    long long const less = text.find(AChar(U'<'), position);
    long long const greater = text.find(AChar(U'>'), position);
    Token token;
    if (less < 0 && greater < 0) {
        token.kind = Token::End;
        token.begin = static_cast<long long>(text.length());
        return token;
    }
    if (less < 0 || greater < less)
        return token;
    token = read_inside(text.mid(static_cast<unsigned long long>(less + 1),
        static_cast<unsigned long long>(greater - less - 1)));
    token.begin = less;
    token.end = greater + 1;
    return token;
}

inline AString unescape(AString const &text)
{
    static std::vector<std::pair<AString, AString>> const table{
        {AString::l1("'"), AString::l1("&apos;")},
        {AString::l1("<"), AString::l1("&lt;")},
        {AString::l1(">"), AString::l1("&gt;")},
        {AString::l1("\""), AString::l1("&quot;")},
        {AString::l1("&"), AString::l1("&amp;")},
    };
    AStringList pieces;
    AString rest = text;
    for (;;) {
        long long earliest = -1;
        std::pair<AString, AString> const *row = nullptr;
        for (auto const &candidate : table) {
            long long const place = rest.find(candidate.second);
            if (place >= 0 && (earliest < 0 || place < earliest)) {
                earliest = place;
                row = &candidate;
            }
        }
        if (!row)
            break;
        pieces.push_back(rest.left(static_cast<unsigned long long>(earliest)));
        pieces.push_back(row->first);
        rest = rest.remove_front(static_cast<unsigned long long>(earliest) + row->second.length());
    }
    pieces.push_back(rest);
    return pieces.join(AString());
}

/// The element in the text, or nothing where that is an error.
inline std::optional<Element> parse(AString text)
{
    text = text.despace();
    std::vector<Element> stack;
    std::optional<Element> root;
    long long position = 0;
    for (;;) {
        Token const token = read_token(text, position);
        if (token.kind == Token::Bad)
            return {};
        AString const between = text.mid(static_cast<unsigned long long>(position),
            static_cast<unsigned long long>(token.begin - position));
        if (!stack.empty())
            stack.back().content += unescape(between);
        else if (!between.all_space())
            return {};
        if (token.kind == Token::End)
            return root;
        if (token.kind == Token::Open || token.kind == Token::SelfClosing) {
            if (root)
                return {};
            Element frame;
            frame.tag = token.tag;
            frame.attributes = token.attributes;
            stack.push_back(frame);
        }
        if (token.kind == Token::Close || token.kind == Token::SelfClosing) {
            if (root || stack.empty())
                return {};
            Element frame = std::move(stack.back());
            stack.pop_back();
            if (!(frame.tag == token.tag))
                return {};
            if (!frame.children.empty()) {
                if (!frame.content.all_space())
                    return {};
                frame.content = AString();
            }
            if (stack.empty())
                root = std::move(frame);
            else
                stack.back().children.push_back(std::move(frame));
        }
        position = token.end;
    }
}

/// Where the opening or the closing form of a tag stands.
struct Form
{
    std::size_t begin;
    std::size_t end;
};

/// The first such form from a place on.
inline std::optional<Form> find_form(
    std::string_view bytes, std::size_t from, std::string_view tag, bool closing)
{
    for (std::size_t begin = from; begin < bytes.size(); ++begin) {
        std::size_t place = begin;
        auto const take = [&](std::string_view text) {
            bool const there = bytes.substr(place).starts_with(text);
            place += there ? text.size() : 0;
            return there;
        };
        auto const skip = [&] {
            while (place < bytes.size() && std::strchr("\x08\x09\x0a\x0d\x20", bytes[place])
                && bytes[place] != 0)
                ++place;
            return true;
        };
        if (take("<") && skip() && (!closing || (take("/") && skip())) && take(tag) && skip()
            && take(">"))
            return Form{begin, place};
    }
    return {};
}

/// The engine in the same spirit: every search begins at the first byte held.
class Engine
{
public:
    Engine(std::size_t of_size, std::vector<std::string> root_tags)
        : size(of_size)
        , tags(std::move(root_tags))
    {
    }
    std::size_t input(std::string_view bytes)
    {
        if (error)
            return bytes.size();
        std::size_t const taken = std::min(bytes.size(), size - held.size());
        held += bytes.substr(0, taken);
        return taken;
    }
    std::optional<Element> get_xml()
    {
        if (error)
            return {};
        std::optional<Form> opening;
        std::string tag;
        for (std::string const &candidate : tags) {
            std::optional<Form> const form = find_form(held, 0, candidate, false);
            if (form && (!opening || form->begin < opening->begin)) {
                opening = form;
                tag = candidate;
            }
        }
        if (!opening)
            return {};
        std::optional<Form> const closing = find_form(held, opening->begin, tag, true);
        if (!closing)
            return {};
        std::optional<Element> const element = parse(
            AString::from_utf8(held.data() + opening->begin, closing->end - opening->begin));
        error = !element;
        if (element)
            held.erase(0, closing->end);
        return element;
    }

    std::size_t size;
    std::vector<std::string> tags;
    std::string held;
    bool error = false;
};

/// Whether a tree has the fields of an element, by each of the ways to ask it.
inline bool same(XMLTree const &tree, Element const &element)
{
    if (tree.is_null() || !(tree.get_tag() == element.tag) || !tree.has_tag(element.tag)
        || !(tree.get_content() == element.content) || tree.attr() != element.attributes
        || tree.count_subnodes() != element.children.size()
        || tree.has_subnodes() == element.children.empty())
        return false;
    auto expected = element.children.begin();
    for (XMLTree const &child : tree.children()) {
        if (expected == element.children.end() || !same(child, *expected++))
            return false;
    }
    if (expected != element.children.end())
        return false;
    expected = element.children.begin();
    for (XMLTree const &child : tree.get_subnodes()) {
        if (expected == element.children.end() || !(child.get_tag() == expected->tag)
            || !(child.get_content() == expected->content) || child.attr() != expected->attributes)
            return false;
        ++expected;
    }
    return expected == element.children.end();
}

/// Whether the parser's answer is the right one for the text.
inline bool agrees(AString const &text, XMLTree const &tree)
{
    std::optional<Element> const element = parse(text);
    return element ? same(tree, *element) : tree.is_null();
}

} // namespace LiteralXml
