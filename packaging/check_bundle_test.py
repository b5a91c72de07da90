"""Holds the built bundle against packaging/check_bundle.py, whole and with one fault at a time.

usage: check_bundle_test.py Tintwell.plugin [unittest's arguments]
"""

import json
import plistlib
import shutil
import struct
import sys
import tempfile
import unittest
from hashlib import sha256
from pathlib import Path

HERE = Path(__file__).resolve().parent
ROOT = HERE.parent
sys.path.insert(0, str(HERE))

import remake  # noqa: E402
from check_bundle import Refused, check_bundle  # noqa: E402
from code_signature import BadSignature  # noqa: E402
from macho import BadMachO  # noqa: E402
from make_pipl import pipl, resource_file  # noqa: E402

IDENTITY = json.loads((ROOT / "packaging/identity.json").read_text("ascii"))
ARM, INTEL = 0x0100000C, 0x01000007
PIPL = "Resources/Tintwell.rsrc"
CODE = "MacOS/Tintwell"
SEAL = "_CodeSignature/CodeResources"


def replaced(data, old, new):
    assert data.count(old) >= 1 and len(old) == len(new)
    return data.replace(old, new)


def build_version(data):
    at = 32
    while struct.unpack_from("<I", data, at)[0] != 0x32:
        at += struct.unpack_from("<I", data, at + 4)[0]
    return at


class Case(unittest.TestCase):
    def setUp(self):
        work = tempfile.TemporaryDirectory()
        self.addCleanup(work.cleanup)
        self.bundle = Path(work.name) / "Tintwell.plugin"
        shutil.copytree(BUNDLE, self.bundle)

    def read(self, path):
        return (self.bundle / "Contents" / path).read_bytes()

    def write(self, path, data):
        file = self.bundle / "Contents" / path
        file.parent.mkdir(exist_ok=True)
        file.write_bytes(data)

    def check(self, identity=IDENTITY):
        return check_bundle(self.bundle, [identity])

    def refused(self, reason, kind=Refused, **arguments):
        with self.assertRaisesRegex(kind, reason):
            self.check(**arguments)

    def change_code(self, edit, specials=()):
        """`specials` are what a signature of the whole bundle covers beside the code."""
        shutil.rmtree(self.bundle / "Contents/_CodeSignature", ignore_errors=True)
        self.write(CODE, remake.change(self.read(CODE), edit, specials))

    def edit_slice(self, processor, edit):
        self.change_code(lambda kind, data: edit(data) if kind == processor else data)


class Code(Case):
    def test_the_bundle_as_built_is_accepted(self):
        lines = self.check()
        self.assertRegex(lines[0], r"^(x86_64|arm64): bundle for macOS 11.0, ")
        self.assertEqual(len(lines), 3)

    def test_remade_and_signed_without_a_fault_is_accepted(self):
        self.change_code(lambda kind, data: data)
        self.assertEqual(len(self.check()), 3)

    def test_a_changed_byte_is_refused_wherever_it_is(self):
        whole = self.read(CODE)
        count = struct.unpack_from(">I", whole, 4)[0]
        for i in range(count):
            offset, size = struct.unpack_from(">2I", whole, 8 + 20 * i + 8)
            for place in (offset + 0x4321, offset + size // 2):
                data = bytearray(whole)
                data[place] ^= 1
                self.write(CODE, bytes(data))
                with self.subTest(slice=i, place=place):
                    self.refused("does not match its hash", BadSignature)

    def test_a_missing_slice_is_refused(self):
        for kept in remake.split(self.read(CODE)):
            self.write(CODE, remake.join([kept]))
            self.refused("^slices: (x86_64|arm64)$")
            shutil.copy(BUNDLE / "Contents" / CODE, self.bundle / "Contents" / CODE)

    def test_a_file_of_one_processor_is_refused(self):
        self.write(CODE, remake.split(self.read(CODE))[0][2])
        self.refused("no universal file", BadMachO)

    def test_the_kernel_of_another_processor_is_refused(self):
        name = b"#define TW_FUSED_MUL_ADD "
        for kind, own, other in ((ARM, b"1", b"0"), (INTEL, b"0", b"1")):
            self.edit_slice(kind, lambda data: replaced(data, name + own, name + other))
            self.refused(f"{'arm64' if kind == ARM else 'x86_64'}: the GPU kernel of another processor")
            shutil.copy(BUNDLE / "Contents" / CODE, self.bundle / "Contents" / CODE)

    def test_a_cut_file_is_refused(self):
        self.write(CODE, self.read(CODE)[:-0x8000])
        self.refused("a slice lies badly in the file", BadMachO)

    def test_an_export_that_is_not_listed_is_refused(self):
        self.edit_slice(INTEL, lambda data: replaced(data, b"ffectMain\0", b"ffectMaim\0"))
        self.refused("^x86_64: exported but not listed: _EffectMaim$")

    def test_an_import_that_is_not_listed_is_refused(self):
        self.edit_slice(ARM, lambda data: replaced(data, b"_localtime_r\0", b"_localtime_x\0"))
        self.refused("^arm64: _localtime_x of /usr/lib/libSystem.B.dylib is imported but not li")

    def test_a_foreign_library_is_refused(self):
        self.edit_slice(ARM, lambda data: replaced(data, b"/usr/lib/libc++.1", b"/opt/lib/libc++.1"))
        self.refused("^arm64: needs /opt/lib/libc\\+\\+.1.dylib$")

    def test_another_kind_of_file_is_refused(self):
        self.edit_slice(INTEL, lambda data: data[:12] + struct.pack("<I", 6) + data[16:])
        self.refused("^x86_64: no loadable bundle$")

    def test_wrong_header_flags_are_refused(self):
        for flag, reason in ((0x1, "undefined symbols"), (0x80, "flat name space")):
            flags = lambda data: struct.unpack_from("<I", data, 24)[0] & ~flag
            self.change_code(lambda kind, data: data[:24] + struct.pack("<I", flags(data)) + data[28:])
            self.refused(reason)
            shutil.copy(BUNDLE / "Contents" / CODE, self.bundle / "Contents" / CODE)

    def test_another_system_is_refused(self):
        def put(offset, value):
            def edit(data):
                at = build_version(data) + offset
                return data[:at] + struct.pack("<I", value) + data[at + 4:]
            return edit
        self.edit_slice(ARM, put(12, 12 << 16))
        self.refused("^arm64: for macOS 12.0 and later$")
        self.edit_slice(ARM, put(8, 2))
        self.refused("^arm64: not for macOS$")


class Signature(Case):
    """Of the whole bundle, as codesign makes it."""

    def seal(self):
        files = {path: {"hash2": sha256(self.read(path)).digest()} for path in (PIPL,)}
        seal = plistlib.dumps({"files2": files})
        self.change_code(lambda kind, data: data, (self.read("Info.plist"), b"", seal))
        self.write(SEAL, seal)

    def test_a_sealed_bundle_is_accepted(self):
        self.seal()
        self.assertIn("bundle sealed", self.check()[0])

    def test_each_file_under_the_seal_is_looked_at(self):
        for path, reason in (("Info.plist", "Info.plist does not match its hash"),
                             (PIPL, f"{PIPL} does not match its hash"),
                             (SEAL, "CodeResources does not match its hash")):
            self.seal()
            original = self.read(path)
            # Still a readable property list or PiPL: only the hash can tell.
            changed = original + b"\n" if path != PIPL else original[:200] + b"\1" + original[201:]
            self.write(path, changed)
            with self.subTest(path):
                self.refused(reason, BadSignature)
            self.write(path, original)

    def test_a_lost_seal_is_refused(self):
        self.seal()
        (self.bundle / "Contents" / SEAL).unlink()
        self.refused("CodeResources is signed but missing", BadSignature)

    def test_a_seal_that_nobody_signed_is_refused(self):
        self.seal()
        seal = self.read(SEAL)
        self.change_code(lambda kind, data: data)
        self.write(SEAL, seal)
        self.refused("CodeResources is not signed", BadSignature)

    def test_code_without_a_signature_is_refused(self):
        def strip(data):
            at = remake.signature_command(data)
            return data[:at] + struct.pack("<I", 0x29) + data[at + 4:]
        slices = [(kind, sub, strip(data)) for kind, sub, data in remake.split(self.read(CODE))]
        self.write(CODE, remake.join(slices))
        self.refused("no signature", BadSignature)


class Description(Case):
    def write_pipl(self, **changes):
        self.write(PIPL, resource_file(b"PiPL", 16000, pipl({**IDENTITY, **changes})))

    def test_wrong_flags_and_names_in_the_pipl_are_refused(self):
        for changes, key in (({"out_flags": "0x4000401"}, "eGLO"), ({"out_flags2": "0"}, "eGL2"),
                             ({"match_name": "TNWL Tintwelk"}, "eMNA"), ({"name": "T"}, "name"),
                             ({"entry_point": "EffectMaim"}, "m[ai]64"),
                             ({"spec_version": [13, 28]}, "eSVR")):
            self.write_pipl(**changes)
            with self.subTest(key):
                self.refused(f"^PiPL property {key} is ")

    def test_other_values_told_by_the_effect_are_refused(self):
        self.refused("^PiPL property eGL2 is 134217728 instead of 134217729$",
                     identity={**IDENTITY, "out_flags2": "0x8000001"})

    def test_a_version_other_than_the_property_lists_is_refused(self):
        self.write_pipl(version="0x8000C")
        self.refused("of different versions")

    def test_a_wrong_package_type_is_refused(self):
        self.write("PkgInfo", b"eFKTFXTD")
        self.refused("PkgInfo and Info.plist disagree")

    def test_wrong_entries_of_the_property_list_are_refused(self):
        for key, value, reason in (("CFBundleIdentifier", "org.tintwell", "another bundle identi"),
                                   ("LSMinimumSystemVersion", "12.0", "for another macOS"),
                                   ("CFBundleVersion", "12", "of different versions"),
                                   ("CFBundlePackageType", "BNDL", "PkgInfo and Info.plist")):
            info = plistlib.loads((BUNDLE / "Contents/Info.plist").read_bytes())
            self.write("Info.plist", plistlib.dumps({**info, key: value}))
            with self.subTest(key):
                self.refused(reason)

    def test_a_missing_part_is_refused(self):
        for path in (PIPL, "PkgInfo", CODE):
            data = self.read(path)
            (self.bundle / "Contents" / path).unlink()
            self.refused(f"^no {path}$")
            self.write(path, data)


if __name__ == "__main__":
    BUNDLE = Path(sys.argv.pop(1))
    unittest.main()
