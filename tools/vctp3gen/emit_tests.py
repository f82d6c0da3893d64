# SPDX-License-Identifier: Apache-2.0
"""Rows of tests: every form of every command with its bytes, every message and record with each
field missing, doubled and bad.

What is expected is written here, from the tables alone, and not by the code under test.
"""
from xml.sax.saxutils import escape

import emit_frame
from emit_types import PROTOCOL, include, text
from out import banner, join

TESTS = "tests/protocol"


def quoted(value):
    """A C++ literal of UTF-8 text."""
    value = value.replace("\\", "\\\\").replace('"', '\\"').replace("\r\n", "\\r\\n")
    return f'"{value}"'


class Samples:
    """A value for each element, as C++ and as text of the wire; no two elements have the same."""

    def __init__(self, vocabulary):
        self.vocabulary = vocabulary
        self.numbers = {name: n for n, name in enumerate(sorted(vocabulary.elements), 1)}

    def cpp(self, element):
        """The expression of the sample of an element that is no record or collection."""
        n, kind = self.numbers[element.name], element.type.kind
        if kind == "text":
            return f"AString::from_utf8({quoted(self.text(element))})"
        if kind == "enum":
            enum = self.vocabulary.enums[element.type.name]
            return f"{element.type.cpp}::{enum.enumerators[self.enum_index(element)]}"
        if kind == "speed":
            return str(n * 8192)
        return {"bool": "true", "flag": "true", "int": f"-{n}", "uchar": f"{n % 200 + 1}",
                "ushort": f"{n + 60000}", "uint": f"{n + 4000000000}U",
                "uint64": f"{n + 18000000000000000000}ULL"}[kind]

    def text(self, element):
        """The content of a leaf, not escaped."""
        n, kind = self.numbers[element.name], element.type.kind
        if kind == "text":
            return f"{element.name} <{n}> & é"
        if kind == "enum":
            return self.vocabulary.enums[element.type.name].names[self.enum_index(element)]
        if kind == "speed":
            return f"{n / 8:.3f}".rstrip("0").rstrip(".") + "X"
        return {"bool": "true", "flag": "", "int": f"-{n}", "uchar": f"{n % 200 + 1}",
                "ushort": f"{n + 60000}", "uint": f"{n + 4000000000}",
                "uint64": f"{n + 18000000000000000000}"}[kind]

    def enum_index(self, element):
        """Not the first, which is what an untouched value is."""
        count = len(self.vocabulary.enums[element.type.name].names)
        return 1 + self.numbers[element.name] % (count - 1) if count > 1 else 0

    def xml(self, element):
        """The element with its sample, as lines."""
        kind = element.type
        if kind.kind == "record":
            fields = self.vocabulary.records[kind.name].fields
            return node(element.name, [self.xml(one.element) for one in fields])
        if kind.kind == "set":
            return node(element.name, [leaf(kind.item.name, name)
                                       for name in self.set_names(kind)])
        if kind.kind in ("vector", "list"):
            return node(element.name, [self.xml(kind.item)] * min(2, kind.capacity or 2))
        return leaf(element.name, self.text(element))

    def set_names(self, kind):
        """Two names, not in their order."""
        return self.vocabulary.enums[kind.item.type.name].names[1::-1][:kind.capacity]

    def bad(self, element, parent):
        """(lines, error) of the element with something wrong; None where nothing can be."""
        kind = element.type
        if kind.kind in ("text", "flag"):
            return None
        if kind.kind == "enum":
            return (leaf(element.name, "nonsense"),
                    f"Tag {parent} contains invalid value '{kind.name}'")
        if kind.kind == "record":
            return self.bad_record(element)
        if kind.kind == "vector":
            return (node(element.name, [self.xml(kind.item)] * (kind.capacity + 1)),
                    f"Tag {element.name} contains %u subelements. The maximum is {kind.capacity}.")
        if kind.kind in ("set", "list"):
            item = self.bad(kind.item, kind.item.name)
            return item and (node(element.name, [self.xml(kind.item), item[0]]), item[1])
        if kind.kind == "bool":
            return (leaf(element.name, "maybe"),
                    f"Tag {element.name} contains invalid boolean value 'maybe'")
        return leaf(element.name, "x9"), f"Tag {element.name} contains invalid value 'x9'"

    def bad_record(self, element):
        for one in self.vocabulary.records[element.type.name].fields:
            if not one.optional:
                return (node(element.name, []),
                        f"Tag '{one.tag}' not found within '{element.name}'")
            inner = self.bad(one.element, element.name)
            if inner:
                return node(element.name, [inner[0]]), inner[1]
        return (node(element.name, [self.xml(one.element)] * 2),
                f"More than one tag '{one.tag}' found within '{element.name}'")


def leaf(tag, content):
    if not content:
        return f"<{tag} />"
    return f"<{tag}>{escape(content, {chr(39): '&apos;', chr(34): '&quot;'})}</{tag}>"


def node(tag, children):
    if not children:
        return f"<{tag} />"
    return "\r\n".join([f"<{tag}>", *children, f"</{tag}>"])


def rows(kind, name, lines):
    """A table of rows of that kind and the function that gives it."""
    return [
        f"static {kind} const rows[] = {{",
        *lines,
        "};",
        "",
        f"std::span<{kind} const> {name}()",
        "{",
        "    return rows;",
        "}",
    ]


def quoted_lines(xml):
    """A literal of a row for each line."""
    return [f"        {quoted(line)}" for line in xml.splitlines(keepends=True)]


def samples_h(vocabulary):
    samples = Samples(vocabulary)
    lines = []
    for element in vocabulary.elements.values():
        kind = element.type
        if kind.kind not in ("record", "set", "vector", "list"):
            lines.append(f"inline {kind.cpp} sample_{element.name}() "
                         f"{{ return {samples.cpp(element)}; }}")
    simple = len(lines)
    for element in vocabulary.elements.values():
        kind = element.type
        if kind.kind in ("record", "set", "vector", "list"):
            lines.append(f"inline {kind.cpp} sample_{element.name}();")
    lines.append("")
    for element in vocabulary.elements.values():
        kind = element.type
        if kind.kind not in ("record", "set", "vector", "list"):
            continue
        lines += [f"inline {kind.cpp} sample_{element.name}()", "{", f"    {kind.cpp} value;"]
        if kind.kind == "record":
            for one in vocabulary.records[kind.name].fields:
                if one.setter:
                    lines.append(f"    value.{one.setter}(sample_{one.tag}());")
                else:
                    lines.append(f"    value.{one.member} = sample_{one.tag}();")
        elif kind.kind == "set":
            for name in samples.set_names(kind):
                enum = vocabulary.enums[kind.item.type.name]
                place = enum.enumerators[enum.names.index(name)]
                lines.append(f"    value.add_to_set({enum.name}::{place});")
        else:
            lines += [f"    value.push_back(sample_{kind.item.name}());"] * min(
                2, kind.capacity or 2)
        lines += ["    return value;", "}", ""]
    lines.insert(simple, "")
    return text([
        banner("all tables"),
        "#pragma once",
        "",
        *include(f"{PROTOCOL}/records.h"),
        "",
        "/// A value for each element.",
        "namespace VCTP3 {",
        "",
        *lines[:-1],
        "",
        "} // namespace VCTP3",
    ])


# commands


def _command_xml(samples, command, present):
    """The command element with its required fields and the optional ones that are `present`."""
    return node(command.name, [samples.xml(one.element) for one in [*command.required, *present]])


def _command_rows(vocabulary, command):
    """(what, arguments, bytes behind the id) of each form.

    The full form comes with all, with nothing, and with each optional field alone: its flags stand
    beside values that are there in any case, so that a flag of another field would be seen.
    """
    samples = Samples(vocabulary)
    required = [f"sample_{one.tag}()" for one in command.required]
    optional = [f"sample_{one.tag}()" for one in command.optional]
    count = len(optional)

    def full(present):
        flags = ["true" if one in present else "false" for one in command.optional]
        values = [part for pair in zip(flags, optional) for part in pair]
        return required + values, _command_xml(samples, command, present)

    if count:
        yield "full", *full(command.optional)
        yield "full, all absent", *full([])
    if count > 1:
        for one in command.optional:
            yield f"full, only {one.tag}", *full([one])
    for given in range(count + 1):
        yield (f"short {given}", required + optional[:given],
               _command_xml(samples, command, command.optional[:given]))


def command_rows_cpp(vocabulary):
    lines = []
    for command in vocabulary.commands.values():
        replies = " ".join(reply.name for reply in command.group.replies)
        functions = [f"a.{reply.name}()" for reply in emit_frame.callbacks(command)] + ["a.error()"]
        for what, values, xml in _command_rows(vocabulary, command):
            lines += [
                f'    {{"{command.name}, {what}", "{replies}",',
                join(f"        [](APICommand &c) {{ c.cmd_{command.name}",
                     ['AString::l1("7")', *values], "; },", "        "),
                join(f"        [](API &c, ReplyNotes &a) {{ return c.cmd_{command.name}",
                     values + functions, "; },", "        "),
                join(f"        [](API &c) {{ c.cmd_{command.name}", values, "; },", "        "),
                *quoted_lines(xml),
                "    },",
            ]
    return text([
        banner("commands.tbl"),
        *include(f"{TESTS}/command_rows.h", f"{TESTS}/samples.h"),
        "",
        "using namespace VCTP3;",
        "",
        *rows("CommandRow", "command_rows", lines),
    ])


def qt_rows_cpp(vocabulary):
    lines = []
    for command in vocabulary.commands.values():
        replies = " ".join(reply.name for reply in command.group.replies)
        for what, values, xml in _command_rows(vocabulary, command):
            lines += [
                f'    {{"{command.name}, {what}", "{replies}",',
                join(f"        [](APIQt &c, Groups &g) {{ c.cmd_{command.name}",
                     [*values, f"g.group{command.group.number}"], "; },", "        "),
                join(f"        [](APIQt &c) {{ c.cmd_{command.name}", values, "; },", "        "),
                f"        {command.group.number},",
                *quoted_lines(xml),
                "    },",
            ]
    connects = []
    for group in vocabulary.groups:
        for reply in [*group.replies, vocabulary.replies["error"]]:
            connects += [
                f"    QObject::connect(&groups->group{group.number}, "
                f"&{group.name}::sig_{reply.name}, &groups->context,",
                f"        [notes](auto const &...values) {{ notes->note_{reply.name}(values...); }});",
            ]
    return text([
        banner("commands.tbl and groups.tbl"),
        *include(f"{TESTS}/qt_rows.h", f"{TESTS}/samples.h"),
        "",
        "using namespace VCTP3;",
        "",
        "struct Groups",
        "{",
        *[f"    {group.name} group{group.number};" for group in vocabulary.groups],
        "    QObject context;",
        "};",
        "",
        "std::shared_ptr<Groups> make_groups(std::vector<QObject *> *list, ReplyNotes *notes)",
        "{",
        "    auto groups = std::make_shared<Groups>();",
        *[f"    list->push_back(&groups->group{group.number});" for group in vocabulary.groups],
        *connects,
        "    return groups;",
        "}",
        "",
        *rows("QtRow", "qt_rows", lines),
    ])


# messages


NOTE = (
    "private:",
    "    void note(char const *name, bool right)",
    "    {",
    "        seen.append(QLatin1String(right ? \"\" : \"wrong \") + QLatin1String(name));",
    "    }",
    "};",
)


def _equal(one):
    """Whether a parameter has the sample's value."""
    if one.presence == "?":
        return (f"{one.member}.has_value() == options"
                f" && (!options || *{one.member} == sample_{one.tag}())")
    return f"{one.member} == sample_{one.tag}()"


def reply_notes_h(vocabulary):
    """A callable for each reply, which notes the reply's name when it came with the samples."""
    lines = []
    for reply in vocabulary.replies.values():
        kind = emit_frame.callback_type(reply)
        test = " && ".join(_equal(one) for one in reply.fields) or "true"
        lines += [
            f"    {kind} {reply.name}()",
            "    {",
            f"        return {kind}::bind<&ReplyNotes::note_{reply.name}>(this);",
            "    }",
            join(f"    void note_{reply.name}", emit_frame.arguments(reply), ""),
            "    {",
            f'        note("{reply.name}", {test});',
            "    }",
        ]
    return text([
        banner("replies.tbl"),
        "#pragma once",
        "",
        *include(f"{PROTOCOL}/api.h", f"{TESTS}/samples.h"),
        "",
        "#include <QStringList>",
        "",
        "namespace VCTP3 {",
        "",
        "/// Notes the replies to a command, and whether their values are the samples.",
        "class ReplyNotes",
        "{",
        "public:",
        "    QStringList seen;",
        "",
        *lines,
        "",
        *NOTE,
        "",
        "} // namespace VCTP3",
    ])


def checking_parser_h(vocabulary):
    lines = []
    for kind, message in vocabulary.messages():
        tests = [_equal(one) for one in message.fields]
        head = []
        if kind == "reply":
            tests.insert(0, 'xid == AString::l1("7")')
            head = ["AString const &xid"]
        lines += [
            join(f"    void {kind}_{message.name}", head + emit_frame.arguments(message),
                 " override"),
            "    {",
            f'        note("{kind}_{message.name}", {" && ".join(tests) or "true"});',
            "    }",
        ]
    return text([
        banner("replies.tbl and reports.tbl"),
        "#pragma once",
        "",
        *include(f"{PROTOCOL}/api_parser.h", f"{TESTS}/samples.h"),
        "",
        "#include <QStringList>",
        "",
        "namespace VCTP3 {",
        "",
        "/// Notes each message, and whether its values are the samples.",
        "class CheckingParser : public APIParser",
        "{",
        "public:",
        "    QStringList seen;",
        "    bool options = true; // whether tried fields are to be there",
        "",
        "protected:",
        *lines,
        "",
        *NOTE,
        "",
        "} // namespace VCTP3",
    ])


def _variants(samples, fields, parent):
    """(what, field lines, error, the tried field that is lost) of each thing that can be wrong."""
    whole = [samples.xml(one.element) for one in fields]
    for at, one in enumerate(fields):
        tried = one if one.presence == "?" else None

        def changed(lines, at=at):
            return whole[:at] + lines + whole[at + 1:]

        yield (f"{one.tag} missing", changed([]),
               "" if one.optional else f"Tag '{one.tag}' not found within '{parent}'", tried)
        yield (f"{one.tag} doubled", changed([whole[at]] * 2),
               "" if one.presence == "!" else
               f"More than one tag '{one.tag}' found within '{parent}'", tried)
        bad = samples.bad(one.element, parent)
        if bad:
            yield f"{one.tag} bad", changed([bad[0]]), bad[1], tried


def message_rows_cpp(vocabulary):
    samples = Samples(vocabulary)
    lines = []
    for kind, message in vocabulary.messages():
        head = [leaf("xid", "7")] if kind == "reply" else []

        def row(what, fields, error, options):
            xml = node(kind, [*head, node(message.name, fields)])
            call = "" if error else f"{kind}_{message.name}"
            flag = "true" if options else "false"
            lines.extend([
                f'    {{"{kind} {message.name}, {what}", "{call}", {flag}, {quoted(error)},',
                *quoted_lines(xml),
                "    },",
            ])

        whole = [samples.xml(one.element) for one in message.fields]
        row("whole", whole, "", True)
        row("backwards", whole[::-1], "", True)
        for what, fields, error, tried in _variants(samples, message.fields, message.name):
            row(what, fields, "" if tried else error, not tried)
    return text([
        banner("replies.tbl and reports.tbl"),
        *include(f"{TESTS}/message_rows.h"),
        "",
        *rows("MessageRow", "message_rows", lines),
    ])


def record_rows_cpp(vocabulary):
    samples = Samples(vocabulary)
    lines = []
    for record in vocabulary.records.values():
        name = record.name

        def row(what, fields, error, full):
            xml = node(name, fields)
            flag = "true" if full else "false"
            lines.extend([
                f'    {{"{name}, {what}", &reread<{name}, sample_{name}>, "{name}", {flag},',
                f"        {quoted(error)},",
                *quoted_lines(xml),
                "    },",
            ])

        row("whole", [samples.xml(one.element) for one in record.fields], "", True)
        row("required only",
            [samples.xml(one.element) for one in record.fields if not one.optional],
            "", not any(one.optional for one in record.fields))
        for what, fields, error, tried in _variants(samples, record.fields, name):
            if what.endswith("doubled") and not error:
                continue  # a flag twice is a flag, but is not written so
            row(what, fields, error, False)
    return text([
        banner("records.tbl"),
        *include(f"{TESTS}/record_rows.h", f"{TESTS}/samples.h"),
        "",
        "using namespace VCTP3;",
        "",
        *rows("RecordRow", "record_rows", lines),
    ])


def enum_rows_cpp(vocabulary):
    lines = []
    for enum in vocabulary.enums.values():
        for number, (wire, name) in enumerate(zip(enum.names, enum.enumerators)):
            lines.append(f'    {{"{enum.name}", &check_enum<{enum.name}, {enum.name}_to_string, '
                         f"string_to_{enum.name}, valid_{enum.name}>,")
            lines.append(f'        static_cast<int>({enum.name}::{name}), {number}, '
                         f'{len(enum.names)}, "{wire}"}},')
    return text([
        banner("enums.tbl"),
        *include(f"{TESTS}/record_rows.h"),
        "",
        "using namespace VCTP3;",
        "",
        *rows("EnumRow", "enum_rows", lines),
    ])


FILES = {
    f"{TESTS}/samples.h": samples_h,
    f"{TESTS}/reply_notes.h": reply_notes_h,
    f"{TESTS}/checking_parser.h": checking_parser_h,
    f"{TESTS}/command_rows.cpp": command_rows_cpp,
    f"{TESTS}/qt_rows.cpp": qt_rows_cpp,
    f"{TESTS}/message_rows.cpp": message_rows_cpp,
    f"{TESTS}/record_rows.cpp": record_rows_cpp,
    f"{TESTS}/enum_rows.cpp": enum_rows_cpp,
}
