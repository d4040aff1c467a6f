"""Tables from files, standard input and pipes, in the forms that spreadsheets write."""
import os
import select
import subprocess
import sys
import unittest

from cohort_program import Case, HEADER, HIP, KNOWN, PROGRAM, RESULTS, replaced, rows, run


class Reading(Case):
    def test_standard_input(self):
        for arguments in [(), ("-",)]:
            done = run(*arguments, text=f"{HEADER}\n{HIP}\n")
            self.check(done, 0)
            self.check_known(rows(done.stdout)[0])
            self.assertEqual(done.stdout.decode().split("\n")[0], HEADER + "," + ",".join(RESULTS))

    def test_numbers_read_back_and_are_as_short_as_can_be(self):
        row = rows(run(text=f"{HEADER}\n{HIP}\n").stdout)[0]
        for name in KNOWN:
            # repr is the shortest text that reads back; up to 1e16 both write it without exponent.
            self.assertEqual(row[name], repr(float(row[name])))

    def test_delimiters_and_decimal_commas(self):
        for delimiter, option in [(";", "semicolon"), ("\t", "tab"), ("\t", "\\t"), (";", ";")]:
            table = f"{HEADER}\n{HIP}\n".replace(",", delimiter).replace(".", ",")
            for arguments in [(), ("--delimiter", option)]:
                done = run(*arguments, text=table)
                self.check(done, 0)
                self.check_known(rows(done.stdout, delimiter)[0])
        quoted = ",".join(f'"{field}"' for field in HIP.replace(",", ";").replace(".", ",").split(";"))
        self.check_known(rows(run("-d", "comma", text=f"{HEADER}\n{quoted}\n").stdout)[0])

    def test_units_in_the_header(self):
        header = ("lizm[mm],xizm[mm],zizm[mm],Cizm[mm],Hizm[mm],zasuk[deg],thetaCE[rad],"
                  "headRadius[mm],bodyWeight[kg]")
        done = run(text=f"{header}\n104,5,60,44,160,0,0.523598775598298,25,70\n")
        self.check_known(rows(done.stdout)[0])

    def test_weight_not_known(self):
        for table in [f"{HEADER}\n{replaced(bodyWeight='')}\n",
                      f"{HEADER[:-len(',bodyWeight')]}\n{HIP[:-len(',70')]}\n"]:
            done = run(text=table)
            self.check(done, 0)
            row = rows(done.stdout)[0]
            self.assertEqual(row["pmax"], "")
            self.check_known(row, {k: v for k, v in KNOWN.items() if k != "pmax"})

    def test_other_columns_pass_through_byte_by_byte(self):
        before = '\ufeff"na""me",'.encode() + HEADER.encode() + b",remark\r\n"
        record = 'Å,"x,"'.encode() + b"," + HIP.encode() + b',"two\nlines"'
        header = before.replace(b'"na""me",', b'"na""me",other,')
        done = run(text=header + record + b"\r\n" + record)
        self.check(done, 0)
        results = done.stdout.split(record)[1]
        self.assertTrue(results.endswith(b",ok\r\n"))
        self.assertEqual(done.stdout, header[:-2] + ("," + ",".join(RESULTS)).encode() + b"\r\n"
                         + (record + results) * 2)

    def test_several_files(self):
        one = self.file("one.csv", f"id,{HEADER}\n1,{HIP}\n2,{HIP}\n")
        two = self.file("two.csv", f'\ufeffid,"lizm",{HEADER[5:]}\r\n3,{HIP}\r\n')
        done = run(one, two)
        self.check(done, 0)
        self.assertEqual([row["id"] for row in rows(done.stdout)], ["1", "2", "3"])
        self.assertNotIn(b"\r", done.stdout)

    def test_several_files_of_different_columns(self):
        one = self.file("one.csv", f"id,{HEADER}\n1,{HIP}\n")
        other = self.file("other.csv", f"{HEADER}\n{HIP}\n")
        self.check(run(one, other), 2, f"{other}: row 1: the columns are not those of {one}")
        other.write_text(one.read_text().replace(",", ";"))
        self.check(run(one, other), 2, f"{other}: row 1: the delimiter is not that of {one}")

    def test_named_pipe_and_device(self):
        pipe = self.path / "pipe"
        os.mkfifo(pipe)
        with subprocess.Popen([PROGRAM, pipe], stdout=subprocess.PIPE) as program:
            pipe.write_text(f"{HEADER}\n{HIP}\n")
            self.check_known(rows(program.communicate()[0])[0])
            self.assertEqual(program.returncode, 0)

    def test_results_come_while_the_input_goes_on(self):
        # Unbuffered: what Python had read ahead would hide from select.
        with subprocess.Popen([PROGRAM], stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                              bufsize=0) as program:
            program.stdin.write(f"{HEADER}\n{HIP}\n".encode())
            for _ in range(2):
                ready, _, _ = select.select([program.stdout], [], [], 20)
                self.assertTrue(ready, "nothing came out")
                line = program.stdout.readline()
            self.assertTrue(line.endswith(b",ok\n"))
            program.stdin.close()


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1], verbosity=2)
