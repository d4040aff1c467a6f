#!/usr/bin/env python3
"""Hips through the Python module, one at a time and a million at once, as arrays and as a table, beside
the model in C++ (model_bench) and the model as a researcher would write it in NumPy (cohort_peer.py), in
one run. See README.md.

Usage: PYTHONPATH=BUILD/python python_bench.py BUILD/bench/model_bench
"""
import os
import re
import subprocess
import sys
import time

import cohort_peer
import numpy as np
import pandas as pd
import telmarion

HIPS = 1_000_000
PEER_HIPS = 10_000
ROUNDS = 10
# As in model_bench.
RANGES = {"lizm": (8.5, 12), "xizm": (-1, 2), "zizm": (5, 7.5), "Cizm": (3, 6.5), "Hizm": (13, 18),
          "zasuk": (-17.2, 17.2), "thetaCE": (0, 60), "headRadius": (0.02, 0.03), "bodyWeight": (45, 110)}


def model_nanoseconds(program):
    """The processor's time for a hip in C++."""
    shown = subprocess.run([program, "--benchmark_filter=^ComputeHip$"], capture_output=True, check=True,
                           text=True).stdout
    return float(re.search(r"([\d.]+) ns\s+([\d.]+) ns", shown).group(2))


def timed(clock, work):
    start = clock()
    work()
    return clock() - start


def one_call_nanoseconds(hips):
    """The processor's time for a call with one hip, the best of many."""
    given = [{key: float(column[i]) for key, column in hips.items()} for i in range(1000)]

    def work():
        for hip in given:
            telmarion.compute(**hip)

    return min(timed(time.thread_time_ns, work) for _ in range(20)) / len(given)


def measure(program, hips):
    """Nanoseconds a hip of each contestant, the best of rounds that take turns."""
    some = {key: column[:PEER_HIPS] for key, column in hips.items()}
    table = np.column_stack([*some.values()])
    frame = pd.DataFrame(hips)
    best = {}
    for _ in range(ROUNDS):
        found = {
            "model": model_nanoseconds(program),
            "one": timed(time.process_time_ns, lambda: telmarion.compute(**hips, threads=1)) / HIPS,
            "one wall": timed(time.perf_counter_ns, lambda: telmarion.compute(**hips, threads=1)) / HIPS,
            "two wall": timed(time.perf_counter_ns, lambda: telmarion.compute(**hips, threads=2)) / HIPS,
            "frame": timed(time.process_time_ns, lambda: telmarion.compute_frame(frame, threads=1)) / HIPS,
            "numpy": timed(time.process_time_ns, lambda: cohort_peer.compute(table)) / PEER_HIPS,
            "call": one_call_nanoseconds(some),
        }
        best = {name: min(best.get(name, value), value) for name, value in found.items()}
    return best


def main():
    chance = np.random.default_rng(1)
    hips = {key: chance.uniform(*ends, HIPS) for key, ends in RANGES.items()}
    found = measure(sys.argv[1], hips)
    print(f"{HIPS} hips, {os.cpu_count()} processors, best of {ROUNDS} rounds")
    print(f"model in C++, one thread : {1e3 / found['model']:6.2f} million hips/s of the processor")
    print(f"compute, one thread      : {1e3 / found['one']:6.2f} million hips/s of the processor, "
          f"{found['model'] / found['one']:.2f} times the model's rate")
    print(f"compute, two threads     : {1e3 / found['two wall']:6.2f} million hips/s of the clock, "
          f"{found['one wall'] / found['two wall']:.2f} times the rate of one")
    print(f"compute_frame, one thread: {1e3 / found['frame']:6.2f} million hips/s of the processor, "
          f"{found['model'] / found['frame']:.2f} times the model's rate")
    print(f"NumPy                    : {1e3 / found['numpy']:6.3f} million hips/s of the processor; compute has "
          f"{found['numpy'] / found['one']:.0f} times its rate")
    print(f"a call with one hip      : {found['call'] / 1e3:.2f} µs of the processor")


if __name__ == "__main__":
    main()
