"""test.sh builds the preset it is given and hands CTest the quick tests or all of them."""
import os
import pathlib
import subprocess
import sys
import tempfile
import unittest

TOP = pathlib.Path(sys.argv.pop(1))
QUICK = ["--label-exclude", "^slow$"]


class TestScript(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.tools = pathlib.Path(folder.name)
        self.tool("dpkg-query", "printf installed")
        self.tool("cmake", 'echo "cmake $*" >&2')
        self.tool("ctest", 'echo "ctest $*"')

    def tool(self, name, command):
        """Stands in for a tool, so that nothing is installed, built or run."""
        (self.tools / name).write_text(f"#!/bin/sh\n{command}\n", encoding="utf-8")
        (self.tools / name).chmod(0o755)

    def run_script(self, script, *arguments):
        path = f"{self.tools}:{os.environ['PATH']}"
        return subprocess.run([TOP / script, *arguments], env={**os.environ, "PATH": path},
                              capture_output=True, check=False, text=True)

    def check(self, preset, labels, script, *arguments):
        done = self.run_script(script, *arguments)
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertIn(f"--preset {preset}", done.stderr)
        words = done.stdout.split()
        self.assertEqual(words[:3], ["ctest", "--preset", preset])
        self.assertEqual(words[5:], labels)

    def test_alone_it_runs_the_quick_tests(self):
        self.check("release", QUICK, "test.sh")

    def test_slow_runs_all(self):
        self.check("release", [], "test.sh", "--slow")

    def test_a_preset_goes_with_both(self):
        self.check("sanitize", QUICK, "test.sh", "sanitize")
        self.check("sanitize", [], "test.sh", "sanitize", "--slow")
        self.check("sanitize", [], "test.sh", "--slow", "sanitize")

    def test_continuous_integration_runs_all(self):
        self.check("release", [], ".ci/run")

    def test_an_unknown_option_is_refused(self):
        done = self.run_script("test.sh", "--fast")
        self.assertEqual((done.returncode, done.stdout), (1, ""))
        self.assertIn("--fast", done.stderr)


if __name__ == "__main__":
    unittest.main()
