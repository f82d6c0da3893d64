// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/base/astring_format.h"

#include <QString>

namespace {

constexpr AChar percent{U'%'};

unsigned long long count_digits(AString const &text, unsigned long long from)
{
    unsigned long long n = 0;
    while (text.getchar(from + n).is_digit())
        ++n;
    return n;
}

bool find_placeholder(AString::SplitSearch &search)
{
    long long at = static_cast<long long>(search.position);
    while ((at = search.text.find(percent, at)) >= 0) {
        unsigned long long const start = static_cast<unsigned long long>(at);
        unsigned long long const digits = count_digits(search.text, start + 1);
        if (digits == 1 || digits == 2) {
            search.start = start;
            search.length = digits + 1;
            return true;
        }
        at += static_cast<long long>(digits) + 1;
    }
    return false;
}

std::int32_t placeholder_number(AString const &segment)
{
    AString::SplitSearch search{segment, 0, 0, 0};
    if (!find_placeholder(search) || search.start != 0)
        return -1;
    int number = -1;
    segment.remove_front(1).to_int(&number);
    return number;
}

} // namespace

AStringFormat::AStringFormat(AString const &text)
    : segments(text.split(AString::SplitFinder(&find_placeholder), true, false))
{
    for (AString const &segment : segments.const_ref())
        numbers.push_back(placeholder_number(segment));
}

AStringFormat &AStringFormat::arg(AString const &text)
{
    std::int32_t lowest = -1;
    std::uint32_t lowest_at = 0;
    std::uint32_t i = 0;
    for (std::int32_t const number : numbers.const_ref()) {
        if (number >= 0 && (lowest < 0 || number < lowest)) {
            lowest = number;
            lowest_at = i;
        }
        ++i;
    }
    if (lowest >= 0) {
        segments.at(lowest_at) = text;
        numbers.at(lowest_at) = -1;
    }
    return *this;
}

AStringFormat &AStringFormat::arg(int value, long long width, AChar fill)
{
    return arg(AString::from_int64_t(value, width, fill));
}

AStringFormat &AStringFormat::arg(unsigned int value, long long width, AChar fill)
{
    return arg(AString::from_uint64_t(value, width, fill));
}

AStringFormat &AStringFormat::arg(long value, long long width, AChar fill)
{
    return arg(AString::from_int64_t(value, width, fill));
}

AStringFormat &AStringFormat::arg(unsigned long value, long long width, AChar fill)
{
    return arg(AString::from_uint64_t(value, width, fill));
}

AStringFormat &AStringFormat::arg(long long value, long long width, AChar fill)
{
    return arg(AString::from_int64_t(value, width, fill));
}

AStringFormat &AStringFormat::arg(unsigned long long value, long long width, AChar fill)
{
    return arg(AString::from_uint64_t(value, width, fill));
}

AStringFormat &AStringFormat::arg(void const *pointer)
{
    return arg(AString::sprintf(
        "0x%16llX", static_cast<unsigned long long>(reinterpret_cast<std::uintptr_t>(pointer))));
}

AStringFormat::operator QString() const
{
    return to_astring();
}

AString::AString(AStringFormat const &format)
    : AString(format.to_astring())
{
}

AStringFormat AString::arg(AString const &text) const
{
    return AStringFormat(*this).arg(text);
}

AStringFormat AString::arg(int value, long long width, AChar fill) const
{
    return AStringFormat(*this).arg(value, width, fill);
}

AStringFormat AString::arg(unsigned int value, long long width, AChar fill) const
{
    return AStringFormat(*this).arg(value, width, fill);
}

AStringFormat AString::arg(long value, long long width, AChar fill) const
{
    return AStringFormat(*this).arg(value, width, fill);
}

AStringFormat AString::arg(unsigned long value, long long width, AChar fill) const
{
    return AStringFormat(*this).arg(value, width, fill);
}

AStringFormat AString::arg(long long value, long long width, AChar fill) const
{
    return AStringFormat(*this).arg(value, width, fill);
}

AStringFormat AString::arg(unsigned long long value, long long width, AChar fill) const
{
    return AStringFormat(*this).arg(value, width, fill);
}

AStringFormat AString::arg(void const *pointer) const
{
    return AStringFormat(*this).arg(pointer);
}
