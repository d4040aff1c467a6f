"""Computes a table of hips and draws their peak stress against the centre-edge angle.

    /usr/bin/python3 cohort.py HIPS.csv PICTURE.png

Needs python3-telmarion, python3-pandas and python3-matplotlib.
"""
import sys

import matplotlib
import pandas as pd

import telmarion

matplotlib.use("Agg")  # a picture in a file needs no screen
import matplotlib.pyplot as plt  # noqa: E402


def angle_column(df):
    """The name of the column of centre-edge angles, with or without a unit."""
    return next(name for name in df.columns if name.lower().startswith("thetace"))


def draw(results, picture):
    answered = results[results["status"] == "ok"].dropna(subset=["pmax"])
    angle = angle_column(results)
    figure, axes = plt.subplots(figsize=(6, 4), layout="constrained")
    axes.scatter(answered[angle], answered["pmax"] / 1e6)
    axes.set_xlabel("Centre-edge angle (°)")
    axes.set_ylabel("Peak contact stress (MPa)")
    axes.set_ylim(bottom=0)
    figure.savefig(picture, dpi=120)


def main():
    table, picture = sys.argv[1:]
    # Without round_trip pandas reads some numbers one bit off.
    results = telmarion.compute_frame(pd.read_csv(table, float_precision="round_trip"))
    print(results["status"].value_counts().to_string())
    draw(results, picture)


if __name__ == "__main__":
    main()
