"""What the check toolchain has to refuse: tried with a source each, against one that it accepts.

usage: toolchain_test.py CLANG++ [unittest's arguments]
"""

import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

CHECK = Path(__file__).resolve().parents[2] / "macos_check"
FLAGS = ["--target=arm64-apple-macos11", "-arch", "arm64", "-arch", "x86_64", "-std=c++20",
         f"-B{CHECK}/toolchain_bin", "-isystem", f"{CHECK}/libcxx", "-isysroot", f"{CHECK}/sysroot",
         "-bundle", "-fuse-ld=lld", "-x", "c++", "-"]


def build(source):
    """Compiles and links for both processors; returns what the tools complain of."""
    with tempfile.TemporaryDirectory() as work:
        done = subprocess.run([COMPILER, *FLAGS, "-o", f"{work}/bundle"], input=source,
                              capture_output=True, text=True, check=False)
        assert (done.returncode == 0) == Path(work, "bundle").exists()
        return done.stderr


class Toolchain(unittest.TestCase):
    def test_accepts_what_the_system_has(self):
        self.assertEqual(build("#include <cstdlib>\nconst char* home() { return std::getenv(\"HOME\"); }"), "")

    def test_refuses_a_library_feature_that_is_newer_than_the_target(self):
        source = "#include <charconv>\nauto put(char* to, double v) { return std::to_chars(to, to + 9, v); }"
        self.assertIn("'to_chars' is unavailable", build(source))

    def test_refuses_an_import_that_is_not_listed(self):
        source = "#include <cstdlib>\nint run() { return std::system(\"true\"); }"
        self.assertIn("undefined symbol", build(source))

    def test_refuses_a_header_that_only_linux_has(self):
        self.assertIn("'malloc.h' file not found", build("#include <malloc.h>"))


if __name__ == "__main__":
    COMPILER = sys.argv.pop(1)
    unittest.main()
