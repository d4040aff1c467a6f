"""Case files and folders of them as rows of a cohort."""
import os
import sys
import unittest

from cohort_program import Case, HEADER, HIP, case_file, rows, run


class CaseFiles(Case):
    def test_one_file_is_one_row_with_the_results_of_the_window(self):
        path = self.file("a.txt", case_file(comments="two\nlines, \"quoted\""))
        done = run(path)
        self.check(done, 0)
        (row,) = rows(done.stdout)
        self.check_known(row)
        self.assertEqual(row["file"], str(path))
        self.assertEqual(row["name"], "Surname Given")
        self.assertEqual(row["comments"], 'two\nlines, "quoted"')
        self.assertEqual(row["lizm"], "10,4")
        self.assertEqual(row["remark"], "")

    def test_a_folder_is_a_row_a_file_in_the_order_of_their_names(self):
        self.file("c.TXT", case_file(weight="Unknown"))
        self.file("a.txt", case_file())
        self.file("b.txt", "Dear colleague,\n")
        self.file("d.txt", case_file(ce="-20"))
        self.file("e.csv", "not looked at")
        (self.path / "z.txt").symlink_to(self.path / "nowhere")
        done = run(self.path)
        self.assertEqual(done.returncode, 1)
        a, b, c, d, z = rows(done.stdout)
        self.assertTrue(z["status"].startswith("error: "), z["status"])
        self.check_known(a)
        self.assertEqual((b["file"], b["status"], b["remark"]),
                         (f"{self.path}/b.txt", "error: Not correct file", "Not correct file"))
        self.assertEqual((c["file"], c["bodyWeight"], c["pmax"], c["status"]),
                         (f"{self.path}/c.TXT", "", "", "ok"))
        self.assertTrue(d["status"].startswith("refused: "))

    def test_a_name_of_one_word_is_kept(self):
        done = run(self.file("a.txt", case_file(name="Mononym")))
        self.assertEqual(rows(done.stdout)[0]["name"], "Mononym")

    def test_files_and_folders_make_one_table(self):
        first = self.file("a.txt", case_file())
        (self.path / "more").mkdir()
        self.file("more/b.txt", case_file(name="Other One"))
        done = run(first, self.path / "more")
        self.check(done, 0)
        self.assertEqual([row["name"] for row in rows(done.stdout)],
                         ["Surname Given", "Other One"])

    def test_one_file_that_is_no_case_file_ends_the_run(self):
        letter = self.file("letter.txt", "Dear colleague,\n")
        self.check(run(letter), 2, f"{letter}: Not correct file")
        whole = case_file()
        cut = self.file("cut.txt", whole[:whole.index(b"Cizm")])
        self.check(run(cut), 2, f"{cut}: The line \"Cizm\" is missing.")
        cut = self.file("cut.txt", whole[:whole.index(b",4 cm\n\r\nHizm")])
        self.check(run(cut), 2, f"{cut}: The line \"Cizm\" does not end with its unit, \"cm\".")

    def test_a_damaged_line_is_named(self):
        changed = {
            b"theta-CE      = 30": (b"theta-CE     = 30",
                                    'The line "theta-CE" is missing, or its label was changed.'),
            b"0,025 m ": (b"2,5 cm",
                          'The line "radius of head" does not end with its unit, "m".'),
            b"Hip           : L\n\r\n": (b"Hip           : L\n\r\n" * 2,
                                        'The line "Hip" is there twice.'),
        }
        for old, (new, reason) in changed.items():
            damaged = self.file("damaged.txt", case_file().replace(old, new))
            self.check(run(damaged), 2, f"{damaged}: {reason}")
            (row,) = rows(run(self.path).stdout)
            self.assertEqual((row["thetaCE"], row["headRadius"], row["remark"]), ("", "", reason))


class RemarksOfTables(Case):
    """The column in which case files have their faults belongs to the user in a table."""

    def test_they_are_not_taken_for_faults(self):
        status = "error: the row holds no measures"
        path = self.file("hips.csv", f"{HEADER},remark\n{',' * 9}lost film\n")
        done = run(path)
        self.check(done, 1, f"1 row had bad input: {path}: row 2: {status}")
        (row,) = rows(done.stdout)
        self.assertEqual((row["remark"], row["status"]), ("lost film", status))

    def test_not_even_after_case_files(self):
        (self.path / "cases").mkdir()
        self.file("cases/a.txt", "Dear colleague,\n")
        names = "file,name,sex,dateOfBirth,hip,comments," + HEADER + ",remark"
        table = self.file("hips.csv", f"{names}\n{',' * 15}lost film\n")
        done = run(self.path / "cases", table)
        self.assertEqual([row["status"] for row in rows(done.stdout)],
                         ["error: Not correct file", "error: the row holds no measures"])


class TablesNamedLikeCaseFiles(Case):
    def test_a_header_row_makes_a_table_of_it(self):
        for delimiter in ["\t", ";", ","]:
            table = f"name,{HEADER}\nAnn,{HIP}\n".replace(",", delimiter)
            for mark in ["", "\ufeff"]:
                done = run(self.file("hips.txt", mark + table))
                self.check(done, 0)
                (row,) = rows(done.stdout, delimiter)
                self.check_known(row)
                self.assertNotIn("remark", row)

    def test_a_header_row_that_does_not_serve_is_told_as_that(self):
        path = self.file("hips.TXT", f"{HEADER}\n{HIP}\n".replace("Cizm", "width"))
        done = run(path)
        self.assertEqual(done.returncode, 2)
        self.assertIn(f"{path}: row 1: the column Cizm is missing; ", done.stderr.decode())

    def test_a_line_that_names_the_separator_may_stand_before_it(self):
        table = f"sep=;\nname,{HEADER}\nAnn,{HIP}\n".replace(",", ";")
        done = run(self.file("hips.txt", table))
        self.check(done, 0)
        self.check_known(rows(done.stdout.split(b"\n", 1)[1], ";")[0])

    def test_a_header_row_separated_by_blanks_is_told_as_that(self):
        path = self.file("hips.txt", f"{HEADER}\n{HIP}\n".replace(",", " "))
        self.check(run(path), 2, f"{path}: row 1: the columns are separated by blanks; they must be "
                                 "separated by commas, semicolons or tabs (in R by write.csv)")

    def test_what_is_neither_is_no_case_file(self):
        for text in ["", "lizm", "the lizm, at last\n", "\0" * 100_000, '"lizm,xizm,zizm\n']:
            path = self.file("letter.txt", text)
            self.check(run(path), 2, f"{path}: Not correct file")

    def test_a_case_file_stays_one_whatever_its_comments(self):
        path = self.file("a.txt", case_file(comments=HEADER))
        self.assertEqual(rows(run(path).stdout)[0]["comments"], HEADER)

    def test_in_a_folder_of_case_files_a_table_is_none(self):
        self.file("a.txt", case_file())
        self.file("b.txt", f"{HEADER}\n{HIP}\n")
        done = run(self.path)
        self.assertEqual(done.returncode, 1)
        self.assertEqual([row["status"] for row in rows(done.stdout)],
                         ["ok", "error: Not correct file"])

    def test_a_pipe_is_not_looked_into(self):
        pipe = self.path / "pipe.txt"
        os.mkfifo(pipe)
        done = run(pipe)
        self.assertEqual(done.returncode, 2)
        self.assertIn(f"{pipe}: ", done.stderr.decode())


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1], verbosity=2)
