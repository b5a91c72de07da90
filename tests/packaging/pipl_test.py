"""make_pipl.py against bytes written down by hand, and read_pipl.py against good and bad files."""

import json
import sys
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "packaging"))

from make_pipl import atom, pipl, resource_file  # noqa: E402
from read_pipl import BadResource, read_pipl  # noqa: E402

IDENTITY = json.loads((ROOT / "packaging/identity.json").read_text("ascii"))

# The whole resource, property by property.
PIPL = bytes.fromhex(
    "00000000" "0000000e"
    "3842494d" "6b696e64" "00000000" "00000004" "65464b54"
    "3842494d" "6e616d65" "00000000" "00000009" "0854696e7477656c6c" "000000"
    "3842494d" "63617467" "00000000" "00000011" "10436f6c6f7220436f7272656374696f6e" "000000"
    "3842494d" "6d693634" "00000000" "0000000b" "0a4566666563744d61696e" "00"
    "3842494d" "6d613634" "00000000" "0000000b" "0a4566666563744d61696e" "00"
    "3842494d" "65505652" "00000000" "00000004" "00020000"
    "3842494d" "65535652" "00000000" "00000004" "000d001d"
    "3842494d" "65564552" "00000000" "00000004" "0008000b"
    "3842494d" "65494e46" "00000000" "00000002" "0000" "0000"
    "3842494d" "65474c4f" "00000000" "00000004" "04000400"
    "3842494d" "65474c32" "00000000" "00000004" "08000000"
    "3842494d" "654d4e41" "00000000" "0000000e" "0d544e574c2054696e7477656c6c" "0000"
    "3842494d" "6165464c" "00000000" "00000004" "00000008"
    "3842494d" "6555524c" "00000000" "00000021"
    "2068747470733a2f2f74696e7477656c6c2e6578616d706c652f737570706f7274" "000000")

# Where the data and the map are and how long: 256, 256 + 4 + 372, 4 + 372, 50.
HEADER = bytes.fromhex("00000100" "00000278" "00000178" "00000032")
MAP = HEADER + bytes.fromhex(
    "00000000" "0000" "0000"            # set by the system when the file is open
    "001c" "0032"                       # type list, name list
    "0000" "5069504c" "0000" "000a"     # one type, PiPL, one of it, its references
    "3e80" "ffff" "00000000" "00000000")


def written():
    return resource_file(b"PiPL", 16000, pipl(IDENTITY))


class Writer(unittest.TestCase):
    def test_the_resource_has_exactly_these_bytes(self):
        self.assertEqual(pipl(IDENTITY).hex(), PIPL.hex())

    def test_the_file_is_header_data_and_map(self):
        data = len(PIPL).to_bytes(4, "big") + PIPL
        self.assertEqual(written().hex(), (HEADER + bytes(240) + data + MAP).hex())

    def test_a_text_of_256_characters_is_refused(self):
        with self.assertRaisesRegex(ValueError, "longer than 255 characters"):
            pipl({**IDENTITY, "name": "x" * 256})


class Reader(unittest.TestCase):
    def refused(self, raw, reason):
        with self.assertRaisesRegex(BadResource, reason):
            read_pipl(raw)

    def with_body(self, body, reason, kind=b"PiPL", number=16000):
        self.refused(resource_file(kind, number, body), reason)

    def test_reads_what_the_writer_wrote(self):
        self.assertEqual(read_pipl(written()), {
            "kind": "eFKT", "name": "Tintwell", "catg": "Color Correction",
            "mi64": "EffectMain", "ma64": "EffectMain", "ePVR": (2, 0), "eSVR": (13, 29),
            "eVER": 0x8000B, "eINF": 0, "eGLO": 0x4000400, "eGL2": 0x8000000,
            "eMNA": "TNWL Tintwell", "aeFL": 8, "eURL": "https://tintwell.example/support"})

    def test_refuses_every_shorter_file(self):
        whole = written()
        for size in range(len(whole)):
            with self.assertRaises(BadResource, msg=f"{size} bytes"):
                read_pipl(whole[:size])

    def test_refuses_a_header_that_the_map_does_not_repeat(self):
        raw = bytearray(written())
        raw[-50 + 15] ^= 1
        self.refused(bytes(raw), "header copy differs")

    def test_refuses_other_resources(self):
        self.with_body(PIPL, "0 PiPL resources", kind=b"pipl")
        self.with_body(PIPL, "number is 16001", number=16001)

    def test_refuses_a_wrong_version_and_a_wrong_count(self):
        self.with_body(b"\0\0\0\1" + PIPL[4:], "unknown PiPL version")
        self.with_body(PIPL[:7] + b"\x0d" + PIPL[8:], "bytes after the PiPL's last property")
        self.with_body(PIPL[:7] + b"\x0f" + PIPL[8:], "the PiPL ends early")

    def test_refuses_badly_made_properties(self):
        one = lambda data: b"\0\0\0\0\0\0\0\1" + data
        two = lambda data: b"\0\0\0\0\0\0\0\2" + data
        good = atom(b"eVER", b"\0\0\0\1")
        for data, reason in (
                (one(b"8BIN" + good[4:]), "another vendor"),
                (one(good[:11] + b"\1" + good[12:]), "has a number"),
                (one(atom(b"eINF", b"\0\0")[:-1] + b"\1"), "filled with other than 0"),
                (one(atom(b"name", b"\5four")), "no length and text"),
                (one(atom(b"name", b"")), "no length and text"),
                (one(atom(b"ePVR", b"\0\2")), "no two short numbers"),
                (two(good + good), "stands twice")):
            with self.subTest(reason):
                self.with_body(data, reason)


if __name__ == "__main__":
    unittest.main()
