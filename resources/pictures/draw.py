#!/usr/bin/env python3
"""Draws the plug-in's pictures as PNG files beside this script, standard library only.

Cursors are 32 x 32 with a cross whose centre is the hot spot and a sign of what the tool does in the
lower right quarter; black lines with a white rim are seen on any ground.
"""
import math
import os
import struct
import zlib

HERE = os.path.dirname(os.path.abspath(__file__))
SCALE = 4  # drawn larger, then averaged


def write_png(name, width, height, pixels):
    rows = b"".join(b"\0" + bytes(c for p in pixels[y * width:(y + 1) * width] for c in p) for y in range(height))
    chunk = lambda kind, data: struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))
    with open(os.path.join(HERE, name + ".png"), "wb") as f:
        f.write(b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, 8, 6, 0, 0, 0))
                + chunk(b"IDAT", zlib.compress(rows, 9)) + chunk(b"IEND", b""))


def distance(x, y, segment):
    ax, ay, bx, by = segment
    dx, dy = bx - ax, by - ay
    t = 0 if dx == dy == 0 else max(0, min(1, ((x - ax) * dx + (y - ay) * dy) / (dx * dx + dy * dy)))
    return math.hypot(x - ax - t * dx, y - ay - t * dy)


def render(width, height, segments, line, ink, rim):
    pixels = []
    for py in range(height):
        for px in range(width):
            inks = rims = 0
            for k in range(SCALE * SCALE):
                x, y = px + (k % SCALE + 0.5) / SCALE, py + (k // SCALE + 0.5) / SCALE
                d = min(distance(x, y, s) for s in segments)
                inks += d <= line
                rims += d <= line + 1.1
            n = SCALE * SCALE
            alpha = rims / n if rim else inks / n
            share = inks / rims if rims else 0
            color = tuple(round(255 * (1 - share) + c * share) for c in ink) if rim else ink
            pixels.append(color + (round(255 * alpha),))
    return pixels


CROSS = [(15.5, 6, 15.5, 12.5), (15.5, 18.5, 15.5, 25), (6, 15.5, 12.5, 15.5), (18.5, 15.5, 25, 15.5)]


def polyline(points):
    return [a + b for a, b in zip(points, points[1:])]


def hill(x0, x1, base, top):
    n = 12
    return polyline([(x0 + (x1 - x0) * i / n, base - (base - top) * (0.5 - 0.5 * math.cos(2 * math.pi * i / n))) for i in range(n + 1)])


def circle(cx, cy, r, n=16):
    return polyline([(cx + r * math.cos(2 * math.pi * i / n), cy + r * math.sin(2 * math.pi * i / n)) for i in range(n + 1)])


SIGNS = {
    "cursor_height": hill(19, 31, 29, 22),
    "cursor_point": [(25.5, 20, 25.5, 30.5), (25.5, 20, 22.7, 23), (25.5, 20, 28.3, 23), (25.5, 30.5, 22.7, 27.5), (25.5, 30.5, 28.3, 27.5)],
    "cursor_blur": circle(25.5, 25.5, 4.6) + circle(25.5, 25.5, 1.4, 8),
    "cursor_cross": [],
    "cursor_ramp": polyline([(19.5, 29.5), (30.5, 20.5), (30.5, 29.5), (19.5, 29.5)]),
    "cursor_extent": [(20, 20.5, 22.5, 20.5), (25, 20.5, 27.5, 20.5), (30.5, 20.5, 30.5, 23), (30.5, 25.5, 30.5, 28),
                      (30.5, 30.5, 28, 30.5), (25.5, 30.5, 23, 30.5), (20.5, 30.5, 20.5, 28), (20.5, 25.5, 20.5, 23)],
    "cursor_terrace": polyline([(19.5, 29.5), (22.5, 29.5), (22.5, 26), (26, 26), (26, 22.5), (29.5, 22.5), (29.5, 19.5), (31, 19.5)]),
}

if __name__ == "__main__":
    for name, sign in SIGNS.items():
        write_png(name, 32, 32, render(32, 32, CROSS + sign, 0.75, (0, 0, 0), True))
    mountain = polyline([(1, 13.5), (5.5, 5), (8, 9), (11, 3), (15, 13.5), (1, 13.5)])
    write_png("toolbar", 16, 15, render(16, 15, mountain, 0.85, (70, 110, 60), False))
