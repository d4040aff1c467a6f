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
        cut = self.file("cut.txt", case_file()[:300])
        self.check(run(cut), 2, f"{cut}: The line \"Cizm\" is missing.")


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
        self.check(run(path), 2, f"{path}: row 1: the column Cizm is missing")

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
