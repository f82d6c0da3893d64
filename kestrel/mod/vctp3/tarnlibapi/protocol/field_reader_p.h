// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/aoption.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/record_xml.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/words_p.h"

#include <array>

namespace VCTP3 {

/// Reads the fields of one element. After the first failure nothing more is read, and *error keeps
/// its reason.
///
/// The children are looked at once and then found by the identity of their names; whatever is out
/// of the ordinary (a name that no parser knew, a field twice, a bad value) goes the way of
/// `read_element`, which tells the reason.
class TARN_EXPORT FieldReader
{
public:
    /// Of the element that `find_element` finds.
    FieldReader(XMLTree const &parent, AString const &tag, AString *reason);
    /// Of \a message, which must outlive this.
    FieldReader(XMLTree const &message, AString *reason);

    bool ok() const { return element != nullptr; }

    /// A required field.
    template <typename T> void need(Word tag, T *out)
    {
        if (!element)
            return;
        XMLTree const *child = only_child(tag);
        if (child && read_element(*child, word(tag), out, nullptr))
            return;
        if (!read_element(*element, word(tag), out, error))
            element = nullptr;
    }
    void need_speed(Word tag, int *out)
    {
        if (!element)
            return;
        XMLTree const *child = only_child(tag);
        if (child && read_speed(*child, word(tag), out, nullptr))
            return;
        if (!read_speed(*element, word(tag), out, error))
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
    struct Child
    {
        AString const *name; // the one string of a name that the parsers know
        XMLTree const *tree;
    };

    void look_at_children();
    /// The only child of that tag; null as well where the index cannot tell.
    XMLTree const *only_child(Word tag) const;
    bool there(Word tag) const;

    AString *const error;
    XMLTree const *element; // null after a failure
    bool indexed = false; // all children are in the index, and the element has no field's tag
    unsigned int count = 0;
    std::array<Child, 48> children;
};

} // namespace VCTP3
