"""Options, help, the progress line, the examples."""
import os
import pty
import select
import subprocess
import sys
import time
import unittest

from cohort_program import Case, HEADER, HIP, PROGRAM, SOURCE, VERSION, rows, run

PATIENCE = 30  # seconds, on a busy machine


class CommandLine(Case):
    def test_help_and_version(self):
        done = run("--help")
        self.check(done, 0)
        for word in ["--output", "--threads", "--delimiter", "--version", "--table", "lizm[mm]"]:
            self.assertIn(word, done.stdout.decode())
        done = run("--version")
        self.check(done, 0)
        self.assertEqual(done.stdout.decode(), f"telmarion-batch {VERSION}\n")

    def test_wrong_usage(self):
        for arguments in [["--bogus"], ["--threads", "0"], ["--threads", "many"], ["--threads"],
                          ["--threads", "-1"], ["--threads", ""], ["--delimiter", "x"], ["--delimiter", ""],
                          ["--output"]]:
            done = run(*arguments)
            self.assertEqual(done.returncode, 2, arguments)
            self.assertEqual(done.stdout, b"")
            self.assertIn("telmarion-batch: ", done.stderr.decode())
            self.assertEqual(len(done.stderr.decode().splitlines()), 1, done.stderr)

    def run_on_terminal(self, output, until=b""):
        """Feeds rows, with standard error on a terminal, until it has shown `until`, and one row more; all
        that the terminal shows."""
        terminal, program_side = pty.openpty()
        with subprocess.Popen([PROGRAM], stdin=subprocess.PIPE,
                              stdout=program_side if output == "terminal" else subprocess.DEVNULL,
                              stderr=program_side) as program:
            os.close(program_side)
            program.stdin.write(f"{HEADER}\n".encode())
            shown = b""
            end = time.monotonic() + PATIENCE
            while until not in shown and time.monotonic() < end:
                program.stdin.write(f"{HIP}\n".encode())
                program.stdin.flush()
                if select.select([terminal], [], [], 0.05)[0]:
                    shown += os.read(terminal, 65536)
            program.stdin.write(f"{HIP}\n".encode())
            program.stdin.close()
            while piece := self.read_piece(terminal):
                shown += piece
        os.close(terminal)
        return shown.decode()

    @staticmethod
    def read_piece(terminal):
        try:
            return os.read(terminal, 65536)
        except OSError:  # how a terminal says that nobody is left at its other side
            return b""

    def test_no_progress_within_the_first_second(self):
        end = time.monotonic() + PATIENCE
        while time.monotonic() < end:
            start = time.monotonic()
            shown = self.run_on_terminal("elsewhere")
            # A busy machine may have kept the program waiting for longer: such a run tells nothing.
            if time.monotonic() - start < 1:
                self.assertEqual(shown, "")
                return
        self.fail("no run ends within a second")

    def test_progress_after_a_second_on_a_terminal(self):
        start = time.monotonic()
        shown = self.run_on_terminal("elsewhere", until=b"rows/s")
        self.assertGreater(time.monotonic() - start, 1)
        self.assertRegex(shown, r"\d+ rows, \d+ rows/s")
        self.assertTrue(shown.endswith("\r\033[K"), "the line stays behind")

    def test_progress_and_results_on_one_terminal(self):
        shown = self.run_on_terminal("terminal", until=b"rows/s")
        self.assertRegex(shown, r"\d+ rows, \d+ rows/s")
        lines = shown.replace("\r\n", "\n").split("\n")
        for line in lines[1:-1]:
            # What stands on the line after the last time it was cleared is a row and nothing else.
            self.assertRegex(line.split("\r\033[K")[-1], r"^10\.40,.*,ok$")

    def test_examples(self):
        done = run(SOURCE / "examples" / "hips.csv")
        self.check(done, 0)
        hips = rows(done.stdout)
        self.assertGreaterEqual(len(hips), 12)
        self.assertTrue(all(row["hip"].startswith("Made-up") for row in hips))
        self.check_known(hips[0])
        self.assertEqual({row["status"].split(":")[0] for row in hips}, {"ok", "refused"})


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1], verbosity=2)
