"""Pictures outside the skin's config: title bar, toggle buttons, list screen, stand-in cover, playing mark."""

import palette
from drawing import Box, Drawing, path
from ground import Layer
from material import DISABLED, FOCUS, PRESSED, cap, filled, sign
from night import geometry
from night.panel import SURFACE, WHOLE, title_strip

# Where the title bar puts its close button.
CLOSE = Box(450, 1, 20, 21)
COVER_SIDE = 104


def title_background():
    d = Drawing(geometry.SCREEN[0], geometry.TITLE_HEIGHT)
    title_strip(d)
    return d


def close_button(state):
    d = Drawing(CLOSE.width, CLOSE.height)
    cap(d, Box(2, 2, 16, 16, 4), state)
    cy = 11 if state == PRESSED else 10
    sign(d, filled(cross(10, cy)), cy - 4.5, cy + 4.5, state)
    return d


def cross(cx, cy):
    """Two bars of the same width that meet at a right angle, within 9 x 9 pixels."""
    outer, inner = 4.5, 1.5
    corner = outer - inner
    return (f"M{cx - outer} {cy - corner}L{cx - corner} {cy - outer}L{cx} {cy - inner}L{cx + corner} {cy - outer}"
            f"L{cx + outer} {cy - corner}L{cx + inner} {cy}L{cx + outer} {cy + corner}L{cx + corner} {cy + outer}"
            f"L{cx} {cy + inner}L{cx - corner} {cy + outer}L{cx - outer} {cy + corner}L{cx - inner} {cy}z")


def stroked(lines, heads):
    """A sign of lines two pixels wide with filled arrow heads."""
    return lambda paint: (path(lines, f'fill="none" stroke="{paint}" stroke-width="2"')
                          + path(heads, f'fill="{paint}"'))


def shuffle(cx, cy):
    lines = f"M{cx - 8} {cy - 3}h2.5l7 6h3.5M{cx - 8} {cy + 3}h2.5l7 -6h3.5"
    heads = f"M{cx + 4} {cy - 6}l5 3l-5 3zM{cx + 4} {cy}l5 3l-5 3z"
    return stroked(lines, heads)


def repeat(cx, cy):
    lines = f"M{cx - 8} {cy + 1}v-1a3 3 0 0 1 3 -3h7M{cx + 8} {cy - 1}v1a3 3 0 0 1 -3 3h-7"
    heads = f"M{cx + 1} {cy - 6}l5 3l-5 3zM{cx - 1} {cy}l-5 3l5 3z"
    return stroked(lines, heads)


SIGNS = {"shuffle": shuffle, "repeat": repeat}


def toggle_button(name, state, on):
    """A button with a small lamp below its sign: dark when off, shining when on."""
    d = Drawing(*geometry.TOGGLE_SIZE)
    body = Box(2, 2, 28, 22, 5)
    cap(d, body, state)
    down = 1 if state == PRESSED else 0
    sign(d, SIGNS[name](16, 11 + down), 5 + down, 17 + down, state, on)
    lamp = Box(12, 19 + down, 8, 2)
    if not on:
        d.add(lamp.svg('fill="#05080d" fill-opacity="0.75"'))
    elif state == DISABLED:
        d.add(lamp.svg('fill="#7a4a24"'))
    else:
        d.glow(lamp.svg(f'fill="{palette.ACCENT}"'), 1.4)
        d.add(lamp.svg(f'fill="{palette.ACCENT_PALE if state == FOCUS else palette.ACCENT_LIGHT}"'))
    return d


# Darker than the player's surface, so that long texts read well.
LIST_GROUND = SURFACE + [Layer(WHOLE, (0, 0, 0, 272), (0, "#04070c", 0.30), (1, "#04070c", 0.30))]


def cover():
    """A record on a dark ground, for music that brings no picture."""
    side = COVER_SIDE
    d = Drawing(side, side)
    whole = Box(0, 0, side, side)
    d.add(whole.svg(f'fill="{d.down(whole, (0, "#33435f"), (0.5, "#1b2638"), (1, "#0a0f18"))}"'))
    d.add(whole.svg(f'fill="{d.radial(30, 20, 80, (0, "#7fb0ec", 0.35), (1, "#7fb0ec", 0))}"'))
    centre = side // 2
    disc = Box(centre - 43, centre - 43, 86, 86, 43)
    d.glow(disc.moved(0, 3).svg('fill="#000" fill-opacity="0.7"'), 3)
    d.add(disc.svg(f'fill="{d.down(disc, (0, "#2b3342"), (1, "#05070b"))}"'), disc.inset(1).svg('fill="#0b0e14"'))
    for inset in range(4, 25, 3):
        d.add(disc.inset(inset + 0.5).svg('fill="none" stroke="#9db4d6" stroke-opacity="0.13"'))
    reflections(d, disc.inset(1), centre)
    label(d, centre)
    return d


def reflections(d, disc, centre):
    """Light on the grooves: two narrow fans that face each other."""
    fans = "".join(f"M{centre} {centre}L{centre + sx * 16} {centre + sx * -50}L{centre + sx * 44} {centre + sx * -34}z"
                   for sx in (1, -1))
    bright = d.radial(centre, centre, 43, (0.3, "#dbe9ff", 0.10), (0.75, "#dbe9ff", 0.42), (1, "#dbe9ff", 0.16))
    light = path(fans, f'fill="{bright}"')
    d.add(f'<g clip-path="{d.clip(disc)}"><g filter="{d.blur(3)}">{light}</g></g>')


def label(d, centre):
    circle = Box(centre - 16, centre - 16, 32, 32, 16)
    d.add(circle.svg('fill="#020305"'))
    face = circle.inset(1)
    d.add(face.svg(f'fill="{d.down(face, (0, "#ffa24d"), (0.5, palette.ACCENT), (1, "#b33c00"))}"'))
    d.add(face.inset(0.5).svg('fill="none" stroke="#ffe0bd" stroke-opacity="0.45"'))
    d.add(face.inset(4.5).svg('fill="none" stroke="#7a2b00" stroke-opacity="0.55"'))
    d.add(Box(centre - 3, centre - 3, 6, 6, 3).svg('fill="#05070b"'))
    d.add(Box(centre - 2, centre - 2, 4, 4, 2).svg('fill="#33435f"'))


def playing_mark():
    """Three bars of different height. The dark rim keeps them visible on the orange highlight too."""
    d = Drawing(12, 12)
    bars = [Box(1, 5, 2, 6), Box(5, 1, 2, 10), Box(9, 3, 2, 8)]
    d.add(*(bar.inset(-1).svg('fill="#0a0500" fill-opacity="0.75"') for bar in bars))
    fill = d.linear(0, 1, 0, 11, (0, "#fff3e3"), (1, "#ffc285"))
    d.add(*(bar.svg(f'fill="{fill}"') for bar in bars))
    return d
