# SPDX-License-Identifier: Apache-2.0
"""Reads the text form that all vocabulary tables share.

A line is a comment (#), a section ([name] and what it is), or a row of cells parted by "|". A line
that begins with a blank continues the row above it.
"""
from dataclasses import dataclass
from pathlib import Path


class TableError(Exception):
    """A bad row; its text is what the build prints."""


@dataclass(frozen=True)
class Place:
    file: str
    line: int

    def fail(self, message):
        raise TableError(f"{self.file}:{self.line}: {message}")


@dataclass(frozen=True)
class Section:
    name: str
    text: str
    place: Place


@dataclass(frozen=True)
class Row:
    cells: tuple
    section: Section | None
    place: Place

    def words(self, column):
        """The words of a cell; none where the row has no such cell."""
        return self.cells[column].split() if column < len(self.cells) else []

    def fail(self, message):
        self.place.fail(message)


def _lines(path):
    """(place, text) of each logical line, continuations joined."""
    place, text = None, ""
    for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
        line = line.rstrip()
        if line[:1].isspace():
            here = Place(path.name, number)
            if place is None:
                here.fail("nothing above that this line could continue")
            text += " " + line.strip()
            continue
        if place:
            yield place, text
        place = None
        if line and not line.startswith("#"):
            place, text = Place(path.name, number), line
    if place:
        yield place, text


def read_table(path, least, most, sections=False):
    """The rows of a file, each of `least` to `most` cells."""
    rows, section, seen = [], None, {}
    for place, text in _lines(Path(path)):
        if text.startswith("["):
            name, bracket, rest = text[1:].partition("]")
            if not sections or not bracket or not name.strip():
                place.fail(f"bad section line '{text}'")
            section = Section(name.strip(), rest.strip(), place)
            if section.name in seen:
                place.fail(f"section '{section.name}' stands at line {seen[section.name]} already")
            seen[section.name] = place.line
            continue
        cells = tuple(cell.strip() for cell in text.split("|"))
        if not least <= len(cells) <= most:
            wanted = f"{least}" if least == most else f"{least} to {most}"
            place.fail(f"{len(cells)} cells, expected {wanted}")
        if sections and section is None:
            place.fail("a row before the first [section]")
        rows.append(Row(cells, section, place))
    return rows
