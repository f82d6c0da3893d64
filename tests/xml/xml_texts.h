// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/astring.h"
#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_parse.h"
#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_reader_p.h"
#include "kestrel/mod/vctp3/tarnlibapi/xml/xml_tree.h"

#include <QByteArray>

/// Short forms for tests of the message text layer.
inline AString l1(char const *text)
{
    return AString::l1(text);
}

inline XMLTree parsed(char const *text)
{
    return XMLParse(AString::from_utf8(text));
}

inline QByteArray flat(XMLTree const &tree, XMLTree::FlattenStyle style = XMLTree::FlattenCompact,
    bool short_empty = true)
{
    return QByteArray::fromStdString(tree.flatten(style, short_empty).to_string());
}

/// What `send_utf8` hands out, joined.
inline QByteArray sent(XMLTree const &tree, XMLTree::FlattenStyle style = XMLTree::FlattenCompact,
    bool short_empty = true)
{
    QByteArray bytes;
    auto const add = [](void *to, char const *p, unsigned long long n) {
        static_cast<QByteArray *>(to)->append(p, static_cast<qsizetype>(n));
    };
    tree.send_utf8({add, &bytes}, style, short_empty);
    return bytes;
}

/// Parses bytes as a message of a stream is parsed.
inline XMLTree read_bytes(XMLReader &reader, QByteArray const &bytes)
{
    QByteArray const padded = bytes + QByteArray(qsizetype(XMLReader::slack), '>');
    return reader.read_utf8({padded.constData(), static_cast<std::size_t>(bytes.size())});
}
