# SPDX-License-Identifier: Apache-2.0
"""The server's side: commands read and handed to a handler, replies and reports written."""
from emit_types import BASE, PROTOCOL, include, speed_suffix, text
from out import banner, join

SIM = "sim/vesk"


def qualified(kind):
    """The C++ type as code outside the protocol's namespace writes it."""
    if kind.kind == "list":
        return f"std::list<{qualified(kind.item.type)}>"
    if kind.kind in ("enum", "record", "set", "vector"):
        return f"VCTP3::{kind.cpp}"
    return kind.cpp


def parameter(one):
    kind = qualified(one.type)
    if one.presence == "?":
        return f"AOption<{kind}> const &{one.member}"
    return f"{kind} const &{one.member}" if one.type.is_class else f"{kind} {one.member}"


def args_name(command):
    return "".join(part.capitalize() for part in command.name.split("_")) + "Args"


def _args(command):
    lines = [f"struct {args_name(command)}", "{"]
    for one in command.fields:
        kind = qualified(one.type)
        if one.presence == "?":
            lines.append(f"    AOption<{kind}> {one.member};")
        else:
            lines.append(f"    {kind} {one.member}{one.type.initial};")
    return lines + ["};"]


def _reader(command):
    return join(f"bool read_{command.name}",
                ["XMLTree const &command", f"{args_name(command)} *args", "AString *error"], "")


def handler_h(vocabulary):
    structs, readers, methods, family = [], [], [], None
    for command in vocabulary.commands.values():
        if command.family is not family:
            family = command.family
            structs += [f"// {family.name}", ""]
            readers += [f"// {family.name}"]
            methods += ["", f"    // {family.name}"]
        structs += [*_args(command), ""]
        readers.append(_reader(command) + ";")
        methods.append(join(f"    virtual void on_{command.name}",
                            ["VeskRequest &request", f"{args_name(command)} const &args"],
                            " = 0;"))
    return text([
        banner("commands.tbl"),
        "#pragma once",
        "",
        *include(f"{BASE}/base/aoption.h", f"{PROTOCOL}/records.h", f"{BASE}/xml/xml_tree.h"),
        "",
        "class VeskRequest;",
        "",
        "// The parameters of each command: an option for what may be absent, a bool for a flag.",
        "",
        *structs,
        "// Readers of a command's parameters. False: the reason, which names the parameter, in *error.",
        "",
        *readers,
        "",
        "/// Answers commands, each by the function of its name, which ends \\a request by one last",
        "/// reply. Families of commands are classes that derive virtually and override theirs.",
        "class VeskHandler",
        "{",
        "public:",
        "    virtual ~VeskHandler() = default;",
        *methods,
        "};",
        "",
        "/// Whether there is a command of that name.",
        "bool vesk_knows_command(AString const &name);",
        "/// Reads the command element \\a command and calls its function. False, and nothing called:",
        "/// an unknown name or a bad parameter, with the reason in *error.",
        join("bool vesk_dispatch", ["XMLTree const &command", "VeskRequest &request",
                                    "VeskHandler &handler", "AString *error"], ";"),
    ])


def _read_body(command):
    if not command.fields:
        return [
            f"bool read_{command.name}(XMLTree const &, {args_name(command)} *, AString *)",
            "{",
            "    return true;",
            "}",
        ]
    lines = [_reader(command), "{", "    FieldReader fields(command, error);"]
    for one in command.fields:
        call = "flag" if one.presence == "!" else "take" if one.presence == "?" else "need"
        call += speed_suffix(one.type)
        lines.append(f"    fields.{call}(Word::{one.tag}, &args->{one.member});")
    return lines + ["    return fields.ok();", "}"]


def handler_cpp(vocabulary):
    lines = []
    for command in vocabulary.commands.values():
        lines += _read_body(command) + [""]
    calls = [
        f"        {{Word::{name}, &call<{args_name(command)}, read_{name}, "
        f"&VeskHandler::on_{name}>}},"
        for name, command in vocabulary.commands.items()]
    return text([
        banner("commands.tbl"),
        *include(f"{SIM}/vesk_handler.h", f"{BASE}/base/astring_format.h",
                 f"{PROTOCOL}/field_reader_p.h", f"{PROTOCOL}/tag_table_p.h"),
        "",
        "using VCTP3::FieldReader;",
        "using VCTP3::Word;",
        "",
        *lines,
        "namespace {",
        "",
        "using Call = bool (*)(XMLTree const &, VeskRequest &, VeskHandler &, AString *);",
        "",
        "template <typename Args, bool (*read)(XMLTree const &, Args *, AString *),",
        "    void (VeskHandler::*method)(VeskRequest &, Args const &)>",
        "bool call(XMLTree const &command, VeskRequest &request, VeskHandler &handler, "
        "AString *error)",
        "{",
        "    Args args;",
        "    if (!read(command, &args, error))",
        "        return false;",
        "    (handler.*method)(request, args);",
        "    return true;",
        "}",
        "",
        "VCTP3::TagTable<Call> const &commands()",
        "{",
        "    static constexpr VCTP3::TagTable<Call>::Row rows[] = {",
        *calls,
        "    };",
        "    static VCTP3::TagTable<Call> const table(rows);",
        "    return table;",
        "}",
        "",
        "} // namespace",
        "",
        "bool vesk_knows_command(AString const &name)",
        "{",
        "    return commands().find(name) != nullptr;",
        "}",
        "",
        join("bool vesk_dispatch", ["XMLTree const &command", "VeskRequest &request",
                                    "VeskHandler &handler", "AString *error"], ""),
        "{",
        "    Call const *found = commands().find(command.get_tag());",
        "    if (found)",
        "        return (*found)(command, request, handler, error);",
        "    *error = AString::l1(\"There is no command '%1'\").arg(command.get_tag());",
        "    return false;",
        "}",
    ])


def _messages_h(vocabulary, kind, table, what):
    lines = [join(f"XMLTree {m.name}", [parameter(one) for one in m.fields], ";")
             for m in table.values()]
    return text([
        banner(f"{kind}.tbl"),
        "#pragma once",
        "",
        *include(f"{BASE}/base/aoption.h", f"{PROTOCOL}/records.h", f"{BASE}/xml/xml_tree.h"),
        "",
        f"/// Elements of the {kind} with their fields; {what}",
        f"namespace Vesk{kind.capitalize()} {{",
        "",
        *lines,
        "",
        f"}} // namespace Vesk{kind.capitalize()}",
    ])


def _messages_cpp(vocabulary, kind, table):
    lines = []
    for message in table.values():
        lines += [join(f"XMLTree {message.name}", [parameter(one) for one in message.fields], ""),
                  "{"]
        if message.fields:
            lines.append(f"    ElementBuilder element(word(Word::{message.name}));")
        for one in message.fields:
            call = "add" + speed_suffix(one.type)
            if one.presence == "?":
                lines.append(f"    element.{call}_if({one.member}.has_value(), Word::{one.tag}, "
                             f"{one.member}.value());")
            else:
                lines.append(f"    element.{call}(Word::{one.tag}, {one.member});")
        lines.append("    return element.take();" if message.fields else
                     f"    return XMLTree(word(Word::{message.name}));")
        lines += ["}", ""]
    return text([
        banner(f"{kind}.tbl"),
        *include(f"{SIM}/{kind}.h", f"{PROTOCOL}/element_builder_p.h"),
        "",
        "using VCTP3::ElementBuilder;",
        "using VCTP3::Word;",
        "using VCTP3::word;",
        "",
        f"namespace Vesk{kind.capitalize()} {{",
        "",
        *lines,
        f"}} // namespace Vesk{kind.capitalize()}",
    ])


def replies_h(vocabulary):
    return _messages_h(vocabulary, "replies", vocabulary.replies,
                       "the message adds the command's id.")


def replies_cpp(vocabulary):
    return _messages_cpp(vocabulary, "replies", vocabulary.replies)


def reports_h(vocabulary):
    return _messages_h(vocabulary, "reports", vocabulary.reports,
                       "each is the only child of its message.")


def reports_cpp(vocabulary):
    return _messages_cpp(vocabulary, "reports", vocabulary.reports)
