"""The figures of the time display, drawn as strokes three pixels wide whose straight parts lie on whole pixels."""

import palette
from drawing import Drawing, path, strip

CELL = (20, 36)
COLON = (10, 36)
# A figure is 14 x 27 pixels; these are its left and top edge in the cell.
LEFT, TOP = 3, 4

STROKES = {
    0: "M6 1.5H8A4.5 4.5 0 0 1 12.5 6V21A4.5 4.5 0 0 1 8 25.5H6A4.5 4.5 0 0 1 1.5 21V6A4.5 4.5 0 0 1 6 1.5z",
    2: "M1.5 7.5V6A4.5 4.5 0 0 1 6 1.5H8A4.5 4.5 0 0 1 12.5 6V8.5C12.5 15 1.5 16 1.5 22.5V25.5H14",
    3: "M1.5 7V6A4.5 4.5 0 0 1 6 1.5H8A4.5 4.5 0 0 1 12.5 6V9A4.5 4.5 0 0 1 8 13.5H5"
       "M8 13.5A4.5 4.5 0 0 1 12.5 18V21A4.5 4.5 0 0 1 8 25.5H6A4.5 4.5 0 0 1 1.5 21V20",
    4: "M7.9 -1L1.5 17V19.5H14M10.5 11V27",
    5: "M13 1.5H2.5V11.5H8A4.5 4.5 0 0 1 12.5 16V21A4.5 4.5 0 0 1 8 25.5H6A4.5 4.5 0 0 1 1.5 21V20",
    6: "M12.5 7V6A4.5 4.5 0 0 0 8 1.5H6A4.5 4.5 0 0 0 1.5 6V21A4.5 4.5 0 0 0 6 25.5H8A4.5 4.5 0 0 0 12.5 21V16"
       "A4.5 4.5 0 0 0 8 11.5H2",
    7: "M0 1.5H12.5V4C12.5 11 5.5 14 5.5 27",
    8: "M6 1.5H8A4.5 4.5 0 0 1 12.5 6V9A4.5 4.5 0 0 1 8 13.5H6A4.5 4.5 0 0 1 1.5 9V6A4.5 4.5 0 0 1 6 1.5z"
       "M6 13.5H8A4.5 4.5 0 0 1 12.5 18V21A4.5 4.5 0 0 1 8 25.5H6A4.5 4.5 0 0 1 1.5 21V18A4.5 4.5 0 0 1 6 13.5z",
    9: "M1.5 20V21A4.5 4.5 0 0 0 6 25.5H8A4.5 4.5 0 0 0 12.5 21V6A4.5 4.5 0 0 0 8 1.5H6A4.5 4.5 0 0 0 1.5 6V11"
       "A4.5 4.5 0 0 0 6 15.5H12",
}
ONE = "M10 0H7.5L2 4.5V8.5L7 4.5V27H10z"


def lit(d, shape, paint):
    """Draws a shape as if it shone: a cold halo, then the shape itself. `paint` is its attribute with a %s."""
    halo = f'<g transform="translate({LEFT} {TOP})" opacity="0.55">{path(shape, paint % "#3f8cff")}</g>'
    d.glow(halo, 1.3)
    fill = d.linear(0, 0, 0, 27, (0, "#ffffff"), (0.5, "#e6f0ff"), (1, "#a9c6f2"))
    d.add(f'<g transform="translate({LEFT} {TOP})">'
          f'<svg x="0" y="0" width="14" height="27" viewBox="0 0 14 27" overflow="hidden">'
          f'{path(shape, paint % fill)}</svg></g>')


def figure(d, value):
    if value == 1:
        lit(d, ONE, 'fill="%s"')
    else:
        lit(d, STROKES[value], 'fill="none" stroke-width="3" stroke-miterlimit="8" stroke="%s"')


def number_strip():
    return strip(*CELL, 10, figure)


def colon():
    d = Drawing(*COLON)
    dots = "".join(f"M2 {y}h3v3h-3z" for y in (8, 17))
    lit(d, dots, 'fill="%s"')
    return d
