"""Takes a universal file apart and puts it together again, changed and signed anew, so that a test
meets the one fault it is about and no broken hash beside it."""

import hashlib
import struct

PAGE = 4096
ALIGN = 14
CODE_SIGNATURE = 0x1D
AD_HOC = 0x2


def split(universal):
    """(processor type, subtype, slice) of every slice."""
    count = struct.unpack_from(">I", universal, 4)[0]
    found = []
    for i in range(count):
        kind, subtype, offset, size, _ = struct.unpack_from(">5I", universal, 8 + 20 * i)
        found.append((kind, subtype, universal[offset:offset + size]))
    return found


def join(slices):
    head = struct.pack(">2I", 0xCAFEBABE, len(slices))
    body = bytearray()
    start = 1 << ALIGN
    for kind, subtype, data in slices:
        head += struct.pack(">5I", kind, subtype, start + len(body), len(data), ALIGN)
        body += data + bytes(-len(data) % (1 << ALIGN))
    return head.ljust(start, b"\0") + bytes(body)


def signature_command(data):
    """Where the load command of the signature lies in a slice."""
    at = 32
    for _ in range(struct.unpack_from("<I", data, 16)[0]):
        kind, size = struct.unpack_from("<2I", data, at)
        if kind == CODE_SIGNATURE:
            return at
        at += size
    raise ValueError("the slice has no signature")


def digest(data):
    return hashlib.sha256(data).digest()


def code_directory(code, specials):
    """`specials`: contents whose hashes stand before the pages', the last one first in the file."""
    pages = [code[at:at + PAGE] for at in range(0, len(code), PAGE)]
    before = [digest(content) if content else bytes(32) for content in reversed(specials)]
    identifier = b"org.tintwell.effect\0"
    hashes_at = 44 + len(identifier) + 32 * len(before)
    length = hashes_at + 32 * len(pages)
    head = struct.pack(">9I4BI", 0xFADE0C02, length, 0x20001, AD_HOC, hashes_at, 44,
                       len(before), len(pages), len(code), 32, 2, 0, 12, 0)
    return head.ljust(44, b"\0") + identifier + b"".join(before + list(map(digest, pages)))


def sign(data, specials=()):
    """The slice with an ad-hoc signature of its own in place of the old one."""
    command = signature_command(data)
    start = struct.unpack_from("<I", data, command + 8)[0]
    code = bytearray(data[:start])
    # The directory is as long whatever it holds, so its length is known before the code is whole.
    length = 20 + len(code_directory(bytes(code), specials))
    struct.pack_into("<I", code, command + 12, length)
    directory = code_directory(bytes(code), specials)
    return bytes(code) + struct.pack(">5I", 0xFADE0CC0, length, 1, 0, 20) + directory


def change(universal, edit, specials=()):
    """The file with every slice edited (a function of processor type and bytes) and signed."""
    return join([(kind, subtype, sign(edit(kind, data), specials))
                 for kind, subtype, data in split(universal)])
