"""Button strips: one material in four states, and the signs on the buttons."""

from drawing import path, strip
from night import geometry, palette

NORMAL, PRESSED, FOCUS, DISABLED = range(4)


def cap(d, body, state):
    """The button itself, without its sign."""
    if state == PRESSED:
        pressed_cap(d, body)
    elif state == DISABLED:
        d.add(body.svg('fill="#04070b" fill-opacity="0.8"'))
        flat = body.inset(1)
        d.add(flat.svg(f'fill="{d.down(flat, (0, "#1a212d"), (1, "#10151e"))}"'))
        edge = d.down(flat, (0, palette.SHINE, 0.10), (0.5, palette.SHINE, 0.02))
        d.add(flat.inset(0.5).svg(f'fill="none" stroke="{edge}"'))
    else:
        raised_cap(d, body, state == FOCUS)


def raised_cap(d, body, focused):
    d.glow(body.moved(0, 2).svg('fill="#000" fill-opacity="0.75"'), 1.6)
    if focused:
        d.glow(body.inset(-1).svg(f'fill="{palette.ACCENT}"'), 1.5)
        d.add(body.inset(-1).svg(f'fill="{d.down(body, (0, "#ffb066"), (0.5, palette.ACCENT), (1, "#d94f00"))}"'))
        d.add(body.inset(1).svg('fill="#1a0d04"'))
    else:
        d.add(body.svg('fill="#03050a"'))
    face = body.inset(2 if focused else 1)
    stops = ((0, "#5a6982"), (0.42, "#35425a"), (0.55, "#27324a"), (1, "#161e2c"))
    d.add(face.svg(f'fill="{d.down(face, *stops)}"'))
    edge = d.down(face, (0, palette.SHINE, 0.60), (0.35, palette.SHINE, 0.16), (0.8, palette.SHINE, 0.03),
                  (1, palette.SHINE, 0.16))
    d.add(face.inset(0.5).svg(f'fill="none" stroke="{edge}"'))
    if focused:
        warm = d.radial(body.x + body.width / 2, body.y + body.height, body.height * 0.75,
                        (0, palette.ACCENT, 0.40), (1, palette.ACCENT, 0))
        d.add(face.svg(f'fill="{warm}"'))


def pressed_cap(d, body):
    d.add(body.svg('fill="#010204"'))
    face = body.inset(1)
    d.add(face.svg(f'fill="{d.down(face, (0, "#0b1018"), (0.6, "#141c29"), (1, "#222c3d"))}"'))
    d.inner_shadow([face], "#000", 0.95, 0, 3, 2.4)
    warm = d.radial(body.x + body.width / 2, body.y + body.height / 2, body.height * 0.5,
                    (0, palette.ACCENT, 0.38), (1, palette.ACCENT, 0))
    d.add(face.svg(f'fill="{warm}"'))
    edge = d.down(face, (0.55, palette.SHINE, 0), (1, palette.SHINE, 0.22))
    d.add(face.inset(0.5).svg(f'fill="none" stroke="{edge}"'))


def sign(d, outline, top, bottom, state):
    """Draws a sign given as a filled outline that spans `top` to `bottom`."""
    if state == DISABLED:
        d.add(path(outline, 'fill="#39455a"'))
        return
    if state == PRESSED:
        d.glow(path(outline, f'fill="{palette.ACCENT}"'), 1.8)
        fill = d.linear(0, top, 0, bottom, (0, palette.ACCENT_PALE), (1, palette.ACCENT_LIGHT))
        d.add(path(outline, f'fill="{fill}"'))
        return
    shadow = path(outline, 'fill="#000" fill-opacity="0.55"')
    d.add(f'<g transform="translate(0 1)">{shadow}</g>')
    fill = d.linear(0, top, 0, bottom, (0, "#ffffff" if state == FOCUS else palette.ICE_TOP),
                    (1, "#ffe2c4" if state == FOCUS else palette.ICE_BOTTOM))
    d.add(path(outline, f'fill="{fill}"'))


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
    if name == "open":
        return folder(cx, cy), cy - 8, cy + 8
    return speaker(cx, cy) + (waves(cx, cy) if name == "mute_off" else cross(cx, cy)), cy - 7, cy + 7


def folder(cx, cy):
    """An open folder: its back with the tab, and its front flap leaning forward."""
    back = (f"M{cx - 11} {cy + 5}V{cy - 6}a2 2 0 0 1 2 -2h5l3 3h7a2 2 0 0 1 2 2v1h-14a3 3 0 0 0 -2.8 1.9z")
    flap = f"M{cx - 5.6} {cy - 1}h17.6l-3.4 8a1.6 1.6 0 0 1 -1.5 1h-16z"
    return back + flap


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
        sign(cell, outline, top, bottom, state)

    return strip(width, height, 4, draw)
