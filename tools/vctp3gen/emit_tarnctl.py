# SPDX-License-Identifier: Apache-2.0
"""The command line client: descriptions of the vocabulary, calls, and JSON of all that comes in."""
from emit_frame import argument, names
from emit_types import BASE, PROTOCOL, include, text
from out import banner, break_line, join

TOOL = "tools/tarnctl"
ALL = "all tables"

KINDS = {"text": "Text", "uchar": "UChar", "ushort": "UShort", "uint": "UInt", "uint64": "UInt64",
         "int": "Int", "bool": "Bool", "flag": "Flag", "speed": "Speed", "enum": "Enum",
         "record": "Record", "set": "Set", "vector": "Vector", "list": "List"}


def _namespace(lines):
    return ["", "namespace TarnCtl {", "", *lines, "", "} // namespace TarnCtl"]


def _value(one, name):
    """The JSON value of a C++ value; a speed has the type of a number."""
    return f"json_of_speed({name})" if one.type.is_speed else f"json_of({name})"


def _types(vocabulary):
    """Every type that an element has, each once, by name; a speed and an int are two."""
    found = {}
    for element in vocabulary.elements.values():
        found.setdefault(element.type.name, element.type)
    return found


# descriptions


def _array(kind, name, items):
    space = "" if kind.endswith("*") else " "
    return [f"constexpr {kind}{space}{name}[] = {{", *[f"    {item}," for item in items], "};", ""]


def _field(one):
    optional = "true" if one.optional else "false"
    return f'{{"{one.tag}", &type_{one.type.name}, {optional}}}'


def _type(kind, vocabulary):
    names_, fields, item, capacity = "{}", "{}", "nullptr", 0
    if kind.kind == "enum":
        names_ = f"names_{kind.name}"
    elif kind.kind == "record":
        fields = f"fields_{kind.name}"
    elif kind.item:
        item, capacity = f"&item_{kind.name}", kind.capacity
    check = "check_speed" if kind.is_speed else f"check<{_qualified(kind)}>"
    return break_line(f'TypeInfo const type_{kind.name} {{TypeKind::{KINDS[kind.kind]}, '
                      f'"{kind.name}", {names_}, {fields}, {item}, {capacity}, &{check}}};')


def _qualified(kind):
    """The C++ type outside of the protocol's namespace."""
    if kind.kind in ("enum", "record", "set", "vector"):
        return f"VCTP3::{kind.cpp}"
    if kind.kind == "list":
        return f"std::list<{_qualified(kind.item.type)}>"
    return kind.cpp


def vocabulary_cpp(vocabulary):
    types = _types(vocabulary)
    lines = ["namespace {", ""]
    lines += [
        "template <typename T> bool check(XMLTree const &element, AString *error)",
        "{",
        "    T value {};",
        "    return VCTP3::read_element(element, element.get_tag(), &value, error);",
        "}",
        "",
        "bool check_speed(XMLTree const &element, AString *error)",
        "{",
        "    int value = 0;",
        "    return VCTP3::read_speed(element, element.get_tag(), &value, error);",
        "}",
        "",
    ]
    lines += [f"extern TypeInfo const type_{name};" for name in types] + [""]
    for kind in types.values():
        if kind.kind == "enum":
            lines += _array("char const *", f"names_{kind.name}",
                            [f'"{name}"' for name in vocabulary.enums[kind.name].names])
        elif kind.kind == "record":
            fields = vocabulary.records[kind.name].fields
            lines += _array("FieldInfo", f"fields_{kind.name}", [_field(one) for one in fields])
        elif kind.item:
            lines += [f'constexpr FieldInfo item_{kind.name} {{"{kind.item.name}", '
                      f"&type_{kind.item.type.name}, false}};", ""]
    lines += [_type(kind, vocabulary) for kind in types.values()] + [""]
    for command in vocabulary.commands.values():
        if command.fields:
            lines += _array("FieldInfo", f"parameters_{command.name}",
                            [_field(one) for one in command.fields])
    lines += ["constexpr CommandInfo commands[] = {"]
    for command in vocabulary.commands.values():
        parameters = f"parameters_{command.name}" if command.fields else "{}"
        lines.append(break_line(f'    {{"{command.name}", "{command.family.name}", {parameters}, '
                                f"&call_{command.name}}},"))
    lines += ["};", "", "constexpr ReportInfo reports[] = {"]
    for report in vocabulary.reports.values():
        channel = "true" if report.per_channel else "false"
        lines.append(f'    {{"{report.name}", "{report.register}", {channel}}},')
    enums = [kind for kind in types.values() if kind.kind == "enum"]
    lines += ["};", "", "constexpr TypeInfo const *enumerations[] = {",
              *[f"    &type_{kind.name}," for kind in enums], "};", "", "} // namespace", ""]
    lines += [
        "std::span<CommandInfo const> all_commands()",
        "{",
        "    return commands;",
        "}",
        "",
        "std::span<ReportInfo const> all_reports()",
        "{",
        "    return reports;",
        "}",
        "",
        "TypeInfo const &enumeration(char const *name)",
        "{",
        "    for (TypeInfo const *type : enumerations) {",
        "        if (std::string_view(type->name) == name)",
        "            return *type;",
        "    }",
        '    A_ASSERT_TEXT(false, "unknown enumeration");',
        "    return *enumerations[0];",
        "}",
    ]
    return text([
        banner(ALL),
        *include(f"{BASE}/base/aassert.h", f"{PROTOCOL}/record_xml.h", f"{TOOL}/calls.h",
                 f"{TOOL}/vocabulary_info.h"),
        "",
        "#include <string_view>",
        *_namespace(lines),
    ])


# calls


def _call_head(command):
    return join(f"void call_{command.name}",
                ["Parameters const &in", "VCTP3::APIQt &api", "Answer *answer"], "")


def calls_h(vocabulary):
    lines = ["/// \\name Each command with all of its parameters, absent ones marked so", "/// @{"]
    for command in vocabulary.commands.values():
        lines.append(_call_head(command) + ";")
    return text([
        banner("commands.tbl"),
        "#pragma once",
        "",
        "namespace VCTP3 {",
        "class APIQt;",
        "}",
        *_namespace(["class Answer;", "class Parameters;", "", *lines, "/// @}"]),
    ])


def _call(command):
    group = f"*heard_group<VCTP3::{command.group.name}>(answer)"
    lines, values = [], []
    for one in command.fields:
        name, tag = one.member, f'"{one.tag}"'
        how = "option" if one.optional else "value"
        if one.type.is_speed:
            lines.append(f"    auto const {name} = in.option_speed({tag});")
        else:
            lines.append(f"    auto const {name} = in.{how}<{_qualified(one.type)}>({tag});")
        if one.optional:
            values.append(f"{name}.has_value()")
        values.append(f"*{name}" if one.optional or one.type.is_speed else name)
    return [*lines, join(f"    api.cmd_{command.name}", [*values, group], ";")]


def calls_cpp(vocabulary):
    lines = []
    for command in vocabulary.commands.values():
        head = _call_head(command)
        if not command.fields:
            head = head.replace("const &in", "const &")
        lines += [head, "{", *_call(command), "}", ""]
    return text([
        banner("commands.tbl"),
        *include(f"{TOOL}/calls.h"), "",
        *include(f"{PROTOCOL}/api_qt.h", f"{TOOL}/json_messages.h", f"{TOOL}/parameters.h"),
        *_namespace(lines[:-1]),
    ])


# JSON


def _json_types(vocabulary):
    """Types whose JSON is generated; the leaves are written by hand."""
    for kind in _types(vocabulary).values():
        if kind.kind in ("enum", "record", "set", "vector", "list"):
            yield kind


def _json_head(kind):
    space = " const &" if kind.is_class else " "
    return f"JsonValue json_of({_qualified(kind)}{space}value)"


def json_records_h(vocabulary):
    return text([
        banner("enums.tbl, records.tbl and collections.tbl"),
        "#pragma once",
        "",
        *include(f"{PROTOCOL}/records.h", f"{TOOL}/json_leaves.h"),
        *_namespace([
            "/// \\name Values of the protocol as JSON: element names as keys, in wire order",
            "/// @{",
            *[_json_head(kind) + ";" for kind in _json_types(vocabulary)],
            "/// @}",
        ]),
    ])


def _json_body(kind, vocabulary):
    if kind.kind == "enum":
        return [f"    return json_of(VCTP3::{kind.name}_to_string(value));"]
    if kind.item:
        return ["    return json_of_items(value);"]
    lines = ["    JsonValue out = JsonValue::object();"]
    for one in vocabulary.records[kind.name].fields:
        add = f'out.add("{one.tag}", {_value(one, "value." + one.member)});'
        if one.presence == "?":
            lines += [f"    if (value.has_{one.member})", f"        {add}"]
        else:
            lines.append(f"    {add}")
    return [*lines, "    return out;"]


def json_records_cpp(vocabulary):
    lines = [
        "namespace {",
        "",
        "template <typename Items> JsonValue json_of_items(Items const &items)",
        "{",
        "    JsonValue out = JsonValue::array();",
        "    for (auto const &item : items)",
        "        out.append(json_of(item));",
        "    return out;",
        "}",
        "",
        "} // namespace",
        "",
    ]
    for kind in _json_types(vocabulary):
        lines += [_json_head(kind), "{", *_json_body(kind, vocabulary), "}", ""]
    return text([
        banner("enums.tbl, records.tbl and collections.tbl"),
        *include(f"{TOOL}/json_records.h"),
        *_namespace(lines[:-1]),
    ])


def _outside(one):
    """A field as a parameter outside of the protocol's namespace."""
    written = argument(one)
    inner = one.type.item.type if one.type.item else one.type
    if inner.kind in ("enum", "record") or one.type.kind in ("set", "vector"):
        name = inner.cpp if one.type.kind == "list" else one.type.cpp
        written = written.replace(name, f"VCTP3::{name}", 1)
    return written


def _message_function(kind, message):
    fields = [_outside(one) for one in message.fields]
    lines = [join(f"JsonValue {kind}_{message.name}", fields, ""), "{",
             f'    JsonValue out = start_message("{kind}", "{message.name}");']
    for one in message.fields:
        if one.presence == "?":
            lines += [f"    if ({one.member})",
                      f'        out.add("{one.tag}", {_value(one, "*" + one.member)});']
        else:
            lines.append(f'    out.add("{one.tag}", {_value(one, one.member)});')
    return [*lines, "    return out;", "}", ""]


def _heard(group, vocabulary):
    lines = []
    for reply in [*group.replies, vocabulary.replies["error"]]:
        send = "failed" if reply.name == "error" else "last" if reply.last else "more"
        lines += [
            f"    QObject::connect(group, &VCTP3::{group.name}::sig_{reply.name}, answer,",
            join("        [answer]", [_outside(one) for one in reply.fields], " {"),
            f"            answer->{send}(reply_{reply.name}({', '.join(names(reply))}));",
            "        });",
        ]
    return lines


def json_messages_h(vocabulary):
    lines = [
        "/// \\name Replies as JSON, under the key \"reply\"",
        "/// @{",
        *[join(f"JsonValue reply_{r.name}", [_outside(one) for one in r.fields], ";")
          for r in vocabulary.replies.values()],
        "/// @}",
        "",
        "/// \\name Reports as JSON, under the key \"report\"",
        "/// @{",
        *[join(f"JsonValue report_{r.name}", [_outside(one) for one in r.fields], ";")
          for r in vocabulary.reports.values()],
        "/// @}",
        "",
        "/// \\name What comes to a callback group goes to \\a answer",
        "/// @{",
        *[f"void hear(VCTP3::{group.name} const *group, Answer *answer);"
          for group in vocabulary.groups],
        "/// @}",
        "",
        "/// A new group, heard by its parent.",
        "template <typename Group> Group *heard_group(Answer *answer)",
        "{",
        "    auto *const group = new Group(answer);",
        "    hear(group, answer);",
        "    return group;",
        "}",
        "",
        "/// Calls \\a report with each report that comes to \\a api while \\a context lives.",
        join("void hear_reports", ["VCTP3::APIQt const *api", "QObject *context",
                                   "std::function<void(JsonValue const &)> const &report"], ";"),
    ]
    return text([
        banner("replies.tbl, reports.tbl and groups.tbl"),
        "#pragma once",
        "",
        *include(f"{BASE}/base/aoption.h", f"{PROTOCOL}/callback_groups.h", f"{TOOL}/answer.h",
                 f"{TOOL}/json_records.h"),
        "",
        "#include <functional>",
        "",
        "namespace VCTP3 {",
        "class APIQt;",
        "}",
        *_namespace(lines),
    ])


def json_messages_cpp(vocabulary):
    lines = [
        "namespace {",
        "",
        "JsonValue start_message(char const *kind, char const *name)",
        "{",
        "    JsonValue out = JsonValue::object();",
        "    out.add(kind, JsonValue::text(QLatin1String(name)));",
        "    return out;",
        "}",
        "",
        "} // namespace",
        "",
    ]
    for reply in vocabulary.replies.values():
        lines += _message_function("reply", reply)
    for report in vocabulary.reports.values():
        lines += _message_function("report", report)
    for group in vocabulary.groups:
        lines += [f"void hear(VCTP3::{group.name} const *group, Answer *answer)", "{",
                  *_heard(group, vocabulary), "}", ""]
    lines += [join("void hear_reports", ["VCTP3::APIQt const *api", "QObject *context",
                                         "std::function<void(JsonValue const &)> const &report"],
                   ""), "{"]
    for report in vocabulary.reports.values():
        lines += [
            f"    QObject::connect(api, &VCTP3::APIQt::report_{report.name}, context,",
            join("        [report]", [_outside(one) for one in report.fields], " {"),
            f"            report(report_{report.name}({', '.join(names(report))}));",
            "        });",
        ]
    lines += ["}"]
    return text([
        banner("replies.tbl, reports.tbl and groups.tbl"),
        *include(f"{TOOL}/json_messages.h"), "", *include(f"{PROTOCOL}/api_qt.h"),
        *_namespace(lines),
    ])


# sample arguments for tests

# kind -> (as an argument, as JSON, on the wire)
SAMPLES = {
    "text": ("a=\"b\" <ü>", '"a=\\"b\\" <ü>"', "a=&quot;b&quot; &lt;ü&gt;"),
    "uchar": ("255", "255", "255"),
    "ushort": ("65535", "65535", "65535"),
    "uint": ("4294967295", "4294967295", "4294967295"),
    "uint64": ("18446744073709551615", '"18446744073709551615"', "18446744073709551615"),
    "int": ("-2147483648", "-2147483648", "-2147483648"),
    "bool": ("true", "true", "true"),
    "flag": ("true", "true", ""),
    "speed": ("-0.5X", '"-0.5X"', "-0.5X"),
}


def _element(tag, content):
    return f"<{tag}>{content}</{tag}>" if content else f"<{tag} />"


def _sample(kind, vocabulary):
    """One value of a type in its three forms; of a record, with every field."""
    if kind.kind in SAMPLES:
        return SAMPLES[kind.kind]
    if kind.kind == "enum":
        name = vocabulary.enums[kind.name].names[-1]
        return name, f'"{name}"', name
    if kind.kind == "record":
        members, wire = [], ""
        for one in vocabulary.records[kind.name].fields:
            _, json, content = _sample(one.type, vocabulary)
            members.append(f'"{one.tag}":{json}')
            wire += _element(one.tag, content)
        json = "{" + ",".join(members) + "}"
    elif kind.kind == "set":
        used = vocabulary.enums[kind.item.type.name].names[:2]
        json = "[" + ",".join(f'"{name}"' for name in used) + "]"
        wire = "".join(_element(kind.item.name, name) for name in used)
    else:
        _, item, content = _sample(kind.item.type, vocabulary)
        json = f"[{item},{item}]"
        wire = _element(kind.item.name, content) * 2
    return json, json, wire


def _raw(value):
    """A C++ literal of UTF-8 text."""
    return f'R"~({value})~"'


def _arguments(fields, vocabulary):
    given = [_raw(f"{one.tag}={_sample(one.type, vocabulary)[0]}") for one in fields]
    return "{" + ", ".join(given) + "}"


def _wire(name, fields, vocabulary):
    return _element(name, "".join(_element(one.tag, _sample(one.type, vocabulary)[2])
                                  for one in fields))


def _sample_row(command, fields, title, vocabulary):
    return (f'    {{"{command.name}, {title}", "{command.name}", '
            f"{_arguments(fields, vocabulary)}, {_raw(_wire(command.name, fields, vocabulary))}}},")


def _line(kind, message, fields, vocabulary):
    """What scripts read of a message."""
    members = [f'"{kind}":"{message.name}"'] + [
        f'"{one.tag}":{_sample(one.type, vocabulary)[1]}' for one in fields]
    return "{" + ",".join(members) + "}"


def call_samples_h(vocabulary):
    lines = ["/// A command as it is typed, and its element on the wire. Texts are UTF-8.",
             "struct CallSample", "{", "    char const *title;", "    char const *command;",
             "    std::vector<char const *> arguments;", "    char const *wire;", "};", "",
             "inline std::vector<CallSample> const call_samples {"]
    for command in vocabulary.commands.values():
        lines.append(_sample_row(command, command.fields, "everything", vocabulary))
        if command.optional:
            lines.append(_sample_row(command, command.required, "least", vocabulary))
    return text([banner("commands.tbl"), "#pragma once", "", "#include <vector>", "", *lines, "};"])


def _report_rows(vocabulary):
    for report in vocabulary.reports.values():
        required = [one for one in report.fields if not one.optional]
        for fields in [report.fields] + ([required] if required != report.fields else []):
            wire = _element("report", _wire(report.name, fields, vocabulary))
            yield (f'    {{"{report.name}", {_raw(wire)}, '
                   f"{_raw(_line('report', report, fields, vocabulary))}}},")


def _answer_rows(vocabulary):
    """The first command of each group with all replies that it may get."""
    for group in vocabulary.groups:
        command = next(c for c in vocabulary.commands.values() if c.group is group)
        wire = "".join(_element("reply", "<xid>1</xid>" + _wire(r.name, r.fields, vocabulary))
                       for r in group.replies)
        lines = [_line("reply", r, r.fields, vocabulary) for r in group.replies]
        yield (f'    {{"{command.name}", {_arguments(command.fields, vocabulary)}, {_raw(wire)}, '
               f"{{{', '.join(_raw(line) for line in lines)}}}}},")


def message_samples_h(vocabulary):
    return text([
        banner("groups.tbl, replies.tbl and reports.tbl"), "#pragma once", "", "#include <vector>",
        "",
        "/// A report with every field it can have, or with the least, and what scripts read of it.",
        "struct ReportSample", "{", "    char const *name;", "    char const *wire;",
        "    char const *line;", "};", "",
        "inline std::vector<ReportSample> const report_samples {", *_report_rows(vocabulary), "};",
        "",
        "/// A command as it is typed, its replies under the id 1, and what scripts read of them.",
        "struct AnswerSample", "{", "    char const *command;",
        "    std::vector<char const *> arguments;", "    char const *wire;",
        "    std::vector<char const *> lines;", "};", "",
        "inline std::vector<AnswerSample> const answer_samples {", *_answer_rows(vocabulary), "};"])


FILES = {
    f"{TOOL}/vocabulary_tables.cpp": vocabulary_cpp,
    f"{TOOL}/calls.h": calls_h,
    f"{TOOL}/calls.cpp": calls_cpp,
    f"{TOOL}/json_records.h": json_records_h,
    f"{TOOL}/json_records.cpp": json_records_cpp,
    f"{TOOL}/json_messages.h": json_messages_h,
    f"{TOOL}/json_messages.cpp": json_messages_cpp,
    "tests/tarnctl/call_samples.h": call_samples_h,
    "tests/tarnctl/message_samples.h": message_samples_h,
}
