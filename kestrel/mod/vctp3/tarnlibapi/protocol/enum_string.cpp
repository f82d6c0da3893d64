// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/protocol/enum_string.h"

#include <iterator>
#include <mutex>

namespace VCTP3 {

namespace {

struct Defaults
{
    std::mutex mutex; // guards the rest; a leaf lock
    int badval = -1;
    AString badname;
};

Defaults &defaults()
{
    static Defaults only;
    return only;
}

int current_badval()
{
    std::lock_guard const lock(defaults().mutex);
    return defaults().badval;
}

AString current_badname()
{
    std::lock_guard const lock(defaults().mutex);
    return defaults().badname;
}

} // namespace

EnumString::EnumString()
    : badval(current_badval())
    , badname(current_badname())
{
}

EnumString::EnumString(ByLatin1 const *rows, std::size_t count)
    : EnumString(rows, count, current_badval())
{
}

EnumString::EnumString(ByLatin1 const *rows, std::size_t count, int bad_value)
    : EnumString(rows, count, bad_value, current_badname())
{
}

EnumString::EnumString(
    ByLatin1 const *rows, std::size_t count, int bad_value, AString const &bad_name)
    : badval(bad_value)
    , badname(bad_name)
{
    for (std::size_t i = 0; i < count; ++i)
        add(rows[i].value, AString::from_latin1(rows[i].name));
}

EnumString::EnumString(ByAString const *rows, std::size_t count)
    : EnumString(rows, count, current_badval())
{
}

EnumString::EnumString(ByAString const *rows, std::size_t count, int bad_value)
    : EnumString(rows, count, bad_value, current_badname())
{
}

EnumString::EnumString(
    ByAString const *rows, std::size_t count, int bad_value, AString const &bad_name)
    : badval(bad_value)
    , badname(bad_name)
{
    for (std::size_t i = 0; i < count; ++i)
        add(rows[i].value, rows[i].name);
}

void EnumString::default_badval(int value)
{
    std::lock_guard const lock(defaults().mutex);
    defaults().badval = value;
}

void EnumString::default_badname(AString const &name)
{
    std::lock_guard const lock(defaults().mutex);
    defaults().badname = name;
}

void EnumString::add(int value, AString const &name)
{
    if (name.empty())
        return;
    by_value[value] = name;
    by_name[name] = value;
}

AString EnumString::to_name(int value) const
{
    return to_name(value, badname);
}

AString EnumString::to_name(int value, AString const &otherwise) const
{
    auto const found = by_value.find(value);
    return found == by_value.end() ? otherwise : found->second;
}

AString EnumString::to_name(AVariant const &value) const
{
    return to_name(value, badname);
}

AString EnumString::to_name(AVariant const &value, AString const &otherwise) const
{
    int number = 0;
    return value.to_int(&number) ? to_name(number, otherwise) : otherwise;
}

int EnumString::to_enumval(AString const &name) const
{
    return to_enumval(name, badval);
}

int EnumString::to_enumval(AString const &name, int otherwise) const
{
    int value = otherwise;
    valid_name(name, &value);
    return value;
}

int EnumString::to_enumval(AVariant const &name) const
{
    return to_enumval(name, badval);
}

int EnumString::to_enumval(AVariant const &name, int otherwise) const
{
    int value = otherwise;
    valid_enum(name, &value);
    return value;
}

bool EnumString::valid_name(AString const &name, int *value) const
{
    auto const found = by_name.find(name);
    if (found == by_name.end())
        return false;
    if (value)
        *value = found->second;
    return true;
}

bool EnumString::valid_value(int value, AString *name) const
{
    auto const found = by_value.find(value);
    if (found == by_value.end())
        return false;
    if (name)
        *name = found->second;
    return true;
}

bool EnumString::valid_enum(AVariant const &name, int *value) const
{
    AString text;
    return name.to_astring(&text) && valid_name(text, value);
}

bool EnumString::getfirst(int *value) const
{
    if (by_value.empty() || !value)
        return false;
    *value = by_value.begin()->first;
    return true;
}

bool EnumString::getlast(int *value) const
{
    if (by_value.empty() || !value)
        return false;
    *value = by_value.rbegin()->first;
    return true;
}

bool EnumString::getnext(int from, int *value) const
{
    auto const found = by_value.upper_bound(from);
    if (found == by_value.end() || !value)
        return false;
    *value = found->first;
    return true;
}

bool EnumString::getprev(int from, int *value) const
{
    auto const behind = by_value.lower_bound(from);
    if (behind == by_value.begin() || !value)
        return false;
    *value = std::prev(behind)->first;
    return true;
}

} // namespace VCTP3
