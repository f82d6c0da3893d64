// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/tarn_export.h"
#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_draft_p.h"

#include <string_view>

/// Turns the text of one element into a tree. Keeps its scratch memory for the next one.
/// Thread: one at a time.
class TARN_AUTOTEST_EXPORT XMLReader
{
public:
    /// Null when the text is not one well-formed element. Text that can be read as UTF-8 only in
    /// part counts up to where that ends.
    XMLTree read_utf8(std::string_view bytes);
    XMLTree read(AString const &text);

private:
    XMLDraft draft;
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

/// Reads messages as they are mostly written, straight from the bytes: plain tags without
/// attributes, white space in ASCII, valid UTF-8. It gives up on all else, which says nothing
/// about the message.
class XMLByteReader
{
public:
    /// \a of begins with "<" and ends with ">".
    XMLByteReader(std::string_view of, XMLDraft &into)
        : begin(of.data())
        , end(of.data() + of.size())
        , draft(into)
    {
    }
    /// True when the message was read; the draft is then complete.
    bool read();

private:
    bool read_closing(char const *&p);
    bool read_opening(char const *&p);
    bool read_content(char const *&p);
    bool widen(char const *p, char const *to);

    char const *const begin;
    char const *const end;
    XMLDraft &draft;
};
