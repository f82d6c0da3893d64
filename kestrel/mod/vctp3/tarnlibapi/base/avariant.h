// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/astring.h"

/// Nothing, a number or a text. A number is never taken for a text, nor a text for a number.
/// Thread: a value; one object belongs to one thread at a time, copies to any.
class AVariant
{
public:
    AVariant() = default;
    explicit AVariant(int value)
        : kind(Number)
        , number(value)
    {
    }
    explicit AVariant(AString const &value)
        : kind(Text)
        , text(value)
    {
    }

    bool is_null() const { return kind == None; }
    /// False, and *out untouched, for anything but a number.
    bool to_int(int *out) const
    {
        if (kind == Number)
            *out = number;
        return kind == Number;
    }
    /// False, and *out untouched, for anything but a text.
    bool to_astring(AString *out) const
    {
        if (kind == Text)
            *out = text;
        return kind == Text;
    }

    friend bool operator==(AVariant const &a, AVariant const &b)
    {
        return a.kind == b.kind && a.number == b.number && a.text == b.text;
    }

private:
    enum Kind
    {
        None,
        Number,
        Text
    };

    Kind kind = None;
    int number = 0;
    AString text;
};
