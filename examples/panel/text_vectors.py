"""TWLUT texts: what a reader makes of them, and what a writer writes."""
import base64
import re
import struct

from float32 import fused, single
from told import name_told, number_told

NO_TEXT = "parameter does not hold TWLUT text"
BAD_PATTERN = "bad calibration pattern size"
NOT_FORM3 = "not a Tintwell LUT (expected TWLUT3 <id> <name> <size> <lo> <hi> <data>)"
NOT_A_LUT = "not a Tintwell LUT (expected TWLUT2 <id> <size> <lo> <hi> <data>)"
BAD_SIZE = "LUT size out of range"
TRUNCATED = "LUT data is truncated"

# Possessive throughout: a scan never takes a step back.
INT = r"\s*+([+-]?+\d++)"
FLOAT = r"\s*+([+-]?+(?:\d++\.?+\d*+|\.\d++)(?:[eE][+-]?+\d++)?+)"
FORM3 = re.compile(rf"TWLUT3{INT}\s*+(\S{{1,399}}+){INT}{FLOAT}{FLOAT}\s*+")
FORM2 = re.compile(rf"TWLUT2{INT}{INT}{FLOAT}{FLOAT}\s*+")
FORM1 = re.compile(rf"TWLUT1{INT}{FLOAT}{FLOAT}\s*+")
ALPHABET = re.compile(r"[^A-Za-z0-9+/=]")
IDENTITY = [float(axis >> bit & 1) for axis in range(8) for bit in range(3)]
RAMP = [q * 2849 for q in range(24)]  # 24 codes, 0 to 65527


# ---- Reading

def decode_name(text):
    if text == "-":
        return b""
    name, at = bytearray(), 0
    while at < len(text):
        digits = re.match(r"%([0-9A-Fa-f]{1,2})", text[at:at + 3])
        if digits and at + 2 < len(text):
            name.append(int(digits[1], 16))
            at += 3
        else:
            name += text[at].encode("latin-1")
            at += 1
    return bytes(name)


def decode_samples(text, count, lo, hi):
    """The samples, or fewer than `count` where the data end."""
    data = ALPHABET.sub("", text).split("=")[0]
    whole = base64.b64decode(data + "A" * (-len(data) % 4))[:len(data) * 6 // 8]
    codes = [low | high << 8 for low, high in zip(whole[0::2], whole[1::2])][:count]
    step = single(single(hi - lo) / 65535)
    return [fused(float(q), step, lo) for q in codes]


def lut(text, number, name, header):
    size, lo, hi = int(header[-3]), single(float(header[-2])), single(float(header[-1]))
    if not 2 <= size <= 129:
        return {"reads": "nothing", "message": BAD_SIZE}
    samples = decode_samples(text, size ** 3 * 3, lo, hi)
    if len(samples) < size ** 3 * 3:
        return {"reads": "nothing", "message": TRUNCATED}
    return {"reads": "lut", "id": str(number), **name_told(name), "size": size,
            "samples": [number_told(value) for value in samples]}


def read_text(text):
    if text.startswith("TWLUT0"):
        return {"reads": "none"}
    if text.startswith("TWLUTP"):
        number = re.match(rf"TWLUTP{INT}", text[:96])
        if not number or not 2 <= int(number[1]) <= 64:
            return {"reads": "nothing", "message": BAD_PATTERN}
        return {"reads": "pattern", "size": int(number[1])}
    if text.startswith("TWLUT3"):
        found = FORM3.match(text[:96]) or FORM3.match(text[:1200])
        if not found:
            return {"reads": "nothing", "message": NOT_FORM3}
        return lut(text[found.end():], int(found[1]), decode_name(found[2]), found.groups())
    found = FORM2.match(text[:96]) if text.startswith("TWLUT2") else FORM1.match(text[:96])
    if not found:
        return {"reads": "nothing", "message": NOT_A_LUT}
    number = int(found[1]) if text.startswith("TWLUT2") else 0
    return lut(text[found.end():], number, b"", found.groups())


def read_value(value):
    """What the effect makes of the bytes of its LUT parameter."""
    if len(value) >= 6 and value.startswith(b"TWLUT"):
        return read_text(value.decode("latin-1"))
    if len(value) >= 10 and value.startswith("TWLUT".encode("utf-16-le")):
        if not any(value[1:len(value) // 2 * 2:2]):
            return read_text(value[0:len(value) // 2 * 2:2].decode("latin-1"))
    return {"reads": "nothing"} if len(value) < 6 else {"reads": "nothing", "message": NO_TEXT}


# ---- Writing

def encode_name(name):
    kept = b"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~"
    return "".join(chr(byte) if byte in kept else f"%{byte:02X}" for byte in name) or "-"


def encode_codes(codes):
    return base64.b64encode(struct.pack(f"<{len(codes)}H", *codes)).decode()


def write_text(number, name, size, samples):
    lo, hi = min(samples), max(samples)
    if not hi > lo:
        hi = single(lo + 1.0)
    scale = 65535 / (hi - lo)
    codes = [min(max(int(scale * (value - lo) + 0.5), 0), 65535) for value in samples]
    return (f"TWLUT3 {number} {encode_name(name.encode())} {size} {lo:.9g} {hi:.9g} "
            + encode_codes(codes))


# ---- The vectors

def form3(number=42, name="Dusk", size=2, lo="0", hi="1", data=None):
    return f"TWLUT3 {number} {name} {size} {lo} {hi} " + (encode_codes(RAMP) if data is None else data)


def texts():
    data = encode_codes(RAMP)
    yield "none", "no LUT", "TWLUT0"
    yield "none_and_more", "what follows the sixth character does not count", "TWLUT0 whatever"
    for size in (2, 64):
        yield f"pattern_{size}", "the calibration pattern", f"TWLUTP {size}"
    for size in (1, 65):
        yield f"pattern_{size}", "a size that there is not", f"TWLUTP {size}"
    yield "pattern_without_size", "no size", "TWLUTP"
    yield "form1", "the oldest form: neither match nor name", f"TWLUT1 2 0 1 {data}"
    yield "form2", "a match without name", f"TWLUT2 42 2 0 1 {data}"
    yield "form3", "the form that is written", form3()
    yield "identity", "every colour stays", write_text(1, "Identity", 2, IDENTITY)
    yield "id_none", "no match", form3(number=0)
    yield "id_largest", "more than a double can tell apart", form3(number=2**63 - 1)
    yield "id_negative", "below 1: Edit LUT does not ask for it", form3(number=-7)
    yield "name_empty", "a hyphen is the empty name", form3(name="-")
    yield "name_utf8", "UTF-8, percent-encoded", form3(name=encode_name("Abend – «Köln» ☀".encode()))
    yield "name_quotes", "quotes and a backslash", form3(name="%22a%22%5C")
    yield "name_line_feed", "a line feed", form3(name="a%0Ab")
    yield "name_lower_case", "escapes of either case", form3(name="%c3%A9")
    yield "name_half_escape", "a % that begins no escape stands for itself", form3(name="%zz%4")
    yield "name_one_digit", "of an escape with one good digit the rest is lost", form3(name="a%4zb")
    yield "name_no_utf8", "bytes that are no UTF-8", form3(name="a%FF%80")
    yield "name_399", "the longest name", form3(name="n" * 399)
    yield "name_399_escaped", "the longest name: 133 quotes", form3(name="%22" * 133)
    yield "name_400", "one character more: the rest of the name is taken for the size", form3(name="n" * 400)
    yield "range_wide", "values below 0 and above 1", form3(lo="-0.5", hi="2.25")
    yield "range_narrow", "codes closer than a float tells apart", form3(lo="1", hi="1.0000001")
    yield "range_equal", "every value is lo", form3(lo="0.25", hi="0.25")
    yield "range_falls", "hi below lo: values run backwards", form3(lo="1", hi="0")
    yield "range_exponents", "numbers with exponents", form3(lo="-1.5e-05", hi="6.5e4")
    yield "range_digits", "nine digits", form3(lo="0.100000001", hi="0.899999976")
    yield "range_cut_at_96", ("a header that ends inside hi at 96 characters: hi is what stands before, the "
                              "data begin behind"), form3(name="n" * 74, lo="0", hi="0.50") + "A" * 8
    yield "header_of_95", "a header just below 96 characters", form3(name="n" * 76)
    yield "header_of_100", "a header above 96 characters is read again", form3(name="n" * 81)
    yield "size_1", "fewer points than a LUT has", form3(size=1)
    yield "size_130", "more points than the text may have", form3(size=130)
    yield "size_3_truncated", "the data of two points, the size says three", form3(size=3)
    yield "data_one_short", "one character is missing", form3(data=data[:-1])
    yield "data_none", "no data", form3(data="")
    yield "data_padded_early", "the data end at the first =", form3(data=data[:40] + "=" + data[41:])
    yield "data_broken", "characters outside the alphabet are passed over", form3(
        data=data[:7] + "\r\n" + data[7:30] + " -_" + data[30:])
    yield "data_and_more", "what follows the last value does not count", form3(data=data + "AAAA and more")
    yield "data_and_zero", "a terminator does not count", form3() + "\0"
    yield "fields_on_lines", "any white space between fields", form3().replace(" ", "\n\t")
    yield "form3_without_name", "a field is missing", f"TWLUT3 42 2 0 1 {data}"
    yield "form2_without_id", "a field is missing", f"TWLUT2 2 0 1 {data}"
    yield "form4", "a form that there is not", "TWLUT4 42 Dusk 2 0 1 " + data
    yield "mark_alone", "nothing behind the mark", "TWLUT "


def values():
    """Name, what it is about, and bytes of the LUT parameter."""
    for name, about, text in texts():
        yield name, about, text.encode("latin-1").decode("latin-1").encode("utf-16-le")
    yield "none_8_bit", "8-bit text is understood too", b"TWLUT0"
    yield "form3_8_bit", "8-bit text is understood too", form3().encode()
    yield "odd_byte", "a last byte that is no unit is dropped", form3().encode("utf-16-le") + b"A"
    yield "big_endian", "units with the high byte first are not understood", form3().encode("utf-16-be")
    yield "byte_order_mark", "nor is a byte-order mark", form3().encode("utf-16")
    yield "unit_above_255", "nor a unit above 255", form3(name="a").replace(" a ", " \u0101 ").encode("utf-16-le")
    yield "other_text", "another text", b"LUT_3D_SIZE 2\n"
    yield "five_bytes", "too short for any text; no message", b"TWLUT"
    yield "nothing", "no bytes; no message", b""


def written():
    """What a panel has, and the text that it writes."""
    def entry(about, number, name, samples, size=2):
        samples = [single(float(value)) for value in samples]
        return {"about": about, "id": str(number), "name": name, "size": size,
                "samples": [number_told(value) for value in samples],
                "text": write_text(number, name, size, samples)}
    yield entry("the identity", 42, "Identity", IDENTITY)
    yield entry("no name", 42, "", IDENTITY)
    yield entry("a name with a blank and a slash", 42, "a b/c", IDENTITY)
    yield entry("a name in UTF-8", 9007199254740993, "Köln ☀", IDENTITY)
    yield entry("values outside 0 and 1", 1, "wide", [value * 2.75 - 0.5 for value in IDENTITY])
    yield entry("all values equal: hi is lo + 1", 1, "grey", [0.5] * 24)
    yield entry("values between codes", 1, "sines", [(7 * at % 24) ** 2 / 529 for at in range(24)])
    yield entry("halves of a code are rounded away from zero", 1, "halves",
                [0, 1] + [(at + 0.5) / 65535 for at in range(22)])
    yield entry("small values", 1, "small", [at * 1e-6 for at in range(24)])
    yield entry("three points", 1, "three", [level / 2 for blue in range(3) for green in range(3)
                                             for red in range(3) for level in (red, green, blue)], 3)


def files():
    """Name -> bytes, and what stands in the index."""
    made = {}
    index = {"about": "bytes of the LUT parameter and what the effect reads; texts that a panel writes",
             "values": [], "written": list(written())}
    for name, about, value in values():
        made[f"{name}.bin"] = value
        index["values"].append({"file": f"{name}.bin", "about": about, **read_value(value)})
    return made, index
