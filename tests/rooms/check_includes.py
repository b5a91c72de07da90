"""Fails for an include that rooms.txt does not allow: check_includes.py ROOT [--table].

--table prints instead which folder includes which, and how often.
"""

import collections
import pathlib
import re
import sys

INCLUDE = re.compile(r'^\s*#\s*(?:include|import)\s+"([^"]+)"', re.MULTILINE)
SOURCES = {".h", ".cpp", ".mm", ".inc"}


def read_rooms(path):
    """Folder -> the folders that it may include; None for all."""
    rooms = {}
    for line in path.read_text(encoding="utf-8").splitlines():
        if line and not line.startswith("#"):
            room, _, allowed = line.partition(":")
            rooms[room] = None if allowed.strip() == "*" else set(allowed.split())
    unknown = {name for allowed in rooms.values() for name in allowed or ()} - rooms.keys()
    if unknown:
        raise SystemExit(f"rooms.txt: no room {', '.join(sorted(unknown))}")
    return rooms


def room_of(file, rooms):
    folders = [room for room in rooms if file.startswith(room + "/")]
    return max(folders, key=len, default=None)


def target_of(root, source, name):
    """The included file as a path below the root; None where the tree has none such."""
    for base in (root, source.parent):
        if (base / name).is_file():
            return (base / name).resolve().relative_to(root).as_posix()
    return None


def arrows(root, rooms):
    """(source, its room, the included file, its room) of every include within the tree."""
    for top in sorted({room.split("/")[0] for room in rooms}):
        for source in sorted((root / top).rglob("*")):
            if source.suffix not in SOURCES:
                continue
            file = source.relative_to(root).as_posix()
            for name in INCLUDE.findall(source.read_text(encoding="utf-8")):
                target = target_of(root, source, name)
                if target:
                    yield file, room_of(file, rooms), target, room_of(target, rooms)


def main(root, *options):
    root = pathlib.Path(root).resolve()
    rooms = read_rooms(pathlib.Path(__file__).with_name("rooms.txt"))
    seen, wrong = collections.Counter(), []
    for file, room, target, other in arrows(root, rooms):
        if room is None or other is None:
            wrong.append(f"{file if room is None else target}: stands in no room of rooms.txt")
        elif room != other:
            seen[room, other] += 1
            if rooms[room] is not None and other not in rooms[room]:
                wrong.append(f'{file}: {room} may not include {other} ("{target}")')
    if "--table" in options:
        for (room, other), count in sorted(seen.items()):
            print(f"{room:20} -> {other:20} {count}")
        return 0
    unused = [f"rooms.txt: {room} does not include {other}" for room, allowed in rooms.items()
              for other in sorted(allowed or ()) if not seen[room, other]]
    print("\n".join(sorted(set(wrong)) + unused))
    return 1 if wrong or unused else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
