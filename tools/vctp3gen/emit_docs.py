# SPDX-License-Identifier: Apache-2.0
"""docs/protocol.md: the vocabulary for people who read the wire."""
from emit_types import sentence

HEAD = """\
<!-- SPDX-License-Identifier: Apache-2.0 -->
<!-- Made by vctp3gen from the tables of the protocol; `./dev docs` refreshes it. -->
# The protocol

One TCP connection to port 8913 carries XML text in UTF-8, message after message, with no length
and no terminator: a message ends with the closing tag of its root. The client sends `<cmd>`, the
server answers with `<reply>` and sends `<report>` by itself.

```
<cmd><xid>7</xid><play><Channel>A</Channel><Speed>1X</Speed></play></cmd>
<reply><xid>7</xid><ok/></reply>
<report><channel_status><Channel>A</Channel><ChannelStatus>play</ChannelStatus></channel_status></report>
```

The `xid` of a command comes back with each reply to it; the server takes it for any text. The
parameters of a command are its child elements, in the order of the tables below. Readers pass
over elements that they do not know. White space between elements means nothing.

There is no greeting, no version and no keep-alive; `sync` is there for a round trip. Any number of
commands may be in flight, and their answers may come in any order. What a client registers, watches
or has begun to save belongs to its connection and ends with it.

The text is a small part of XML: no prolog, no comments, no CDATA, no text beside child elements,
and no attributes on a root, which would hide the message. `APIQt` takes messages of at most 65,536
bytes, `Client` of 32,768. A longer or malformed one ends the connection; one with an unknown name
or a bad field is passed over.

## Types

| Type | Text |
|---|---|
| text | as it is, white space included; `&lt;` `&gt;` `&amp;` `&quot;` `&apos;` are its only entities |
| uchar, ushort, uint, uint64 | a decimal number of 8, 16, 32 or 64 bits |
| int | a decimal number of 32 bits with sign |
| bool | `true` or `false`; a number is read too, 0 as false and any other as true |
| speed | a factor with an X behind: `1X`, `-0.5X`; a number without the X counts in 65536ths, which is how a speed is held |
| flag | an empty element: true when it is there |
| a name | of an enumeration: one of its values; of a record, set, vector or list: an element with child elements. They stand at the end |

White space around a number, a name, a truth value or a speed is passed over. In the tables `X?` may
be absent, and `X!` is a flag. An element whose type is not given has the type of its own name.
"""


def _field(one):
    """`Name?` with its type where that is another word."""
    name = f"`{one.tag}{one.presence}`"
    return name if one.type.name == one.tag or one.presence == "!" else f"{name} {one.type.name}"


def _fields(fields):
    return ", ".join(_field(one) for one in fields) or "-"


def _table(titles, rows):
    return ["| " + " | ".join(titles) + " |", "|" + "---|" * len(titles),
            *["| " + " | ".join(row) + " |" for row in rows], ""]


def _commands(vocabulary):
    lines = ["## Commands", "",
             "A reply with a star may come any number of times before the last one. Every command",
             "may get `error` in place of its replies.", ""]
    families = {}
    for command in vocabulary.commands.values():
        families.setdefault(command.family.name, []).append(command)
    for family, commands in families.items():
        lines += [f"### {family}", ""]
        lines += _table(("Command", "Parameters", "Replies"), [
            (f"`{c.name}`", _fields(c.fields),
             " ".join(f"`{r.name}`" + ("" if r.last else "*") for r in c.group.replies))
            for c in commands])
    return lines


def _register(report):
    if not report.register:
        return "-"
    return f"`{report.register}`" + (" of a channel" if report.per_channel else "")


def _messages(vocabulary):
    lines = ["## Replies", "", "A reply that is last ends its command; after others more follow.",
             ""]
    lines += _table(("Reply", "Fields", "Last"), [
        (f"`{r.name}`", _fields(r.fields), "yes" if r.last else "no")
        for r in vocabulary.replies.values()])
    lines += [
        "## Reports", "",
        "Reports come to the connections that have registered for them by `reports_register` or",
        "`channel_reports_register` and the like. A registration ends with its connection. A report",
        "with `-` needs none: it comes after a watch, or to everybody.", ""]
    lines += _table(("Report", "Registered by", "Fields"), [
        (f"`{r.name}`", _register(r), _fields(r.fields)) for r in vocabulary.reports.values()])
    return lines


def _types(vocabulary):
    lines = ["## Records", ""]
    for record in sorted(vocabulary.records.values(), key=lambda record: record.name):
        lines += [f"### {record.name}", "", sentence(record.meaning), ""]
        lines += _table(("Element", "Type", "In C++"), [
            (f"`{one.tag}{one.presence}`", one.type.name,
             f"`{one.setter}`" if one.setter else f"`{one.member}`") for one in record.fields])
    lines += ["## Sets, vectors and lists", "",
              "A set holds no value twice; a vector has a limit too, a list has none.", ""]
    lines += _table(("Name", "Kind", "Items", "At most"), [
        (kind.name, kind.kind, f"`{kind.item.name}`", str(kind.capacity or "-"))
        for kind in vocabulary.collections.values()])
    lines += ["## Enumerations", "", "The values count from 0 in this order.", ""]
    lines += _table(("Name", "Meaning", "Values"), [
        (enum.name, enum.meaning, " ".join(f"`{name}`" for name in enum.names))
        for enum in vocabulary.enums.values()])
    return lines


def protocol_md(vocabulary):
    lines = [HEAD, *_commands(vocabulary), *_messages(vocabulary), *_types(vocabulary)]
    return "\n".join(lines).rstrip("\n") + "\n"


FILES = {"docs/protocol.md": protocol_md}
