#!/usr/bin/env python3
"""Packs a bundle and the notes that go with it into a zip file: the same bytes for the same contents.

usage: package_bundle.py Tintwell.plugin OUT.zip
"""

import sys
import zipfile
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
NOTES = ("packaging/INSTALL.txt", "packaging/uninstall.command", "LICENSE", "NOTICES.md")
# The earliest time that a zip file can tell: no build time gets in.
TIME = (1980, 1, 1, 0, 0, 0)
UNIX = 3
REGULAR_FILE = 0o100000


def add(archive, file, name):
    executable = file.stat().st_mode & 0o100
    entry = zipfile.ZipInfo(name, TIME)
    entry.create_system = UNIX
    entry.external_attr = (REGULAR_FILE | (0o755 if executable else 0o644)) << 16
    entry.compress_type = zipfile.ZIP_DEFLATED
    archive.writestr(entry, file.read_bytes())


def package(bundle, out):
    with zipfile.ZipFile(out, "w") as archive:
        for note in NOTES:
            add(archive, ROOT / note, Path(note).name)
        for file in sorted(path for path in bundle.rglob("*") if path.is_file()):
            add(archive, file, str(Path(bundle.name) / file.relative_to(bundle)))


if __name__ == "__main__":
    package(*map(Path, sys.argv[1:]))
