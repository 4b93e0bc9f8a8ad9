#!/usr/bin/env python3
"""Draws the brush shapes, the sample mask (8-bit grey) and the small pictures of the property list: PNG files, and the
ground of the sample level. Standard library only.

usage: data/draw.py            writes data/brushes/*.png, data/samples/*.png and .height, and data/interface/*.png
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


def fractal(x, y, octaves):
    """Value noise, each octave twice as fine and half as strong; 0 to 1."""
    total, weight = 0.0, 0.0
    for octave in range(octaves):
        total += value_noise(x * 2**octave + 17 * octave, y * 2**octave + 31 * octave) / 2**octave
        weight += 1 / 2**octave
    return total / weight


def gradient_noise(x, y):
    """Of slopes at whole places and not of heights: its crests and channels follow no grid. About -1 to 1."""
    ix, iy = math.floor(x), math.floor(y)
    u, v = x - ix, y - iy

    def corner(dx, dy):
        angle = 2 * math.pi * hash01(ix + dx + 1000, iy + dy + 2000)
        return math.cos(angle) * (u - dx) + math.sin(angle) * (v - dy)

    su, sv = smooth(u), smooth(v)
    top = corner(0, 0) * (1 - su) + corner(1, 0) * su
    low = corner(0, 1) * (1 - su) + corner(1, 1) * su
    return 1.5 * (top * (1 - sv) + low * sv)


def ridged(x, y, octaves):
    """Crests where the noise passes its middle, finer ones on their flanks only; 0 to 1."""
    total, weight, above = 0.0, 0.0, 1.0
    for octave in range(octaves):
        # Each octave is turned, so that none of them shows the grid of the one before.
        crest = max(0.0, 1 - abs(gradient_noise(x + 17 * octave, y + 31 * octave)))
        above = crest * crest * min(1.0, 1.3 * above)
        total += above / 1.9**octave
        weight += 1 / 1.9**octave
        x, y = 1.6 * x - 1.2 * y, 1.2 * x + 1.6 * y
    return total / weight


def wander(side, x, y, amount):
    """The radius with a border that is no circle."""
    return radius(side, x, y) + amount * (fractal(5 * x / side, 5 * y / side, 4) - 0.5)


def fade(side, x, y, width):
    """1 inside, softly to 0 at the border over that share of the radius."""
    return smooth((1 - radius(side, x, y)) / width)


def hill(side, x, y):
    dome = 0.5 + 0.5 * math.cos(math.pi * min(1.0, radius(side, x, y)))
    return dome * (0.88 + 0.24 * (fractal(6 * x / side, 6 * y / side, 4) - 0.25))


def peak(side, x, y):
    spurs = ridged(4 * x / side + 3, 4 * y / side + 9, 5)
    slope = max(0.0, 1 - radius(side, x, y))
    return slope**1.25 * (1 - 0.8 * smooth(2 * (1 - slope)) * (1 - spurs)) * smooth(slope * 12)


def mesa(side, x, y):
    r = wander(side, x, y, 0.28)
    cliff, scree = smooth((0.66 - r) / 0.07), smooth((0.95 - r) / 0.32)
    return (0.62 * cliff + 0.38 * scree * scree) * (0.95 + 0.1 * (fractal(9 * x / side, 9 * y / side, 3) - 0.5)) * fade(
        side, x, y, 0.1)


def crater(side, x, y):
    r = wander(side, x, y, 0.07)
    rim = math.exp(-((r - 0.58) / (0.11 if r < 0.58 else 0.2))**2)
    return rim * (0.86 + 0.28 * (fractal(14 * x / side, 14 * y / side, 3) - 0.5)) * fade(side, x, y, 0.25)


def dunes(side, x, y):
    """A long flank to windward, a short one to lee; crests meander and are not alike."""
    bend = fractal(3 * x / side, 3 * y / side, 2)
    phase = 7 * y / side + 1.1 * x / side + 2.2 * bend
    t = phase - math.floor(phase)
    flank = smooth(t / 0.74) if t < 0.74 else smooth((1 - t) / 0.26)
    return flank * (0.45 + 0.55 * fractal(4 * x / side + 8, 4 * y / side, 2)) * fade(side, x, y, 0.6)


def crags(side, x, y):
    return ridged(3.1 * x / side + 2, 3.1 * y / side + 5, 6) * fade(side, x, y, 0.85)


def gullies(side, x, y):
    """Channels that run together: thin lines where the noise passes its middle, finer ones beside coarse ones."""
    bend = 0.7 * fractal(6 * x / side, 6 * y / side, 4)
    net = 0.0
    for scale, depth, width in ((2.6, 1.0, 0.13), (5.2, 0.62, 0.12), (10.4, 0.36, 0.14)):
        away = abs(gradient_noise(scale * (x / side + 0.1 * bend) + 3 * scale, scale * (y / side - 0.1 * bend) + scale))
        net = max(net, depth * smooth(1 - away / width)**1.5)
    return net * fade(side, x, y, 0.8)


def boulders(side, x, y):
    """Domes of many sizes, each somewhere in its own cell."""
    cells, best = 9, 0.0
    for row in range(y * cells // side - 1, y * cells // side + 2):
        for column in range(x * cells // side - 1, x * cells // side + 2):
            if not (0 <= row < cells and 0 <= column < cells) or hash01(column + 70, row + 5) < 0.35:
                continue
            size = (0.18 + 0.5 * hash01(column + 11, row + 3)**2) * side / cells
            at = [(c + 0.5 + 0.6 * (hash01(column + o, row) - 0.5)) * side / cells for c, o in ((column, 40), (row, 90))]
            away = math.hypot(x - at[0], (y - at[1]) * (0.85 + 0.3 * hash01(row, column))) / size
            away += 0.25 * (fractal(30 * x / side, 30 * y / side, 2) - 0.5)
            best = max(best, math.sqrt(max(0.0, 1 - away * away)) * size * cells / side / 0.68)
    return best * fade(side, x, y, 0.3)


def plateau(side, x, y):
    return smooth((1 - radius(side, x, y)) / 0.4)


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


def valley(x, y):
    """Heights of the sample level, 0 to 1, at shares of its sides: a river's valley between two ranges."""
    away = abs(x - 0.5 - 0.13 * math.sin(5.2 * y + 0.6) - 0.04 * math.sin(13 * y))
    rise = smooth((away - 0.03) / 0.34)
    ridges = sum((1 - abs(2 * value_noise(x * f + 7, y * f + 3) - 1)) / f for f in (3, 6, 12, 24, 48)) / (31 / 48)
    hills = sum(value_noise(x * f, y * f) / f for f in (5, 10, 20, 40)) / (15 / 40)
    return 0.1 + 0.06 * (1 - y) + 0.03 * hills + rise * (0.12 + 0.58 * ridges * ridges)


def write_level(path, vertices, side, highest, height):
    heights = (highest * height(x / (vertices - 1), z / (vertices - 1)) for z in range(vertices) for x in range(vertices))
    data = b"HEIGHTF1" + struct.pack("<IIfffI", vertices, vertices, side, highest, side, 0)
    data += b"".join(struct.pack("<f", value) for value in heights)
    with open(os.path.join(HERE, path), "wb") as f:
        f.write(data + struct.pack("<I", zlib.crc32(data)))


if __name__ == "__main__":
    side = 128
    write_png("brushes/round.png", side, lambda x, y: smooth(1 - radius(side, x, y)))
    write_png("brushes/cone.png", side, lambda x, y: 1 - radius(side, x, y))
    write_png("brushes/disc.png", side, lambda x, y: smooth((1 - radius(side, x, y)) * 16))
    write_png("brushes/square.png", side, lambda x, y: square(side, x, y))
    write_png("brushes/rock.png", side, lambda x, y: rock(side, x, y))
    write_png("brushes/plateau.png", side, lambda x, y: plateau(side, x, y))
    fine = 256
    for shape in (hill, peak, mesa, crater, dunes, crags, gullies, boulders):
        # The strongest pixel is white: it is what the amount of a brush counts for.
        pixels = [[shape(fine, x, y) for x in range(fine)] for y in range(fine)]
        most = max(max(row) for row in pixels)
        write_png(f"brushes/{shape.__name__}.png", fine, lambda x, y: pixels[y][x] / most)
    write_png("samples/stripes.png", 256, lambda x, y: stripes(256, x, y))
    write_states("interface/_state.png")
    write_level("samples/valley.height", 257, 10240, 2000, valley)
