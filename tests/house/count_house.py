"""Prints the size of the house: rooms and arrows, program lines, lengths of functions, long files.

    python3 tests/house/count_house.py
"""
import pathlib
import shutil
import statistics

import check_functions
import check_includes

LONG = 300  # lines of a file


def lines(path):
    return len(path.read_text(encoding="utf-8").splitlines())


def arrows(top):
    """Pairs of rooms of the program of which the first includes the second."""
    found = [(room, header.split("/")[0]) for room, _, quote, header in check_includes.includes(top)
             if quote == '"']
    return {(a, b) for a, b in found if a != b and a in check_functions.ROOMS}


def main():
    top = pathlib.Path(__file__).resolve().parents[2]
    files = check_functions.sources(top)
    sizes = {path: lines(path) for path in files}
    functions = check_functions.functions(files, shutil.which("ctags-universal"))
    lengths = [length for length, _, _ in functions]
    print(f"rooms                     {len(check_functions.ROOMS)}")
    print(f"arrows between them       {len(arrows(top))}")
    print(f"files                     {len(files)}")
    print(f"program lines             {sum(sizes.values())}")
    print(f"functions                 {len(lengths)}")
    print(f"lines of the median one   {statistics.median(lengths):g}")
    print(f"lines of the longest one  {lengths[0]} ({functions[0][2]})")
    long_files = sorted((n, str(path.relative_to(top))) for path, n in sizes.items() if n > LONG)
    print(f"files over {LONG} lines      {len(long_files)}")
    for size, path in reversed(long_files):
        print(f"    {size}  {path}")


if __name__ == "__main__":
    main()
