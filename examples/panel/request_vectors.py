"""Edit requests as a panel finds them."""
import re

from told import name_told

LONGEST = 599
TIME = 1732100000000


def line(number, name, at=TIME):
    """What the effect writes, before it is cut."""
    escaped = name.replace(b"\\", b"\\\\").replace(b'"', b'\\"')
    return b'{"id":%d,"name":"%s","at":%d}\n' % (number, escaped, at)


WHOLE = re.compile(rb'\{"id":([1-9]\d*),"name":"((?:[^"\\]|\\.)*)","at":(-?\d+)\}\n', re.DOTALL)

def can_become_whole(contents):
    last = b'{"id":1,"name":"","at":1}\n'
    return any(WHOLE.fullmatch(contents + more + last[at:])
               for at in range(len(last)) for more in (b"", b"x"))


def read(contents):
    """What a panel makes of the file. Not a JSON reader: names hold line feeds as they are."""
    whole = WHOLE.fullmatch(contents)
    if whole:
        return {"state": "whole", "id": whole[1].decode(), **name_told(unescaped(whole[2])),
                "at": whole[3].decode()}
    if not can_become_whole(contents) or len(contents) > LONGEST:
        return {"state": "foreign"}
    return {"state": "unfinished"} if len(contents) < LONGEST else read_cut(contents)


def read_cut(contents):
    number, rest = re.match(rb'\{"id":(\d+),"name":"(.*)', contents, re.DOTALL).groups()
    told = {"state": "cut", "id": number.decode()}
    name = re.match(rb'((?:[^"\\]|\\.)*)"', rest, re.DOTALL)
    if name:
        told.update(name_told(unescaped(name[1])))
        at = re.fullmatch(rb',"at":(-?\d+)\}', rest[name.end():])
        if at:
            told["at"] = at[1].decode()
    return told


def unescaped(name):
    return re.sub(rb"\\(.)", rb"\1", name, flags=re.DOTALL)


def written():
    """Name, what it is about, and what the effect was asked to write."""
    yield "plain", "an ordinary request", (42, b"Dusk")
    yield "second_press", "the same match again: only the time differs", (42, b"Dusk", TIME + 1500)
    yield "no_name", "a LUT without name", (42, b"")
    yield "largest_id", "more than a double can tell apart", (2**63 - 1, b"Dusk")
    yield "utf8", "a name in UTF-8", (42, "Abend – «Köln» ☀".encode())
    yield "no_utf8", "a name that is no UTF-8", (42, b"a\xff\x80")
    yield "quotes", "quotes and backslashes", (42, b'"a" \\ \\"b\\"')
    yield "last_backslash", "a backslash before the closing quote", (42, b"C:\\looks\\")
    yield "line_feed", "a line feed as it is, which JSON refuses", (42, b"two\nlines")
    yield "control_characters", "control characters as they are", (42, bytes(range(1, 32)))
    yield "end_in_name", "a name that looks like the end", (42, b"a}\n")
    yield "members_in_name", "a name that looks like members", (42, b'","at":1}\n{"id":43,"name":"b')
    yield "cut_in_name", "399 quotes: cut in the name", (42, b'"' * 399)
    yield "cut_in_escape", "cut between a backslash and its quote", (42, b"a" * 19 + b'"' * 380)
    yield "whole_599", "as long as can be", (42, b"n" * 560)
    yield "cut_of_line_feed", "one longer: the line feed is lost", (42, b"n" * 561)
    yield "cut_of_brace", "two longer: the time may have lost digits", (42, b"n" * 562)
    yield "cut_in_time", "cut in the time", (42, b"n" * 570)
    yield "cut_behind_sign", "cut in a time before 1970", (42, b"n" * 574, -TIME)
    yield "cut_behind_name", "cut behind the name's quote", (42, b"n" * 581)
    yield "cut_before_quote", "cut before that quote: the name may go on", (42, b"n" * 582)


def others():
    yield "empty", "the effect has opened the file and not written yet", b""
    yield "unfinished_id", "the id may have more digits", b'{"id":4'
    yield "unfinished_name", "half a name", b'{"id":42,"name":"Du'
    yield "unfinished_name_with_end", "half a name that looks like the end", b'{"id":42,"name":"a}\n'
    yield "unfinished_escape", "half an escape", b'{"id":42,"name":"a\\'
    yield "unfinished_time", "half a time", b'{"id":42,"name":"Dusk","at":17321'
    yield "unfinished_line", "all but the line feed", line(42, b"Dusk")[:-1]
    yield "other_text", "no request", b"hello\n"
    yield "other_json", "no request", b'{"match":42}\n'
    yield "no_match", "an id below 1 is never written", line(0, b"Dusk")
    yield "two_lines", "the file is replaced whole: two lines are no request", line(1, b"a") + line(2, b"b")


def files():
    made = {}
    index = {"about": "contents of edit-request.json and what a panel makes of them", "requests": []}
    for name, about, asked in written():
        contents = line(*asked)[:LONGEST]
        made[f"{name}.request"] = contents
        number, title, at = (*asked, TIME)[:3]
        index["requests"].append({"file": f"{name}.request", "about": about, **read(contents), "written_for": {
            "id": str(number), "name_bytes": title.hex(), "at": str(at)}})
    for name, about, contents in others():
        made[f"{name}.request"] = contents
        index["requests"].append({"file": f"{name}.request", "about": about, **read(contents)})
    return made, index
