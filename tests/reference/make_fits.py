#!/usr/bin/env python3
"""Fits the polynomials of uncertainty/ and writes them as a C++ header.

    /usr/bin/python3 tests/reference/make_fits.py > uncertainty/fits.h

Each is the interpolation at Chebyshev's points, worked out in 40 digits and turned into powers. Needs
python3-mpmath. The comment before each says what was fitted and the largest error found between the points.
"""
import mpmath as mp

mp.mp.dps = 40
PI = mp.pi


def powers(function, low, high, count):
    """Coefficients of t^0, t^1, ... for t in [-1, 1], the line onto [low, high]."""
    middle, half = (low + high) / 2, (high - low) / 2
    angle = [PI * (2 * j + 1) / (2 * count) for j in range(count)]
    y = [function(middle + half * mp.cos(a)) for a in angle]
    sums = [mp.fsum(y[j] * mp.cos(i * angle[j]) for j in range(count)) for i in range(count)]
    chebyshev = [2 * s / count for s in sums]
    chebyshev[0] /= 2
    total = [mp.mpf(0)] * count
    before, now = [mp.mpf(1)] + [mp.mpf(0)] * (count - 1), [mp.mpf(0), mp.mpf(1)] + [mp.mpf(0)] * (count - 2)
    for c in chebyshev:
        total = [a + c * b for a, b in zip(total, before)]
        after = [2 * b - a for a, b in zip(before, [mp.mpf(0)] + now[:-1])]
        before, now = now, after
    return total


def in_own_powers(coefficients, low, high):
    """The same polynomial in powers of x itself."""
    middle, half = (low + high) / 2, (high - low) / 2
    total = [mp.mpf(0)] * len(coefficients)
    for c in reversed(coefficients):  # total * (x - middle) / half + c
        shifted = [mp.mpf(0)] + total[:-1]
        total = [(s - middle * t) / half for s, t in zip(shifted, total)]
        total[0] += c
    return total


def value(coefficients, x):
    return mp.polyval(list(reversed(coefficients)), x)


def write(name, what, function, low, high, count, own=False, relative=False):
    low, high = mp.mpf(low), mp.mpf(high)
    coefficients = powers(function, low, high, count)
    if own:
        coefficients = in_own_powers(coefficients, low, high)
    rounded = [mp.mpf(float(c)) for c in coefficients]
    worst = mp.mpf(0)
    for k in range(1, 2000):
        x = low + (high - low) * k / 2000
        t = x if own else (x - (low + high) / 2) / ((high - low) / 2)
        exact = function(x)
        error = abs(value(rounded, t) - exact)
        worst = max(worst, error / abs(exact) if relative else error)
    kind = "relative" if relative else "absolute"
    print(f"// {what}.\n// The {kind} error is {mp.nstr(worst, 2)}.")
    print(f"inline constexpr std::array<double, {count}> {name} = {{")
    print("    " + ",\n    ".join(repr(float(c)) for c in coefficients) + "};\n")


def edge(s):
    """e = edge - pole + pi/2, the part of the head that is loaded, for the sum s of the angles."""

    def f(e):
        return s + PI / 2 - e - mp.atan(mp.sin(e) ** 2 / (e - mp.sin(2 * e) / 2))

    low, high = s, s + PI / 2
    for _ in range(12):
        middle = (low + high) / 2
        low, high = (middle, high) if f(middle) > 0 else (low, middle)
    return mp.findroot(f, (low, high), solver="secant", tol=mp.mpf(10) ** -60)


def edge_stress(s):
    e = edge(s)
    return e * mp.mpf(3) / 2 * mp.sin(s - e + PI / 2) / mp.sin(e)


def pole_stress(s):
    e = edge(s)
    return mp.mpf(3) / 2 * mp.sin(s - e + PI / 2) / mp.sin(e) ** 2


def quantile_over_x(w):
    """Normal quantile of (1 + x) / 2, over x, for w = -log(1 - x^2)."""
    x = mp.sqrt(-mp.expm1(-w))
    if 1 - x > mp.mpf(10) ** -3:
        return mp.sqrt(2) * mp.erfinv(x) / x
    tail = mp.exp(-w) / (1 + x) / 2  # above the quantile
    z = mp.sqrt(2 * w)
    for _ in range(60):
        step = (mp.erfc(z / mp.sqrt(2)) / 2 - tail) / (mp.exp(-z * z / 2) / mp.sqrt(2 * PI))
        z += step
        if abs(step) < mp.mpf(10) ** -30:
            break
    return z / x


def main():
    peak = mp.findroot(lambda s: edge(s) - PI / 2, mp.mpf("0.567"))
    print("// Made by tests/reference/make_fits.py: polynomials in ascending powers. Do not edit.")
    print("#pragma once\n\n#include <array>\n\nnamespace Uncertainty::Fit {\n")
    print("// Sum of the angles at which the pole reaches the edge of the socket, rad.")
    print(f"inline constexpr double kPeakAtEdge = {float(peak)!r};\n")
    print("// The normal quantile has one polynomial up to w = kNormalEnd, and one in √w above.")
    print("inline constexpr double kNormalEnd = 5.0;")
    low, high = mp.sqrt(5), mp.sqrt(22)
    print(f"inline constexpr double kTailMiddle = {float((low + high) / 2)!r};")
    print(f"inline constexpr double kTailHalf = {float((high - low) / 2)!r};\n")
    write("kEdge", "e/S over S in [0, pi/2], in t = S·4/pi − 1", lambda s: edge(s) / s, 0, PI / 2, 24,
          relative=True)
    write("kEdgeStress", "Stress at the edge times e, over S in [0, kPeakAtEdge], in t = S·2/kPeakAtEdge − 1",
          edge_stress, 0, peak, 12, relative=True)
    write("kPoleStress", "Stress at the pole, over S in [kPeakAtEdge, pi/2], in t of that interval", pole_stress,
          peak, PI / 2, 24, relative=True)
    write("kSine", "sin(x)/x over [0, pi/4], in x²", lambda y: mp.sin(mp.sqrt(y)) / mp.sqrt(y), 0,
          (PI / 4) ** 2 * mp.mpf("1.01"), 8, own=True)
    write("kCosine", "cos(x) over [0, pi/4], in x²", lambda y: mp.cos(mp.sqrt(y)), 0,
          (PI / 4) ** 2 * mp.mpf("1.01"), 8, own=True)
    write("kArcTangent", "atan(x)/x over [0, tan(pi/8)], in x²", lambda y: mp.atan(mp.sqrt(y)) / mp.sqrt(y), 0,
          mp.tan(PI / 8) ** 2 * mp.mpf("1.001"), 12, own=True)
    write("kLogarithm", "2·atanh(z)/z for z up to (√2 − 1)/(√2 + 1), in z²",
          lambda y: 2 * mp.atanh(mp.sqrt(y)) / mp.sqrt(y), 0, mp.mpf("0.02944"), 4, own=True)
    write("kNormal", "Normal quantile of (1 + x)/2 over x, for w = −log(1 − x²) in [0, 5], in t = w·2/5 − 1",
          quantile_over_x, 0, 5, 12)
    write("kNormalTail", "The same for √w from √5 to √22, in t of that interval",
          lambda v: quantile_over_x(v * v), low, high, 16)
    print("}  // namespace Uncertainty::Fit")


main()
