// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/astring.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/astring_builder_p.h"

#include <string>

inline AString operator""_a(char const *text, std::size_t n)
{
    return AString::from_utf8(text, n);
}

/// A text that tells every position from its neighbours.
inline std::u32string counted_text(std::size_t n)
{
    std::u32string text;
    for (std::size_t i = 0; i < n; ++i)
        text += static_cast<char32_t>(U'A' + i % 53 + i / 53 % 7 * 256);
    return text;
}

/// The same text in one block, or in a chain of chunks that grew from a first one of \a first.
inline AString even_string(std::u32string const &text)
{
    return AString::from_utf32(text.data(), text.size());
}
inline AString chained_string(std::u32string const &text, unsigned long long first = 10)
{
    AStringBuilder builder(first);
    for (char32_t c : text)
        builder.append(c);
    return builder.take();
}

inline std::u32string u32(AString const &s)
{
    std::u32string text(s.length(), U'\0');
    s.to_utf32(text.data(), text.size());
    return text;
}
