#!/usr/bin/env python3
"""Draws the brush shapes, the sample mask (8-bit grey) and the small pictures of the property list: PNG files,
standard library only.

usage: data/draw.py            writes data/brushes/*.png, data/samples/*.png and data/interface/*.png
"""
import math
import os
import struct
import zlib

HERE = os.path.dirname(os.path.abspath(__file__))


def write_png(path, side, shade):
    rows = bytearray()
    for y in range(side):
        rows.append(0)
        for x in range(side):
            rows.append(max(0, min(255, round(255 * shade(x, y)))))
    write_rows(path, side, side, 0, rows)


def write_rows(path, width, height, color_type, rows):
    chunk = lambda kind, data: struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))
    with open(os.path.join(HERE, path), "wb") as f:
        f.write(b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, 8, color_type, 0, 0, 0))
                + chunk(b"IDAT", zlib.compress(bytes(rows), 9)) + chunk(b"IEND", b""))


def radius(side, x, y):
    """0 at the centre pixel, 1 at the border."""
    half = side // 2
    return math.hypot(x - half, y - half) / (half - 1)


def smooth(t):
    t = max(0.0, min(1.0, t))
    return t * t * (3 - 2 * t)


def hash01(x, y):
    n = (x * 374761393 + y * 668265263) & 0xFFFFFFFF
    n = ((n ^ (n >> 13)) * 1274126177) & 0xFFFFFFFF
    return ((n ^ (n >> 16)) & 0xFFFF) / 0xFFFF


def value_noise(x, y):
    ix, iy = math.floor(x), math.floor(y)
    u, v = smooth(x - ix), smooth(y - iy)
    top = hash01(ix, iy) * (1 - u) + hash01(ix + 1, iy) * u
    low = hash01(ix, iy + 1) * (1 - u) + hash01(ix + 1, iy + 1) * u
    return top * (1 - v) + low * v


def rock(side, x, y):
    noise = sum(value_noise(x * f / side, y * f / side) / f for f in (6, 12, 24, 48)) / (1 / 6 + 1 / 12 + 1 / 24 + 1 / 48)
    return noise * smooth(1.6 * (1 - radius(side, x, y)))


def square(side, x, y):
    half = side // 2
    return smooth((half - 1 - max(abs(x - half), abs(y - half))) / 6)


def stripes(side, x, y):
    return smooth(0.5 + 2.2 * math.sin((x + 0.6 * y) * 2 * math.pi * 14 / side))


# Before the names of a property list: closed, open, read only. Pure blue is transparent, so there are no
# softened edges; the grey is seen on a light ground and on a dark one.
STATES = """
................................................
................................................
................................................
......#.........................................
......##..............................####......
......###...........................##....##....
......####.......##########.........#......#....
......#####.......########..........#......#....
......#####........######..........##########...
......####..........####...........##########...
......###............##............####..####...
......##...........................####..####...
......#............................##########...
...................................##########...
................................................
................................................
""".split()


def write_states(path):
    rows = bytearray()
    for line in STATES:
        rows.append(0)
        for sign in line:
            rows += bytes((0x80, 0x80, 0x80) if sign == "#" else (0, 0, 255))
    write_rows(path, len(STATES[0]), len(STATES), 2, rows)


if __name__ == "__main__":
    side = 128
    write_png("brushes/round.png", side, lambda x, y: smooth(1 - radius(side, x, y)))
    write_png("brushes/cone.png", side, lambda x, y: 1 - radius(side, x, y))
    write_png("brushes/disc.png", side, lambda x, y: smooth((1 - radius(side, x, y)) * 16))
    write_png("brushes/square.png", side, lambda x, y: square(side, x, y))
    write_png("brushes/rock.png", side, lambda x, y: rock(side, x, y))
    write_png("samples/stripes.png", 256, lambda x, y: stripes(256, x, y))
    write_states("interface/_state.png")
