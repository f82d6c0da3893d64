// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/tarn_export.h"
#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_tree.h"

#include <memory>

/// Cuts a stream of bytes into messages and parses them. A message begins at the first opening
/// tag of a configured name and ends with the first closing tag of that name; the tags carry no
/// attributes, and a self-closed tag is not a message. What stands before a message is dropped.
///
/// The buffer has a fixed size. A message that does not fit never becomes whole: an owner that
/// finds no space left and no message must give up, see `available_buffer_space`.
/// Thread: one at a time.
class TARN_EXPORT XMLParseEngine
{
public:
    /// \a buffer_size in bytes, the longest possible message. 0: an assertion, and 1024.
    explicit XMLParseEngine(unsigned long long buffer_size);
    ~XMLParseEngine();
    XMLParseEngine(XMLParseEngine const &) = delete;
    XMLParseEngine &operator=(XMLParseEngine const &) = delete;

    /// Adds the name of a root tag. Of two names that fit the same place the one added first wins.
    /// Null, or a text with "<" or ">": an assertion, and nothing is added.
    void config_tag(char const *tag);

    /// Takes as many bytes as fit and returns their number. In the error state it takes nothing
    /// and returns \a count.
    unsigned long long input_bytes(unsigned long long count, void const *data);
    /// Bytes that the next `input_bytes` would take.
    unsigned long long available_buffer_space() const;

    /// The next whole message. Null when none is whole yet, and after an error.
    XMLTree get_xml();
    /// Whether a message could not be parsed. It stays so until `reset`.
    bool has_error() const;
    /// Length of the message that `get_xml` gave last, tags included; 0 if it gave none.
    unsigned long long last_message_bytes() const;

    /// Forgets all bytes and the error. The tags stay.
    void reset();

    /// How many bytes the search for messages has looked at, for tests.
    unsigned long long examined_bytes() const;

private:
    struct Private;
    std::unique_ptr<Private> d;
};
