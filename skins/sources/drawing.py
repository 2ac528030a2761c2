"""Building SVG pictures: definitions with generated names, boxes, and the depth effects that all skins share."""


class Box:
    """A rounded rectangle; a circle is one whose radius is half its side."""

    def __init__(self, x, y, width, height, radius=0.0):
        self.x, self.y, self.width, self.height, self.radius = x, y, width, height, radius

    def inset(self, by):
        """A box smaller by `by` pixels on every side, with the same centres of its round corners."""
        return Box(self.x + by, self.y + by, self.width - 2 * by, self.height - 2 * by, max(0, self.radius - by))

    def moved(self, dx, dy):
        return Box(self.x + dx, self.y + dy, self.width, self.height, self.radius)

    def contains(self, px, py):
        if not (self.x <= px < self.x + self.width and self.y <= py < self.y + self.height):
            return False
        nearest_x = min(max(px, self.x + self.radius), self.x + self.width - self.radius)
        nearest_y = min(max(py, self.y + self.radius), self.y + self.height - self.radius)
        return (px - nearest_x) ** 2 + (py - nearest_y) ** 2 <= self.radius ** 2

    def svg(self, attributes):
        return (f'<rect x="{self.x}" y="{self.y}" width="{self.width}" height="{self.height}" '
                f'rx="{self.radius}" ry="{self.radius}" {attributes}/>')


class Drawing:
    """Collects SVG elements; gradients, filters, clips and masks return the reference to use as an attribute."""

    def __init__(self, width, height):
        self.width, self.height = width, height
        self.definitions, self.body, self.known = [], [], {}

    def add(self, *elements):
        self.body.extend(elements)

    def define(self, tag, attributes, content):
        key = (tag, attributes, content)
        if key not in self.known:
            self.known[key] = f"d{len(self.known)}"
            self.definitions.append(f'<{tag} id="{self.known[key]}" {attributes}>{content}</{tag}>')
        return f"url(#{self.known[key]})"

    def linear(self, x1, y1, x2, y2, *stops):
        where = f'gradientUnits="userSpaceOnUse" x1="{x1}" y1="{y1}" x2="{x2}" y2="{y2}"'
        return self.define("linearGradient", where, stop_elements(stops))

    def down(self, box, *stops):
        """A gradient from the top edge of the box to its bottom edge."""
        return self.linear(0, box.y, 0, box.y + box.height, *stops)

    def radial(self, cx, cy, radius, *stops):
        where = f'gradientUnits="userSpaceOnUse" cx="{cx}" cy="{cy}" r="{radius}"'
        return self.define("radialGradient", where, stop_elements(stops))

    def blur(self, deviation):
        # The filter works on the whole picture, and in sRGB: the default would make orange glows pale.
        where = (f'filterUnits="userSpaceOnUse" x="-40" y="-40" width="{self.width + 80}" '
                 f'height="{self.height + 80}" color-interpolation-filters="sRGB"')
        return self.define("filter", where, f'<feGaussianBlur stdDeviation="{deviation}"/>')

    def clip(self, *boxes):
        return self.define("clipPath", "", "".join(box.svg("") for box in boxes))

    def everywhere(self, attributes):
        return f'<rect x="-40" y="-40" width="{self.width + 80}" height="{self.height + 80}" {attributes}/>'

    def outside(self, *boxes):
        shapes = "".join(box.svg('fill="#000"') for box in boxes)
        where = (f'maskUnits="userSpaceOnUse" x="-40" y="-40" width="{self.width + 80}" '
                 f'height="{self.height + 80}"')
        return self.define("mask", where, self.everywhere('fill="#fff"') + shapes)

    def glow(self, element, deviation):
        self.add(f'<g filter="{self.blur(deviation)}">{element}</g>')

    def inner_shadow(self, boxes, colour, opacity, dx, dy, deviation):
        """A shadow that the edge of the boxes' union throws inwards."""
        dark = self.everywhere(f'fill="{colour}" mask="{self.outside(*boxes)}"')
        self.add(f'<g clip-path="{self.clip(*boxes)}" opacity="{opacity}">'
                 f'<g filter="{self.blur(deviation)}"><g transform="translate({dx} {dy})">{dark}</g></g></g>')

    def recess(self, boxes, fill, depth=1.0):
        """A bed sunk into the surface: the union of the boxes, lit from above."""
        self.add('<g opacity="%.3f">' % (0.10 * depth)
                 + "".join(box.moved(0, 1).svg('fill="#cfe2ff"') for box in boxes) + "</g>")
        self.add('<g opacity="%.3f">' % (0.75 * depth) + "".join(box.svg('fill="#010204"') for box in boxes) + "</g>")
        inner = [box.inset(1) for box in boxes]
        self.add(*(box.svg(f'fill="{fill}"') for box in inner))
        self.inner_shadow(inner, "#000", 0.85 * depth, 0, 2, 2.2)

    def svg(self):
        return (f'<svg xmlns="http://www.w3.org/2000/svg" width="{self.width}" height="{self.height}" '
                f'viewBox="0 0 {self.width} {self.height}"><defs>{"".join(self.definitions)}</defs>'
                f'{"".join(self.body)}</svg>\n')


def stop_elements(stops):
    """Stops are (offset, colour) or (offset, colour, opacity)."""
    return "".join(f'<stop offset="{s[0]}" stop-color="{s[1]}" stop-opacity="{s[2] if len(s) > 2 else 1}"/>'
                   for s in stops)


def path(outline, attributes):
    return f'<path d="{outline}" {attributes}/>'


def strip(width, height, count, draw):
    """One drawing of `count` equal cells side by side; draw(cell drawing, index) fills each, clipped to its cell."""
    whole = Drawing(width * count, height)
    for index in range(count):
        cell = Drawing(width, height)
        draw(cell, index)
        whole.body.append(f'<svg x="{index * width}" y="0" width="{width}" height="{height}" '
                          f'viewBox="0 0 {width} {height}" overflow="hidden">'
                          f'{isolate(cell, index)}</svg>')
    return whole


def isolate(cell, index):
    """The cell's content with its reference names made unique within the strip."""
    text = f'<defs>{"".join(cell.definitions)}</defs>{"".join(cell.body)}'
    return text.replace('id="d', f'id="c{index}d').replace("url(#d", f"url(#c{index}d")
