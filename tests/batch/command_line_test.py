"""telmarion-batch as its users run it: files, pipes, exit statuses, messages, bad input.

Usage: command_line_test.py PROGRAM SOURCE_FOLDER VERSION
"""
import csv
import io
import math
import os
import pathlib
import pty
import resource
import select
import signal
import stat
import subprocess
import sys
import tempfile
import time
import unittest

PROGRAM, SOURCE, VERSION = sys.argv[1], pathlib.Path(sys.argv[2]), sys.argv[3]

HEADER = "lizm,xizm,zizm,Cizm,Hizm,zasuk,thetaCE,headRadius,bodyWeight"
HIP = "10.40,0.50,6.00,4.40,16.00,0.0,30.0,0.025,70"
# What any correct model gives for it, to twelve digits and more.
KNOWN = {"rWb": 2.81222677558, "thetaR": 8.4764903085, "thetaPol": 16.4157852045,
         "pmaxWb": 3006.76110604, "pmax": 2066847.58429341}
RESULTS = ["rWb", "thetaR", "thetaPol", "pmaxWb", "pmax", "status"]


def run(*arguments, text=b"", **more):
    if isinstance(text, str):
        text = text.encode()
    return subprocess.run([PROGRAM, *map(str, arguments)], input=text, capture_output=True,
                          timeout=120, check=False, **more)


def rows(output, delimiter=","):
    return list(csv.DictReader(io.StringIO(output.decode()), delimiter=delimiter))


def replaced(**fields):
    """The default hip with other fields."""
    names, values = HEADER.split(","), HIP.split(",")
    return ",".join(fields.get(name, value) for name, value in zip(names, values))


class Case(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)
        self.path = pathlib.Path(self.folder.name)

    def file(self, name, text):
        path = self.path / name
        path.write_bytes(text if isinstance(text, bytes) else text.encode())
        return path

    def check(self, done, status, message=""):
        """Exit status and the whole of standard error."""
        expected = f"telmarion-batch: {message}\n" if message else ""
        self.assertEqual((done.returncode, done.stderr.decode()), (status, expected))

    def check_known(self, row, known=None):
        for name, value in (known or KNOWN).items():
            self.assertTrue(math.isclose(float(row[name]), value, rel_tol=1e-11), (name, row[name]))
        self.assertEqual(row["status"], "ok")


def case_file(name="Surname Given", weight="70", ce="30", comments="No"):
    """A case file as the windowed program writes it."""
    records = [
        "", f"Name          : {name}", "Sex           : F", "Date of birth : 1956",
        f"Body weight   : {weight} kg", "Hip           : L", f"Comments      : {comments}", "",
        "lizm          = 10,4 cm", "xizm          = 0,5 cm", "zizm          = 6 cm",
        "Cizm          = 4,4 cm", "Hizm          = 16 cm", "zasuk         = 0 °  ",
        f"theta-CE      = {ce} °  ", "radius of head= 0,025 m ", "", "R/Wb          = 0"]
    text = "TELMARION".ljust(49) + "15.11.2026\r\n" + "".join(r + "\n\r\n" for r in records)
    return text.encode("cp1252")


class CaseFiles(Case):
    def test_one_file_is_one_row_with_the_results_of_the_window(self):
        done = run(self.file("a.txt", case_file(comments="two\nlines, \"quoted\"")))
        self.check(done, 0)
        (row,) = rows(done.stdout)
        self.check_known(row)
        self.assertEqual(row["file"], "a.txt")
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
                         ("b.txt", "error: Not correct file", "Not correct file"))
        self.assertEqual((c["file"], c["bodyWeight"], c["pmax"], c["status"]),
                         ("c.TXT", "", "", "ok"))
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


class Writing(Case):
    def test_output_file(self):
        target = self.path / "out.csv"
        done = run("--output", target, text=f"{HEADER}\n{HIP}\n")
        self.check(done, 0)
        self.assertEqual(done.stdout, b"")
        self.check_known(rows(target.read_bytes())[0])
        self.assertEqual(os.listdir(self.path), ["out.csv"])

    def test_output_over_the_input(self):
        table = self.file("hips.csv", f"{HEADER}\n{HIP}\n")
        self.check(run(table, "-o", table), 0)
        self.check_known(rows(table.read_bytes())[0])

    def test_output_appears_whole_or_not_at_all(self):
        target = self.file("out.csv", "as it was")
        table = f"{HEADER}\n{HIP}\n" + '5\'10",\n'
        self.assertEqual(run("-o", target, text=table).returncode, 2)
        self.assertEqual(target.read_text(), "as it was")
        with subprocess.Popen([PROGRAM, "-o", target], stdin=subprocess.PIPE) as program:
            program.stdin.write(f"{HEADER}\n{HIP}\n".encode())
            program.stdin.flush()
            time.sleep(0.2)
            self.assertEqual(target.read_text(), "as it was")
            program.terminate()
            program.wait()
        self.assertEqual(os.listdir(self.path), ["out.csv"])
        self.assertEqual(target.read_text(), "as it was")

    def test_output_folder_that_does_not_exist(self):
        target = self.path / "none" / "out.csv"
        self.check(run("-o", target, text=f"{HEADER}\n{HIP}\n"), 2,
                   f"{target}: cannot be written: No such file or directory")

    def test_output_that_is_a_folder(self):
        done = run("-o", self.path, text=f"{HEADER}\n{HIP}\n")
        self.assertEqual(done.returncode, 2)
        self.assertIn(f"{self.path}: cannot be written: ", done.stderr.decode())

    def test_full_disk(self):
        before = os.stat("/dev/full")
        self.check(run("-o", "/dev/full", text=f"{HEADER}\n{HIP}\n"), 2,
                   "/dev/full: cannot be written: No space left on device")
        after = os.stat("/dev/full")
        self.assertTrue(stat.S_ISCHR(after.st_mode))
        self.assertEqual(before.st_ino, after.st_ino, "the device was replaced")
        with open("/dev/full", "wb") as full:
            done = subprocess.run([PROGRAM], input=f"{HEADER}\n{HIP}\n".encode(), stdout=full,
                                  stderr=subprocess.PIPE, check=False)
        self.check(done, 2, "standard output: cannot be written: No space left on device")

    def test_file_above_the_size_limit(self):
        target = self.path / "out.csv"
        table = f"{HEADER}\n" + f"{HIP}\n" * 5000

        def limit():
            signal.signal(signal.SIGXFSZ, signal.SIG_IGN)
            resource.setrlimit(resource.RLIMIT_FSIZE, (100_000, 100_000))

        done = run("-o", target, text=table, preexec_fn=limit)
        self.check(done, 2, f"{target}: cannot be written: File too large")
        self.assertEqual(os.listdir(self.path), [])

    def test_closed_pipe_ends_quietly(self):
        table = self.file("hips.csv", f"{HEADER}\n" + f"{HIP}\n" * 100_000)
        with subprocess.Popen([PROGRAM, table], stdout=subprocess.PIPE,
                              stderr=subprocess.PIPE) as program:
            program.stdout.readline()
            program.stdout.close()
            self.assertEqual(program.stderr.read(), b"")
            self.assertEqual(program.wait(60), -signal.SIGPIPE)

    def test_table(self):
        table = f"name,{HEADER}\nAnn,{HIP}\nBob,{replaced(thetaCE='-20')}\n"
        done = run("--table", text=table)
        self.check(done, 0)
        self.assertEqual(done.stdout.decode().splitlines(), [
            "name   rWb  thetaR  thetaPol   pmaxWb        pmax  status",
            "----  ----  ------  --------  -------  ----------  " + "-" * 60,
            "Ann   2.81    8.47     16.41  3006.76  2066847.58  ok",
            "Bob   2.81    8.47                                 refused: no stress pole for this "
            "centre-edge angle and force"])


class Threads(Case):
    def test_bytes_do_not_depend_on_the_threads(self):
        lines = [f"name,{HEADER}"]
        for i in range(30_000):
            name = f'"row ""{i}"",\nof many"' if i % 7 == 0 else str(i)
            lines.append(f"{name},{replaced(thetaCE=str(i % 170 - 40), bodyWeight=str(i % 90))}")
        table = self.file("hips.csv", "\n".join(lines))
        one = run("--threads", 1, table)
        self.assertEqual(one.returncode, 1)
        self.assertEqual(len(rows(one.stdout)), 30_000)
        for threads in [2, 3, 16]:
            many = run("--threads", threads, table)
            self.assertEqual(many.returncode, 1)
            self.assertEqual(many.stderr, one.stderr)
            self.assertTrue(many.stdout == one.stdout, f"{threads} threads give other bytes")

    def test_memory_does_not_grow_with_the_rows(self):
        def most_memory(count):
            table = self.file("hips.csv", f"{HEADER}\n" + f"{HIP}\n" * count)
            with open(os.devnull, "wb") as nothing:
                program = subprocess.Popen([PROGRAM, "--threads", "2", table], stdout=nothing)
                _, status, usage = os.wait4(program.pid, 0)
                program.returncode = os.waitstatus_to_exitcode(status)
            self.assertEqual(program.returncode, 0)
            return usage.ru_maxrss  # KiB

        few, many = most_memory(50_000), most_memory(400_000)
        self.assertLess(many - few, 4096, f"{few} KiB for few rows, {many} KiB for many")


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
        for text in ["1e999", "nan", "1.2.3", "inf", "0x10", "1.234,5", "ten", "10 cm"]:
            for column in HEADER.split(","):
                field = f'"{text}"'
                done = run(text=f"name,{HEADER}\nAnn,{replaced(**{column: field})}\nBob,{HIP}\n")
                status = f"error: {column} is not a number"
                self.check(done, 1, f"1 row had bad input: standard input: row 2: {status}")
                ann, bob = rows(done.stdout)
                self.assertEqual((ann["name"], ann[column], ann["status"]), ("Ann", text, status))
                self.assertEqual([ann[name] for name in KNOWN], [""] * 5)
                self.check_known(bob)

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
                (HEADER.replace("Cizm", "width"), "the column Cizm is missing"),
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
                          ["--threads", "1000000"], ["--delimiter", "x"], ["--delimiter", ""],
                          ["--output"]]:
            done = run(*arguments)
            self.assertEqual(done.returncode, 2, arguments)
            self.assertEqual(done.stdout, b"")
            self.assertIn("telmarion-batch: ", done.stderr.decode())
            self.assertEqual(len(done.stderr.decode().splitlines()), 1, done.stderr)

    def run_on_terminal(self, seconds, output):
        """Feeds rows for so long with standard error on a terminal; what the terminal shows."""
        terminal, program_side = pty.openpty()
        with subprocess.Popen([PROGRAM], stdin=subprocess.PIPE,
                              stdout=program_side if output == "terminal" else subprocess.DEVNULL,
                              stderr=program_side) as program:
            os.close(program_side)
            program.stdin.write(f"{HEADER}\n".encode())
            end = time.monotonic() + seconds
            while time.monotonic() < end:
                program.stdin.write(f"{HIP}\n".encode())
                program.stdin.flush()
                time.sleep(0.05)
            program.stdin.close()
            shown = b""
            while True:
                try:
                    piece = os.read(terminal, 65536)
                except OSError:
                    break
                if not piece:
                    break
                shown += piece
        os.close(terminal)
        return shown.decode()

    def test_progress_after_a_second_on_a_terminal(self):
        self.assertEqual(self.run_on_terminal(0.3, "elsewhere"), "")
        shown = self.run_on_terminal(1.6, "elsewhere")
        self.assertRegex(shown, r"\d+ rows, \d+ rows/s")
        self.assertTrue(shown.endswith("\r\033[K"), "the line stays behind")

    def test_progress_and_results_on_one_terminal(self):
        shown = self.run_on_terminal(1.6, "terminal")
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
