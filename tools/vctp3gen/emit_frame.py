# SPDX-License-Identifier: Apache-2.0
"""The parser's dispatch, the command classes, callback groups and the toolkit binding."""
from emit_types import (BASE, PROTOCOL, add_field, in_namespace, include, parameter, read_field,
                        text)
from out import banner, join

ERROR_CALLBACK = "AFunction2<AString, ErrorCode> const &on_error"


def argument(one):
    """A field as a parameter of reply_x and report_x."""
    if one.presence == "?":
        return f"AOption<{one.type.cpp}> const &{one.member}"
    return parameter(one.type, one.member)


def arguments(message):
    return [argument(one) for one in message.fields]


def names(message):
    return [one.member for one in message.fields]


def callback_type(reply):
    """The callable that API takes for a reply."""
    kinds = ", ".join(one.type.cpp for one in reply.fields)
    return f"AFunction{len(reply.fields)}<{kinds}>" if reply.fields else "AFunction"


# APIParser


def parser_members(vocabulary):
    replies, reports = [], []
    for reply in vocabulary.replies.values():
        replies.append(join(f"    virtual void reply_{reply.name}",
                            ["AString const &xid", *arguments(reply)], ";"))
    for report in vocabulary.reports.values():
        reports.append(join(f"    virtual void report_{report.name}", arguments(report), ";"))
    return {"REPLIES": replies, "REPORTS": reports}


def _dispatch(message, kind):
    lines = [f"    static void {kind}_{message.name}(APIParser &parser, XMLTree const &message, "
             "AString const &xid)", "    {"]
    if not message.fields:
        # Only replies can be without fields; a report without any would carry nothing.
        return [
            f"    static void {kind}_{message.name}(APIParser &parser, XMLTree const &, "
            "AString const &xid)", "    {",
            f"        parser.{kind}_{message.name}({'xid' if kind == 'reply' else ''});", "    }"]
    lines += ["        AString error;", "        FieldReader fields(message, &error);"]
    for one in message.fields:
        if one.presence == "?":
            lines.append(f"        AOption<{one.type.cpp}> {one.member};")
            lines.append(f"        fields.attempt(Word::{one.tag}, &{one.member});")
        else:
            lines.append(f"        {one.type.cpp} {one.member}{one.type.initial};")
            lines.append("    " + read_field(one, one.member))
    values = (["xid"] if kind == "reply" else []) + names(message)
    lines += [
        "        if (fields.ok())",
        join(f"            parser.{kind}_{message.name}", values, ";"),
        "        else",
        "            parser.store_error(xid, error);",
        "    }",
    ]
    return lines


def parser_dispatch_cpp(vocabulary):
    lines = ["struct APIParser::Dispatch", "{"]
    for kind, message in vocabulary.messages():
        lines += _dispatch(message, kind) + [""]
    lines[-1:] = ["};", ""]
    for kind, table in (("reply", vocabulary.replies), ("report", vocabulary.reports)):
        lines += [
            f"APIParser::MessageTable const &APIParser::{kind}_table()",
            "{",
            "    static constexpr MessageTable::Row rows[] = {",
            *[f"        {{Word::{name}, &Dispatch::{kind}_{name}}}," for name in table],
            "    };",
            "    static MessageTable const table(rows);",
            "    return table;",
            "}",
            "",
        ]
    for kind, message in vocabulary.messages():
        unnamed = ["AString const &"] if kind == "reply" else []
        unnamed += [a[:len(a) - len(n)].rstrip() for a, n in
                    zip(arguments(message), names(message))]
        lines.append(join(f"void APIParser::{kind}_{message.name}", unnamed, " {}"))
    return text([
        banner("replies.tbl and reports.tbl"),
        *include(f"{PROTOCOL}/api_parser.h", f"{PROTOCOL}/field_reader_p.h",
                 f"{PROTOCOL}/tag_table_p.h"),
        *in_namespace(lines),
    ])


# forms of a command


class Form:
    """One of a command's forms: its parameters, and what it hands to the full form."""

    def __init__(self, command, given=None):
        """given: how many optional parameters a short form takes; None for the full form."""
        self.command = command
        self.full = given is None
        self.parameters = []
        self.values = []
        for number, one in enumerate(command.fields):
            place = number - len(command.required)
            value = f"{one.type.cpp} const &{one.member}"
            if not one.optional:
                self.parameters.append(value)
                self.values.append(one.member)
            elif self.full:
                self.parameters += [f"bool has_{one.member}", value]
                self.values += [f"has_{one.member}", one.member]
            elif place < given:
                self.parameters.append(value)
                self.values += ["true", one.member]
            else:
                self.values += ["false", absent(one.type)]


def absent(kind):
    """What stands for the value of a parameter that is not there."""
    return {"int": "0", "unsigned int": "0U", "unsigned short": "0", "unsigned char": "0",
            "bool": "false", "unsigned long long": "0ULL"}.get(kind.cpp, f"{kind.cpp}()")


def forms(command):
    result = [Form(command)]
    if command.optional:
        result += [Form(command, given) for given in range(len(command.optional) + 1)]
    return result


def describe(command):
    """The row as a doc comment."""
    fields = " ".join(one.tag + one.presence for one in command.fields)
    replies = " ".join(reply.name + ("" if reply.last else "*") for reply in command.group.replies)
    sent = f"Sends {fields}. " if fields else ""
    return f"    /// {sent}Answer: {replies}."


def method(command, result, owner, parameters, tail=""):
    return join(f"{result} {owner}cmd_{command.name}", parameters, tail)


def members(vocabulary, declare):
    """The commands of a class, family by family; `declare` gives the lines of a form."""
    lines, family = [], None
    for command in vocabulary.commands.values():
        if command.family is not family:
            family = command.family
            lines += ["", f"    // {family.name}"]
        lines.append(describe(command))
        for form in forms(command):
            lines += declare(command, form)
    return lines[1:]


# APICommand


def command_members(vocabulary):
    def declare(command, form):
        return [method(command, "    void", "", ["AString const &xid", *form.parameters], ";")]

    return {"COMMANDS": members(vocabulary, declare)}


def _command_body(command):
    lines = [f"    CommandTree tree(xid, Word::{command.name});"]
    for one in command.fields:
        present, value = f"has_{one.member}", one.member
        lines.append(add_field("tree", one, value, present, f"{present} && {value}"))
    return lines + ["    send_command(tree);"]


def command_forms_cpp(vocabulary):
    lines = []
    for command in vocabulary.commands.values():
        for form in forms(command):
            lines += [method(command, "void", "APICommand::",
                             ["AString const &xid", *form.parameters]), "{"]
            if form.full:
                lines += _command_body(command)
            else:
                lines.append(join(f"    cmd_{command.name}", ["xid", *form.values], ";"))
            lines += ["}", ""]
    return text([
        banner("commands.tbl"),
        *include(f"{PROTOCOL}/api_command.h", f"{PROTOCOL}/record_text_p.h"),
        *in_namespace(lines[:-1]),
    ])


# API


def callbacks(command):
    """The callables of the callback forms, in their order."""
    return [*command.replies]


def callback_parameters(command):
    return [f"{callback_type(r)} const &on_{r.name}" for r in callbacks(command)] + [
        ERROR_CALLBACK]


def api_members(vocabulary):
    def declare(command, form):
        return [
            method(command, "    AString", "", form.parameters + callback_parameters(command), ";"),
            method(command, "    void", "", form.parameters, ";"),
        ]

    replies = [join(f"    void reply_{reply.name}", ["AString const &xid", *arguments(reply)],
                    " override;") for reply in vocabulary.replies.values()]
    return {"COMMANDS": members(vocabulary, declare), "REPLIES": replies}


def api_forms_cpp(vocabulary):
    lines = []
    for command in vocabulary.commands.values():
        kinds = [r.name for r in callbacks(command)] + ["error"]
        given = [f"on_{name}" for name in kinds]
        for form in forms(command):
            lines += [method(command, "AString", "API::",
                             form.parameters + callback_parameters(command)), "{"]
            if form.full:
                lines.append("    ReplyFunctions functions;")
                lines += [f"    functions.set(MessageId::reply_{name}, on_{name});"
                          for name in kinds]
                lines.append("    AString const xid = pending->open(functions);")
                lines.append(join(f"    APICommand::cmd_{command.name}", ["xid", *form.values],
                                  ";"))
                lines.append("    return xid;")
            else:
                lines.append(join(f"    return cmd_{command.name}", form.values + given, ";"))
            lines += ["}", ""]
            lines += [method(command, "void", "API::", form.parameters), "{"]
            if form.full:
                values = ["pending->untracked_xid()", *form.values]
                lines.append(join(f"    APICommand::cmd_{command.name}", values, ";"))
            else:
                lines.append(join(f"    cmd_{command.name}", form.values, ";"))
            lines += ["}", ""]
    return text([
        banner("commands.tbl"),
        *include(f"{PROTOCOL}/api.h", f"{PROTOCOL}/pending_table_p.h"),
        *in_namespace(lines[:-1]),
    ])


def api_replies_cpp(vocabulary):
    lines = []
    for reply in vocabulary.replies.values():
        values = ["xid", f"MessageId::reply_{reply.name}", *names(reply)]
        call = "finish" if reply.last else "answer"
        lines += [
            join(f"void API::reply_{reply.name}", ["AString const &xid", *arguments(reply)], ""),
            "{",
            join(f"    pending->{call}<{callback_type(reply)}>", values, ";"),
            "}",
            "",
        ]
    return text([
        banner("replies.tbl"),
        *include(f"{PROTOCOL}/api.h", f"{PROTOCOL}/pending_table_p.h"),
        *in_namespace(lines[:-1]),
    ])


# callback groups


def _signals(vocabulary, group):
    return [*group.replies, vocabulary.replies["error"]]


def callback_groups_h(vocabulary):
    lines = []
    for group in vocabulary.groups:
        name = group.name
        heard = _signals(vocabulary, group)
        users = [c.name for c in vocabulary.commands.values() if c.group is group]
        uses = ", ".join(users) if len(users) < 4 else f"{len(users)} commands"
        lines += [
            f"/// Turns the answers of {uses} into signals.",
            f"class TARN_EXPORT {name} : public QObject",
            "{",
            "    Q_OBJECT",
            "",
            "public:",
            f"    explicit {name}(QObject *parent = nullptr);",
            f"    ~{name}() override;",
            "",
            "    /// One more command will answer to this group.",
            "    void addref() const;",
            *[join(f"    void send_{r.name}", arguments(r), ";") for r in heard],
            "",
            "Q_SIGNALS:",
            *[join(f"    void sig_{r.name}", arguments(r), ";") for r in heard],
            "",
            "private:",
            "    friend class APIQt;",
            "    CallbackGroupHelper *const helper;",
            *[f"    {callback_type(r)} on_{r.name};" for r in heard],
            "};",
            "",
        ]
    return text([
        banner("groups.tbl"),
        "#pragma once",
        "",
        *include(f"{BASE}/base/afunction.h", f"{PROTOCOL}/records.h"),
        "",
        "#include <QObject>",
        *in_namespace([
            "class CallbackGroupHelper;",
            "",
            "// A group can serve several commands at a time, and can go while they are in flight: their",
            "// answers are then dropped. Signals are emitted on the thread that reads the answers.",
            "",
            *lines[:-1],
        ]),
    ])


def _forwards(function, target, messages):
    """A function for each message that does nothing but hand its arguments on.

    The two names hold the message's in place of {}."""
    lines = []
    for message in messages:
        lines += [
            join(f"void {function.format(message.name)}", arguments(message), ""),
            "{",
            join(f"    {target.format(message.name)}", names(message), ";"),
            "}",
            "",
        ]
    return lines


def callback_groups_cpp(vocabulary):
    lines = []
    for group in vocabulary.groups:
        name = group.name
        heard = _signals(vocabulary, group)
        lines += [
            f"{name}::{name}(QObject *parent)",
            "    : QObject(parent)",
            "    , helper(new CallbackGroupHelper(this))",
            "{",
        ]
        for reply in heard:
            bind = "bind_final" if reply.last else "bind_streaming"
            lines.append(f"    helper->{bind}<&{name}::send_{reply.name}>(&on_{reply.name});")
        lines += ["}", "", f"{name}::~{name}()", "{", "    helper->detach();", "}", ""]
        lines += [f"void {name}::addref() const", "{", "    helper->addref();", "}", ""]
        lines += _forwards(name + "::send_{}", "Q_EMIT sig_{}", heard)
    return text([
        banner("groups.tbl"),
        *include(f"{PROTOCOL}/callback_groups.h", f"{PROTOCOL}/callback_group_helper.h"),
        *in_namespace(lines[:-1]),
    ])


# APIQt


def group_parameter(command):
    return f"{command.group.name} const &group"


def qt_members(vocabulary):
    def declare(command, form):
        return [
            method(command, "    void", "", [*form.parameters, group_parameter(command)], ";"),
            method(command, "    void", "", form.parameters, ";"),
        ]

    reports = vocabulary.reports.values()
    return {
        "COMMANDS": members(vocabulary, declare),
        "REPORT_SIGNALS": [join(f"    void report_{r.name}", arguments(r), ";") for r in reports],
        "DO_REPORTS": [join(f"    virtual void do_report_{r.name}", arguments(r), ";")
                       for r in reports],
    }


def qt_forms_cpp(vocabulary):
    lines = []
    for command in vocabulary.commands.values():
        given = [f"group.on_{r.name}" for r in callbacks(command)] + ["group.on_error"]
        for form in forms(command):
            lines += [method(command, "void", "APIQt::",
                             [*form.parameters, group_parameter(command)]), "{"]
            if form.full:
                lines.append("    group.addref();")
                lines.append(join(f"    impl->cmd_{command.name}", form.values + given, ";"))
            else:
                lines.append(join(f"    cmd_{command.name}", [*form.values, "group"], ";"))
            lines += ["}", "", method(command, "void", "APIQt::", form.parameters), "{"]
            if form.full:
                lines.append(join(f"    impl->cmd_{command.name}", form.values, ";"))
            else:
                lines.append(join(f"    cmd_{command.name}", form.values, ";"))
            lines += ["}", ""]
    lines += _forwards("APIQt::do_report_{}", "Q_EMIT report_{}", vocabulary.reports.values())
    return text([
        banner("commands.tbl and reports.tbl"),
        *include(f"{PROTOCOL}/api_qt.h", f"{PROTOCOL}/api_qt_impl_p.h"),
        *in_namespace(lines[:-1]),
    ])


def qt_impl_members(vocabulary):
    reports = vocabulary.reports.values()
    return {"REPORTS": [join(f"    void report_{r.name}", arguments(r), " override;")
                        for r in reports]}


def qt_impl_reports_cpp(vocabulary):
    lines = _forwards("APIQtImpl::report_{}", "owner->do_report_{}",
                      vocabulary.reports.values())
    return text([
        banner("reports.tbl"),
        *include(f"{PROTOCOL}/api_qt.h", f"{PROTOCOL}/api_qt_impl_p.h"),
        *in_namespace(lines[:-1]),
    ])


# reports that are read ahead


def _read_ahead(vocabulary):
    return [r for r in vocabulary.reports.values() if not r.decoder]


def report_ahead_members(vocabulary):
    return {"REPORTS": [join(f"    void report_{r.name}", arguments(r), " override;")
                        for r in _read_ahead(vocabulary)]}


def report_ahead_cpp(vocabulary):
    rows = [f"        {{Word::{r.name}, ReportDecoder::{r.decoder}}},"
            for r in vocabulary.reports.values() if r.decoder]
    lines = [
        "TagTable<ReportDecoder> const &report_decoders()",
        "{",
        "    static constexpr TagTable<ReportDecoder>::Row rows[] = {",
        *rows,
        "    };",
        "    static TagTable<ReportDecoder> const table(rows);",
        "    return table;",
        "}",
        "",
    ]
    lines += _forwards("ReportReader::report_{}", "hold<&APIQtImpl::report_{}>",
                       _read_ahead(vocabulary))
    return text([
        banner("reports.tbl"),
        *include(f"{PROTOCOL}/api_qt_impl_p.h", f"{PROTOCOL}/report_ahead_p.h",
                 f"{PROTOCOL}/tag_table_p.h"),
        *in_namespace(lines[:-1]),
    ])
