"""package_bundle.py on a small made-up bundle."""

import os
import sys
import tempfile
import unittest
import zipfile
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "packaging"))

from package_bundle import package  # noqa: E402


class Package(unittest.TestCase):
    def setUp(self):
        work = tempfile.TemporaryDirectory()
        self.addCleanup(work.cleanup)
        self.work = Path(work.name)
        self.bundle = self.work / "A.plugin"
        for name, mode in (("Contents/PkgInfo", 0o640), ("Contents/MacOS/A", 0o775)):
            file = self.bundle / name
            file.parent.mkdir(parents=True, exist_ok=True)
            file.write_text(name)
            file.chmod(mode)

    def packed(self):
        out = self.work / "out.zip"
        package(self.bundle, out)
        return out

    def test_holds_notes_and_bundle_with_their_modes(self):
        with zipfile.ZipFile(self.packed()) as archive:
            found = {entry.filename: (archive.read(entry), entry.external_attr >> 16)
                     for entry in archive.infolist()}
        note = lambda name: (ROOT / name).read_bytes()
        self.assertEqual(found, {
            "INSTALL.txt": (note("packaging/INSTALL.txt"), 0o100644),
            "uninstall.command": (note("packaging/uninstall.command"), 0o100755),
            "LICENSE": (note("LICENSE"), 0o100644),
            "NOTICES.md": (note("NOTICES.md"), 0o100644),
            "A.plugin/Contents/PkgInfo": (b"Contents/PkgInfo", 0o100644),
            "A.plugin/Contents/MacOS/A": (b"Contents/MacOS/A", 0o100755)})

    def test_is_the_same_file_again_later(self):
        first = self.packed().read_bytes()
        os.utime(self.bundle / "Contents/PkgInfo", (1, 1))
        self.assertEqual(self.packed().read_bytes(), first)


if __name__ == "__main__":
    unittest.main()
