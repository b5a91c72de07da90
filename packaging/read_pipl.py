#!/usr/bin/env python3
"""Reads the PiPL out of a resource file, strictly: what After Effects would have to guess at is
refused. Shares no code with make_pipl.py, so that each checks the other.

usage: read_pipl.py FILE.rsrc...
"""

import sys

TEXTS = ("name", "catg", "mi64", "ma64", "eMNA", "eURL")


class BadResource(Exception):
    """What is wrong with the file, in words."""


def need(condition, what):
    if not condition:
        raise BadResource(what)


class Bytes:
    """Big-endian numbers and pieces of some bytes, never beyond their end."""

    def __init__(self, data, what):
        self.data = data
        self.what = what

    def piece(self, at, size):
        need(0 <= at and at + size <= len(self.data), f"{self.what} ends early")
        return self.data[at:at + size]

    def number(self, at, size):
        return int.from_bytes(self.piece(at, size), "big")


def resources(raw):
    """Yields (type, id, bytes) of every resource."""
    whole = Bytes(raw, "the resource file")
    data_at, map_at, data_size, map_size = (whole.number(4 * i, 4) for i in range(4))
    need(data_at + data_size <= map_at, "resource data and map overlap")
    need(map_at + map_size == len(raw), "the resource map does not end the file")
    data = Bytes(whole.piece(data_at, data_size), "the resource data")
    rmap = Bytes(whole.piece(map_at, map_size), "the resource map")
    need(rmap.piece(0, 16) in (raw[:16], bytes(16)), "the resource map's header copy differs")
    types_at = rmap.number(24, 2)
    for t in range(rmap.number(types_at, 2) + 1):
        entry = types_at + 2 + 8 * t
        references_at = types_at + rmap.number(entry + 6, 2)
        for r in range(rmap.number(entry + 4, 2) + 1):
            reference = references_at + 12 * r
            at = rmap.number(reference + 5, 3)
            body = data.piece(at + 4, data.number(at, 4))
            yield rmap.piece(entry, 4).decode("latin-1"), rmap.number(reference, 2), body


def atoms(body):
    """Yields (key, bytes) of every property, in the order of the PiPL."""
    pipl = Bytes(body, "the PiPL")
    need(pipl.number(0, 4) == 0, "unknown PiPL version")
    at = 8
    for _ in range(pipl.number(4, 4)):
        key = pipl.piece(at + 4, 4).decode("latin-1")
        need(pipl.piece(at, 4) == b"8BIM", f"property {key} has another vendor")
        need(pipl.number(at + 8, 4) == 0, f"property {key} has a number")
        size = pipl.number(at + 12, 4)
        fill = -size % 4
        value = pipl.piece(at + 16, size)
        need(not any(pipl.piece(at + 16 + size, fill)), f"property {key} is filled with other than 0")
        yield key, value
        at += 16 + size + fill
    need(at == len(body), "bytes after the PiPL's last property")


def decode(key, value):
    """Text, a tuple of 16-bit numbers, or a number, as the key asks for."""
    if key in TEXTS:
        need(value and value[0] + 1 == len(value), f"property {key} is no length and text")
        return value[1:].decode("mac_roman")
    if key == "kind":
        return value.decode("latin-1")
    if key in ("ePVR", "eSVR"):
        need(len(value) == 4, f"property {key} is no two short numbers")
        return int.from_bytes(value[:2], "big"), int.from_bytes(value[2:], "big")
    return int.from_bytes(value, "big")


def read_pipl(raw):
    """The properties of the one PiPL in a resource file, decoded, by key. Throws BadResource."""
    found = [(number, body) for kind, number, body in resources(raw) if kind == "PiPL"]
    need(len(found) == 1, f"{len(found)} PiPL resources instead of one")
    need(found[0][0] == 16000, f"the PiPL's number is {found[0][0]}")
    properties = list(atoms(found[0][1]))
    need(len(dict(properties)) == len(properties), "a property stands twice in the PiPL")
    return {key: decode(key, value) for key, value in properties}


def main(paths):
    for path in paths:
        with open(path, "rb") as file:
            properties = read_pipl(file.read())
        for key, value in properties.items():
            print(key, f"{value:#x}" if isinstance(value, int) else value)


if __name__ == "__main__":
    main(sys.argv[1:])
