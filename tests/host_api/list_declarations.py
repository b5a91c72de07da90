#!/usr/bin/env python3
"""Lists what host_api declares: every record with its fields, every constant.

usage: list_declarations.py CLANG PROJECT_ROOT OUTPUT

OUTPUT gets one C++ line each, DECLARED("record"), DECLARED("record.field") or DECLARED("constant"),
read from clang's syntax tree, so that the layout tables can be held against the headers themselves.
Fields of nested unnamed records stand under the outermost record.
"""
import json
import subprocess
import sys


def syntax_tree(clang, root):
    command = [clang, "-x", "c++", "-std=c++20", "-fsyntax-only", "-Xclang", "-ast-dump=json",
               "-I", root, "-"]
    text = "#include \"host_api/host_api.h\"\n"
    return json.loads(subprocess.run(command, input=text, text=True, check=True,
                                     stdout=subprocess.PIPE).stdout)


class Walker:
    """Collects names; clang names a file only where it differs from the last one it named."""

    def __init__(self, folder):
        self.folder = folder
        self.file = ""
        self.names = []

    def follow(self, position):
        for part in (position.get("spellingLoc", {}), position.get("expansionLoc", {}), position):
            self.file = part.get("file", self.file)

    def visit(self, node, record):
        self.follow(node.get("loc", {}))
        ours = self.file.startswith(self.folder) and not node.get("isImplicit")
        for end in ("begin", "end"):
            self.follow(node.get("range", {}).get(end, {}))
        if ours and "name" in node:
            record = self.note(node, record)
        for child in node.get("inner", []):
            self.visit(child, record)

    def note(self, node, record):
        kind, name = node["kind"], node["name"]
        if kind == "CXXRecordDecl" and node.get("completeDefinition") and not record:
            self.names.append(name)
            return name
        if kind == "FieldDecl":
            self.names.append(f"{record}.{name}")
        if kind == "EnumConstantDecl" or (kind == "VarDecl" and node.get("constexpr")):
            self.names.append(name)
        return record


def main(clang, root, output):
    walker = Walker(f"{root}/host_api/")
    walker.visit(syntax_tree(clang, root), "")
    with open(output, "w", encoding="utf-8") as file:
        file.writelines(f"DECLARED(\"{name}\")\n" for name in walker.names)


main(*sys.argv[1:])
