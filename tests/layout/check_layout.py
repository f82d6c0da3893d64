#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Checks standing rules of the tree: includes point one way, tests do not wait on the clock,
no test is taken for the rows of another.

Usage: check_layout.py ROOT. Prints each offence as file:line: text and exits 1 if there is any.
"""
import pathlib
import re
import sys

CORE = "kestrel/mod/vctp3/tarnlibapi/"
# A folder may include what stands at its own or a lower rank.
RANK = [
    (CORE + "base/", 0),
    (CORE + "xml/", 1),
    (CORE + "channelcf/", 2),
    (CORE + "protocol/", 2),
    ("Protocol/THUMBS/", 3),
    ("ATarnLib/base/", 0.5),
    ("ATarnLib/timecode/", 3.1),
    ("ATarnLib/config/", 3.2),
    ("ATarnLib/glint/", 3.3),
    ("ATarnLib/", 4),
]
# Of the protocol folder these stand on the toolkit's sockets and threads; nothing else of the
# core may include them.
TOOLKIT_SIDE = {CORE + "protocol/" + name for name in (
    "api_qt.h", "api_qt_impl.h", "api_qt_impl_p.h", "callback_groups.h", "callback_group_helper.h",
    "report_ahead.h", "report_ahead_p.h", "xml_parse_engine2.h")}
# What each root outside the library may include besides itself.
OUTSIDE = {
    "sim/": (CORE + "base/", CORE + "xml/", CORE + "protocol/", "ATarnLib/base/"),
    # It names the library's classes as an installed application does: <Tarn/Glint>.
    "demo/desktop/": (),
}
# The far end shares words and text with the client, never the client's logic.
SIM_FORBIDDEN = {CORE + "protocol/" + name for name in (
    "api.h", "api_command.h", "api_parser.h", "api_parser2.h", "api_qt.h", "client.h",
    "pending_table.h", "callback_groups.h")}

INCLUDE = re.compile(r'^\s*#\s*include\s+"([^"]+)"')
NAP = re.compile(r"QTest::qWait\(|QTest::qSleep\(|sleep_for|sleep_until|[^_a-z]usleep\(|"
                 r"nanosleep\(|QThread::m?sleep\(|QThread::usleep\(|time\.sleep\(|\bsleep \d")
# Without the header these give up after the toolkit's own 5 seconds.
WAIT = re.compile(r"\bQTRY_|\bqWaitFor")
PATIENCE = '#include "tests/support/patience.h"\n'
# QtTest takes a slot of that name for the rows of another, and runs it with that one only.
SLOT = re.compile(r"^\s*void (?:\w+::)?(\w+)\(\)", re.MULTILINE)
MODULE_WIDE = re.compile(r"#\s*include\s+<Qt(Core|Gui|Widgets|Network|Test)>")


def rank(path):
    for prefix, value in RANK:
        if path.startswith(prefix):
            return value
    return None


def offences(name, text):
    own = rank(name)
    slots = set(SLOT.findall(text)) if name.startswith("tests/") else set()
    for number, line in enumerate(text.splitlines(), 1):
        if MODULE_WIDE.search(line) and not name.startswith("tests/layout/"):
            yield number, "module-wide header of the toolkit"
        if name.startswith("tests/") and not name.startswith("tests/layout/") and NAP.search(line):
            yield number, "waits on the clock"
        if name.startswith("tests/") and name != "tests/support/patience.h" and \
                not name.startswith("tests/layout/") and WAIT.search(line) and PATIENCE not in text:
            yield number, "waits without tests/support/patience.h"
        slot = SLOT.match(line) if slots else None
        if slot and slot.group(1).endswith("_data") and slot.group(1)[:-5] not in slots:
            yield number, "never runs: " + slot.group(1)
        match = INCLUDE.match(line)
        if not match:
            continue
        target = match.group(1)
        # The benchmarks name headers of the peers' folder, which is not ours.
        if "/" not in target and not target.endswith((".moc", ".inc")) and \
                not name.startswith("bench/"):
            yield number, "include by full path from the root: " + target
        other = rank(target)
        if own is not None:
            if other is not None and other > own:
                yield number, "includes upwards: " + target
            if target.startswith(("sim/", "demo/", "tools/", "tests/", "bench/")):
                yield number, "the library includes " + target
            as_header = name.removesuffix(".in").replace(".cpp", ".h")
            if own <= 2 and target in TOOLKIT_SIDE and as_header not in TOOLKIT_SIDE:
                if not name.startswith(CORE + "protocol/api_qt"):
                    yield number, "the core includes its toolkit side: " + target
        for prefix, allowed in OUTSIDE.items():
            if name.startswith(prefix) and "/" in target:
                if target in SIM_FORBIDDEN or not target.startswith((prefix,) + allowed):
                    yield number, prefix + " includes " + target


def main():
    root = pathlib.Path(sys.argv[1])
    bad = 0
    seen = 0
    for folder in ("kestrel", "Protocol", "ATarnLib", "sim", "demo", "tools", "tests", "fuzz",
                   "bench"):
        for path in sorted((root / folder).rglob("*")):
            if path.suffix not in (".h", ".cpp", ".in", ".py", ".sh"):
                continue
            name = path.relative_to(root).as_posix()
            seen += 1
            for number, text in offences(name, path.read_text(encoding="utf-8")):
                print(f"{name}:{number}: {text}")
                bad += 1
    if seen < 10:
        print("too few files were seen; is the root right?")
        bad += 1
    return 1 if bad else 0


if __name__ == "__main__":
    sys.exit(main())
