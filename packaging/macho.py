"""What check_bundle.py wants to know of a Mach-O file. Everything is read from the bytes; nothing of
the system's is asked."""

import struct
from dataclasses import dataclass, field

PROCESSORS = {0x01000007: "x86_64", 0x0100000C: "arm64"}
UNIVERSAL = 0xCAFEBABE
MAGIC_64 = 0xFEEDFACF
BUNDLE = 8
NO_UNDEFINED, TWO_LEVEL = 0x1, 0x80
MACOS = 1

SYMTAB, LOAD_DYLIB, LOAD_WEAK_DYLIB, REEXPORT_DYLIB = 0x2, 0xC, 0x18, 0x1F
CODE_SIGNATURE, BUILD_VERSION, DYLD_INFO, EXPORTS_TRIE = 0x1D, 0x32, 0x22, 0x33
REQUIRED_BIT = 0x80000000


class BadMachO(Exception):
    """What is wrong with the file, in words."""


@dataclass
class Slice:
    """One processor's file in a universal file."""
    processor: str
    data: bytes
    align: int
    file_type: int = 0
    flags: int = 0
    platform: int = 0
    min_system: str = ""
    libraries: list = field(default_factory=list)
    exports: set = field(default_factory=set)
    imports: set = field(default_factory=set)  # (library, symbol)
    signature: tuple = ()                      # offset, size


def unpack(layout, data, at):
    if at < 0 or at + struct.calcsize(layout) > len(data):
        raise BadMachO("the file ends early")
    return struct.unpack_from(layout, data, at)


def text_at(data, at):
    end = data.find(b"\0", at)
    if at < 0 or end < 0:
        raise BadMachO("a name does not end")
    return data[at:end].decode()


def uleb(data, at):
    """A number in groups of 7 bits, lowest first, and where it ends."""
    value = shift = 0
    while True:
        byte = unpack("B", data, at)[0]
        at += 1
        value |= (byte & 0x7F) << shift
        if byte < 0x80:
            return value, at
        shift += 7


def trie_names(trie, node=0, prefix=""):
    """Every name that the export trie holds."""
    size, at = uleb(trie, node)
    if size:
        yield prefix
    at += size
    children = unpack("B", trie, at)[0]
    at += 1
    for _ in range(children):
        edge = text_at(trie, at)
        child, at = uleb(trie, at + len(edge) + 1)
        if child <= node:
            raise BadMachO("the export trie turns back")
        yield from trie_names(trie, child, prefix + edge)


def read_imports(found, command):
    """Undefined symbols with the library that each is bound to, which stands in the high byte of
    the description."""
    symbols_at, count, names_at, _ = unpack("<4I", command, 8)
    for i in range(count):
        name_at, kind, _, description, _ = unpack("<IBBHQ", found.data, symbols_at + 16 * i)
        debugging, defined, external = kind & 0xE0, kind & 0xE, kind & 1
        if external and not debugging and not defined:
            ordinal = description >> 8
            known = 1 <= ordinal <= len(found.libraries)
            library = found.libraries[ordinal - 1] if known else f"ordinal {ordinal}"
            found.imports.add((library, text_at(found.data, names_at + name_at)))


def read_exports(found, offset, size):
    if size:
        found.exports.update(trie_names(found.data[offset:offset + size]))


def read_command(found, kind, command):
    if kind in (LOAD_DYLIB, LOAD_WEAK_DYLIB, REEXPORT_DYLIB):
        found.libraries.append(text_at(command, unpack("<I", command, 8)[0]))
    elif kind == BUILD_VERSION:
        found.platform, version = unpack("<2I", command, 8)
        found.min_system = f"{version >> 16}.{version >> 8 & 0xFF}"
    elif kind == CODE_SIGNATURE:
        found.signature = unpack("<2I", command, 8)
    elif kind == DYLD_INFO:
        read_exports(found, *unpack("<2I", command, 40))
    elif kind == EXPORTS_TRIE:
        read_exports(found, *unpack("<2I", command, 8))


def commands(data):
    """Yields (kind, bytes) of every load command."""
    count = unpack("<I", data, 16)[0]
    at = 32
    for _ in range(count):
        kind, size = unpack("<2I", data, at)
        if size < 8:
            raise BadMachO("a load command without length")
        yield kind & ~REQUIRED_BIT, data[at:at + size]
        at += size


def read_slice(processor, data, align):
    magic, _, _, file_type, _, _, flags = unpack("<7I", data, 0)
    if magic != MAGIC_64:
        raise BadMachO(f"the {processor} slice is no 64-bit Mach-O file")
    found = Slice(processor, data, align, file_type, flags)
    tables = []
    for kind, command in commands(data):
        read_command(found, kind, command)
        tables += [command] if kind == SYMTAB else []
    for command in tables:  # once all libraries are known
        read_imports(found, command)
    return found


def read_universal(data):
    """The slices of a universal file. Throws BadMachO."""
    magic, count = unpack(">2I", data, 0)
    if magic != UNIVERSAL:
        raise BadMachO("no universal file")
    found = []
    for i in range(count):
        processor, _, offset, size, align = unpack(">5I", data, 8 + 20 * i)
        if offset % (1 << align) or offset + size > len(data):
            raise BadMachO("a slice lies badly in the file")
        name = PROCESSORS.get(processor, f"{processor:#x}")
        found.append(read_slice(name, data[offset:offset + size], align))
    return found
