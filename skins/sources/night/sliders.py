"""The seek slider with its markers, and the volume slider."""

import palette
from drawing import Box, Drawing, path, strip
from night import geometry

SEEK_BAR = (28, 30)
MARKER = (10, 12)
VOLUME_SLIDER = (104, 28)
VOLUME_BAR = (14, 28)
VOLUME_STEPS = 20


def seek_back():
    """Two halves: the empty channel, and the channel filled with light."""
    width, height = geometry.SEEK.width, geometry.SEEK.height
    channel = Box(3, 12, width - 6, 10, 5)

    def draw(cell, filled):
        cell.add(channel.svg('fill="#000" fill-opacity="0.85"'))
        inner = channel.inset(1)
        cell.add(inner.svg(f'fill="{cell.down(inner, (0, "#0a0f17"), (1, "#1d2737"))}"'))
        cell.inner_shadow([inner], "#000", 0.9, 0, 1, 1.2)
        cell.add(Box(channel.x + 5, channel.y + channel.height, channel.width - 10, 1)
                 .svg(f'fill="{palette.SHINE}" fill-opacity="0.10"'))
        if filled:
            shining_fill(cell, inner)

    return strip(width, height, 2, draw)


def shining_fill(d, channel):
    d.glow(channel.svg(f'fill="{palette.ACCENT}" fill-opacity="0.55"'), 2.2)
    light = channel.inset(1)
    d.add(channel.svg('fill="#3a1600"'))
    d.add(light.svg(f'fill="{d.down(light, (0, "#ffb266"), (0.3, "#ff8a2a"), (0.55, palette.ACCENT), (1, "#c44400"))}"'))
    d.add(Box(light.x + 3, light.y + 1, light.width - 6, 1).svg('fill="#fff" fill-opacity="0.45"'))


def seek_bar():
    return strip(*SEEK_BAR, 2, lambda cell, held: knob(cell, Box(3, 8, 22, 18, 6), held))


def knob(d, body, held):
    """A slider's bar: a raised cap with a slit of light."""
    d.glow(body.moved(0, 1).svg('fill="#000" fill-opacity="0.7"'), 1.0)
    if held:
        d.glow(body.svg(f'fill="{palette.ACCENT}"'), 1.1)
    d.add(body.svg(f'fill="{palette.ACCENT if held else "#03050a"}"'))
    face = body.inset(1)
    stops = ((0, "#1c2431"), (1, "#394659")) if held else ((0, "#8796b0"), (0.45, "#55637c"), (0.55, "#414e66"),
                                                           (1, "#2a3447"))
    d.add(face.svg(f'fill="{d.down(face, *stops)}"'))
    shine = (0, palette.SHINE, 0.10 if held else 0.75)
    edge = d.down(face, shine, (0.4, palette.SHINE, 0.12), (1, palette.SHINE, 0.18))
    d.add(face.inset(0.5).svg(f'fill="none" stroke="{edge}"'))
    slit = Box(body.x + body.width // 2 - 1, body.y + 4, 2, body.height - 8)
    if held:
        d.glow(slit.svg(f'fill="{palette.ACCENT_LIGHT}"'), 1.5)
    d.add(slit.inset(-1).svg('fill="#0a0f17"'))
    d.add(slit.svg(f'fill="{palette.ACCENT_PALE if held else palette.ACCENT}"'))


def volume_back():
    """Steps that grow to the right, dark in the first half and lit in the second."""
    def draw(cell, lit):
        for index in range(VOLUME_STEPS):
            height = 4 + (index * 14 + 9) // (VOLUME_STEPS - 1)
            volume_step(cell, Box(3 + index * 5, 23 - height, 3, height), lit)

    return strip(*VOLUME_SLIDER, 2, draw)


def volume_step(d, step, lit):
    if not lit:
        d.add(step.moved(0, 1).svg(f'fill="{palette.SHINE}" fill-opacity="0.12"'))
        d.add(step.svg('fill="#03060a"'), Box(step.x, step.y + 1, 3, step.height - 1).svg('fill="#1b2433"'))
        return
    whole = Box(0, 5, 1, 18)
    d.glow(step.svg(f'fill="{palette.ACCENT}" fill-opacity="0.45"'), 1.2)
    d.add(step.svg(f'fill="{d.down(whole, (0, "#ffb366"), (0.5, "#ff7d1a"), (1, "#e85500"))}"'))
    d.add(Box(step.x, step.y, 3, 1).svg('fill="#fff" fill-opacity="0.35"'))


def volume_bar():
    return strip(*VOLUME_BAR, 2, lambda cell, held: knob(cell, Box(2, 3, 10, 22, 4), held))


# Kind 1 is a pennant, kind 2 a diamond, kind 3 a drop; shape and colour both tell them apart.
MARKERS = {
    1: ("M1 1H9V7.5L5 11L1 7.5z", "#ffc46b", "#ff7a00"),
    2: ("M5 0.5L9.2 5.5L5 10.5L0.8 5.5z", "#b9f1ff", "#19a8e0"),
    3: ("M5 11C3.6 8.8 1 7.2 1 4.6A4 4 0 0 1 9 4.6C9 7.2 6.4 8.8 5 11z", "#c6f7a0", "#3fae2a"),
}


def marker(kind):
    outline, top, bottom = MARKERS[kind]
    d = Drawing(*MARKER)
    d.add(path(outline, 'fill="#020407" stroke="#020407" stroke-width="1.6" stroke-linejoin="round"'))
    d.add(path(outline, f'fill="{d.linear(0, 1, 0, 11, (0, top), (1, bottom))}"'))
    return d
