"""Large dark gradients without visible bands.

Eight bits a channel are too few for a slow dark gradient: one sees steps, and steps of different channels at
different places tint it. A ground is therefore also computed here, in floating point, and dithered by an ordered
pattern of at most half a step. The same layers still make an SVG drawing.
"""

import math

from picture import Picture

PATTERN_SIDE = 8


class Layer:
    """A box filled with a linear (x1, y1, x2, y2) or radial (cx, cy, radius) gradient."""

    def __init__(self, box, line, *stops):
        self.box, self.line, self.stops = box, line, stops
        self.ramp = [(s[0], channels(s[1]), s[2] if len(s) > 2 else 1.0) for s in stops]

    def draw(self, d):
        paint = d.linear(*self.line, *self.stops) if len(self.line) == 4 else d.radial(*self.line, *self.stops)
        d.add(self.box.svg(f'fill="{paint}"'))

    def covers(self, x, y):
        box = self.box
        return box.x <= x < box.x + box.width and box.y <= y < box.y + box.height

    def offset(self, x, y):
        if len(self.line) == 3:
            cx, cy, radius = self.line
            return math.hypot(x - cx, y - cy) / radius
        x1, y1, x2, y2 = self.line
        dx, dy = x2 - x1, y2 - y1
        return ((x - x1) * dx + (y - y1) * dy) / (dx * dx + dy * dy)

    def colour(self, x, y):
        """(red, green, blue, opacity) at a point, 0 to 255 and 0 to 1."""
        at = self.offset(x, y)
        if at <= self.ramp[0][0]:
            return (*self.ramp[0][1], self.ramp[0][2])
        for (low, from_rgb, from_alpha), (high, to_rgb, to_alpha) in zip(self.ramp, self.ramp[1:]):
            if at <= high:
                part = (at - low) / (high - low)
                mixed = (a + (b - a) * part for a, b in zip(from_rgb, to_rgb))
                return (*mixed, from_alpha + (to_alpha - from_alpha) * part)
        return (*self.ramp[-1][1], self.ramp[-1][2])


def channels(colour):
    digits = colour[1:] if len(colour) == 7 else "".join(c * 2 for c in colour[1:])
    return tuple(bytes.fromhex(digits))


def threshold(x, y):
    """The ordered dither pattern: every multiple of 1/64 from 0 once in 8 x 8 pixels, spread as evenly as can be."""
    value, bits = 0, PATTERN_SIDE.bit_length() - 1
    for bit in range(bits):
        xor, row = (x ^ y) >> bit & 1, y >> bit & 1
        value |= xor << (2 * (bits - bit) - 1) | row << (2 * (bits - bit) - 2)
    return value / PATTERN_SIDE ** 2


def paint(width, height, layers):
    picture = Picture(width, height)
    pattern = [[threshold(x, y) for x in range(PATTERN_SIDE)] for y in range(PATTERN_SIDE)]
    for y in range(height):
        for x in range(width):
            rgb = (0.0, 0.0, 0.0)
            for layer in layers:
                if layer.covers(x, y):
                    *over, alpha = layer.colour(x + 0.5, y + 0.5)
                    rgb = tuple(below + (above - below) * alpha for below, above in zip(rgb, over))
            step = pattern[y % PATTERN_SIDE][x % PATTERN_SIDE]
            picture.set_pixel(x, y, (min(255, int(value + step)) for value in rgb))
    return picture
