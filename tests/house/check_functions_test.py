"""The check of function lengths finds what it is there to find."""
import pathlib
import sys
import tempfile
import unittest

import check_functions

CTAGS = sys.argv.pop(1)


def function(lines):
    return "int f() {\n" + "  g();\n" * (lines - 2) + "}\n"


class CheckFunctions(unittest.TestCase):
    def wrong(self, *lengths):
        with tempfile.TemporaryDirectory() as folder:
            file = pathlib.Path(folder) / "a.cpp"
            file.write_text("\n".join(function(length) for length in lengths), encoding="utf-8")
            return check_functions.check(check_functions.functions([file], CTAGS))[0]

    def test_short_functions_pass(self):
        self.assertEqual(self.wrong(3, 11, 60), [])

    def test_a_long_function_is_found(self):
        self.assertEqual(len(self.wrong(3, 3, 61)), 1)

    def test_a_long_median_is_found(self):
        self.assertEqual(len(self.wrong(3, 12, 12)), 1)


if __name__ == "__main__":
    unittest.main()
