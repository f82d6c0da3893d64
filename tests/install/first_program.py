#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Prints the first C++ block of a Markdown file; fails if it has more than 25 lines."""
import re
import sys

text = open(sys.argv[1], encoding="utf-8").read()
block = re.search(r"```cpp\n(.*?)```", text, re.S)
if not block:
    sys.exit("no C++ block in " + sys.argv[1])
lines = block.group(1).count("\n")
if lines > 25:
    sys.exit(f"the first program has {lines} lines; 25 are allowed")
sys.stdout.write(block.group(1))
