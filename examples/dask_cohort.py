"""Computes a folder of cohort tables on a Dask cluster, and writes one result table for each.

    /usr/bin/python3 dask_cohort.py FOLDER RESULTS [SCHEDULER]

FOLDER holds CSV files with the same columns. RESULTS gets one CSV file for each, numbered in the order of
their names. SCHEDULER is the cluster's address, such as tcp://10.0.0.5:8786; without it the cluster is this
machine. Every worker needs python3-telmarion. Needs python3-dask, python3-distributed and python3-pandas;
see docs/dask.md.
"""
import pathlib
import sys

import dask.dataframe
import pandas as pd
from distributed import Client

import telmarion


def compute_file(path, **options):
    """One partition, computed in one thread: its worker has others for other partitions."""
    # Without round_trip pandas reads some numbers one bit off.
    return telmarion.compute_frame(pd.read_csv(path, float_precision="round_trip", **options), threads=1)


def compute(folder):
    """The tables of the folder, by name, as one with the results; nothing is computed yet."""
    tables = sorted(str(path) for path in pathlib.Path(folder).resolve().glob("*.csv"))
    if not tables:
        raise SystemExit(f"there is no CSV file in {folder}")
    # Partitions may differ in what they hold: a column of weights without decimals, say.
    return dask.dataframe.from_map(compute_file, tables, meta=compute_file(tables[0], nrows=1),
                                   enforce_metadata=False)


def main():
    folder, results, *scheduler = sys.argv[1:]
    with Client(*scheduler) as client:
        print(client)
        compute(folder).to_csv(f"{results}/results-*.csv", index=False)


if __name__ == "__main__":
    main()
