#!/usr/bin/env python3
"""Draws the About picture: a fretboard with four note dots.

    python3 resources/make_pictures.py [output-dir]

writes VarnockFrets128b.bmp (128 x 128, 24-bit, uncompressed). Standard
library only; the output is the same byte for byte on every run. (The desktop
icon is drawn in varnock.svg; the build renders its PNG sizes.)
"""

import math
import os
import struct
import sys

SIZE = 128
SUPER = 4  # samples per pixel along each axis, for smooth edges

# The program's note colours, first to fourth note of a chord.
GREEN = (0x00, 0xAA, 0x00)
BLUE = (0x00, 0x00, 0xBB)
PURPLE = (0xBB, 0x00, 0xBB)
RED = (0xAA, 0x00, 0x00)

# The neck runs from the lower left (near, wide) to the upper right (far,
# narrow), where it ends in the nut. u runs along it, 0 near and 1 at the nut.
NEAR = (-14.0, 122.0)
FAR = (99.0, 39.0)
NEAR_WIDTH = 62.0
FAR_WIDTH = 38.0
NUT_DEPTH = 0.035  # in u
HEAD_LENGTH = 0.11  # the stub of headstock beyond the nut, in u

STRINGS = (0.2, 0.4, 0.6, 0.8)  # across the neck, 0 at the upper edge
STRING_WIDTH = (1.5, 1.25, 1.05, 0.9)

# Fret positions along u: each fret gap a little shorter than the one nearer
# the nut, with the nut at u = 1.
FRETS = []
_pos = 1.0
_gap = 0.185
while _pos - _gap > -0.05:
    _pos -= _gap
    FRETS.append(_pos)
    _gap *= 0.86

# Note dots: (string index, fret gap index counted from the nut, colour).
DOTS = ((0, 1, GREEN), (1, 0, BLUE), (2, 2, PURPLE), (3, 1, RED))
DOT_RADIUS = 5.6


def lerp(a, b, t):
    return a + (b - a) * t


def mix(c1, c2, t):
    return tuple(lerp(a, b, t) for a, b in zip(c1, c2))


def smooth(edge0, edge1, x):
    if edge0 == edge1:
        return 1.0 if x >= edge1 else 0.0
    t = max(0.0, min(1.0, (x - edge0) / (edge1 - edge0)))
    return t * t * (3 - 2 * t)


AX, AY = NEAR
BX, BY = FAR
LENGTH = math.hypot(BX - AX, BY - AY)
DX, DY = (BX - AX) / LENGTH, (BY - AY) / LENGTH
NX, NY = DY, -DX  # points to the upper edge of the neck


def neck_coords(x, y):
    """(u, v, half width in pixels, distance across from the centre line)."""
    px, py = x - AX, y - AY
    u = (px * DX + py * DY) / LENGTH
    s = px * NX + py * NY
    half = lerp(NEAR_WIDTH, FAR_WIDTH, u) / 2
    v = 0.5 - s / (2 * half)
    return u, v, half, s


def point_on_neck(u, v):
    half = lerp(NEAR_WIDTH, FAR_WIDTH, u) / 2
    s = (0.5 - v) * 2 * half
    return AX + DX * LENGTH * u + NX * s, AY + DY * LENGTH * u + NY * s


def background(x, y):
    # A deep blue-grey, lighter towards the upper left, darker at the corners.
    t = (x + y) / (2 * SIZE)
    base = mix((0x3C, 0x4A, 0x5E), (0x16, 0x1C, 0x26), t)
    cx, cy = x / SIZE - 0.5, y / SIZE - 0.5
    vignette = 1.0 - 0.35 * min(1.0, (cx * cx + cy * cy) * 2)
    return tuple(c * vignette for c in base)


def shadow_amount(x, y):
    # The neck's shadow, offset down and to the right, soft at its edge.
    u, _v, half, s = neck_coords(x - 3.0, y - 4.5)
    end = 1.0 + NUT_DEPTH + HEAD_LENGTH
    across = abs(s) - half
    along = max(-u * LENGTH, (u - end) * LENGTH)
    d = max(across, along)
    return 0.55 * (1.0 - smooth(-3.0, 5.0, d))


def wood(u, v):
    # Rosewood: dark red-brown, streaks along the grain, rounded across.
    base = (0x6B, 0x3A, 0x22)
    streak = math.sin(v * 37.0 + 2.3 * math.sin(u * 9.0 + v * 3.0))
    streak2 = math.sin(v * 91.0 + 1.7 * math.sin(u * 23.0))
    k = 1.0 + 0.10 * streak + 0.05 * streak2
    roll = 0.80 + 0.38 * math.sin(math.pi * max(0.0, min(1.0, v * 0.9 + 0.05)))
    light = 1.0 + 0.18 * (1.0 - u)  # nearer is a touch brighter
    return tuple(min(255.0, c * k * roll * light) for c in base)


def fret_colour(offset, width):
    # Nickel silver: bright along the crown, darker at the sides.
    t = min(1.0, abs(offset) / width)
    return mix((0xF4, 0xF6, 0xFA), (0x86, 0x8C, 0x96), t * t)


def neck_sample(x, y):
    """Colour and coverage of the neck, its frets, strings and nut at (x, y)."""
    u, v, half, _s = neck_coords(x, y)
    if v < 0.0 or v > 1.0 or u < -0.5:
        return None
    if u > 1.0 + NUT_DEPTH + HEAD_LENGTH:
        return None
    px_per_u = LENGTH

    if u > 1.0 + NUT_DEPTH:
        # The headstock stub: darker, plainer wood with a rounded end.
        rest = (1.0 + NUT_DEPTH + HEAD_LENGTH - u) * px_per_u
        corner = 6.0
        edge = min(v, 1.0 - v) * 2 * half
        if rest < corner and edge < corner:
            if math.hypot(corner - rest, corner - edge) > corner:
                return None
        c = wood(u * 0.5, v)
        return tuple(ch * 0.72 for ch in c)

    if u > 1.0:
        # The nut: bone white, slightly shaded.
        t = (u - 1.0) / NUT_DEPTH
        return mix((0xF2, 0xEA, 0xD6), (0xC9, 0xBC, 0x9E), t)

    colour = wood(u, v)

    # A lighter binding along both edges of the fingerboard.
    edge_px = min(v, 1.0 - v) * 2 * half
    if edge_px < 1.6:
        colour = mix((0xE9, 0xDD, 0xC2), colour, smooth(0.9, 1.6, edge_px))

    for f in FRETS:
        off = (u - f) * px_per_u
        width = 1.3
        if abs(off) < width:
            colour = fret_colour(off, width)
        elif 0 < off < 2.6:
            # A faint shadow on the fret's far side.
            colour = tuple(c * (0.72 + 0.28 * (off - width) / 1.3) for c in colour)

    for i, sv in enumerate(STRINGS):
        off = (v - sv) * 2 * half
        w = STRING_WIDTH[i] / 2
        if abs(off) < w + 0.9:
            steel = mix((0xEE, 0xEE, 0xE6), (0x9A, 0x9A, 0x94), min(1.0, abs(off) / (w + 0.01)))
            if abs(off) < w:
                colour = steel
            elif off > 0:
                colour = tuple(c * 0.7 for c in colour)  # string shadow below

    return colour


DOT_CENTRES = []
for _string, _gap_index, _colour in DOTS:
    _high = 1.0 if _gap_index == 0 else FRETS[_gap_index - 1]
    _low = FRETS[_gap_index]
    _u = _low + (_high - _low) * 0.55
    DOT_CENTRES.append((point_on_neck(_u, STRINGS[_string]), _colour, lerp(1.12, 0.86, _u)))


def dot_sample(x, y):
    for (cx, cy), colour, scale in DOT_CENTRES:
        r = DOT_RADIUS * scale
        d = math.hypot(x - cx, y - cy)
        if d < r + 1.1:
            if d > r:
                return (0xF8, 0xF8, 0xF8)  # white rim
            # A glossy bead: the note colour with a highlight to the upper left.
            hx, hy = cx - r * 0.35, cy - r * 0.4
            h = math.hypot(x - hx, y - hy) / r
            gloss = max(0.0, 1.0 - h * 1.6) ** 2
            dark = 1.0 - 0.25 * (d / r) ** 2
            base = tuple(c * dark for c in colour)
            return mix(base, (0xFF, 0xFF, 0xFF), 0.55 * gloss)
    return None


def dot_shadow(x, y):
    a = 0.0
    for (cx, cy), _colour, scale in DOT_CENTRES:
        r = DOT_RADIUS * scale + 1.1
        d = math.hypot(x - cx - 0.8, y - cy - 1.4)
        a = max(a, 0.5 * (1.0 - smooth(r - 1.0, r + 1.5, d)))
    return a


def scene(x, y):
    dot = dot_sample(x, y)
    if dot is not None:
        return dot
    neck = neck_sample(x, y)
    if neck is not None:
        sh = dot_shadow(x, y)
        return tuple(c * (1.0 - sh) for c in neck)
    bg = background(x, y)
    sh = shadow_amount(x, y)
    return tuple(c * (1.0 - sh) for c in bg)


def render():
    pixels = []
    step = 1.0 / SUPER
    for py in range(SIZE):
        row = []
        for px in range(SIZE):
            acc = [0.0, 0.0, 0.0]
            for sy in range(SUPER):
                for sx in range(SUPER):
                    c = scene(px + (sx + 0.5) * step, py + (sy + 0.5) * step)
                    acc[0] += c[0]
                    acc[1] += c[1]
                    acc[2] += c[2]
            n = SUPER * SUPER
            row.append(tuple(max(0, min(255, int(round(a / n)))) for a in acc))
        pixels.append(row)
    return pixels


def write_bmp(path, pixels):
    height = len(pixels)
    width = len(pixels[0])
    row_size = (width * 3 + 3) & ~3
    image_size = row_size * height
    header = struct.pack("<2sIHHI", b"BM", 14 + 40 + image_size, 0, 0, 14 + 40)
    info = struct.pack("<IiiHHIIiiII", 40, width, height, 1, 24, 0, image_size, 2835, 2835, 0, 0)
    body = bytearray()
    for row in reversed(pixels):  # bottom-up
        line = bytearray()
        for r, g, b in row:
            line += bytes((b, g, r))
        line += b"\0" * (row_size - len(line))
        body += line
    with open(path, "wb") as f:
        f.write(header + info + bytes(body))


def main():
    out = sys.argv[1] if len(sys.argv) > 1 else os.path.dirname(os.path.abspath(__file__))
    pixels = render()
    write_bmp(os.path.join(out, "VarnockFrets128b.bmp"), pixels)


if __name__ == "__main__":
    main()
