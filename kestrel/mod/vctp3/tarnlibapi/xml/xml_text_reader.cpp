// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_escape_p.h"
#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_reader_p.h"

#include <algorithm>
#include <string>

namespace {

constexpr std::size_t nowhere = std::u32string_view::npos;

/// The wide set: also 0 and every code point from 256 up.
bool is_space(char32_t c)
{
    return AChar(c).is_space();
}

bool all_space(std::u32string_view text)
{
    return std::all_of(text.begin(), text.end(), is_space);
}

std::u32string_view strip(std::u32string_view text)
{
    while (!text.empty() && is_space(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && is_space(text.back()))
        text.remove_suffix(1);
    return text;
}

/// Takes the first piece between separators off \a text; empty when there is none left.
/// These separators are narrower than white space.
std::u32string_view take_piece(std::u32string_view &text)
{
    constexpr std::u32string_view separators = U" \t\n\r\v\f";
    text.remove_prefix(std::min(text.find_first_not_of(separators), text.size()));
    std::u32string_view const piece = text.substr(0, text.find_first_of(separators));
    text.remove_prefix(piece.size());
    return piece;
}

bool is_name(std::u32string_view text)
{
    auto const is_letter
        = [](char32_t c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); };
    return !text.empty() && is_letter(text.front())
        && std::all_of(text.begin(), text.end(),
            [is_letter](char32_t c) { return is_letter(c) || (c >= '0' && c <= '9') || c == '_'; });
}

} // namespace

XMLTextReader::XMLTextReader(std::u32string_view of, XMLDraft &into)
    : text(strip(of))
    , draft(into)
{
}

bool XMLTextReader::read()
{
    bool rooted = false;
    for (;;) {
        Token const token = next_token();
        if (token.kind == Token::Bad)
            return false;
        std::u32string_view const between = text.substr(position, token.begin - position);
        bool const closes = token.kind == Token::Close;
        // Text in front of a child makes its parent mixed, and that is an error.
        if ((!draft.has_open() || !closes) && !all_space(between))
            return false;
        if (token.kind == Token::End)
            return rooted;
        if (rooted || (closes && !draft.has_open()))
            return false;
        if (!closes)
            push(token);
        if (token.kind != Token::Open) {
            if (!pop(token, closes ? between : std::u32string_view()))
                return false;
            rooted = !draft.has_open();
        }
        position = token.end;
    }
}

XMLTextReader::Token XMLTextReader::next_token()
{
    Token token;
    attributes.clear();
    std::size_t const less = text.find(U'<', position);
    std::size_t const greater = text.find(U'>', position);
    if (less == nowhere && greater == nowhere) {
        token.kind = Token::End;
        token.begin = token.end = text.size();
    } else if (less != nowhere && greater != nowhere && less < greater) {
        token.begin = less;
        token.end = greater + 1;
        token.kind = read_inside(strip(text.substr(less + 1, greater - less - 1)), token);
    }
    return token;
}

XMLTextReader::Token::Kind XMLTextReader::read_inside(std::u32string_view inside, Token &token)
{
    if (inside.empty())
        return Token::Bad;
    Token::Kind kind = Token::Open;
    if (inside.front() == U'/') {
        if (inside.back() == U'/')
            return Token::Bad;
        kind = Token::Close;
        inside.remove_prefix(1);
    } else if (inside.back() == U'/') {
        kind = Token::SelfClosing;
        inside.remove_suffix(1);
    }
    inside = strip(inside);
    token.name = take_piece(inside);
    if (!is_name(token.name))
        return Token::Bad;
    for (auto piece = take_piece(inside); !piece.empty(); piece = take_piece(inside)) {
        if (!read_attribute(piece))
            return Token::Bad;
    }
    return kind;
}

bool XMLTextReader::read_attribute(std::u32string_view piece)
{
    std::size_t const equals = piece.find(U'=');
    if (equals == nowhere || piece.find(U'=', equals + 1) != nowhere)
        return false;
    std::u32string_view value = piece.substr(equals + 1);
    if (!value.empty() && value.front() == U'"')
        value.remove_prefix(1);
    if (!value.empty() && value.back() == U'"')
        value.remove_suffix(1);
    attributes.emplace_back(piece.substr(0, equals), value);
    return true;
}

void XMLTextReader::push(Token const &token)
{
    draft.push(std::string(token.name.begin(), token.name.end()));
    for (auto const &[name, value] : attributes)
        draft.add_attribute(name, value);
}

bool XMLTextReader::pop(Token const &token, std::u32string_view between)
{
    if (!draft.top_is(token.name))
        return false;
    if (!draft.top_has_children())
        draft.top().text = unescape(between);
    else if (!all_space(between))
        return false;
    draft.pop();
    return true;
}

XMLSlice XMLTextReader::unescape(std::u32string_view content)
{
    std::uint32_t const start = draft.kept_so_far();
    while (!content.empty()) {
        std::size_t const plain = std::min(content.find(U'&'), content.size());
        draft.keep(content.substr(0, plain));
        content.remove_prefix(plain);
        if (content.empty())
            break;
        auto const stands_here = [content](XMLEscape const &escape) {
            return content.size() >= escape.entity.size()
                && std::equal(escape.entity.begin(), escape.entity.end(), content.begin());
        };
        auto const escape = std::find_if(xml_escapes.begin(), xml_escapes.end(), stands_here);
        bool const known = escape != xml_escapes.end();
        draft.keep(std::u32string_view(known ? &escape->character : content.data(), 1));
        content.remove_prefix(known ? escape->entity.size() : 1);
    }
    return draft.kept_from(start);
}
