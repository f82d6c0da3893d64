// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/base/astring.h"

#include "kestrel/mod/vctp3/tarnlibapi/base/astring_blocks_p.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/astring_builder_p.h"

#include <algorithm>
#include <cstring>

namespace {

/// Up to this many bytes it costs less to foresee too much room than to count.
constexpr unsigned long long uncounted_utf8 = 32;

/// Never fewer than the code points that a reader of these bytes gets.
unsigned long long count_utf8(char const *text, unsigned long long n)
{
    return n <= uncounted_utf8 ? n : AStringBlocks::count_utf8_leads(text, n);
}

template <typename Unit> unsigned long long count_z(Unit const *text)
{
    return text ? std::char_traits<Unit>::length(text) : 0;
}

} // namespace

AString AString::from_latin1(char const *text)
{
    return from_latin1(text, count_z(text));
}

AString AString::from_latin1(char const *text, unsigned long long n)
{
    if (!text)
        return {};
    AStringBuilder result(n);
    result.append_latin1(text, n);
    return result.take();
}

AString AString::from_latin1z(char const *text, unsigned long long max)
{
    return text ? from_latin1(text, strnlen(text, max)) : AString();
}

AString AString::from_utf8(char const *text)
{
    return from_utf8(text, count_z(text));
}

AString AString::from_utf8(char const *text, unsigned long long n)
{
    if (!text)
        return {};
    AStringBuilder result(count_utf8(text, n));
    result.append_utf8(text, n);
    return result.take();
}

AString AString::from_utf8z(char const *text, unsigned long long max)
{
    return text ? from_utf8(text, strnlen(text, max)) : AString();
}

AString AString::from_utf16(char16_t const *text)
{
    return from_utf16(text, count_z(text));
}

AString AString::from_utf16(char16_t const *text, unsigned long long n)
{
    if (!text)
        return {};
    AStringBuilder result(n);
    result.append_utf16(text, n);
    return result.take();
}

AString AString::from_utf32(char32_t const *text)
{
    return from_utf32(text, count_z(text));
}

AString AString::from_utf32(char32_t const *text, unsigned long long n)
{
    if (!text)
        return {};
    AStringBuilder result(n);
    for (; n != 0; --n)
        result.append(*text++);
    return result.take();
}

AString AString::from_string(std::string const &text)
{
    return from_utf8(text.data(), text.size());
}

AString AString::from_wstring(AWString const &text)
{
    return from_utf16(text.data(), text.size());
}

AString AString::from_achar(AChar const *text)
{
    unsigned long long n = 0;
    while (text && text[n].ord() != 0)
        ++n;
    return from_achar(text, n);
}

AString AString::from_achar(AChar const *text, unsigned long long n)
{
    if (!text)
        return {};
    AStringBuilder result(n);
    result.append(text, n);
    return result.take();
}
