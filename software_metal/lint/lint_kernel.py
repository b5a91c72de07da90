#!/usr/bin/env python3
"""Rules of the Metal language that the software device's compiler does not hold.

usage: lint_kernel.py CLANG KERNEL

Prints a finding a line and ends with 1 when there are any. Two looks at the text: at the syntax tree
that clang makes of it behind ../language/prelude.h, and the text compiled once more as C++ for
OpenCL, whose address spaces are checked more strictly than clang's own.
"""
import json
import pathlib
import re
import subprocess
import sys
import tempfile

HERE = pathlib.Path(__file__).resolve().parent
LANGUAGE = HERE.parent / "language"

TREE_FLAGS = ["-std=c++14", "-fsyntax-only", "-nostdinc++", "-fno-exceptions", "-fno-rtti",
              "-DMETAL_LINT", "-I", str(LANGUAGE), "-Wno-unknown-attributes", "-Werror=vla",
              "-Werror=double-promotion", "-Werror=float-conversion",
              "-Werror=conditional-uninitialized", "-Werror=uninitialized"]
OPENCL_FLAGS = ["-x", "clcpp", "-cl-std=clc++2021", "-target", "spir64", "-fsyntax-only",
                "-Xclang", "-cl-ext=-__opencl_c_pipes,-__opencl_c_device_enqueue,-cl_khr_fp64,"
                "-__opencl_c_fp64",
                "-include", str(HERE / "opencl.h"), "-I", str(LANGUAGE),
                "-Wno-unknown-attributes"]

NOT_IN_THE_LANGUAGE = {"LambdaExpr", "BlockExpr", "GotoStmt", "IndirectGotoStmt", "AddrLabelExpr",
                       "CXXNewExpr", "CXXDeleteExpr", "CXXThrowExpr", "CXXTryStmt", "StmtExpr",
                       "CXXDynamicCastExpr", "CXXTypeidExpr", "GCCAsmStmt", "StringLiteral"}
PRAGMAS = ("#pragma METAL fp contract(off)", "#pragma STDC FP_CONTRACT OFF")
CASTS = {"CStyleCastExpr", "CXXReinterpretCastExpr", "CXXStaticCastExpr", "CXXConstCastExpr"}
# The tree spells a qualifier either as its macro or as the attribute behind it.
SPACE = re.compile(r"address_space\((\d)\)|\b(device|constant|threadgroup)\b")
SPACE_NAMES = {"1": "device", "2": "constant", "3": "threadgroup"}
FOREIGN_WORDS = re.compile(r"\b(?:unsigned\s+long|signed\s+long|long\s+long|__(?!builtin_offsetof)\w+)\b")


def type_of(node):
    return (node.get("type") or {}).get("qualType", "")


def is_float(node):
    """Whether a value is a float, a half, or a vector of them."""
    written = (node.get("type") or {}).get("desugaredQualType", type_of(node))
    return re.search(r"\b(float|half|_Float16)\d?\b", written) is not None


def has_product(node):
    """Whether a float product stands in an expression outside calls."""
    if node.get("kind") in ("CallExpr", "CXXMemberCallExpr", "ArraySubscriptExpr"):
        return False
    if node.get("kind") == "BinaryOperator" and node.get("opcode") == "*" and is_float(node):
        return True
    return any(has_product(child) for child in node.get("inner", []))


def spaces(type_name):
    return [SPACE_NAMES.get(number, name) for number, name in SPACE.findall(type_name)]


def lacks_space(type_name):
    """Whether something pointed or referred to has no address space; `thread` shows as volatile."""
    targets = re.split(r"[*&]+", type_name.replace("(&)", "&").replace("(*)", "*"))[:-1]
    return any(not SPACE.search(t) and "volatile" not in t for t in targets)


class Tree:
    """Walks the kernel text's part of a syntax tree and collects findings."""

    def __init__(self):
        self.findings = []
        self.calls = {}

    def say(self, what):
        if what not in self.findings:
            self.findings.append(what)

    def visit(self, node, function, top):
        kind = node.get("kind")
        if kind in (None, "StaticAssertDecl") or node.get("isImplicit"):
            return
        if kind == "FunctionDecl":
            function = node.get("name")
            self.calls.setdefault(function, set())
        self.check_declaration(node, kind, function, top)
        self.check_expression(node, kind, function)
        inner_top = top and kind in ("NamespaceDecl", "LinkageSpecDecl")
        for child in node.get("inner", []):
            self.visit(child, function, inner_top)

    def check_declaration(self, node, kind, function, top):
        if kind not in ("ParmVarDecl", "VarDecl", "FieldDecl"):
            return
        name, written = node.get("name", "?"), type_of(node)
        if "(*" in written or re.search(r"\(&.*\)\(", written):
            self.say(f"{name}: function pointer")
        elif re.search(r"[*&]", written) and lacks_space(written):
            self.say(f"{name}: pointer or reference without an address space")
        in_constant = "constant" in spaces(written)
        if kind == "VarDecl" and top and not in_constant:
            self.say(f"{name}: a variable outside functions must be constant")
        if kind == "VarDecl" and function and node.get("storageClass") == "static" \
                and not in_constant:
            self.say(f"{name}: static variable of a function")

    def check_expression(self, node, kind, function):
        written = type_of(node)
        if kind in NOT_IN_THE_LANGUAGE:
            self.say(f"not in the language: {kind}")
        if kind in CASTS and "*" in written:
            self.check_cast(node, written)
        if kind == "FloatingLiteral" and written not in ("float", "_Float16", "half"):
            self.say("a literal without the suffix f")
        if node.get("opcode") in ("+", "-", "+=", "-=") and is_float(node) \
                and function != "mulAdd" and has_product(node):
            self.say(f"{function}: a product and a sum of floats in one expression; write mulAdd")
        if kind == "DeclRefExpr" and function:
            target = node.get("referencedDecl") or {}
            if target.get("kind") == "FunctionDecl":
                self.calls[function].add(target["name"])

    def check_cast(self, node, written):
        if lacks_space(written):
            self.say("cast to a pointer without an address space")
        source = type_of((node.get("inner") or [{}])[0])
        if "*" in source and spaces(source) != spaces(written):
            self.say("cast to another address space")

    def find_recursion(self):
        for start in self.calls:
            seen, waiting = set(), list(self.calls[start])
            while waiting:
                name = waiting.pop()
                if name == start:
                    self.say(f"{start}: recursion")
                if name not in seen:
                    seen.add(name)
                    waiting += self.calls.get(name, ())


def tree_findings(clang, text):
    with tempfile.TemporaryDirectory() as folder:
        source = pathlib.Path(folder, "kernel.cpp")
        source.write_text(f'#include "prelude.h"\n#line 1 "program_source"\n{text}')
        run = subprocess.run([clang, *TREE_FLAGS, "-Xclang", "-ast-dump=json", str(source)],
                             capture_output=True, text=True, check=False)
    if run.returncode:
        return errors(run.stderr)
    declarations = json.loads(run.stdout)["inner"]
    # The text begins behind the prelude's last declaration.
    names = [node.get("name") for node in declarations]
    tree = Tree()
    for node in declarations[names.index("metal_long") + 1:]:
        tree.visit(node, None, True)
    tree.find_recursion()
    return tree.findings


def pragma_findings(plain):
    """Without these lines Apple's compiler rounds a product and a sum of one expression once."""
    before_code = plain.partition("{")[0]
    return [f"not above the code: {pragma}" for pragma in PRAGMAS
            if pragma + "\n" not in before_code]


def opencl_findings(clang, path):
    run = subprocess.run([clang, *OPENCL_FLAGS, path], capture_output=True, text=True, check=False)
    return errors(run.stderr) if run.returncode else []


def errors(words):
    return re.findall(r"error: (.*)", words) or ["the compiler failed: " + words]


def main(clang, path):
    text = pathlib.Path(path).read_text(encoding="ascii")
    plain = re.sub(r"//[^\n]*|/\*.*?\*/", "", text, flags=re.S)
    findings = [f"word not allowed: {word}" for word in FOREIGN_WORDS.findall(plain)]
    findings += pragma_findings(plain)
    findings += tree_findings(clang, text) + opencl_findings(clang, path)
    for finding in findings:
        print(finding)
    return 1 if findings else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
