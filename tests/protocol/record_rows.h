// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/protocol/record_xml.h"

#include <span>

/// A record, whole or with one thing wrong.
struct RecordRow
{
    char const *name;
    /// Reads a record and writes it again. *is_sample: it has the sample in each field.
    bool (*reread)(
        XMLTree const &, AString const &tag, XMLTree *again, bool *is_sample, AString *error);
    char const *tag;
    bool is_sample;
    char const *error; // empty: it reads, and is written as it was
    char const *text;
};

/// A value of an enumeration.
struct EnumRow
{
    char const *type;
    bool (*check)(int value, int count, char const *name);
    int enumerator;
    int value;
    int count; // of the values of its type
    char const *name;
};

/// Generated from the tables.
std::span<RecordRow const> record_rows();
std::span<EnumRow const> enum_rows();

template <typename Record, Record (*sample)()>
bool reread(
    XMLTree const &text, AString const &tag, XMLTree *again, bool *is_sample, AString *error)
{
    using VCTP3::read_element;
    Record record;
    if (!read_element(text, tag, &record, error))
        return false;
    *again = write_element(tag, record);
    *is_sample = record == sample() && !(record < sample()) && !(sample() < record);
    return true;
}

/// Both directions, and nothing beyond the last value.
template <typename Enum, AString (*to_string)(Enum), bool (*from_string)(AString const &, Enum *),
    bool (*valid)(int)>
bool check_enum(int value, int count, char const *name)
{
    Enum found = static_cast<Enum>(-1);
    return to_string(static_cast<Enum>(value)).equal_z(name)
        && from_string(AString::l1(name), &found) && found == static_cast<Enum>(value)
        && from_string(AString::l1(name), nullptr) && valid(value) && !valid(-1) && !valid(count)
        && to_string(static_cast<Enum>(-1)).empty() && to_string(static_cast<Enum>(count)).empty()
        && !from_string(AString(), &found)
        && !from_string(AString::l1(name) + AString::l1(" "), &found);
}
