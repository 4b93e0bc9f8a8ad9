#!/usr/bin/env python3
"""Writes the strokes of samples/landscape.tellur: each is a line through a few points, rounded, with points a sixteenth
of the brush's extent apart, so that crests are smooth. Standard library only.

usage: data/landscape.py            writes data/samples/landscape.tellur
"""
import math
import os

HERE = os.path.dirname(os.path.abspath(__file__))

HEAD = """\
// A landscape made of the Jacksboro fault with all six functions: a summit at the end of the mountains, a valley
// below it, terraces on its side, and a road along it. Written by data/landscape.py; played by ./run,
// which makes the level first. Positions are (x, z) from the north-western corner: x runs east to 29748,
// z south to 31556, one unit a metre.

!open( s )
!brush()
!brush_name( s )
!bitmap()
!path( s )
!function( s )
!attrib( s, s )
!power_modifier( f )
!fade_factor( f )
!hardness( f )
!vertical_distance( f )
!extent( f )
!mode( s )
!keys( s )
!press( f, f )
!move( f, f, i )
!release( f, f )
!undo()
!expect_undo( i )

open( "../../out/jacksboro.height" )
mode( "none" )
"""


def curve(points, spacing):
    """Points of equal spacing on a Catmull-Rom curve through the given ones."""
    ends = [points[0]] + points + [points[-1]]
    fine = []
    for a, b, c, d in zip(ends, ends[1:], ends[2:], ends[3:]):
        for i in range(64):
            t = i / 64
            fine.append(tuple(
                0.5 * (2 * q + (r - p) * t + (2 * p - 5 * q + 4 * r - s) * t * t + (3 * q - p - 3 * r + s) * t * t * t)
                for p, q, r, s in zip(a, b, c, d)))
    fine.append(points[-1])
    line = [fine[0]]
    left = spacing
    for a, b in zip(fine, fine[1:]):
        length = math.dist(a, b)
        while left <= length:
            a = tuple(p + (q - p) * left / length for p, q in zip(a, b))
            line.append(a)
            length -= left
            left = spacing
        left -= length
    return line + [fine[-1]]


class Script:
    def __init__(self):
        self.lines = [HEAD]
        self.strokes = 0
        self.extent = 0

    def title(self, text):
        self.lines.append(f"// --- {text}\n")

    def brush(self, name, image, function, extent, attributes=None, **keys):
        self.extent = extent
        block = "".join(f'    attrib( "{k}", "{v}" )\n' for k, v in (attributes or {}).items())
        block = f"  {{\n{block}  }}\n" if block else ""
        more = "".join(f"  {k}( {v} )\n" for k, v in keys.items())
        self.lines.append(f'brush()\n{{\n  brush_name( "{name}" )\n  bitmap() {{ path( "../brushes/{image}.png" ) }}\n'
                          f'  function( "{function}Function" )\n{block}  extent( {extent} )\n{more}}}\n'
                          'mode( "terraforming" )')

    def stroke(self, *points):
        """Along the line; the first move stays where the press was."""
        self.drag([(round(x), round(z), 0) for x, z in curve(list(points), self.extent / 16)])

    def pull(self, x, z, height):
        """On the spot, up (or down) by so many pixels."""
        step = 20
        moves = [math.copysign(min(step, abs(height) - i), height) for i in range(0, abs(height), step)]
        self.drag([(x, z, -round(m)) for m in moves])

    def drag(self, moves):
        first, last = moves[0], moves[-1]
        self.lines.append(f"press( {first[0]}, {first[1]} )")
        self.lines += [f"move( {x}, {z}, {y} )" for x, z, y in moves]
        self.lines.append(f"release( {last[0]}, {last[1]} )\n")
        self.strokes += 1

    def write(self, path):
        text = "\n".join(self.lines) + f"\nexpect_undo( {self.strokes} )\n"
        with open(os.path.join(HERE, path), "w") as f:
            f.write(text)


SUMMIT = (13600, 15200)
VALLEY = [(15300, 13700), (15750, 14600), (16400, 15500), (17300, 16600), (18300, 17500), (19400, 18300), (20800, 18900),
          (22500, 19300)]
ROAD = [(21640, 19790), (21180, 19730), (20700, 19640), (20290, 19700), (19850, 19560), (19410, 19300), (18910, 19130),
        (18490, 18840), (18200, 18380), (17890, 18000), (17540, 17690), (17210, 17360), (16930, 16950), (16660, 16550),
        (16410, 16150), (16170, 15760), (15900, 15400), (15630, 15040), (15410, 14630), (15230, 14250)]
BENDS = [(17890, 18000), (17400, 18500), (17200, 17950), (16600, 18400), (16400, 17850), (15800, 18150)]
TERRACES = [(16700, 18000), (17100, 18450), (17700, 19100)]


def raise_mountain(s):
    s.title("Relative height: a mountain, and ridges that run down from it and fade out")
    s.brush("Massif", "cone", "RelativeHeight", 7600, {"m_Height": 480})
    s.stroke(SUMMIT, (13300, 14900))
    s.brush("Ridge", "cone", "RelativeHeight", 2400, {"m_Height": 330}, fade_factor=6200)
    s.stroke((13900, 15700), (14600, 16500), (15500, 17100), (16300, 18300))
    s.stroke((13900, 14700), (14050, 14000), (13800, 13100), (13900, 11900))
    s.stroke((13000, 14900), (12400, 14400), (11300, 13700), (9900, 12900))
    s.stroke((13300, 15800), (12900, 16500), (12100, 17500), (11900, 19200))
    s.brush("Gully", "cone", "RelativeHeight", 1300, {"m_Height": -230}, fade_factor=4200)
    s.stroke((14200, 15500), (14900, 15800), (15800, 16200), (16600, 16300))
    s.stroke((14300, 15100), (14800, 15000), (15600, 15100))
    s.stroke((13600, 16000), (13800, 16700), (14600, 17700), (14900, 18700))
    s.stroke((13100, 15400), (12300, 15500), (11300, 15900), (10500, 17000))
    s.brush("Rock", "rock", "RelativeHeight", 3600, {"m_Height": 330})
    s.drag([(*SUMMIT, 0)])
    s.title("Point height: the summit, pulled up by eye")
    s.brush("Summit", "cone", "PointHeight", 2300)
    s.pull(*SUMMIT, -600)


def carve_valley(s):
    s.title("Set height with Alt, which only lowers: a valley below the mountain; blur rounds its sides")
    s.brush("Valley", "round", "SetHeight", 1700, {"m_Height": 300})
    s.lines.append('keys( "alt" )')
    s.stroke(*VALLEY)
    s.lines.append('keys( "" )')
    s.brush("Smooth", "round", "Blur", 2600, {"m_NeighbourhoodSize": 3})
    s.stroke(*VALLEY)
    s.brush("River", "round", "RelativeHeight", 420, {"m_Height": -30})
    s.stroke(*[(x + (170 if i % 2 else -130), z) for i, (x, z) in enumerate(VALLEY)])


def build_road(s):
    s.title("Set height, picked where the stroke begins: a level road along the mountain; ramps up to it and on")
    s.brush("Road", "disc", "SetHeight", 170, {"m_PickHeight": "true"})
    s.stroke(*ROAD)
    s.brush("Ramp", "disc", "Ramp", 90, {"m_SideInterpolation": 0.6})
    for a, b in zip(BENDS, BENDS[1:]):
        s.drag([(*a, 0), (*b, 0)])
    s.title("Blur: the edges of the road")
    s.brush("Edges", "disc", "Blur", 420, {"m_NeighbourhoodSize": 1}, power_modifier=0.04)
    s.stroke(*ROAD)
    s.stroke(*BENDS)


def terrace(s):
    s.title("Posterize: terraces on the slope above the road; blur makes banks of their walls")
    s.brush("Terraces", "round", "Posterize", 2000, {"m_NumHeightDivisions": 60}, power_modifier=0.9)
    s.stroke(*TERRACES)
    s.brush("Banks", "disc", "Blur", 2000, {"m_NeighbourhoodSize": 1}, power_modifier=0.1)
    s.stroke(*TERRACES)


def compose(s):
    raise_mountain(s)
    carve_valley(s)
    terrace(s)
    build_road(s)


if __name__ == "__main__":
    script = Script()
    compose(script)
    script.write("samples/landscape.tellur")
