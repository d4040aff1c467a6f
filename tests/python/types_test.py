"""The module's types: right in themselves, the same as the compiled module's, and seen by its users."""
import os
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

import hips
import telmarion

PACKAGE = pathlib.Path(telmarion.__file__).parent
USER = hips.SOURCE / "tests" / "python" / "typed_user.py"


class Types(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(folder.cleanup)
        # Classes made in C++ have a metaclass of their own.
        cls.known = pathlib.Path(folder.name) / "known"
        cls.known.write_text("telmarion._core.(Defaults|Distribution|Points|Settings|Unit)\n", encoding="utf-8")
        cls.environment = {**os.environ, "MYPYPATH": str(PACKAGE.parent), "MYPY_CACHE_DIR": folder.name}

    def run_tool(self, *command):
        return subprocess.run([sys.executable, "-m", *command], capture_output=True, text=True, check=False,
                              timeout=300, env=self.environment, cwd=PACKAGE.parent)

    def test_are_right_in_themselves(self):
        done = self.run_tool("mypy", "--strict", str(PACKAGE))
        self.assertEqual(done.returncode, 0, done.stdout + done.stderr)

    def test_of_the_compiled_module_are_what_it_has(self):
        done = self.run_tool("mypy.stubtest", "--ignore-missing-stub", "--concise", "--allowlist", str(self.known),
                             "telmarion._core")
        self.assertEqual(done.returncode, 0, done.stdout + done.stderr)

    def test_are_what_a_user_sees(self):
        done = self.run_tool("mypy", "--strict", str(USER))
        found = {}
        for line, text in re.findall(r"typed_user\.py:(\d+): (.*)", done.stdout):
            found[int(line)] = found.get(int(line), "") + text
        for number, line in enumerate(USER.read_text(encoding="utf-8").splitlines(), 1):
            if line.startswith(("reveal_type", "telmarion.")):
                self.assertIn(line.split("# ")[1], found.pop(number, ""), line)
        self.assertEqual(found, {})

    def test_are_announced(self):
        self.assertTrue((PACKAGE / "py.typed").is_file())


if __name__ == "__main__":
    unittest.main(argv=[__file__], verbosity=1)
