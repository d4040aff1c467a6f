"""Makes the Debian packages for Python and C++, holds them against the rules, and uses what they install
in a clean environment; then builds the Python module with pip."""
import os
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

BUILD = pathlib.Path(sys.argv.pop(1))
SOURCE = pathlib.Path(sys.argv.pop(1))
VERSION = sys.argv.pop(1)

PYTHON = "/usr/bin/python3"

CONSUMER = """
cmake_minimum_required(VERSION 3.25)
project(consumer LANGUAGES CXX)
find_package(telmarion 1.0 REQUIRED)
message(STATUS "found ${telmarion_VERSION}")
add_executable(consumer main.cpp)
target_link_libraries(consumer PRIVATE telmarion::uncertainty telmarion::model)
"""
PROGRAM = """
#include <telmarion/uncertainty/hip_uncertainty.h>
#include <cstdio>
int main() {
  Uncertainty::HipReading hip{.values = {.lizm = {10.4}, .xizm = {0.5}, .zizm = {6.0}, .Cizm = {4.4}, .Hizm = {16.0},
      .zasuk = {0.0}, .thetaCE = {Sila::DegreesToRadians(30.0)}, .headRadius = {0.025}, .bodyWeight = Sila::Kilograms{70.0}}};
  hip.errors[IndexOf(Sila::Measurement::ThetaCE)] = {.u = Sila::DegreesToRadians(2.5)};
  const auto found = ComputeHipUncertainty(hip, Uncertainty::Points(Uncertainty::kReadingSources), {});
  const auto& pmax = *found.results[IndexOf(Sila::Result::Pmax)];
  std::printf("%.17g %.17g %.17g\\n", pmax.estimate, pmax.spread.interval->low, pmax.spread.interval->high);
}
"""
IN_PYTHON = """
import telmarion
found = telmarion.uncertainty(lizm=10.4, xizm=0.5, zizm=6.0, Cizm=4.4, Hizm=16.0, zasuk=0.0, thetaCE=30.0,
                              headRadius=0.025, bodyWeight=70.0, thetaCE_u=2.5).pmax
print("%.17g %.17g %.17g" % (found.estimate, found.low, found.high))
"""


def run(*command, **options):
    done = subprocess.run([str(part) for part in command], capture_output=True, text=True, check=False, **options)
    if done.returncode != 0:
        raise AssertionError(f"{command}: {done.returncode}\n{done.stdout}{done.stderr}")
    return done.stdout


def field(package, name):
    return run("dpkg-deb", "--field", package, name).strip()


def clean(**more):
    """An environment that holds nothing of the one who runs the tests."""
    return {"PATH": "/usr/bin:/bin", "LC_ALL": "C.UTF-8", "HOME": "/nonexistent", **more}


class Packages(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(folder.cleanup)
        cls.work = pathlib.Path(folder.name)
        run("cpack", "--config", BUILD / "CPackConfig.cmake", "-B", cls.work / "made", cwd=cls.work)
        cls.packages = {p.name.split("_")[0]: p for p in (cls.work / "made").glob("*.deb")}
        cls.root = cls.work / "root"
        for name in ["python3-telmarion", "libtelmarion-dev"]:
            run("dpkg-deb", "--extract", cls.packages[name], cls.root)
        cls.modules = cls.root / "usr/lib/python3/dist-packages"

    def test_are_three_of_one_version(self):
        self.assertEqual({*self.packages}, {"telmarion", "python3-telmarion", "libtelmarion-dev"})
        self.assertEqual(len({field(package, "Version") for package in self.packages.values()}), 1)

    def test_debian_has_nothing_to_say(self):
        for package in self.packages.values():
            self.assertEqual(run("lintian", "--allow-root", "--fail-on", "error,warning", package), "")

    def test_need_what_they_use(self):
        python = field(self.packages["python3-telmarion"], "Depends")
        for part in ["python3 (>= 3.", "python3 (<< 3.", "python3-numpy", "libstdc++6", "libc6"]:
            self.assertIn(part, python)
        self.assertEqual(field(self.packages["libtelmarion-dev"], "Depends"), "libhwy-dev")
        for package in self.packages.values():
            if "Qt" not in field(package, "Description") and package.name[0] != "t":
                self.assertNotIn("qt6", field(package, "Depends"))

    def test_name_no_folder_of_the_build(self):
        for path in self.root.rglob("*"):
            if path.is_file():
                content = path.read_bytes()
                self.assertFalse(bytes(SOURCE) in content or bytes(BUILD) in content, path)

    def test_the_module_is_hardened_and_shows_nothing_but_its_door(self):
        (module,) = self.modules.glob("telmarion/_core.*.so")
        facts = run("readelf", "--wide", "--dynamic", "--segments", "--sections", module)
        for mark in ["GNU_RELRO", "BIND_NOW"]:
            self.assertIn(mark, facts)
        self.assertNotIn(".symtab", facts)
        shown = re.findall(r" [TWDB] (\S+)", run("nm", "--dynamic", "--defined-only", module))
        self.assertEqual([name for name in shown if "Sila" in name or "Uncertainty" in name], [])
        self.assertIn("PyInit__core", shown)

    def test_the_installed_module_computes_as_the_program(self):
        """The tests of the module itself, on the installed one, in a folder of their own."""
        program = BUILD / "batch" / "telmarion-batch"
        for name in ["compute_test.py", "frame_test.py", "uncertainty_test.py"]:
            run(PYTHON, SOURCE / "tests" / "python" / name, program, SOURCE, VERSION,
                env=clean(PYTHONPATH=str(self.modules), PYTHONDONTWRITEBYTECODE="1"), cwd=self.work)

    def test_a_program_in_cpp_finds_the_libraries(self):
        folder = self.work / "consumer"
        folder.mkdir()
        (folder / "CMakeLists.txt").write_text(CONSUMER, encoding="utf-8")
        (folder / "main.cpp").write_text(PROGRAM, encoding="utf-8")
        said = run("cmake", "-S", folder, "-B", folder / "build", f"-DCMAKE_PREFIX_PATH={self.root}/usr",
                   "-DCMAKE_FIND_PACKAGE_NO_PACKAGE_REGISTRY=ON", env=clean())
        self.assertIn(f"found {VERSION}", said)
        run("cmake", "--build", folder / "build", env=clean())
        # C++ and Python give the same bits: estimate, both ends of the interval.
        python = run(PYTHON, "-c", IN_PYTHON, env=clean(PYTHONPATH=str(self.modules)))
        self.assertEqual(run(folder / "build" / "consumer"), python)

    def test_each_header_stands_alone(self):
        include = self.root / "usr" / "include" / "telmarion"
        headers = sorted(include.rglob("*.h"))
        self.assertGreaterEqual(len(headers), 14)
        for header in headers:
            run("c++", "-std=c++20", "-Wall", "-Wextra", "-Werror", "-fsyntax-only", f"-I{include}", "-x", "c++",
                "-include", header, "/dev/null", env=clean())


class Pip(unittest.TestCase):
    def test_builds_a_module_that_gives_the_same_digits(self):
        with tempfile.TemporaryDirectory() as name:
            work = pathlib.Path(name)
            run(PYTHON, "-m", "venv", "--system-site-packages", work / "venv", env=clean())
            copy = work / "sources"
            copy.mkdir()
            for part in ["model", "columns", "uncertainty", "python", "docs/python.md", "setup.py", "pyproject.toml",
                         "CMakeLists.txt"]:
                (copy / part).parent.mkdir(exist_ok=True)
                run("cp", "-r", SOURCE / part, copy / part)
            run(work / "venv/bin/pip", "install", "--no-index", "--no-build-isolation", ".", cwd=copy,
                env=clean(HOME=name, TMPDIR=name))
            program = BUILD / "batch" / "telmarion-batch"
            python = work / "venv/bin/python"
            where = run(python, "-c", "import telmarion; print(telmarion.__file__)", env=clean(), cwd=work)
            self.assertTrue(where.startswith(str(work / "venv")), where)
            for test in ["compute_test.py", "frame_test.py", "uncertainty_test.py"]:
                run(python, SOURCE / "tests" / "python" / test, program, SOURCE, VERSION, env=clean(), cwd=work)


if __name__ == "__main__":
    unittest.main(verbosity=2)
