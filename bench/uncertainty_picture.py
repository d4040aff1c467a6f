#!/usr/bin/python3
"""Draws the interval of the peak stress against the CE angle, and whose error it is.

    sudo apt-get install python3-matplotlib
    /usr/bin/python3 bench/uncertainty_picture.py build/release/bench/uncertainty_bench \
        docs/pictures/uncertainty-ce.png

The hip is the one that the case form opens with, of 70 kg, on a picture that magnifies 1.15 times.
Its standard uncertainties are made up to be of a usual size; a laboratory measures its own.
"""
import math
import subprocess
import sys

import matplotlib

matplotlib.use("Agg")
import matplotlib.pyplot as plt  # noqa: E402

TRIALS = 1 << 17
MAGNIFICATION = (1.15, 0.03)
# Name, value and u as true lengths in cm, degrees, kg; the radius in cm.
READINGS = [("l/2", 10.4, 0.2), ("x", 0.5, 0.2), ("z", 6.0, 0.3), ("C", 4.4, 0.3), ("H", 16.0, 0.4),
            ("rotation", 0.0, 2.9), ("CE angle", None, 2.5), ("head radius", 2.5, 0.08), ("weight", 70.0, 1.0)]
SHOWN = ["CE angle", "head radius", "magnification", "z", "rotation"]  # the rest together
ANGLES = ("rotation", "CE angle")


def line(ce):
    parts = []
    for name, value, u in READINGS:
        value = ce if value is None else value
        factor = math.pi / 180 if name in ANGLES else 1.0 if name == "weight" else MAGNIFICATION[0]
        factor *= 0.01 if name == "head radius" else 1.0
        parts.append(f"{value * factor!r} {u * factor!r} 0")
    return " ".join(parts + [f"{MAGNIFICATION[0]} {MAGNIFICATION[1]} 0"])


def main():
    program, target = sys.argv[1:]
    angles = [-8 + 0.25 * i for i in range(213)]
    text = "\n".join(line(angle) for angle in angles)
    output = subprocess.run([program, str(TRIALS)], input=text, capture_output=True, check=True, text=True).stdout
    rows = [[float(number) for number in row.split()] for row in output.splitlines()]
    estimate, low, high = ([row[14 + i] / 1e6 for row in rows] for i in range(3))
    names = [name for name, _, _ in READINGS] + ["magnification"]
    shares = {name: [100 * row[17 + i] for row in rows] for i, name in enumerate(names)}
    rest = [sum(shares[name][k] for name in names if name not in SHOWN) for k in range(len(rows))]

    figure, (top, bottom) = plt.subplots(2, 1, figsize=(8, 7), sharex=True, layout="constrained")
    top.fill_between(angles, low, high, color="#9ecae1", label="95 % coverage interval")
    top.plot(angles, estimate, color="#08306b", label="estimate")
    none = max(a for a, value in zip(angles, low) if math.isnan(value))
    top.axvspan(angles[0], none, color="0.9")
    top.text(angles[0] + 0.2, 1.1, "no interval:\ntoo many\nrefused trials", fontsize=8)
    top.set(ylabel="peak stress (MPa)", yscale="log", ylim=(1, 60), xlim=(angles[0], angles[-1]))
    top.set_yticks([1, 2, 5, 10, 20, 50], labels=["1", "2", "5", "10", "20", "50"])
    top.minorticks_off()
    top.legend(loc="upper right")
    colours = ["#08519c", "#e6550d", "#31a354", "#756bb1", "#fdae6b", "0.75"]
    bottom.stackplot(angles, *[shares[name] for name in SHOWN], rest, labels=SHOWN + ["all others"], colors=colours)
    unknown = max(a for a, share in zip(angles, rest) if math.isnan(share))
    bottom.axvspan(angles[0], unknown, color="0.9")
    bottom.text(angles[0] + 0.2, 3, "no variance:\nsome refused trials", fontsize=8)
    bottom.set(xlabel="CE angle (degrees)", ylabel="share of the variance (%)", ylim=(0, 100))
    bottom.legend(loc="upper center", bbox_to_anchor=(0.5, -0.14), ncol=6, fontsize=9, frameon=False)
    figure.savefig(target, dpi=110)


main()
