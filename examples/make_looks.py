"""Writes the example looks beside this file. Run it again after changing a look.

Each look is a function from a colour (r, g, b in 0..1, as in the picture file) to a colour.
"""

import math
from pathlib import Path

SIZE = 17


def luma(r, g, b):
    return 0.2126 * r + 0.7152 * g + 0.0722 * b


def s_curve(x, strength):
    """Contrast round the middle: steeper for a larger strength, 0 and 1 stay."""
    return 0.5 + 0.5 * math.tanh(strength * (2 * x - 1)) / math.tanh(strength)


def golden_hour(r, g, b):
    """Warm lights, blue shadows, a little more contrast."""
    y = luma(r, g, b)
    shadow, light = (1 - y) ** 2, y * y
    return (s_curve(r, 1.1) * (1 + 0.06 * light) - 0.04 * shadow,
            s_curve(g, 1.1) * (1 + 0.01 * light) - 0.01 * shadow,
            s_curve(b, 1.1) * (1 - 0.18 * light) + 0.06 * shadow)


def bleach_bypass(r, g, b):
    """Silver left in the print: hard contrast, colours half drained."""
    y = luma(r, g, b)

    def channel(c):
        mixed = 0.5 * c + 0.5 * y
        overlay = 2 * mixed * y if y < 0.5 else 1 - 2 * (1 - mixed) * (1 - y)
        return s_curve(overlay, 1.3)

    return channel(r), channel(g), channel(b)


def clamp(x):
    return min(max(x, 0.0), 1.0)


def write(path, look, comments):
    steps = [i / (SIZE - 1) for i in range(SIZE)]
    with open(path, "w", encoding="ascii", newline="\n") as out:
        out.write(f'TITLE "{path.stem}"\n')
        out.writelines(f"# {comment}\n" for comment in comments)
        out.write(f"LUT_3D_SIZE {SIZE}\n")
        for b in steps:
            for g in steps:
                for r in steps:
                    out.write(" ".join(f"{clamp(c):.6f}" for c in look(r, g, b)) + "\n")


def main():
    here = Path(__file__).parent
    # The match comment is what the companion panel leaves in the files it exports.
    write(here / "golden-hour.cube", golden_hour,
          ["Warm lights, blue shadows", "Tintwell match 20261120"])
    write(here / "bleach-bypass.cube", bleach_bypass, ["Hard contrast, colours half drained"])


if __name__ == "__main__":
    main()
