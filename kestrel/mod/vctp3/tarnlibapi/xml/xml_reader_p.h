// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/tarn_export.h"
#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_draft_p.h"

#include <array>
#include <string_view>
#include <utility>
#include <vector>

/// What a reader of bytes remembers between messages: which name followed which, under which
/// parent. Most streams repeat a few kinds of messages, so the guess is mostly right, and a name
/// that is guessed need not be measured and looked up.
class XMLNameMemory
{
public:
    /// The place of the guess for the element behind and inside those with the given hints.
    XMLNameEntry const *&guess(unsigned int before, unsigned int parent)
    {
        return guesses[(before + parent * 37) % guesses.size()];
    }

private:
    std::array<XMLNameEntry const *, 1024> guesses{};
};

/// Turns the text of one element into a tree. Keeps its scratch memory for the next one.
/// Thread: one at a time.
class TARN_AUTOTEST_EXPORT XMLReader
{
public:
    /// Bytes behind a message that must be readable; what they hold is of no effect.
    static constexpr std::size_t slack = XMLNameEntry::reach;

    /// Null when the text is not one well-formed element. Text that can be read as UTF-8 only in
    /// part counts up to where that ends.
    XMLTree read_utf8(std::string_view bytes);
    XMLTree read(AString const &text);

private:
    XMLDraft draft;
    XMLNameMemory memory;
    std::vector<char32_t> code_points;
};

/// Reads all of the dialect.
class XMLTextReader
{
public:
    XMLTextReader(std::u32string_view of, XMLDraft &into);
    bool read();

private:
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
        std::size_t begin = 0; // place of "<"
        std::size_t end = 0; // place behind ">"
        std::u32string_view name;
    };
    using Attribute = std::pair<std::u32string_view, std::u32string_view>;

    Token next_token();
    Token::Kind read_inside(std::u32string_view inside, Token &token);
    bool read_attribute(std::u32string_view piece);
    void push(Token const &token);
    bool pop(Token const &token, std::u32string_view between);
    XMLSlice unescape(std::u32string_view content);

    std::u32string_view const text;
    XMLDraft &draft;
    std::size_t position = 0;
    std::vector<Attribute> attributes; // of the last token
};

/// Reads a message as it is mostly written, straight from the bytes: plain tags without attributes,
/// white space in ASCII, valid UTF-8. True when it was read; the draft is then complete. False says
/// nothing about the message.
/// \a bytes begin with "<" and end with ">", and `XMLReader::slack` bytes follow them.
bool xml_read_plain(std::string_view bytes, XMLDraft &draft, XMLNameMemory &memory);
