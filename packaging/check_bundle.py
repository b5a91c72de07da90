#!/usr/bin/env python3
"""Checks the shape of Tintwell.plugin, wherever it was built, on any system.

usage: check_bundle.py Tintwell.plugin [--identity FILE.json]

The identity file holds what the effect itself told a host (see packaging/print_identity.cpp); without
it the PiPL is compared with the property list and packaging/identity.json only.
"""

import argparse
import json
import plistlib
import re
import sys
from pathlib import Path

import macho
from code_signature import BadSignature, check_signature
from read_pipl import BadResource, read_pipl

ROOT = Path(__file__).resolve().parent.parent
MIN_SYSTEM = "11.0"
# Pages of memory are 16 KiB on Arm and 4 KiB on Intel: a slice must begin on one.
ALIGNMENT = {"arm64": 14, "x86_64": 12}


class Refused(Exception):
    """Why the bundle is not as it must be."""


def need(condition, what):
    if not condition:
        raise Refused(what)


def export_patterns():
    """From packaging/exports.txt: line -> pattern of its symbols."""
    lines = (ROOT / "packaging/exports.txt").read_text("ascii").splitlines()
    patterns = {}
    for line in lines:
        scoped = re.fullmatch(r"(\w+)::(\w+)", line)
        if scoped:
            space, name = scoped.groups()
            patterns[line] = rf"__ZN{len(space)}{space}{len(name)}{name}[EB].*"
        elif re.match(r"[A-Za-z]", line):
            patterns[line] = "_" + re.escape(line)
    return patterns


def listed_imports():
    """From the import lists: (processor, library) -> symbols."""
    listed = {}
    for path in (ROOT / "macos_check/sysroot").rglob("*.tbd"):
        text = path.read_text("ascii")
        library = re.search(r"^install-name: '(.+)'", text, re.M).group(1)
        sections = r"- targets: \[(.*)\]\n    (symbols|objc-classes):\n((?:      - .*\n)+)"
        for targets, kind, block in re.findall(sections, text):
            prefix = "_OBJC_CLASS_$_" if kind == "objc-classes" else ""
            names = {prefix + name for name in re.findall(r"- '?([^'\s]+)'?\n", block)}
            for processor in re.findall(r"(\w+)-macos", targets):
                listed.setdefault((processor, library), set()).update(names)
    return listed


def check_exports(found):
    patterns = export_patterns()
    extra = [name for name in sorted(found.exports)
             if not any(re.fullmatch(pattern, name) for pattern in patterns.values())]
    need(not extra, f"{found.processor}: exported but not listed: {', '.join(extra)}")
    missing = [line for line, pattern in patterns.items()
               if not any(re.fullmatch(pattern, name) for name in found.exports)]
    need(not missing, f"{found.processor}: listed but not exported: {', '.join(missing)}")


def check_imports(found, listed):
    for library in found.libraries:
        need((found.processor, library) in listed, f"{found.processor}: needs {library}")
    for library, name in sorted(found.imports):
        need(name in listed.get((found.processor, library), ()),
             f"{found.processor}: {name} of {library} is imported but not listed")


def check_kernel(found):
    """Each processor's slice carries the GPU kernel that rounds as its own row kernels do."""
    fused = {"arm64": 1, "x86_64": 0}[found.processor]
    for value in (0, 1):
        need(found.data.count(b"#define TW_FUSED_MUL_ADD %d\n" % value) == (value == fused),
             f"{found.processor}: the GPU kernel of another processor")


def check_slice(found, listed, read_file):
    where = found.processor + ": "
    need(found.file_type == macho.BUNDLE, where + "no loadable bundle")
    need(found.flags & macho.NO_UNDEFINED, where + "undefined symbols")
    need(found.flags & macho.TWO_LEVEL, where + "imports from any library (flat name space)")
    need(found.align >= ALIGNMENT[found.processor], where + "slice begins inside a page")
    need(found.platform == macho.MACOS, where + "not for macOS")
    need(found.min_system == MIN_SYSTEM, where + f"for macOS {found.min_system} and later")
    check_exports(found)
    check_imports(found, listed)
    check_kernel(found)
    signature = check_signature(found.data, found.signature, read_file)
    return (f"{found.processor}: bundle for macOS {found.min_system}, {len(found.exports)} exports, "
            f"{len(found.imports)} imports, signature: {signature}")


def check_code(data, read_file):
    slices = macho.read_universal(data)
    need(sorted(found.processor for found in slices) == sorted(ALIGNMENT),
         "slices: " + ", ".join(found.processor for found in slices))
    listed = listed_imports()
    return [check_slice(found, listed, read_file) for found in slices]


def check_property_list(info, package_info, pipl):
    need((info["CFBundlePackageType"] + info["CFBundleSignature"]).encode() == package_info,
         "PkgInfo and Info.plist disagree")
    need(package_info == b"eFKTFXTC", "PkgInfo names another kind of plug-in")
    need(info["CFBundleIdentifier"] == "org.tintwell.effect", "another bundle identifier")
    need(info["LSMinimumSystemVersion"] == MIN_SYSTEM, "Info.plist is for another macOS")
    # 1.0 build 11 is told by the version word's bits: major 19-21, minor 15-18, build 0-8.
    word = pipl["eVER"]
    told = f"{word >> 19 & 7}.{word >> 15 & 15}", str(word & 511)
    need((info["CFBundleShortVersionString"], info["CFBundleVersion"]) == told,
         "Info.plist and PiPL are of different versions")


def check_pipl(pipl, identity):
    """`identity` in the form of packaging/identity.json."""
    number = lambda key: int(identity[key], 0)
    wanted = {
        "kind": "eFKT", "name": identity["name"], "catg": identity["category"],
        "mi64": identity["entry_point"], "ma64": identity["entry_point"],
        "ePVR": (2, 0), "eSVR": tuple(identity["spec_version"]), "eVER": number("version"),
        "eINF": 0, "eGLO": number("out_flags"), "eGL2": number("out_flags2"),
        "eMNA": identity["match_name"], "aeFL": number("reserved_info"),
        "eURL": identity["support_url"],
    }
    for key in wanted.keys() | pipl.keys():
        need(pipl.get(key) == wanted.get(key),
             f"PiPL property {key} is {pipl.get(key)!r} instead of {wanted.get(key)!r}")


def check_bundle(bundle, identities):
    """Returns lines that say what was found. Throws Refused, or what the readers throw."""
    contents = Path(bundle) / "Contents"

    def read_file(path):
        file = contents / path
        return file.read_bytes() if file.is_file() else None

    def read_needed(path):
        data = read_file(path)
        need(data is not None, f"no {path}")
        return data

    info = plistlib.loads(read_needed("Info.plist"))
    executable = info["CFBundleExecutable"]
    pipl = read_pipl(read_needed(f"Resources/{executable}.rsrc"))
    check_property_list(info, read_needed("PkgInfo"), pipl)
    for identity in identities:
        check_pipl(pipl, identity)
    lines = check_code(read_needed(f"MacOS/{executable}"), read_file)
    return lines + [f"PiPL: {len(pipl)} properties agree with {len(identities)} source(s)"]


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("bundle")
    parser.add_argument("--identity", action="append", default=[])
    arguments = parser.parse_args()
    paths = [ROOT / "packaging/identity.json", *arguments.identity]
    identities = [json.loads(Path(path).read_text("ascii")) for path in paths]
    try:
        print("\n".join(check_bundle(arguments.bundle, identities)))
    except (Refused, macho.BadMachO, BadSignature, BadResource) as reason:
        sys.exit(f"{arguments.bundle}: {reason}")


if __name__ == "__main__":
    main()
