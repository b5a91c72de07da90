"""What bounds a farm of 1 to 10,000 nodes: a calculation from measured numbers, as a table and a chart.

usage: scale.py [--seconds 1.5] [--start 0.35] [--frame-mb 17] [--look-mb 7.4] [--chunk 20]
                [--slots 16] > docs/pictures/farm-scale.svg

--seconds   processor seconds of a frame, by race.py      --frame-mb  of input and output together
--start     processor seconds until the first frame       --look-mb   of a .cube file of 65 points
--chunk     frames a task                                 --slots     processors a node
"""

import argparse
import sys
from math import log10

NODES = [10 ** (step / 20) for step in range(81)]
SERVERS = {"1 GB/s": 1e3, "10 GB/s": 1e4, "100 GB/s": 1e5}  # MB/s
COLOURS = {"1 GB/s": "#b8552a", "10 GB/s": "#2a7f9e", "100 GB/s": "#4a8f3c"}
WIDTH, HEIGHT, LEFT, TOP, RIGHT, BOTTOM = 760, 420, 80, 20, 130, 50
POWERS = 5
MOST = 10**POWERS  # frames a second at the top of the chart


def rate(nodes, server, numbers):
    """Frames a second: what the processors do, or what the file server moves, whichever is less."""
    task = numbers.start + numbers.chunk * numbers.seconds
    processors = nodes * numbers.slots * numbers.chunk / task
    moved = server / (numbers.frame_mb + numbers.look_mb / numbers.chunk)
    return min(processors, moved)


def place(nodes, frames):
    x = LEFT + (WIDTH - LEFT - RIGHT) * log10(nodes) / 4
    y = HEIGHT - BOTTOM - (HEIGHT - TOP - BOTTOM) * log10(max(frames, 1)) / log10(MOST)
    return f"{x:.1f},{y:.1f}"


def chart(numbers):
    yield (f'<svg xmlns="http://www.w3.org/2000/svg" width="{WIDTH}" height="{HEIGHT}"'
           ' font-family="sans-serif" font-size="13">\n<rect width="100%" height="100%" fill="white"/>')
    for nodes in (1, 10, 100, 1000, 10000):
        x, y = place(nodes, 1).split(",")
        yield (f'<path d="M{x} {TOP}V{y}" stroke="#ddd"/>'
               f'<text x="{x}" y="{float(y) + 18}" text-anchor="middle">{nodes:,}</text>')
    for power in range(POWERS + 1):
        x, y = place(1, 10**power).split(",")
        yield (f'<path d="M{x} {y}H{WIDTH - RIGHT}" stroke="#ddd"/>'
               f'<text x="{float(x) - 8}" y="{float(y) + 4}" text-anchor="end">{10**power:,}</text>')
    for name, server in SERVERS.items():
        points = " ".join(place(nodes, rate(nodes, server, numbers)) for nodes in NODES)
        x, y = points.split()[-1].split(",")
        yield (f'<polyline points="{points}" fill="none" stroke="{COLOURS[name]}" stroke-width="2.5"/>'
               f'<text x="{float(x) + 8}" y="{float(y) + 4}" fill="{COLOURS[name]}">server {name}</text>')
    yield (f'<text x="{(LEFT + WIDTH - RIGHT) / 2}" y="{HEIGHT - 10}" text-anchor="middle">nodes of'
           f' {numbers.slots} processors</text><text transform="translate(16 {HEIGHT / 2}) rotate(-90)"'
           ' text-anchor="middle">frames a second</text>\n</svg>')


def table(numbers):
    yield "| nodes | " + " | ".join(f"server {name}" for name in SERVERS) + " |"
    yield "|---" * (len(SERVERS) + 1) + "|"
    for nodes in (1, 10, 100, 1000, 10000):
        rates = (rate(nodes, server, numbers) for server in SERVERS.values())
        yield f"| {nodes:,} | " + " | ".join(f"{frames:,.0f}" for frames in rates) + " |"


def main():
    parser = argparse.ArgumentParser(usage=__doc__)
    for name, value in (("seconds", 1.5), ("start", 0.35), ("frame-mb", 17.0), ("look-mb", 7.4),
                        ("chunk", 20), ("slots", 16)):
        parser.add_argument(f"--{name}", type=type(value), default=value)
    numbers = parser.parse_args()
    print("\n".join(table(numbers)), file=sys.stderr)
    print("\n".join(chart(numbers)))


if __name__ == "__main__":
    main()
