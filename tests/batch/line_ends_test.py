"""Rows stay whole for every reader, whatever line ends files and fields have."""
import csv
import io
import sys
import unittest

from cohort_program import Case, HEADER, HIP, RESULTS, rows, run


def records(output):
    """As a reader takes it for whom CR, LF and CR LF all end a row."""
    return [row for row in csv.reader(io.StringIO(output.decode(), newline="")) if row]


class LineEnds(Case):
    def test_a_field_with_the_line_end_of_another_file_stays_in_its_row(self):
        one = self.file("one.csv", f"{HEADER},remark\n{HIP},plain\n")
        two = self.file("two.csv", f"{HEADER},remark\r{HIP},line one\nline two\r{HIP},x\r")
        done = run(one, two)
        self.check(done, 0)
        _, first, second, third = records(done.stdout)
        self.assertEqual([row[9] for row in (first, second, third)], ["plain", "line one\nline two", "x"])
        self.assertEqual({row[-1] for row in (first, second, third)}, {"ok"})
        self.assertEqual(len({len(row) for row in records(done.stdout)}), 1)
        self.assertIn(b',"line one\nline two",2.8', done.stdout)

    def test_a_field_with_a_bare_cr_stays_in_its_row(self):
        for end in ["\n", "\r\n"]:
            done = run(text=f"name,{HEADER}{end}A\rB,{HIP}{end}C,{HIP}{end}")
            self.check(done, 0)
            self.assertEqual([row[0] for row in records(done.stdout)], ["name", "A\rB", "C"])
            self.assertIn(f'{end}"A\rB",{HIP},2.8'.encode(), done.stdout)

    def test_everything_else_keeps_its_bytes(self):
        record = f' Ann ,"a\r\nb",{HIP}, "c\rd" '
        for end in ["\n", "\r\n", "\r"]:
            done = run(text=f"name,other,{HEADER},note{end}{record}{end}")
            self.check(done, 0)
            self.assertIn(f"{end}{record},2.8".encode(), done.stdout)

    def test_a_last_row_of_nothing_is_none(self):
        for end in ["\n", "\r\n", "\r"]:
            whole = run(text=f"{HEADER}{end}{HIP}{end}")
            self.check(whole, 0)
            self.assertEqual(len(records(whole.stdout)), 2)
            for last in ["", "  ", f"  {end}", " \t ", "\x1a", f"\x1a{end}", f"{end}{end}\x1a\x1a", "\r\n",
                         "\n"]:
                done = run(text=f"{HEADER}{end}{HIP}{end}{last}")
                self.check(done, 0)
                self.assertEqual(done.stdout, whole.stdout, repr((end, last)))
            for glued in ["", "\x1a"]:
                done = run(text=f"{HEADER}{end}{HIP}{glued}")
                self.check(done, 0)
                self.assertEqual(done.stdout, whole.stdout, repr((end, glued)))

    def test_a_control_z_within_is_text(self):
        done = run(text=f"name,{HEADER}\nA\x1aB,{HIP}\nC,{HIP}\n")
        self.check(done, 0)
        self.assertIn(b"\nA\x1aB,10.40", done.stdout)

    def test_rows_that_end_otherwise_than_the_header_are_told_for_what_they_are(self):
        done = run(text=f"id,{HEADER}\n" + f"1,{HIP}\r2,{HIP}\r")
        self.check(done, 1, "1 row had bad input: standard input: row 2: error: the row has 19 fields and "
                            "the header 10: rows run together since they end with CR alone and the header does not")
        self.assertEqual(rows(done.stdout)[0]["status"].split(": ")[-1],
                         "rows run together since they end with CR alone and the header does not")
        self.assertEqual(len(records(done.stdout)), 2)
        done = run(text=f"id,{HEADER}\r" + f"1,{HIP}\n2,{HIP}\n")
        self.check(done, 1, "1 row had bad input: standard input: row 2: error: the row has 19 fields and "
                            "the header 10: rows run together since they end with LF and the header with CR")

    def test_cr_lf_that_became_cr_cr_lf(self):
        done = run(text=f"name,{HEADER}\r\r\nAnn,{HIP}\r\r\nBob,{HIP}\r\r\n")
        self.check(done, 0)
        header, ann, bob = done.stdout.decode().split("\r\n")[:3]
        self.assertEqual(header, ",".join(["name", HEADER, *RESULTS]))
        self.assertTrue(ann.startswith(f"Ann,{HIP},2.8") and bob.startswith(f"Bob,{HIP},2.8"))
        self.assertEqual(done.stdout.count(b"\r"), 3)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1], verbosity=2)
