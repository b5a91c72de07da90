"""Pictures of the calibration pattern, and one after a grade."""
import math
import struct
import zlib

from float32 import single
from told import number_told


def grid(size, width, height):
    columns = max(1, math.ceil(math.sqrt(width / height * size ** 3)))
    return columns, (size ** 3 + columns - 1) // columns


def levels(size):
    """The values of single precision, step by step."""
    k = single(1.0 / (size - 1))
    return [single(k * level) for level in range(size)]


def byte(value):
    return min(int(single(single(value * 255.0) + 0.5)), 255)


def colour(size, index):
    """The levels that a patch shows; black after the last."""
    if index >= size ** 3:
        return 0, 0, 0
    return index % size, index // size % size, index // size ** 2


def pixels(size, width, height, grade=lambda rgb: rgb):
    columns, rows = grid(size, width, height)
    bytes_of = [byte(value) for value in levels(size)]
    patches = [bytes(grade([bytes_of[level] for level in colour(size, index)]))
               for index in range(columns * rows)]
    return [b"".join(patches[x * columns // width + y * rows // height * columns] for x in range(width))
            for y in range(height)]


def png(width, height, rows):
    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))
    packed = zlib.compress(b"".join(b"\0" + row for row in rows), 9)
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0))
            + chunk(b"IDAT", packed) + chunk(b"IEND", b""))


def rows_of(picture):
    """The rows of a PNG that png() made, whatever packed it."""
    data, at = b"", 8
    while at < len(picture):
        length, kind = struct.unpack(">I4s", picture[at:at + 8])
        if kind == b"IHDR":
            width = struct.unpack(">I", picture[at + 8:at + 12])[0]
        if kind == b"IDAT":
            data += picture[at + 8:at + 8 + length]
        at += length + 12
    lines = zlib.decompress(data)
    return [lines[start:start + 3 * width + 1] for start in range(0, len(lines), 3 * width + 1)]


def patch(size, width, height, index):
    """Its pixels, from the first to just before the last, and its colour."""
    columns, rows = grid(size, width, height)
    column, row = index % columns, index // columns
    return {"index": index,
            "x": -(-column * width // columns), "y": -(-row * height // rows),
            "to_x": -(-(column + 1) * width // columns), "to_y": -(-(row + 1) * height // rows),
            "colour": [number_told(levels(size)[level]) for level in colour(size, index)]}


def pattern(size, width, height):
    columns, rows = grid(size, width, height)
    some = sorted({0, 1, size, size ** 2, size ** 3 // 2, size ** 3 - 1})
    return {"file": f"pattern_{size}_{width}x{height}.png", "size": size, "width": width, "height": height,
            "columns": columns, "rows": rows, "levels": [number_told(value) for value in levels(size)],
            "bytes": [byte(value) for value in levels(size)],
            "patches": [patch(size, width, height, index) for index in some]}


def swapped_negative(rgb):
    return [255 - rgb[0], rgb[2], rgb[1]]


def measured():
    size, width, height = 3, 280, 160
    bytes_of = [byte(value) for value in levels(size)]
    samples = [number_told(single(value / 255)) for index in range(size ** 3)
               for value in swapped_negative([bytes_of[level] for level in colour(size, index)])]
    return {"file": "graded_3_280x160.png", "about": "red as its negative, green and blue exchanged",
            "size": size, "width": width, "height": height, "samples": samples}


def files():
    made = {}
    index = {"about": "pictures of the calibration pattern in 8 bits, and one after a grade",
             "patterns": [pattern(*shape) for shape in (
                 (2, 64, 36), (3, 61, 35), (9, 160, 90), (17, 360, 640), (42, 400, 300), (51, 512, 288))],
             "measured": [measured()]}
    for one in index["patterns"]:
        width, height = one["width"], one["height"]
        made[one["file"]] = png(width, height, pixels(one["size"], width, height))
    for one in index["measured"]:
        width, height = one["width"], one["height"]
        made[one["file"]] = png(width, height, pixels(one["size"], width, height, swapped_negative))
    return made, index
