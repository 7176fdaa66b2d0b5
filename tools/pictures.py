"""Approved pictures of the dialogs: reading and writing them, and telling what another picture has that they have not.

A picture is kept as a PNG file in one form alone (no filters, sorted palette), so that nothing but zlib is needed, and
the same picture is the same file."""

import hashlib
import os
import struct
import zlib
from dataclasses import dataclass

# How far each of red, green and blue of each pixel may be from the approved one, of 255: what another compiler may
# round otherwise. The most similar colours of a theme differ by one more; no pixel is let off.
TOLERANCE = 2

SIGNATURE = b"\x89PNG\r\n\x1a\n"
INDEXED, COLOURS = 3, 2  # kinds of pixels of a PNG file


@dataclass(frozen=True)
class Picture:
    """Red, green and blue of each pixel, line by line."""
    width: int
    height: int
    pixels: bytes

    def sum(self):
        """The same as the program tells that takes the pictures."""
        return hashlib.sha256(b"%d %d\n" % (self.width, self.height) + self.pixels).hexdigest()


def read_ppm(data):
    head, pixels = data.split(b"\n", 1)
    kind, width, height, depth = head.split()
    picture = Picture(int(width), int(height), pixels)
    if kind != b"P6" or depth != b"255" or len(pixels) != 3 * picture.width * picture.height:
        raise ValueError("not a picture as it is taken")
    return picture


def chunk(name, data):
    return struct.pack(">I", len(data)) + name + data + struct.pack(">I", zlib.crc32(name + data))


def unfiltered(data, width, height):
    """The lines of a PNG file, each of which begins with the kind of its filter."""
    return b"".join(b"\0" + data[line * width:(line + 1) * width] for line in range(height))


def to_png(picture):
    red, green, blue = (picture.pixels[at::3] for at in range(3))
    pixels = list(zip(red, green, blue))
    palette = sorted(set(pixels))
    if len(palette) <= 256:
        place = {colour: at for at, colour in enumerate(palette)}
        kind, width, data = INDEXED, picture.width, bytes(map(place.__getitem__, pixels))
        colours = chunk(b"PLTE", bytes(part for colour in palette for part in colour))
    else:
        kind, width, data, colours = COLOURS, 3 * picture.width, picture.pixels, b""
    head = struct.pack(">IIBBBBB", picture.width, picture.height, 8, kind, 0, 0, 0)
    lines = zlib.compress(unfiltered(data, width, picture.height), 9)
    return SIGNATURE + chunk(b"IHDR", head) + colours + chunk(b"IDAT", lines) + chunk(b"IEND", b"")


def chunks_of(data):
    at = len(SIGNATURE)
    while at < len(data):
        length, name = struct.unpack_from(">I4s", data, at)
        yield name, data[at + 8:at + 8 + length]
        at += 12 + length


def from_png(data):
    parts = dict(chunks_of(data)) if data.startswith(SIGNATURE) else {}
    if not {b"IHDR", b"IDAT", b"IEND"} <= set(parts):
        raise ValueError("not a whole PNG file")
    width, height, depth, kind, *rest = struct.unpack(">IIBBBBB", parts[b"IHDR"])
    line = (width if kind == INDEXED else 3 * width) + 1
    lines = zlib.decompress(parts[b"IDAT"])
    if depth != 8 or any(rest) or kind not in (INDEXED, COLOURS) or len(lines) != line * height or any(lines[::line]):
        raise ValueError("not written by tools/pictures")
    data = b"".join(lines[at + 1:at + line] for at in range(0, len(lines), line))
    if kind == INDEXED:
        data = coloured(data, parts[b"PLTE"])
    return Picture(width, height, data)


def coloured(data, palette):
    pixels = bytearray(3 * len(data))
    for part in range(3):
        pixels[part::3] = data.translate(palette[part::3].ljust(256, b"\0"))
    return bytes(pixels)


@dataclass(frozen=True)
class Difference:
    """Places of pixels that differ by more than is tolerated; None where the sizes do."""
    places: tuple = None

    def __str__(self):
        if self.places is None:
            return "another size"
        xs, ys = [x for x, _ in self.places], [y for _, y in self.places]
        return f"{len(xs)} pixels, from {min(xs)},{min(ys)} to {max(xs)},{max(ys)}"


def differences(before, after, tolerance=None):
    """A Difference, or None where there is none worth telling."""
    tolerance = TOLERANCE if tolerance is None else tolerance
    if (before.width, before.height) != (after.width, after.height):
        return Difference()
    places, line = [], 3 * before.width
    for y in range(before.height):
        one, other = (picture.pixels[y * line:(y + 1) * line] for picture in (before, after))
        if one != other:
            places += sorted({(at // 3, y) for at in range(line) if abs(one[at] - other[at]) > tolerance})
    return Difference(tuple(places)) if places else None


def marked(picture, places):
    """The picture, pale, with its differences in red."""
    pixels = bytearray(192 + part // 4 for part in picture.pixels)
    for x, y in places:
        at = 3 * (y * picture.width + x)
        pixels[at:at + 3] = b"\xd0\x00\x00"
    return Picture(picture.width, picture.height, bytes(pixels))


def names_in(folder, ending):
    """The names of the pictures below a folder, such as log-on/en-desktop-96-light."""
    found = []
    for place, _, files in os.walk(folder):
        found += [os.path.relpath(os.path.join(place, file), folder) for file in files if file.endswith(ending)]
    return {name.removesuffix(ending) for name in found}


def load(folder, name):
    with open(os.path.join(folder, name + ".png"), "rb") as file:
        return from_png(file.read())


def save(folder, name, data):
    path = os.path.join(folder, name)
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "wb") as file:
        file.write(data)
