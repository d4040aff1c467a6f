"""Fits the polynomial from which the search for the stress pole starts (GuessPole in
model/pole_search.cpp) and prints its coefficients as they stand there.

With u = thetaR + pole the ordinary pole equation depends on S = thetaCE + thetaR alone, 0 < S < pi/2.
The fit interpolates u(S) at Chebyshev points, which comes close to the smallest largest error that a
polynomial of this degree can have. The search checks the guess by the signs of the residual, so the
coefficients decide how many residuals it looks at and never what it finds.

    sudo apt-get install python3-mpmath
    /usr/bin/python3 tests/reference/fit_pole_guess.py
"""
from mpmath import mp

mp.dps = 30

HALF = mp.pi / 2
DEGREE = 7
DECIMALS = 6
GRID_STEP = HALF / 1000  # rad, what the guess has to tell apart


def from_edge(a):
    """u where the edge is the angle `a` from the pole: the direction in which the stress pulls."""
    return mp.atan(mp.cos(a) ** 2 / (a + HALF + mp.sin(2 * a) / 2))


def pole_angle(s):
    """u for the sum S, by bisection for the `a` at which a + u(a) = S; the sum increases with a."""
    low, high = -HALF, HALF
    for _ in range(mp.prec):
        middle = (low + high) / 2
        low, high = (middle, high) if middle + from_edge(middle) < s else (low, middle)
    return s - high


def main():
    falling = mp.chebyfit(pole_angle, [0, HALF], DEGREE + 1)
    rounded = [mp.nint(c * 10 ** DECIMALS) / 10 ** DECIMALS for c in falling]
    for power, c in enumerate(reversed(rounded)):
        print(f"S^{power}  {float(c):9.{DECIMALS}f}")
    sums = [HALF * k / 1000 for k in range(1, 1000)]
    error = max(abs(mp.polyval(rounded, s) - pole_angle(s)) for s in sums)
    print(f"off by at most 1/{int(GRID_STEP / error)} of a step")


if __name__ == "__main__":
    main()
