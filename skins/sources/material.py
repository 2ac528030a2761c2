"""What buttons are made of: one material in four states, and the signs on it."""

import palette
from drawing import path

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


def sign(d, mark, top, bottom, state, lit=False):
    """Draws a sign that spans `top` to `bottom`. mark(paint) gives its SVG; a lit one shines in every state."""
    if state == DISABLED:
        d.add(mark("#7a4a24" if lit else "#39455a"))
        return
    if state == PRESSED or lit:
        d.glow(mark(palette.ACCENT), 1.8)
        fill = d.linear(0, top, 0, bottom, (0, palette.ACCENT_PALE), (1, palette.ACCENT_LIGHT))
        d.add(mark(fill))
        return
    d.add(f'<g transform="translate(0 1)" opacity="0.55">{mark("#000")}</g>')
    focused = state == FOCUS
    d.add(mark(d.linear(0, top, 0, bottom, (0, "#ffffff" if focused else palette.ICE_TOP),
                        (1, "#ffe2c4" if focused else palette.ICE_BOTTOM))))


def filled(outline):
    return lambda paint: path(outline, f'fill="{paint}"')
