"""Single precision, step by step."""
import fractions
import struct


def bits(value):
    return struct.unpack("<I", struct.pack("<f", value))[0]


def single(value):
    """The nearest single-precision number, of a float or a fraction."""
    rough = struct.unpack("<f", struct.pack("<f", float(value)))[0]
    if isinstance(value, float):
        return rough
    # A fraction was rounded twice: look whether a neighbour is nearer.
    around = [rough]
    for step in (-1, 1):
        if bits(rough) + step >= 0:
            around.append(struct.unpack("<f", struct.pack("<I", bits(rough) + step))[0])
    return min(around, key=lambda near: (abs(fractions.Fraction(near) - value), bits(near) & 1))


def fused(a, b, c):
    """a * b + c, rounded once."""
    exact = fractions.Fraction(a) * fractions.Fraction(b) + fractions.Fraction(c)
    return single(exact) if exact else 0.0
