"""One file on both sides of the program."""
import os
import subprocess
import sys
import unittest

from cohort_program import Case, HEADER, HIP, PROGRAM, case_file, rows, run

PATIENCE = 30  # seconds; without the check the program reads for ever
SAID = ("standard output goes into the same file; write the results elsewhere, or replace the file "
        "with --output")


class SameFile(Case):
    def setUp(self):
        super().setUp()
        self.whole = f"{HEADER}\n" + f"{HIP}\n" * 50_000
        self.table = self.file("big.csv", self.whole)

    def into(self, target, *arguments, mode="ab", stdin=subprocess.DEVNULL):
        with open(target, mode) as stdout:
            return subprocess.run([PROGRAM, *map(str, arguments)], stdin=stdin, stdout=stdout,
                                  stderr=subprocess.PIPE, timeout=PATIENCE, check=False)

    def test_standard_output_behind_the_input_is_refused(self):
        self.check(self.into(self.table, self.table), 2, f"{self.table}: {SAID}")
        self.assertEqual(self.table.read_text(), self.whole)

    def test_under_every_name(self):
        soft, hard = self.path / "soft.csv", self.path / "hard.csv"
        soft.symlink_to("big.csv")
        os.link(self.table, hard)
        for name in [soft, hard, f"{self.path}/./big.csv"]:
            self.check(self.into(self.table, name), 2, f"{name}: {SAID}")
            self.check(self.into(name, self.table), 2, f"{self.table}: {SAID}")
            self.check(self.into(name, self.table, "--output", "/dev/stdout"), 2,
                       f"{self.table}: {SAID}")
        with open(self.table, "rb") as stdin:
            self.check(self.into(self.table, stdin=stdin), 2, f"standard input: {SAID}")
        other = self.file("other.csv", self.whole)
        self.check(self.into(self.table, other, self.table), 2, f"{self.table}: {SAID}")
        self.assertEqual(self.table.read_text(), self.whole)

    def test_a_table_that_the_shell_has_emptied_is_told_why(self):
        self.check(self.into(self.table, self.table, mode="wb"), 2, f"{self.table}: {SAID}")

    def test_case_files_too(self):
        case = self.file("a.txt", case_file())
        self.check(self.into(case, case), 2, f"{case}: {SAID}")
        folder = self.path / "cases"
        folder.mkdir()
        self.file("cases/a.txt", case_file())
        out = folder / "out.txt"
        self.check(self.into(out, folder), 2, f"{out}: {SAID}")
        self.assertEqual(case.read_bytes(), case_file())

    def test_output_over_its_own_input_replaces_it_as_a_whole(self):
        soft, hard = self.path / "soft.csv", self.path / "hard.csv"
        for target in [self.table, soft]:
            self.table.write_text(self.whole)
            soft.unlink(missing_ok=True)
            soft.symlink_to("big.csv")
            self.check(run(self.table, "--output", target), 0)
            self.assertEqual(len(rows(self.table.read_bytes())), 50_000)
            self.assertTrue(soft.is_symlink())
        self.table.write_text(self.whole)
        os.link(self.table, hard)
        self.check(run(self.table, "--output", hard), 0)
        self.assertEqual(len(rows(hard.read_bytes())), 50_000)
        self.assertEqual(self.table.read_text(), self.whole)

    def test_the_device_of_standard_output_is_standard_output(self):
        for device in ["/dev/stdout", "/dev/fd/1", "/proc/self/fd/1"]:
            log = self.file("log", "before\n")
            self.check(self.into(log, self.table, "--output", device), 0)
            self.assertTrue(log.read_text().startswith(f"before\n{HEADER},rWb,"))

    def test_other_files_and_devices_may_be_on_both_sides(self):
        self.check(self.into(self.path / "new.csv", self.table), 0)
        with open(os.devnull, "rb") as nothing:
            done = self.into(os.devnull, stdin=nothing)
        self.assertIn(b"the file is empty", done.stderr)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1], verbosity=2)
