// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_escape_p.h"
#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_reader_p.h"

#include <array>
#include <cstring>

namespace {

enum Class : std::uint8_t
{
    Letter = 1,
    NameRest = 2,
    Space = 4,
    Plain = 8
};

/// What each byte may be part of. Plain bytes stand for themselves in content.
constexpr std::array<std::uint8_t, 256> make_classes()
{
    std::array<std::uint8_t, 256> classes{};
    for (unsigned int c = 1; c < 128; ++c) {
        bool const letter = (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
        bool const name = letter || (c >= '0' && c <= '9') || c == '_';
        bool const space = c == ' ' || (c >= '\t' && c <= '\r');
        bool const plain = c != '<' && c != '>' && c != '&';
        classes[c] = static_cast<std::uint8_t>((letter ? Letter : 0) | (name ? NameRest : 0)
            | (space ? Space : 0) | (plain ? Plain : 0));
    }
    return classes;
}
constexpr std::array<std::uint8_t, 256> classes = make_classes();

bool is(Class c, char byte)
{
    return (classes[static_cast<unsigned char>(byte)] & c) != 0;
}

char const *skip(Class c, char const *p)
{
    while (is(c, *p))
        ++p;
    return p;
}

} // namespace

// Every loop over bytes ends at the last byte, ">", at the latest.
bool XMLByteReader::read()
{
    char const *p = begin;
    for (;;) {
        if (!(p[1] == '/' ? read_closing(p) : read_opening(p)))
            return false;
        if (!draft.has_open() || p == end)
            return p == end && !draft.has_open();
        p = skip(Space, p);
        if (*p != '<')
            return false;
    }
}

bool XMLByteReader::read_closing(char const *&p)
{
    if (!draft.has_open())
        return false;
    XMLSlice const name = draft.top().source;
    if (end - p < static_cast<std::ptrdiff_t>(name.length) + 3)
        return false;
    if (std::memcmp(p + 2, begin + name.start, name.length) != 0 || p[2 + name.length] != '>')
        return false;
    p += name.length + 3;
    draft.pop();
    return true;
}

bool XMLByteReader::read_opening(char const *&p)
{
    char const *const name = p + 1;
    if (!is(Letter, *name))
        return false;
    p = skip(NameRest, name);
    draft.push({name, static_cast<std::size_t>(p - name)}, static_cast<std::size_t>(name - begin));
    if (*p == '>')
        return read_content(++p);
    p = skip(Space, p);
    if (*p != '/' || p[1] != '>')
        return false;
    p += 2;
    draft.pop();
    return true;
}

/// Behind an opening tag: takes the text if a closing tag follows it.
bool XMLByteReader::read_content(char const *&p)
{
    char const *const content = p;
    if (p == end)
        return false;
    p = skip(Space, p);
    if (*p == '<' && p[1] != '/')
        return true;
    auto const *const mark
        = static_cast<char const *>(std::memchr(p, '<', static_cast<std::size_t>(end - p)));
    p = mark;
    return mark && widen(content, mark) && read_closing(p);
}

bool XMLByteReader::widen(char const *p, char const *to)
{
    XMLSlice kept{static_cast<std::uint32_t>(draft.text.size()), 0};
    while (p != to) {
        if (is(Plain, *p)) {
            draft.text.push_back(static_cast<unsigned char>(*p++));
            continue;
        }
        std::string_view const rest(p, static_cast<std::size_t>(to - p));
        if (*p == '&') {
            char32_t character = U'&';
            std::size_t length = 1;
            for (XMLEscape const &escape : xml_escapes) {
                if (rest.starts_with(escape.entity)) {
                    character = escape.character;
                    length = escape.entity.size();
                }
            }
            draft.text.push_back(character);
            p += length;
            continue;
        }
        AChar c;
        unsigned long long length = 0;
        // An overlong form may stand for a mark, which only the other reader looks for.
        if (*p == '>' || !AChar::consume_utf8(p, rest.size(), &c, &length) || c.is_ascii())
            return false;
        draft.text.push_back(c.ord());
        p += length;
    }
    kept.length = static_cast<std::uint32_t>(draft.text.size()) - kept.start;
    draft.top().content = kept;
    return true;
}
