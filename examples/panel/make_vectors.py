#!/usr/bin/env python3
"""Writes the test vectors for makers of a companion panel: make_vectors.py [--check].

Each folder beside this script holds files and an index.json, which says what comes out of each. All of it
is worked out from docs/panel-interface.md alone; the effect is held to it by its tests. --check writes
nothing and fails when a file is not what would be written.
"""
import json
import pathlib
import sys

import pattern_vectors
import request_vectors
import text_vectors

HERE = pathlib.Path(__file__).resolve().parent
FOLDERS = {"texts": text_vectors, "patterns": pattern_vectors, "requests": request_vectors}


def index_text(index):
    """A line for each entry, so that changes can be read."""
    lines = []
    for key, value in index.items():
        if isinstance(value, list):
            entries = ",\n".join("    " + json.dumps(entry, ensure_ascii=False) for entry in value)
            lines.append(f'  "{key}": [\n{entries}\n  ]')
        else:
            lines.append(f'  "{key}": {json.dumps(value, ensure_ascii=False)}')
    return ("{\n" + ",\n".join(lines) + "\n}\n").encode()


def all_files():
    """Path -> bytes."""
    files = {}
    for folder, module in FOLDERS.items():
        made, index = module.files()
        files.update({HERE / folder / name: data for name, data in made.items()})
        files[HERE / folder / "index.json"] = index_text(index)
    return files


def same(path, data):
    """PNG files may be packed in another way."""
    there = path.read_bytes()
    if path.suffix == ".png" and there != data:
        return pattern_vectors.rows_of(there) == pattern_vectors.rows_of(data)
    return there == data


def check(files):
    there = {path for folder in FOLDERS for path in (HERE / folder).iterdir()}
    wrong = [path for path in sorted(there ^ files.keys())]
    wrong += [path for path in sorted(there & files.keys()) if not same(path, files[path])]
    for path in wrong:
        print(f"{path.relative_to(HERE)} is not what make_vectors.py writes", file=sys.stderr)
    return 1 if wrong else 0


def write(files):
    for folder in FOLDERS:
        (HERE / folder).mkdir(exist_ok=True)
        for path in (HERE / folder).iterdir():
            path.unlink()
    for path, data in files.items():
        path.write_bytes(data)
    return 0


if __name__ == "__main__":
    sys.exit(check(all_files()) if sys.argv[1:] == ["--check"] else write(all_files()))
