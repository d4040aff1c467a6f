"""Headers as people and other programs write them."""
import sys
import unittest

from cohort_program import Case, HEADER, HIP, KNOWN, RESULTS, rows, run

NAMES = HEADER.split(",")


def with_weight(title):
    return HEADER.replace("bodyWeight", title)


class Headers(Case):
    def remark(self, text, row=1):
        return f"standard input: row {row}: {text}"

    def test_case_brackets_blanks_and_invisible_characters_do_not_matter(self):
        for title in ["bodyweight", "BODYWEIGHT", "bodyWeight (kg)", "bodyWeight[KG]", " bodyWeight ",
                      "body\u200bWeight", "bodyWeight\u00a0", "\ufeffbodyWeight", "\u200ebodyWeight\u200e"]:
            done = run(text=f"{with_weight(title)}\n{HIP}\n")
            self.check(done, 0)
            self.assertEqual(done.stdout.decode().split("\n")[0],
                             ",".join([with_weight(title), *RESULTS]))
            self.check_known(rows(done.stdout)[0])
        done = run(text="LIZM (MM),xizm (cm),Zizm,CIZM,hizm,ZASUK (°),ThetaCe(DEG),HeadRadius (cm),"
                        "Bodyweight\n104,0.50,6.00,4.40,16.00,0.0,30.0,2.5,70\n")
        self.check(done, 0)
        self.check_known(rows(done.stdout)[0])

    def test_a_name_that_is_close_is_told(self):
        for title in ["body_weight", "weight", "Weight (kg)", "bodyWeight.kg.", "body weight", "BW",
                      "bodyWeigth"]:
            done = run(text=f"{with_weight(title)}\n{HIP}\n")
            self.check(done, 0, self.remark(f'the column "{title}" is not used; is bodyWeight meant?'))
            self.assertEqual(rows(done.stdout)[0]["pmax"], "")
        done = run(text=f"{with_weight('bodyWeight[lb]')}\n{HIP}\n")
        self.check(done, 0, self.remark('the column "bodyWeight[lb]" is not used, since its unit is not '
                                        'known; bodyWeight is in kg'))
        self.assertEqual(rows(done.stdout)[0]["pmax"], "")
        done = run(text=f"{HEADER},theta_ce\n{HIP},1\n")
        self.check(done, 0, self.remark('the column "theta_ce" is not used; is thetaCE meant?'))
        self.check_known(rows(done.stdout)[0])

    def test_an_ordinary_column_is_not(self):
        others = "patient,age,id,remark,status2,Status,bodyHeight,BMI,lizm2,side"
        done = run(text=f"{others},{with_weight('x')}\n{',' * 9},{HIP}\n")
        self.check(done, 0)
        done = run(text=f"weight,thetaCE2,{HEADER}\n,,{HIP}\n")
        self.check(done, 0)

    def test_it_is_told_once_for_several_files_and_before_a_bad_row(self):
        table = f"{with_weight('weight')}\nx\n"
        paths = [self.file("one.csv", table), self.file("two.csv", table)]
        done = run(*paths)
        self.assertEqual(done.stderr.decode().splitlines(), [
            f'telmarion-batch: {paths[0]}: row 1: the column "weight" is not used; is bodyWeight meant?',
            f"telmarion-batch: 2 rows had bad input, the first: {paths[0]}: row 2: error: the row has 1 "
            "field and the header 9"])

    def test_several_files_may_write_one_name_in_several_ways(self):
        one = self.file("one.csv", f"id,{HEADER}\n1,{HIP}\n")
        two = self.file("two.csv", f"ID,{HEADER.upper()}\n2,{HIP}\n")
        done = run(one, two)
        self.check(done, 0)
        for row in rows(done.stdout):
            self.check_known(row)
        other = self.file("other.csv", f"id,{HEADER.replace('lizm', 'lizm[mm]')}\n3,{HIP}\n")
        self.check(run(one, other), 2, f"{other}: row 1: the columns are not those of {one}")

    def test_a_required_column_that_is_missing_is_an_error_that_shows_the_header(self):
        done = run(text=f"{HEADER.replace('thetaCE', 'theta CE')}\n{HIP}\n")
        self.check(done, 2, self.remark('the column thetaCE is missing; "theta CE" is perhaps thetaCE; the '
                                        'header read is "lizm,xizm,zizm,Cizm,Hizm,zasuk,theta CE,'
                                        'headRadius,bodyWeight"'))
        self.assertEqual(done.stdout, b"")
        done = run(text=f"Table 1\x1b[2J\u009b1m\n{HEADER}\n{HIP}\n")
        self.check(done, 2, self.remark(f"the columns {', '.join(NAMES[:-1])} are missing; the header read "
                                        'is "Table 1?[2J?1m"'))

    def test_columns_that_differ_in_case_alone_are_two_of_one_name(self):
        self.check(run(text=f"{HEADER},LIZM\n{HIP},1\n"), 2,
                   self.remark("there are two columns lizm"))

    def test_a_result_that_is_there_already(self):
        self.check(run(text=f"{HEADER},pmax\n{HIP},1\n"), 2,
                   self.remark("there is a column pmax already, which the program adds; remove or "
                               "rename it"))
        self.check(run(text=f"{HEADER},PMAX,Status\n{HIP},1,2\n"), 0)

    def test_the_table_for_people_leaves_the_measures_out(self):
        done = run("--table", text=f"name,{HEADER.upper().replace('LIZM', 'LIZM (cm)')}\nAnn,{HIP}\n")
        self.check(done, 0)
        self.assertEqual(done.stdout.decode().split("\n")[0].split(), ["name", *RESULTS])


class SeparatorLine(Case):
    """Spreadsheets write and read a line before the header that names the separator."""

    def test_is_taken_for_what_it_says(self):
        for delimiter in [";", ",", "\t"]:
            for line in [f"sep={delimiter}", f"SEP={delimiter}", f'"sep={delimiter}"', f"\ufeffsep={delimiter}"]:
                table = f"name,{HEADER}\r\nAnn,{HIP}\r\n".replace(",", delimiter)
                done = run(text=f"{line}\r\n{table}")
                self.check(done, 0)
                first, rest = done.stdout.split(b"\r\n", 1)
                self.assertEqual(first.decode(), line)
                self.check_known(rows(rest, delimiter)[0])

    def test_counts_as_a_row(self):
        text = f"sep=;\n{HEADER.replace(',', ';')}\n{HIP.replace(',', ';')}\nx\n"
        self.check(run(text=text), 1, "1 row had bad input: standard input: row 4: error: the row has 1 "
                                      "field and the header 9")
        self.check(run(text="sep=;\nlizm;lizm\n"), 2,
                   "standard input: row 2: there are two columns lizm")

    def test_does_not_belong_to_the_table_for_people(self):
        done = run("--table", text=f"sep=,\n{HEADER}\n{HIP}\n")
        self.check(done, 0)
        self.assertEqual(done.stdout.decode().split("\n")[0].split(), RESULTS)

    def test_of_another_separator_is_told(self):
        self.check(run(text=f"sep=|\n{HEADER.replace(',', '|')}\n"), 2,
                   'standard input: row 2: the line before the header names the separator "|"; it must '
                   "be a comma, semicolon or tab")


class OtherPrograms(Case):
    """What statistics programs and spreadsheets write of one hip, letter by letter."""
    VALUES = ["10.4", "0.5", "6", "4.4", "16", "0", "30", "0.025", "70"]

    def check_table(self, text, delimiter=","):
        done = run(text=text)
        self.check(done, 0)
        out = done.stdout.removeprefix(b"\xef\xbb\xbf")
        (row,) = rows(out if b"\n" in out else out.replace(b"\r", b"\n"), delimiter)
        self.check_known(row)

    def test_r(self):
        quoted = [f'"{name}"' for name in NAMES]
        plain = ",".join(self.VALUES)
        self.check_table('"",' + ",".join(quoted) + f'\n"1",{plain}\n')                 # write.csv
        self.check_table('"";' + ";".join(quoted) + '\n"1";' +
                         plain.replace(",", ";").replace(".", ",") + "\n", ";")          # write.csv2
        tabs = "\t".join(self.VALUES)
        self.check_table("\t".join(NAMES) + f"\n{tabs}\n", "\t")                 # row.names = FALSE
        blanks = " ".join(quoted) + '\n"1" ' + " ".join(self.VALUES) + "\n"
        for text in [blanks, blanks.replace('"', "")]:                                 # write.table
            self.check(run(text=text), 2,
                       "standard input: row 1: the columns are separated by blanks; they must be "
                       "separated by commas, semicolons or tabs (in R by write.csv)")
        done = run(text="\t".join(NAMES) + f"\n1\t{tabs}\n")                    # with row names
        self.check(done, 1, "1 row had bad input: standard input: row 2: error: the row has 10 fields and "
                            "the header 9: the header may lack a name for the first column")

    def test_spreadsheets(self):
        mark, line = "\ufeff", ";".join(self.VALUES).replace(".", ",")
        self.check_table(f"{mark}{HEADER}\r\n{','.join(self.VALUES)}\r\n")
        self.check_table(f"{mark}{HEADER.replace(',', ';')}\r\n{line}\r\n", ";")
        self.check_table(f"{HEADER}\r{','.join(self.VALUES)}\r")
        quoted = ",".join(f'"{value}"' for value in self.VALUES)
        self.check_table(f"{HEADER}\n{quoted}")

    def test_data_frames_and_statistics_packages(self):
        self.check_table(f",{HEADER}\n0,{','.join(self.VALUES)}\n")
        self.check_table(f"{HEADER.lower()}\n{','.join(self.VALUES)}\n")
        self.check_table(f"\ufeff{HEADER.upper()}\r\n{','.join(self.VALUES)}\r\n")
        without = self.VALUES[:-1]
        for missing in ["NA", "NaN", ""]:
            done = run(text=f"{HEADER}\n{','.join([*without, missing])}\n")
            self.check(done, 0)
            self.check_known(rows(done.stdout)[0], {k: v for k, v in KNOWN.items() if k != "pmax"})


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1], verbosity=2)
