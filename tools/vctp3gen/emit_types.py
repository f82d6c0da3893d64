# SPDX-License-Identifier: Apache-2.0
"""Enumerations, records, the readers and writers of both, and the words of the protocol."""
from out import banner, break_line, join

BASE = "kestrel/mod/vctp3/tarnlibapi"
PROTOCOL = f"{BASE}/protocol"


def include(*paths):
    return [f'#include "{path}"' for path in paths]


def in_namespace(lines):
    return ["", "namespace VCTP3 {", "", *lines, "", "} // namespace VCTP3"]


def text(lines):
    return "\n".join(lines) + "\n"


def parameter(kind, name):
    """A parameter of a virtual function or a signal: objects by reference, numbers by value."""
    return f"{kind.cpp} const &{name}" if kind.is_class else f"{kind.cpp} {name}"


def sentence(words):
    """Table text as a doc comment: a capital in front, a full stop behind."""
    return words[:1].upper() + words[1:] + "."


# enumerations


def enums_h(vocabulary):
    lines = []
    for enum in vocabulary.enums.values():
        name = enum.name
        lines += [
            f"/// {sentence(enum.meaning)}",
            break_line(f"enum class {name} : int {{ " + ", ".join(enum.enumerators) + " };"),
            f"/// {name}: the wire name; the empty string for a value out of range.",
            f"TARN_EXPORT AString {name}_to_string({name} value);",
            f"/// {name}: exact, case-sensitive. Unknown: false, *value untouched. value may be null.",
            f"TARN_EXPORT bool string_to_{name}(AString const &name, {name} *value);",
            f"/// {name}: whether \\a value is one of its {len(enum.names)} values.",
            f"TARN_EXPORT bool valid_{name}(int value);",
            f"/// {name}: the table behind these functions.",
            f"TARN_EXPORT EnumString const &{name}_names();",
            "",
        ]
    return text([
        banner("enums.tbl"),
        "#pragma once",
        "",
        *include(f"{PROTOCOL}/enum_string.h"),
        *in_namespace(lines[:-1]),
    ])


def enums_cpp(vocabulary):
    lines = []
    for enum in vocabulary.enums.values():
        name = enum.name
        rows = ", ".join(f'{{{number}, "{wire}"}}' for number, wire in enumerate(enum.names))
        lines += [
            f"EnumString const &{name}_names()",
            "{",
            break_line(f"    static constexpr EnumString::ByLatin1 rows[] = {{{rows}}};"),
            "    static EnumString const table(rows, std::size(rows), -1, AString());",
            "    return table;",
            "}",
            "",
            f"AString {name}_to_string({name} value)",
            "{",
            f"    return {name}_names().to_name(static_cast<int>(value));",
            "}",
            "",
            f"bool string_to_{name}(AString const &name, {name} *value)",
            "{",
            "    int found = 0;",
            f"    if (!{name}_names().valid_name(name, &found))",
            "        return false;",
            "    if (value)",
            f"        *value = static_cast<{name}>(found);",
            "    return true;",
            "}",
            "",
            f"bool valid_{name}(int value)",
            "{",
            f"    return value >= 0 && value < {len(enum.names)};",
            "}",
            "",
        ]
    return text([
        banner("enums.tbl"),
        *include(f"{PROTOCOL}/enums.h"),
        "",
        "#include <iterator>",
        *in_namespace(lines[:-1]),
    ])


# records


def _collection(kind):
    """A set or a vector: a class of its own, so that it can be declared without this header."""
    item = kind.item.type
    what = "values without duplicates" if kind.kind == "set" else "values"
    base = f"ValueVector<{item.cpp}, {kind.capacity}>"
    body = " { };"
    if kind.kind == "set":
        base = f"ValueSet<{item.cpp}, {kind.capacity}, valid_{item.name}>"
        body = "\n{\npublic:\n    using ValueSet::ValueSet;\n};"
    return [
        f"/// At most {kind.capacity} {what}, each an element {kind.item.name}.",
        f"class {kind.name} : public {base}{body}",
        "",
    ]


def _record(record):
    lines = [f"/// {sentence(record.meaning)}", f"struct TARN_EXPORT {record.name}", "{"]
    for one in record.fields:
        kind = one.type
        if one.presence == "?":
            lines.append(f"    bool has_{one.member} = false;")
        lines.append(f"    {kind.cpp} {one.member}{kind.initial};")
    setters = [one for one in record.fields if one.setter]
    if setters:
        lines.append("")
    for one in setters:
        lines += [
            f"    void {one.setter}({parameter(one.type, 'value')})",
            "    {",
            f"        has_{one.member} = true;",
            f"        {one.member} = value;",
            "    }",
        ]
    lines += [
        "",
        "    /// The value of an absent field does not count.",
        f"    friend TARN_EXPORT bool operator==({record.name} const &a, {record.name} const &b);",
        "    /// By the fields in order; an absent field sorts before every value.",
        f"    friend TARN_EXPORT bool operator<({record.name} const &a, {record.name} const &b);",
        "};",
    ]
    return lines


def records_h(vocabulary):
    lines, defined = [], set()

    def collections_ready():
        """Sets, and vectors whose items are complete types by now."""
        for kind in vocabulary.collections.values():
            item = kind.item.type
            if kind.kind == "list" or kind.name in defined:
                continue
            if item.kind == "record" and item.name not in defined:
                continue
            defined.add(kind.name)
            lines.extend(_collection(kind))

    collections_ready()
    for record in vocabulary.records_by_need():
        lines.extend([*_record(record), ""])
        defined.add(record.name)
        collections_ready()
    return text([
        banner("records.tbl and collections.tbl"),
        "#pragma once",
        "",
        *include(f"{PROTOCOL}/enums.h", f"{PROTOCOL}/value_set.h", f"{PROTOCOL}/value_vector.h"),
        "",
        "#include <list>",
        *in_namespace(lines[:-1]),
    ])


def records_cpp(vocabulary):
    lines = []
    for record in vocabulary.records_by_need():
        name = record.name

        def arguments(one):
            if one.presence == "?":
                flag = f"has_{one.member}"
                return f"a.{flag}, a.{one.member}, b.{flag}, b.{one.member}"
            return f"a.{one.member}, b.{one.member}"

        same = [f"same({arguments(one)})" for one in record.fields]
        lines += [
            f"bool operator==({name} const &a, {name} const &b)",
            "{",
            "    return " + "\n        && ".join(same) + ";",
            "}",
            "",
            f"bool operator<({name} const &a, {name} const &b)",
            "{",
            "    int order = 0;",
            *[f"    order = order ? order : compare({arguments(one)});" for one in record.fields],
            "    return order < 0;",
            "}",
            "",
        ]
    return text([
        banner("records.tbl"),
        *include(f"{PROTOCOL}/records.h", f"{PROTOCOL}/record_order_p.h"),
        *in_namespace(lines[:-1]),
    ])


# readers and writers


def _xml_types(vocabulary):
    """(C++ type, the type) of every generated reader and writer, in an order of need."""
    for enum in vocabulary.enums.values():
        yield vocabulary.elements[enum.name].type
    for kind in vocabulary.collections.values():
        yield kind
    for record in vocabulary.records.values():
        yield vocabulary.elements[record.name].type


def record_xml_h(vocabulary):
    readers, writers = [], []
    for kind in _xml_types(vocabulary):
        readers.append(join("TARN_EXPORT bool read_element",
                            ["XMLTree const &parent", "AString const &tag", f"{kind.cpp} *out",
                             "AString *error"], ";"))
        writers.append(join("TARN_EXPORT XMLTree write_element",
                            ["AString const &tag", parameter(kind, "value")], ";"))
    return text([
        banner("enums.tbl, records.tbl and collections.tbl"),
        "#pragma once",
        "",
        *include(f"{PROTOCOL}/leaf_xml.h", f"{PROTOCOL}/records.h"),
        *in_namespace([
            "/// \\name Reading of the protocol's types",
            "/// The element is \\a parent itself where it has the tag, or else its only child of that",
            "/// tag. On failure: false, *out untouched, the reason in *error.",
            "/// @{",
            *readers,
            "/// @}",
            "",
            "/// \\name Writing of the protocol's types",
            "/// An element of that tag; optional fields that are not set are left out.",
            "/// @{",
            *writers,
            "/// @}",
        ]),
    ])


def speed_suffix(kind):
    """A speed has the C++ type of a number, so methods for it have names of their own."""
    return "_speed" if kind.is_speed else ""


def read_field(one, target):
    """The statement that reads one field into `target`, a member access or a variable name."""
    word = f"Word::{one.tag}"
    if one.presence == "!":
        return f"    fields.flag({word}, &{target});"
    return f"    fields.need{speed_suffix(one.type)}({word}, &{target});"


def add_field(collector, one, value, present, raised):
    """The statement that adds one field: an optional one if `present`, a flag if `raised`."""
    add = f"    {collector}.add"
    if one.presence == "!":
        return f"{add}_flag(Word::{one.tag}, {raised});"
    if one.presence == "?":
        return f"{add}{speed_suffix(one.type)}_if({present}, Word::{one.tag}, {value});"
    return f"{add}{speed_suffix(one.type)}(Word::{one.tag}, {value});"


def _record_reader(record):
    lines = [
        join("bool read_element", ["XMLTree const &parent", "AString const &tag",
                                   f"{record.name} *out", "AString *error"], ""),
        "{",
        "    FieldReader fields(parent, tag, error);",
        f"    {record.name} value;",
    ]
    for one in record.fields:
        if one.presence == "?":
            lines.append(f"    fields.take{speed_suffix(one.type)}(Word::{one.tag}, "
                         f"&value.has_{one.member}, &value.{one.member});")
        else:
            lines.append(read_field(one, f"value.{one.member}"))
    lines += [
        "    if (!fields.ok())",
        "        return false;",
        "    *out = std::move(value);",
        "    return true;",
        "}",
    ]
    return lines


def _record_fields(record):
    """Hands the fields to whatever collects them, a tree or a text."""
    lines = [
        f"template <typename Fields> void add_fields(Fields &fields, {record.name} const &value)",
        "{",
    ]
    for one in record.fields:
        value = f"value.{one.member}"
        lines.append(add_field("fields", one, value, f"value.has_{one.member}", value))
    return lines + ["}", ""]


def _writers(kind):
    value = parameter(kind, "value")
    if kind.kind == "record":
        tree = ["    ElementBuilder element(tag);", "    add_fields(element, value);",
                "    return element.take();"]
        wire = ["    command.open(tag);", "    add_fields(command, value);",
                "    command.close(tag);"]
    elif kind.kind == "enum":
        tree = [f"    return XMLTree(tag, {kind.name}_to_string(value));"]
        wire = [f"    command.add(tag, {kind.name}_to_string(value));"]
    else:
        item = f"Word::{kind.item.name}"
        tree = [f"    return write_items(tag, {item}, value);"]
        wire = ["    command.open(tag);", "    for (auto const &one : value)",
                f"        command.add({item}, one);", "    command.close(tag);"]
    return [f"XMLTree write_element(AString const &tag, {value})", "{", *tree, "}", "",
            f"void write_text(CommandTree &command, Word tag, {value})", "{", *wire, "}", ""]


def record_xml_cpp(vocabulary):
    lines = []
    for record in vocabulary.records_by_need():
        lines += _record_fields(record)
    for kind in _xml_types(vocabulary):
        if kind.kind == "record":
            lines += _record_reader(vocabulary.records[kind.name]) + [""]
        else:
            read = f"read_{kind.kind}(parent, tag, Word::{kind.item.name}, out, error)" \
                if kind.item else \
                f'read_enum(parent, tag, {kind.name}_names(), "{kind.name}", out, error)'
            lines += [join("bool read_element", ["XMLTree const &parent", "AString const &tag",
                                                 f"{kind.cpp} *out", "AString *error"], ""),
                      "{", f"    return {read};", "}", ""]
        lines += _writers(kind)
    return text([
        banner("enums.tbl, records.tbl and collections.tbl"),
        *include(f"{PROTOCOL}/record_xml.h", f"{PROTOCOL}/collection_xml_p.h",
                 f"{PROTOCOL}/element_builder_p.h", f"{PROTOCOL}/field_reader_p.h",
                 f"{PROTOCOL}/record_text_p.h"),
        *in_namespace(lines[:-1]),
    ])


def record_text_p_h(vocabulary):
    return text([
        banner("enums.tbl, records.tbl and collections.tbl"),
        "#pragma once",
        "",
        *include(f"{PROTOCOL}/command_tree_p.h", f"{PROTOCOL}/records.h"),
        *in_namespace([
            "/// Writing of the protocol's types as text of a command.",
            *[f"void write_text(CommandTree &command, Word tag, {parameter(kind, 'value')});"
              for kind in _xml_types(vocabulary)],
        ]),
    ])


# words


def words_p_h(vocabulary):
    words = vocabulary.words()
    messages = [f"reply_{name}" for name in vocabulary.replies]
    messages += [f"report_{name}" for name in vocabulary.reports]
    return text([
        banner("all tables"),
        "#pragma once",
        "",
        *include(f"{BASE}/base/astring.h"),
        "",
        "#include <string_view>",
        *in_namespace([
            "/// Every tag of the protocol.",
            "enum class Word : unsigned short {",
            *[f"    {word}," for word in words],
            "};",
            "",
            "/// The text of a word, one string shared by the whole process.",
            "TARN_EXPORT AString const &word(Word id);",
            "/// The same as bytes.",
            "std::string_view word_bytes(Word id);",
            "",
            "/// Replies and, behind them, reports by their number in the tables.",
            "enum class MessageId : unsigned char {",
            *[f"    {message}," for message in messages],
            "};",
        ]),
    ])


def words_cpp(vocabulary):
    words = vocabulary.words()
    return text([
        banner("all tables"),
        *include(f"{PROTOCOL}/words_p.h", f"{PROTOCOL}/word_list_p.h"),
        *in_namespace([
            "static constexpr std::string_view texts[] = {",
            *[f'    "{name}",' for name in words],
            "};",
            "",
            "AString const &word(Word id)",
            "{",
            "    static WordList const list(texts);",
            "    return list[static_cast<unsigned int>(id)];",
            "}",
            "",
            "std::string_view word_bytes(Word id)",
            "{",
            "    return texts[static_cast<unsigned int>(id)];",
            "}",
        ]),
    ])
