#!/usr/bin/env python3
"""The stored values and what is expected of them are the ones that were written: their SHA-256 stand in
files.sha256, and nothing else lies there. usage: check_files.py FOLDER [--write]

--write makes the list; one that is there already is never replaced.
"""
import hashlib
import pathlib
import sys

folder = pathlib.Path(sys.argv[1])
listing = folder / "files.sha256"
files = sorted([folder / "expectations.txt", *(folder / "values").iterdir()])
found = [f"{hashlib.sha256(f.read_bytes()).hexdigest()}  {f.relative_to(folder).as_posix()}"
         for f in files]
if sys.argv[2:] == ["--write"]:
    with listing.open("x", encoding="utf-8") as out:
        out.write("\n".join(found) + "\n")
    sys.exit(0)
written = listing.read_text(encoding="utf-8").splitlines()
for line in sorted(set(found) ^ set(written)):
    print(("changed or new: " if line in found else "as written:     ") + line)
sys.exit(found != written)
