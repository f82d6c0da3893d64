#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Counts the protocol's vocabulary: a row that is lost or stands twice shows here."""
import re
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

GENERATOR = Path(__file__).resolve().parent.parent
ROOT = GENERATOR.parent.parent
PROTOCOL = "kestrel/mod/vctp3/tarnlibapi/protocol"

sys.path.insert(0, str(GENERATOR))
import vocabulary  # noqa: E402


class Counts(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.words = vocabulary.load(ROOT / PROTOCOL / "tables")

    def test_types(self):
        self.assertEqual(len(self.words.enums), 37)
        self.assertEqual(len(self.words.records), 25)
        kinds = [kind.kind for kind in self.words.collections.values()]
        self.assertEqual([kinds.count(kind) for kind in ("set", "vector", "list")], [4, 5, 3])

    def test_commands(self):
        commands = self.words.commands.values()
        self.assertEqual(len(commands), 140)
        self.assertEqual(sum(1 for command in commands if command.optional), 33)
        self.assertEqual(sum(command.forms for command in commands), 244)
        self.assertEqual(len({one.tag for command in commands for one in command.fields}), 81)

    def test_messages(self):
        replies, reports = self.words.replies.values(), self.words.reports.values()
        self.assertEqual([reply.id for reply in replies], list(range(29)))
        self.assertEqual([report.id for report in reports], list(range(29, 86)))
        self.assertEqual(len(self.words.groups), 27)
        by_group = [sum(c.group is g for c in self.words.commands.values())
                    for g in self.words.groups]
        self.assertEqual(by_group, [114] + [1] * 26)

    def test_methods(self):
        with tempfile.TemporaryDirectory() as folder:
            subprocess.run(
                [sys.executable, "-B", GENERATOR, "--tables", ROOT / PROTOCOL / "tables",
                 "--templates", ROOT, "--output", folder], check=True)
            found = [len(re.findall(r"^    (?:void|AString) cmd_\w+\(",
                                    (Path(folder) / PROTOCOL / name).read_text(encoding="utf-8"),
                                    re.MULTILINE))
                     for name in ("api_command.h", "api.h", "api_qt.h")]
        self.assertEqual(found, [244, 488, 488])


if __name__ == "__main__":
    unittest.main()
