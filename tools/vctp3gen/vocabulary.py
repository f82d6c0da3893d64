# SPDX-License-Identifier: Apache-2.0
"""The vocabulary as objects, made from the tables and checked.

Whatever an emitter may rely on is checked here, so that emitters have no error paths.
"""
from dataclasses import dataclass, field
from pathlib import Path

import naming
from tables import Place, Section, read_table

# table word -> C++ type, initial value, XML schema-like word for people
LEAVES = {
    "text": ("AString", ""),
    "uchar": ("unsigned char", " = 0"),
    "ushort": ("unsigned short", " = 0"),
    "uint": ("unsigned int", " = 0"),
    "uint64": ("unsigned long long", " = 0"),
    "int": ("int", " = 0"),
    "bool": ("bool", " = false"),
    "flag": ("bool", " = false"),
    "speed": ("int", " = 0"),
}


# who decodes a report that comes at field rate
DECODERS = ("timecodes", "levels")


@dataclass(eq=False)
class Type:
    """What an element holds. kind: a word of LEAVES, or enum, record, set, vector, list."""

    kind: str
    name: str
    cpp: str
    initial: str = ""
    item: "Element | None" = None
    capacity: int = 0

    @property
    def is_class(self):
        """Whether the C++ type is handed over by reference where there is a choice."""
        return self.kind in ("text", "record", "set", "vector", "list")

    @property
    def is_speed(self):
        return self.kind == "speed"


@dataclass(eq=False)
class Element:
    name: str
    type: Type


@dataclass(eq=False)
class Field:
    """A use of an element: in a record, a command, a reply or a report."""

    element: Element
    presence: str  # "" required, "?" optional, "!" flag
    member: str
    setter: str = ""

    @property
    def tag(self):
        return self.element.name

    @property
    def type(self):
        return self.element.type

    @property
    def optional(self):
        return self.presence != ""


@dataclass(eq=False)
class Enum:
    name: str
    meaning: str
    names: list
    place: Place

    @property
    def enumerators(self):
        return [naming.enumerator(name) for name in self.names]


@dataclass(eq=False)
class Record:
    name: str
    meaning: str
    fields: list
    place: Place


@dataclass(eq=False)
class Message:
    """A reply or a report."""

    id: int
    name: str
    fields: list
    place: Place
    last: bool = True  # replies: ends the transaction
    register: str = ""  # reports: the name to register
    per_channel: bool = False  # reports: registered for a channel
    decoder: str = ""  # reports: who decodes it, if it comes at field rate


@dataclass(eq=False)
class Group:
    number: int
    replies: list
    place: Place

    @property
    def name(self):
        return f"CallbackGroup_set{self.number}"


@dataclass(eq=False)
class Command:
    name: str
    family: Section
    fields: list
    replies: list  # in callback order, without "error"
    group: Group
    place: Place

    @property
    def required(self):
        return [f for f in self.fields if not f.optional]

    @property
    def optional(self):
        return [f for f in self.fields if f.optional]

    @property
    def forms(self):
        """How many forms one class offers."""
        return len(self.optional) + 2 if self.optional else 1


@dataclass(eq=False)
class Vocabulary:
    enums: dict = field(default_factory=dict)
    elements: dict = field(default_factory=dict)
    records: dict = field(default_factory=dict)
    collections: dict = field(default_factory=dict)
    replies: dict = field(default_factory=dict)
    reports: dict = field(default_factory=dict)
    groups: list = field(default_factory=list)
    commands: dict = field(default_factory=dict)

    def records_by_need(self):
        """The records, each behind those that it holds."""
        done = []

        def add(record):
            if record in done:
                return
            for used in record.fields:
                inner = used.type.item.type if used.type.item else used.type
                if inner.kind == "record":
                    add(self.records[inner.name])
            done.append(record)

        for record in self.records.values():
            add(record)
        return done

    def messages(self):
        """("reply" or "report", message) of all that a server says."""
        for reply in self.replies.values():
            yield "reply", reply
        for report in self.reports.values():
            yield "report", report

    def words(self):
        """Every tag of the protocol, sorted."""
        found = {"cmd", "reply", "report", "xid"}
        found.update(self.elements, self.commands, self.replies, self.reports)
        return sorted(found)


def _unique(table, name, place, what):
    if name in table:
        place.fail(f"{what} '{name}' stands at {table[name].file}:{table[name].line} already")
    table[name] = place


def _tag(name, place):
    if not naming.TAG.match(name):
        place.fail(f"'{name}' cannot be the name of an element")
    return name


def load(folder):
    """Reads all tables of a folder."""
    return _Loader(Path(folder)).load()


class _Loader:
    def __init__(self, folder):
        self.folder = folder
        self.result = Vocabulary()
        self.places = {}  # of everything that is a type or an element
        self.used = set()  # elements that some row uses

    def load(self):
        self._enums()
        self._element_types()
        self._records()
        self._replies()
        self._reports()
        self._groups()
        self._commands()
        self._check_use()
        return self.result

    def _read(self, name, least, most, sections=False):
        return read_table(self.folder / name, least, most, sections)

    # types and elements

    def _enums(self):
        for row in self._read("enums.tbl", 3, 3):
            name, meaning, _ = row.cells
            _unique(self.places, _tag(name, row.place), row.place, "the name")
            names = row.words(2)
            if not names:
                row.fail(f"'{name}' has no names")
            for value in names:
                if not naming.VALUE.match(value):
                    row.fail(f"'{value}' cannot be the name of a value")
                if names.count(value) > 1:
                    row.fail(f"'{value}' stands twice in '{name}'")
            self.result.enums[name] = Enum(name, meaning, names, row.place)
            kind = Type("enum", name, name, " = {}")
            self.result.elements[name] = Element(name, kind)

    def _element_types(self):
        """Elements refer to types and collections to elements: declare all, then connect them."""
        elements = self.result.elements
        rows = self._read("elements.tbl", 2, 2)
        collections = self._read("collections.tbl", 3, 4)
        self.record_rows = self._read("records.tbl", 1, 2, sections=True)
        for row in self.record_rows:
            name = row.section.name
            if name not in self.result.records:
                _unique(self.places, _tag(name, row.section.place), row.section.place, "the name")
                elements[name] = Element(name, Type("record", name, name))
                record = Record(name, row.section.text, [], row.section.place)
                self.result.records[name] = record
        for row in collections:
            name = row.cells[1]
            _unique(self.places, _tag(name, row.place), row.place, "the name")
            elements[name] = Element(name, self._collection(row))
            self.result.collections[name] = elements[name].type
        for row in rows:
            name, word = row.cells
            _unique(self.places, _tag(name, row.place), row.place, "the name")
            elements[name] = Element(name, self._named_type(word, row))
        for row in collections:
            self._connect_item(row)

    def _named_type(self, word, row):
        if word in LEAVES:
            cpp, initial = LEAVES[word]
            return Type(word, word, cpp, initial)
        known = self.result.elements.get(word)
        if known is None or known.type.name != word:
            row.fail(f"unknown type '{word}'")
        self.used.add(word)
        return known.type

    def _collection(self, row):
        kind, name = row.cells[:2]
        if kind not in ("set", "vector", "list"):
            row.fail(f"'{kind}' is none of set, vector, list")
        if len(row.cells) != (3 if kind == "list" else 4):
            row.fail("a set or a vector has a capacity, a list has none")
        capacity = 0
        if kind != "list":
            if not row.cells[3].isdigit() or int(row.cells[3]) == 0:
                row.fail(f"bad capacity '{row.cells[3]}'")
            capacity = int(row.cells[3])
        return Type(kind, name, name, capacity=capacity)

    def _connect_item(self, row):
        kind, name, item = row.cells[:3]
        element = self.result.elements.get(item)
        if element is None:
            row.fail(f"unknown element '{item}'")
        if kind == "set" and element.type.kind != "enum":
            row.fail(f"the items of a set are of an enumeration, '{item}' is not")
        if element.type.kind not in ("enum", "record", "text"):
            row.fail(f"'{item}' cannot be an item")
        mine = self.result.collections[name]
        mine.item = element
        if kind == "list":
            mine.cpp = f"std::list<{element.type.cpp}>"
            for other in self.result.collections.values():
                if other is not mine and other.cpp == mine.cpp:
                    row.fail(f"'{name}' and '{other.name}' would be the same C++ type")
        self.used.add(item)

    # uses of elements

    def _field(self, word, row, marks):
        presence = word[-1] if word[-1] in "?!" else ""
        name = word.rstrip("?!")
        element = self.result.elements.get(name)
        if element is None:
            row.fail(f"unknown element '{name}'")
        if presence and presence not in marks:
            row.fail(f"'{word}': '{presence}' has no meaning here")
        if "!" in marks and (presence == "!") != (element.type.kind == "flag"):
            row.fail(f"'{word}': a flag, and nothing else, is marked with '!'")
        if "!" not in marks and element.type.kind == "flag":
            row.fail(f"'{word}': a flag has no place here")
        self.used.add(name)
        return Field(element, presence, naming.member(name))

    def _fields(self, row, column, marks):
        fields = [self._field(word, row, marks) for word in row.words(column)]
        for one in fields:
            if sum(other.tag == one.tag for other in fields) > 1:
                row.fail(f"'{one.tag}' stands twice")
        return fields

    def _records(self):
        for row in self.record_rows:
            record = self.result.records[row.section.name]
            words = row.words(0)
            if len(words) != 1:
                row.fail(f"'{row.cells[0]}' is not one element")
            one = self._field(words[0], row, "?!")
            setter = row.cells[1] if len(row.cells) > 1 else ""
            if (one.presence == "?") != (setter != ""):
                row.fail(f"'{words[0]}': an optional field, and no other, has a setter")
            if setter:
                if not setter.startswith("set_") or not naming.TAG.match(setter):
                    row.fail(f"the setter '{setter}' is not of the form set_x")
                one.setter, one.member = setter, setter.removeprefix("set_")
            for other in record.fields:
                if other.tag == one.tag or other.member == one.member:
                    row.fail(f"'{record.name}' has '{one.tag}' or its member already")
            record.fields.append(one)
            self._check_depth(record, row)

    def _check_depth(self, record, row):
        """A record that holds itself would have no end."""
        todo, seen = [record], set()
        while todo:
            for used in todo.pop().fields:
                inner = used.type.item.type if used.type.item else used.type
                if inner.kind != "record" or inner.name in seen:
                    continue
                if inner.name == record.name:
                    row.fail(f"'{record.name}' would hold itself")
                seen.add(inner.name)
                todo.append(self.result.records[inner.name])

    def _replies(self):
        seen = {}
        for number, row in enumerate(self._read("replies.tbl", 3, 3)):
            name = _tag(row.cells[0], row.place)
            _unique(seen, name, row.place, "the reply")
            if row.cells[2] not in ("last", "more"):
                row.fail(f"'{row.cells[2]}' is neither last nor more")
            if number < 2 and name != ("ok", "error")[number]:
                row.fail(f"the first replies are ok and error, not '{name}'")
            fields = self._fields(row, 1, "")
            last = row.cells[2] == "last"
            self.result.replies[name] = Message(number, name, fields, row.place, last)
        if len(self.result.replies) < 2:
            Place("replies.tbl", 1).fail("the replies ok and error are missing")

    def _reports(self):
        seen = {}
        first = len(self.result.replies)
        for number, row in enumerate(self._read("reports.tbl", 3, 4), first):
            name = _tag(row.cells[0], row.place)
            _unique(seen, name, row.place, "the report")
            message = Message(number, name, self._fields(row, 2, "?"), row.place)
            words = row.words(1)
            message.per_channel = words[:1] == ["channel"]
            register = words[1:] if message.per_channel else words
            if len(register) != 1:
                row.fail(f"bad registration '{row.cells[1]}'")
            if register != ["-"] or message.per_channel:
                enum = "ChannelReportType" if message.per_channel else "ReportType"
                known = self.result.enums.get(enum)
                if known is None or register[0] not in known.names:
                    row.fail(f"'{register[0]}' is no name of {enum}")
                message.register = register[0]
            message.decoder = " ".join(row.words(3))
            if message.decoder not in ("", *DECODERS):
                row.fail(f"'{message.decoder}' is no decoder")
            self.result.reports[name] = message

    def _groups(self):
        sets = {}
        for number, row in enumerate(self._read("groups.tbl", 2, 2), 1):
            if row.cells[0] != str(number):
                row.fail(f"group '{row.cells[0]}', expected {number}")
            replies = []
            for name in row.words(1):
                if name not in self.result.replies or name == "error":
                    row.fail(f"unknown reply '{name}'")
                replies.append(self.result.replies[name])
            if not replies or len(set(r.name for r in replies)) != len(replies):
                row.fail("a group has one or more replies, each once")
            self._check_end(replies, row)
            key = " ".join(sorted(r.name for r in replies))
            _unique(sets, key, row.place, "the set of replies")
            self.result.groups.append(Group(number, replies, row.place))

    def _check_end(self, replies, row):
        """What streams ends with ok; what does not is one reply that is the last."""
        last = [reply.name for reply in replies if reply.last]
        if len(last) != 1 or (len(replies) > 1 and last != ["ok"]):
            row.fail("one reply that is last, and that is ok where others come before it")

    def _commands(self):
        seen = {}
        for row in self._read("commands.tbl", 3, 3, sections=True):
            name = _tag(row.cells[0], row.place)
            _unique(seen, name, row.place, "the command")
            fields = self._fields(row, 1, "?!")
            if [f.optional for f in fields] != sorted(f.optional for f in fields):
                row.fail("a required parameter behind an optional one")
            replies = [self._reply(word, row) for word in row.words(2)]
            wanted = frozenset(reply.name for reply in replies)
            group = [g for g in self.result.groups if {r.name for r in g.replies} == wanted]
            if not group or len(wanted) != len(replies):
                row.fail(f"no callback group has the replies '{row.cells[2]}'")
            # Callbacks come in the order ok, data; what streams nothing has one of the two.
            replies.sort(key=lambda reply: reply.name != "ok")
            self.result.commands[name] = Command(
                name, row.section, fields, replies, group[0], row.place)

    def _reply(self, word, row):
        reply = self.result.replies.get(word.rstrip("*"))
        if reply is None or reply.name == "error":
            row.fail(f"unknown reply '{word}'")
        if word.endswith("*") == reply.last:
            row.fail(f"'{word}': a star marks a reply that is not the last")
        return reply

    def _check_use(self):
        for name, place in self.places.items():
            if name in self.used or name in ("ReportType", "ChannelReportType"):
                continue
            if name in self.result.enums and any(
                    e.type.name == name and e.name in self.used
                    for e in self.result.elements.values()):
                continue
            place.fail(f"nothing uses '{name}'")
