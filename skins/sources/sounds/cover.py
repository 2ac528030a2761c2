"""The cover of night_walk: a quay at night, lamps along the water, one window alight."""

import random

import palette
from drawing import Box, Drawing, path

SIDE = 208
HORIZON = 118
MOON = (150, 46, 15)
# Foot of each lamp post and its height; those farther away stand higher and closer together.
LAMPS = [(34, 196, 96), (76, 166, 58), (100, 148, 36), (115, 138, 24), (125, 131, 17)]
# Left edge, width and height of the houses on the far bank.
HOUSES = [(0, 22, 22), (22, 16, 32), (38, 24, 19), (62, 14, 38), (76, 20, 26), (96, 12, 17), (108, 22, 30),
          (130, 18, 21), (148, 14, 27), (162, 26, 18), (188, 20, 24)]
WINDOW = Box(113, HORIZON - 22, 4, 5)


def drawing():
    d = Drawing(SIDE, SIDE)
    sky(d)
    houses(d)
    water(d)
    quay(d)
    for lamp in reversed(LAMPS):
        lamp_post(d, *lamp)
    return d


def sky(d):
    whole = Box(0, 0, SIDE, HORIZON)
    d.add(whole.svg(f'fill="{d.down(whole, (0, "#070d1c"), (0.55, "#15294d"), (1, "#3c5f8f"))}"'))
    stars = random.Random(5)
    for _ in range(46):
        x, y, light = stars.uniform(3, SIDE - 3), stars.uniform(3, HORIZON - 44), stars.uniform(0.25, 0.95)
        d.add(f'<circle cx="{x:.1f}" cy="{y:.1f}" r="{0.4 + 0.5 * light:.2f}" fill="#e8f1ff" fill-opacity="{light:.2f}"/>')
    cx, cy, radius = MOON
    halo = d.radial(cx, cy, 62, (0, "#cfe0ff", 0.50), (0.3, "#9fc0f5", 0.20), (1, "#9fc0f5", 0))
    d.add(whole.svg(f'fill="{halo}"'))
    face = d.radial(cx - 4, cy - 5, 2 * radius, (0, "#ffffff"), (0.6, "#e3ecfb"), (1, "#a9bddd"))
    d.add(f'<circle cx="{cx}" cy="{cy}" r="{radius}" fill="{face}"/>')


def houses(d):
    for x, width, height in HOUSES:
        top = HORIZON - height
        d.add(path(f"M{x} {HORIZON}V{top + 5}L{x + width / 2} {top}L{x + width} {top + 5}V{HORIZON}z",
                   'fill="#0b1526"'))
    d.glow(WINDOW.inset(-2).svg(f'fill="{palette.ACCENT}"'), 2.2)
    d.add(WINDOW.svg(f'fill="{palette.ACCENT_PALE}"'))


def water(d):
    surface = Box(0, HORIZON, SIDE, SIDE - HORIZON)
    d.add(surface.svg(f'fill="{d.down(surface, (0, "#1d3a66"), (0.3, "#12264a"), (1, "#060c1a"))}"'))
    ripples = random.Random(11)
    for row in range(20):
        y = HORIZON + 3 + row * row * 0.16 + row * 1.6
        spread = 3 + row * 0.9
        streak(d, MOON[0] + ripples.uniform(-3, 3), y, spread * ripples.uniform(0.6, 1.3), "#dbe8ff", 0.75 - row * 0.026)
        if row < 13:
            x = WINDOW.x + 2 + ripples.uniform(-1.5, 1.5)
            streak(d, x, y, spread * 0.45, palette.ACCENT_LIGHT, 0.65 - row * 0.045)


def streak(d, x, y, half, colour, light):
    d.add(f'<ellipse cx="{x:.1f}" cy="{y:.1f}" rx="{half:.1f}" ry="0.8" fill="{colour}" fill-opacity="{light:.2f}"/>')


def quay(d):
    edge = f"M0 {HORIZON + 2}L136 {HORIZON + 6}L96 {SIDE}H0z"
    d.add(path(edge, f'fill="{d.linear(0, HORIZON, 0, SIDE, (0, "#1a2740"), (1, "#0a111e"))}"'))
    d.add(path(f"M136 {HORIZON + 6}L96 {SIDE}h7L137.5 {HORIZON + 6}z", 'fill="#050a14"'))
    d.add(path(f"M136 {HORIZON + 6}L96 {SIDE}", 'fill="none" stroke="#8fb2e6" stroke-opacity="0.35"'))


def lamp_post(d, x, foot, height):
    top, size = foot - height, height / 96
    pool = d.radial(0, 0, 1, (0, palette.ACCENT, 0.55), (1, palette.ACCENT, 0))
    d.add(f'<g transform="translate({x} {foot}) scale({34 * size:.2f} {10 * size:.2f})">'
          f'<circle r="1" fill="{pool}"/></g>')
    d.add(Box(x - 1.6 * size, top, 3.2 * size, height).svg('fill="#04070d"'))
    glow = d.radial(x, top, 34 * size, (0, palette.ACCENT_LIGHT, 0.85), (0.35, palette.ACCENT, 0.35),
                    (1, palette.ACCENT, 0))
    d.add(f'<circle cx="{x}" cy="{top}" r="{34 * size:.2f}" fill="{glow}"/>')
    d.add(f'<circle cx="{x}" cy="{top}" r="{5.5 * size:.2f}" fill="{palette.ACCENT_PALE}"/>')
