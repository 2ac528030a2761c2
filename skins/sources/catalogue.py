"""Every picture that ships: its file below skins/, how it is drawn and whether it keeps an alpha channel."""

import functools

import ground
import picture
from builtin import pictures as builtin
from drawing import Drawing
from night import buttons, figures, geometry, panel, playlist, screens, sliders


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
    found.update(sliders_and_time())
    found.update(application())
    found.update(library())
    return found


@functools.lru_cache(maxsize=None)
def player_background():
    return lying_on(panel.GROUND, panel.furniture).picture()


def lying_on(layers, furniture):
    """A full screen: a dithered ground and what is drawn upon it."""
    def drawing(with_ground=True):
        d = Drawing(*geometry.SCREEN)
        for layer in layers if with_ground else ():
            layer.draw(d)
        furniture(d)
        return d

    def pixels():
        upper = picture.rasterise(drawing(with_ground=False).svg())
        return upper.over(ground.paint(*geometry.SCREEN, layers))

    return Entry(drawing, pixels=pixels)


def player_panel():
    found = {
        "pics/night/player_bg.png": Entry(lying_on(panel.GROUND, panel.furniture).drawing, pixels=player_background),
        "pics/night/player_mask.png": Entry(
            pixels=lambda: panel.mask("Player", geometry.SCREEN, geometry.BODY, 2)),
        "pics/night/details_mask.png": Entry(pixels=lambda: panel.mask("Details", geometry.SCREEN, geometry.BODY, 6)),
        "pics/night/playlist_bg.png": lying_on(playlist.GROUND, playlist.furniture),
        "pics/night/playlist_mask.png": Entry(
            pixels=lambda: panel.mask("Playlist", geometry.SCREEN, geometry.BODY, 3)),
        "pics/night/volume_bg.png": Entry(pixels=volume_background),
        "pics/night/volume_mask.png": Entry(
            pixels=lambda: panel.mask("Volume", (geometry.VOLUME_BED.width, geometry.VOLUME_BED.height),
                                      geometry.BODY, 2)),
    }
    for name in geometry.BODY:
        found[button_file(name)] = Entry(functools.partial(buttons.button_strip, name), alpha=True)
    return found


def button_file(name):
    return f"pics/night/{'details_close' if name == 'close' else name}.png"


def volume_background():
    bed = geometry.VOLUME_BED
    return player_background().crop(bed.x, bed.y, bed.width, bed.height)


def sliders_and_time():
    drawings = {"seek_back": sliders.seek_back, "seek_bar": sliders.seek_bar, "volume_back": sliders.volume_back,
                "volume_bar": sliders.volume_bar, "numbers": figures.number_strip, "colon": figures.colon}
    for kind in sliders.MARKERS:
        drawings[f"marker_{kind}"] = functools.partial(sliders.marker, kind)
    return {f"pics/night/{name}.png": Entry(drawing, alpha=True) for name, drawing in drawings.items()}


def application():
    """Pictures that the player looks up under its own name, and those of its other screens."""
    found = {
        "pics/skinplayer/title_bg.png": Entry(screens.title_background),
        "pics/night/list_bg.png": lying_on(screens.LIST_GROUND, panel.title_shade),
        "pics/night/cover.png": Entry(screens.cover),
        "pics/night/playing.png": Entry(screens.playing_mark, alpha=True),
    }
    found.update(close_buttons("pics/skinplayer", screens.title_background))
    for name, place in geometry.TOGGLES.items():
        for state, suffix in enumerate(STATE_SUFFIXES):
            for on in (False, True):
                drawing = functools.partial(screens.toggle_button, name, state, on)
                found[f"pics/skinplayer/{name}_{suffix}{'2' if on else ''}.png"] = standing_on(
                    drawing, player_background, place)
    return found


STATE_SUFFIXES = ("normal", "press", "focus", "disable")


def standing_on(drawing, ground, place):
    """A button that stands on a known ground and is shown without blending, so the ground is part of its picture."""
    def pixels():
        below = ground().crop(place.x, place.y, place.width, place.height)
        return picture.rasterise(drawing().svg()).over(below)

    return Entry(drawing, pixels=pixels)


def close_buttons(folder, title):
    ground = functools.lru_cache(maxsize=None)(lambda: picture.rasterise(title().svg()))
    return {f"{folder}/close_{suffix}.png": standing_on(functools.partial(screens.close_button, state), ground,
                                                        screens.CLOSE)
            for state, suffix in enumerate(STATE_SUFFIXES)}


def library():
    """The pictures compiled into the library."""
    found = {"builtin/setting_title.png": Entry(builtin.title)}
    found.update(close_buttons("builtin", builtin.title))
    for look in builtin.THUMB_COLOURS:
        found.update(thumb_pieces(look))
    for suffix, state in builtin.STATES.items():
        for name, upwards in (("sub", True), ("add", False)):
            found[f"builtin/scroll_{name}_{suffix}.png"] = Entry(
                functools.partial(builtin.step_button, upwards, state))
    middle, bottom = builtin.CAP_HEIGHT, builtin.CAP_HEIGHT + builtin.MIDDLE_HEIGHT
    found["builtin/scroll_bg_top.png"] = rows_of(builtin.trough, 0, middle)
    found["builtin/scroll_bg_middle.png"] = rows_of(builtin.trough, middle, bottom)
    found["builtin/scroll_bg_bottom.png"] = rows_of(builtin.trough, bottom, bottom + builtin.CAP_HEIGHT)
    return found


def thumb_pieces(look):
    drawing = functools.partial(builtin.thumb, look)
    cap = builtin.THUMB_CAP
    return {
        f"builtin/scroll_thumb_top_{look}.png": rows_of(drawing, 0, cap, alpha=True),
        f"builtin/scroll_thumb_center_{look}.png": rows_of(drawing, cap, cap + 1),
        f"builtin/scroll_thumb_bottom_{look}.png": rows_of(drawing, cap + 1, 2 * cap + 1, alpha=True),
    }


def rows_of(drawing, top, bottom, alpha=False):
    def pixels():
        whole = picture.rasterise(drawing().svg())
        return whole.crop(0, top, whole.width, bottom - top)

    return Entry(drawing, alpha, pixels)
