#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""Draws the four dots of the schedule list into this folder, for screens of one, two and three pixels a point.

    make_dots.py [FOLDER]

A dot is 16 points wide and high. Colour is not its only mark: the empty ring, the disc with a point (powers on), the
disc with a bar (wakes) and the halved disc differ without it. Needs nothing but Python; the same input gives the
same bytes.
"""
import math
import struct
import sys
import zlib
from pathlib import Path

POINTS = 16
CENTRE = POINTS / 2
OUTER, INNER, MARK = 6.5, 5.0, 1.75  # radii in points
SAMPLES = 8  # a side, for each pixel
GREY, GREEN, ORANGE, WHITE = (142, 142, 147), (52, 168, 83), (242, 140, 24), (255, 255, 255)


def none_dot(x, y):
    return GREY if INNER <= math.hypot(x, y) <= OUTER else None


def startup_dot(x, y):
    if math.hypot(x, y) > OUTER:
        return None
    return WHITE if math.hypot(x, y) <= MARK else GREEN


def wake_up_dot(x, y):
    if math.hypot(x, y) > OUTER:
        return None
    return WHITE if abs(x) <= 3 and abs(y) <= 0.75 else ORANGE


def mixed_dot(x, y):
    """The left half is the one, the right half the other, with a gap between."""
    if math.hypot(x, y) > OUTER or abs(x) < 0.5:
        return None
    return GREEN if x < 0 else ORANGE


DOTS = {"NoneDot": none_dot, "StartupDot": startup_dot, "WakeUpDot": wake_up_dot, "MixedDot": mixed_dot}


def pixel(dot, column, row, scale):
    """Red, green, blue, alpha of one pixel, averaged over its samples."""
    hits = []
    for i in range(SAMPLES):
        for j in range(SAMPLES):
            colour = dot((column + (i + 0.5) / SAMPLES) / scale - CENTRE, (row + (j + 0.5) / SAMPLES) / scale - CENTRE)
            if colour is not None:
                hits.append(colour)
    if not hits:
        return bytes(4)
    colour = [round(sum(hit[k] for hit in hits) / len(hits)) for k in range(3)]
    return bytes([*colour, round(255 * len(hits) / SAMPLES ** 2)])


def chunk(kind, content):
    return struct.pack(">I", len(content)) + kind + content + struct.pack(">I", zlib.crc32(kind + content))


def png(dot, scale):
    side = POINTS * scale
    rows = b"".join(b"\0" + b"".join(pixel(dot, column, row, scale) for column in range(side)) for row in range(side))
    head = struct.pack(">IIBBBBB", side, side, 8, 6, 0, 0, 0)
    return b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", head) + chunk(b"IDAT", zlib.compress(rows, 9)) + chunk(b"IEND", b"")


def main():
    folder = Path(sys.argv[1]) if len(sys.argv) > 1 else Path(__file__).resolve().parent
    for name, dot in DOTS.items():
        for scale in (1, 2, 3):
            suffix = "" if scale == 1 else f"@{scale}x"
            (folder / f"{name}{suffix}.png").write_bytes(png(dot, scale))


if __name__ == "__main__":
    main()
