#!/usr/bin/python3
"""Uncertainties of 200 hips by two other programs, beside uncertainty_bench.

    sudo apt-get install python3-numpy python3-openturns
    /usr/bin/python3 bench/uncertainty_peer.py build/release/bench/uncertainty_bench

The hip model below is written from its formulas, for all trials at once; the pole is closed in by
halving an interval. NumPy draws independent random trials and sorts them; OpenTURNS draws its own
and takes its own quantiles of the same model. Prints how far the ends of the intervals are apart, in
shares of their width, and the rates of all three.
"""
import subprocess
import sys
import time

import numpy as np

try:
    import openturns
except ImportError:  # not needed for the comparison with NumPy
    openturns = None

HIPS = 200
PEER_TRIALS = 400_000
OUR_TRIALS = 1 << 20
ALLOWED_REFUSALS = 0.002
PI_FORCE, PI_STRESS = 3.14159265358979, 3.14159265359
LENGTHS = [0, 1, 2, 3, 4, 7]  # of the nine inputs; all are divided by the magnification

# Muscles: group, relative cross-section, femoral point (x, y, z), pelvic point (x, y, z). Letters are
# scale factors; "t" and "T" are the trochanter's rows, which change places above the head centre.
MUSCLES = [
    (0, 0.266, ("t", 1.8, -7.3), (-9.7, 4.8, (1.5, "L"))),
    (0, 0.113, ("T", -0.4, -6.9), (-7.1, 2.6, (0.0, "L"))),
    (0, 0.1, (0.1, 0.1, -5.5), (-5.5, 7.8, (4.7, "L"))),
    (1, 0.266, ("t", 1.8, -7.3), (-10.2, -2.7, (-6.2, "C"))),
    (1, 0.113, ("T", -0.4, -6.9), (-7.3, -2.9, (-4.1, "C"))),
    (1, 0.12, (42.1, -2.2, None), (-7.8, -4.5, (-5.6, "C"))),
    (1, 0.4, (41.5, -4.3, None), (-3.7, -4.3, (-2.6, "L"))),
    (2, 0.266, ("t", 1.8, -7.3), (-13.2, 0.2, (-1.8, "C"))),
    (2, 0.113, ("2.7", -0.4, -6.9), (-8.8, 0.4, (-2.0, "C"))),
]
FIXED_Z = {42.1: -3.3, 41.5: -0.2}


def tilted(x, y, z, sine, cosine):
    return np.array([x * cosine - z * sine, y + 0 * x, x * sine + z * cosine])


def resultant(l, x, z, c, h, turn, weight):
    """R over the body weight, and its inclination in degrees."""
    w = 9.82 * weight
    troch_x = x * np.cos(turn) + z * np.sin(turn)
    troch_z = z * np.cos(turn) - x * np.sin(turn)
    scale = {"L": l / 8.45, "C": c / 5.85}
    lower = troch_x < 0
    height = {"t": np.where(lower, 2.7, 2.6) * troch_x / 2.65, "T": np.where(lower, 2.6, 2.7) * troch_x / 2.65,
              "2.7": 2.7 * troch_x / 2.65}
    sine = 0.48 * l / 42.3
    cosine = np.sqrt(1 - sine**2)
    psi = -0.5 * PI_FORCE / 180
    moments = [0.0, 0.0, 0.0]
    pulls = [0.0, 0.0, 0.0]
    for group, area, (fx, fy, fz), (px, py, (pz, letter)) in MUSCLES:
        x_femur = height[fx] if isinstance(fx, str) else fx + 0 * l
        z_femur = fz * troch_z / 7.1 if fz is not None else FIXED_Z[fx] + 0 * l
        f = tilted(x_femur, fy, z_femur, sine, cosine)
        p = tilted(px * h / 13.52, py, pz * scale[letter], np.sin(psi), np.cos(psi))
        e = (f - p) / np.sqrt(((f - p) ** 2).sum(axis=0))
        moments[group] = moments[group] + area * np.cross(e, p, axis=0)
        pulls[group] = pulls[group] + area * e
    matrix = np.stack([moments[1], moments[2], moments[0]], axis=-1)  # (component, trial, group)
    right = np.zeros(matrix.shape[:2])
    right[1] = 1.01 * l * w - 0.48 * l * 0.161 * w
    regular = np.isfinite(matrix).all(axis=(0, 2))
    matrix[:, ~regular] = np.eye(3)[:, None, :]
    tensions = np.linalg.solve(matrix.transpose(1, 0, 2), right.T[..., None])[..., 0].T
    r = tensions[0] * pulls[1] + tensions[1] * pulls[2] + tensions[2] * pulls[0]
    r[0] += w - 0.161 * w
    r[:, ~regular] = np.nan
    return np.hypot(r[0], r[2]) / w, 90 - np.degrees(np.arctan(r[0] / np.abs(r[2])))


def pole(theta_r, theta_ce):
    """Position of the pole and where there is one; angles in radians."""
    steep = np.pi / 2 - theta_ce <= theta_r
    total = theta_r + theta_ce

    def residual(theta):
        a = np.where(steep, np.pi - theta_ce + theta, theta_ce - theta)
        q = np.cos(a) ** 2 / (a + np.pi / 2 + np.sin(2 * a) / 2)
        return theta_r + theta - np.arctan(np.where(steep, -q, q))

    low = np.where(steep, theta_ce - 1.5 * np.pi, -theta_r)
    high = np.where(steep, -theta_r, theta_ce + np.pi / 2)
    for _ in range(48):
        middle = (low + high) / 2
        below = residual(middle) < 0
        low, high = np.where(below, middle, low), np.where(below, high, middle)
    inside = np.where(steep, total < np.pi, total > 0)
    # The model looks for the pole upward from −90 degrees, in the steep form downward from π/2 − CE.
    ahead = np.where(steep, low < np.pi / 2 - theta_ce, low > -np.pi / 2)
    return low, steep, inside & ahead


def model(inputs):
    """rWb, thetaR, thetaPol (degrees), pmaxWb, pmax; infinite where the model has no answer."""
    with np.errstate(all="ignore"):
        l, x, z, c, h, turn, ce, radius, weight = inputs
        r_wb, theta_r_deg = resultant(l, x, z, c, h, turn, weight)
        theta_r = np.radians(theta_r_deg)
        theta, steep, found = pole(theta_r, ce)
        a = np.where(steep, np.pi - ce + theta, ce - theta)
        p0 = r_wb * np.abs(np.sin(theta_r + theta)) / (2 / 3 * radius**2 * np.cos(a) ** 2)
        p0 = np.where(np.abs(ce - theta - np.pi / 2) < 0.001, 3 * r_wb / (2 * np.pi * radius**2), p0)
        p_wb = np.where(a >= 0, p0, p0 * np.cos(a))
        results = np.array([r_wb, theta_r_deg, np.degrees(theta), p_wb, p_wb * 9.82 * weight])
        good = found & (theta_r_deg >= 0) & (l > 0) & (radius > 0) & (weight > 0)
        good &= np.isfinite(results).all(axis=0)
    return np.where(good, results, np.inf)


def magnified(drawn):
    """From the ten sources to the nine inputs."""
    inputs = drawn[:9].copy()
    inputs[LENGTHS] /= drawn[9]
    inputs[:, drawn[9] <= 0] = np.nan
    return inputs


def random_hip(random, kind):
    """Ten sources: value, u, distribution (0 normal, 1 uniform, 2 triangular)."""
    value = [random.uniform(*limits) for limits in
             [(8.5, 12), (-1, 2), (5, 7.5), (3, 6.5), (13, 18), (-0.3, 0.3), (15, 50), (0.02, 0.03), (45, 110)]]
    if kind == "edge":
        value[6] = random.uniform(-6, 4)
    if kind == "odd":
        value[1], value[5], value[6] = random.uniform(-4, 4), random.uniform(-1, 1), random.uniform(50, 95)
    value[6] = np.radians(value[6])
    u = np.array([0.2, 0.2, 0.3, 0.3, 0.4, 0.05, np.radians(2.5), 0.0008, 1.0]) * random.uniform(0.2, 1.3, 9)
    u[random.uniform(size=9) < 0.15] = 0
    factor = random.uniform(1, 1.25)
    for i in LENGTHS:
        value[i] *= factor
    sources = [[v, w, random.integers(0, 3)] for v, w in zip(value, u)]
    return sources + [[factor, random.choice([0, 0.03]), 0]]


def draw(sources, trials, random):
    columns = []
    for value, u, distribution in sources:
        if distribution == 0:
            errors = random.standard_normal(trials)
        elif distribution == 1:
            errors = random.uniform(-np.sqrt(3), np.sqrt(3), trials)
        else:
            errors = random.triangular(-np.sqrt(6), 0, np.sqrt(6), trials)
        columns.append(value + u * errors)
    return np.array(columns)


def ends(results):
    """Both ends for each result, the refused counted above; not a number with too many of those."""
    refused = np.isinf(results[0]).mean()
    if refused > ALLOWED_REFUSALS:
        return np.full((5, 2), np.nan), refused
    return np.quantile(results, [0.025, 0.975], axis=1, method="inverted_cdf").T, refused


def by_numpy(sources, random):
    return ends(model(magnified(draw(sources, PEER_TRIALS, random))))


def by_openturns(sources):
    def distribution(value, u, kind):
        if u == 0:
            return openturns.Dirac(value)
        if kind == 0:
            return openturns.Normal(value, u)
        half = u * np.sqrt(3 if kind == 1 else 6)
        return (openturns.Uniform(value - half, value + half) if kind == 1
                else openturns.Triangular(value - half, value, value + half))

    moving = [i for i, source in enumerate(sources) if source[1] > 0]
    joint = openturns.ComposedDistribution([distribution(*sources[i]) for i in moving])
    centre = np.array([source[0] for source in sources])

    def compute(sample):
        drawn = np.repeat(centre[:, None], len(sample), axis=1)
        drawn[moving] = np.asarray(sample).T
        return model(magnified(drawn)).T

    function = openturns.PythonFunction(len(moving), 5, func_sample=compute)
    results = function(joint.getSample(PEER_TRIALS))
    refused = np.isinf(np.asarray(results)[:, 0]).mean()
    if refused > ALLOWED_REFUSALS:
        return np.full((5, 2), np.nan), refused
    return np.array([results.computeQuantilePerComponent(p) for p in (0.025, 0.975)]).T, refused


def by_us(program, hips, trials):
    text = "\n".join(" ".join(f"{v!r} {u!r} {int(d)}" for v, u, d in hip) for hip in hips)
    text = text.replace("np.float64(", "").replace(")", "")
    lines = subprocess.run([program, str(trials)], input=text, capture_output=True, check=True, text=True).stdout
    rows = np.array([[float(number) for number in line.split()] for line in lines.splitlines()])
    return rows[:, 2:17].reshape(-1, 5, 3)[:, :, 1:], 1 - rows[:, 1] / rows[:, 0]


def compare(name, ours, ours_refused, theirs, theirs_refused):
    theirs, theirs_refused = np.array(theirs), np.array(theirs_refused)
    near_limit = np.abs(theirs_refused - ALLOWED_REFUSALS) < 0.0004  # where chance decides
    given = ~np.isnan(ours[:, 0, 0])
    disagree = (given != ~np.isnan(theirs[:, 0, 0])) & ~near_limit
    both = given & ~np.isnan(theirs[:, 0, 0])
    width = ours[both, :, 1] - ours[both, :, 0]
    with np.errstate(all="ignore"):
        apart = np.abs(ours[both] - theirs[both]) / width[..., None]
    apart = np.where(width[..., None] > 1e-9 * np.abs(ours[both]).max(axis=(2,), keepdims=True), apart, 0)
    print(f"{name}: {both.sum()} hips with intervals, {(~given).sum()} without; ends apart by up to "
          f"{100 * apart.max():.2f} % of the width (median {100 * np.median(apart):.3f} %); "
          f"refused shares apart by up to {np.abs(ours_refused - theirs_refused).max():.4f}; "
          f"disagreements on whether there is one: {disagree.sum()}")
    return apart.max() < 0.01 and not disagree.any()


def main():
    program = sys.argv[1]
    random = np.random.default_rng(2024)
    kinds = ["usual"] * 3 + ["edge", "odd"]
    hips = [random_hip(random, kinds[i % 5]) for i in range(HIPS)]
    hips = [hip for hip in hips if np.isfinite(model(magnified(np.array([[s[0]] for s in hip])))[0, 0])]
    ours, ours_refused = by_us(program, hips, OUR_TRIALS)
    peers = [("NumPy", lambda hip: by_numpy(hip, random))]
    if openturns:
        openturns.RandomGenerator.SetSeed(1)
        peers.append(("OpenTURNS", by_openturns))
    agree = True
    rates = []
    for name, compute in peers:
        start = time.process_time()
        answers = [compute(hip) for hip in hips]
        rates.append((name, PEER_TRIALS * len(hips) / (time.process_time() - start)))
        agree &= compare(name, ours, ours_refused, [a for a, _ in answers], [r for _, r in answers])
    print(subprocess.run([program], capture_output=True, check=True, text=True).stdout)
    for name, rate in rates:
        print(f"{name}: {rate / 1e6:.3f} million trials a second")
    return 0 if agree else 1


if __name__ == "__main__":
    sys.exit(main())
