"""Pictures as plain pixel arrays: rasterising SVG, cutting, blending and writing PNG files.

Only the standard library and rsvg-convert are used. A written file holds nothing but the chunks a PNG
needs, so that the same drawing always gives the same bytes.
"""

import struct
import subprocess
import zlib

SIGNATURE = b"\x89PNG\r\n\x1a\n"


class Picture:
    """width x height pixels of straight (not premultiplied) RGBA, row by row in one bytearray."""

    def __init__(self, width, height, pixels=None):
        self.width = width
        self.height = height
        self.pixels = pixels if pixels is not None else bytearray(width * height * 4)

    def crop(self, x, y, width, height):
        part = Picture(width, height)
        for row in range(height):
            start = ((y + row) * self.width + x) * 4
            part.pixels[row * width * 4:(row + 1) * width * 4] = self.pixels[start:start + width * 4]
        return part

    def over(self, below):
        """This picture blended over an opaque picture of the same size."""
        result = Picture(self.width, self.height)
        for i in range(0, len(self.pixels), 4):
            alpha = self.pixels[i + 3]
            for c in range(3):
                mixed = self.pixels[i + c] * alpha + below.pixels[i + c] * (255 - alpha)
                result.pixels[i + c] = (mixed + 127) // 255
            result.pixels[i + 3] = 255
        return result

    def paste(self, part, x, y):
        for row in range(part.height):
            start = ((y + row) * self.width + x) * 4
            source = part.pixels[row * part.width * 4:(row + 1) * part.width * 4]
            self.pixels[start:start + part.width * 4] = source

    def set_pixel(self, x, y, rgb):
        at = (y * self.width + x) * 4
        self.pixels[at:at + 4] = bytes(rgb) + b"\xff"

    def colours(self):
        return {bytes(self.pixels[i:i + 4]) for i in range(0, len(self.pixels), 4)}


def rasterise(svg):
    """Renders SVG text at its own size, one user unit a pixel."""
    done = subprocess.run(["rsvg-convert", "--format=png"], input=svg.encode(), stdout=subprocess.PIPE, check=True)
    return decode(done.stdout)


def decode(data):
    """Reads an 8-bit RGB or RGBA PNG without interlacing, which is all that rsvg-convert and encode() write."""
    header, compressed, at = None, b"", len(SIGNATURE)
    while at < len(data):
        length, kind = struct.unpack(">I4s", data[at:at + 8])
        body = data[at + 8:at + 8 + length]
        if kind == b"IHDR":
            header = struct.unpack(">IIBBBBB", body)
        elif kind == b"IDAT":
            compressed += body
        at += length + 12
    width, height, depth, colour_type, _, _, interlace = header
    if depth != 8 or colour_type not in (2, 6) or interlace:
        raise ValueError("unexpected PNG layout")
    samples = 4 if colour_type == 6 else 3
    rows = unfilter(zlib.decompress(compressed), width * samples, height, samples)
    if samples == 4:
        return Picture(width, height, rows)
    picture = Picture(width, height, bytearray(b"\xff" * (width * height * 4)))
    for c in range(3):
        picture.pixels[c::4] = rows[c::3]
    return picture


def unfilter(raw, stride, height, step):
    result = bytearray()
    previous = bytearray(stride)
    for y in range(height):
        at = y * (stride + 1)
        kind, line = raw[at], bytearray(raw[at + 1:at + 1 + stride])
        for i in range(stride):
            left = line[i - step] if i >= step else 0
            corner = previous[i - step] if i >= step else 0
            line[i] = (line[i] + predict(kind, left, previous[i], corner)) & 255
        result += line
        previous = line
    return result


def predict(kind, left, up, corner):
    """The value that a PNG row filter expects for a sample, from its neighbours."""
    if kind == 0:
        return 0
    if kind == 1:
        return left
    if kind == 2:
        return up
    if kind == 3:
        return (left + up) // 2
    distances = (abs(up - corner), abs(left - corner), abs(left + up - 2 * corner))
    return (left, up, corner)[distances.index(min(distances))]


def encode(picture, alpha):
    samples = 4 if alpha else 3
    pixels = picture.pixels
    if not alpha:
        pixels = bytearray(picture.width * picture.height * 3)
        for c in range(3):
            pixels[c::3] = picture.pixels[c::4]
    stride = picture.width * samples
    filtered = bytearray()
    previous = bytearray(stride)
    for y in range(picture.height):
        line = pixels[y * stride:(y + 1) * stride]
        filtered += best_filter(line, previous, samples)
        previous = line
    header = struct.pack(">IIBBBBB", picture.width, picture.height, 8, 6 if alpha else 2, 0, 0, 0)
    return SIGNATURE + chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(bytes(filtered), 9)) + chunk(b"IEND", b"")


def best_filter(line, previous, step):
    """The row under the filter whose differences are smallest in sum, which is what compresses best."""
    left = bytearray(step) + line[:-step] if len(line) > step else bytearray(len(line))
    corner = bytearray(step) + previous[:-step] if len(line) > step else bytearray(len(line))
    best, best_sum = None, None
    for kind in range(5):
        row = bytearray((v - predict(kind, a, b, c)) & 255 for v, a, b, c in zip(line, left, previous, corner))
        total = sum(min(v, 256 - v) for v in row)
        if best is None or total < best_sum:
            best, best_sum = bytes([kind]) + row, total
    return best


def chunk(kind, body):
    return struct.pack(">I", len(body)) + kind + body + struct.pack(">I", zlib.crc32(kind + body))


def save(picture, path, alpha):
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_bytes(encode(picture, alpha))
