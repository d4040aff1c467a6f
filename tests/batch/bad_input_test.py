"""What is said of rows, headers and files that do not serve."""
import math
import sys
import unittest

from cohort_program import Case, HEADER, HIP, KNOWN, RESULTS, replaced, rows, run


class BadInput(Case):
    def test_empty_file(self):
        path = self.file("empty.csv", "")
        self.check(run(path), 2,
                   f"{path}: row 1: the file is empty; it should begin with a header row")
        self.check(run(), 2,
                   "standard input: row 1: the file is empty; it should begin with a header row")

    def test_header_only(self):
        for end in ["", "\n", "\r\n"]:
            done = run(text=HEADER + end)
            self.check(done, 0)
            self.assertEqual(done.stdout.decode(), f"{HEADER},{','.join(RESULTS)}{end or chr(10)}")

    def test_row_too_short_or_too_long(self):
        table = f"name,{HEADER},remark\nAnn,1,2\nBob,{HIP},x,more,\nCis,{HIP},y\n"
        path = self.file("hips.csv", table)
        done = run(path)
        self.check(done, 1, f"2 rows had bad input, the first: {path}: row 2: error: the row has 3 "
                            "fields and the header 11")
        short, long, good = rows(done.stdout)
        self.assertEqual((short["name"], short["lizm"], short["xizm"]), ("Ann", "1", "2"))
        self.assertEqual(short["status"], "error: the row has 3 fields and the header 11")
        self.assertEqual((long["name"], long["remark"], long[None]), ("Bob", "x", ["more", ""]))
        self.assertEqual(long["status"], "error: the row has 13 fields and the header 11")
        self.check_known(good)

    def test_nul_bytes(self):
        table = f"name,{HEADER}\nA\0nn,{HIP}\nBob,{replaced(xizm=chr(0) + '1')}\n"
        done = run(text=table)
        self.check(done, 1, "1 row had bad input: standard input: row 3: error: xizm is not a number")
        self.assertIn(b"\nA\0nn,10.40,", done.stdout)
        self.assertIn(b",\0001,6.00,", done.stdout)
        done = run(text=f"{HEADER}\n{HIP}\n".encode("utf-16"))
        self.check(done, 2, "standard input: row 1: the header holds NUL bytes; the file must be "
                            "text in UTF-8, not UTF-16")

    def test_line_of_100_megabytes(self):
        remark = b"x" * 100_000_000
        table = f"name,{HEADER}\n".encode() + b"".join(
            name + b"," + HIP.encode() + b"\n" for name in [b"Ann", remark, b"Bob"])
        done = run(text=table)
        self.check(done, 0)
        lines = done.stdout.split(b"\n")
        self.assertEqual([len(line) - len(lines[1]) for line in lines[1:4]], [0, len(remark) - 3, 0])
        self.assertTrue(lines[2].startswith(remark + b"," + HIP.encode()))
        self.assertEqual(lines[2][len(remark):], lines[1][3:])

    def test_line_of_200_megabytes_behind_an_open_quote(self):
        table = f"name,{HEADER}\nAnn,{HIP}\n\"".encode() + (b"x" * 99 + b"\n") * 2_000_000
        done = run(text=table)
        self.check(done, 2, "standard input: row 3: the row is longer than 128 MiB; is a quote not "
                            "closed?")
        self.assertEqual(len(done.stdout.splitlines()), 2)

    def test_numbers_that_are_none(self):
        faults = {"1.2.3": "is not a number", "inf": "is not a number", "0x10": "is not a number",
                  "1.234,5": "is not a number", "ten": "is not a number", "10 cm": "is not a number",
                  "1e400": "is too large", "-1e999": "is too large"}
        for text, fault in faults.items():
            for column in HEADER.split(","):
                field = f'"{text}"'
                done = run(text=f"name,{HEADER}\nAnn,{replaced(**{column: field})}\nBob,{HIP}\n")
                status = f"error: {column} {fault}"
                self.check(done, 1, f"1 row had bad input: standard input: row 2: {status}")
                ann, bob = rows(done.stdout)
                self.assertEqual((ann["name"], ann[column], ann["status"]), ("Ann", text, status))
                self.assertEqual([ann[name] for name in KNOWN], [""] * 5)
                self.check_known(bob)

    def test_values_that_are_missing(self):
        for text in ["", " ", "NA", "N/A", "NaN", "#N/A", "-", "Unknown", "na", "nan", "UNKNOWN", '"NA"']:
            done = run(text=f"{HEADER}\n{replaced(bodyWeight=text)}\n")
            self.check(done, 0)
            row = rows(done.stdout)[0]
            self.assertEqual(row["pmax"], "", text)
            self.check_known(row, {k: v for k, v in KNOWN.items() if k != "pmax"})
            for column in HEADER.split(",")[:-1]:
                done = run(text=f"{HEADER}\n{replaced(**{column: text})}\n")
                status = f"error: {column} is missing"
                self.check(done, 1, f"1 row had bad input: standard input: row 2: {status}")
                self.assertEqual(rows(done.stdout)[0]["status"], status)

    def test_negative_stress_is_refused(self):
        for degrees in ["-200", "-250", "-560"]:
            done = run(text=f"{HEADER}\n{replaced(thetaCE=degrees)}\n")
            self.check(done, 0)
            row = rows(done.stdout)[0]
            self.assertEqual(row["status"],
                             "refused: no stress pole for this centre-edge angle and force")
            self.assertEqual((row["thetaPol"], row["pmaxWb"], row["pmax"]), ("", "", ""))

    def test_weight_and_radius_not_above_zero(self):
        for column in ["bodyWeight", "headRadius"]:
            for text in ["0", "-1", "-0.0"]:
                done = run(text=f"{HEADER}\n{replaced(**{column: text})}\n")
                self.assertEqual(done.returncode, 1)
                self.assertEqual(rows(done.stdout)[0]["status"],
                                 f"error: {column} must be greater than 0")

    def test_half_distance_beyond_the_model(self):
        done = run(text=f"{HEADER}\n{replaced(lizm='104')}\n")
        self.check(done, 0)
        row = rows(done.stdout)[0]
        self.assertEqual(row["status"], "refused: resultant force outside the model's range")
        # 0.48 l above the femur's 42.3 cm: an impossible tilt, so nothing is a number.
        self.assertEqual([row[name] for name in KNOWN], [""] * 5)

    def test_refused_rows_keep_their_force(self):
        done = run(text=f"{HEADER}\n{replaced(thetaCE='-20')}\n")
        self.check(done, 0)
        row = rows(done.stdout)[0]
        self.assertEqual(row["status"], "refused: no stress pole for this centre-edge angle and force")
        self.assertTrue(math.isclose(float(row["rWb"]), KNOWN["rWb"], rel_tol=1e-11))
        self.assertTrue(math.isclose(float(row["thetaR"]), KNOWN["thetaR"], rel_tol=1e-11))
        self.assertEqual((row["thetaPol"], row["pmaxWb"], row["pmax"]), ("", "", ""))

    def test_two_columns_of_one_name(self):
        for header in [f"{HEADER},lizm", f"{HEADER},lizm[mm]"]:
            self.check(run(text=f"{header}\n{HIP},1\n"), 2,
                       "standard input: row 1: there are two columns lizm")

    def test_header_that_does_not_serve(self):
        for header, why in [
                (HEADER.replace("Cizm", "width"), "the column Cizm is missing; the header read is "
                 '"lizm,xizm,zizm,width,Hizm,zasuk,thetaCE,headRadius,bodyWeight"'),
                (HEADER.replace("lizm", "lizm[in]"),
                 'the unit "in" of column lizm is not known; known are cm, mm'),
                (HEADER + ',"x', "the header has a broken quote"),
                (HEADER + ",rWb", "there is a column rWb already, which the program adds; remove "
                                  "or rename it")]:
            path = self.file("hips.csv", header + "\n" + HIP + "\n")
            self.check(run(path), 2, f"{path}: row 1: {why}")

    def test_broken_quotes(self):
        stray = ("a quote stands inside a field or text behind a closing quote; quotes in a field "
                 "must be doubled and the field put in quotes")
        for record, why in [("5'10\",", stray), ('"a"b,', stray),
                            ('"a,', "a quoted field has no closing quote")]:
            path = self.file("hips.csv", f"name,{HEADER}\n\nAnn,{HIP}\n{record}{HIP}\n")
            done = run(path)
            self.check(done, 2, f"{path}: row 4: {why}")
            self.assertEqual(len(rows(done.stdout)), 1)

    def test_files_that_cannot_be_read(self):
        good = self.file("good.csv", f"{HEADER}\n{HIP}\n")
        none = self.path / "none.csv"
        self.check(run(good, none), 2, f"{none}: cannot be opened: No such file or directory")
        self.assertEqual(run(good, none).stdout, b"")
        self.check(run(self.path), 2, f"{self.path}: the folder holds no case file (.txt)")
        self.check(run("/proc/self/mem"), 2,
                   "/proc/self/mem: row 1: cannot be read: Input/output error")


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1], verbosity=2)
