"""The example for a cohort runs as its first lines say."""
import os
import pathlib
import subprocess
import sys
import tempfile
import unittest

import hips


class Example(unittest.TestCase):
    def test_a_cohort_becomes_a_picture(self):
        with tempfile.TemporaryDirectory() as folder:
            picture = pathlib.Path(folder) / "cohort.png"
            example, table = (hips.SOURCE / "examples" / name for name in ["cohort.py", "hips.csv"])
            done = subprocess.run([sys.executable, example, table, picture], capture_output=True, text=True,
                                  check=True, timeout=120, env={**os.environ, "MPLCONFIGDIR": folder})
            self.assertRegex(done.stdout, r"(?m)^ok +11$")
            self.assertTrue(picture.read_bytes().startswith(b"\x89PNG"))


if __name__ == "__main__":
    unittest.main(argv=[__file__], verbosity=1)
