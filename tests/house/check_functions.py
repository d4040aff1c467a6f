"""Fails when functions grow long: none of the program's is over 60 lines, and half are under 12.

A function that needs more holds two things. Tables that must be long go into data, not into code.
"""
import json
import pathlib
import statistics
import subprocess
import sys

ROOMS = ["model", "uncertainty", "storage", "case", "platform", "diagram", "caseform", "report",
         "view3d", "app", "batch"]
LONGEST = 60  # lines
MEDIAN = 12


def functions(files, ctags):
    """Length in lines, file and name of every function, longest first."""
    command = [ctags, "--output-format=json", "--fields=+ne", "--kinds-C++=f", "-f", "-"]
    listed = subprocess.run([*command, *files], capture_output=True, check=True, text=True).stdout
    tags = [json.loads(line) for line in listed.splitlines()]
    found = [(t["end"] - t["line"] + 1, t["path"], t["name"]) for t in tags if "end" in t]
    return sorted(found, reverse=True)


def check(found):
    """What is wrong with the lengths, one line of text each."""
    median = statistics.median(length for length, _, _ in found)
    wrong = [f"{path}: {name} has {length} lines" for length, path, name in found if length > LONGEST]
    if median >= MEDIAN:
        wrong.append(f"half of all functions have {median} lines or more")
    return wrong, median


def main():
    top = pathlib.Path(sys.argv[1])
    files = [path for room in ROOMS for path in sorted((top / room).rglob("*.cpp"))]
    files += [path for room in ROOMS for path in sorted((top / room).rglob("*.h"))]
    found = functions(files, sys.argv[2])
    wrong, median = check(found)
    print("\n".join(wrong) or f"{len(found)} functions, median {median} lines, longest {found[0][0]}")
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
