// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/protocol/words_p.h"
#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_tree.h"

#include <string>
#include <string_view>

namespace VCTP3 {

/// The message of one command: the transaction id, then the command with its parameters in the
/// order of the calls. It grows as the text that goes to the wire, since a tree of it would cost
/// many times as much; a tree is made when somebody wants to see it.
class CommandTree
{
public:
    CommandTree(AString const &xid, Word command);

    /// Leaves, and whatever else `write_text` knows.
    void add(Word tag, AString const &value);
    void add(Word tag, int value);
    void add(Word tag, unsigned int value);
    void add(Word tag, unsigned short value) { add(tag, static_cast<unsigned int>(value)); }
    void add(Word tag, unsigned char value) { add(tag, static_cast<unsigned int>(value)); }
    void add(Word tag, unsigned long long value);
    void add(Word tag, bool value);
    template <typename T> void add(Word tag, T const &value) { write_text(*this, tag, value); }
    void add_speed(Word tag, int value);
    template <typename T> void add_if(bool present, Word tag, T const &value)
    {
        if (present)
            add(tag, value);
    }
    void add_speed_if(bool present, Word tag, int value)
    {
        if (present)
            add_speed(tag, value);
    }
    /// A flag is an empty element, there only when it is raised.
    void add_flag(Word tag, bool raised);

    /// An element with what is added until it is closed; with nothing it becomes an empty one.
    void open(Word tag);
    void close(Word tag);

    /// Closes what the constructor has opened; nothing can be added behind it.
    std::string_view finish();
    /// The message as a tree.
    XMLTree tree();

private:
    void new_line();
    void leaf(Word tag, std::string_view plain);
    void escape(AString const &value);
    void escape(AChar const *from, AChar const *end);
    char *grow(std::size_t more);
    void end_tag(Word tag);

    std::string text;
    Word const name;
    bool just_opened = false; // nothing stands behind the last opening tag
    bool finished = false;
};

} // namespace VCTP3
