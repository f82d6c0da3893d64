// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/protocol/record_xml.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/words_p.h"

namespace VCTP3 {

/// Collects the fields of one element in the order of the calls.
class TARN_EXPORT ElementBuilder
{
public:
    explicit ElementBuilder(AString const &of)
        : tag(of)
    {
    }

    template <typename T> void add(Word field, T const &value)
    {
        append(write_element(word(field), value));
    }
    void add_speed(Word field, int value) { append(write_speed(word(field), value)); }
    template <typename T> void add_if(bool present, Word field, T const &value)
    {
        if (present)
            add(field, value);
    }
    void add_speed_if(bool present, Word field, int value)
    {
        if (present)
            add_speed(field, value);
    }
    /// A flag is an empty element, there only when it is raised.
    void add_flag(Word field, bool raised);

    /// The element with what was added.
    XMLTree take() const { return XMLTree(tag, fields); }

private:
    void append(XMLTree const &field);

    AString const tag;
    AList<XMLTree> fields;
};

} // namespace VCTP3
