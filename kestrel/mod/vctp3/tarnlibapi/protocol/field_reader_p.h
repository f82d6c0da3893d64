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
    template <typename T> void need(Word tag, T *out) { need(word(tag), out); }
    void need_speed(Word tag, int *out) { need_speed(word(tag), out); }
    /// An optional field: it must be right where it is there.
    template <typename T> void take(Word tag, bool *has, T *out)
    {
        AString const &name = word(tag);
        if ((*has = there(name)))
            need(name, out);
    }
    void take_speed(Word tag, bool *has, int *out)
    {
        AString const &name = word(tag);
        if ((*has = there(name)))
            need_speed(name, out);
    }
    template <typename T> void take(Word tag, AOption<T> *out)
    {
        AString const &name = word(tag);
        T value{};
        if (!there(name))
            return;
        need(name, &value);
        if (element)
            *out = std::move(value);
    }
    void take_speed(Word tag, AOption<int> *out)
    {
        AString const &name = word(tag);
        int value = 0;
        if (!there(name))
            return;
        need_speed(name, &value);
        if (element)
            *out = value;
    }
    void flag(Word tag, bool *out) { *out = there(word(tag)); }
    /// A field whose failure counts as absence.
    template <typename T> void attempt(Word tag, AOption<T> *out)
    {
        AString const &name = word(tag);
        T value{};
        if (!element)
            return;
        XMLTree const *child = only_child(name);
        if (read_element(child ? *child : *element, name, &value, nullptr))
            *out = std::move(value);
    }

private:
    struct Child
    {
        AString const *name; // the one string of a name that the parsers know
        XMLTree const *tree;
    };

    template <typename T> void need(AString const &name, T *out)
    {
        if (!element)
            return;
        XMLTree const *child = only_child(name);
        if (child && read_element(*child, name, out, nullptr))
            return;
        if (!read_element(*element, name, out, error))
            element = nullptr;
    }
    void need_speed(AString const &name, int *out)
    {
        if (!element)
            return;
        XMLTree const *child = only_child(name);
        if (child && read_speed(*child, name, out, nullptr))
            return;
        if (!read_speed(*element, name, out, error))
            element = nullptr;
    }
    void look_at_children();
    unsigned int find(AString const *name) const;
    /// The only child of that name, a word's; null as well where the index cannot tell.
    XMLTree const *only_child(AString const &name) const;
    bool there(AString const &name) const;

    AString *const error;
    XMLTree const *element; // null after a failure
    bool indexed = false; // all children are in the index, and the element has no field's tag
    bool all_differ = true; // no two children in the index have one name
    unsigned int count = 0;
    mutable unsigned int next = 0; // behind the child that was found last
    std::array<Child, 48> children;
};

} // namespace VCTP3
