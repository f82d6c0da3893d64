// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/aoption.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/record_xml.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/words_p.h"

namespace VCTP3 {

/// Reads the fields of one element. After the first failure nothing more is read, and *error keeps
/// its reason.
class FieldReader
{
public:
    /// Of the element that `find_element` finds.
    FieldReader(XMLTree const &parent, AString const &tag, AString *reason)
        : error(reason)
        , element(find_element(parent, tag, reason))
    {
    }
    /// Of \a message, which must outlive this.
    FieldReader(XMLTree const &message, AString *reason)
        : error(reason)
        , element(&message)
    {
    }

    bool ok() const { return element != nullptr; }

    /// A required field.
    template <typename T> void need(Word tag, T *out)
    {
        if (element && !read_element(*element, word(tag), out, error))
            element = nullptr;
    }
    void need_speed(Word tag, int *out)
    {
        if (element && !read_speed(*element, word(tag), out, error))
            element = nullptr;
    }
    /// An optional field: it must be right where it is there.
    template <typename T> void take(Word tag, bool *has, T *out)
    {
        if ((*has = there(tag)))
            need(tag, out);
    }
    void take_speed(Word tag, bool *has, int *out)
    {
        if ((*has = there(tag)))
            need_speed(tag, out);
    }
    template <typename T> void take(Word tag, AOption<T> *out)
    {
        T value{};
        if (!there(tag))
            return;
        need(tag, &value);
        if (element)
            *out = std::move(value);
    }
    void take_speed(Word tag, AOption<int> *out)
    {
        int value = 0;
        if (!there(tag))
            return;
        need_speed(tag, &value);
        if (element)
            *out = value;
    }
    void flag(Word tag, bool *out) { *out = there(tag); }
    /// A field whose failure counts as absence.
    template <typename T> void attempt(Word tag, AOption<T> *out)
    {
        T value{};
        if (element && read_element(*element, word(tag), &value, nullptr))
            *out = std::move(value);
    }

private:
    bool there(Word tag) const { return element && element->has_subnodes(word(tag)); }

    AString *const error;
    XMLTree const *element; // null after a failure
};

} // namespace VCTP3
