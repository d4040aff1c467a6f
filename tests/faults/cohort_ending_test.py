"""telmarion-batch is ended by signals while its output is half written, where files must have a name.

Usage: cohort_ending_test.py PROGRAM FAULT_LIBRARY
"""
import os
import pathlib
import signal
import subprocess
import sys
import tempfile
import time
import unittest

PROGRAM, LIBRARY = sys.argv[1], pathlib.Path(sys.argv[2])

HEADER = b"lizm,xizm,zizm,Cizm,Hizm,zasuk,thetaCE,headRadius,bodyWeight\n"
HIP = b"10.40,0.50,6.00,4.40,16.00,0.0,30.0,0.025,70\n"
OLD = b"what was here before\n"
PATIENCE = 30  # seconds, on a busy machine


class CohortEnding(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name).resolve()
        self.target = self.folder / "out.csv"

    def start(self, **more):
        # As on a file system of a network: no file can be opened without a name.
        orders = {"LD_PRELOAD": LIBRARY.name, "LD_LIBRARY_PATH": str(LIBRARY.parent),
                  "TELMARION_FAULT_FOLDER": str(self.folder),
                  "TELMARION_FAULT_IMPOSSIBLE": "O_TMPFILE",
                  "ASAN_OPTIONS": os.environ.get("ASAN_OPTIONS", "") + ":verify_asan_link_order=0"}
        program = subprocess.Popen([PROGRAM, "--output", self.target], stdin=subprocess.PIPE,
                                   stderr=subprocess.PIPE, env={**os.environ, **orders}, **more)
        program.stdin.write(HEADER + HIP)
        program.stdin.flush()
        return program

    def files(self):
        return sorted(os.listdir(self.folder))

    def wait_until_written(self, before):
        """Until there is a temporary file with a row in it."""
        end = time.monotonic() + PATIENCE
        while time.monotonic() < end:
            fresh = [self.folder / name for name in self.files() if name not in before]
            if fresh and fresh[0].stat().st_size > len(HEADER + HIP):
                return
            time.sleep(0.01)
        self.fail("there is no temporary file, so nothing is tried here")

    def test_a_signal_leaves_no_temporary_file_and_the_old_one_as_it_was(self):
        for old in [None, OLD]:
            for number in [signal.SIGINT, signal.SIGTERM, signal.SIGHUP, signal.SIGQUIT]:
                if old:
                    self.target.write_bytes(old)
                before = self.files()
                with self.subTest(old=old, signal=number), self.start() as program:
                    self.wait_until_written(before)
                    program.send_signal(number)
                    self.assertEqual(program.wait(PATIENCE), -number)
                    self.assertEqual(program.stderr.read(), b"")
                self.assertEqual(self.files(), before)
                if old:
                    self.assertEqual(self.target.read_bytes(), old)

    def test_a_signal_that_the_parent_ignores_changes_nothing(self):
        def ignore():
            signal.signal(signal.SIGHUP, signal.SIG_IGN)  # as nohup does

        with self.start(preexec_fn=ignore) as program:
            self.wait_until_written([])
            program.send_signal(signal.SIGHUP)
            program.stdin.write(HIP)
            program.stdin.close()
            self.assertEqual((program.stderr.read(), program.wait(PATIENCE)), (b"", 0))
        self.assertEqual(self.files(), ["out.csv"])
        self.assertEqual(len(self.target.read_bytes().splitlines()), 3)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1], verbosity=2)
