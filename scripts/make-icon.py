#!/usr/bin/python3
"""Draws the program's icon (kelp fronds brushed over a sea-blue tile, an amber
dab of paint) at every hicolor size into dist/icons/. Run with Debian's python3
(it needs python3-pil); the results are committed, so a build never runs it."""
import math
import os
import sys

from PIL import Image, ImageDraw

BIG = 1024  # drawn large, then reduced: the reduction is the anti-aliasing
SIZES = (16, 24, 32, 48, 64, 128, 256, 512)


def tile(draw):
    top, bottom = (38, 112, 140), (12, 44, 62)
    mask = Image.new("L", (BIG, BIG), 0)
    ImageDraw.Draw(mask).rounded_rectangle((40, 40, BIG - 40, BIG - 40), radius=190, fill=255)
    sea = Image.new("RGBA", (BIG, BIG))
    for y in range(BIG):
        t = y / (BIG - 1)
        c = tuple(round(a + (b - a) * t) for a, b in zip(top, bottom))
        ImageDraw.Draw(sea).line((0, y, BIG, y), fill=c + (255,))
    return sea, mask


def frond(draw, base_x, height, sway, width, colour, phase):
    """A ribbon that rises from the bottom, swaying on a sine, tapering to a tip."""
    left, right = [], []
    steps = 80
    for i in range(steps + 1):
        t = i / steps
        y = BIG - 70 - t * height
        x = base_x + sway * math.sin(phase + t * 2.6 * math.pi) * t
        w = width * (1.0 - t) ** 0.7 + 4
        dx = sway * 2.6 * math.pi * math.cos(phase + t * 2.6 * math.pi) * t / height
        n = math.hypot(1.0, dx)
        left.append((x - w / n, y - w * dx / n))
        right.append((x + w / n, y + w * dx / n))
    draw.polygon(left + right[::-1], fill=colour)


def icon():
    sea, mask = tile(None)
    art = Image.new("RGBA", (BIG, BIG), (0, 0, 0, 0))
    d = ImageDraw.Draw(art)
    d.ellipse((620, 150, 840, 370), fill=(242, 180, 65, 255))
    frond(d, 330, 700, 70, 62, (63, 154, 74, 255), 0.3)
    frond(d, 520, 800, 90, 72, (107, 191, 89, 255), 1.9)
    frond(d, 700, 560, 60, 52, (165, 212, 106, 255), 3.4)
    sea.alpha_composite(art)
    out = Image.new("RGBA", (BIG, BIG), (0, 0, 0, 0))
    out.paste(sea, (0, 0), mask)
    return out


def main():
    folder = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "dist", "icons")
    os.makedirs(folder, exist_ok=True)
    big = icon()
    for s in SIZES:
        big.resize((s, s), Image.LANCZOS).save(os.path.join(folder, f"{s}.png"), optimize=True)
    return 0


if __name__ == "__main__":
    sys.exit(main())
