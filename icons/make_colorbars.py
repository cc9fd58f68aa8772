#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Computes the colour bars cb_1.png, cb_2.png ... into the folder given as the argument.

Every bar is 256x32 pixels, its low value on the left, and all of its rows are the same.
"""
import math
import os
import struct
import sys
import zlib

WIDTH = 256
HEIGHT = 32

# CIE XYZ of the D65 white
WHITE = (0.95047, 1.0, 1.08883)


def lch_to_linear(lightness, chroma, hue):
    """CIE LCh (D65) to linear sRGB; the result may lie outside 0..1."""
    a = chroma * math.cos(math.radians(hue))
    b = chroma * math.sin(math.radians(hue))
    fy = (lightness + 16) / 116

    def inverse(t):
        return t ** 3 if t > 6 / 29 else 3 * (6 / 29) ** 2 * (t - 4 / 29)

    x, y, z = (w * inverse(t) for w, t in zip(WHITE, (fy + a / 500, fy, fy - b / 200)))
    return (3.2404542 * x - 1.5371385 * y - 0.4985314 * z,
            -0.9692660 * x + 1.8760108 * y + 0.0415560 * z,
            0.0556434 * x - 0.2040259 * y + 1.0572252 * z)


def to_byte(linear):
    v = min(1.0, max(0.0, linear))
    v = 12.92 * v if v <= 0.0031308 else 1.055 * v ** (1 / 2.4) - 0.055
    return round(255 * v)


def lch(lightness, chroma, hue):
    """The colour as sRGB bytes; a colour no screen can show loses chroma, never lightness."""

    def shown(c):
        return all(-1e-4 <= v <= 1 + 1e-4 for v in lch_to_linear(lightness, c, hue))

    if not shown(chroma):
        low, high = 0.0, chroma
        for _ in range(30):
            middle = (low + high) / 2
            if shown(middle):
                low = middle
            else:
                high = middle
        chroma = low
    return tuple(to_byte(v) for v in lch_to_linear(lightness, chroma, hue))


def at(t, stops):
    """Linear between stops (position, value, value, value)."""
    for left, right in zip(stops, stops[1:]):
        if t <= right[0]:
            f = (t - left[0]) / (right[0] - left[0])
            return tuple(a + f * (b - a) for a, b in zip(left[1:], right[1:]))
    return stops[-1][1:]


def positions():
    return [i / (WIDTH - 1) for i in range(WIDTH)]


def rounded(t, stops):
    """As at(), the corners at the stops rounded off; straight stretches and the ends stay."""
    reach = min(0.08, t, 1 - t)
    around = [at(t + reach * k / 8, stops) for k in range(-8, 9)]
    return tuple(sum(values) / len(around) for values in zip(*around))


def perceptual(*stops):
    """Stops (position, lightness, chroma, hue)."""
    return [lch(*rounded(t, stops)) for t in positions()]


def rgb(code):
    return tuple(int(code[i:i + 2], 16) for i in (1, 3, 5))


def blend(*stops):
    """Stops (position, '#rrggbb')."""
    table = [(p,) + rgb(code) for p, code in stops]
    return [tuple(round(v) for v in at(t, table)) for t in positions()]


def classes(*codes):
    """Equal steps of one colour each."""
    return [rgb(codes[i * len(codes) // WIDTH]) for i in range(WIDTH)]


BARS = [
    # 1 blue-green-yellow
    perceptual((0, 18, 42, 292), (0.25, 36.5, 31, 243), (0.5, 55, 34, 190), (0.75, 73.5, 54, 142), (1, 92, 80, 102)),
    # 2 purple-orange-yellow
    perceptual((0, 14, 44, 305), (0.3, 37.4, 62, 345), (0.6, 60.8, 70, 402), (0.8, 76.4, 72, 433), (1, 92, 70, 462)),
    # 3 heat
    perceptual((0, 6, 14, 25), (0.35, 36.8, 66, 34), (0.65, 63.2, 84, 55), (0.85, 80.8, 78, 84), (1, 94, 36, 100)),
    # 4 ordered blue
    perceptual((0, 96, 5, 220), (0.35, 73.6, 24, 242), (0.7, 45.6, 40, 266), (1, 16, 36, 288)),
    # 5 rainbow
    blend((0, '#3b1fa8'), (0.15, '#1f5fe0'), (0.32, '#18b7d8'), (0.5, '#2fb84a'), (0.67, '#f2e22e'),
          (0.84, '#f28a1c'), (1, '#cf1f24')),
    # 6 grey
    perceptual((0, 4, 0, 0), (1, 98, 0, 0)),
    # 7 grey reversed
    perceptual((0, 98, 0, 0), (1, 4, 0, 0)),
    # 8 blue-white-red, each half computed by itself so that both meet in white
    perceptual((0, 30, 54, 285), (0.5, 62, 40, 272), (1, 97, 0, 268))[::2]
    + perceptual((0, 97, 0, 32), (0.5, 62, 54, 34), (1, 30, 64, 37))[1::2],
    # 9 brown-white-black
    blend((0, '#5a2c0a'), (0.25, '#b8763a'), (0.5, '#ffffff'), (0.75, '#7d7d7d'), (1, '#0c0c0c')),
    # 10 gamma-ray lithology: clean sand, silt, shale
    blend((0, '#fff27a'), (0.25, '#f5d65a'), (0.45, '#d9a95c'), (0.62, '#a98a5e'), (0.8, '#7a7a52'), (1, '#47503c')),
    # 11 lithology classes: sandstone, siltstone, shale, limestone, dolomite, coal, anhydrite
    classes('#fbe65c', '#d6a860', '#7f8f78', '#4f9fe0', '#9a7fd0', '#1c1c1c', '#f29ac6'),
    # 12 water saturation: hydrocarbon, mixed, water
    blend((0, '#c81e1e'), (0.2, '#e8683a'), (0.4, '#8fbf3f'), (0.55, '#2fa058'), (0.75, '#4fb6e0'), (1, '#1446b4')),
    # 13 fluids: gas, oil, water
    classes('#dc3b2f', '#2f9e4f', '#2f7fd1'),
    # 14 porosity: tight to porous
    blend((0, '#4a3428'), (0.2, '#9a7350'), (0.4, '#e6d3a0'), (0.6, '#b9e0c8'), (0.8, '#45b0d8'), (1, '#0f4fae')),
    # 15 resistivity: conductive to resistive
    perceptual((0, 26, 50, 282), (0.3, 58, 36, 250), (0.5, 90, 18, 200), (0.56, 92, 22, 110), (0.75, 70, 62, 70),
               (1, 30, 62, 36)),
    # 16 borehole image: dark brown, orange, cream
    perceptual((0, 5, 8, 50), (0.3, 32.6, 40, 52), (0.6, 60.2, 70, 66), (0.85, 83.2, 62, 84), (1, 97, 14, 96)),
]


def png(row):
    def chunk(kind, data):
        body = kind + data
        return struct.pack('>I', len(data)) + body + struct.pack('>I', zlib.crc32(body))

    line = b'\0' + bytes(v for pixel in row for v in pixel)
    return (b'\x89PNG\r\n\x1a\n'
            + chunk(b'IHDR', struct.pack('>IIBBBBB', len(row), HEIGHT, 8, 2, 0, 0, 0))
            + chunk(b'IDAT', zlib.compress(line * HEIGHT, 9))
            + chunk(b'IEND', b''))


def main():
    if len(sys.argv) != 2:
        sys.exit('usage: make_colorbars.py FOLDER')
    os.makedirs(sys.argv[1], exist_ok=True)
    for number, row in enumerate(BARS, 1):
        with open(os.path.join(sys.argv[1], f'cb_{number}.png'), 'wb') as out:
            out.write(png(row))


if __name__ == '__main__':
    main()
