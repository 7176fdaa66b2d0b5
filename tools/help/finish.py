"""Finishes a help file that the compiler has written.

Its directory has to say that it begins with its first part, which the compiler gets wrong where there are several.
In place of the time of day comes a number worked out from the content, so that the same content has the same bytes
and a viewer that keeps an index of its own sees when there is new content.

usage: finish.py FILE
"""
import sys
import zlib
from pathlib import Path

HEADER_STAMP = 0x10
DIRECTORY = 0x48  # where the header says where the directory lies
DATA = 0x58  # where it says where files lie
FIRST_PART = 0x20  # where the directory says which is its first part
DIRECTORY_HEADER = 0x54  # its length; the parts follow
SYSTEM_STAMP = b'\3\0\0\0\x0a\0\4\0'  # version, then entry 10 of four bytes


def number(data, place, size):
    return int.from_bytes(data[place:place + size], 'little')


def encoded(data, place):
    """A number of the directory and the place behind it."""
    value = 0
    while True:
        value = value << 7 | data[place] & 0x7f
        place += 1
        if data[place - 1] < 0x80:
            return value, place


def expect(data, place, content):
    if data[place:place + len(content)] != content:
        raise ValueError(f'not the help file of a known compiler: {bytes(data[place:place + len(content)])} at {place}')


def mend_directory(data):
    start = number(data, DIRECTORY, 8)
    expect(data, start, b'ITSP')
    expect(data, start + DIRECTORY_HEADER, b'PMGL')
    data[start + FIRST_PART:start + FIRST_PART + 4] = bytes(4)


def system_file(data):
    """Where the file of settings lies; it is not compressed."""
    name = b'/#SYSTEM'
    place = data.index(bytes([len(name)]) + name) + 1 + len(name)
    _, place = encoded(data, place)  # it is of the part without compression, or is not found there
    offset, place = encoded(data, place)
    start = number(data, DATA, 8) + offset
    expect(data, start, SYSTEM_STAMP)
    return start


def stamp(data):
    places = HEADER_STAMP, system_file(data) + len(SYSTEM_STAMP)
    for place in places:
        data[place:place + 4] = bytes(4)
    sum_of_content = zlib.crc32(data).to_bytes(4, 'little')
    for place in places:
        data[place:place + 4] = sum_of_content


if __name__ == '__main__':
    path = Path(sys.argv[1])
    content = bytearray(path.read_bytes())
    mend_directory(content)
    stamp(content)
    path.write_bytes(content)
