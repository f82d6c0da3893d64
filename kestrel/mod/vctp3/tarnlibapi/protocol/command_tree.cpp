// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/protocol/command_tree_p.h"

#include "kestrel/mod/vctp3/tarnlibapi/base/astring_builder_p.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/leaf_xml_p.h"
#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_parse.h"

#include <charconv>

namespace VCTP3 {

namespace {

/// Most commands fit, so that their text is allocated once.
constexpr std::size_t usual_size = 480;

/// Decimal digits of a number, good until the next call on the same object.
struct Digits
{
    template <typename T> std::string_view of(T value)
    {
        auto const end = std::to_chars(room, room + sizeof(room), value).ptr;
        return {room, static_cast<std::size_t>(end - room)};
    }
    char room[24];
};

std::string_view entity(char32_t c)
{
    switch (c) {
    case U'\'':
        return "&apos;";
    case U'<':
        return "&lt;";
    case U'>':
        return "&gt;";
    case U'"':
        return "&quot;";
    case U'&':
        return "&amp;";
    default:
        return {};
    }
}

bool is_plain(char32_t c)
{
    return c < 0x80 && entity(c).empty();
}

} // namespace

CommandTree::CommandTree(AString const &xid, Word command)
    : name(command)
{
    text.reserve(usual_size);
    text += "<cmd>";
    add(Word::xid, xid);
    open(command);
}

/// Room for so many more bytes of text.
char *CommandTree::grow(std::size_t more)
{
    std::size_t const before = text.size();
    text.resize(before + more);
    return text.data() + before;
}

void CommandTree::new_line()
{
    text += "\r\n";
}

void CommandTree::end_tag(Word tag)
{
    std::string_view const bytes = word_bytes(tag);
    char *to = grow(bytes.size() + 3);
    *to++ = '<';
    *to++ = '/';
    to += bytes.copy(to, bytes.size());
    *to = '>';
}

void CommandTree::open(Word tag)
{
    std::string_view const bytes = word_bytes(tag);
    char *to = grow(bytes.size() + 4);
    *to++ = '\r';
    *to++ = '\n';
    *to++ = '<';
    to += bytes.copy(to, bytes.size());
    *to = '>';
    just_opened = true;
}

void CommandTree::close(Word tag)
{
    if (just_opened) {
        text.back() = ' ';
        text += "/>";
    } else {
        new_line();
        end_tag(tag);
    }
    just_opened = false;
}

void CommandTree::leaf(Word tag, std::string_view plain)
{
    open(tag);
    text += plain;
    end_tag(tag);
    just_opened = false;
}

void CommandTree::escape(AString const &value)
{
    AStringSegmentPosition at = value.get_first_position();
    AChar const *run = nullptr;
    while (unsigned long long const length = value.linear_access(at, &run)) {
        escape(run, run + length);
        value.get_next_position(&at, length);
    }
}

void CommandTree::escape(AChar const *from, AChar const *end)
{
    // Most texts are plain throughout; their bytes are put straight into place.
    char *to = grow(static_cast<std::size_t>(end - from));
    AChar const *c = from;
    for (; c != end && is_plain(c->ord()); ++c)
        *to++ = static_cast<char>(c->ord());
    text.resize(static_cast<std::size_t>(to - text.data()));
    for (; c != end; ++c) {
        if (std::string_view const known = entity(c->ord()); !known.empty()) {
            text += known;
        } else {
            char bytes[4];
            unsigned long long written = 0;
            if (c->to_utf8(bytes, sizeof(bytes), &written))
                text.append(bytes, written);
        }
    }
}

void CommandTree::add(Word tag, AString const &value)
{
    open(tag);
    if (value.empty()) {
        close(tag);
        return;
    }
    escape(value);
    end_tag(tag);
    just_opened = false;
}

void CommandTree::add(Word tag, int value)
{
    leaf(tag, Digits().of(value));
}

void CommandTree::add(Word tag, unsigned int value)
{
    leaf(tag, Digits().of(value));
}

void CommandTree::add(Word tag, unsigned long long value)
{
    leaf(tag, Digits().of(value));
}

void CommandTree::add(Word tag, bool value)
{
    leaf(tag, value ? "true" : "false");
}

void CommandTree::add_speed(Word tag, int value)
{
    if (value % 65536 != 0) {
        add(tag, AString::from_speed(value, speed_precision));
        return;
    }
    open(tag);
    text += Digits().of(value / 65536);
    text += 'X';
    end_tag(tag);
    just_opened = false;
}

void CommandTree::add_flag(Word tag, bool raised)
{
    if (!raised)
        return;
    open(tag);
    close(tag);
}

std::string_view CommandTree::finish()
{
    if (!finished) {
        close(name);
        new_line();
        end_tag(Word::cmd);
        finished = true;
    }
    return text;
}

XMLTree CommandTree::tree()
{
    std::string_view const bytes = finish();
    AStringBuilder whole(bytes.size());
    unsigned long long read = 0;
    // All that is written can be read again, but for a zero in a text, which stops the reader.
    while ((read += whole.append_utf8(bytes.data() + read, bytes.size() - read)) < bytes.size()) {
        whole.append(AChar());
        ++read;
    }
    return XMLParse(whole.take(), nullptr);
}

} // namespace VCTP3
