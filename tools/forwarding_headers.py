#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Writes one forwarding header per public class, and the umbrella header.

Usage: forwarding_headers.py OUTPUT_FOLDER LIST_FILE, where LIST_FILE holds a line
"INCLUDE_PATH<TAB>FILE" per public header. A class defined at namespace level of a header gets
OUTPUT_FOLDER/Tarn/<ClassName>, which includes every header that defines a class of this name, since
two namespaces may each have one; OUTPUT_FOLDER/Tarn/Tarn includes every header. A file is written
only if its content changed.
"""
import pathlib
import re
import sys

# Classes at the left margin; sources are kept by clang-format, which indents everything nested.
CLASS = re.compile(r"^(?:template <.*> )?(?:class|struct)\s+(?:[A-Z_]+_EXPORT\s+)?([A-Za-z]\w*)(?:\s+final)?\s*(?::[^:].*)?$")
ALIAS = re.compile(r"^(?:template <.*> )?using\s+([A-Z]\w*)\s*=")
# A function that is named like a class stands for one.
FUNCTION = re.compile(r"^TARN_EXPORT [\w:]+ ([A-Z]+[a-z]\w*)\(")
SPACE = re.compile(r"^namespace\s+(A[A-Z]\w*)")
ENUM = re.compile(r"^enum class\s+([A-Za-z]\w*)")


def classes(text):
    lines = text.splitlines()
    for number, line in enumerate(lines):
        match = CLASS.match(line)
        if match and number + 1 < len(lines) and lines[number + 1].lstrip().startswith(("{", ":")):
            yield match.group(1)
        match = ALIAS.match(line) or ENUM.match(line) or SPACE.match(line) or FUNCTION.match(line)
        if match:
            yield match.group(1)


def write(path, text):
    if path.exists() and path.read_text(encoding="utf-8") == text:
        return
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_text(text, encoding="utf-8")


def main():
    out = pathlib.Path(sys.argv[1]) / "Tarn"
    owners = {}
    headers = []
    for line in pathlib.Path(sys.argv[2]).read_text(encoding="utf-8").splitlines():
        include, file = line.split("\t")
        headers.append(include)
        for name in classes(pathlib.Path(file).read_text(encoding="utf-8")):
            owners.setdefault(name, {})[include] = None
    for name, includes in owners.items():
        write(out / name, "".join(f'#include "{include}"\n' for include in includes))
    write(out / "Tarn", "#pragma once\n" + "".join(f'#include "{h}"\n' for h in headers))
    for stale in out.iterdir():
        if stale.name != "Tarn" and stale.name not in owners:
            stale.unlink()


if __name__ == "__main__":
    main()
