"""The button strips of the player screen and their signs."""

from drawing import strip
from material import PRESSED, cap, filled, sign
from night import geometry


def rectangle(x, y, width, height):
    return f"M{x} {y}h{width}v{height}h{-width}z"


def triangle_right(x, top, width, height):
    return f"M{x} {top}L{x + width} {top + height / 2}L{x} {top + height}z"


def triangle_left(x, top, width, height):
    return f"M{x + width} {top}L{x} {top + height / 2}L{x + width} {top + height}z"


def signs(name, cx, cy):
    """(outline, top, bottom) of the button's sign around the optical centre of its body."""
    if name == "prev":
        return (rectangle(cx - 10, cy - 7, 3, 14) + triangle_left(cx - 7, cy - 7, 8, 14)
                + triangle_left(cx + 1, cy - 7, 8, 14), cy - 7, cy + 7)
    if name == "next":
        return (triangle_right(cx - 9, cy - 7, 8, 14) + triangle_right(cx - 1, cy - 7, 8, 14)
                + rectangle(cx + 7, cy - 7, 3, 14), cy - 7, cy + 7)
    if name == "play":
        return triangle_right(cx - 8, cy - 13, 22, 26), cy - 13, cy + 13
    if name == "pause":
        return rectangle(cx - 10, cy - 12, 7, 24) + rectangle(cx + 3, cy - 12, 7, 24), cy - 12, cy + 12
    if name == "stop":
        return rectangle(cx - 7, cy - 7, 14, 14), cy - 7, cy + 7
    if name == "details":
        return letter_i(cx, cy), cy - 8, cy + 8
    if name == "playlist":
        return lines_of_text(cx, cy), cy - 7, cy + 7
    if name == "add":
        return rectangle(cx - 8, cy - 2, 16, 4) + rectangle(cx - 2, cy - 8, 4, 6) + rectangle(cx - 2, cy + 2, 4, 6), \
            cy - 8, cy + 8
    if name == "remove":
        return rectangle(cx - 8, cy - 2, 16, 4), cy - 2, cy + 2
    if name == "save":
        return tray(cx, cy), cy - 8, cy + 8
    if name == "cancel":
        return diagonal_cross(cx, cy, 7.5, 2.4), cy - 8, cy + 8
    if name == "clear":
        return diagonal_cross(cx, cy, 5, 1.6), cy - 5, cy + 5
    if name == "close":
        return arrow_back(cx, cy), cy - 5, cy + 5
    if name == "open":
        return folder(cx, cy), cy - 8, cy + 8
    return speaker(cx, cy) + (waves(cx, cy) if name == "mute_off" else cross(cx, cy)), cy - 7, cy + 7


def folder(cx, cy):
    """An open folder: its back with the tab, and its front flap leaning forward."""
    back = (f"M{cx - 11} {cy + 5}V{cy - 6}a2 2 0 0 1 2 -2h5l3 3h7a2 2 0 0 1 2 2v1h-14a3 3 0 0 0 -2.8 1.9z")
    flap = f"M{cx - 5.6} {cy - 1}h17.6l-3.4 8a1.6 1.6 0 0 1 -1.5 1h-16z"
    return back + flap


def letter_i(cx, cy):
    """A small i with serifs."""
    return (rectangle(cx - 2, cy - 8, 4, 4)
            + f"M{cx - 4} {cy - 2}h6v8h2v2h-8v-2h2v-6h-2z")


def arrow_back(cx, cy):
    """An arrow to the left with a shaft."""
    return f"M{cx - 7} {cy}l6 -5v3.5h7v3h-7v3.5z"


def lines_of_text(cx, cy):
    """Three entries of a list."""
    return "".join(rectangle(cx - 8, cy + dy, 3, 3) + rectangle(cx - 3, cy + dy, 11, 3) for dy in (-7, -2, 3))


def tray(cx, cy):
    """An arrow down into an open tray."""
    arrow = f"M{cx - 2} {cy - 8}h4v6h4l-6 6l-6 -6h4z"
    return arrow + f"M{cx - 9} {cy + 1}h3v4h12v-4h3v7h-18z"


def diagonal_cross(cx, cy, outer, inner):
    """Two bars of the same width that meet at a right angle, `outer` from the centre to each end's middle."""
    corner = outer - inner
    return (f"M{cx - outer} {cy - corner}L{cx - corner} {cy - outer}L{cx} {cy - inner}L{cx + corner} {cy - outer}"
            f"L{cx + outer} {cy - corner}L{cx + inner} {cy}L{cx + outer} {cy + corner}L{cx + corner} {cy + outer}"
            f"L{cx} {cy + inner}L{cx - corner} {cy + outer}L{cx - outer} {cy + corner}L{cx - inner} {cy}z")


def speaker(cx, cy):
    return f"M{cx - 10} {cy - 3}h4l5 -5v16l-5 -5h-4z"


def waves(cx, cy):
    """Two arcs, each an outline of its own, since signs are filled."""
    near = f"M{cx + 1.5} {cy - 4}a5 5 0 0 1 0 8l1.3 1.6a7 7 0 0 0 0 -11.2z"
    far = f"M{cx + 5} {cy - 7}a9 9 0 0 1 0 14l1.3 1.6a11 11 0 0 0 0 -17.2z"
    return near + far


def cross(cx, cy):
    return (f"M{cx + 1} {cy - 2.6}l1.6 -1.6l2.9 2.9l2.9 -2.9l1.6 1.6l-2.9 2.9l2.9 2.9l-1.6 1.6l-2.9 -2.9"
            f"l-2.9 2.9l-1.6 -1.6l2.9 -2.9z")


def button_strip(name):
    width, height = geometry.PICTURE_SIZE[name]
    body = geometry.BODY[name]
    cx, cy = int(body.x + body.width / 2), int(body.y + body.height / 2)

    def draw(cell, state):
        cap(cell, body, state)
        outline, top, bottom = signs(name, cx, cy + (1 if state == PRESSED else 0))
        sign(cell, filled(outline), top, bottom, state)

    return strip(width, height, 4, draw)
