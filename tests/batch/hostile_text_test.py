"""Text that would do something: formulas in spreadsheets, control characters on terminals; and files
that are no text."""
import gzip
import io
import os
import pty
import re
import subprocess
import sys
import unittest
import zipfile

from cohort_program import Case, HEADER, HIP, PROGRAM, case_file, rows, run

FORMULAS = ["=cmd|' /C calc'!A0", "+1+cmd", "-2+3", "@SUM(1)", "\t=1", "=1,2\"3"]
# Clear the screen, 8-bit control sequences as bytes and as characters, delete, bell, backspace.
CONTROLS = [b"\x1b[2J", b"\x9b2J", b"\xc2\x9b2J", b"\xc2\x85", b"\x7f", b"\x07", b"\x08\x08",
            b"\x1b]0;title\x07", b"\x8d", b"\xe0\x9b\x9b"]
# What a terminal may be given: line ends, tabs, and characters that are seen.
HARMLESS = re.compile(r"[^\x00-\x08\x0b\x0c\x0e-\x1f\x7f-\x9f]*")


class Formulas(Case):
    def test_text_of_case_files_is_never_one(self):
        for text in FORMULAS:
            path = self.file("a.txt", case_file(name=text + " x", comments=text))
            done = run(path)
            self.check(done, 0)
            (row,) = rows(done.stdout)
            self.check_known(row)
            self.assertEqual((row["name"], row["comments"]), (f"'{text} x", f"'{text}"))

    def test_names_of_files_are_none(self):
        for name in ["=1.txt", "+a.txt", "-a.txt", "@a.txt", "\ta.txt", "\ra.txt"]:
            self.file(name, case_file())
            done = run("--", name, cwd=self.path)
            self.assertEqual([row["file"] for row in rows(done.stdout)], ["'" + name])

    def test_measures_are_numbers_or_harmless(self):
        path = self.file("a.txt", case_file(ce="-20"))
        (row,) = rows(run(path).stdout)
        self.assertEqual((row["thetaCE"], row["status"][:7]), ("-20", "refused"))
        self.file("b.txt", case_file(ce="=1+1", weight="=A1"))
        row = rows(run(self.path).stdout)[1]
        self.assertEqual((row["thetaCE"], row["bodyWeight"]), ("'=1+1", "'=A1"))
        self.assertTrue(row["status"].startswith("error: thetaCE is not a number"), row["status"])

    def test_rows_of_tables_pass_through(self):
        for text in FORMULAS[:4]:
            done = run(text=f"name,{HEADER}\n{text},{HIP}\n")
            self.check(done, 0)
            self.assertIn(f"\n{text},{HIP},".encode(), done.stdout)


class Terminals(Case):
    def assert_harmless(self, output):
        self.assertTrue(HARMLESS.fullmatch(output.decode()), output)

    def on_terminal(self, *arguments, text=b""):
        """All that a terminal is given on standard output and on standard error."""
        terminal, program_side = pty.openpty()
        shown = b""
        with subprocess.Popen([PROGRAM, *map(str, arguments)], stdin=subprocess.PIPE,
                              stdout=program_side, stderr=program_side) as program:
            os.close(program_side)
            program.stdin.write(text)
            program.stdin.close()
            try:
                while piece := os.read(terminal, 65536):
                    shown += piece
            except OSError:  # how a terminal says that nobody is left at its other side
                pass
        os.close(terminal)
        return shown

    def test_no_control_character_of_a_table_reaches_one(self):
        for control in CONTROLS:
            table = (b"na" + control + b"me,note," + HEADER.encode() + b"\nAnn" + control
                     + b",\"a" + control + b"\"," + HIP.encode() + b"\n")
            for arguments in [[], ["--table"]]:
                shown = self.on_terminal(*arguments, text=table)
                self.assert_harmless(shown)
                self.assertIn(b"Ann", shown)
                self.assertIn(b"ok\r\n", shown)
            # A file or a pipe gets every byte.
            self.assertIn(b"\nAnn" + control + b",\"a" + control + b"\",", run(text=table).stdout)
            self.assert_harmless(run("--table", text=table).stdout)

    def test_what_is_seen_stays_what_it_is(self):
        table = f"name\tÅ,\t{HEADER}\n".replace(",", "\t") + f"Žofie 漢字 😀\t\t{HIP}\n".replace(",", "\t")
        for end in ["\n", "\r\n"]:
            shown = self.on_terminal(text=table.replace("\n", end).encode()).decode()
            self.assertIn("Žofie 漢字 😀\t\t10.40\t", shown)
            self.assertNotIn("\\x", shown)

    def test_no_control_character_reaches_one_in_a_message(self):
        for control in CONTROLS:
            name = os.fsdecode(control)
            header = HEADER.encode().replace(b"lizm", b"lizm[" + control + b"]")
            table = self.file("hips.csv", header + b"\n" + HIP.encode() + b"\n")
            letter = self.file(f"{name}.txt", "Dear colleague,\n")
            for arguments in [[table], [f"{name}.csv"], [letter], ["--threads", name],
                              ["--delimiter", name], ["--encoding", name], ["-o", name + "/x", table],
                              [f"--{name}"]]:
                done = run(*arguments)
                self.assertEqual(done.returncode, 2, arguments)
                self.assert_harmless(done.stderr)
                self.assertEqual(len(done.stderr.splitlines()), 1, done.stderr)

    def test_no_control_character_of_a_case_file_reaches_one(self):
        self.file("\x1b[2J.txt", case_file(name="A\x1b[2J B", comments="\x1b]0;x\x07"))
        self.file("b.txt", b"\x1b[2J")
        for arguments in [[], ["--table"]]:
            shown = self.on_terminal(*arguments, self.path)
            self.assert_harmless(shown)
            self.assertIn(b"Not correct file", shown)


class NoText(Case):
    def zipped(self, *names, first=None):
        packed = io.BytesIO()
        with zipfile.ZipFile(packed, "w", zipfile.ZIP_DEFLATED) as archive:
            if first:
                archive.writestr(zipfile.ZipInfo("mimetype"), first)
            for name in names:
                archive.writestr(name, f"{HEADER}\n{HIP}\n")
        return packed.getvalue()

    def files(self):
        workbook = "this is an Excel workbook (.xlsx); save it as CSV first"
        return [
            (self.zipped("[Content_Types].xml", "_rels/.rels", "xl/workbook.xml"), workbook),
            (self.zipped("docProps/app.xml", "xl/worksheets/sheet1.xml"), workbook),
            (self.zipped("content.xml",
                         first="application/vnd.oasis.opendocument.spreadsheet"),
             "this is a LibreOffice spreadsheet (.ods); save it as CSV first"),
            (self.zipped("hips.csv"), "this is a zip archive; unpack it first"),
            (self.zipped(), "this is a zip archive; unpack it first"),
            (gzip.compress(f"{HEADER}\n{HIP}\n".encode()), "this is a gzip file; unpack it first"),
            (b"\xd0\xcf\x11\xe0\xa1\xb1\x1a\xe1" + bytes(5000),
             "this is an old Excel workbook (.xls) or the like; save it as CSV first")]

    def test_it_is_named_for_what_it_is(self):
        good = self.file("good.csv", f"{HEADER}\n{HIP}\n")
        for content, what in self.files():
            for name in ["hips.csv", "hips.xlsx", "hips"]:
                path = self.file(name, content)
                self.check(run(path), 2, f"{path}: {what}")
                # Before anything is computed.
                done = run(good, path)
                self.check(done, 2, f"{path}: {what}")
                self.assertEqual(done.stdout, b"")

    def test_on_standard_input_too(self):
        for content, what in self.files():
            self.check(run(text=content), 2, f"standard input: row 1: {what}")
            with open(self.file("hips", content), "rb") as file:
                done = subprocess.run([PROGRAM], stdin=file, capture_output=True, check=False)
            self.check(done, 2, f"standard input: row 1: {what}")

    def test_a_table_that_begins_like_one_is_a_table(self):
        done = run(text=f"PK,{HEADER}\nxl/workbook,{HIP}\n")
        self.check(done, 0)
        self.check_known(rows(done.stdout)[0])


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1], verbosity=2)
