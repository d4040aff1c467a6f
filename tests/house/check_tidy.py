"""Fails where clang-tidy finds fault with the program's sources.

It looks only at what has changed since it passed: a source, what that includes of ours, how it is
compiled, the configuration or clang-tidy itself. What has passed is kept in the build folder. The tests
are left out: their macros expand to what the checks are there to forbid.

    check_tidy.py TOP BUILD CLANG_TIDY [--passed-before]

With --passed-before it looks only at sources that have passed at some time and have changed since, which
is quick.
"""
import concurrent.futures
import hashlib
import json
import os
import pathlib
import re
import subprocess
import sys

import check_functions

ROOMS = {*check_functions.ROOMS, "packaging"}
INCLUDE = re.compile(r'^\s*#\s*include\s*"([^"]+)"', re.MULTILINE)


def commands(top, build):
    """Source, relative to `top`, and compile command of everything to be looked at."""
    for entry in json.loads((build / "compile_commands.json").read_text(encoding="utf-8")):
        path = pathlib.Path(entry["file"])
        if path.is_relative_to(top) and path.relative_to(top).parts[0] in ROOMS:
            yield path.relative_to(top), entry["command"]


def with_headers(path, top, found):
    """Adds `path` and all it includes of ours to `found`, with its text."""
    if path not in found and (top / path).is_file():
        found[path] = (top / path).read_text(encoding="utf-8")
        for header in INCLUDE.findall(found[path]):
            with_headers(pathlib.Path(header), top, found)
    return found


def key(path, command, top, common):
    """What a pass of `path` stands for: another key, another look."""
    texts = [text for _, text in sorted(with_headers(path, top, {}).items())]
    return hashlib.sha256("\0".join([common, command, *texts]).encode()).hexdigest()


class Passes:
    """Which keys have passed, one small file for each source."""

    def __init__(self, build):
        self.folder = build / "clang-tidy"

    def of(self, path):
        file = self.folder / f"{path}.passed"
        return file.read_text(encoding="utf-8") if file.exists() else None

    def keep(self, path, passed):
        file = self.folder / f"{path}.passed"
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_text(passed, encoding="utf-8")


def check(top, build, tidy, only_passed_before=False):
    """Looks at what has changed. The number of sources looked at, and what was found in them."""
    common = subprocess.run([tidy, "--version"], capture_output=True, check=True, text=True).stdout
    common += (top / ".clang-tidy").read_text(encoding="utf-8")
    passes = Passes(build)
    keys = {path: key(path, command, top, common) for path, command in commands(top, build)}
    if not keys:
        return 0, [f"nothing of the program is compiled in {build}"]
    changed = [path for path in keys if passes.of(path) != keys[path]]
    if only_passed_before:
        changed = [path for path in changed if passes.of(path)]

    def look(path):
        done = subprocess.run([tidy, "-quiet", "-p", build, top / path], capture_output=True,
                              check=False, text=True)
        if done.returncode == 0:
            passes.keep(path, keys[path])
            return ""
        return done.stdout or done.stderr

    with concurrent.futures.ThreadPoolExecutor(len(os.sched_getaffinity(0))) as pool:
        return len(changed), [text for text in pool.map(look, changed) if text]


def main():
    top, build = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2])
    looked, found = check(top, build, sys.argv[3], "--passed-before" in sys.argv[4:])
    print("\n".join(found) or f"clang-tidy finds nothing; it looked at {looked} changed sources")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
