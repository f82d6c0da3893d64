// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/astring.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/astring_list.h"

/// A text with placeholders: "%" and one or two digits. Each `arg` fills exactly one of them, the
/// first of those with the lowest number, so "%1 %1" takes two. What is not filled stays as it
/// was written; an `arg` too many does nothing. "%" with three or more digits or with none is
/// plain text. Filled values are not searched for placeholders.
/// Thread: a value; one object belongs to one thread at a time, copies to any.
class TARN_EXPORT AStringFormat
{
public:
    explicit AStringFormat(AString const &text);

    AStringFormat &arg(AString const &text);
    AStringFormat &arg(int value, long long width = 0, AChar fill = AString::blank);
    AStringFormat &arg(unsigned int value, long long width = 0, AChar fill = AString::blank);
    AStringFormat &arg(long value, long long width = 0, AChar fill = AString::blank);
    AStringFormat &arg(unsigned long value, long long width = 0, AChar fill = AString::blank);
    AStringFormat &arg(long long value, long long width = 0, AChar fill = AString::blank);
    AStringFormat &arg(unsigned long long value, long long width = 0, AChar fill = AString::blank);
    /// "0x" and 16 places of capital hexadecimal digits, blanks in front.
    AStringFormat &arg(void const *pointer);
    AStringFormat &arg(char const *) = delete;

    /// The segments joined. `AString` has a constructor that does the same.
    AString to_astring() const { return segments.join(AString()); }
    /// The segments, filled ones and plain text.
    AStringList const &to_list() const { return segments; }
    operator AStringList() const { return segments; }
    operator QString() const;
    operator std::string() const { return to_astring().to_string(); }
    operator AWString() const { return to_astring().to_wstring(); }

    friend bool operator==(AStringFormat const &a, AString const &b) { return a.to_astring() == b; }

private:
    AStringList segments;
    AList<std::int32_t> numbers; // one for each segment; -1: plain text or filled
};
