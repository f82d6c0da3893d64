// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_parse_engine.h"

#include <cstddef>
#include <functional>

/// Cuts the bytes of one connection into messages.
/// Thread: the server's.
class VeskReader
{
public:
    /// The longest message, from the "<" of its root tag to the ">" of the closing one.
    static constexpr unsigned int longest_message = 65536;

    VeskReader();

    /// Hands on each message that is whole now. False when the stream cannot be read any further,
    /// since a message is malformed or too long; the connection is then of no use.
    bool feed(
        char const *data, std::size_t size, std::function<void(XMLTree const &)> const &message);

private:
    XMLParseEngine engine;
};
