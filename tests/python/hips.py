"""Made-up hips and the cohort program, for the tests beside it. Each is called with PROGRAM SOURCE_FOLDER
VERSION and finds the module telmarion in the build folder."""
import csv
import io
import pathlib
import subprocess
import sys

import numpy as np

PROGRAM, SOURCE, VERSION = sys.argv[1], pathlib.Path(sys.argv[2]), sys.argv[3]

KEYS = ["lizm", "xizm", "zizm", "Cizm", "Hizm", "zasuk", "thetaCE", "headRadius", "bodyWeight"]
RESULTS = ["rWb", "thetaR", "thetaPol", "pmaxWb", "pmax"]
DEFAULT = dict(zip(KEYS, [10.4, 0.5, 6.0, 4.4, 16.0, 0.0, 30.0, 0.025, 70.0]))
# What any correct model gives for it, to twelve digits and more.
KNOWN = dict(zip(RESULTS, [2.81222677558, 8.4764903085, 16.4157852045, 3006.76110604, 2066847.58429341]))


def random_hips(count, seed=1):
    """Columns of hips far beyond what patients have, some with weights and radii that cannot be."""
    chance = np.random.default_rng(seed)
    ranges = [(4, 20), (-5, 5), (1, 10), (-3, 9), (7, 25), (-57, 57), (-30, 150), (0.01, 0.05), (20, 200)]
    hips = {key: chance.uniform(*ends, count) for key, ends in zip(KEYS, ranges)}
    hips["bodyWeight"][chance.random(count) < 0.05] = np.nan
    for key, value in [("bodyWeight", -1.0), ("headRadius", 0.0), ("headRadius", -0.02), ("lizm", np.nan)]:
        hips[key][chance.random(count) < 0.01] = value
    return hips


def table_of(hips):
    """The hips as a table, every number in digits that read back to it."""
    text = [",".join(hips)]
    for row in zip(*(column.tolist() for column in hips.values())):
        text.append(",".join("" if number != number else repr(number) for number in row))
    return "\n".join(text) + "\n"


def run_program(table, *options):
    """The table with the results of the cohort program, one dictionary a row."""
    done = subprocess.run([PROGRAM, *options, "-"], input=table.encode(), capture_output=True, check=False)
    if done.returncode == 2:
        raise AssertionError(done.stderr.decode())
    return list(csv.DictReader(io.StringIO(done.stdout.decode(), newline="")))


def numbers(rows, key):
    """A column of such rows; NaN for an empty field."""
    return np.array([float(row[key] or "nan") for row in rows])
