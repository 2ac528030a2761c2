"""The playlist screen: its ground, and the beds of its buttons and its filter line."""

import palette
from drawing import Box, path
from night import geometry
from night.panel import deck_edge, deck_surface, title_shade, well_fill
from night.screens import LIST_GROUND

DECK = Box(0, geometry.PLAYLIST_DECK_TOP, geometry.SCREEN[0], geometry.SCREEN[1] - geometry.PLAYLIST_DECK_TOP)
GROUND = LIST_GROUND + deck_surface(DECK)


def magnifier(d, cx, cy):
    shape = (f'<circle cx="{cx - 1.5}" cy="{cy - 1.5}" r="4.5" fill="none" stroke="%s" stroke-width="2"/>'
             + path(f"M{cx + 2} {cy + 2}l4.5 4.5", 'fill="none" stroke="%s" stroke-width="2.6" stroke-linecap="round"'))
    d.add(shape.replace("%s", palette.ICE_BOTTOM))


def furniture(d):
    title_shade(d)
    deck_edge(d, DECK)
    first, last = (geometry.body_on_panel(name, "Playlist") for name in ("add", "save"))
    row = Box(first.x - 5, first.y - 5, last.x + last.width - first.x + 10, first.height + 10, first.radius + 5)
    d.recess([row], d.down(row, (0, "#05080e"), (1, "#121a27")))
    field = geometry.PLAYLIST_FILTER
    d.recess([field], well_fill(d, field), 0.9)
    magnifier(d, field.x + 17, field.y + field.height / 2)
