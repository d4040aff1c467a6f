"""Runs telmarion-batch as its users do and looks at what it gives. Shared by the tests beside it, each
of which is called with PROGRAM SOURCE_FOLDER VERSION."""
import csv
import io
import math
import os
import pathlib
import subprocess
import sys
import tempfile
import unittest

PROGRAM, SOURCE, VERSION = sys.argv[1], pathlib.Path(sys.argv[2]), sys.argv[3]

# The code page of case files and the system's messages follow the language of whoever runs the tests.
os.environ["LC_ALL"] = "en_US.UTF-8"

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
    text = os.fsdecode(output)  # names of files may be of any bytes
    return list(csv.DictReader(io.StringIO(text, newline=""), delimiter=delimiter))


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


def case_file(name="Surname Given", weight="70", ce="30", comments="No", encoding="cp1252"):
    """A case file as the windowed program writes it."""
    records = [
        "", f"Name          : {name}", "Sex           : F", "Date of birth : 1956",
        f"Body weight   : {weight} kg", "Hip           : L", f"Comments      : {comments}", "",
        "lizm          = 10,4 cm", "xizm          = 0,5 cm", "zizm          = 6 cm",
        "Cizm          = 4,4 cm", "Hizm          = 16 cm", "zasuk         = 0 °  ",
        f"theta-CE      = {ce} °  ", "radius of head= 0,025 m ", "", "R/Wb          = 0"]
    text = "TELMARION".ljust(49) + "15.11.2026\r\n" + "".join(r + "\n\r\n" for r in records)
    return text.encode(encoding)
