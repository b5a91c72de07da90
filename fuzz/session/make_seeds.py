#!/usr/bin/env python3
"""Writes the hand-made sessions into fuzz/corpus/session; with --check fails if they differ.

script.h says how bytes become a session. The functions below write one command each, with the
choices in the order in which the command of that letter (steps.cpp) asks for them."""

import pathlib
import struct
import sys

CORPUS = pathlib.Path(__file__).resolve().parent.parent / "corpus" / "session"
END, AS_IT_IS = 0xFF, 0xFE

PREMIERE, AFTER_EFFECTS = 0, 1
IDS = {0: 0, 1: 1, 7: 2, -1: 3, 2**31: 4, 2**63 - 1: 5}
NULL, INSTANCE, HELD = 0, 1, 2  # as chosen among all values while there is one instance


def record(letter, *parts):
    body = bytearray(letter)
    for part in parts:
        body += bytes([part]) if isinstance(part, int) else part
    escaped = bytearray()
    for byte in body:
        escaped += bytes([AS_IT_IS, byte]) if byte in (END, AS_IT_IS) else bytes([byte])
    return bytes(escaped) + bytes([END])


# How the host starts: the application, what goes wrong meanwhile, and at which call.
def host(application, trouble=0, nth=1):
    return record(b"", application, trouble, nth - 1)


# Texts, after makeText.
def raw(text):
    return bytes([0]) + text


NONE = bytes([1])


def pattern(n):
    return bytes([2, n])


def named(size, seed, identity, name):
    return bytes([3, size - 2, seed, IDS[identity]]) + name


def older(size, seed, identity=None):
    return bytes([4, size - 2, seed, identity is not None, IDS[identity or 0]])


CUT, INSERT, OVERWRITE, ERASE = 1, 2, 3, 4


def spoilt(how, at, patch=b"", size=2):
    return bytes([5, size - 2, 1, IDS[7], how]) + struct.pack("<H", at) + patch


# Bytes, after makeBytes.
def raw_bytes(data):
    return bytes([0]) + data


def narrow(text):
    return bytes([1]) + text


def big_endian(text):
    return bytes([2]) + text


def odd(text):
    return bytes([3]) + text


def wide(text):
    return bytes([4]) + text


# Contents of files, after makeCube.
def cube(text):
    return bytes([0]) + text


def whole_cube(size=2, seed=3, identity=7):
    return bytes([1, size - 2, seed, IDS[identity]])


def spoilt_cube(how, at, patch=b""):
    return bytes([2, 0, 3, IDS[7], how]) + struct.pack("<H", at) + patch


# Commands.
def apply():
    return record(b"A")


CANCEL, MISSING, FOLDER = bytes([0]), bytes([1]), bytes([2])


def file(name, contents):
    return bytes([3, len(name)]) + name + contents


def press(picked, instance=0):
    return record(b"B", instance, picked)


def copy(value):
    return record(b"C", value)


def dispose(held=0):
    return record(b"D", held)


def edit(instance=0):
    return record(b"E", instance)


# How a buffer's size differs from the right one.
def larger(count):
    return 1 + 4 * count


def smaller(count):
    return 2 + 4 * count


def just(count):
    return 3 + 4 * count


def flatten(value, size=0):
    return record(b"F", value, size)


SOUND, ODD, WEAK = b"\0", b"\6\0", b"\6\1"


# Only the first one in a session has a side: the second device's framework, the third's weakness.
def gpu(odd_values=0, values=b"", device=SOUND, frame=b"", side=b"\2\0"):
    return record(b"G", 0, side, device, odd_values, values, frame)


def duplicate(instance=0):
    return record(b"H", instance)


def interpolate(left, right, at=0.5):
    return record(b"I", left, right, struct.pack("<d", at))


def save_and_load(instance=0):
    return record(b"J", instance)


def compare(a, b):
    return record(b"K", a, b)


def label(instance=0):
    return record(b"L", instance)


AMOUNTS = {100: 0, 50.1: 1, 0: 2, -20: 3, 250: 4, "infinite": 5, "huge": 6, "tiny": 7, "none": 8}


def amount(which, instance=0):
    return record(b"M", instance, AMOUNTS[which])


def amount_of(value, instance=0):
    return record(b"M", instance, 9, struct.pack("<d", value))


def create():
    return record(b"N")


def other(command, instance=0):
    return record(b"O", command, instance)


def print_text(value, size=0):
    return record(b"P", value, size)


def press_nothing(index, instance=0):
    return record(b"Q", instance, index + 1)


BGRA8, BGRA32F, BGRA16, ARGB8 = range(4)
BOTTOM_UP, WIDE_ROWS, TALL = 1, 8, 16


# A frame of so many pixels; part: 1 upper field, 2 lower field.
def frame(width, height, layout=0, part=0):
    parts = bytes([part]) if width > 0 and (height > 1 or layout & TALL) else b""
    return bytes([width, height, layout]) + parts


def render(pixels, given, made=None, wild=False, seed=1, instance=0):
    in_place = made is None
    return record(b"R", instance, pixels, in_place, wild, given, seed, made or b"")


def scan(text, into=None):
    place = [0] if into is None else [1, into]
    return record(b"S", *place, text)


def set_bytes(data, instance=0):
    return record(b"T", instance, data)


def unflatten(data, into=None):
    place = [0] if into is None else [1, into]
    return record(b"U", 0, *place, data)


def unflatten_null():
    return record(b"U", 7)


def set_null(instance=0):
    return record(b"V", instance)


def unknown_selector(beyond, negative=False):
    return record(b"W", beyond, negative)


ALLOCATION, LOCK, RESIZE, REPLACE, PARAM_UTILS, PIXEL_FORMATS, BASIC, SUITE_ERRORS = range(8)


def refuse(what, nth=1, as_null=False):
    return record(b"X", what, nth - 1, as_null)


def remove(instance=0):
    return record(b"Y", instance)


def lut_folder(text):
    return record(b"Z", 0, text)


def lut_folder_in_home(text):
    return record(b"Z", 1, text)


LOOK = named(3, 5, 7, b"Dusk 100%")
SMALL = frame(5, 4)
CUBE = b"LUT_3D_SIZE 2\n" + b"0.5 0.25 1\n" * 8


def setup_sessions():
    yield "setup-registration-refused", host(PREMIERE, 1, 3)
    for nth in (2, 3):
        yield f"setup-parameter-{nth}-refused", host(AFTER_EFFECTS, 2, nth)
    yield "setup-without-memory", host(PREMIERE, 3) + copy(INSTANCE) + label() + flatten(INSTANCE)
    yield "setup-without-lock", host(PREMIERE, 4) + copy(INSTANCE) + print_text(INSTANCE)
    yield "setup-formats-hidden", host(PREMIERE, 5) + render(BGRA32F, SMALL, SMALL)
    yield "setup-formats-null", host(PREMIERE, 6) + render(BGRA8, SMALL, SMALL)
    yield "setup-without-suites", host(PREMIERE, 7) + label()


def value_sessions():
    start = host(AFTER_EFFECTS)
    yield "values-of-none", (start + create() + copy(NULL) + flatten(NULL) + unflatten_null()
                             + compare(NULL, NULL) + compare(NULL, INSTANCE) + print_text(NULL)
                             + interpolate(NULL, INSTANCE) + dispose() + dispose())
    yield "values-of-a-look", (start + scan(LOOK, into=0) + copy(INSTANCE) + compare(INSTANCE, HELD)
                               + flatten(HELD) + print_text(INSTANCE) + interpolate(HELD, NULL)
                               + dispose(1) + save_and_load())
    sizes = (smaller(1), larger(9), just(0), just(1), just(11))
    yield "values-sizes", start + scan(LOOK, into=0) + b"".join(
        flatten(INSTANCE, size) + print_text(INSTANCE, size) for size in sizes)
    forms = (wide(NONE), narrow(NONE), narrow(LOOK), big_endian(LOOK), odd(LOOK),
             raw_bytes(b"TWLUTx"), raw_bytes(b"TWLUT0   "), raw_bytes(b"TWLUT rest"), raw_bytes(b""))
    yield "values-unflatten", start + b"".join(
        unflatten(form) + copy(HELD) + print_text(HELD) + dispose() + dispose() for form in forms)
    yield "values-from-outside", start + b"".join(
        set_bytes(form) + copy(INSTANCE) + flatten(INSTANCE) + label() for form in forms)
    yield "values-unflatten-into", start + b"".join(unflatten(form, into=0) for form in forms)
    yield "values-held-many", start + create() * 10 + copy(5) + dispose(3) + compare(3, 4)
    texts = (NONE, pattern(2), pattern(64), pattern(65), pattern(1), LOOK, older(2, 1),
             older(3, 2, 7), raw(b""), raw(b"TWLUT"), raw(b"TWLUT4 1"), raw(b"TWLUT3 1 - 130 0 1 "),
             raw(b"TWLUT3 1 %4 2 nan inf AAAA"), named(2, 1, 2**63 - 1, b"a\0b\nc"))
    yield "scan-texts", start + b"".join(scan(text) for text in texts)
    yield "scan-texts-into", start + b"".join(scan(text, into=0) + label() for text in texts)
    yield "scan-spoilt", start + b"".join((
        scan(spoilt(CUT, 30)), scan(spoilt(INSERT, 7, b"-")), scan(spoilt(ERASE, 5, b"\2")),
        scan(spoilt(OVERWRITE, 40, b"====")), scan(spoilt(INSERT, 27, b" " * 80))))
    yield "scan-long-name", start + scan(named(2, 1, 7, b"n" * 399), into=0) + label() + edit()
    yield "unknown-selectors", start + unknown_selector(0) + unknown_selector(200, True)


def instance_sessions():
    start = host(PREMIERE)
    yield "instances", (start + apply() + scan(LOOK, into=1) + duplicate(1) + duplicate(0) + apply()
                        + remove(1) + label(1) + remove(0) + remove(0) + remove(0) + label())
    yield "instances-saved", (start + scan(LOOK, into=0) + amount(50.1) + save_and_load()
                              + set_null() + save_and_load() + compare(1, 2))
    yield "instances-null", start + set_null() + label() + edit() + render(BGRA8, SMALL, SMALL)
    yield "other-commands", start + b"".join(other(command) for command in range(46))


def render_sessions():
    start = host(PREMIERE) + scan(LOOK, into=0)
    sizes = ((0, 0), (0, 5), (5, 0), (1, 1), (7, 3), (8, 8))
    yield "render-sizes", start + b"".join(
        render(BGRA8, frame(w, h), frame(h, w)) for w, h in sizes)
    yield "render-float-sizes", start + b"".join(
        render(BGRA32F, frame(w, h), frame(h, w), wild=True) for w, h in sizes)
    yield "render-layouts", start + b"".join(
        render(pixels, frame(6, 5, layout), frame(6, 5, layout ^ BOTTOM_UP))
        for pixels in (BGRA8, BGRA32F)
        for layout in (0, BOTTOM_UP, 6, 0xE0, WIDE_ROWS, WIDE_ROWS | BOTTOM_UP))
    yield "render-tall", start + render(BGRA8, frame(3, 8, TALL), frame(3, 7, TALL)) + render(
        BGRA32F, frame(3, 1, TALL))
    yield "render-fields", start + b"".join(
        render(BGRA8, frame(6, 7, 0, part), frame(6, 7, 0, part)) for part in (1, 2))
    yield "render-in-place", start + render(BGRA8, SMALL) + render(BGRA32F, SMALL)
    yield "render-foreign-formats", start + render(BGRA16, SMALL, SMALL) + render(ARGB8, SMALL)
    yield "render-amounts", start + b"".join(
        amount(which) + render(BGRA8, SMALL, SMALL) + render(BGRA32F, SMALL, SMALL)
        for which in AMOUNTS)
    yield "render-pattern", host(PREMIERE) + scan(pattern(17), into=0) + amount(0) + render(
        BGRA8, frame(8, 8, TALL)) + render(BGRA32F, SMALL, frame(1, 8))
    yield "render-undecodable", host(PREMIERE) + set_bytes(wide(raw(b"TWLUT3 1 x"))) + render(
        BGRA8, SMALL, SMALL) + set_bytes(raw_bytes(b"no LUT")) + render(BGRA8, SMALL, SMALL)
    yield "render-after-effects", host(AFTER_EFFECTS) + scan(LOOK, into=0) + render(
        ARGB8, frame(7, 7), frame(5, 8, BOTTOM_UP)) + amount_of(12.5) + render(ARGB8, SMALL)


def press_sessions():
    start = host(PREMIERE)
    yield "press-answers", start + b"".join(
        press(answer) for answer in (CANCEL, MISSING, FOLDER, file(b"look.cube", whole_cube()),
                                     file(b"a \"b\\.x.cube", whole_cube(3, 9, 0))))
    files = (b"", b"\0", b"LUT_1D_SIZE 2\n", b"LUT_3D_SIZE 1\n", b"LUT_3D_SIZE 2\n0 0\n", CUBE,
             CUBE.replace(b"\n", b"\r\n"), CUBE + b"DOMAIN_MAX 1 1 2\n", CUBE + b"1 1 1\n",
             CUBE.replace(b"0.25", b"nan"), b"\xef\xbb\xbf" + CUBE, b"# Tintwell match -1\n" + CUBE)
    yield "press-files", start + b"".join(press(file(b"f.cube", cube(text))) for text in files)
    yield "press-spoilt-files", start + press(file(b"s", spoilt_cube(CUT, 60))) + press(
        file(b"s", spoilt_cube(INSERT, 52, b"LUT_3D_SIZE 3\n"))) + press(
        file(b"s", spoilt_cube(OVERWRITE, 60, b"x"))) + press(file(b"s", spoilt_cube(ERASE, 70, b"\3")))
    names = (b"\xc0\xaf..\xc0\xaf", b"\xf0\x9f\x8e\xa8.cube", b"\xe2\x82", b"a\xc0\xc0b.cube",
             b"%s%n", b".", b"a\nb.cube")
    yield "press-names", start + b"".join(
        press(file(name, whole_cube())) + label() + edit() for name in names)
    yield "press-over-a-look", (start + set_null() + press(file(b"n.cube", whole_cube())) + edit()
                                + scan(LOOK, into=0) + edit() + print_text(INSTANCE)
                                + press(file(b"n.cube", whole_cube(2, 1, 1))) + edit())
    yield "press-nothing", start + b"".join(press_nothing(index) for index in (-1, 0, 1, 2))
    yield "press-folders", start + lut_folder(b"/tmp \r\n") + press(CANCEL) + lut_folder_in_home(
        b"\n") + press(CANCEL) + lut_folder(b"\0\xf0/nowhere") + press(CANCEL)
    yield "edit-ids", start + b"".join(
        scan(named(2, 1, identity, b'Say "\\" %'), into=0) + edit() for identity in IDS)


def refusal_sessions():
    start = host(PREMIERE) + scan(LOOK, into=0)
    one_of_each = (create(), copy(INSTANCE), flatten(INSTANCE), interpolate(INSTANCE, NULL),
                   compare(INSTANCE, INSTANCE), print_text(INSTANCE), scan(LOOK), unflatten(wide(LOOK)))
    for what, name in ((ALLOCATION, "allocation"), (LOCK, "lock")):
        yield f"refused-{name}-of-values", start + b"".join(
            refuse(what, nth) + command for nth in (1, 2) for command in one_of_each)
    pressed = press(file(b"n.cube", whole_cube()))
    yield "refused-locks-of-instances", start + b"".join(
        refuse(LOCK, nth) + command for nth in (1, 2, 3)
        for command in (label(), edit(), render(BGRA8, SMALL, SMALL), pressed, duplicate()))
    yield "refused-presses", start + refuse(RESIZE) + pressed + refuse(REPLACE) + pressed + refuse(
        ALLOCATION) + pressed + set_null() + refuse(ALLOCATION) + pressed + refuse(LOCK) + pressed
    yield "refused-suites", start + b"".join(
        refuse(what, 1, as_null) + command
        for what in (PARAM_UTILS, PIXEL_FORMATS, BASIC, SUITE_ERRORS) for as_null in (False, True)
        for command in (label(), pressed, render(BGRA32F, SMALL, SMALL)))
    yield "refused-instances", start + refuse(ALLOCATION) + apply() + refuse(LOCK, 2) + duplicate(
        ) + refuse(ALLOCATION) + save_and_load() + refuse(LOCK) + save_and_load()


def gpu_sessions():
    start = host(PREMIERE)
    yield "gpu-none", start + gpu()
    yield "gpu-look", start + scan(LOOK, into=0) + gpu(frame=b"\0\6\4\1\3\5\0")
    yield "gpu-two-looks", start + scan(LOOK, into=0) + gpu(frame=b"\0\6\4\1\3\5\0") + scan(
        named(4, 9, 1, b""), into=0) + gpu(side=b"", frame=b"\0\7\3\1\0\0\1")
    yield "gpu-half-in-place", start + scan(LOOK, into=0) + gpu(frame=b"\1\6\4\1\3\5\1\1")
    yield "gpu-pattern", start + scan(pattern(5), into=0) + gpu(frame=b"\0\6\4\1\3\5\0")
    yield "gpu-hostile-block", start + gpu(2, b"\4" + wide(raw(b"TWLUT3 1 x 2 0 1 AAAA")))
    yield "gpu-null-block", start + gpu(3, b"\1\100\3" + raw_bytes(b""))
    yield "gpu-odd-types", start + gpu(3, b"\4\143\2")
    for faults, name in ((b"\1\2", "buffer-or-commands"), (b"\3\4", "encoder-or-execution")):
        yield f"gpu-without-{name}", start + scan(LOOK, into=0) + b"".join(
            gpu(side=side, frame=b"\0\6\4\1\3\5\0" + bytes([fault]))
            for fault, side in zip(faults, (b"\2\0", b"")))
    yield "gpu-weak-device", start + gpu(device=WEAK, side=b"\2\1") + gpu(device=ODD, side=b"")
    yield "gpu-without-suites", start + refuse(BASIC) + gpu()


def sessions():
    for group in (setup_sessions, value_sessions, instance_sessions, render_sessions, press_sessions,
                  refusal_sessions, gpu_sessions):
        yield from group()


def differences():
    for name, script in sessions():
        file_ = CORPUS / name
        if not file_.exists() or file_.read_bytes() != script:
            yield name


def main():
    if sys.argv[1:] == ["--check"]:
        stale = list(differences())
        if stale:
            sys.exit("not as make_seeds.py writes them: " + ", ".join(stale))
        return
    CORPUS.mkdir(parents=True, exist_ok=True)
    for name, script in sessions():
        (CORPUS / name).write_bytes(script)


if __name__ == "__main__":
    main()
