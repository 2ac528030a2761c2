"""The pictures that the library carries itself: scroll bar, close button and title of a plain slate look.

They stand beside whatever an application shows, so they bring their own opaque, middle-dark surface with an edge
on both sides, which reads on dark and on light surroundings.
"""

from drawing import Box, Drawing
from material import FOCUS, NORMAL, PRESSED, cap, filled, sign

WIDTH = 20
CAP_HEIGHT = 8
MIDDLE_HEIGHT = 3
THUMB_WIDTH = 8
THUMB_CAP = 5
THUMB_COLOURS = {
    "normal": ("#3d4a60", "#dfe8f6", "#a9b9d2", "#6d7d98", "#2b3547"),
    "focus": ("#7a3000", "#ffc285", "#ff7a1a", "#e05200", "#5e2300"),
}


def surface(d, height):
    """The column that the scroll bar stands on."""
    across = d.linear(0, 0, WIDTH, 0, (0, "#465268"), (0.5, "#364156"), (1, "#2a3446"))
    d.add(Box(0, 0, WIDTH, height).svg(f'fill="{across}"'))
    d.add(Box(0, 0, 1, height).svg('fill="#10151e"'), Box(WIDTH - 1, 0, 1, height).svg('fill="#10151e"'))
    d.add(Box(1, 0, 1, height).svg('fill="#cfe2ff" fill-opacity="0.14"'))


def trough():
    """The whole trough at its shortest: cap, one middle piece, cap."""
    height = 2 * CAP_HEIGHT + MIDDLE_HEIGHT
    d = Drawing(WIDTH, height)
    surface(d, height)
    channel = Box(5, 0, 10, height, 5)
    d.add(channel.moved(0, 1).svg('fill="#cfe2ff" fill-opacity="0.12"'))
    d.add(channel.svg('fill="#04070c"'))
    inner = channel.inset(1)
    d.add(inner.svg(f'fill="{d.linear(inner.x, 0, inner.x + inner.width, 0, (0, "#070b12"), (1, "#161e2b"))}"'))
    return d


def thumb(look):
    """A thumb of two caps and one centre line; its shading runs across, so that the centre can be repeated."""
    height = 2 * THUMB_CAP + 1
    d = Drawing(THUMB_WIDTH, height)
    edge, light, body, shade, far = THUMB_COLOURS[look]
    whole = Box(0, 0, THUMB_WIDTH, height, THUMB_WIDTH / 2)
    d.add(whole.svg(f'fill="{d.linear(0, 0, THUMB_WIDTH, 0, (0, edge), (1, far))}"'))
    face = whole.inset(1)
    d.add(face.svg(f'fill="{d.linear(1, 0, THUMB_WIDTH - 1, 0, (0, light), (0.4, body), (1, shade))}"'))
    return d


STATES = {"normal": NORMAL, "press": PRESSED, "focus": FOCUS}


def step_button(upwards, state):
    d = Drawing(WIDTH, WIDTH)
    surface(d, WIDTH)
    cap(d, Box(3, 3, 14, 14, 4), state)
    cy = 11 if state == PRESSED else 10
    tip = -1 if upwards else 1
    arrow = f"M5.5 {cy - 2 * tip}h9L10 {cy + 3 * tip}z"
    sign(d, filled(arrow), cy - 3, cy + 3, state)
    return d


def title():
    d = Drawing(480, 23)
    whole = Box(0, 0, 480, 23)
    d.add(whole.svg(f'fill="{d.down(whole, (0, "#526077"), (0.48, "#364156"), (0.52, "#2b3548"), (1, "#1d2533"))}"'))
    d.add(Box(0, 0, 480, 1).svg('fill="#cfe2ff" fill-opacity="0.30"'), Box(0, 22, 480, 1).svg('fill="#0a0e15"'))
    return d
