#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Draws the glyphs of timecode and speed readouts.

Usage: make_glyphs.py TC_QRC FOLDER. Draws each file that TC_QRC names, SET/GLYPH.png or
SET/GLYPH@2x.png, below FOLDER. Ends with a message on a name that it cannot draw.

All sets are one drawing: strokes of one weight on a grid of 18 units in height, with the baseline
at 15 and the tops of digits at 3. The small sets have a pixel to a unit, the large one two, and
"@2x" doubles that. Centres of upright and level strokes lie on whole units, so that their edges
lie on pixel edges at every size.
"""
import math
import pathlib
import struct
import sys
import xml.etree.ElementTree
import zlib

HEIGHT = 18
STROKE = 2.0
GROUND = (16, 19, 22)
WHITE = (232, 237, 242)
GRAY = (120, 130, 140)
# Set: pixels to a unit, ink, ground (none: transparent).
SETS = {
    "large": (2, WHITE, GROUND),
    "small": (1, WHITE, GROUND),
    "small_gray": (1, GRAY, GROUND),
    "small_transparent": (1, WHITE, None),
}


def line(*points):
    return list(points)


def curve(*points):
    """Cubic curves, each from the end of the one before."""
    path = [points[0]]
    for i in range(0, len(points) - 1, 3):
        a, b, c, d = points[i:i + 4]
        for step in range(1, 13):
            t = step / 12
            u = 1 - t
            path.append(tuple(u ** 3 * a[k] + 3 * u * u * t * b[k] + 3 * u * t * t * c[k]
                              + t ** 3 * d[k] for k in (0, 1)))
    return path


def arc(x, y, rx, ry, begin=0, end=360):
    """Around x, y; degrees clockwise from the right."""
    steps = max(6, int(abs(end - begin) / 12))
    angles = [math.radians(begin + (end - begin) * i / steps) for i in range(steps + 1)]
    return [(x + rx * math.cos(a), y + ry * math.sin(a)) for a in angles]


def turned(paths):
    """Upside down about the middle of a digit."""
    return [[(12 - x, 18 - y) for x, y in path] for path in paths]


def letters(text, x):
    """Small capitals with their strokes half as heavy, on the baseline."""
    drawn = {
        "F": [line((0, 7), (0, 0), (3.5, 0)), line((0, 3.5), (3, 3.5))],
        "1": [line((0.3, 1.7), (2, 0), (2, 7))],
        "2": [curve((0, 1.9), (0, -0.6), (4, -0.6), (4, 2.1), (4, 3.8), (1.6, 5), (0, 7)),
              line((0, 7), (4, 7))],
    }
    paths = []
    for letter in text:
        paths += [[(x + px, 7.5 + py) for px, py in path] for path in drawn[letter]]
        x += 4 if letter == "1" else 5
    return paths


SIX = [arc(6, 11, 3, 3), curve((3, 11), (3, 7.4), (4.8, 4.9), (8, 4))]
DOT = 2.5
LOW_DOT = line((3, 13.75), (3, 13.75))
HIGH_DOT = line((3, 7.75), (3, 7.75))
TAIL = line((3.05, 13.9), (2.3, 16.2))
LETTER = 1.25
# Glyph: width in units, then strokes with their weight.
GLYPHS = {
    "0": (12, [(STROKE, [arc(6, 7, 3, 3, 180, 360) + arc(6, 11, 3, 3, 0, 180) + [(3, 7)]])]),
    "1": (12, [(STROKE, [line((4, 6.2), (7, 4), (7, 14))])]),
    "2": (12, [(STROKE, [arc(6, 7, 3, 3, 190, 360)
                         + curve((9, 7), (9, 9.2), (6.4, 10.6), (3, 14)) + [(9, 14)]])]),
    "3": (12, [(STROKE, [arc(6, 6.5, 2.7, 2.5, 200, 450), arc(6, 11.5, 3, 2.5, -90, 160),
                         line((5, 9), (6, 9))])]),
    "4": (12, [(STROKE, [line((8, 14), (8, 4), (3, 11), (9.5, 11))])]),
    "5": (12, [(STROKE, [line((8.7, 4), (3.8, 4), (3.4, 8.6))
                         + curve((3.4, 8.6), (5, 7), (9, 7.2), (9, 10.8), (9, 12.8), (7.8, 14),
                                 (6, 14), (4.7, 14), (3.6, 13.5), (3, 12.4))])]),
    "6": (12, [(STROKE, SIX)]),
    "7": (12, [(STROKE, [line((3, 4), (9, 4), (5.2, 14))])]),
    "8": (12, [(STROKE, [arc(6, 6.4, 2.7, 2.4), arc(6, 11.4, 3, 2.6)])]),
    "9": (12, [(STROKE, turned(SIX))]),
    "dash": (12, [(STROKE, [line((4, 9), (8, 9))])]),
    "comma": (6, [(DOT, [LOW_DOT]), (1.5, [TAIL])]),
    "semicolon": (6, [(DOT, [LOW_DOT, HIGH_DOT]), (1.5, [TAIL])]),
    "period": (6, [(DOT, [LOW_DOT])]),
    "colon": (6, [(DOT, [LOW_DOT, HIGH_DOT])]),
    "percent": (18, [(STROKE, [arc(4, 6, 2, 2), arc(14, 12, 2, 2), line((12.5, 4), (5.5, 14))])]),
    "plus": (12, [(STROKE, [line((3, 9), (9, 9)), line((6, 6), (6, 12))])]),
    "minus": (12, [(STROKE, [line((3, 9), (9, 9))])]),
    "X": (12, [(STROKE, [line((3, 7), (9, 14)), line((9, 7), (3, 14))])]),
    "f1": (18, [(LETTER, letters("F1", 2.5))]),
    "f2": (18, [(LETTER, letters("F2", 2.5))]),
    "f12": (18, [(LETTER, letters("F12", 2.5))]),
}


def distance(px, py, a, b):
    ax, ay = a
    dx, dy = b[0] - ax, b[1] - ay
    length = dx * dx + dy * dy
    t = 0 if length == 0 else max(0, min(1, ((px - ax) * dx + (py - ay) * dy) / length))
    return math.hypot(px - ax - t * dx, py - ay - t * dy)


def coverage(strokes, scale, px, py):
    """How much of a pixel is ink, from 0 to 1, told by how far its middle is from an edge."""
    most = 0
    for weight, paths in strokes:
        for path in paths:
            nearest = min(distance(px, py, a, b) for a, b in zip(path, path[1:]))
            most = max(most, min(1, 0.5 + (weight / 2 - nearest) * scale))
    return most


def pixel(ink, ground, share):
    if ground is None:
        return bytes((*ink, round(255 * share)))
    return bytes((*(round(g + (i - g) * share) for i, g in zip(ink, ground)), 255))


def png(width, height, rows):
    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(
            ">I", zlib.crc32(kind + data))
    # 8 bits of red, green, blue and alpha; no filter before any row.
    header = struct.pack(">IIBBBBB", width, height, 8, 6, 0, 0, 0)
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header)
            + chunk(b"IDAT", zlib.compress(b"".join(b"\0" + row for row in rows), 9))
            + chunk(b"IEND", b""))


def draw(set_name, glyph, density):
    scale, ink, ground = SETS[set_name]
    scale *= density
    width, strokes = GLYPHS[glyph]
    rows = [b"".join(pixel(ink, ground, max(0, coverage(strokes, scale, (x + 0.5) / scale,
                                                        (y + 0.5) / scale)))
                     for x in range(width * scale)) for y in range(HEIGHT * scale)]
    return png(width * scale, HEIGHT * scale, rows)


def main():
    listing, folder = map(pathlib.Path, sys.argv[1:3])
    for entry in xml.etree.ElementTree.parse(listing).iter("file"):
        set_name, _, file_name = entry.text.partition("/")
        glyph = file_name.removesuffix(".png").removesuffix("@2x")
        if set_name not in SETS or glyph not in GLYPHS:
            sys.exit(f"{listing}: no drawing of {entry.text}")
        target = folder / entry.text
        target.parent.mkdir(parents=True, exist_ok=True)
        target.write_bytes(draw(set_name, glyph, 2 if "@2x" in file_name else 1))


if __name__ == "__main__":
    main()
