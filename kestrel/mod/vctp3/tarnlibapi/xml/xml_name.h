// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/astring.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/tarn_export.h"

struct XMLNameEntry;

/// A word of a protocol, known to all parsers of the process from the moment it is made. Elements
/// of that name share its one string, which costs no count and no memory of the message.
/// Any name may go unregistered; it then costs a few code points in its message.
/// Thread: any. Names made while another thread parses are known to its next message.
class TARN_EXPORT XMLName
{
public:
    /// \a text: an ASCII letter, then letters, digits and '_', 255 characters at most. Anything
    /// else: an assertion, and a name that no parser looks for. The same text gives one name.
    explicit XMLName(char const *text);

    AString const &text() const;
    operator AString const &() const { return text(); }

    friend bool operator==(XMLName a, XMLName b) { return a.entry == b.entry; }

private:
    XMLNameEntry const *entry;
};
