# SPDX-License-Identifier: Apache-2.0
"""Text of generated files."""
from pathlib import Path

LICENCE = "SPDX-License-Identifier: Apache-2.0"
WIDTH = 100


def banner(sources, mark="//"):
    return f"{mark} {LICENCE}\n{mark} Made by vctp3gen from {sources}; do not edit.\n"


def join(head, items, tail, indent="    "):
    """`head(items)tail`, broken at commas where it would be too long."""
    return break_line(head + "(" + ", ".join(items) + ")" + tail, indent)


def break_line(text, indent="    "):
    """Breaks a line behind commas; continuation lines stand one step further in."""
    margin = text[:len(text) - len(text.lstrip())] + indent
    lines = []
    while len(text) > WIDTH:
        cut = text.rfind(", ", 0, WIDTH)
        if cut <= len(margin):
            break
        lines.append(text[:cut + 1])
        text = margin + text[cut + 2:]
    lines.append(text)
    return "\n".join(lines)


def fill_template(path, members):
    """A template with each line `@NAME@` replaced by the lines of that name."""
    lines = []
    for line in Path(path).read_text(encoding="utf-8").splitlines():
        word = line.strip()
        if word.startswith("@") and word.endswith("@") and len(word) > 2:
            lines.extend(members[word.strip("@")])
        else:
            lines.append(line)
    return "\n".join(lines) + "\n"


def write_if_changed(path, text):
    """Leaves an unchanged file alone, so that nothing is compiled again."""
    path = Path(path)
    if path.exists() and path.read_text(encoding="utf-8") == text:
        return False
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_text(text, encoding="utf-8")
    return True
