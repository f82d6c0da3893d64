// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/abyte_array.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/astring.h"

#include <QString>
#include <QTest>

// What QCOMPARE prints of our own value types.
namespace QTest {

template <> inline char *toString(AString const &text)
{
    return toString(QString(text));
}

template <> inline char *toString(AChar const &c)
{
    return toString(QStringLiteral("U+%1").arg(static_cast<uint>(c.ord()), 4, 16));
}

template <> inline char *toString(AByteArray const &bytes)
{
    return toString(QString(bytes.toHex(~0u)));
}

template <> inline char *toString(std::string const &text)
{
    return qstrdup(text.c_str());
}

} // namespace QTest
