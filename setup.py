"""Builds the Python module with setuptools, without CMake and Qt: see docs/python.md."""
import pathlib
import re

from setuptools import Extension, setup

ROOMS = ["model", "columns", "uncertainty", "python"]


def version():
    """As the programs have it."""
    text = pathlib.Path("CMakeLists.txt").read_text(encoding="utf-8")
    return re.search(r"project\(\s*telmarion\s+VERSION (\S+)", text).group(1)


core = Extension(
    "telmarion._core",
    sources=sorted(str(path) for room in ROOMS for path in pathlib.Path(room).glob("*.cpp")),
    depends=sorted(str(path) for room in ROOMS for path in pathlib.Path(room).glob("*.h")),
    include_dirs=["."],
    libraries=["hwy"],
    define_macros=[("TELMARION_VERSION", f'"{version()}"')],
    # A fused multiply-add would change the digits.
    extra_compile_args=["-std=c++20", "-O3", "-g0", "-ffp-contract=off", "-fvisibility=hidden"],
    language="c++",
)

setup(version=version(), ext_modules=[core])
