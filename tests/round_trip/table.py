"""The round trip's figures as tables: table.py RESULTS PAGE [--write].

RESULTS: a folder of NAME.json files that the tests wrote. PAGE: the document that holds the tables, between
its two marks. --write puts them there; without it the page's figures are compared with those that there are
results for, and a figure that is off by more than a tenth and 0.03 steps is an error.
"""
import json
import pathlib
import re
import sys

BEGIN, END = "<!-- figures: scripts/round-trip --table -->\n", "<!-- end of figures -->\n"
GRADES = ["Curves", "Lut3d", "Eq", "Hue", "Level", "Modulate", "Cdl"]
IN_8_BITS_ONLY = {"Eq", "Hue"}
FLOAT = ["Float_9", "Float_17", "Float_33", "Float_64"]
BYTES = ["8Bits_9", "8Bits_17", "8Bits_33", "Jpeg_33", "H264_33"]


def cell(result):
    return f"{result['mean']:.2f} ({result['largest']:.2f})" if result else "-"


def rows(results, kinds, grades):
    for grade in grades:
        found = [results.get(f"{grade}_{kind}") for kind in kinds]
        told = next(result for result in found if result)
        yield [told["program"], f"`{told['does']}`"] + [cell(result) for result in found]


def table(head, body):
    lines = [head, ["---"] * len(head)] + list(body)
    return "".join("| " + " | ".join(line) + " |\n" for line in lines)


def tables(results):
    floats = [grade for grade in GRADES if grade not in IN_8_BITS_ONLY]
    return (table(["float", "grade", "N = 9", "N = 17", "N = 33", "N = 64"], rows(results, FLOAT, floats))
            + "\n"
            + table(["8 bits", "grade", "N = 9", "N = 17", "N = 33", "N = 33, JPEG", "N = 33, H.264"],
                    rows(results, BYTES, GRADES)))


def figures(text):
    """Row by row, the numbers of its cells."""
    return {tuple(re.findall(r"`[^`]*`", line)) + (index,): [
                [float(number) for number in re.findall(r"\d+\.\d+", part)]
                for part in line.split("`")[-1].split("|")[1:-1]]
            for index, line in enumerate(text.splitlines()) if "`" in line}


def is_close(told, found):
    return len(told) == len(found) and all(
        abs(a - b) <= 0.03 + 0.1 * max(a, b) for a, b in zip(told, found))


def differences(told, found):
    if told.keys() != found.keys():
        return ["the page's rows are not those of the tests"]
    return [f"{row[0]}: {told[row][at]} on the page, {numbers} found"
            for row, cells in found.items() for at, numbers in enumerate(cells)
            if numbers and not is_close(told[row][at], numbers)]


def main(folder, page, *options):
    results = {file.stem: json.loads(file.read_text()) for file in pathlib.Path(folder).glob("*.json")}
    missing = [f"{grade}_{kind}" for grade in GRADES for kind in FLOAT[:3] + BYTES[:4]
               if not (grade in IN_8_BITS_ONLY and kind in FLOAT)
               if f"{grade}_{kind}" not in results]
    if missing:
        raise SystemExit("round trip: no figures of " + ", ".join(missing))
    page = pathlib.Path(page)
    text = page.read_text(encoding="utf-8")
    start, end = text.index(BEGIN) + len(BEGIN), text.index(END)
    found = tables(results)
    if "--write" in options:
        page.write_text(text[:start] + "\n" + found + "\n" + text[end:], encoding="utf-8")
        return 0
    wrong = differences(figures(text[start:end].strip()), figures(found))
    if wrong:
        print(f"{page}: scripts/round-trip --slow --table writes new figures", *wrong, sep="\n",
              file=sys.stderr)
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
