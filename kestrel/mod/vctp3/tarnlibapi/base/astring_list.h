// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/alist.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/astring.h"

/// A list of strings. Thread: as `AList`.
class TARN_EXPORT AStringList : public AList<AString>
{
public:
    AStringList() = default;
    AStringList(AString const &item) { push_back(item); }
    AStringList(std::initializer_list<AString> items)
        : AList<AString>(items)
    {
    }
    AStringList(AList<AString> const &list)
        : AList<AString>(list)
    {
    }

    void push_back(AString const &item) { AList<AString>::push_back(item); }
    void push_back(AString &&item) { AList<AString>::push_back(std::move(item)); }
    void push_back(AStringList const &items) { append(items); }
    void push_front(AString const &item) { AList<AString>::push_front(item); }
    void push_front(AString &&item) { AList<AString>::push_front(std::move(item)); }
    /// In front, in the order that \a items has.
    void push_front(AStringList const &items);

    AStringList &operator+=(AString const &item)
    {
        push_back(item);
        return *this;
    }
    AStringList &operator+=(AStringList const &items)
    {
        push_back(items);
        return *this;
    }
    friend AStringList operator+(AStringList list, AString const &item) { return list += item; }
    friend AStringList operator+(AStringList list, AStringList const &items)
    {
        return list += items;
    }

    /// The string that goes. Of an empty list: an assertion and the empty string.
    AString pop_back() { return pop(); }
    AString pop_front() { return shift(); }
    /// At most the last or first \a n strings, in the order that they had here.
    AStringList pop_back(std::uint32_t n);
    AStringList pop_front(std::uint32_t n);

    AString join(AString const &separator) const { return AString::from_join(*this, separator); }
    /// The items that contain \a pattern.
    AStringList filter(AString const &pattern) const;

    /// Hand over item after item, as `AString` does.
    void send_utf8(AFunction2<char const *, unsigned long long> const &sink) const;
    void send_achars(AFunction2<AChar const *, unsigned long long> const &sink) const;
};
