"""Files of every name, and what else lies in folders."""
import os
import sys
import unittest

from cohort_program import Case, HEADER, HIP, case_file, rows, run

MULLER = os.fsdecode(b"M\xfcller")  # as an old system has named the file
LANGUAGES = ["C", "POSIX", "C.UTF-8", "de_DE.UTF-8", "de_DE"]


def in_language(language):
    return {**os.environ, "LC_ALL": language}


class FileNames(Case):
    def test_a_case_file_whose_name_is_not_utf8_is_a_row_like_any_other(self):
        path = self.file(f"{MULLER}.txt", case_file())
        self.file("a.txt", case_file())
        for language in LANGUAGES:
            for given, expected in [([self.path], [str(path), f"{self.path}/a.txt"]),
                                    ([path], [str(path)])]:
                done = run(*given, env=in_language(language))
                self.assertEqual(done.returncode, 0, done.stderr)
                found = rows(done.stdout)
                self.assertEqual([row["file"] for row in found], expected)
                for row in found:
                    self.check_known(row)
                self.assertIn(b"/M\xfcller.txt,Surname Given,", done.stdout)

    def test_a_folder_and_a_table_whose_names_are_not_utf8(self):
        folder = self.path / MULLER
        folder.mkdir()
        self.file(f"{MULLER}/a.txt", case_file())
        table = self.file(f"{MULLER}.csv", f"{HEADER}\n{HIP}\n")
        tabs = self.file(f"{MULLER}.txt", f"{HEADER}\n{HIP}\n".replace(",", "\t"))
        for language in LANGUAGES:
            found = rows(run(folder, env=in_language(language)).stdout)
            self.assertEqual([row["file"] for row in found], [f"{folder}/a.txt"])
            done = run(table, env=in_language(language))
            self.check(done, 0)
            self.check_known(rows(done.stdout)[0])
            self.check_known(rows(run(tabs, env=in_language(language)).stdout, "\t")[0])

    def test_output_has_the_very_name_that_was_given(self):
        for language in LANGUAGES:
            self.check(run("--output", self.path / f"{MULLER}.csv", text=f"{HEADER}\n{HIP}\n",
                           env=in_language(language)), 0)
            self.assertEqual(os.listdir(os.fsencode(self.path)), [b"M\xfcller.csv"])
            (self.path / f"{MULLER}.csv").unlink()

    def test_messages_show_the_bytes_that_are_no_text(self):
        shown = f"{self.path}/M\\xfcller"
        self.check(run(self.path / f"{MULLER}.csv"), 2,
                   f"{shown}.csv: cannot be opened: No such file or directory")
        self.check(run(self.path / f"{MULLER}.txt"), 2, f"{shown}.txt: No such file or directory")
        self.check(run("-o", self.path / MULLER / "out.csv", text=f"{HEADER}\n{HIP}\n"), 2,
                   f"{shown}/out.csv: cannot be written: No such file or directory")
        self.file(f"{MULLER}.txt", "Dear colleague,\n")
        done = run(self.path)
        self.check(done, 1, f"1 row had bad input: {self.path}: row 2: error: Not correct file")

    def test_names_with_everything_that_a_name_may_hold(self):
        names = ["a,b.txt", 'say "aah".txt', "two\nlines.txt", "cr\rcr.txt", " blank .txt",
                 "tab\tbed.txt", "semi;colon.txt", "Müller.txt", "\x1b[31mred.txt",
                 "n" * 251 + ".txt", "'.txt", "ø.TxT"]
        for name in names:
            self.file(name, case_file())
        done = run(self.path)
        self.check(done, 0)
        found = rows(done.stdout)
        self.assertEqual(sorted(row["file"] for row in found),
                         sorted(f"{self.path}/{name}" for name in names))
        for row in found:
            self.check_known(row)

    def test_the_path_is_the_one_that_was_given(self):
        self.file("a.txt", case_file())
        for given, expected in [(".", "./a.txt"), ("./", "./a.txt"), ("a.txt", "a.txt"),
                                ("./a.txt", "./a.txt"), (f"{self.path}/", f"{self.path}/a.txt")]:
            done = run(given, cwd=self.path)
            self.check(done, 0)
            self.assertEqual([row["file"] for row in rows(done.stdout)], [expected])

    def test_names_that_begin_like_options(self):
        self.file("-o.txt", case_file())
        self.file("-.csv", f"{HEADER}\n{HIP}\n")
        done = run("--", "-o.txt", cwd=self.path)
        self.check(done, 0)
        self.assertEqual([row["file"] for row in rows(done.stdout)], ["'-o.txt"])
        self.check_known(rows(run("--", "-.csv", cwd=self.path).stdout)[0])

    def test_names_that_are_too_long(self):
        for path in ["n" * 300 + ".csv", "n" * 5000 + ".csv"]:
            self.check(run(path), 2, f"{path}: cannot be opened: File name too long")
            self.check(run("-o", path, text=f"{HEADER}\n{HIP}\n"), 2,
                       f"{path}: cannot be written: File name too long")


class Folders(Case):
    def test_what_is_no_case_file_is_named(self):
        self.file("a.txt", case_file())
        self.file("table.csv", "x")
        done = run(self.path)
        self.check(done, 0,
                   f"{self.path}: 1 entry is no case file (.txt) and is passed over: table.csv")
        self.assertEqual(len(rows(done.stdout)), 1)
        self.file(".hidden.txt", case_file())
        self.file("b.txt.bak", case_file())
        self.file(f"{MULLER}.doc", "x")
        (self.path / "folder.txt").mkdir()
        (self.path / "more").mkdir()
        self.check(run(self.path), 0,
                   f"{self.path}: 6 entries are no case files (.txt) and are passed over: "
                   ".hidden.txt, M\\xfcller.doc, b.txt.bak, folder.txt/, more/ and 1 more")

    def test_case_files_that_cannot_be_read_are_rows_that_say_so(self):
        (self.path / "a.txt").symlink_to("nowhere")
        (self.path / "b.txt").symlink_to("b.txt")
        os.mkfifo(self.path / "c.txt")
        self.file("d.txt", case_file())
        (self.path / "e.txt").symlink_to("/dev/zero")
        self.file("f.txt", b"TELMARION" + b"x" * 2_000_000)
        done = run(self.path)
        self.assertEqual(done.returncode, 1)
        self.assertEqual([row["status"] for row in rows(done.stdout)], [
            "error: No such file or directory", "error: Too many levels of symbolic links",
            "error: It is not a file.", "ok", "error: It is not a file.",
            "error: Not correct file"])

    def test_a_file_that_is_given_twice_is_named(self):
        path = self.file("a.txt", case_file())
        done = run(self.path, path)
        self.check(done, 0, f"{path}: given more than once, and read as often")
        self.assertEqual(len(rows(done.stdout)), 2)
        (self.path / "b.txt").symlink_to("a.txt")
        os.link(path, self.path / "c.txt")
        done = run(self.path)
        self.assertEqual(done.returncode, 0)
        self.assertRegex(done.stderr.decode(), "^telmarion-batch: 2 files are given more than once, "
                                               "and read as often, the first: .*txt\n$")
        self.assertEqual(len(rows(done.stdout)), 3)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1], verbosity=2)
