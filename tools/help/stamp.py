"""Puts a number worked out from the content in place of the time of day in a help file, so that the same content
has the same bytes and a viewer that keeps an index of its own sees when there is new content.

usage: stamp.py FILE
"""
import sys
import zlib
from pathlib import Path

HEADER_STAMP = 0x10
DATA = 0x58  # where the header says where files lie
SYSTEM_STAMP = b'\3\0\0\0\x0a\0\4\0'  # version, then entry 10 of four bytes


def encoded(data, place):
    """A number of the directory and the place behind it."""
    value = 0
    while True:
        value = value << 7 | data[place] & 0x7f
        place += 1
        if data[place - 1] < 0x80:
            return value, place


def system_file(data):
    """Where the file of settings lies; it is not compressed."""
    name = b'/#SYSTEM'
    place = data.index(bytes([len(name)]) + name) + 1 + len(name)
    section, place = encoded(data, place)
    offset, place = encoded(data, place)
    start = int.from_bytes(data[DATA:DATA + 8], 'little') + offset
    if section or data[start:start + len(SYSTEM_STAMP)] != SYSTEM_STAMP:
        raise ValueError('the settings of the help file are not where they should be')
    return start


def stamp(data):
    places = HEADER_STAMP, system_file(data) + len(SYSTEM_STAMP)
    for place in places:
        data[place:place + 4] = bytes(4)
    number = zlib.crc32(data).to_bytes(4, 'little')
    for place in places:
        data[place:place + 4] = number


if __name__ == '__main__':
    path = Path(sys.argv[1])
    content = bytearray(path.read_bytes())
    stamp(content)
    path.write_bytes(content)
