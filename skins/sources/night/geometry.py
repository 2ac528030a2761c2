"""Where things are on the screens of the skin. Positions come from the skin's config, sizes from the drawings."""

import configparser
import pathlib

from drawing import Box

ROOT = pathlib.Path(__file__).resolve().parents[2]
SCREEN = (480, 272)
TITLE_HEIGHT = 23
DECK_TOP = 181

CONFIG = configparser.ConfigParser(interpolation=None)
CONFIG.read(ROOT / "pics" / "night" / "config", encoding="utf-8")


def place(key):
    """The point (KEY_x, KEY_y) of the player screen."""
    screen = CONFIG["Screen"]
    return screen.getint(f"{key}_x"), screen.getint(f"{key}_y")


def buttons(section):
    """(name, x, y, mask colour as RGB) of the section's buttons, in the order of the config."""
    found = []
    for index in range(CONFIG[section].getint("count")):
        group = CONFIG[f"{section}_BUTTON{index}"]
        colour = bytes.fromhex(group["mask"])[1:]
        found.append((group["name"], group.getint("xpos"), group.getint("ypos"), colour))
    return found


# Button pictures are larger than the visible button, so that the focus glow has room to fade out.
PICTURE_SIZE = {"prev": (54, 54), "play": (80, 80), "pause": (80, 80), "stop": (54, 54), "next": (54, 54),
                "open": (82, 50), "details": (36, 38), "playlist": (36, 38),
                "close": (32, 22), "add": (60, 44), "cancel": (60, 44), "remove": (60, 44), "save": (60, 44),
                "clear": (30, 30), "mute_off": (36, 38), "mute_on": (36, 38)}
BODY = {"prev": Box(5, 5, 44, 44, 22), "stop": Box(5, 5, 44, 44, 22), "next": Box(5, 5, 44, 44, 22),
        "play": Box(6, 6, 68, 68, 34), "pause": Box(6, 6, 68, 68, 34), "open": Box(5, 5, 72, 40, 20),
        "details": Box(4, 4, 28, 28, 8), "playlist": Box(4, 4, 28, 28, 8), "close": Box(2, 2, 28, 17, 5),
        "add": Box(5, 5, 50, 32, 10), "cancel": Box(5, 5, 50, 32, 10), "remove": Box(5, 5, 50, 32, 10),
        "save": Box(5, 5, 50, 32, 10), "clear": Box(4, 4, 22, 22, 7),
        "mute_off": Box(4, 4, 28, 28, 8), "mute_on": Box(4, 4, 28, 28, 8)}


def body_on_panel(name, section="Player"):
    for other, x, y, _ in buttons(section):
        if other == name:
            return BODY[name].moved(x, y)
    raise KeyError(name)


COVER = Box(*place("cover"), CONFIG["Screen"].getint("cover_width"), CONFIG["Screen"].getint("cover_height"))
TIME_WELL = Box(132, 96, 172, 44, 7)
VOLUME_BED = Box(*place("volume"), 156, 44, 7)
SEEK = Box(*place("seek"), 456, 30)
TOGGLE_SIZE = (32, 26)
TOGGLES = {name: Box(*place(name), *TOGGLE_SIZE, 6) for name in ("shuffle", "repeat")}
PLAYLIST_DECK_TOP = 221
PLAYLIST_FILTER = Box(194, 230, 276, 34, 8)
