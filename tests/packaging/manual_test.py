"""The manual of the cohort program says what the program itself says."""
import pathlib
import re
import subprocess
import sys
import unittest

PROGRAM = sys.argv[1]
FOLDER = pathlib.Path(sys.argv[2])


def shown(page):
    """The manual page as a reader sees it, without bold and breaks."""
    text = subprocess.run(
        ["man", "--local-file", FOLDER / page],
        env={"LC_ALL": "C.UTF-8", "MANWIDTH": "200", "MAN_KEEP_FORMATTING": "", "PATH": "/usr/bin:/bin"},
        capture_output=True, check=True, text=True,
    ).stdout
    return " ".join(text.split())


def options(text):
    return set(re.findall(r"(?<![\w-])--?[a-z][\w-]*", text))


class Manual(unittest.TestCase):
    def setUp(self):
        self.help = subprocess.run(
            [PROGRAM, "--help"], capture_output=True, check=True, text=True
        ).stdout
        self.manual = shown("telmarion-batch.1")

    def test_every_option_and_no_other(self):
        self.assertEqual(options(self.manual), options(self.help))
        self.assertIn("--output", options(self.help))

    def test_every_column(self):
        columns = re.findall(r"\b(?:[lxzCH]izm|zasuk|thetaCE|headRadius|bodyWeight)\b", self.help)
        results = ["rWb", "thetaR", "thetaPol", "pmaxWb", "pmax", "status"]
        self.assertGreaterEqual(len(columns), 9)
        for column in columns + results:
            self.assertIn(column, self.manual)
            self.assertIn(column, self.help)

    def test_exit_statuses(self):
        said = re.search(r"Exit status: 0 (.*), 1 (.*),\s2 (.*)\.", self.help)
        for status, meaning in enumerate(said.groups()):
            self.assertIn(f"{status} {meaning[0].upper()}{meaning[1:]}.", self.manual)

    def test_the_windowed_program_has_a_page(self):
        self.assertTrue(shown("telmarion.1").startswith("TELMARION(1)"))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1], verbosity=2)
