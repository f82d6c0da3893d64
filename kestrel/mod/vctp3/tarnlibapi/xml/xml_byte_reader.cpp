// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_escape_p.h"
#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_reader_p.h"

#include <array>
#include <bit>
#include <cstring>

namespace {

enum Class : std::uint8_t
{
    Letter = 1,
    NameRest = 2,
    Space = 4
};

/// What each byte may be part of.
constexpr std::array<std::uint8_t, 256> make_classes()
{
    std::array<std::uint8_t, 256> classes{};
    for (unsigned int c = 0; c < 128; ++c) {
        bool const letter = (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
        bool const name = letter || (c >= '0' && c <= '9') || c == '_';
        bool const space = c == ' ' || (c >= '\t' && c <= '\r');
        classes[c] = static_cast<std::uint8_t>(
            (letter ? Letter : 0) | (name ? NameRest : 0) | (space ? Space : 0));
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

/// Eight bytes, the first one lowest.
std::uint64_t load(char const *p)
{
    std::uint64_t eight;
    std::memcpy(&eight, p, 8);
    if constexpr (std::endian::native == std::endian::big)
        eight = __builtin_bswap64(eight);
    return eight;
}

/// Which of eight bytes does not stand for itself in content: "<", ">", "&", 0 and all from 128
/// up. The highest bit of the first such byte is set; those of later bytes mean nothing.
std::uint64_t first_mark(std::uint64_t eight)
{
    constexpr std::uint64_t ones = 0x0101010101010101u;
    constexpr std::uint64_t highs = 0x80 * ones;
    auto const zeros = [](std::uint64_t bytes) { return (bytes - ones) & ~bytes; };
    // "<" and ">" differ in one bit.
    std::uint64_t const brackets = (eight | 2 * ones) ^ '>' * ones;
    return (zeros(brackets) | zeros(eight ^ '&' * ones) | zeros(eight) | eight) & highs;
}

/// Reads one message. Each method that takes a place reads what stands there and returns the place
/// behind it, or null to give up. Every loop over bytes ends at the last byte, ">", at the latest:
/// it is no space, no part of a name and a mark in content.
class ByteReader
{
public:
    ByteReader(std::string_view of, XMLDraft &into, XMLNameMemory &with)
        : begin(of.data())
        , end(of.data() + of.size())
        , draft(into)
        , memory(with)
    {
    }
    bool read();

private:
    char const *read_closing(char const *p);
    char const *read_opening(char const *p);
    char const *read_content(char const *p);
    char const *widen(char const *p);
    char const *read_entity(char const *p, AChar *to) const;
    char const *read_multibyte(char const *p, AChar *to) const;

    char const *const begin;
    char const *const end;
    XMLDraft &draft;
    XMLNameMemory &memory;
    unsigned int last = 0; // hint of the element that was opened last
};

bool ByteReader::read()
{
    char const *p = begin;
    while (p && p != end) {
        p = p[1] == '/' ? read_closing(p) : read_opening(p);
        if (!draft.has_open())
            return p == end;
        if (!p || p == end)
            return false;
        if (p[0] == '\r' && p[1] == '\n')
            p += 2;
        if (*p != '<') {
            p = skip(Space, p);
            if (*p != '<')
                return false;
        }
    }
    return false;
}

char const *ByteReader::read_closing(char const *p)
{
    if (!draft.has_open())
        return nullptr;
    XMLNode const &node = draft.top();
    std::size_t length = 0;
    if (node.named) {
        if (!node.name->stands_at(p + 2))
            return nullptr;
        length = node.name->length;
    } else {
        length = static_cast<std::size_t>(skip(NameRest, p + 2) - (p + 2));
        if (p[2 + length] != '>' || !draft.top_is(std::string_view(p + 2, length)))
            return nullptr;
    }
    draft.pop();
    return p + 2 + length + 1;
}

char const *ByteReader::read_opening(char const *p)
{
    XMLNameEntry const *&guess = memory.guess(last, draft.has_open() ? draft.top().hint : 0);
    if (guess && guess->stands_at(p + 1)) {
        last = draft.push(guess).hint;
        return read_content(p + 1 + guess->length + 1);
    }
    if (!is(Letter, p[1]))
        return nullptr;
    char const *const behind = skip(NameRest, p + 1);
    XMLNode const &node = draft.push({p + 1, static_cast<std::size_t>(behind - p - 1)});
    last = node.hint;
    if (node.named)
        guess = node.name;
    if (*behind == '>')
        return read_content(behind + 1);
    p = skip(Space, behind);
    if (*p != '/' || p[1] != '>')
        return nullptr;
    draft.pop();
    return p + 2;
}

/// Behind an opening tag: takes the text if a closing tag follows it, and that too.
char const *ByteReader::read_content(char const *p)
{
    if (p == end || (p[0] == '\r' && p[1] == '\n' && p[2] == '<' && p[3] != '/'))
        return p;
    if (*p == '<')
        return p[1] == '/' ? read_closing(p) : p;
    std::uint32_t const start = draft.kept_so_far();
    char const *const mark = widen(p);
    if (mark && mark[1] == '/') {
        draft.top().text = draft.kept_from(start);
        return read_closing(mark);
    }
    draft.keep_to(draft.room() - (draft.kept_so_far() - start));
    return p; // where only white space is taken
}

/// Keeps text up to "<" and returns where that stands.
char const *ByteReader::widen(char const *p)
{
    AChar *to = draft.room();
    for (;;) {
        std::uint64_t const eight = load(p);
        for (unsigned int i = 0; i < 8; ++i)
            to[i] = AChar(static_cast<unsigned char>(p[i]));
        std::uint64_t const mark = first_mark(eight);
        std::size_t const plain
            = mark == 0 ? 8 : static_cast<std::size_t>(std::countr_zero(mark)) / 8;
        to += plain;
        p += plain;
        if (mark == 0)
            continue;
        if (*p == '<')
            break;
        p = *p == '&' ? read_entity(p, to) : read_multibyte(p, to);
        if (!p)
            return nullptr;
        ++to;
    }
    draft.keep_to(to);
    return p;
}

char const *ByteReader::read_entity(char const *p, AChar *to) const
{
    std::string_view const rest(p, static_cast<std::size_t>(end - p));
    for (XMLEscape const &escape : xml_escapes) {
        if (rest.starts_with(escape.entity)) {
            *to = AChar(escape.character);
            return p + escape.entity.size();
        }
    }
    *to = AChar(U'&');
    return p + 1;
}

char const *ByteReader::read_multibyte(char const *p, AChar *to) const
{
    unsigned long long length = 0;
    // ">" is an error. An overlong form may stand for a mark, which only the other reader sees.
    if (!AChar::consume_utf8(p, static_cast<std::size_t>(end - p), to, &length) || to->is_ascii())
        return nullptr;
    return p + length;
}

} // namespace

bool xml_read_plain(std::string_view bytes, XMLDraft &draft, XMLNameMemory &memory)
{
    return ByteReader(bytes, draft, memory).read();
}
