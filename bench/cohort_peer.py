"""The same model as a researcher would write it with NumPy: all hips at once, the starting search step
by step. Written from the formulas, not from the C++ sources, so that it also checks them.

Usage: cohort_peer.py IN.csv OUT.csv   (columns as in cohort_bench.py; needs python3-numpy)
"""
import sys
import time

import numpy as np

G = 9.82  # m/s²
PI_FORCE = 3.14159265358979
PI_STRESS = 3.14159265359
AREAS = [np.array([0.266, 0.113, 0.1]), np.array([0.266, 0.113, 0.12, 0.4]), np.array([0.266, 0.113])]


def points(rows, n):
    """Rows of (x, y, z), each a number or an array over the hips, as one array (hips, rows, 3)."""
    return np.stack([np.stack([np.broadcast_to(c, n) for c in row], -1) for row in rows], 1)


def tilted(p, sine, cosine):
    x, y, z = p[..., 0], p[..., 1], p[..., 2]
    return np.stack([x * cosine - z * sine, y, x * sine + z * cosine], -1)


def attachments(l, x, z, c, h, turn):
    n = len(l)
    tx, tz = x * np.cos(turn) + z * np.sin(turn), z * np.cos(turn) - x * np.sin(turn)
    sz, sl, sh, sc = tz / 7.1, l / 8.45, h / 13.52, c / 5.85
    above = tx < 0
    upper = (np.where(above, 2.7, 2.6) * tx / 2.65, 1.8, -7.3 * sz)
    lower = (np.where(above, 2.6, 2.7) * tx / 2.65, -0.4, -6.9 * sz)
    femoral = [[upper, lower, (0.1, 0.1, -5.5 * sz)],
               [upper, lower, (42.1, -2.2, -3.3), (41.5, -4.3, -0.2)],
               [upper, (2.7 * tx / 2.65, -0.4, -6.9 * sz)]]
    pelvic = [[(-9.7 * sh, 4.8, 1.5 * sl), (-7.1 * sh, 2.6, 0.0), (-5.5 * sh, 7.8, 4.7 * sl)],
              [(-10.2 * sh, -2.7, -6.2 * sc), (-7.3 * sh, -2.9, -4.1 * sc),
               (-7.8 * sh, -4.5, -5.6 * sc), (-3.7 * sh, -4.3, -2.6 * sl)],
              [(-13.2 * sh, 0.2, -1.8 * sc), (-8.8 * sh, 0.4, -2.0 * sc)]]
    sine = (0.48 * l / 42.3)[:, None]
    psi = -0.5 * PI_FORCE / 180
    return ([tilted(points(f, n), sine, np.sqrt(1 - sine**2)) for f in femoral],
            [tilted(points(p, n), np.sin(psi), np.cos(psi)) for p in pelvic])


def force(l, x, z, c, h, turn, weight):
    """R over body weight, and its inclination in degrees."""
    w = weight * G
    leg = 0.161 * w
    femoral, pelvic = attachments(l, x, z, c, h, turn)
    sums, moments = [], []
    for f, p, area in zip(femoral, pelvic, AREAS):
        e = (f - p) / np.linalg.norm(f - p, axis=-1, keepdims=True)
        sums.append(np.einsum("m,nmk->nk", area, e))
        moments.append(np.einsum("m,nmk->nk", area, np.cross(e, p)))
    load = np.zeros((len(l), 3))
    load[:, 1] = 1.01 * l * w - 0.48 * l * leg
    tension = np.linalg.solve(np.stack(moments, -1), load[..., None])[..., 0]
    r = sum(t[:, None] * s for t, s in zip(tension.T, sums))
    r[:, 0] += w - leg
    return np.hypot(r[:, 0], r[:, 2]) / w, 90 - np.arctan(r[:, 0] / abs(r[:, 2])) * 180 / PI_FORCE


def residual(theta, ce, thr, steep):
    u = np.where(steep, PI_STRESS - ce + theta, ce - theta)
    q = np.cos(u)**2 / (u + PI_STRESS / 2 + np.sin(2 * u) / 2)
    return thr + theta - np.arctan(np.where(steep, -q, q))


def slope(theta, ce, steep):
    u = np.where(steep, PI_STRESS - ce + theta, ce - theta)
    d = u + PI_STRESS / 2 + np.sin(2 * u) / 2
    q2 = (np.cos(u)**2 / d)**2
    return 1 - (2 * q2 + np.sin(2 * u) / d) / (q2 + 1)


def search(ce, thr, steep):
    """Walks all hips along their grids until each has seen a change of sign."""
    step = np.where(steep, PI_STRESS / 200, PI_STRESS / 2000)
    direction = np.where(steep, -1.0, 1.0)
    theta = np.where(steep, PI_STRESS / 2 - ce, -PI_STRESS / 2)
    previous, current, at = np.zeros_like(ce), np.zeros_like(ce), theta.copy()
    active = np.arange(len(ce))
    for _ in range(5000):
        i = active
        previous[i] = current[i]
        current[i] = residual(theta[i], ce[i], thr[i], steep[i])
        at[i] = theta[i]
        theta[i] += direction[i] * step[i]
        active = i[~(previous[i] * current[i] < 0)]
        if len(active) == 0:
            break
    m = (current - previous) / step
    start = -(current - m * at) / m
    start[active] = np.nan  # no pole
    return start


def stress(weight, rwb, thr_degrees, ce, radius):
    """Pole in degrees, peak stress over body weight in m^-2."""
    thr = thr_degrees * PI_STRESS / 180
    steep = PI_STRESS / 2 - ce <= thr
    theta = search(ce, thr, steep)
    for _ in range(100):
        f = residual(theta, ce, thr, steep)
        go = abs(f) >= 1e-10
        if not go.any():
            break
        theta[go] -= f[go] / slope(theta[go], ce[go], steep[go])
    u = np.where(steep, PI_STRESS - ce + theta, ce - theta)
    p0 = abs(rwb * np.sin(thr + theta) / (2 * radius**2 * np.cos(u)**2 / 3))
    edge = abs(ce - theta - PI_STRESS / 2) < 0.001
    p0 = np.where(edge, 3 * rwb / (2 * PI_STRESS * radius**2), p0)
    return theta * 180 / PI_STRESS, p0 * np.where(u >= 0, 1, np.cos(u))


def compute(table):
    l, x, z, c, h, turn, ce, radius, weight = table.T
    degrees = PI_FORCE / 180
    rwb, thr = force(l, x, z, c, h, turn * degrees, weight)
    pole, pmax_wb = stress(weight, rwb, thr, ce * degrees, radius)
    return np.stack([rwb, thr, pole, pmax_wb, pmax_wb * weight * G], -1)


def main():
    start = time.perf_counter()
    table = np.loadtxt(sys.argv[1], delimiter=",", skiprows=1)
    read = time.perf_counter()
    results = compute(table[:, 1:])
    done = time.perf_counter()
    np.savetxt(sys.argv[2], np.hstack([table, results]), delimiter=",", fmt="%.17g")
    print(f"{time.perf_counter() - start:.4f} {done - read:.4f}")


if __name__ == "__main__":
    main()
