#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Pins what vctp3gen makes of a small vocabulary, and what it says of bad rows.

test_golden.py --update rewrites the pinned files from what the generator makes now.
"""
import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

HERE = Path(__file__).resolve().parent
GENERATOR = HERE.parent
ROOT = GENERATOR.parent.parent

sys.path.insert(0, str(GENERATOR))
import vocabulary  # noqa: E402
from tables import TableError  # noqa: E402


def run(tables, output):
    return subprocess.run(
        [sys.executable, "-B", GENERATOR, "--tables", tables, "--templates", ROOT,
         "--output", output], capture_output=True, text=True, check=False)


def files_below(folder):
    return {str(path.relative_to(folder)): path.read_text(encoding="utf-8")
            for path in sorted(Path(folder).rglob("*")) if path.is_file()}


def bad_rows():
    lines = [line for line in (HERE / "bad_rows.txt").read_text(encoding="utf-8").splitlines()
             if line and not line.startswith("#")]
    return list(zip(lines[::3], lines[1::3], lines[2::3], strict=True))


class Golden(unittest.TestCase):
    maxDiff = None

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)

    def test_makes_the_pinned_files(self):
        result = run(HERE / "tables", self.folder)
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        made, pinned = files_below(self.folder), files_below(HERE / "expected")
        self.assertEqual(sorted(made), sorted(pinned))
        for name, content in made.items():
            self.assertEqual(content, pinned[name], name)

    def test_leaves_unchanged_files_alone(self):
        run(HERE / "tables", self.folder)
        before = {path: path.stat().st_mtime_ns for path in self.folder.rglob("*.*")}
        self.assertEqual(run(HERE / "tables", self.folder).returncode, 0)
        self.assertEqual(before,
                         {path: path.stat().st_mtime_ns for path in self.folder.rglob("*.*")})

    def tables_with(self, table, row):
        tables = self.folder / "tables"
        shutil.rmtree(tables, ignore_errors=True)
        shutil.copytree(HERE / "tables", tables)
        with open(tables / table, "a", encoding="utf-8") as file:
            file.write(row + "\n")
        return tables

    def test_names_each_bad_row(self):
        for table, row, message in bad_rows():
            with self.subTest(table=table, row=row):
                with self.assertRaises(TableError) as caught:
                    vocabulary.load(self.tables_with(table, row))
                self.assertEqual(str(caught.exception), message)

    def test_stops_at_a_bad_row_and_writes_nothing(self):
        table, row, message = bad_rows()[0]
        result = run(self.tables_with(table, row), self.folder / "output")
        self.assertEqual((result.returncode, result.stderr), (1, message + "\n"))
        self.assertFalse((self.folder / "output").exists())

    def test_names_a_missing_table(self):
        shutil.copytree(HERE / "tables", self.folder / "tables")
        (self.folder / "tables" / "groups.tbl").unlink()
        result = run(self.folder / "tables", self.folder / "output")
        self.assertEqual(result.returncode, 1)
        self.assertIn("groups.tbl", result.stderr)

    def test_counts_a_continued_row_from_its_first_line(self):
        shutil.copytree(HERE / "tables", self.folder / "tables")
        with open(self.folder / "tables" / "enums.tbl", "a", encoding="utf-8") as file:
            file.write("Mood | how it feels | good\n    good\n")
        result = run(self.folder / "tables", self.folder / "output")
        self.assertEqual(result.stderr, "enums.tbl:7: 'good' stands twice in 'Mood'\n")

    def test_rejects_a_continuation_of_nothing(self):
        shutil.copytree(HERE / "tables", self.folder / "tables")
        (self.folder / "tables" / "groups.tbl").write_text("# none\n  ok\n", encoding="utf-8")
        result = run(self.folder / "tables", self.folder / "output")
        self.assertEqual(result.stderr,
                         "groups.tbl:2: nothing above that this line could continue\n")

    def test_rejects_a_row_before_the_first_section(self):
        shutil.copytree(HERE / "tables", self.folder / "tables")
        (self.folder / "tables" / "commands.tbl").write_text("stop | | ok\n", encoding="utf-8")
        result = run(self.folder / "tables", self.folder / "output")
        self.assertEqual(result.stderr, "commands.tbl:1: a row before the first [section]\n")


if __name__ == "__main__":
    if sys.argv[1:] == ["--update"]:
        shutil.rmtree(HERE / "expected", ignore_errors=True)
        sys.exit(run(HERE / "tables", HERE / "expected").returncode)
    unittest.main()
