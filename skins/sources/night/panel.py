"""The player panel: its background with the beds of everything that lies on it, and its button mask."""

import palette
from drawing import Box
from ground import Layer
from picture import Picture
from night import geometry


def title_strip(d):
    """The strip across the top, also used alone as the background of the title bar."""
    width, height = geometry.SCREEN[0], geometry.TITLE_HEIGHT
    box = Box(0, 0, width, height)
    d.add(box.svg(f'fill="{d.down(box, (0, "#3a475d"), (0.48, "#232d3f"), (0.52, "#192231"), (1, "#0f1622"))}"'))
    d.add(Box(0, 0, width, 1).svg(f'fill="{palette.SHINE}" fill-opacity="0.22"'))
    d.add(Box(0, height - 2, width, 1).svg('fill="#04060a"'))
    fade = d.linear(0, 0, width, 0, (0, palette.ACCENT, 0.95), (0.35, palette.ACCENT, 0.55), (0.85, palette.ACCENT, 0))
    d.add(Box(0, height - 1, width, 1).svg('fill="#0a0f18"'), Box(0, height - 1, width, 1).svg(f'fill="{fade}"'))


WHOLE = Box(0, 0, *geometry.SCREEN)
DECK = Box(0, geometry.DECK_TOP, geometry.SCREEN[0], geometry.SCREEN[1] - geometry.DECK_TOP)

# The open surface of every screen, with a cold light from the upper left.
SURFACE = [
    Layer(WHOLE, (0, 0, 0, 272), (0, "#1c2738"), (0.35, "#131b29"), (0.7, "#0b111b"), (1, "#06090f")),
    Layer(WHOLE, (66, 60, 300), (0, "#4f86c6", 0.30), (0.45, "#2f5f9e", 0.12), (1, "#2f5f9e", 0)),
]


def deck_surface(deck):
    return [
        Layer(deck, (0, deck.y, 0, 272), (0, "#263145"), (0.12, "#1b2433"), (0.6, "#111824"), (1, "#0a0e16")),
        Layer(deck, (212, deck.y, 210), (0, "#5d8fce", 0.16), (1, "#5d8fce", 0)),
    ]


GROUND = SURFACE + deck_surface(DECK)


def deck_edge(d, deck=DECK):
    """The edge of the raised console that carries the buttons."""
    width, top = deck.width, deck.y
    shade = Box(0, top - 8, width, 8)
    d.add(shade.svg(f'fill="{d.down(shade, (0, "#000", 0), (1, "#000", 0.45))}"'))
    light = d.linear(0, 0, width, 0, (0, palette.SHINE, 0.10), (0.44, palette.SHINE, 0.42), (1, palette.SHINE, 0.10))
    d.add(Box(0, top - 1, width, 1).svg('fill="#020408"'), Box(0, top, width, 1).svg(f'fill="{light}"'))


def well_fill(d, box):
    return d.down(box, (0, "#05080d"), (0.5, "#080d15"), (1, "#101824"))


def glass(d, box):
    """A faint reflection over the upper half of a display well."""
    upper = Box(box.x + 2, box.y + 2, box.width - 4, box.height // 2 - 2, box.radius - 2)
    d.add(upper.svg(f'fill="{d.down(upper, (0, palette.SHINE, 0.10), (1, palette.SHINE, 0.03))}"'))


def cover_place(d):
    slot = geometry.COVER
    frame = Box(slot.x - 3, slot.y - 3, slot.width + 6, slot.height + 6, 4)
    d.glow(frame.moved(0, 3).svg('fill="#000" fill-opacity="0.6"'), 3)
    d.add(frame.svg(f'fill="{d.down(frame, (0, "#5a6a84"), (0.5, "#2b3649"), (1, "#1a2231"))}"'))
    d.add(frame.inset(1).svg(f'fill="{d.down(frame, (0, "#2a3548"), (1, "#0f1520"))}"'))
    d.add(frame.inset(2).svg('fill="#020408"'))
    d.add(slot.svg(f'fill="{well_fill(d, slot)}"'))


def info_place(d):
    """Only a fine line below the texts; they stand on the open surface."""
    y = geometry.VOLUME_BED.y - 5
    fade = d.linear(132, 0, 468, 0, (0, palette.SHINE, 0.16), (1, palette.SHINE, 0.02))
    d.add(Box(132, y - 1, 336, 1).svg('fill="#000" fill-opacity="0.35"'), Box(132, y, 336, 1).svg(f'fill="{fade}"'))


def displays(d):
    d.recess([geometry.TIME_WELL], well_fill(d, geometry.TIME_WELL))
    glass(d, geometry.TIME_WELL)
    bed = geometry.VOLUME_BED
    d.recess([bed], d.down(bed, (0, "#0a0f18"), (1, "#151d2b")), 0.8)
    split = bed.x + 41
    d.add(Box(split, bed.y + 7, 1, bed.height - 14).svg('fill="#000" fill-opacity="0.55"'),
          Box(split + 1, bed.y + 7, 1, bed.height - 14).svg(f'fill="{palette.SHINE}" fill-opacity="0.10"'))


def seek_bed(d):
    seek = geometry.SEEK
    bed = Box(seek.x, seek.y + 9, seek.width, 16, 8)
    d.recess([bed], d.down(bed, (0, "#070b12"), (1, "#131b28")), 0.9)


def trays(d):
    first, last = geometry.body_on_panel("prev"), geometry.body_on_panel("next")
    row = Box(first.x - 6, first.y - 6, last.x + last.width - first.x + 12, first.height + 12, first.radius + 6)
    ring = geometry.body_on_panel("play").inset(-5)
    bed = d.linear(0, row.y, 0, row.y + row.height, (0, "#05080e"), (1, "#121a27"))
    d.recess([row, ring], bed)
    opener = geometry.body_on_panel("open").inset(-4)
    d.recess([opener], d.down(opener, (0, "#05080e"), (1, "#121a27")))
    for name in ("playlist", "details"):
        place = geometry.body_on_panel(name).inset(-3)
        d.recess([place], d.down(place, (0, "#05080e"), (1, "#121a27")), 0.9)
    left, right = geometry.TOGGLES["shuffle"], geometry.TOGGLES["repeat"]
    pair = Box(left.x - 5, left.y - 5, right.x + right.width - left.x + 10, left.height + 10, 10)
    d.recess([pair], d.down(pair, (0, "#05080e"), (1, "#121a27")))


def title_shade(d):
    """The title strip with the shadow that it throws."""
    title_strip(d)
    shade = Box(0, geometry.TITLE_HEIGHT, geometry.SCREEN[0], 6)
    d.add(shade.svg(f'fill="{d.down(shade, (0, "#000", 0.45), (1, "#000", 0))}"'))


def furniture(d):
    """Everything that lies on the ground."""
    title_shade(d)
    cover_place(d)
    info_place(d)
    displays(d)
    seek_bed(d)
    deck_edge(d)
    trays(d)


def mask(section, size, bodies, margin):
    """A picture of flat colours: each button's body, widened by `margin` for the stylus, in its mask colour."""
    picture = Picture(*size)
    areas = [(bodies[name].moved(x, y).inset(-margin), colour)
             for name, x, y, colour in geometry.buttons(section)]
    for y in range(size[1]):
        for x in range(size[0]):
            hit = [colour for area, colour in areas if area.contains(x + 0.5, y + 0.5)]
            picture.set_pixel(x, y, hit[0] if hit else (0, 0, 0))
    return picture
