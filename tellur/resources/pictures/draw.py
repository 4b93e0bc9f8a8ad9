#!/usr/bin/env python3
"""Draws the plug-in's pictures as PNG files beside this script, standard library only: NAME.png for
100 % scale and NAME_2x.png for 200 %.

Cursors are 32 x 32 with a cross whose centre is the hot spot and a sign of what the tool does in the
lower right quarter; black lines with a white rim are seen on any ground. The toolbar's picture has alpha.

The pictures of the functions are opaque. Whoever draws them replaces three greys by colours of the desktop:
FACE, the ground, by the face of a button, SHADE and LIGHT by its shadow and its light. Everything else
stays, so the two inks are as far from a light face as from a dark one, and no edge is softened: a
softened edge is none of the three greys and would be a pale rim on a dark button.
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


def render(width, height, zoom, segments, line, ink, rim):
    pixels = []
    for py in range(height * zoom):
        for px in range(width * zoom):
            inks = rims = 0
            for k in range(SCALE * SCALE):
                x, y = (px + (k % SCALE + 0.5) / SCALE) / zoom, (py + (k // SCALE + 0.5) / SCALE) / zoom
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

FACE, SHADE, LIGHT = (0xC0,) * 3, (0x80,) * 3, (0xDF,) * 3
LAND = (0x2D, 0x90, 0x3E)  # the ground
DEED = (0xD2, 0x59, 0x00)  # what is done to it


def paint(width, height, zoom, samples, ground, layers):
    """Layers are (test of a point, colour), the last that holds wins. No ground: transparent there."""
    pixels = []
    for py in range(height * zoom):
        for px in range(width * zoom):
            seen = []
            for k in range(samples * samples):
                x, y = (px + (k % samples + 0.5) / samples) / zoom, (py + (k // samples + 0.5) / samples) / zoom
                seen += [next((c for test, c in reversed(layers) if test(x, y)), ground)]
            inks = [c for c in seen if c]
            color = tuple(round(sum(c[i] for c in inks) / len(inks)) if inks else 0 for i in range(3))
            pixels.append(color + (round(255 * len(inks) / len(seen)),))
    return pixels


def box(x0, y0, x1, y1):
    return lambda x, y: x0 <= x < x1 and y0 <= y < y1


def polygon(*points):
    def test(x, y):
        inside = False
        for (ax, ay), (bx, by) in zip(points, points[1:] + points[:1]):
            if (ay > y) != (by > y) and x < ax + (bx - ax) * (y - ay) / (by - ay):
                inside = not inside
        return inside
    return test


def below(top, x0, x1, base):
    return lambda x, y: x0 <= x < x1 and top(x) <= y < base


def band(top, thick, x0, x1):
    return lambda x, y: x0 <= x < x1 and top(x) <= y < top(x) + thick


def bell(cx, half, base, top):
    return lambda x: base - (base - top) * (0.5 + 0.5 * math.cos(math.pi * max(-1, min(1, (x - cx) / half))))


def arrow(cx, tip, tail):
    """Up when the tip is above the tail; 8 wide, the shaft 2."""
    way = 1 if tail > tip else -1
    length = abs(tail - tip)

    def test(x, y):
        away = (y - tip) * way
        return 0 <= away < length and abs(x - cx) < (away + 0.6 if away < 4 else 1)
    return test


BASE = 21  # where the ground line is
GROUND = [(box(2, BASE, 22, BASE + 1), SHADE), (box(2, BASE + 1, 22, BASE + 2), LIGHT)]
FUNCTIONS = {
    "function_blur": [
        (polygon((2, BASE), (2, 19), (5.5, 13), (8.5, 18), (12, 10), (15.5, 18), (18.5, 13), (22, 19), (22, BASE)), LAND),
        (band(bell(12, 10, 9, 2), 2.5, 2, 22), DEED)],
    "function_point": [
        (below(lambda x: BASE - 10 * max(0, 1 - abs(x - 12) / 9) ** 2.2 - 1, 2, 22, BASE), LAND),
        (arrow(12, 1, 9), DEED)],
    "function_set": [
        (polygon((2, BASE), (7, 14), (17, 14), (22, BASE)), LAND),
        (box(2, 12, 22, 14), DEED),
        (arrow(12, 11, 2), DEED)],
    "function_relative": [
        (below(bell(12, 11, BASE, 11), 2, 22, BASE), LAND),
        (box(2, 5, 9, 7), DEED), (box(4.5, 2.5, 6.5, 9.5), DEED), (box(15, 5, 22, 7), DEED)],
    "function_posterize": [
        (below(lambda x: BASE - 4.5 * (1 + (x - 2) // 5), 2, 22, BASE), LAND),
        (band(lambda x: BASE - 4.5 * (1 + (x - 2) // 5), 2, 2, 22), DEED)],
    "function_ramp": [
        (polygon((4, BASE), (4, 16), (20, 7), (20, BASE)), LAND),
        (box(2, 12, 5, BASE), DEED), (box(19, 3, 22, BASE), DEED)],
}
MOUNTAIN = [
    (polygon((5, 14.5), (10.7, 2), (15.8, 14.5)), LAND),
    (polygon((0.2, 14.5), (5, 5.5), (10, 14.5)), (0x4F, 0xA8, 0x58))]

if __name__ == "__main__":
    for zoom, end in ((1, ""), (2, "_2x")):
        for name, sign in SIGNS.items():
            write_png(name + end, 32 * zoom, 32 * zoom, render(32, 32, zoom, CROSS + sign, 0.75, (0, 0, 0), True))
        for name, layers in FUNCTIONS.items():
            write_png(name + end, 24 * zoom, 24 * zoom, paint(24, 24, zoom, 1, FACE, GROUND + layers))
        write_png("toolbar" + end, 16 * zoom, 15 * zoom, paint(16, 15, zoom, SCALE, None, MOUNTAIN))
