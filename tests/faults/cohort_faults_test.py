"""telmarion-batch while the system fails at one call after the other, on files and on standard output.

Usage: cohort_faults_test.py PROGRAM FAULT_LIBRARY SOURCE_FOLDER
"""
import errno
import os
import pathlib
import subprocess
import sys
import tempfile
import unittest

PROGRAM, LIBRARY, SOURCE = sys.argv[1], *map(pathlib.Path, sys.argv[2:4])

OLD = b"what was here before\n"
TABLE = (b"lizm,xizm,zizm,Cizm,Hizm,zasuk,thetaCE,headRadius,bodyWeight\n"
         + b"10.40,0.50,6.00,4.40,16.00,0.0,30.0,0.025,70\n" * 20)
CASE_FILE = "western_1252_point.txt"
ERRORS = [errno.ENOSPC, errno.EIO, errno.EACCES]
FAULTS = [("part", 0), ("full", errno.ENOSPC),
          *((kind, error) for kind in ["once", "from then on"] for error in ERRORS)]
MOST_CALLS = 1000


class CohortFaults(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        top = pathlib.Path(folder.name).resolve()
        self.report = top / "report"
        self.folder = top / "files"
        self.folder.mkdir()
        self.table = self.folder / "hips.csv"
        self.table.write_bytes(TABLE)
        self.cases = self.folder / "cases"
        self.cases.mkdir()
        (self.cases / "a.txt").write_bytes((SOURCE / "tests" / "files" / CASE_FILE).read_bytes())
        self.target = self.folder / "out.csv"

    def run_program(self, arguments, stdout=subprocess.PIPE, orders=None, threads=2):
        # A sanitizer's library then need not be the first; the fault library has no use for it.
        options = os.environ.get("ASAN_OPTIONS", "") + ":verify_asan_link_order=0"
        environment = {**os.environ, "LC_ALL": "en_US.UTF-8", "ASAN_OPTIONS": options, **(orders or {})}
        return subprocess.run([PROGRAM, "--threads", str(threads), *map(str, arguments)], stdout=stdout,
                              stderr=subprocess.PIPE, stdin=subprocess.DEVNULL, env=environment,
                              timeout=60, check=False)

    def run_with_fault(self, fault, number, arguments, stdout=subprocess.PIPE):
        """The finished program and the call that was struck, if any."""
        self.report.unlink(missing_ok=True)
        kind, error = fault
        # Found by its folder: the names of libraries to preload may not hold blanks.
        done = self.run_program(arguments, stdout, {
            "LD_PRELOAD": LIBRARY.name, "LD_LIBRARY_PATH": str(LIBRARY.parent),
            "TELMARION_FAULT_FOLDER": str(self.folder),
            "TELMARION_FAULT_KIND": kind, "TELMARION_FAULT_ERROR": str(error),
            "TELMARION_FAULT_NUMBER": str(number), "TELMARION_FAULT_REPORT": str(self.report)})
        return done, self.report.read_text() if self.report.exists() else None

    def walk(self, fault, operate, check):
        """Lets each call of `operate` fail in turn; `check` gives whether the program refused."""
        refused = 0
        for number in range(1, MOST_CALLS):
            done, call = operate(fault, number)
            with self.subTest(fault=fault, number=number, call=call):
                refused += check(done)
            if call is None:
                print(f"{self._testMethodName}: {fault[0]}, {errno.errorcode.get(fault[1], '-')}: "
                      f"{number - 1} calls struck, {refused} refused")
                self.assertGreater(number, 1)
                return refused
        self.fail("the operation never comes to an end")

    def check_told(self, done):
        """Trouble with a file is one sentence that names the file and the reason."""
        self.assertEqual(done.returncode, 2)
        said = done.stderr.decode().splitlines()
        # Qt reports a position that cannot be set as well.
        said = [line for line in said if not line.startswith("QFile::at: ")]
        self.assertEqual(len(said), 1, said)
        self.assertRegex(said[0], r"^telmarion-batch: (.*\.(csv|txt)|standard output|.*/cases).*: .+")

    def write_over(self, fault, number):
        self.target.write_bytes(OLD)
        return self.run_with_fault(fault, number, [self.table, "--output", self.target])

    def check_old_or_new(self, done):
        self.assertEqual(sorted(os.listdir(self.folder)), ["cases", "hips.csv", "out.csv"])
        self.assertEqual(self.table.read_bytes(), TABLE)
        if done.returncode == 0:
            self.assertEqual(self.target.read_bytes(), self.whole)
            return False
        self.check_told(done)
        self.assertEqual(self.target.read_bytes(), OLD)
        return True

    def test_an_output_file_is_whole_or_the_old_one(self):
        self.whole = self.run_program([self.table]).stdout
        for fault in FAULTS:
            refused = self.walk(fault, self.write_over, self.check_old_or_new)
            if fault[0] == "full":
                self.assertIn(b"No space left on device", self.write_over(fault, 1)[0].stderr)
            self.assertEqual(refused > 0, fault[0] != "part")
            self.target.write_bytes(OLD)
            self.assertEqual(self.run_program([self.table, "-o", self.target]).returncode, 0)
            self.assertEqual(self.target.read_bytes(), self.whole)

    def write_budget(self, fault, number):
        self.target.write_bytes(OLD)
        self.budget.write_bytes(OLD)
        return self.run_with_fault(fault, number, [self.table, "--output", self.target, *self.wanted])

    def check_each_old_or_new(self, done):
        """Neither file is ever a part of one; the one that the message names is the old one."""
        self.assertEqual(sorted(os.listdir(self.folder)),
                         ["budget.csv", "cases", "hips.csv", "out.csv", "u.csv"])
        found = self.target.read_bytes(), self.budget.read_bytes()
        if done.returncode == 0:
            self.assertEqual(found, (self.whole, self.whole_budget))
            return False
        self.check_told(done)
        self.assertIn(found[0], [OLD, self.whole])
        self.assertIn(found[1], [OLD, self.whole_budget])
        for file in [self.target, self.budget]:
            if str(file).encode() in done.stderr:
                self.told.add(file)
                self.assertEqual(file.read_bytes(), OLD)
        return True

    def test_a_budget_is_whole_or_the_old_one(self):
        defaults = self.folder / "u.csv"
        defaults.write_text("column,u,unit,distribution\nthetaCE,2.5,deg,normal\n")
        self.budget = self.folder / "budget.csv"
        self.wanted = ["--uncertainty", defaults, "--budget", self.budget, "--trials", "1000"]
        self.whole = self.run_program([self.table, *self.wanted]).stdout
        self.whole_budget = self.budget.read_bytes()
        self.assertEqual(len(self.whole_budget.splitlines()), 1 + 5 * 20)
        self.told = set()
        for fault in FAULTS:
            refused = self.walk(fault, self.write_budget, self.check_each_old_or_new)
            self.assertEqual(refused > 0, fault[0] != "part")
        self.assertEqual(self.told, {self.target, self.budget})

    def write_to_standard_output(self, fault, number):
        with open(self.target, "wb") as target:
            return self.run_with_fault(fault, number, [self.table], target)

    def check_told_or_whole(self, done):
        if done.returncode == 0:
            self.assertEqual(self.target.read_bytes(), self.whole)
            return False
        self.check_told(done)
        self.assertTrue(self.whole.startswith(self.target.read_bytes()))
        return True

    def test_standard_output_is_whole_or_the_loss_is_told(self):
        self.whole = self.run_program([self.table]).stdout
        for fault in FAULTS:
            refused = self.walk(fault, self.write_to_standard_output, self.check_told_or_whole)
            self.assertEqual(refused > 0, fault[0] != "part")

    def read_cases(self, fault, number):
        return self.run_with_fault(fault, number, [self.cases])

    def check_whole_or_remarked(self, done):
        """A case file that cannot be read any more is a row that says so."""
        if done.returncode == 1:
            self.assertIn(b"1 row had bad input: ", done.stderr)
            self.assertIn(f"\n{self.cases}/a.txt,,,,,,,,,,,,,,,".encode(), done.stdout)
            return True
        if done.returncode == 0:
            self.assertEqual(done.stdout, self.whole)
            return False
        self.check_told(done)
        return True

    def test_a_case_file_is_read_whole_or_the_trouble_told(self):
        self.whole = self.run_program([self.cases]).stdout
        for fault in FAULTS:
            if fault[0] == "full":
                continue  # nothing is written here
            refused = self.walk(fault, self.read_cases, self.check_whole_or_remarked)
            self.assertEqual(refused > 0, fault[0] != "part")

    def test_threads_that_the_system_does_not_give_are_done_without(self):
        self.table.write_bytes(TABLE + (TABLE.split(b"\n")[1] + b"\n") * 20_000)
        whole = self.run_program([self.table]).stdout
        for most in ["0", "1", "5"]:
            done = self.run_program([self.table], threads=64, orders={
                "LD_PRELOAD": LIBRARY.name, "LD_LIBRARY_PATH": str(LIBRARY.parent),
                "TELMARION_FAULT_THREADS": most})
            self.assertEqual((done.returncode, done.stderr), (0, b""))
            self.assertTrue(done.stdout == whole)

    def test_a_folder_that_cannot_be_listed_is_told(self):
        for number in range(1, MOST_CALLS):
            done, call = self.read_cases(("once", errno.EACCES), number)
            self.assertIsNotNone(call, "the folder is never opened")
            if call == "openat":
                break
        self.assertEqual((done.returncode, done.stderr.decode()), (
            2, f"telmarion-batch: {self.cases}: the folder cannot be read: Permission denied\n"))

    def test_help_and_version_that_are_lost(self):
        for argument in ["--help", "--version"]:
            with open("/dev/full", "wb") as full:
                done = self.run_program([argument], full)
            self.check_told(done)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
