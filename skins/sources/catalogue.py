"""Every picture that ships: its file below skins/, how it is drawn and whether it keeps an alpha channel."""

import functools

import picture
from night import buttons, geometry, panel


class Entry:
    def __init__(self, drawing=None, alpha=False, pixels=None):
        """`drawing` gives a Drawing to rasterise; `pixels` gives the finished Picture where that is not enough."""
        self.drawing = drawing
        self.alpha = alpha
        self.pixels = pixels

    def picture(self):
        return self.pixels() if self.pixels else picture.rasterise(self.drawing().svg())


def entries():
    found = {}
    found.update(player_panel())
    return found


@functools.lru_cache(maxsize=None)
def player_background():
    return picture.rasterise(panel.background().svg())


def player_panel():
    found = {
        "pics/night/player_bg.png": Entry(panel.background, pixels=player_background),
        "pics/night/player_mask.png": Entry(
            pixels=lambda: panel.mask("Player", geometry.SCREEN, geometry.BODY, 2)),
    }
    for name in geometry.BODY:
        found[f"pics/night/{name}.png"] = Entry(functools.partial(buttons.button_strip, name), alpha=True)
    return found
