"""Compares what two processors made of one picture (see grade_picture.cpp), prints how far apart
they are and fails beyond single-precision rounding.

usage: compare_pictures.py PICTURE PICTURE
"""

import sys
from array import array

# A channel is the sum of four products of values up to 1.25, blended: about ten operations, each of
# which rounds by at most half of 2^-23 times its result. A fused operation rounds once, not twice.
FLOAT_LIMIT = 10 * 2.0 ** -24 * 1.5


def read(path, kind):
    values = array(kind)
    with open(path, "rb") as file:
        values.frombytes(file.read())
    return values


def differences(first, second, suffix, kind):
    a, b = read(first + suffix, kind), read(second + suffix, kind)
    if len(a) != len(b) or not a:
        sys.exit(f"pictures of different sizes: {first}{suffix}, {second}{suffix}")
    return [abs(x - y) for x, y in zip(a, b)]


def main(first, second):
    bits8 = differences(first, second, ".8", "B")
    floats = differences(first, second, ".f", "f")
    for name, found in (("8 bits", bits8), ("float", floats)):
        print(f"{name}: {sum(d != 0 for d in found)} of {len(found)} channels differ, "
              f"by at most {max(found):.3g}")
    # not <=, so that NaN fails
    if not max(bits8) <= 1 or not all(d <= FLOAT_LIMIT for d in floats):
        sys.exit(f"more than rounding: 8 bits may differ by 1, float by {FLOAT_LIMIT:.3g}")


if __name__ == "__main__":
    main(*sys.argv[1:])
