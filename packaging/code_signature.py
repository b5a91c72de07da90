"""Checks the code signature of a Mach-O slice: every hash in its code directories against what it
is the hash of. Who signed is not looked at."""

import hashlib
import plistlib
import struct

SUPER_BLOB, CODE_DIRECTORY = 0xFADE0CC0, 0xFADE0C02
DIRECTORY_SLOTS = (0, *range(0x1000, 0x1006))
HASHES = {1: hashlib.sha1, 2: hashlib.sha256, 3: hashlib.sha256, 4: hashlib.sha384}
PROPERTY_LIST_SLOT, RESOURCES_SLOT = 1, 3


class BadSignature(Exception):
    """What is wrong with the signature, in words."""


def need(condition, what):
    if not condition:
        raise BadSignature(what)


def unpack(layout, data, at):
    need(at + struct.calcsize(layout) <= len(data), "the signature ends early")
    return struct.unpack_from(layout, data, at)


class Directory:
    """One code directory: a hash for each page of the code and one for each of the bundle's own
    files that belong to the signature."""

    def __init__(self, data, at):
        (magic, _, _, self.flags, self.hashes_at, _, self.specials, self.pages, self.limit,
         self.hash_bytes, kind, _, page_shift) = unpack(">9I4B", data, at)
        need(magic == CODE_DIRECTORY, "no code directory where one should be")
        need(kind in HASHES, f"unknown kind of hash {kind}")
        self.data, self.at, self.kind, self.page_bytes = data, at, kind, 1 << page_shift

    def stored(self, slot):
        start = self.at + self.hashes_at + slot * self.hash_bytes
        return self.data[start:start + self.hash_bytes]

    def matches(self, slot, content):
        return self.stored(slot) == HASHES[self.kind](content).digest()[:self.hash_bytes]

    def check_pages(self, code):
        need(self.limit == len(code), "the signature covers another length of code")
        need(self.pages == -(-self.limit // self.page_bytes), "a wrong count of pages is signed")
        for page in range(self.pages):
            start = page * self.page_bytes
            need(self.matches(page, code[start:start + self.page_bytes]),
                 f"page {page} does not match its hash")

    def signs(self, slot):
        return self.specials >= slot and any(self.stored(-slot))

    def check_file(self, slot, content, name):
        """A file of the bundle, unless the linker signed, who knows of none."""
        if self.signs(slot):
            need(content is not None, f"{name} is signed but missing")
            need(self.matches(-slot, content), f"{name} does not match its hash")


def directories(data, offset):
    magic, _, count = unpack(">3I", data, offset)
    need(magic == SUPER_BLOB, "no signature where one should be")
    for i in range(count):
        slot, at = unpack(">2I", data, offset + 12 + 8 * i)
        if slot in DIRECTORY_SLOTS:
            yield Directory(data, offset + at)


def check_resources(code_resources, read_file):
    """The bundle's files against the list that was signed. read_file gives a file's bytes by its
    path in Contents, or None."""
    for path, entry in plistlib.loads(code_resources)["files2"].items():
        wanted = entry.get("hash2") if isinstance(entry, dict) else None
        if wanted is not None:
            content = read_file(path)
            need(content is not None, f"{path} is signed but missing")
            need(hashlib.sha256(content).digest() == wanted, f"{path} does not match its hash")


def check_signature(data, place, read_file):
    """Checks the slice `data` whose signature is at `place` (offset, size). Returns what was checked,
    in words. Throws BadSignature."""
    need(place, "no signature")
    found = list(directories(data, place[0]))
    need(found, "no code directory in the signature")
    code_resources = read_file("_CodeSignature/CodeResources")
    for directory in found:
        directory.check_pages(data[:place[0]])
        directory.check_file(PROPERTY_LIST_SLOT, read_file("Info.plist"), "Info.plist")
        directory.check_file(RESOURCES_SLOT, code_resources, "CodeResources")
        need(code_resources is None or directory.signs(RESOURCES_SLOT), "CodeResources is not signed")
    if code_resources is not None:
        check_resources(code_resources, read_file)
    sealed = "bundle sealed" if code_resources is not None else "code only"
    return f"{found[0].pages} pages match, {sealed}"
