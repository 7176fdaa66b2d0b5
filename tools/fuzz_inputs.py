"""Packs the inputs of a fuzzer, a file each, into one text: a line of hexadecimal digits each, so that a thousand small
files are one that can be looked at. Lines that begin with "#" say why an input is kept.
usage: fuzz_inputs.py unpack TEXT FOLDER | pack FOLDER TEXT; pack leaves the lines that a comment stands above."""

import hashlib
import pathlib
import sys


def commented(lines):
    """The lines under comments, up to the next empty line, with the comments."""
    kept, keeps = [], False
    for line in lines:
        keeps = line.startswith("#") or (keeps and line != "")
        if keeps:
            kept.append(line)
    return kept


def unpack(text, folder):
    folder.mkdir(parents=True, exist_ok=True)
    for line in text.read_text().splitlines() if text.exists() else []:
        if line and not line.startswith("#"):
            data = bytes.fromhex(line)
            (folder / hashlib.sha1(data).hexdigest()).write_bytes(data)


def pack(folder, text):
    kept = commented(text.read_text().splitlines()) if text.exists() else []
    lines = {file.read_bytes().hex() for file in folder.iterdir()} - set(kept) - {""}
    parts = kept + [""] if kept else []
    text.write_text("\n".join(parts + sorted(lines, key=lambda line: (len(line), line))) + "\n")


{"unpack": unpack, "pack": pack}[sys.argv[1]](pathlib.Path(sys.argv[2]), pathlib.Path(sys.argv[3]))
