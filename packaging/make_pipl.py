#!/usr/bin/env python3
"""Writes the effect's PiPL, by which After Effects knows it without loading it.

usage: make_pipl.py IDENTITY.json OUT.rsrc

The output is a resource file, all of it in the data fork, with one resource: 'PiPL' 16000.
Everything in it is big-endian, whatever the processor.
"""

import json
import struct
import sys

HEADER_BYTES = 256
MAP_HEADER_BYTES = 28
TYPE_LIST_BYTES = 10
PIPL_ID = 16000


def pascal(text):
    raw = text.encode("ascii")
    if len(raw) > 255:
        raise ValueError(f"longer than 255 characters: {text}")
    return bytes([len(raw)]) + raw


def word(value):
    return struct.pack(">I", int(value, 0))


def atom(key, data):
    """A property: the length is told without the zeros that fill it to a multiple of 4."""
    return b"8BIM" + key + struct.pack(">II", 0, len(data)) + data + bytes(-len(data) % 4)


def pipl(identity):
    entry = pascal(identity["entry_point"])
    atoms = [
        atom(b"kind", b"eFKT"),
        atom(b"name", pascal(identity["name"])),
        atom(b"catg", pascal(identity["category"])),
        atom(b"mi64", entry),
        atom(b"ma64", entry),
        atom(b"ePVR", struct.pack(">HH", 2, 0)),
        atom(b"eSVR", struct.pack(">HH", *identity["spec_version"])),
        atom(b"eVER", word(identity["version"])),
        atom(b"eINF", struct.pack(">H", 0)),
        atom(b"eGLO", word(identity["out_flags"])),
        atom(b"eGL2", word(identity["out_flags2"])),
        atom(b"eMNA", pascal(identity["match_name"])),
        atom(b"aeFL", word(identity["reserved_info"])),
        atom(b"eURL", pascal(identity["support_url"])),
    ]
    return struct.pack(">II", 0, len(atoms)) + b"".join(atoms)


def resource_map(header, kind, number):
    """Of one resource without a name, its data at the beginning of the data area."""
    types = struct.pack(">H4sHH", 0, kind, 0, TYPE_LIST_BYTES)
    references = struct.pack(">HHII", number, 0xFFFF, 0, 0)
    names = MAP_HEADER_BYTES + len(types) + len(references)
    return header + struct.pack(">QHH", 0, MAP_HEADER_BYTES, names) + types + references


def resource_file(kind, number, body):
    data = struct.pack(">I", len(body)) + body
    map_bytes = len(resource_map(bytes(16), kind, number))
    header = struct.pack(">IIII", HEADER_BYTES, HEADER_BYTES + len(data), len(data), map_bytes)
    return (header.ljust(HEADER_BYTES, b"\0") + data + resource_map(header, kind, number))


def main(identity_path, out_path):
    with open(identity_path, encoding="ascii") as file:
        identity = json.load(file)
    with open(out_path, "wb") as file:
        file.write(resource_file(b"PiPL", PIPL_ID, pipl(identity)))


if __name__ == "__main__":
    main(*sys.argv[1:])
