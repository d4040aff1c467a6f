#!/usr/bin/env python3
"""A million made-up hips through telmarion-batch, CSV to CSV, and beside it in the same run a NumPy
script of the same model on 10,000 of them. Needs python3-numpy; see README.md.

Usage: cohort_bench.py PROGRAM [ROWS]
"""
import csv
import itertools
import math
import os
import pathlib
import random
import subprocess
import sys
import tempfile
import time

PEER_ROWS = 10_000
REPEATS = 5
HEADER = "id,lizm,xizm,zizm,Cizm,Hizm,zasuk,thetaCE,headRadius,bodyWeight\n"


def write_hips(path, rows):
    """Hips as a clinic meets them, dysplastic ones and deep sockets included. Always the same."""
    chance = random.Random(1)
    gauss = chance.gauss
    with open(path, "w", encoding="ascii") as file:
        file.write(HEADER)
        for i in range(rows):
            file.write(f"{i},{gauss(9.5, 0.6):.2f},{gauss(0.5, 0.6):.2f},{gauss(6, 0.5):.2f},"
                       f"{gauss(5, 0.6):.2f},{gauss(15, 1):.2f},{gauss(0, 3):.1f},"
                       f"{max(0.0, gauss(30, 9)):.1f},{gauss(0.024, 0.0015):.4f},"
                       f"{max(30.0, gauss(70, 12)):.1f}\n")


def time_program(program, source, target, *options):
    """Seconds and peak memory in MiB."""
    start = time.perf_counter()
    child = subprocess.Popen([program, *options, "--output", target, source])
    _, status, usage = os.wait4(child.pid, 0)
    seconds = time.perf_counter() - start
    child.returncode = os.waitstatus_to_exitcode(status)
    if child.returncode != 0:
        sys.exit(f"{program} ended with status {child.returncode}")
    return seconds, usage.ru_maxrss / 1024


def best(runs):
    return min(seconds for seconds, _ in runs), max(memory for _, memory in runs)


def largest_difference(ours, theirs):
    """Largest relative difference of the results over the rows that both hold."""
    largest = 0.0
    with open(ours, encoding="ascii") as file, open(theirs, encoding="ascii") as other:
        next(file)
        for row, numbers in zip(csv.reader(file), csv.reader(other)):
            if row[-1] != "ok":
                continue
            for a, b in zip(map(float, row[10:15]), map(float, numbers[10:15])):
                scale = max(abs(a), abs(b), 1.0)
                largest = max(largest, math.inf if math.isnan(b) else abs(a - b) / scale)
    return largest


def main():
    program = sys.argv[1]
    rows = int(sys.argv[2]) if len(sys.argv) > 2 else 1_000_000
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        hips, some, out, peer_out = (folder / f for f in ("h.csv", "s.csv", "o.csv", "p.csv"))
        write_hips(hips, rows)
        with open(hips, encoding="ascii") as file:
            some.write_text("".join(itertools.islice(file, PEER_ROWS + 1)), encoding="ascii")

        one = best([time_program(program, hips, out, "--threads", "1") for _ in range(REPEATS)])
        all_threads = best([time_program(program, hips, out) for _ in range(REPEATS)])
        peer = pathlib.Path(__file__).with_name("cohort_peer.py")
        runs = [subprocess.run([sys.executable, peer, some, peer_out], check=True, text=True,
                               capture_output=True).stdout.split() for _ in range(REPEATS)]
        whole, model = (min(float(run[i]) for run in runs) for i in (0, 1))

        print(f"{rows} rows, {hips.stat().st_size / 1e6:.0f} MB in, "
              f"{out.stat().st_size / 1e6:.0f} MB out, {os.cpu_count()} processors, "
              f"best of {REPEATS}")
        for label, (seconds, memory) in [("1 thread", one), ("all threads", all_threads)]:
            print(f"telmarion-batch, {label:11}: {seconds:6.2f} s, {rows / seconds:10,.0f} rows/s, "
                  f"{memory:.0f} MiB")
        print(f"NumPy, CSV to CSV           : {whole:6.2f} s for {PEER_ROWS}, "
              f"{PEER_ROWS / whole:10,.0f} rows/s")
        print(f"NumPy, model alone          : {model:6.2f} s for {PEER_ROWS}, "
              f"{PEER_ROWS / model:10,.0f} rows/s")
        rate = rows / all_threads[0]
        print(f"telmarion-batch is {rate * whole / PEER_ROWS:.0f} times as fast CSV to CSV "
              f"({rows / one[0] * whole / PEER_ROWS:.0f} times on one thread)")
        print(f"largest relative difference of the results: {largest_difference(out, peer_out):.1e}")


if __name__ == "__main__":
    main()
