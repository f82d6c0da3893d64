// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/astring.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/avariant.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/tarn_export.h"

#include <cstddef>
#include <map>
#include <unordered_map>

namespace VCTP3 {

/// A two-way table between integers and names. Names are compared exactly.
/// Thread: a table that is no longer changed may be read from any thread.
class TARN_EXPORT EnumString
{
public:
    struct ByLatin1
    {
        int value;
        char const *name;
    };
    struct ByAString
    {
        int value;
        AString name;
    };

    /// An empty table with the defaults of that moment for unknown names and values.
    EnumString();
    /// Rows with a null or an empty name are skipped.
    EnumString(ByLatin1 const *rows, std::size_t count);
    EnumString(ByLatin1 const *rows, std::size_t count, int badval);
    EnumString(ByLatin1 const *rows, std::size_t count, int badval, AString const &badname);
    EnumString(ByAString const *rows, std::size_t count);
    EnumString(ByAString const *rows, std::size_t count, int badval);
    EnumString(ByAString const *rows, std::size_t count, int badval, AString const &badname);

    /// What later tables give for an unknown name, -1 unless set here.
    static void default_badval(int value);
    /// What later tables give for an unknown value, empty unless set here.
    static void default_badname(AString const &name);

    /// Adds a row to both directions; a row of the same value or name is replaced there. An empty
    /// name adds nothing.
    void add(int value, AString const &name);

    /// The name; the table's bad name, or \a otherwise, for an unknown value.
    AString to_name(int value) const;
    AString to_name(int value, AString const &otherwise) const;
    /// The same for the number in a variant; a variant that is no number is unknown.
    AString to_name(AVariant const &value) const;
    AString to_name(AVariant const &value, AString const &otherwise) const;

    /// The value; the table's bad value, or \a otherwise, for an unknown name.
    int to_enumval(AString const &name) const;
    int to_enumval(AString const &name, int otherwise) const;
    /// The same for the text in a variant; a variant that is no text is unknown.
    int to_enumval(AVariant const &name) const;
    int to_enumval(AVariant const &name, int otherwise) const;

    /// Whether the name is known; its value goes to *value unless that is null.
    bool valid_name(AString const &name, int *value = nullptr) const;
    /// Whether the value is known; its name goes to *name unless that is null.
    bool valid_value(int value, AString *name = nullptr) const;
    /// Whether the name in a variant is known; its value goes to *value unless that is null.
    bool valid_enum(AVariant const &name, int *value = nullptr) const;

    /// \name Walking the values in numeric order
    /// False, and *value untouched, where there is no such value. The forms of one argument start
    /// from *value.
    /// @{
    bool getfirst(int *value) const;
    bool getlast(int *value) const;
    bool getnext(int from, int *value) const;
    bool getprev(int from, int *value) const;
    bool getnext(int *value) const { return value && getnext(*value, value); }
    bool getprev(int *value) const { return value && getprev(*value, value); }
    /// @}

private:
    int badval;
    AString badname;
    std::map<int, AString> by_value;
    std::unordered_map<AString, int> by_name;
};

} // namespace VCTP3
