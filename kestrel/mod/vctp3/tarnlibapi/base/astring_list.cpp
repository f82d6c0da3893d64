// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/base/astring_list.h"

void AStringList::push_front(AStringList const &items)
{
    AStringList joined = items;
    joined.append(*this);
    *this = joined;
}

AStringList AStringList::pop_back(std::uint32_t n)
{
    AStringList taken;
    for (; n > 0 && !empty(); --n)
        taken.push_front(pop());
    return taken;
}

AStringList AStringList::pop_front(std::uint32_t n)
{
    AStringList taken;
    for (; n > 0 && !empty(); --n)
        taken.push_back(shift());
    return taken;
}

AStringList AStringList::filter(AString const &pattern) const
{
    return find_matches([&pattern](AString const &item) { return item.contains(pattern); });
}

void AStringList::send_utf8(AFunction2<char const *, unsigned long long> const &sink) const
{
    for (AString const &item : const_ref())
        item.send_utf8(sink);
}

void AStringList::send_achars(AFunction2<AChar const *, unsigned long long> const &sink) const
{
    for (AString const &item : const_ref())
        item.send_achars(sink);
}
