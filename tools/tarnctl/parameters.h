// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/aassert.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/aoption.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/record_xml.h"
#include "tools/tarnctl/vocabulary_info.h"

#include <map>
#include <string_view>

namespace TarnCtl {

/// Makes the element that a person's text stands for: a leaf from its wire form, anything else
/// from JSON with element names as keys. Each value is tried with the library's own reader. On
/// failure: false, *out untouched; *error names the place, the value and what would be accepted.
/// \a name: what people call it who do not type the element's own name.
bool read_argument(
    FieldInfo const &field, QString const &text, QString const &name, XMLTree *out, QString *error);
inline bool read_argument(FieldInfo const &field, QString const &text, XMLTree *out, QString *error)
{
    return read_argument(field, text, QLatin1String(field.element), out, error);
}

/// The parameters of one command, read from ELEMENT=VALUE arguments.
class Parameters
{
public:
    /// \a arguments in any order, each element at most once. On failure: false, what is wrong and
    /// what would be accepted in *error.
    bool read(CommandInfo const &command, QStringList const &arguments, QString *error);

    bool has(char const *element) const { return elements.count(element) > 0; }

    /// A parameter that the command requires.
    template <typename T> T value(char const *element) const { return option<T>(element).value(); }
    template <typename T> AOption<T> option(char const *element) const
    {
        return get<T>(element, [](XMLTree const &tree, T *out, AString *error) {
            return VCTP3::read_element(tree, tree.get_tag(), out, error);
        });
    }
    /// A speed has the C++ type of a number, so it is asked for by name.
    AOption<int> option_speed(char const *element) const;

private:
    template <typename T, typename Reader> AOption<T> get(char const *element, Reader read) const
    {
        auto const found = elements.find(element);
        if (found == elements.end())
            return {};
        T value{};
        AString error;
        if (!A_ASSERT_TEXT(read(found->second, &value, &error), "a parameter was checked"))
            return {};
        return AOption<T>(value);
    }
    bool add(CommandInfo const &command, QString const &argument, QString *error);

    /// Keys are the names in the command's row.
    std::map<std::string_view, XMLTree> elements;
};

} // namespace TarnCtl
