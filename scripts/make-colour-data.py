#!/usr/bin/env python3
"""Writes the default palette (data/def_Well.wl) and the eight default gradients
(data/Def_Gradient.grd) that the program reads at start-up."""
import colorsys
import os

DATA = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "data")


def pack(r, g, b):
    return int(r) | int(g) << 8 | int(b) << 16


def hsv(h, s, v):
    r, g, b = colorsys.hsv_to_rgb(h / 360.0, s, v)
    return pack(round(r * 255), round(g * 255), round(b * 255))


def wells():
    rows = []
    rows.append([pack(v, v, v) for v in (0, 36, 73, 109, 146, 182, 219, 255)])
    hues = (0, 28, 52, 100, 165, 205, 250, 300)
    rows.append([hsv(h, 0.35, 1.0) for h in hues])   # tints
    rows.append([hsv(h, 0.75, 1.0) for h in hues])   # bright
    rows.append([hsv(h, 1.0, 0.85) for h in hues])   # full
    rows.append([hsv(h, 0.9, 0.5) for h in hues])    # shades
    rows.append([hsv(h, 0.6, 0.25) for h in hues])   # deep
    # earth colours: ochres, siennas, umbers, olive, slate
    rows.append([pack(*c) for c in ((204, 153, 68), (222, 184, 135), (160, 82, 45), (138, 54, 15),
                                    (115, 74, 18), (85, 60, 42), (107, 112, 45), (47, 79, 79))])
    # skin, sky and foliage
    rows.append([pack(*c) for c in ((255, 224, 196), (234, 192, 160), (198, 134, 98), (120, 72, 48),
                                    (135, 206, 235), (70, 130, 180), (85, 140, 60), (34, 85, 34))])
    lines = []
    for row in rows:
        for c in row:
            lines.append(" %d \r\n" % c)
    assert len(lines) == 64
    with open(os.path.join(DATA, "def_Well.wl"), "w", newline="") as f:
        f.write("".join(lines))


def ramp(stops):
    """stops: list of (position 0..255, (r, g, b), alpha). Linear between stops."""
    out = []
    for s in range(256):
        for (p0, c0, a0), (p1, c1, a1) in zip(stops, stops[1:]):
            if p0 <= s <= p1:
                f = (s - p0) / max(p1 - p0, 1)
                out.append(tuple(round(c0[i] + (c1[i] - c0[i]) * f) for i in range(3)) + (round(a0 + (a1 - a0) * f),))
                break
    return out


def gradients():
    rainbow = [(i * 255 // 6, tuple(round(x * 255) for x in colorsys.hsv_to_rgb(i / 6.0, 1, 1)), 255) for i in range(7)]
    grads = [
        ramp([(0, (0, 0, 0), 255), (255, (255, 255, 255), 255)]),
        ramp(rainbow),
        ramp([(0, (0, 0, 0), 255), (90, (170, 20, 0), 255), (170, (255, 160, 0), 255), (255, (255, 255, 220), 255)]),
        ramp([(0, (10, 20, 80), 255), (150, (70, 140, 220), 255), (255, (235, 245, 255), 255)]),
        ramp([(0, (60, 20, 90), 255), (110, (200, 60, 80), 255), (190, (250, 150, 50), 255), (255, (255, 230, 120), 255)]),
        ramp([(0, (0, 30, 20), 255), (120, (0, 120, 100), 255), (255, (150, 240, 210), 255)]),
        ramp([(0, (40, 20, 10), 255), (100, (150, 80, 40), 255), (180, (220, 150, 100), 255), (255, (255, 235, 210), 255)]),
        ramp([(0, (255, 255, 255), 255), (255, (255, 255, 255), 0)]),
    ]
    data = bytearray()
    for g in grads:
        for ch in range(4):
            data.extend(g[s][ch] for s in range(256))
    assert len(data) == 8192
    with open(os.path.join(DATA, "Def_Gradient.grd"), "wb") as f:
        f.write(bytes(data))


if __name__ == "__main__":
    wells()
    gradients()
