"""Draws what tintwell_compare prints as bars: chart.py < RESULT.csv > CHART.svg"""

import csv
import sys
from html import escape

WIDTH, LABEL, BAR, GAP, TOP = 760, 170, 18, 6, 34
OURS, THEIRS = "#2a7f9e", "#b8b8b8"


def bars(rows, top):
    """One block of bars; lengths by the square root of the time, so that the short ones can be seen."""
    longest = max(float(row["ns/pixel"]) for row in rows) ** 0.5
    for index, row in enumerate(rows):
        y = top + index * (BAR + GAP)
        time = float(row["ns/pixel"])
        length = (WIDTH - LABEL - 180) * time**0.5 / longest
        colour = OURS if row["name"].startswith("tintwell") else THEIRS
        yield (f'<text x="{LABEL - 8}" y="{y + 13}" text-anchor="end">{escape(row["name"])}</text>'
               f'<rect x="{LABEL}" y="{y}" width="{length:.1f}" height="{BAR}" fill="{colour}"/>'
               f'<text x="{LABEL + length + 6:.1f}" y="{y + 13}">{time:.2f} ns'
               f' ({float(row["by memcpy"]):.1f} x memcpy)</text>')


def cell_of(row):
    return f'{row["work"]}, {row["depth"]}, {row["points"]} points, {row["colours"]}'


def main():
    rows = list(csv.DictReader(sys.stdin))
    parts, top = [], 10
    for cell in dict.fromkeys(cell_of(row) for row in rows):
        block = [row for row in rows if cell_of(row) == cell]
        parts.append(f'<text x="{LABEL}" y="{top + 18}" font-weight="bold">{cell},'
                     ' ns a pixel (root scale)</text>')
        parts.extend(bars(block, top + TOP))
        top += TOP + len(block) * (BAR + GAP) + 14
    print(f'<svg xmlns="http://www.w3.org/2000/svg" width="{WIDTH}" height="{top}"'
          ' font-family="sans-serif" font-size="13">')
    print('<rect width="100%" height="100%" fill="white"/>')
    print("\n".join(parts))
    print("</svg>")


if __name__ == "__main__":
    main()
