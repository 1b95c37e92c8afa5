#!/usr/bin/python3
"""Draws the stroke texture of the paint fills: a 377 x 358 grey picture of
overlapping brush strokes, bristle streaks along each stroke, written as a
binary greyscale file (data/StrokeTexture.pgm). Run with Debian's python3 (it
needs python3-pil); the result is committed, so a build never runs it. The
picture is drawn on a larger tile that wraps, so that it repeats without seams."""
import math
import os
import random

from PIL import Image, ImageChops, ImageDraw, ImageFilter

W, H = 377, 358
DATA = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "data")


def stroke(rng, size):
    """One brush stroke on its own layer: a band of bristle lines along a gentle curve."""
    layer = Image.new("L", size, 0)
    draw = ImageDraw.Draw(layer)
    x0, y0 = rng.uniform(0, size[0]), rng.uniform(0, size[1])
    angle = rng.uniform(-0.5, 0.5) + (math.pi / 2 if rng.random() < 0.25 else 0)
    length, width = rng.uniform(160, 360), rng.uniform(30, 70)
    bend = rng.uniform(-0.002, 0.002)
    for _ in range(int(width * 3)):
        offset = rng.uniform(-width / 2, width / 2)
        shade = int(rng.uniform(120, 255) * (1 - abs(offset) / width))
        points = []
        for i in range(0, int(length), 4):
            a = angle + bend * i
            x = x0 + math.cos(a) * i - math.sin(a) * offset
            y = y0 + math.sin(a) * i + math.cos(a) * offset
            points.append((x, y))
        draw.line(points, fill=shade, width=1)
    return layer


def main():
    rng = random.Random(376357)
    big = (W * 2, H * 2)
    canvas = Image.new("L", big, 70)
    for _ in range(40):
        canvas = ImageChops.lighter(canvas, stroke(rng, big))
    # Fold the larger tile onto one picture so that opposite edges meet.
    tile = Image.new("L", (W, H))
    quarters = [canvas.crop((x, y, x + W, y + H)) for x in (0, W) for y in (0, H)]
    tile = quarters[0]
    for q in quarters[1:]:
        tile = ImageChops.lighter(tile, q)
    tile = tile.filter(ImageFilter.GaussianBlur(0.6))
    os.makedirs(DATA, exist_ok=True)
    with open(os.path.join(DATA, "StrokeTexture.pgm"), "wb") as f:
        f.write(b"P5\n%d %d\n255\n" % (W, H))
        f.write(tile.tobytes())


if __name__ == "__main__":
    main()
